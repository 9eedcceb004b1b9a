#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Counts the instructions of the const operations in const_reads.cpp with two builds of the library,
# and prints both for each value. What is compared are two checkouts with a release build of the
# library each.
# usage: bench/const_reads.sh OLD_CHECKOUT NEW_CHECKOUT
set -euo pipefail

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
scratch=$(mktemp -d)
trap 'rm -rf -- "$scratch"' EXIT

# count CHECKOUT NAME: leaves the dumps NAME.1, NAME.2 ...
count() {
    local library=$1/build/release/src
    "${CXX:-c++}" -std=c++17 -O2 -DNDEBUG -I"$1/include" -I"$1/base/include" "$here/const_reads.cpp" \
        -o "$scratch/program" -L"$library" -lorvid -Wl,-rpath,"$library"
    valgrind -q --tool=callgrind --collect-atstart=no --callgrind-out-file="$scratch/$2" "$scratch/program"
}

count "$(readlink -f -- "$1")" old
count "$(readlink -f -- "$2")" new
python3 "$here/const_reads.py" "$scratch/old" "$scratch/new"
