# Completion of brimlo for bash.
_brimlo() {
    local word words=() tool
    # Bash takes "--sort=name" apart.
    for word in "${COMP_WORDS[@]:1:COMP_CWORD}"; do
        [[ $word == = ]] || words+=("$word")
    done
    word=${COMP_WORDS[COMP_CWORD]}
    [[ $word != = ]] || word='' words+=('')
    tool=$(readlink -f "$(type -P brimlo)")
    words=$("${tool%/*}/brimlo-complete" "$tool" "${words[@]}" 2>/dev/null | cut -f 1)
    COMPREPLY=()
    if [[ $words == FILES ]]; then
        compopt -o default
    else
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    fi
}
complete -F _brimlo brimlo
