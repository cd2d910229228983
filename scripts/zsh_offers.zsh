# What zsh offers for a command line, a word a line: types it into a shell of its own.
#   zsh -f zsh_offers.zsh FOLDER-OF-FUNCTIONS LINE
if [[ -n $OFFERS_FROM ]]; then
    # Inside: what would be offered is printed.
    PS1= PS2=
    unsetopt zle_bracketed_paste
    fpath=($OFFERS_FROM $fpath)
    autoload -U compinit && compinit -D -u
    zstyle ':completion:*' list-prompt ''
    compadd() {
        local -a kept
        if [[ ${@[(I)-[OAD]*]} -eq 0 ]]; then
            builtin compadd -A kept "$@"
            print -rl -- "offered:"${^kept}
        fi
        builtin compadd "$@"
    }
    offer() { zle complete-word; print -r -- "ended:" }
    zle -N offer
    bindkey '^I' offer
    return
fi
zmodload zsh/zpty
export OFFERS_FROM=$1
zpty shell zsh -f -i
zpty -w shell "source ${(q)0:A}; print be''gun:"
zpty -r -m shell text '*begun:*'
zpty -w -n shell "$2"$'\t'
zpty -r -m shell text '*ended:*'
for line in ${(f)text}; do
    [[ $line == *offered:* ]] && print -r -- "${${line##*offered:}%%$'\r'*}"
done
zpty -d shell
exit 0
