# shellcheck shell=bash
# Completes commands and options of switchctl, by asking the program's own help; files otherwise.

_switchctl() {
    local program=$1 current=${COMP_WORDS[COMP_CWORD]} commands=() word
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [[ $word == [a-z]* && $word != *.* && $word != */* ]] && commands+=("$word")
    done
    local help
    help=$("$program" "${commands[@]}" --help 2>/dev/null)
    # Options stand as "  -h,--help", commands under "Subcommands:", each at the start of a line.
    local words
    words=$(awk '/^Subcommands:/ {inside = 1; next} /^$/ {inside = 0}
                 inside && /^  [a-z]/ {print $1}
                 /^  -/ {count = split($1, names, ","); print names[count]}' <<<"$help")
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -o default -F _switchctl switchctl
