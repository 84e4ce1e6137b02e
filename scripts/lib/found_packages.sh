# shellcheck shell=bash
# Sourced by scripts/test.sh: does a configuration find only what its script installs? One that leans on
# a package which something else has installed fails on a machine that hasn't run that.

# needed_by PACKAGE...: these, what they need of what is installed, and what every machine has.
needed_by() {
    dpkg-query --show \
        --showformat='${Package}\t${Essential}\t${Provides}\t${Pre-Depends}, ${Depends}\n' |
        awk -F '\t' -v asked="$*" '
            function names(list) {  # "a (>= 1) | b:any, c" as "a b c"
                gsub(/\([^)]*\)|:[a-z0-9]+|[|,]/, " ", list)
                return list
            }
            {
                needs[$1] = needs[$1] " " names($4)
                count = split(names($3), provided, " ")
                for (i = 1; i <= count; ++i) needs[provided[i]] = needs[provided[i]] " " $1
                if ($2 == "yes") asked = asked " " $1
            }
            END {
                count = split(asked, queue, " ")
                for (i = 1; i <= count; ++i) {
                    if (queue[i] in seen) continue
                    seen[queue[i]] = 1
                    print queue[i]
                    added = split(needs[queue[i]], more, " ")
                    for (k = 1; k <= added; ++k) queue[++count] = more[k]
                }
            }'
}

# found_elsewhere BUILD PACKAGE...: what the configuration of this folder found that belongs to none of
# those packages nor to what they need. CMake's own programs are those that are there; doxygen, groff and
# Wine are optional.
found_elsewhere() {
    local cache=$1/CMakeCache.txt
    shift
    sed -n '/^CMAKE_/d; /DOXYGEN/d; /GROFF/d; /WINE:/d; s/^[^#/][^=]*=\(\/usr\/.*\)$/\1/p' "$cache" | tr ';' '\n' |
        xargs --delimiter='\n' realpath --canonicalize-existing --quiet | sort --unique |
        xargs --delimiter='\n' dpkg-query --search 2>/dev/null |
        awk -v needed="$(needed_by "$@" | tr '\n' ' ')" '
            BEGIN { count = split(needed, names, " "); for (i in names) is_needed[names[i]] = 1 }
            {
                path = $0
                sub(/^.*: /, "", path)
                owners = substr($0, 1, length($0) - length(path) - 2)
                count = split(owners, owner, ", ")
                for (i = 1; i <= count; ++i) {
                    sub(/:.*/, "", owner[i])
                    if (owner[i] in is_needed) next
                }
                print path " is of " owners
            }' || true
}
