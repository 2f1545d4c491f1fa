# Shared by the scripts. Sourced in the project's root, with `script_name` set.
set -euo pipefail

# Wine needs file names in any script, and messages must be the same everywhere.
export LC_ALL=C.UTF-8

log_dir=build/logs
mkdir -p "$log_dir"

say() { printf '%s: %s\n' "$script_name" "$*"; }

fail() {
    printf '%s: FAILED: %s\n' "$script_name" "$*" >&2
    exit 1
}

. scripts/packages.sh

if command -v ccache >/dev/null; then
    export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
    export CCACHE_SLOPPINESS=pch_defines,time_macros
fi

# fixed_addresses SCRIPT ARGUMENT...: restarts SCRIPT, a path relative to the project's root, with memory at fixed
# addresses. At random ones, about one start of Wine in 5,500 ends with exit code 1 before the program runs: Wine's
# loader is linked to 0x7d000000, the heap begins at a random address after it, and sometimes covers 0x7ffe0000, where
# Wine needs a page. Programs with this compiler's sanitizers also fail at random if the kernel uses more than 28 random
# bits.
fixed_addresses() {
    [ -z "${FIXED_ADDRESSES:-}" ] || return 0
    export FIXED_ADDRESSES=1
    if setarch -R true 2>/dev/null; then
        exec setarch -R bash "$@"
    fi
    say "note: this machine does not let a program fix its addresses (setarch -R fails);" \
        "about one start of Wine in 5,500 may end with exit code 1"
    local bits
    bits=$(cat /proc/sys/vm/mmap_rnd_bits 2>/dev/null) || bits="not readable"
    [ "$bits" -le 28 ] 2>/dev/null ||
        say "note: vm.mmap_rnd_bits is $bits; programs with sanitizers fail at random above 28" \
            "(sysctl -w vm.mmap_rnd_bits=28)"
}

# Copies a build's output to the file LOG, and prints its progress every 20 seconds.
show_progress() {
    gawk -v name="$script_name" -v log_file="$1" '
        { print >log_file }
        match($0, /^\[([0-9]+)\/([0-9]+)\]/, step) && systime() >= due {
            if (due) printf "%s:   %d of %d\n", name, step[1], step[2]
            due = systime() + 20
            fflush()
        }'
}

# build_preset PRESET [TARGET...]: configures (once, and after presets have changed) and builds; the build tool skips
# what is up to date.
build_preset() {
    local preset=$1 log=$log_dir/build-$1.log
    shift
    say "building the $preset preset (output in $log)"
    [ "build/$preset/build.ninja" -nt CMakePresets.json ] || cmake --preset "$preset" >"$log" 2>&1 &&
        NINJA_STATUS='[%f/%t] ' cmake --build --preset "$preset" ${*:+--target "$@"} 2>&1 | show_progress "$log" || {
        grep -m 20 -E 'error|FAILED|CMake Error' "$log" >&2 || tail -n 20 "$log" >&2
        fail "the $preset build failed; see $log"
    }
}

# Wine gets its own home in the build folder, and prints only why it could not start a program.
export WINEDEBUG=-all,err+virtual WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"
export WINEPREFIX=$PWD/build/windows/wine WINEARCH=win64

# Creates that home, once. Takes ten seconds, mostly waiting: a build can run meanwhile.
prepare_wine() {
    [ ! -f "$WINEPREFIX/.ready" ] || return 0
    mkdir -p "$WINEPREFIX"
    wine wineboot --init >"$log_dir/wine.log" 2>&1 </dev/null && touch "$WINEPREFIX/.ready"
}

# Creates the home if needed, and keeps Wine's server running.
use_wine() {
    prepare_wine || fail "Wine could not be started; see $log_dir/wine.log"
    keep_wine_ready
}

# The same with two homes, the second in $WINEPREFIX-2: each has a registry and a profile folder for one test at a time.
use_wine_twice() {
    use_wine
    local second=$WINEPREFIX-2
    if [ ! -f "$second/.ready" ]; then
        wineserver -k && wineserver -w      # writes the registry
        rm -rf "$second" && mkdir -p "$second/drive_c"
        ln -s "$WINEPREFIX"/drive_c/{windows,Program*} "$second/drive_c"
        cp -a "$WINEPREFIX/drive_c/users" "$second/drive_c"
        cp -a "$WINEPREFIX"/{*.reg,dosdevices,.update-timestamp,.ready} "$second"
        keep_wine_ready
    fi
    WINEPREFIX=$second keep_wine_ready
}

# Keeps Wine's server running. Wine's services start with its first program and keep that program's output open, so a
# test must not be the first.
keep_wine_ready() {
    wineserver -p >/dev/null 2>&1 || true
    wine cmd /c exit >>"$log_dir/wine.log" 2>&1 </dev/null || fail "Wine could not be started; see $log_dir/wine.log"
    trap 'for home in build/windows/wine build/windows/wine-2; do
              [ ! -d "$home" ] || WINEPREFIX=$PWD/$home wineserver -k >/dev/null 2>&1 || true
          done' EXIT
}
