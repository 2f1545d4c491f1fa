#!/usr/bin/env bash
# windows_plugin.sh OBJDUMP PLUGIN NAME DESCRIPTION VERSION: exports, imports and resources of the Windows plug-in.
set -uo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/expect.sh"
objdump=$1 plugin=$2 name=$3 description=$4 version=$5

# ---- exports and imports

headers=$("$objdump" -p "$plugin") || exit 1

exports=$(awk '/^\[Ordinal\/Name Pointer\] Table/ { inside = 1; next } inside && /^$/ { exit } inside { print $NF }' \
    <<<"$headers" | as_sorted_line)
expect "exported functions" "xImportEntry" "$exports"

# Lines "library function"; a function that is imported by number shows as a number.
imports=$(awk '/DLL Name:/ { library = $3; next }
    library && /^\t[0-9a-f]+\t/ { print library, ($3 != "" ? $3 : "by-number") }
    /^$/ { library = "" }' <<<"$headers")

codec=$(awk '$1 == "quorvane_common64.dll" { print $2 }' <<<"$imports" | as_sorted_line)
expect "functions imported from the codec library" \
    "quorvane_close quorvane_compress_query quorvane_decompress quorvane_decompress_begin quorvane_decompress_end quorvane_decompress_query quorvane_get_param quorvane_get_string quorvane_library_close quorvane_library_init quorvane_open" \
    "$codec"

# Everything else must be part of Windows: a library of the compiler would be missing on a user's machine.
others=$(awk '/DLL Name:/ { print toupper($3) }' <<<"$headers" |
    grep -v -x -e QUORVANE_COMMON64.DLL -e KERNEL32.DLL -e MSVCRT.DLL -e ADVAPI32.DLL -e SHELL32.DLL \
        -e SHLWAPI.DLL -e USER32.DLL | as_sorted_line)
expect "libraries other than the codec's and Windows' own" "" "$others"

# ---- resources

resources=$(mktemp -d)
trap 'rm -rf "$resources"' EXIT

# The resource that identifies an importer to the host: a 16-bit 0 and a 32-bit code that is not the host's own.
wrestool --extract --raw --type=IMPT --name=1000 "$plugin" >"$resources/impt"
expect "size of resource IMPT 1000" 6 "$(stat -c %s "$resources/impt")"
expect "first word of resource IMPT 1000" 0 "$(od -An -tu2 -N2 "$resources/impt" | tr -d ' ')"
code=$(od -An -tx4 -j2 -N4 "$resources/impt" | tr -d ' ')
expect "code of resource IMPT 1000 is neither missing nor reserved" "free" \
    "$([[ -z $code || $code == 4d4f6f76 || $code == 00000000 ]] && echo "'$code'" || echo free)"

wrestool --extract --raw --type=16 --name=1 "$plugin" >"$resources/version"
IFS=. read -r major minor patch <<<"$version"
numbers=$(od -An -tu2 -j48 -N16 "$resources/version" | tr -s ' ' | sed 's/^ //')
expect "file and product version as numbers" "$minor $major 0 $patch $minor $major 0 $patch" "$numbers"

# Texts are UTF-16: the key, zeros, the value.
version_text() {
    iconv -c -f UTF-16LE -t UTF-8 "$resources/version" | tr '\0' '\n' |
        awk -v key="$1" 'found && $0 != "" { print; exit } substr($0, length($0) - length(key)) == "\001" key { found = 1 }'
}
expect "ProductName" "$name" "$(version_text ProductName)"
expect "FileDescription" "$description" "$(version_text FileDescription)"
expect "FileVersion" "$version" "$(version_text FileVersion)"
expect "ProductVersion" "$version" "$(version_text ProductVersion)"
expect "OriginalFilename" "$name.prm" "$(version_text OriginalFilename)"

exit $((failures > 0))
