# Compares two lists of "case instructions calls": the recorded one, then the current one.

/^#/ { next }
FNR == NR { instructions[$1] = $2; calls[$1] = $3; next }

# Difference of a count from the recorded one, in percent.
function change(now, before) { return before ? 100 * (now - before) / before : (now ? 100 : 0) }

function tell(what, now, before,    percent) {
    percent = change(now, before)
    if (percent > tolerance) { grown = 1; verdict = "GROWN" }
    else verdict = percent < -tolerance ? "less than recorded" : "as recorded"
    printf "  %-26s %-13s %12d %12d %+7.1f %%  %s\n", $1, what, before, now, percent, verdict
}

!($1 in instructions) { printf "  %-26s is not recorded\n", $1; grown = 1; next }
{ seen[$1] = 1; tell("instructions", $2, instructions[$1]); tell("calls", $3, calls[$1]) }

END {
    for (name in instructions) if (!(name in seen)) { printf "  %-26s was not counted\n", name; grown = 1 }
    exit grown
}
