#!/bin/sh
# SPDX-License-Identifier: MIT
#
# Runs the recipes for GNU parallel of docs/scale.md over a generated file in blocks, and compares each with the
# single run, byte for byte: on this machine, with blocks that fail once, and over several hosts, one of which is
# down. usage: parallel.sh ORVID MEGABYTES BLOCK
# Exit status: 0 the same; 1 not; 77 GNU parallel is not installed.
set -eu
orvid=$1 megabytes=$2 block=$3
here=$(dirname "$(readlink -f "$0")")
parallel --version 2>/dev/null | grep -q '^GNU parallel' || { echo "SKIPPED: GNU parallel is not installed"; exit 77; }
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT

# Records of different lengths, with numbers that a double would not keep.
LC_ALL=C awk -v bytes="$megabytes" 'BEGIN {
    for (left = bytes * 1000000; left > 0; left -= length(line) + 1) {
        ++n
        line = sprintf("{\"id\": %d, \"price\": %d.%02d0, \"exact\": 12345678901234567890.%d, \"tags\": [\"a\", \"b%d\"], \"text\": \"%*s\"}",
                       n, n % 997, n % 100, n, n % 7, n % 211, "x")
        print line
    }
}' >"$folder/records.jsonl"

PATH=$(dirname "$orvid"):$PATH
"$orvid" set --lines seen=true <"$folder/records.jsonl" >"$folder/single.jsonl"

# compare RECIPE: with what it has written.
compare() {
    cmp "$folder/single.jsonl" "$folder/marked.jsonl" || { echo "not the same: $1"; exit 1; }
    echo "the same: $1, $(wc -l <"$folder/marked.jsonl") lines, $(wc -c <"$folder/marked.jsonl") bytes"
}

parallel --will-cite --pipepart --arg-file "$folder/records.jsonl" --block "$block" --keep-order --halt now,fail=1 \
    orvid set --lines seen=true >"$folder/marked.jsonl"
compare "one machine"

parallel --will-cite --pipe --block "$block" --keep-order --retries 3 \
    "$here/fail-once" "$folder" orvid set --lines seen=true <"$folder/records.jsonl" >"$folder/marked.jsonl"
compare "blocks that fail once"

ASKED=$folder/asked parallel --will-cite --pipe --block "$block" --keep-order --retries 3 \
    --ssh "$here/one-host-down" --sshlogin 8/first.example,8/second.example,: \
    orvid set --lines seen=true <"$folder/records.jsonl" >"$folder/marked.jsonl"
for host in first.example second.example; do
    grep -q "$host" "$folder/asked" || { echo "not asked: $host"; exit 1; }
done
compare "several hosts, one of them down"
