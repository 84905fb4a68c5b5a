#!/usr/bin/env bash
# Runs the real coding agents offline against a mock model API and checks what
# Tovrin's hooks write. Usage:
#   tests/agents/run-real-agents.sh [--mode capture] [--scenario NAME] [claude|codex|copilot|gemini ...]
# Needs node/npm, python3, jq, tmux, git and unshare (root, or unprivileged user namespaces).
# Exits non-zero when a check fails.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)

if [[ ${TOVRIN_AGENTS_NETNS:-} != 1 ]]; then
    for tool in unshare ip python3 jq tmux git node npm; do
        command -v "$tool" >/dev/null || { echo "run-real-agents: $tool is missing" >&2; exit 2; }
    done
    "$here/install-agents.sh"
    # Everything below runs with loopback only, so nothing an agent starts can leave the machine.
    # As root a plain network namespace; otherwise a user namespace maps us to root inside it.
    userns=()
    [[ $EUID -eq 0 ]] || userns=(--map-root-user)
    exec unshare "${userns[@]}" --net env TOVRIN_AGENTS_NETNS=1 bash -c 'ip link set lo up && exec "$0" "$@"' "$0" "$@"
fi

exec python3 "$here/harness.py" "$@"
