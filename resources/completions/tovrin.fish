# fish completion for tovrin

set -l commands status hooks hosts watch telegram settings feedback update help
set -l hook_ids claude-code codex copilot-cli vscode cursor antigravity

complete -c tovrin -f
complete -c tovrin -n "not __fish_seen_subcommand_from $commands" -l help -d 'Print a summary of the commands'
complete -c tovrin -n "not __fish_seen_subcommand_from $commands" -l version -d 'Print the version and build number'
complete -c tovrin -n "not __fish_seen_subcommand_from $commands" -a status -d 'Print the live session list'
complete -c tovrin -n "not __fish_seen_subcommand_from $commands" -a hooks -d "List, install or remove the agents' hooks"
complete -c tovrin -n "not __fish_seen_subcommand_from $commands" -a watch -d 'Alert on waiting sessions without windows'
complete -c tovrin -n "not __fish_seen_subcommand_from $commands" -a hosts -d 'List, add or remove remote hosts watched over ssh'
complete -c tovrin -n "__fish_seen_subcommand_from hosts; and not __fish_seen_subcommand_from list add remove" -a 'list add remove'
complete -c tovrin -n "not __fish_seen_subcommand_from $commands" -a telegram -d 'Link a Telegram chat for alerts'
complete -c tovrin -n "not __fish_seen_subcommand_from $commands" -a settings -d 'Open the settings window'
complete -c tovrin -n "not __fish_seen_subcommand_from $commands" -a feedback -d 'Open the feedback window'
complete -c tovrin -n "not __fish_seen_subcommand_from $commands" -a update -d 'Install the newest release'
complete -c tovrin -n "not __fish_seen_subcommand_from $commands" -a help -d 'Print a summary of the commands'

complete -c tovrin -n "__fish_seen_subcommand_from status; and not __fish_seen_argument -l json -l follow" -l json -d 'Print the list as JSON'
complete -c tovrin -n "__fish_seen_subcommand_from status; and not __fish_seen_argument -l json -l follow" -l follow -d 'Keep the list on screen, redrawn on every change'

set -l hook_actions setup install uninstall remove-all
complete -c tovrin -n "__fish_seen_subcommand_from hooks; and not __fish_seen_subcommand_from $hook_actions" -a setup -d 'Install hooks for every agent found'
complete -c tovrin -n "__fish_seen_subcommand_from hooks; and not __fish_seen_subcommand_from $hook_actions" -a install -d 'Install the hooks of one agent'
complete -c tovrin -n "__fish_seen_subcommand_from hooks; and not __fish_seen_subcommand_from $hook_actions" -a uninstall -d 'Remove the hooks of one agent'
complete -c tovrin -n "__fish_seen_subcommand_from hooks; and not __fish_seen_subcommand_from $hook_actions" -a remove-all -d 'Remove every hook and the status writer'
complete -c tovrin -n "__fish_seen_subcommand_from hooks; and __fish_seen_subcommand_from install uninstall; and not __fish_seen_subcommand_from $hook_ids" -a "$hook_ids"
complete -c tovrin -n "__fish_seen_subcommand_from hooks; and __fish_seen_subcommand_from install uninstall; and __fish_seen_subcommand_from $hook_ids" -l host -x -a "(__fish_print_hostnames)" -d 'Install or remove on a remote host, over ssh'

complete -c tovrin -n "__fish_seen_subcommand_from telegram; and not __fish_seen_subcommand_from setup" -a setup -d 'Link a Telegram chat step by step'
complete -c tovrin -n "__fish_seen_subcommand_from update; and not __fish_seen_argument -l check" -l check -d 'Tell whether a newer release is available'
