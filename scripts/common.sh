# What demo and check share. Sourced from the project's root.
set -euo pipefail

# Names in every script must reach Wine, and messages come out the same everywhere.
export LC_ALL=C.UTF-8

log_dir=build/logs
mkdir -p "$log_dir"

say() { printf '%s: %s\n' "$script_name" "$*"; }

fail() {
    printf '%s: FAILED: %s\n' "$script_name" "$*" >&2
    exit 1
}

. scripts/packages.sh

# build_preset PRESET [TARGET...]: configures (once, and when presets have changed) and builds; the build tool itself
# skips what is up to date.
build_preset() {
    local preset=$1 log=$log_dir/build-$1.log
    shift
    say "building the $preset preset (progress in $log)"
    { [ "build/$preset/build.ninja" -nt CMakePresets.json ] || cmake --preset "$preset"; } >"$log" 2>&1 &&
        cmake --build --preset "$preset" ${*:+--target "$@"} >>"$log" 2>&1 || {
        grep -m 20 -E 'error|FAILED|CMake Error' "$log" >&2 || tail -n 20 "$log" >&2
        fail "the $preset build failed; see $log"
    }
}

# Wine, quiet, with a home of its own beside the build.
use_wine() {
    export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d" WINEPREFIX=$PWD/build/windows/wine WINEARCH=win64
    mkdir -p "$WINEPREFIX"
    if [ ! -f "$WINEPREFIX/.ready" ]; then
        say "preparing Wine"
        wine wineboot --init >"$log_dir/wine.log" 2>&1 && touch "$WINEPREFIX/.ready" ||
            fail "Wine could not be started; see $log_dir/wine.log"
    fi
    wineserver -p >/dev/null 2>&1 || true
    # Wine's services start with its first program and keep that program's output open: a test must not be the first.
    wine cmd /c exit >>"$log_dir/wine.log" 2>&1 </dev/null || fail "Wine could not be started; see $log_dir/wine.log"
    trap 'wineserver -k >/dev/null 2>&1 || true' EXIT
}
