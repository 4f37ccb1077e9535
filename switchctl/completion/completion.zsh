#compdef switchctl
# zsh completion of switchctl, which is asked for what may stand at the cursor.
_switchctl() {
    local -a lines
    lines=("${(@f)$(${words[1]} completion candidates -- "${(@)words[2,CURRENT]}" 2>/dev/null)}")
    if [[ $lines[1] == files ]]; then
        compset -P '*='
        _files
        return
    fi
    shift lines
    compadd -S '' -- ${(M)lines:#*[=:/]}
    compadd -- ${lines:#*[=:/]}
}
if [[ $funcstack[1] == _switchctl ]]; then _switchctl "$@"; else compdef _switchctl switchctl; fi
