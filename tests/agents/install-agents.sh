#!/usr/bin/env bash
# Installs the four command-line agents into a private prefix so that the
# real-agent harness never touches a global install. Idempotent: a prefix that
# already holds the pinned versions is left alone.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
repo=$(cd "$here/../.." && pwd)
prefix=${TOVRIN_AGENTS_PREFIX:-$repo/build/agents}

# Versions the harness was last verified with; override with e.g. CLAUDE_VERSION=latest.
packages=(
    "@anthropic-ai/claude-code@${CLAUDE_VERSION:-2.1.330}"
    "@openai/codex@${CODEX_VERSION:-0.169.0}"
    "@github/copilot@${COPILOT_VERSION:-1.0.102}"
    "@google/gemini-cli@${GEMINI_VERSION:-0.61.0}"
)

stamp="$prefix/.installed"
want=$(printf '%s\n' "${packages[@]}")
if [[ -f $stamp && $(cat "$stamp") == "$want" ]]; then
    echo "agents already installed in $prefix"
    exit 0
fi

mkdir -p "$prefix"
# A private cache keeps the download measurable and the user's cache clean.
cache="$prefix/npm-cache"
start=$(date +%s)
npm install --prefix "$prefix" --cache "$cache" --no-audit --no-fund --loglevel=warn "${packages[@]}"
end=$(date +%s)
printf '%s\n' "$want" >"$stamp"
echo "installed in $((end - start)) s; npm cache $(du -sm "$cache" | cut -f1) MB; prefix $(du -sm "$prefix/node_modules" | cut -f1) MB"
