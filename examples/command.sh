#!/bin/sh
# SPDX-License-Identifier: MIT
#
# The command orvid in a shell. Shows each call with what it prints and, where that is not 0, its exit
# status. The command must be in PATH.
cd -- "$(dirname -- "$0")" || exit

try() {
    printf '$ %s\n' "$1"
    sh -c "$1" 2>&1
    status=$?
    [ $status -eq 0 ] || echo "(exit status $status)"
}

try 'orvid print data/settings.json'
try "orvid get 'servers[0].host' data/settings.json"
try "orvid get --raw 'servers[0].host' data/settings.json"
try 'orvid get limits data/settings.json'
try 'orvid get timeout data/settings.json'
try 'orvid get --default timeout data/settings.json'
try "orvid get --default 'log\\.level' data/settings.json"
try "echo '{\"servers\": [{}]}' | orvid get --default --schema data/settings.json 'servers[0].port'"

try "echo '{}' | orvid set name=string:Ann 'tags[*]=string:a \"b\"' rate=file:data/rate.json --compact"
try "echo '{}' | orvid set name=Ann"
try "orvid get 'servers[-1].host' data/settings.json"
try "orvid get /servers/0/host data/settings.json"

try "echo '{}' | orvid set 'a.b[*].c' 1.50"
try "echo '[1, 2]' | orvid set '[2]' 5"
try "echo '{\"meta\": 1, \"a\": 2}' | orvid set a '\"two\"'"
try "echo '{}' | orvid set a tru"
try "orvid set 'editor\\.tabSize' 2 data/editor.jsonc | diff data/editor.jsonc -"
try "orvid set 'editor\\.rulers[*]' 120 data/editor.jsonc | orvid remove 'files\\.exclude.build/' | diff data/editor.jsonc -"
try "orvid set --strict 'editor\\.tabSize' 2 data/editor.jsonc"
try "echo '{\"a\": {}, \"c\": []}' | orvid set a.b=1 'c[*]=\"x\"' 'c[*]=null' --compact"
try "echo '{\"a\": 1}' | orvid set b=2 a.c=3"

try "echo '{\"a\": [1, 3]}' | orvid insert --compact 'a[1]=2' 'a[*]=4' b=null"
try "echo '{\"a\": [1, 3]}' | orvid insert a 2"

try "echo '{\"meta\": 1, \"a\": [2, 3]}' | orvid remove 'a[0]'"
try "echo '{\"a\": [1, 2, 3]}' | orvid remove 'a[0]' --also 'a[0]' --compact"
try "echo '{\"meta\": 1, \"a\": 2}' | orvid print"
try "echo '{\"meta\": 1, \"a\": 2}' | orvid print --no-meta"
try "echo '{\"b\": [1.50, \"é\"], \"a\": {}}' | orvid print --compact --sort-keys --ascii"

try "echo '{\"a\": 1, \"b\": {\"c\": 2}}' | orvid rename b.c rate"
try "echo '{\"a\": 1, \"b\": {\"c\": 2}}' | orvid move b.c limits.rate --compact"
try "echo '[1, 2, 3]' | orvid move '[-1]' '[0]'"
try "orvid copy 'servers[0]' 'servers[*]' data/settings.json | orvid length servers"
try "echo '{\"a\": 1, \"b\": 2}' | orvid move --if-absent a b"
try "echo '{\"a\": 1, \"b\": 2}' | orvid move a b"

try "orvid keys 'servers[0]' data/settings.json"
try 'orvid length servers data/settings.json'
try "orvid type 'servers[-1].host' data/settings.json"

try 'orvid split --in servers data/settings.json'
try 'orvid split --in servers data/settings.json | orvid get --lines host | orvid join --compact'
try 'orvid print data/rate.json data/rate.json | orvid split --values'

try 'orvid split --in servers data/settings.json | orvid csv -f host -f port'
try "printf 'id,name\\n1,\"Ann, Lee\"\\n' | orvid uncsv"

try "orvid find --in servers host '\"beta.example\"' data/settings.json"
try 'orvid find --in servers --path port 9e3 data/settings.json'
try 'orvid find --in servers port 80 data/settings.json'

try "orvid query '\$.servers[?@.port > 1024].host' data/settings.json"
try "orvid query --paths '\$.servers..port' data/settings.json"
try "orvid query --count '\$.servers[*]' data/settings.json"
try "orvid query '\$.servers[?@.port = 9000]' data/settings.json"
try "orvid set --query '\$..host' null data/settings.json | orvid get --compact servers"
try "orvid remove --query '\$.servers[?!@.port]' data/settings.json | orvid get --compact servers"

try "printf '%s\\n' '{\"n\": 1.0, \"ok\": true}' '{\"n\": 2}' '{\"n\": 3, \"ok\": false}' | orvid select --lines '\$.ok'"
try "printf '%s\\n' '{\"ok\": true, \"n\": 1.0}' '{\"ok\": false, \"n\": 2}' | orvid select --lines '\$[?\$.n > 1]'"

try "printf '%s' '{\"a.b\": [1, {}], \"two\\nlines\": \"x\\ny\", \"\\\"\": 0, \"\": null}' | orvid paths"
try 'orvid paths data/settings.json | grep memory'
try 'orvid paths --json-pointer data/settings.json | grep port'
try "orvid paths data/settings.json | grep '^servers' | sed s/9000/9443/ | orvid unpaths --compact"
try "printf 'a[2]\\t1\\n' | orvid unpaths --compact"

try 'orvid defaults data/settings.json'
try "echo '{\"limits\": {\"cpu\": 8}}' | orvid defaults --fill --schema data/settings.json --compact"

try "echo '{\"name\": \"billing\", \"rate\": 0.1}' | orvid diff --compact - data/rate.json"
try "echo '{\"name\": \"billing\", \"rate\": 0.1}' | orvid diff --changes - data/rate.json"
try "echo '[{\"op\": \"add\", \"path\": \"/limits/cpu\", \"value\": 4}]' | orvid patch - data/settings.json | orvid get limits"
try "echo '{\"a\": 1, \"b\": {\"c\": 2, \"d\": 3}}' | orvid merge --compact data/merge.json -"
try "echo '[{\"op\": \"remove\", \"path\": \"/b\"}]' | orvid patch - data/rate.json"

try 'orvid check data/settings.json'
try "printf '{\"port\": 80,\\n \"port\": 81}' | orvid check"

try "orvid schema-path 'servers[7].port'"
try 'orvid data-path meta.schema.properties.servers.items.properties.port'
try 'orvid data-path servers'

try "printf '{\"a\":\\n  {\"b\": [1, tru]}}' | orvid print"
try "echo '{\"a\": [1, 2' | orvid print"
try "echo '{} {}' | orvid print"
try "echo '\"é\" \"é\"' | orvid print"
try 'orvid get colour data/settings.json'
try 'orvid get servers..host data/settings.json'
try "orvid get 'servers[*]' data/settings.json"
try 'orvid print no-such-file'
try 'orvid get'
try "echo '{\"a\": [1, 2' | orvid print --json-errors"

try "printf '{\"n\": 1.0}\\n\\n{\"m\": 2}\\n{\"n\": 3e1}\\n' | orvid get --lines --on-error=null --stats n"
try "printf '{\"n\": 1.0}\\n{\"n\" 2}\\n{\"n\": 3}\\n' | orvid set --lines n=0"
