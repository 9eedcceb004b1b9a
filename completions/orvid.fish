# SPDX-License-Identifier: MIT
#
# Completion of the command orvid in fish. Verbs and options come from the command's own help.
function __orvid_verbs
    orvid --help 2>/dev/null | sed -n '/^Verbs:/,/^$/s/^  \([a-z-]*\)  *\(.*\)/\1\t\2/p'
end
function __orvid_options
    set -l verb (commandline -opc)[2]
    orvid $verb --help 2>/dev/null | grep -oE '^  (-[a-zA-Z],)?--[a-z-]+' | sed 's/.*--/--/'
end
complete -c orvid -n __fish_use_subcommand -f -a '(__orvid_verbs)'
complete -c orvid -n 'not __fish_use_subcommand; and string match -q -- "-*" (commandline -ct)' -f -a '(__orvid_options)'
complete -c orvid -n 'not __fish_use_subcommand' -l color -x -a 'auto always never'
complete -c orvid -n 'not __fish_use_subcommand' -l on-error -x -a 'stop skip passthrough null'
