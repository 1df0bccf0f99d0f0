# bash completion for quorvane
_quorvane() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    local i command="" words
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
        --demo | -h | --help) ;;
        *)
            command=${COMP_WORDS[i]}
            break
            ;;
        esac
    done
    case $command in
    "") words="--demo --help status summary menu card key baseline history auto-refresh interval notifications autostart" ;;
    status | menu) words="--json --help" ;;
    summary) words="--copy --help" ;;
    card)
        if [[ $prev == --png ]]; then
            mapfile -t COMPREPLY < <(compgen -f -- "$cur")
            return
        fi
        words="--png --hover --scale --help"
        ;;
    key) words="set remove --help" ;;
    baseline) words="reset --help" ;;
    history) words="clear --help" ;;
    auto-refresh) words="on off --help" ;;
    notifications) words="on off status --help" ;;
    interval) words="30 60 300 900 --help" ;;
    autostart) words="on off status --help" ;;
    *) words="" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
}
complete -F _quorvane quorvane
