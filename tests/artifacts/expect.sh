# For the scripts in this folder: compares the expected with the found texts, and counts the differences.
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

# Sorts lines and joins them into one line of words.
as_sorted_line() { LC_ALL=C sort -u | paste -sd' '; }
