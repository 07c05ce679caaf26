# complete.zsh FUNCTIONS LINE: what zsh puts forth for a line, one a line. Completion works in an
# interactive shell only, so there is one within this one.
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "PS1=; fpath=($1 \$fpath); autoload -Uz compinit; compinit -D -u
# Beside putting forth what was found, it says it; calls that only ask are left alone.
compadd() {
    local -a found
    if [[ \${(@)@[1,(i)(-|--)]} != *-[OAD]* ]]; then
        builtin compadd -O found \"\$@\"
        print -rl -- \${found/#/FOUND:}
    fi
    builtin compadd \"\$@\"
}
list-and-tell() { zle list-choices; print 'THE''END' }
zle -N list-and-tell
bindkey '^I' list-and-tell
print 'RE''ADY'"
zpty -r shell said '*READY*'
zpty -n -w shell "$2"$'\t'
zpty -r shell said '*THEEND*'
for line in ${(f)said}; do
    [[ $line == *FOUND:* ]] && print -r -- ${${line##*FOUND:}%$'\r'}
done
zpty -d shell
