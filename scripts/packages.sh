# The Debian packages needed to build, run and test, and how to install them. Sourced by demo and check.

build_packages=(
    cmake ninja-build make g++ pkg-config
    clang lld
    g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev libz-mingw-w64-dev binutils-mingw-w64-x86-64
    zlib1g-dev libpng-dev
    libcli11-dev nlohmann-json3-dev libstb-dev
    googletest gawk xz-utils
    wine wine64
)

# Other programs that write AVI files.
muxer_packages=(ffmpeg gstreamer1.0-tools gstreamer1.0-plugins-base gstreamer1.0-plugins-good)

# For bench/counts/check.
count_packages=(valgrind)

# For packaging/run.
package_packages=(nsis zip)

# For bench/run: the benchmark library, the readers to compare with, and the plotting library.
bench_packages=(
    libbenchmark-dev valgrind python3-matplotlib
    libavformat-dev libavcodec-dev libavutil-dev
    libgstreamer1.0-dev gstreamer1.0-plugins-base gstreamer1.0-plugins-good
)

check_packages=(
    "${muxer_packages[@]}"
    icoutils libasan8 libubsan1 libtsan2
    "${package_packages[@]}" "${count_packages[@]}" "${bench_packages[@]}"
)

# For fuzz/run: clang's fuzzing engine, its symbolizer, and the programs that write some seeds.
fuzz_packages=(libclang-rt-14-dev llvm "${muxer_packages[@]}")

# For scripts/abi/check, unpacked and never installed: libc++ and Wine's headers would replace other packages. The clang
# is the one that this libc++ needs.
microsoft_packages=(clang-19 libclang-cpp19 libllvm19 libclang-common-19-dev libc++-19-dev libwine-dev)

# For scripts/tidy.
tidy_packages=(clang-tidy)

# Debian's source of libpng: Debian has no package of it for Windows.
source_packages=(libpng1.6)

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

missing_packages() {
    local name
    for name in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || echo "$name"
    done
}

install_packages() {
    local missing
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0
    [ "$(id -u)" = 0 ] || command -v sudo >/dev/null || fail "packages are missing: run this as root, or install sudo"
    say "installing Debian packages (progress in $log_dir/apt.log): $(echo $missing)"
    as_root apt-get update >"$log_dir/apt.log" 2>&1 || true
    # shellcheck disable=SC2086 # one word per package
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing \
        >>"$log_dir/apt.log" 2>&1 ||
        fail "apt-get could not install the packages; see $log_dir/apt.log"
}

# unpack_packages FOLDER PACKAGE...: downloads binary packages and unpacks them into build/packages/FOLDER.
unpack_packages() {
    local target=build/packages/$1 log=$log_dir/unpacked-packages.log file
    shift
    [ ! -e "$target/.unpacked" ] || return 0
    say "fetching packages (progress in $log): $*"
    rm -rf "$target" && mkdir -p "$target/download"
    (cd "$target/download" && apt-get download "$@") >"$log" 2>&1 ||
        { as_root apt-get update && (cd "$target/download" && apt-get download "$@"); } >>"$log" 2>&1 ||
        fail "the packages could not be fetched; see $log"
    for file in "$target"/download/*.deb; do dpkg -x "$file" "$target"; done
    rm -r "$target/download" && touch "$target/.unpacked"
}

# Downloads and unpacks a source package's original archive into build/packages/NAME.
fetch_source_package() {
    local name=$1 target=build/packages/$1 lists=$PWD/build/packages/apt entry
    [ -e "$target/.unpacked" ] && return 0
    say "fetching the source package $name"
    rm -rf "$target" "$lists" && mkdir -p "$target" "$lists/sources.d" "$lists/lists/partial" "$lists/download"
    # The machine's own package sources, with source packages instead of binary ones.
    for entry in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ -f "$entry" ] || continue
        sed -n '/^deb .*debian/s/^deb /deb-src /p' "$entry" >"$lists/sources.d/$(basename "$entry" .list).list"
    done
    for entry in /etc/apt/sources.list.d/*.sources; do
        if [ -f "$entry" ] && grep -qi debian "$entry"; then
            sed 's/^Types:.*/Types: deb-src/' "$entry" >"$lists/sources.d/$(basename "$entry")"
        fi
    done
    grep -rq deb-src "$lists/sources.d" || fail "no source of Debian packages was found in /etc/apt"
    local log=$log_dir/source-packages.log
    local options=(-o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$lists/sources.d"
        -o Dir::State::lists="$lists/lists")
    # If the update of some other source fails, the download may still succeed.
    apt-get "${options[@]}" update >"$log" 2>&1 || true
    (cd "$lists/download" && apt-get "${options[@]}" source --download-only --tar-only "$name") >>"$log" 2>&1 &&
        tar -xf "$lists"/download/"$name"*.orig.tar.* -C "$target" --strip-components=1 &&
        touch "$target/.unpacked" ||
        fail "the source package $name could not be fetched; see $log"
}
