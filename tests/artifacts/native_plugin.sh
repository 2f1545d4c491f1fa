#!/usr/bin/env bash
# native_plugin.sh PLUGIN: the native plug-in exports its entry point and nothing else.
set -uo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/expect.sh"
plugin=$1

exports=$(nm --dynamic --defined-only "$plugin" | awk '{ print $NF }' | as_sorted_line)
expect "exported symbols" "xImportEntry" "$exports"

codec=$(nm --dynamic --undefined-only "$plugin" | awk '$NF ~ /^(quorvane|standin)_/ { print $NF }' | as_sorted_line)
expect "functions imported from the codec library" \
    "quorvane_close quorvane_compress_query quorvane_decompress quorvane_decompress_begin quorvane_decompress_end quorvane_decompress_query quorvane_get_param quorvane_get_string quorvane_library_close quorvane_library_init quorvane_open" \
    "$codec"

exit $((failures > 0))
