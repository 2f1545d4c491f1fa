# Sums callgrind's output: the instructions within one object, and its calls to other objects.
# Objects and functions are named once, as "(number) name", and afterwards as "(number)" only.

function numberOf(text) { return match(text, /^\([0-9]+\)/) ? substr(text, 1, RLENGTH) : "" }

/^(ob|cob)=/ {
    text = substr($0, index($0, "=") + 1)
    number = numberOf(text)
    if (length(text) > length(number)) {
        path = substr(text, length(number) + 2)
        isOurs[number] = path ~ ("/" object "$")
    }
    if (/^ob=/) {
        ours = isOurs[number]
    } else {
        called = number
        isElsewhere = 1
    }
    next
}
/^calls=/ {
    split(substr($0, 7), words, " ")
    if (ours && isElsewhere && !isOurs[called]) calls += words[1]
    isElsewhere = 0
    skipNext = 1      # the next line is the called function's cost
    next
}
/^(\+|-|\*|[0-9])/ {
    if (!skipNext && ours) instructions += $2
    skipNext = 0
}
END {
    if (!instructions) exit 1
    printf "%s %d %d\n", name, instructions, calls
}
