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
try 'orvid get limits data/settings.json'
try 'orvid get timeout data/settings.json'
try 'orvid get --default timeout data/settings.json'
try "orvid get --default 'log\\.level' data/settings.json"

try "echo '{}' | orvid set 'a.b[*].c' 1.50"
try "echo '[1, 2]' | orvid set '[2]' 5"
try "echo '{\"meta\": 1, \"a\": 2}' | orvid set a '\"two\"'"
try "echo '{}' | orvid set a tru"

try "echo '{\"meta\": 1, \"a\": [2, 3]}' | orvid remove 'a[0]'"
try "echo '{\"meta\": 1, \"a\": 2}' | orvid print"
try "echo '{\"meta\": 1, \"a\": 2}' | orvid print --meta"

try "printf '%s' '{\"a.b\": [1, {}], \"two\\nlines\": \"x\\ny\", \"\\\"\": 0, \"\": null}' | orvid paths"

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
