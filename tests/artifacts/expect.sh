# For the scripts beside it: compares what was found with what is wanted, and counts the differences.
failures=0

# expect WHAT WANTED FOUND
expect() {
    if [[ $2 == "$3" ]]; then
        echo "ok: $1"
    else
        printf 'FAILED: %s\n  wanted: %s\n  found:  %s\n' "$1" "$2" "$3"
        failures=$((failures + 1))
    fi
}

# One line of words, sorted, from lines.
as_sorted_line() { LC_ALL=C sort -u | paste -sd' '; }
