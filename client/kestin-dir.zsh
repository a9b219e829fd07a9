#compdef kestin-dir
# SPDX-License-Identifier: Apache-2.0
# Zsh completion of kestin-dir, which tells by itself what can stand where.

_kestin-dir() {
    local -a lines texts shown
    local line
    lines=("${(@f)$(kestin-dir complete "${(@Q)words[2,CURRENT-1]}" "${(Q)PREFIX}" 2>/dev/null)}")
    if [[ ${lines[1]} == :files* ]]; then
        _files
        return
    fi
    for line in $lines; do
        texts+=("${line%%$'\t'*}")
        shown+=("${line%$'\t'}")
    done
    shown=("${(@)shown/$'\t'/  -- }")
    (( ${#texts} )) && compadd -l -d shown -a texts
}

if [[ $funcstack[1] == _kestin-dir ]]; then
    _kestin-dir "$@"
else
    compdef _kestin-dir kestin-dir
fi
