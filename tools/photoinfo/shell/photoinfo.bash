# shellcheck shell=bash
# Completion of photoinfo's command line for bash.

_photoinfo_commands='summary info batch orientation tag xmp preview tags lens copy scan report
    crop-factor canonical doctor'

# _photoinfo_options COMMAND: its options, and those of every command.
_photoinfo_options() {
    echo '--help --help-all --tools --verbose'
    case $1 in
        '') echo '--version' ;;
        preview) echo '--json --output --size' ;;
        copy) echo '--software --rating --x-resolution --y-resolution --unit' ;;
        scan) echo '--jobs --all --json --csv' ;;
        report) echo '--jobs --all --output' ;;
        *) echo '--json' ;;
    esac
}

# The command on the line before the word that is being completed; empty when there is none yet.
_photoinfo_command() {
    local i
    for ((i = 1; i < COMP_CWORD; ++i)); do
        if [[ ${COMP_WORDS[i]} == --tools ]]; then
            ((++i))
        elif [[ ${COMP_WORDS[i]} != -* ]]; then
            echo "${COMP_WORDS[i]}"
            return
        fi
    done
}

# _photoinfo_take LINES: the lines are the candidates; names with blanks stay whole.
_photoinfo_take() {
    local line
    while IFS= read -r line; do
        [[ -n $line ]] && COMPREPLY+=("$line")
    done <<<"$1"
}

_photoinfo() {
    local word=${COMP_WORDS[COMP_CWORD]}
    local before=${COMP_WORDS[COMP_CWORD - 1]}
    local command
    command=$(_photoinfo_command)
    COMPREPLY=()
    case $before in
        --tools)
            compopt -o filenames 2>/dev/null
            _photoinfo_take "$(compgen -d -- "$word")"
            return
            ;;
        --unit)
            _photoinfo_take "$(compgen -W 'none inch cm' -- "$word")"
            return
            ;;
        --size | --software | --rating | --x-resolution | --y-resolution | --jobs)
            return
            ;;
    esac
    if [[ $word == -* ]]; then
        _photoinfo_take "$(compgen -W "$(_photoinfo_options "$command")" -- "$word")"
        return
    fi
    case $command in
        '')
            _photoinfo_take "$(compgen -W "$_photoinfo_commands" -- "$word")"
            ;;
        scan)
            compopt -o filenames 2>/dev/null
            _photoinfo_take "$(compgen -d -- "$word")"
            ;;
        crop-factor | canonical | doctor) ;;
        *)
            compopt -o filenames 2>/dev/null
            _photoinfo_take "$(compgen -f -- "$word")"
            ;;
    esac
}

complete -F _photoinfo photoinfo
