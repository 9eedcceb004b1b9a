#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Measures the command orvid beside jq, gojq, gron and python3 -m json.tool, those that are installed, in one run of
# hyperfine, and writes a table and a chart (gnuplot) to build/bench. The folder in ORVID_CORPUS, when set, gives
# three more documents. usage: bench/command.sh [--publish] [MEGABYTES OF RECORDS, 200 by default]
# --publish also puts the table and the chart into bench/.
# shellcheck source=scripts/common.sh
. "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/../scripts/common.sh"

publish=
if [ "${1-}" = --publish ]; then
    publish=yes
    shift
fi
megabytes=${1-200}
build=build/command-bench
out=build/bench
orvid=$PWD/$build/tool/orvid
records=$out/records-$megabytes.jsonl
array=$out/array-$megabytes.json
iso=/usr/share/iso-codes/json/iso_3166-2.json
runs=${ORVID_BENCH_RUNS-21}
line_runs=${ORVID_BENCH_LINE_RUNS-5}
rows=0

prepare() {
    scripts/setup build bench
    run cmake -S . -B $build -G Ninja -DCMAKE_BUILD_TYPE=Release -DORVID_BUILD_TESTS=OFF -DORVID_BUILD_EXAMPLES=OFF
    run cmake --build $build --target orvid_tool
    mkdir -p $out/command
    rm -f $out/command/*
    [ -s "$records" ] || make_records
    [ -s "$array" ] || make_array
}

make_records() {
    LC_ALL=C awk -v bytes="$megabytes" 'BEGIN {
        for (left = bytes * 1000000; left > 0; left -= length(line) + 1) {
            ++n
            line = sprintf("{\"id\": %d, \"user\": {\"name\": \"user %d\", \"email\": \"u%d@example.org\", \"tags\": [\"a\", \"bb\", \"ccc\"]}, \"price\": %d.%02d, \"text\": \"%*s\", \"new\": true, \"old\": null, \"position\": [%d.%06d, -%d.%06d]}",
                           n, n % 1009, n, n % 997, n % 100, 40 + n % 80, "Gruesse", n % 90, n * 7919 % 1000000, n % 180, n * 104729 % 1000000)
            print line
        }
    }' >"$records.new"
    mv "$records.new" "$records"
}

# row RUNS JOB NAME COMMAND [NAME COMMAND]...: the same job done by each command that is installed.
row() {
    local count=$1 job=$2 names=() commands=()
    shift 2
    while [ $# -gt 0 ]; do
        if command -v "${2%% *}" >/dev/null; then
            names+=(--command-name "$1") && commands+=("$2")
        fi
        shift 2
    done
    printf '\n== %s\n' "$job"
    rows=$((rows + 1))
    hyperfine --shell=none --warmup 1 --runs "$count" --style basic \
        --export-json "$out/command/$(printf %02d $rows) $job.json" \
        "${names[@]}" "${commands[@]}" 2>&1 | grep -E 'Benchmark|Time|Warning'
}

# The records as the items of one array, half as much again as them.
make_array() {
    {
        printf '[\n'
        cat "$records"
        head -c "$((megabytes * 500000))" "$records" | sed '$d'
    } | sed '2,$ { $!s/$/,/ }' >"$array.new"
    printf ']\n' >>"$array.new"
    mv "$array.new" "$array"
}

# document FILE NAME ORVIDPATH JQPATH: print, get, set and remove of one document.
document() {
    local file=$1 name=$2 path=$3 jq=$4
    row "$runs" "print, $name" orvid "$orvid print --meta $file" jq "jq . $file" gojq "gojq . $file" \
        gron "gron $file" json.tool "python3 -m json.tool --no-ensure-ascii $file"
    row "$runs" "get, $name" orvid "$orvid get $path $file" jq "jq '$jq' $file" gojq "gojq '$jq' $file"
    row "$runs" "set, $name" orvid "$orvid set $path=1 $file" jq "jq '$jq=1' $file" gojq "gojq '$jq=1' $file"
    row "$runs" "remove, $name" orvid "$orvid remove $path $file" jq "jq 'del($jq)' $file" gojq "gojq 'del($jq)' $file"
}

# Insertion of an item, the start of the command, and a check of a document that is not held.
others() {
    row "$runs" "insert, iso_3166-2" orvid "$orvid insert 3166-2[100]=1 $iso" \
        jq "jq '.[\"3166-2\"] |= .[:100] + [1] + .[100:]' $iso" gojq "gojq '.[\"3166-2\"] |= .[:100] + [1] + .[100:]' $iso"
    row "$runs" "start" orvid "$orvid --version"
    row "$line_runs" "check, $((megabytes * 3 / 2)) MB" orvid "$orvid check $array" jq "jq empty $array" gojq "gojq empty $array"
}

# query FILE NAME QUERY FILTER: a query, beside the filter that writes the same.
query() {
    row "$runs" "query $3, $2" orvid "$orvid query '$3' $1" jq "jq -c '$4' $1" gojq "gojq -c '$4' $1"
}

# Each with one thread and with two, beside the same run of the others.
lines() {
    row "$line_runs" "get, $megabytes MB of records" \
        "orvid -j 1" "$orvid get --lines -j 1 user.name $records" \
        "orvid -j 2" "$orvid get --lines -j 2 user.name $records" \
        jq "jq -c .user.name $records" gojq "gojq -c .user.name $records"
    row "$line_runs" "set, $megabytes MB of records" \
        "orvid -j 1" "$orvid set --lines -j 1 user.name=1 $records" \
        "orvid -j 2" "$orvid set --lines -j 2 user.name=1 $records" \
        jq "jq -c .user.name=1 $records" gojq "gojq -c .user.name=1 $records"
    row "$line_runs" "remove, $megabytes MB of records" \
        "orvid -j 1" "$orvid remove --lines -j 1 user.name $records" \
        "orvid -j 2" "$orvid remove --lines -j 2 user.name $records" \
        jq "jq -c 'del(.user.name)' $records" gojq "gojq -c 'del(.user.name)' $records"
}

prepare
ORVID_BENCH_COMMIT=$(git describe --always --dirty --exclude '*')
ORVID_BENCH_LOAD=$(cut -d ' ' -f 1 /proc/loadavg)
export ORVID_BENCH_COMMIT ORVID_BENCH_LOAD
document $iso iso_3166-2 '3166-2[100].name' '.["3166-2"][100].name'
if [ -d "${ORVID_CORPUS-}" ]; then
    document "$ORVID_CORPUS/canada.json" canada 'features[0].geometry.coordinates[5][3][1]' '.features[0].geometry.coordinates[5][3][1]'
    document "$ORVID_CORPUS/citm_catalog.json" citm_catalog 'performances[3].seatCategories[0].areas[1].areaId' '.performances[3].seatCategories[0].areas[1].areaId'
    document "$ORVID_CORPUS/twitter.json" twitter 'statuses[50].user.name' '.statuses[50].user.name'
fi
if [ -d "${ORVID_CORPUS-}" ]; then
    for name in canada citm_catalog twitter; do
        query "$ORVID_CORPUS/$name.json" $name '$..id' '.. | objects | select(has("id")) | .id'
        query "$ORVID_CORPUS/$name.json" $name '$..[?@.price]' \
            '.. | (arrays, objects) | .[] | objects | select(has("price"))'
    done
    query "$ORVID_CORPUS/twitter.json" twitter '$.statuses[*].user.screen_name' '.statuses[].user.screen_name'
    query "$ORVID_CORPUS/twitter.json" twitter '$.statuses[?@.retweet_count > 10].text' \
        '.statuses[] | select(.retweet_count > 10) | .text'
fi
others
lines
bench/command_table.py $out "$orvid"
if [ -n "$publish" ]; then
    run cp $out/command-speed.md $out/command-speed.svg bench/
fi
