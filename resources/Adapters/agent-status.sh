#!/bin/sh
# Tovrin's status writer.
#
#   agent-status.sh <tool-id> <event>        (the agent's hook payload, JSON, on stdin)
#
# The hooks that Tovrin installs into each agent's configuration run this on agent events.
# It keeps one JSON file per session in $AGENT_STATUS_DIR (default ~/.agent-status), which
# Tovrin watches, and deletes it when the session ends.
#
# It runs inside other programs' hooks, so:
#   - it prints nothing (Antigravity's PreToolUse gets the neutral "{}"), writes nothing to
#     stderr, never reads a terminal and always exits 0: output or a failure could block the
#     agent or land in the model's context;
#   - without jq it records nothing;
#   - it takes only the environment variables named below: agents hand their whole
#     environment to hooks, API keys included;
#   - it expects duplicates and disorder: hooks run in parallel and some arrive late.

exec 2>/dev/null
umask 077

TOOL_ARG=${1-}
EVENT=${2-}

# Antigravity may read a PreToolUse hook without an answer as a denial.
case "$TOOL_ARG $EVENT" in
"antigravity-cli PreToolUse" | "antigravity-ide PreToolUse") printf '{}\n' ;;
esac
exec >/dev/null

NL='
'
TMP_FILE='' PAYLOAD_FILE=''
trap '[ -n "$TMP_FILE" ] && rm -f "$TMP_FILE"; [ -n "$PAYLOAD_FILE" ] && rm -f "$PAYLOAD_FILE"; exit 0' EXIT
trap 'exit 0' HUP INT TERM

# --- Finding things ---------------------------------------------------------------------

# jq from PATH, else from the usual places: an editor started from the desktop has a short
# PATH. TOVRIN_JQ, when set, is the only candidate (tests use it to take jq away).
find_jq() {
    if [ -n "${TOVRIN_JQ-}" ]; then
        JQ=$TOVRIN_JQ
        [ -f "$JQ" ] && [ -x "$JQ" ]
        return
    fi
    JQ=$(command -v jq)
    case $JQ in /*) [ -x "$JQ" ] && return 0 ;; esac
    for JQ in /usr/bin/jq /usr/local/bin/jq "${HOME:-/nonexistent}/.local/bin/jq" \
        /home/linuxbrew/.linuxbrew/bin/jq; do
        [ -f "$JQ" ] && [ -x "$JQ" ] && return 0
    done
    return 1
}

# The folder Tovrin reads: AGENT_STATUS_DIR with a leading ~ expanded, else ~/.agent-status.
find_status_dir() {
    STATUS_DIR=${AGENT_STATUS_DIR:-\~/.agent-status}
    case $STATUS_DIR in
    \~ | \~/*)
        [ -n "${HOME-}" ] || return 1
        STATUS_DIR=$HOME${STATUS_DIR#\~}
        ;;
    esac
    [ -d "$STATUS_DIR" ] || mkdir -p "$STATUS_DIR"
}

# The payload, kept in a private temporary file for jq (the shell is slow with megabytes),
# and its start for cheap key look-ups (top-level keys come first in practice). A payload
# past the cap is dropped, yet read to its end: the agent must not meet a closed pipe. The
# cap is generous, as a permission request may carry a large tool input.
PAYLOAD_CAP=16777216
read_payload() {
    [ -t 0 ] && return 1
    PAYLOAD_FILE=$(mktemp || TMPDIR=/tmp mktemp) || return 1
    head -c "$PAYLOAD_CAP" >"$PAYLOAD_FILE"
    case $(wc -c) in *[1-9]*) return 1 ;; esac
    [ -s "$PAYLOAD_FILE" ] || return 1
    PAYLOAD_HEAD=$(head -c 4096 "$PAYLOAD_FILE")
}

# --- Processes ---------------------------------------------------------------------------

# Reads /proc/<pid>/stat into STAT_COMM, STAT_PPID and STAT_TTY (the tty_nr field).
# The name sits in brackets and may hold blanks and brackets itself, so split at the last ")".
read_stat() {
    line=
    IFS= read -r line <"/proc/$1/stat" || [ -n "$line" ] || return 1
    STAT_COMM=${line#*\(}
    STAT_COMM=${STAT_COMM%\)*}
    # shellcheck disable=SC2086 # split on purpose: the fields after the name are numbers
    set -- ${line##*\) }
    STAT_PPID=$2
    STAT_TTY=$5
}

# Programs that stand between an agent and its hook: the agent's shell wrapper
# ("sh -c", "$SHELL -lc", "bash -c") and launchers that exec their command.
is_shell() {
    case $1 in
    sh | dash | bash | zsh | fish | ksh | ksh93 | mksh | pdksh | oksh | ash | yash | busybox | \
        tcsh | csh | env | nohup | timeout | stdbuf | nice) return 0 ;;
    esac
    return 1
}

# The device of a tty_nr, without opening it: pseudo terminals (majors 136-143) and consoles.
tty_device() {
    TTY_DEVICE=
    [ "$1" -gt 0 ] || return
    major=$((($1 >> 8) & 0xfff))
    minor=$((($1 & 0xff) | (($1 >> 12) & 0xfff00)))
    if [ "$major" -ge 136 ] && [ "$major" -le 143 ]; then
        TTY_DEVICE=/dev/pts/$(((major - 136) * 256 + minor))
    elif [ "$major" -eq 4 ] && [ "$minor" -lt 64 ]; then
        TTY_DEVICE=/dev/tty$minor
    elif [ "$major" -eq 4 ]; then
        TTY_DEVICE=/dev/ttyS$((minor - 64))
    fi
}

# The application that hosts a terminal session, by the name of an ancestor process.
app_named() {
    case $1 in
    code | code-insiders | codium | code-oss | vscodium) HOST_APP="VS Code" ;;
    cursor) HOST_APP=Cursor ;;
    antigravity) HOST_APP=Antigravity ;;
    gnome-terminal- | gnome-terminal) HOST_APP="GNOME Terminal" ;;
    kgx) HOST_APP=Console ;;
    ptyxis | ptyxis-agent) HOST_APP=Ptyxis ;;
    konsole) HOST_APP=Konsole ;;
    kitty) HOST_APP=kitty ;;
    alacritty | Alacritty) HOST_APP=Alacritty ;;
    wezterm-gui | wezterm) HOST_APP=WezTerm ;;
    ghostty) HOST_APP=Ghostty ;;
    foot | footclient) HOST_APP=foot ;;
    tilix) HOST_APP=Tilix ;;
    terminator) HOST_APP=Terminator ;;
    xfce4-terminal) HOST_APP="Xfce Terminal" ;;
    mate-terminal) HOST_APP="MATE Terminal" ;;
    lxterminal) HOST_APP=LXTerminal ;;
    qterminal) HOST_APP=QTerminal ;;
    xterm) HOST_APP=XTerm ;;
    urxvt | rxvt) HOST_APP=URxvt ;;
    *) return 1 ;;
    esac
}

# The agent is the first ancestor of this hook that is not a shell (Claude names itself in
# CLAUDE_PID); its controlling terminal locates the session. Further up, the first process
# with a known name is the application that hosts it. Never pid 1.
inspect_processes() {
    AGENT_PID='' AGENT_COMM='' AGENT_TTY='' HOST_APP=''
    pid=$PPID
    skip_shells=yes
    if [ "$TOOL_ARG" = claude-code ]; then
        case ${CLAUDE_PID-} in
        "" | *[!0-9]*) ;;
        *) pid=$CLAUDE_PID skip_shells=no ;;
        esac
    fi
    depth=0
    while [ "$depth" -lt 40 ] && [ "$pid" -gt 1 ] && read_stat "$pid"; do
        depth=$((depth + 1))
        if [ -z "$AGENT_PID" ]; then
            if [ "$skip_shells" = yes ] && is_shell "$STAT_COMM"; then
                pid=$STAT_PPID
                continue
            fi
            AGENT_PID=$pid AGENT_COMM=$STAT_COMM
            tty_device "$STAT_TTY"
            AGENT_TTY=$TTY_DEVICE
        elif app_named "$STAT_COMM"; then
            break
        fi
        pid=$STAT_PPID
    done
}

# --- Which tool, which session -----------------------------------------------------------

# Whether an editor runs the agent itself, rather than a terminal inside it: the agent is
# the editor's own process, or has no terminal at all.
editor_hosted() {
    [ "$AGENT_COMM" = "$1" ] || [ -z "$AGENT_TTY" ]
}

# Several agents read one hook file: Cursor and VS Code run Claude's hooks, and Cursor and
# Antigravity run one file from the editor and from the command line.
resolve_tool() {
    TOOL=$TOOL_ARG
    if [ "$TOOL_ARG" = claude-code ] && [ -z "${CLAUDECODE-}${CLAUDE_CODE_SESSION_ID-}" ]; then
        case $PAYLOAD_HEAD in
        *'"hookEventName"'*) TOOL=copilot-vscode ;;
        *'"cursor_version"'* | *'"conversation_id"'*) TOOL=cursor-ide ;;
        esac
    fi
    case $TOOL in
    cursor-*) if editor_hosted cursor; then TOOL=cursor-ide; else TOOL=cursor-cli; fi ;;
    antigravity-*) if editor_hosted antigravity; then TOOL=antigravity-ide; else TOOL=antigravity-cli; fi ;;
    esac

    SURFACE=cli
    ENV_SESSION_ID='' ROOT_DIR=''
    case $TOOL in
    claude-code)
        ENV_SESSION_ID=${CLAUDE_CODE_SESSION_ID-}
        ROOT_DIR=${CLAUDE_PROJECT_DIR-}
        ;;
    cursor-*) ROOT_DIR=${CURSOR_PROJECT_DIR:-${CLAUDE_PROJECT_DIR-}} ;;
    antigravity-*) ROOT_DIR=${GEMINI_PROJECT_DIR-} ;;
    copilot-cli) ROOT_DIR=${COPILOT_PROJECT_DIR-} ;;
    esac

    # A terminal locates a command-line agent. An editor's agent is found through the
    # editor's window; the editor's process outlives its chats, so it is not their pid, and
    # terminal variables it inherited from wherever it was started would mislead.
    TERM_PROGRAM_NAME=${TERM_PROGRAM-} TMUX_PANE_ID=${TMUX_PANE-} WEZTERM_PANE_ID=${WEZTERM_PANE-}
    # Codex may run hooks in a background app server shared by its sessions and outliving
    # them: its pid, terminal and environment belong to whichever session started it.
    if [ "$TOOL" = codex-cli ] && [ -n "$AGENT_PID" ] && grep -qs -- app-server "/proc/$AGENT_PID/cmdline"; then
        AGENT_PID='' AGENT_TTY='' HOST_APP='' TERM_PROGRAM_NAME='' TMUX_PANE_ID='' WEZTERM_PANE_ID=''
    fi
    case $TOOL in
    copilot-vscode | cursor-ide | antigravity-ide)
        SURFACE=ide
        case $TOOL in
        copilot-vscode) HOST_APP="VS Code" ;;
        cursor-ide) HOST_APP=Cursor ;;
        antigravity-ide) HOST_APP=Antigravity ;;
        esac
        AGENT_PID='' AGENT_TTY='' TERM_PROGRAM_NAME='' TMUX_PANE_ID='' WEZTERM_PANE_ID=''
        ;;
    esac
}

# The file name of the previous record, guessed without jq from a plain session id near the
# start of the payload, so that one jq run usually suffices. jq checks the guess.
guess_file_name() {
    GUESS=
    id=
    for key in conversation_id conversationId session_id sessionId; do
        case $PAYLOAD_HEAD in
        *"\"$key\":\""*) id=${PAYLOAD_HEAD#*"\"$key\":\""} ;;
        *"\"$key\": \""*) id=${PAYLOAD_HEAD#*"\"$key\": \""} ;;
        *) continue ;;
        esac
        id=${id%%\"*}
        break
    done
    [ -n "$id" ] || id=$ENV_SESSION_ID
    case $id in "" | *[!A-Za-z0-9_-]*) return ;; esac
    [ ${#id} -le 64 ] && GUESS=${TOOL}__$id.json
}

# --- The record --------------------------------------------------------------------------

# Everything about JSON happens in this one jq program. Input: the raw payload. Output, one
# per line: the action (skip, end, start or write), whether the previous record could be
# merged (yes or no), the file name and the new record.
# shellcheck disable=SC2016 # jq variables, not the shell's
JQ_PROGRAM='
def text: if type == "string" then . elif type == "number" then tostring else null end;
def given: select(. != null and . != "");
def among($list): . as $x | any($list[]; . == $x);
def blank: . == 32 or . == 9 or . == 10 or . == 13;
def trim:
  explode
  | until(length == 0 or (.[0] | blank | not); .[1:])
  | until(length == 0 or (.[-1] | blank | not); .[:-1])
  | implode;

# The first line with any text, cut to $n characters. Prompts and commands may run to
# megabytes: only their start is searched, so that blank lines cannot make this slow.
def oneline($n):
  first(.[0:4096] | split("\n")[] | .[0:4 * $n] | trim | select(length > 0))
  | if length > $n then .[0:$n - 1] + "…" else . end;

# Ids and tool names are short and paths end at PATH_MAX: anything longer is junk, and would
# make a record too large for the reader and slow to write.
def at_most($n): select(length <= $n);

def basename: [split("/")[] | select(. != "")] | .[-1] // "/";
def uri_path: if startswith("file://") then .[7:] else . end;

# A checksum for file names: two polynomial hashes, exact in double precision.
def mod($m): . - ((. / $m) | floor) * $m;
def base36:
  if . < 36 then "0123456789abcdefghijklmnopqrstuvwxyz"[.:. + 1]
  else ((. / 36 | floor) | base36) + (mod(36) | base36) end;
def checksum:
  reduce explode[] as $c ([17, 23];
    [((.[0] * 131 + $c) | mod(1000000007)), ((.[1] * 137 + $c) | mod(998244353))])
  | map(base36) | join("");

# Ids may hold anything. Only [A-Za-z0-9_-] reach the name; an id that had to change gets a
# checksum after a point, which a plain id never has, so that no two ids share a file.
def file_name($tool; $id):
  ($id | explode | map(
      if (. >= 48 and . <= 57) or (. >= 65 and . <= 90) or (. >= 97 and . <= 122) or . == 45 or . == 95
      then . else 95 end) | implode | .[0:64]) as $safe
  | if $safe == $id then "\($tool)__\($safe).json" else "\($tool)__\($safe).\($id | checksum).json" end;

def question_tools: ["AskUserQuestion", "ask_user"];
def plan_tools: ["ExitPlanMode"];
def permission_tools: ["ask_permission"];
def tool_name: ((.tool_name // .toolName // .toolCall.name? // null) | text | at_most(256)) // null;
def tool_args:
  (.tool_input // .toolInput // .toolArgs // .toolCall.args? // {})
  | if type == "string" then (try fromjson catch {}) else . end
  | if type == "object" then . else {} end;

# What an event means for the session: start, end, skip, or the state it puts it in.
def classify($event; $tool):
  ($event | ascii_downcase) as $e
  | if $e == "sessionstart" then "start"
    elif $e == "sessionend" then
      # Copilot in prompt mode ends a "session" after every turn; the process stays.
      if $tool == "copilot-cli" and .reason == "complete" then "idle" else "end" end
    elif $e | among(["userpromptsubmit", "userpromptsubmitted", "beforesubmitprompt", "beforeagent",
                     "preinvocation", "posttooluse", "posttoolusefailure", "aftertool", "subagentstart",
                     "beforeshellexecution", "beforemcpexecution", "afterfileedit"]) then "working"
    elif $e | among(["pretooluse", "beforetool"]) then
      if tool_name | among(question_tools + plan_tools + permission_tools) then "waiting" else "working" end
    elif $e == "permissionrequest" then
      # Copilot asks its hook before its own rules and auto-approval: no one may be asked.
      if $tool == "copilot-cli" then "skip" else "waiting" end
    elif $e == "notification" then
      (.notification_type // .notificationType) as $type
      | if $type | among(["permission_prompt", "elicitation_dialog", "elicitation_url_dialog", "ToolPermission"])
        then "waiting"
        elif $type == "idle_prompt" then "idle"
        else "skip" end
    elif $e | among(["stop", "agentstop", "stopfailure", "interrupt", "afteragent"]) then "idle"
    else "skip" end;

# Why a session waits, in a few words.
def waiting_reason($event):
  tool_name as $tool
  | tool_args as $args
  | if ($event | ascii_downcase) == "notification" then
      (.message | text | given | oneline(160)) // "Needs your attention"
    elif $tool | among(plan_tools) then "Plan ready for review"
    elif $tool | among(question_tools) then
      ($args | (.questions[0].question? // .question // .prompt // .message) | text | given | oneline(160))
      // "Has a question"
    else
      "Needs permission"
      + (if $tool and ($tool | among(permission_tools) | not) then " to use " + $tool else "" end)
      + ((($args | .command // .file_path // .path // .url) | text | given | oneline(100) | given | ": " + .) // "")
    end;

def date_like: type == "string" and length == 20 and .[10:11] == "T" and .[19:20] == "Z";

(try fromjson catch null) as $p
| if ($p | type) != "object" then ["skip", "no", "-", "-"]
  else
    ((($p.conversation_id // $p.conversationId // $p.session_id // $p.sessionId) | text | given)
      // ($envSessionId | given) // null | at_most(512) // null) as $id
    | ($p | classify($event; $tool)) as $kind
    | if $id == null or $kind == "skip" then ["skip", "no", "-", "-"]
      else
        file_name($tool; $id) as $name
        | ($prevName == $name) as $merged
        | ($prev | try fromjson catch null) as $old
        | (if $merged and ($old | type) == "object" and $old.tool == $tool and $old.sessionId == $id
           then $old else {} end) as $old
        | if $kind == "end" then ["end", "yes", $name, "-"]
          else
            (($old.state | select(among(["working", "waiting", "idle"]))) // null) as $oldState
            | (if $kind == "start" then $oldState // "idle" else $kind end) as $state
            | (first(limit(8; ($p.workspace_roots // $p.workspacePaths // [])[]?)
                     | text | given | uri_path | at_most(4096)) // null) as $workspace
            | (($p.cwd | text | given | at_most(4096)) // $workspace // ($old.cwd | text | given) // $cwd)
                as $dir
            | (($root | given) // $workspace // ($old.root | text | given) // null) as $project
            | {
                schemaVersion: 1,
                tool: $tool,
                surface: $surface,
                sessionId: $id,
                pid: (($pid | given | tonumber) // null),
                state: $state,
                reason: (if $state != "waiting" then null
                         elif $kind == "start" then ($old.reason | text)
                         else ($p | waiting_reason($event)) end),
                transcriptPath: ((($p.transcript_path // $p.transcriptPath) | text | given | at_most(4096))
                                 // ($old.transcriptPath | text | given) // null),
                cwd: $dir,
                root: $project,
                title: ((($p.session_title // $p.sessionTitle) | text | given | oneline(80))
                        // (($p.prompt // $p.initialPrompt) | text | given | oneline(80))
                        // ($old.title | text | given)
                        // ($project // $dir | basename)),
                locator: ({termProgram: $termProgram, tmuxPane: $tmuxPane, weztermPane: $weztermPane,
                           tty: $tty, app: $app}
                          | with_entries(select(.value != "")) | if . == {} then null else . end),
                startedAt: (($old.startedAt | select(date_like)) // (now | floor | todate)),
                updatedAt: (now | floor | todate)
              }
            | with_entries(select(.value != null))
            | [(if $kind == "start" then "start" else "write" end), ($merged | if . then "yes" else "no" end),
               $name, tojson]
          end
      end
  end
| .[]
'

# Runs the program, merging the record in file $1 of the status folder if there is one.
render() {
    prev_file=/dev/null
    [ -n "$1" ] && [ -f "$STATUS_DIR/$1" ] && prev_file=$STATUS_DIR/$1
    RESULT=$("$JQ" -R -s -r \
        --arg tool "$TOOL" --arg surface "$SURFACE" --arg event "$EVENT" \
        --arg prevName "$1" --rawfile prev "$prev_file" \
        --arg envSessionId "$ENV_SESSION_ID" --arg pid "$AGENT_PID" \
        --arg root "$ROOT_DIR" --arg cwd "$PWD" \
        --arg termProgram "$TERM_PROGRAM_NAME" --arg tmuxPane "$TMUX_PANE_ID" \
        --arg weztermPane "$WEZTERM_PANE_ID" --arg tty "$AGENT_TTY" --arg app "$HOST_APP" \
        "$JQ_PROGRAM" <"$PAYLOAD_FILE") || return 1
    ACTION=${RESULT%%"$NL"*}
    rest=${RESULT#*"$NL"}
    MERGED=${rest%%"$NL"*}
    rest=${rest#*"$NL"}
    NAME=${rest%%"$NL"*}
    DOC=${rest#*"$NL"}
    # jq built the name from safe characters; check anyway before touching the disk.
    case $NAME in "" | .* | */* | *"$NL"*) ACTION=skip ;; esac
}

# Replaces the record atomically: a hidden temporary file in the same folder, then a rename.
# A tombstone left by the session's end keeps late events from bringing the record back.
save_record() {
    target=$STATUS_DIR/$NAME
    tombstone=$STATUS_DIR/.${NAME%.json}.ended
    if [ "$ACTION" = start ]; then
        [ -e "$tombstone" ] && rm -f "$tombstone"
    elif [ -e "$tombstone" ]; then
        return
    fi
    TMP_FILE=$STATUS_DIR/.${NAME%.json}.$$.tmp
    printf '%s\n' "$DOC" >"$TMP_FILE" && mv -f "$TMP_FILE" "$target" || return
    TMP_FILE=
    # The end may have come while we wrote; it wins.
    if [ "$ACTION" != start ] && [ -e "$tombstone" ]; then
        rm -f "$target"
    fi
}

end_session() {
    : >"$STATUS_DIR/.${NAME%.json}.ended"
    rm -f "$STATUS_DIR/$NAME"
    # Tombstones need only outlast the late events of their session; temporary files are
    # left only by writers that were killed.
    find "$STATUS_DIR" -maxdepth 1 -type f \
        \( -name '.*.ended' -mmin +720 -o -name '.*.tmp' -mmin +60 \) -delete
}

main() {
    read_payload || return
    case $TOOL_ARG in
    claude-code | codex-cli | copilot-cli | copilot-vscode | cursor-cli | cursor-ide | antigravity-cli | \
        antigravity-ide) ;;
    *) return ;;
    esac
    case $EVENT in "" | *[!A-Za-z_]*) return ;; esac
    find_jq || return
    find_status_dir || return
    inspect_processes
    resolve_tool
    guess_file_name
    render "$GUESS" || return
    # The guess missed (an unusual id, or a key deep in the payload): merge the right file.
    if [ "$MERGED" = no ] && [ -f "$STATUS_DIR/$NAME" ]; then
        case $ACTION in start | write) render "$NAME" || return ;; esac
    fi
    case $ACTION in
    start | write) save_record ;;
    end) end_session ;;
    esac
}

main
exit 0
