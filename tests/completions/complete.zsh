# Prints what zsh offers at the end of a line: complete.zsh COMPLETIONS LINE
# It has a terminal of its own, since only the line editor completes.
zmodload zsh/zpty

# Reads what the terminal shows until a text is in it, and prints it.
until_shown() {
    local all= piece
    local -F end=$((SECONDS + 20))
    while [[ $all != *$1* ]] && ((SECONDS < end)); do
        if zpty -rt terminal piece; then all+=$piece; else sleep 0.02; fi
    done
    print -r -- $all
}
typeset -F SECONDS
zpty terminal zsh -f -i
# What is typed is not what is waited for.
zpty -w terminal "stty rows 200 columns 400; fpath=($1 \$fpath); autoload -Uz compinit; compinit -u -D; LISTMAX=1000; setopt no_menu_complete no_auto_menu; bindkey '^T' list-choices; PS1=RE''ADY"
until_shown READY >/dev/null
zpty -w -n terminal "$2"$'\x14'
# The editor prints the list before it reads on.
zpty -w -n terminal $'\x15'"print E''ND"$'\n'
until_shown END
zpty -d terminal
