# SPDX-License-Identifier: MIT
#
# Completion of the command orvid in bash. Verbs and options come from the command's own help.
_orvid() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} verb=${COMP_WORDS[1]}
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        local verbs
        verbs=$(orvid --help 2>/dev/null | sed -n '/^Verbs:/,/^$/s/^  \([a-z-]*\) .*/\1/p')
        mapfile -t COMPREPLY < <(compgen -W "$verbs --help --version" -- "$word")
        return
    fi
    [ "$word" != "=" ] || word=
    [ "$previous" != "=" ] || previous=${COMP_WORDS[COMP_CWORD - 2]}
    case $previous in
        --color) mapfile -t COMPREPLY < <(compgen -W "auto always never" -- "$word") ;;
        --on-error) mapfile -t COMPREPLY < <(compgen -W "stop skip passthrough null" -- "$word") ;;
        *)
            if [[ $word == -* ]]; then
                local options
                options=$(orvid "$verb" --help 2>/dev/null | grep -oE '^  (-[a-zA-Z],)?--[a-z-]+' | sed 's/.*--/--/')
                mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
            else
                compopt -o filenames 2>/dev/null
                mapfile -t COMPREPLY < <(compgen -f -- "$word")
            fi
            ;;
    esac
}
complete -F _orvid orvid
