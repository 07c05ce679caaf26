# Completion of brimlo for fish.
function __brimlo
    set -l tool (realpath (command --search brimlo))
    set -l words (commandline -opc)[2..] (commandline -ct)
    set -l found (string replace -r '[^/]*$' '' $tool)brimlo-complete
    set found ($found $tool $words 2>/dev/null)
    if test "$found" = FILES
        __fish_complete_path (commandline -ct)
    else
        string join \n -- $found
    end
end
complete -c brimlo -f -a '(__brimlo)'
