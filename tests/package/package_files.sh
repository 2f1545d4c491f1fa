#!/usr/bin/env bash
# package_files.sh PACKAGES BIN VERSION: checks the archive's contents, and that packaging is reproducible.
set -uo pipefail
here=$(dirname "${BASH_SOURCE[0]}")
. "$here/../artifacts/expect.sh"
packages=$1 bin=$2 version=$3
name=ImporterQuorvane-$version-win64

[ -f "$packages/SHA256SUMS" ] || { echo "no packages: run cmake --build --preset package first"; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

expect "checksums hold" "good" "$(cd "$packages" && sha256sum --quiet -c SHA256SUMS 2>&1 && echo good)"
expect "files with a checksum" "ImporterQuorvane-$version-setup.exe $name.zip ImporterQuorvane-$version.prm.debug" \
    "$(awk '{ print $2 }' "$packages/SHA256SUMS" | as_sorted_line)"

(cd "$work" && cmake -E tar xf "$packages/$name.zip")
expect "files in the archive: no stand-in for the codec library among them" \
    "$name/ImporterQuorvane.prm $name/README.txt $name/avirepair.exe $name/importhost.exe $name/log-off.reg $name/log-on.reg $name/third-party-licenses.txt" \
    "$(cd "$work" && find . -type f | sed 's|^\./||' | as_sorted_line)"
expect "the plug-in in the archive is the tested one" "same" \
    "$(cmp "$work/$name/ImporterQuorvane.prm" "$bin/ImporterQuorvane.prm" && echo same)"
expect "avirepair in the archive is the tested one" "same" \
    "$(cmp "$work/$name/avirepair.exe" "$bin/avirepair.exe" && echo same)"
expect "importhost in the archive is the tested one" "same" \
    "$(cmp "$work/$name/importhost.exe" "$bin/importhost.exe" && echo same)"


symbols=$packages/ImporterQuorvane-$version.prm.debug
entry=$(x86_64-w64-mingw32-nm "$symbols" | awk '$3 == "xImportEntry" { print $1 }')
expect "the plug-in has no symbols" "no symbols" \
    "$(x86_64-w64-mingw32-nm "$work/$name/ImporterQuorvane.prm" 2>&1 | grep -o "no symbols")"
expect "the symbols' file turns an address into a function and its line" "xImportEntry src/host/EntryPoint.cpp" \
    "$(x86_64-w64-mingw32-addr2line -fe "$symbols" "$entry" | sed 's|.*/src/|src/|; s/:.*//' | xargs)"

for text in README.txt log-on.reg log-off.reg; do
    expect "every line of $text has a Windows line end" "0" "$(grep -c -v $'\r$' "$work/$name/$text")"
done
expect "the version in the readme" "ImporterQuorvane $version" "$(head -n 1 "$work/$name/README.txt" | tr -d '\r')"
for library in libpng CLI11 zlib; do
    expect "the license of $library is named" "yes" \
        "$(grep -qi "$library" "$work/$name/third-party-licenses.txt" && echo yes)"
done

# Packages the same content twice, the second time from newer files.
make_packages() {
    cmake -D NAME=ImporterQuorvane -D VERSION="$version" -D PLUGIN="$work/$name/ImporterQuorvane.prm" \
        -D SYMBOLS="$symbols" -D IMPORTHOST="$work/$name/importhost.exe" -D AVIREPAIR="$work/$name/avirepair.exe" \
        -D TEXTS="$work/$name" -D SCRIPTS="$here/../../packaging" \
        -D LIBPNG="$here/../../build/packages/libpng1.6" -D OUTPUT="$1" \
        -P "$here/../../packaging/Package.cmake" >"$work/log" 2>&1 || cat "$work/log"
}
make_packages "$work/first"
find "$work/$name" -exec touch {} +
make_packages "$work/second"
expect "packaging the same files twice" "same" \
    "$(cmp "$work/first/SHA256SUMS" "$work/second/SHA256SUMS" && echo same)"

exit $((failures > 0))
