# shellcheck shell=bash
# bash completion of switchctl, which is asked for what may stand at the cursor.
_switchctl() {
    local words=() kind candidates=() line=${COMP_LINE:0:COMP_POINT}
    read -ra words <<<"$line"
    [[ $line != *[[:space:]] ]] || words+=("")
    local current=${words[-1]}
    { read -r kind; mapfile -t candidates; } < <("${words[0]}" completion candidates -- "${words[@]:1}" 2>/dev/null)
    # bash replaces what follows the last = or : only.
    local kept=${current%"${current##*[=:]}"}
    if [[ $kind == files ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "${current#"$kept"}")
        compopt -o filenames 2>/dev/null || :
    else
        COMPREPLY=("${candidates[@]#"$kept"}")
        [[ ${COMPREPLY[0]-} != *[=:/] ]] || compopt -o nospace 2>/dev/null || :
    fi
}
complete -F _switchctl switchctl
