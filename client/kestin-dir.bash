# SPDX-License-Identifier: Apache-2.0
# Bash completion of kestin-dir. Commands and options are read from its help texts, which need no bus; ids and setting
# keys are asked from the services, and left out when they do not answer at once.

# The first words of the lines that the help indents by two blanks, in the section with the given heading.
_kestin_dir_help() {
    local heading=$1
    shift
    kestin-dir "$@" --help 2>/dev/null |
        awk -v heading="$heading" 'index($0, heading) == 1 { inside = 1; next } /^$/ { inside = 0 } inside { print $1 }'
}

_kestin_dir_values() {
    local key=$1
    shift
    timeout "${KESTIN_COMPLETION_LIMIT:-0.5}" kestin-dir "$@" --json 2>/dev/null | sed -n "s/.*\"$key\":\"\([^\"]*\)\".*/\1/p"
}

_kestin_dir_ids() {
    _kestin_dir_values contactId "$@"
}

# Offers the lines of standard input that go on from the current word, quoted for the shell.
_kestin_dir_offer() {
    local candidate word=$1
    # What is typed may be quoted already.
    word=${word//[\'\"\\]/}
    while IFS= read -r candidate; do
        [[ $candidate == "$word"* ]] && COMPREPLY+=("$(printf '%q' "$candidate")")
    done
}

_kestin_dir_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$1")
}

_kestin_dir_arguments() {
    local word=$1 command=$2 previous=$3
    case $command:$previous in
    show:* | edit:* | remove:*) _kestin_dir_offer "$word" < <(_kestin_dir_ids list --length 200) ;;
    preview:preview) _kestin_dir_offer "$word" < <(printf '%s\n' list add remove) ;;
    preview:*)
        if [[ ${COMP_WORDS[2]} == remove ]]; then
            _kestin_dir_offer "$word" < <(_kestin_dir_ids preview)
        else
            _kestin_dir_offer "$word" < <(_kestin_dir_ids list --length 200)
        fi
        ;;
    settings:settings) _kestin_dir_offer "$word" < <(printf '%s\n' list get set) ;;
    settings:get | settings:set) _kestin_dir_offer "$word" < <(_kestin_dir_values key settings list) ;;
    photo:photo) _kestin_dir_offer "$word" < <(_kestin_dir_ids list --length 200) ;;
    sync:sync) _kestin_dir_offer "$word" < <(printf '%s\n' export import) ;;
    defaults:defaults) _kestin_dir_offer "$word" < <(printf '%s\n' show set) ;;
    import:* | export:* | photo:* | sync:* | defaults:set) _kestin_dir_files "$word" ;;
    esac
}

_kestin_dir() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        _kestin_dir_offer "$word" < <(_kestin_dir_help Commands; printf '%s\n' --help --version)
        return
    fi
    if [[ $word == -* ]]; then
        _kestin_dir_offer "$word" < <(_kestin_dir_help Options "$command")
        return
    fi
    case $command:$previous in
    list:--type) _kestin_dir_offer "$word" < <(printf '%s\n' local cached dm manager) ;;
    *:--photo | *:--melody) _kestin_dir_files "$word" ;;
    # The other options take a value that nobody knows but the user; these take none.
    *:--json | *:--local | *:--private | *:--not-private | *:--full | *:--none | *:--wait | *:--text)
        _kestin_dir_arguments "$word" "$command" "${COMP_WORDS[2]}"
        ;;
    *:--*) ;;
    *) _kestin_dir_arguments "$word" "$command" "$previous" ;;
    esac
}

complete -F _kestin_dir kestin-dir
