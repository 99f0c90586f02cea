# Completion of torvane-cli for bash. What there is to complete, the program itself tells.

_torvane_cli_commands()
{
    torvane-cli --help | awk '/^  [0-9]+  / { for (i = 2; i <= NF; i++) print $i }'
}

# Names of the entries of a command, or of the pages for --set.
_torvane_cli_entries()
{
    local topic
    for topic in "$@"; do
        torvane-cli help "$topic" 2>/dev/null
    done | awk '/^  [A-Za-z][A-Za-z\[\]0-9]*  / { print $1 "=" }'
}

# The first word that is neither an option nor an option's argument.
_torvane_cli_command()
{
    local i
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
        --par | --profile | --set | --graph | --into | --jobs) ((i++)) ;;
        -*) ;;
        *)
            echo "${COMP_WORDS[i]}"
            return
            ;;
        esac
    done
}

_torvane_cli_words()
{
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2" | sort -u)
    if [[ ${COMPREPLY[0]-} == *= ]]; then
        compopt -o nospace 2>/dev/null
    fi
}

_torvane_cli()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command
    COMPREPLY=()
    command=$(_torvane_cli_command)
    case $before in
    --par | --profile | --graph) compopt -o default 2>/dev/null ;;
    --into) mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
    --jobs) ;;
    --set) _torvane_cli_words "$(_torvane_cli_entries profile condition preference)" "$word" ;;
    help) _torvane_cli_words "$(_torvane_cli_commands) profile condition preference" "$word" ;;
    *)
        if [[ $word == -* ]]; then
            _torvane_cli_words "--par --profile --set --save --graph --json --into --jobs --force --prepare --help --version" "$word"
        elif [[ -z $command ]]; then
            _torvane_cli_words "$(_torvane_cli_commands) help" "$word"
        else
            compopt -o default 2>/dev/null
            [[ $before == = ]] || _torvane_cli_words "$(_torvane_cli_entries "$command")" "$word"
        fi
        ;;
    esac
}

complete -F _torvane_cli torvane-cli
