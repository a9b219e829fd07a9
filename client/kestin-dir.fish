# SPDX-License-Identifier: Apache-2.0
# Fish completion of kestin-dir, which tells by itself what can stand where.

function __kestin_dir
    set -l words (commandline -opc)
    # What is typed may be quoted already.
    set -l word (commandline -ct | string replace -ar '[\'"\\\\]' '')
    set -l lines (kestin-dir complete $words[2..-1] "$word" 2>/dev/null)
    if string match -q ':files*' -- $lines[1]
        __fish_complete_path "$word"
    else
        printf '%s\n' $lines
    end
end

complete -c kestin-dir -f -a '(__kestin_dir)'
