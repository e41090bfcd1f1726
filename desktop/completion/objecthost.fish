# Completion of objecthost for fish: the program itself says what may stand where.
function __objecthost_complete
    set -l words (commandline -opc)
    $words[1] --complete $words[2..-1] (commandline -ct) 2>/dev/null
end
complete -c objecthost -a '(__objecthost_complete)'
