#!/usr/bin/env bash
# Logging hook for the real-agent harness: appends one JSON line per call with
# argv, stdin, a few environment variables and the chain of parent processes.
# Only the variables listed here are recorded (some agents pass their API key
# to hooks); of the rest only the names are kept.
# Usage: log-hook.sh <agent> <event>   (log file: $TOVRIN_HOOK_LOG)
stdin=$(cat)
log=${TOVRIN_HOOK_LOG:-/tmp/tovrin-hook.log}
vars=(CLAUDECODE CLAUDE_CODE_SESSION_ID CLAUDE_PID CLAUDE_PROJECT_DIR CLAUDE_CODE_CHILD_SESSION
      CLAUDE_CODE_SESSION_ATTENDED CLAUDE_ENV_FILE COPILOT_LOADER_PID COPILOT_PROJECT_DIR COPILOT_CLI
      GEMINI_SESSION_ID GEMINI_CWD GEMINI_PROJECT_DIR GEMINI_CLI CODEX_SANDBOX CODEX_THREAD_ID
      TERM_PROGRAM TERM TMUX_PANE SHELL PWD AGENT_STATUS_DIR)
envj=$(for v in "${vars[@]}"; do [[ -v $v ]] && printf '%s\0%s\0' "$v" "${!v}"; done |
       jq -Rs 'split("\u0000") | [_nwise(2) | select(length == 2) | {(.[0]): .[1]}] | add // {}')
names=$(compgen -e | grep -v -i -E 'key|token|secret|pass' | jq -R . | jq -s -c 'sort')
chain='[]'
p=$$
for _ in 1 2 3 4 5 6; do
    [[ -r /proc/$p/stat ]] || break
    comm=$(cat /proc/$p/comm)
    cmd=$(tr '\0' ' ' </proc/$p/cmdline | cut -c1-160)
    chain=$(jq -c --argjson p "$p" --arg c "$comm" --arg m "$cmd" '. + [{pid:$p,comm:$c,cmd:$m}]' <<<"$chain")
    p=$(awk '{print $4}' /proc/$p/stat)
    [[ $p -le 1 ]] && break
done
payload=$(jq -c . <<<"$stdin" 2>/dev/null) || payload=$(jq -Rc . <<<"$stdin")
[[ -n $payload ]] || payload=null
jq -nc --arg agent "$1" --arg event "$2" --argjson argv "$(jq -nc '$ARGS.positional' --args -- "$@")" \
    --argjson stdin "$payload" --argjson env "$envj" --argjson envNames "$names" --argjson chain "$chain" \
    --arg t "$(date +%s.%N)" --argjson stdinTty "$([[ -t 0 ]] && echo true || echo false)" \
    '{t:($t|tonumber),agent:$agent,event:$event,argv:$argv,stdinIsTty:$stdinTty,env:$env,envNames:$envNames,chain:$chain,stdin:$stdin}' \
    >>"$log"
exit 0
