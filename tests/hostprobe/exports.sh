#!/usr/bin/env bash
# exports.sh TOOL LIBRARY: the probe exports its entry point and nothing else. TOOL is nm, or objdump for Windows.
set -uo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../artifacts/expect.sh"
tool=$1 library=$2

if [[ $library == *.prm ]]; then
    exports=$("$tool" -p "$library" | awk '/^\[Ordinal\/Name Pointer\] Table/ { inside = 1; next }
        inside && /^$/ { exit } inside { print $NF }' | as_sorted_line)
else
    exports=$("$tool" --dynamic --defined-only "$library" | awk '{ print $NF }' | as_sorted_line)
fi
expect "exported symbols" "xImportEntry" "$exports"

exit $((failures > 0))
