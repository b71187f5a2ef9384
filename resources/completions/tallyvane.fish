# Completion of tallyvane for fish. Files are offered where the program has nothing to offer.
function __tallyvane_candidates
    set -l words (commandline -opc) (commandline -ct)
    set -l candidates ($words[1] complete -- $words[2..] 2>/dev/null)
    if set -q candidates[1]
        printf '%s\n' $candidates
    else
        __fish_complete_path (commandline -ct)
    end
end

complete -c tallyvane -f -a '(__tallyvane_candidates)'
