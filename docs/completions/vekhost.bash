# Completion of vekhost for bash.

_vekhost() {
    local words last
    read -d '' -ra words <<<"${COMP_LINE:0:COMP_POINT}"
    [[ ${COMP_LINE:0:COMP_POINT} == *[[:space:]] ]] && words+=("")
    last=${words[-1]}
    words=("${words[@]//[\'\"\\]/}")
    mapfile -t COMPREPLY < <("$1" complete "${words[@]:1}" 2>/dev/null)
    # bash quotes file names: "<" needs it.
    [[ ${COMPREPLY[0]} == */* ]] && compopt -o filenames
    [[ ${COMPREPLY[0]} == */ ]] && compopt -o nospace
    # Outside quotes, bash completes only what follows a ":".
    [[ $last == [\'\"]* || $COMP_WORDBREAKS != *:* ]] ||
        COMPREPLY=("${COMPREPLY[@]#"${last%"${last##*:}"}"}")
}
complete -o bashdefault -o default -F _vekhost vekhost
