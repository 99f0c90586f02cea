# Completion of torvane-cli for bash. The entries of a command the program itself tells.

# made: words
_torvane_cli_commands="setup-profile profile load-profile-data load-profile save-current-profile save-profile setup-condition preference preferences human equipments shifting wheel tyre brake power-loss e-assist all-profile course peloton condition cadence-theory pedaling-dynamics gear-combination power-and-velocity acceleration deceleration pattern-braking inclination-and-velocity critical-cornering load-activity-fit-file load express-source-data express analyse-and-predict analyse predict create-fit-file-analysed create combine-fit-files combine convert-fit-file-format convert add-messages add divide-a-fit-file divide exclude-messages exclude at-one-stroke stroke increase-timestamp timestamp field-dump dump prepare-activity-fit-file prepare compare-rides compare ride course-ahead plan calibrate"
_torvane_cli_leading="sweep"
_torvane_cli_topics="profile condition preference"
_torvane_cli_options="--par --profile --set --save --graph --curves --x --size --dark --page --against --rows --json --into --jobs --files-from --recursive --resume --timeout --stdin --force --prepare --save-profile --as-angle --quiet --help --version"
_torvane_cli_valued=" --par --profile --set --graph --curves --x --size --page --against --rows --into --jobs --files-from --timeout --save-profile "
_torvane_cli_files=" --par --profile --graph --page --rows --files-from --save-profile "
# made: end

# Names of the entries of a command, or of the pages for --set.
_torvane_cli_entries()
{
    local topic
    for topic in "$@"; do
        torvane-cli help "$topic" 2>/dev/null
    done | awk '/^  [A-Za-z][A-Za-z\[\]0-9]*  / { print $1 "=" }'
}

# The first word that is neither an option nor an option's argument, nor stands in front of a command.
_torvane_cli_command()
{
    local i
    for ((i = 1; i < COMP_CWORD; i++)); do
        if [[ $_torvane_cli_valued == *" ${COMP_WORDS[i]} "* ]]; then
            ((i++))
        elif [[ ${COMP_WORDS[i]} != -* && ${COMP_WORDS[i]} != "$_torvane_cli_leading" ]]; then
            echo "${COMP_WORDS[i]}"
            return
        fi
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
    --into) mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
    --jobs) ;;
    --set) _torvane_cli_words "$(_torvane_cli_entries $_torvane_cli_topics)" "$word" ;;
    help) _torvane_cli_words "$_torvane_cli_commands $_torvane_cli_leading $_torvane_cli_topics" "$word" ;;
    *)
        if [[ $_torvane_cli_files == *" $before "* ]]; then
            compopt -o default 2>/dev/null
        elif [[ $word == -* ]]; then
            _torvane_cli_words "$_torvane_cli_options" "$word"
        elif [[ -z $command ]]; then
            _torvane_cli_words "$_torvane_cli_commands $_torvane_cli_leading help" "$word"
        else
            compopt -o default 2>/dev/null
            [[ $before == = ]] || _torvane_cli_words "$(_torvane_cli_entries "$command")" "$word"
        fi
        ;;
    esac
}

complete -F _torvane_cli torvane-cli
