#compdef brimlo
# Completion of brimlo for zsh.
local tool=${commands[brimlo]:A}
local -a found=("${(@f)$(${tool:h}/brimlo-complete $tool "${(@)words[2,CURRENT]}" 2>/dev/null)}")
if [[ $found == FILES ]]; then
    _files
elif [[ -n $found ]]; then
    found=("${(@)found//:/\\:}")
    found=("${(@)found/$'\t'/:}")
    _describe argument found
fi
