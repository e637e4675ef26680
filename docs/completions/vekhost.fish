# Completion of vekhost for fish.

function __vekhost_complete
    set -l words (commandline -opc)
    set -l last (commandline -ct | string replace -ra '[\'"\\\\]' '')
    set -l found ($words[1] complete $words[2..] "$last" 2>/dev/null)
    if set -q found[1]
        printf '%s\n' $found
    else
        __fish_complete_path "$last"
    end
end
complete -c vekhost -f -a '(__vekhost_complete)'
