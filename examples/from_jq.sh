#!/bin/sh
# SPDX-License-Identifier: MIT
#
# The calls that docs/coming-from-jq.md puts beside those of jq. Shows each with what it prints; with the
# argument "compare", runs jq too and shows only the calls whose values differ. The commands must be in PATH.
calls=$(dirname -- "$(readlink -f -- "$0")")/from_jq.calls
cd -- "$(dirname -- "$calls")/data" || exit
tab=$(printf '\t')

show() {
    printf '$ %s\n' "$2"
    sh -c "$2"
}

# Two texts are the same values when jq reads the same in both.
compare() {
    theirs=$(sh -c "$1")
    ours=$(sh -c "$2")
    if [ "$theirs" != "$ours" ] && [ "$(echo "$theirs" | jq -cS .)" != "$(echo "$ours" | jq -cS .)" ]; then
        printf '%s\n%s\n%s\n%s\n' "$1" "$theirs" "$2" "$ours"
        status=1
    fi
}

if [ "$1" = compare ] && ! command -v jq >/dev/null; then
    echo "SKIPPED: jq is not installed"
    exit
fi
status=0
while IFS="$tab" read -r jq orvid; do
    if [ "$1" = compare ]; then compare "$jq" "$orvid"; else show "$jq" "$orvid"; fi
done <"$calls"
exit $status
