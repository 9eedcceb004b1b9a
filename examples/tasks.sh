#!/bin/sh
# SPDX-License-Identifier: MIT
#
# What people do with JSON at a shell every day, each task with the call that does it and what that prints. The
# command must be in PATH.
cd -- "$(dirname -- "$0")/data" || exit

task() {
    printf '# %s\n$ %s\n' "$1" "$2"
    sh -c "$2" 2>&1
    status=$?
    [ $status -eq 0 ] || echo "(exit status $status)"
}

task 'Look at a document' "echo '{\"a\":[1,{}],\"b\":\"x\"}' | orvid print --indent 2"
task 'Make it one line' 'orvid print -c rate.json'
task 'Sort the keys' "echo '{\"b\":1,\"a\":{\"d\":2,\"c\":3}}' | orvid print -cS"
task 'Write ASCII only' "echo '\"caf\u00e9\"' | orvid print --ascii"
task 'Take one value' 'orvid get limits.memory settings.json'
task 'Take a string without its quotes' "orvid get -r 'servers[0].host' settings.json"
task 'Take the last item' "orvid get -r 'servers[-1].host' settings.json"
task 'Take several values' "orvid get -r 'servers[0].host' --also 'servers[0].port' settings.json"
task 'Take a value or else another' 'orvid get --default=30 no.such.thing settings.json'
task 'Take a value by JSON Pointer' 'orvid get /servers/0/port settings.json'
task 'Use a value in a shell' 'port=$(orvid get "servers[0].port" settings.json) && echo "listens at $port"'
task 'List the keys' "orvid keys 'servers[0]' settings.json"
task 'Count items' 'orvid length servers settings.json'
task 'Ask for a type' 'orvid type limits settings.json'
task 'See whether a value is there' "orvid type no.such settings.json >/dev/null 2>&1 || echo 'it is not'"
task 'Find where a value is' 'orvid paths settings.json | grep beta'
task 'Search keys by a pattern' "orvid paths settings.json | grep -c '^servers'"
task 'Set a number' "echo '{\"a\": 1}' | orvid set a 2"
task 'Set a text' "echo '{\"a\": 1}' | orvid set name=string:'Ann Lee' -c"
task 'Set a text from a variable' "NAME='say \"hi\"' orvid set -n name=env:NAME -c"
task 'Set a value from a file' 'orvid set -n rate=file:rate.json -c'
task 'Put the text of a file into a value' "printf 'two\\nlines\\n' | orvid set -n note=text-file:- -c"
task 'Make a document of nothing' 'orvid set -n a.b=1 a.c=true list=[]'
task 'Set only what is not there' "echo '{\"a\": 1}' | orvid set --if-absent a=2 b=3 -c"
task 'Append to an array' "echo '{\"l\": [1]}' | orvid set 'l[*]' 2"
task 'Put an item first' "echo '{\"l\": [1]}' | orvid insert 'l[0]' 0"
task 'Remove a member' "echo '{\"a\": 1, \"b\": 2}' | orvid remove a"
task 'Remove several, there or not' "echo '{\"a\": 1, \"b\": 2}' | orvid remove --if-present a --also x"
task 'Remove all of a name' "echo '{\"id\": 1, \"l\": [{\"id\": 2, \"n\": 3}]}' | orvid remove --query '\$..id' -c"
task 'Rename a key' "echo '{\"colour\": 1}' | orvid rename colour color"
task 'Move a value' "echo '{\"port\": 80}' | orvid move port server.port -c"
task 'Copy a value' "echo '{\"a\": [1], \"b\": 2}' | orvid copy a c -c"
task 'Edit a file in place, comments and all' "cp editor.jsonc \"\${TMPDIR:-/tmp}/tasks.jsonc\" && orvid set -i 'editor\\.tabSize' 2 \"\${TMPDIR:-/tmp}/tasks.jsonc\" && diff editor.jsonc \"\${TMPDIR:-/tmp}/tasks.jsonc\"; rm \"\${TMPDIR:-/tmp}/tasks.jsonc\""
task 'Find an item by a field' "orvid find --in servers host string:beta.example -c settings.json"
task 'Filter items by a condition' "orvid query '\$.servers[?@.port > 8000].host' settings.json"
task 'Take a field of every item' "orvid query -r '\$.servers[*].host' settings.json"
task 'Take a field wherever it is' "orvid query '\$..port' rate.json settings.json"
task 'Merge two documents' "echo '{\"rate\": 1, \"new\": true}' >\"\${TMPDIR:-/tmp}/tasks.json\"; orvid merge -c \"\${TMPDIR:-/tmp}/tasks.json\" rate.json; rm \"\${TMPDIR:-/tmp}/tasks.json\""
task 'See what differs' "echo '{\"name\": \"billing\", \"rate\": 1}' | orvid diff --changes rate.json -"
task 'Ask whether documents differ' "echo '{\"rate\": 0.10, \"name\": \"billing\"}' | orvid diff -q rate.json - && echo same"
task 'Make a patch and apply it' "echo '{\"name\": \"new\", \"rate\": 0.10}' | orvid diff rate.json - | orvid patch - rate.json -c"
task 'Check a document' "printf '{\"a\": 1,\\n \"b\": [1, 2,]}' | orvid check"
task 'Check many in a script' "echo '[1' | orvid check -q || echo malformed"
task 'Turn an array into records' 'orvid split --in servers settings.json'
task 'Turn records into an array' "printf '{\"a\":1}\\n{\"a\":2}\\n' | orvid join -c"
task 'Make records of values that take several lines' 'orvid print rate.json rate.json | orvid split --values'
task 'Take a field of each record' "printf '{\"a\":\"x\"}\\n{\"a\":\"y\"}\\n' | orvid get --lines -r a"
task 'Edit each record' "printf '{\"a\":1}\\n{\"a\":2}\\n' | orvid set --lines seen=true"
task 'Leave bad records out' "printf '{\"a\":1}\\noops\\n{\"a\":2}\\n' | orvid get --lines --on-error=skip a 2>/dev/null; true"
task 'Write a table' 'orvid split --in servers settings.json | orvid csv -f host -f port'
task 'Read a table' "printf 'id,name\\n7,Ann\\n' | orvid uncsv"
task 'Turn leaves into a document again' "orvid paths settings.json | grep '^limits' | orvid unpaths -c"
task 'Fill in the defaults' 'orvid defaults --fill settings.json | orvid get timeout'
