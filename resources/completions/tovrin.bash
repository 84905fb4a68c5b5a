# bash completion for tovrin

_tovrin() {
    local cur=${COMP_WORDS[COMP_CWORD]}
    local words=""
    case $COMP_CWORD in
        1) words="status hooks hosts watch telegram settings feedback update help --help --version" ;;
        *)
            case ${COMP_WORDS[1]} in
                status) [[ $COMP_CWORD -eq 2 ]] && words="--json --follow" ;;
                hooks)
                    if [[ $COMP_CWORD -eq 2 ]]; then
                        words="setup install uninstall remove-all"
                    elif [[ $COMP_CWORD -eq 3 && (${COMP_WORDS[2]} == install || ${COMP_WORDS[2]} == uninstall) ]]; then
                        words="claude-code codex copilot-cli vscode cursor antigravity"
                    elif [[ $COMP_CWORD -eq 4 && (${COMP_WORDS[2]} == install || ${COMP_WORDS[2]} == uninstall) ]]; then
                        words="--host"
                    elif [[ $COMP_CWORD -eq 5 && ${COMP_WORDS[4]} == --host ]]; then
                        # ssh's known hosts when bash-completion is loaded, else the hosts watched.
                        if declare -F _known_hosts_real >/dev/null; then
                            _known_hosts_real -- "$cur"
                            return
                        fi
                        words=$(tovrin hosts list 2>/dev/null)
                    fi
                    ;;
                hosts) [[ $COMP_CWORD -eq 2 ]] && words="list add remove" ;;
                telegram) [[ $COMP_CWORD -eq 2 ]] && words="setup" ;;
                update) [[ $COMP_CWORD -eq 2 ]] && words="--check" ;;
            esac
            ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
}
complete -F _tovrin tovrin
