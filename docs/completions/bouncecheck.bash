# Completes the arguments of bouncecheck in bash.
_bouncecheck() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local options values commands=
    [ "$COMP_CWORD" -ne 1 ] || commands="record scan watch list why allow deny protect check"
    case ${COMP_WORDS[1]} in
        record)
            options="--ledger --after --within --max-message-size --verp -h --help"
            values="--after --within --max-message-size --verp"
            ;;
        scan)
            options="--ledger --after --within --from-list -0 --single --max-message-size --verp -j -h --help"
            values="--after --within --max-message-size --verp -j"
            ;;
        watch)
            options="--ledger --after --within --max-message-size --verp -h --help"
            values="--after --within --max-message-size --verp"
            ;;
        list)
            options="--ledger --advice --reason --since --changes-since --format --html -h --help"
            values="--advice --reason --since --changes-since --format"
            ;;
        why)
            options="--ledger -h --help"
            values=""
            ;;
        allow)
            options="--ledger --reason -h --help"
            values="--reason"
            ;;
        deny)
            options="--ledger --reason -h --help"
            values="--reason"
            ;;
        protect)
            options="--ledger --remove -h --help"
            values=""
            ;;
        check)
            options="--ledger -h --help"
            values=""
            ;;
        *)
            options="--from-list -0 --single --max-message-size --verp -j --format --fields --data --trace --csv-safe --by --summary --suppress --addresses --explain --only --not --reason --advice --color -o --output --html --sort-into --exit-type -h --help --version --list-phrases"
            values="--max-message-size --verp -j --format --fields --by --only --not --reason --advice --color"
            ;;
    esac
    COMPREPLY=()
    # What is no path has to be known.
    case " $values " in *" $before "*) return ;; esac
    case $word in
        -*) mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word") ;;
        *) mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$word"; compgen -f -- "$word") ;;
    esac
}
complete -o filenames -F _bouncecheck bouncecheck
