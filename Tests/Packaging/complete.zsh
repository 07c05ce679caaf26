# complete.zsh FUNCTIONS LINE: what zsh puts forth for a line, one a line. Completion works in an
# interactive shell only, so there is one within this one.
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "PS1= RPS1= PROMPT= ; fpath=($1 \$fpath); autoload -Uz compinit; compinit -D -u
zstyle ':completion:*' list-grouped false
zstyle ':completion:*' format ''
# Instead of listing what it found, it says it.
compadd() {
    local -A given; local -a found
    if [[ \${@[1,(i)(-|--)]} == *-[OAD]* ]]; then builtin compadd \"\$@\"; return; fi
    builtin compadd -O found \"\$@\"
    print -rl -- \${found/#/FOUND:}
    builtin compadd \"\$@\"
}
bindkey '^I' list-choices
print READY"
zpty -r shell line '*READY*READY*'
zpty -n -w shell "$2"$'\t'
sleep 1
while zpty -r -t shell line; do
    [[ $line == *FOUND:* ]] && print -r -- ${${line##*FOUND:}%$'\r\n'}
done
zpty -d shell
