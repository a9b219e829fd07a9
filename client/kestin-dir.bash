# SPDX-License-Identifier: Apache-2.0
# Bash completion of kestin-dir, which tells by itself what can stand where; ids and setting keys are asked from the
# services, and left out when they do not answer soon.

# The words up to the cursor go into `words`, each whole as it was typed: bash cuts them at colons and equals signs too.
_kestin_dir_words() {
    local rest=${COMP_LINE:0:COMP_POINT} index word
    words=()
    for ((index = 0; index <= COMP_CWORD; index++)); do
        word=${COMP_WORDS[index]}
        ((index < COMP_CWORD)) || word=${rest#"${rest%%[![:space:]]*}"}
        if ((index == 0)) || [[ $rest == [[:space:]]* ]]; then
            rest=${rest#"${rest%%[![:space:]]*}"}
            words+=("$word")
        else
            words[-1]+=$word
        fi
        rest=${rest#"$word"}
    done
}

# The candidate as it has to stand behind the quotation mark that was typed, if any.
_kestin_dir_quoted() {
    local quote=$1 text=$2
    case $quote in
    \') printf '%s' "${text//\'/\'\\\'\'}" ;;
    \")
        text=${text//\\/\\\\}
        text=${text//\"/\\\"}
        text=${text//\$/\\\$}
        printf '%s' "${text//\`/\\\`}"
        ;;
    *) printf '%q' "$text" ;;
    esac
}

_kestin_dir() {
    local words quote='' line candidates begun
    _kestin_dir_words
    case ${words[-1]} in \'* | \"*) quote=${words[-1]:0:1} ;; esac
    # What bash does not take for a part of the word stays where it is.
    begun=${words[-1]%"${COMP_WORDS[COMP_CWORD]}"}
    [[ ${COMP_WORDS[COMP_CWORD]} != [=:] ]] || begun=${words[-1]}
    # Without what only a shell reads.
    local plain=("${words[@]//[\'\"\\]/}")
    mapfile -t candidates < <(kestin-dir complete "${plain[@]:1}" 2>/dev/null)
    COMPREPLY=()
    if [[ ${candidates[0]-} == :files* ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "${plain[-1]}")
        return
    fi
    for line in "${candidates[@]}"; do
        local text description=''
        text=$(_kestin_dir_quoted "$quote" "${line%%$'\t'*}")
        # 63, 33 and 64: bash shows the list, and there is more than one in it.
        if [[ ${COMP_TYPE-} == @(63|33|64) && ${#candidates[@]} -gt 1 && $line == *$'\t'?* ]]; then
            description="  (${line#*$'\t'})"
        fi
        [ -n "$quote" ] || text=${text#"$begun"}
        COMPREPLY+=("$text$description")
    done
}

complete -F _kestin_dir kestin-dir
