#!/bin/sh
# SPDX-License-Identifier: MIT
#
# One value set in a file with comments, and what has changed in it. The command must be in PATH.
editor=$(dirname -- "$(readlink -f -- "$0")")/data/editor.jsonc
folder=$(mktemp -d) || exit
trap 'rm -rf "$folder"' EXIT
cd -- "$folder" || exit
cp -- "$editor" settings.jsonc

try() {
    printf '$ %s\n' "$1"
    sh -c "$1" 2>&1
}

try 'cp settings.jsonc before.jsonc'
try "orvid set -i 'editor\\.tabSize' 2 settings.jsonc"
try 'diff before.jsonc settings.jsonc'
exit 0
