# fish completion of switchctl, which is asked for what may stand at the cursor.
function __switchctl_candidates
    set -l before (commandline -opc)
    set -l current (commandline -ct)
    set -l lines ($before[1] completion candidates -- $before[2..-1] "$current" 2>/dev/null)
    if test "$lines[1]" = files
        __fish_complete_path "$current"
    else
        string join \n -- $lines[2..-1]
    end
end
complete -c switchctl -f -a '(__switchctl_candidates)'
