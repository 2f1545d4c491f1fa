# clang's dump of record layouts as lines that are the same for every target where the layouts are:
#     imStdParms: 20 bytes, aligned to 1
#     imStdParms 4 funcs: imCallbackFuncs *
# What only clang itself declares, and unnamed records, are left out. Types are in clang's basic words, in which `long`
# and `wchar_t` say their sizes: `windows` is 1 for a target where they have 4 and 2 bytes, 0 where they have 8 and 4.
function sized(type) {
    gsub(/long long/, "8_byte", type)
    gsub(/long double/, windows ? "windows_long_double" : "linux_long_double", type)
    gsub(/\<long\>/, windows ? "4_byte" : "8_byte", type)
    gsub(/\<wchar_t\>/, windows ? "2_byte" : "4_byte", type)
    return type
}

/^\*\*\* Dumping/ { wanted = 0; expected = 1; next }

# "         0 | struct imStdParms", the first line of a record
expected && /\|/ {
    expected = 0
    name = $NF == "(empty)" ? $(NF - 1) : $NF
    wanted = !/unnamed|anonymous|lambda|<|__/
    next
}

# "         4 |   imCallbackFuncs * funcs"; members of members are indented deeper
wanted && match($0, /^ *[0-9:-]+ \|   [^ ]/) {
    type = substr($0, RSTART + RLENGTH - 1)
    members[++count] = name " " $1 " " $NF ": " sized(substr(type, 1, length(type) - length($NF) - 1))
    next
}

# "           | [sizeof=20, dsize=20, align=1,"
wanted && match($0, /sizeof=[0-9]+/) {
    size = substr($0, RSTART + 7, RLENGTH - 7)
    match($0, /[^n]align=[0-9]+/)
    print name ": " size " bytes, aligned to " substr($0, RSTART + 7, RLENGTH - 7)
    for (i = 1; i <= count; ++i) print members[i]
    count = 0
}
