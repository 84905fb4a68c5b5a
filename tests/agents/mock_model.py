#!/usr/bin/env python3
"""A stand-in for the model APIs of the command-line agents, for offline runs.

One server speaks three wire formats, told apart by the request path:
  /v1/messages                      Anthropic Messages (Claude Code, Copilot with an anthropic provider)
  /v1/responses                     OpenAI Responses (Codex)
  /v1beta/models/<m>:<method>       Gemini generateContent / streamGenerateContent

The scenario is chosen by the prompt, so the server keeps no state between requests:
  - a prompt containing RUN_TOOL_MARKER gets a shell tool call first, and once the
    conversation carries the tool's result, a closing text answer;
  - anything else gets a short text answer.
Every request body is appended to the log given with --log, for debugging.
"""

import argparse
import json
import re
import sys
import threading
import time
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

RUN_TOOL_MARKER = "TOVRIN-RUN-TOOL"
PROBE_COMMAND = "touch tovrin-probe.txt"
TEXT_ANSWER = "Mock answer: nothing to do."
DONE_ANSWER = "Mock answer: the command ran."

SHELL_TOOL_NAMES = ["Bash", "bash", "run_shell_command", "shell_command", "exec_command", "shell"]

_log_lock = threading.Lock()
_log_path = None
_ids = iter(range(1, 1 << 30))


def next_id():
    return next(_ids)


def log(entry):
    if not _log_path:
        return
    with _log_lock, open(_log_path, "a", encoding="utf-8") as f:
        f.write(json.dumps(entry) + "\n")


def texts_of(value):
    """All strings anywhere in a JSON value, to find the marker wherever a format puts the prompt."""
    if isinstance(value, str):
        yield value
    elif isinstance(value, list):
        for v in value:
            yield from texts_of(v)
    elif isinstance(value, dict):
        for v in value.values():
            yield from texts_of(v)


def example_for(schema, name=""):
    """A minimal value that satisfies a JSON schema well enough for the agents' validators."""
    if not isinstance(schema, dict):
        return "x"
    if "enum" in schema and schema["enum"]:
        return schema["enum"][0]
    if "const" in schema:
        return schema["const"]
    for key in ("anyOf", "oneOf"):
        if schema.get(key):
            return example_for(schema[key][0], name)
    kind = schema.get("type")
    if isinstance(kind, list):
        kind = next((k for k in kind if k != "null"), "string")
    kind = str(kind).lower() if kind else ("object" if "properties" in schema else "string")
    if kind == "object":
        props = schema.get("properties", {})
        required = schema.get("required", list(props))
        return {k: example_for(props.get(k, {}), k) for k in required}
    if kind == "array":
        return []
    if kind in ("integer", "number"):
        return schema.get("minimum", 1)
    if kind == "boolean":
        return False
    return "Mock" if name else "x"


def shell_arguments(schema):
    """Arguments for whichever shell tool the agent offered, built from its parameter schema."""
    props = (schema or {}).get("properties", {})
    args = {}
    for key in (schema or {}).get("required", []):
        args[key] = example_for(props.get(key, {}), key)
    if "command" in props:
        kind = props["command"].get("type")
        args["command"] = ["bash", "-lc", PROBE_COMMAND] if kind == "array" else PROBE_COMMAND
    elif "cmd" in props:
        args["cmd"] = PROBE_COMMAND
    if "description" in props:
        args["description"] = "Create a probe file"
    # Codex only asks for approval when the model asks to leave its sandbox.
    if "require_escalated" in (props.get("sandbox_permissions") or {}).get("enum", []):
        args["sandbox_permissions"] = "require_escalated"
        args["justification"] = "Create a probe file?"
    if "workdir" in args:
        del args["workdir"]
    return args


def pick_tool(tools):
    """(name, schema) of the shell tool among the offered ones, or None."""
    by_name = {}
    for tool in tools:
        name = tool.get("name") or (tool.get("function") or {}).get("name")
        schema = tool.get("input_schema") or tool.get("parameters") or tool.get("parametersJsonSchema")
        if name:
            by_name[name] = schema or {}
    for name in SHELL_TOOL_NAMES:
        if name in by_name:
            return name, by_name[name]
    return None


def sse(handler, events):
    handler.send_response(200)
    handler.send_header("Content-Type", "text/event-stream")
    handler.send_header("Cache-Control", "no-cache")
    handler.send_header("Connection", "close")
    handler.end_headers()
    for name, data in events:
        chunk = ""
        if name:
            chunk += f"event: {name}\n"
        chunk += f"data: {json.dumps(data)}\n\n"
        handler.wfile.write(chunk.encode())
        handler.wfile.flush()
    handler.close_connection = True


def send_json(handler, data, status=200):
    body = json.dumps(data).encode()
    handler.send_response(status)
    handler.send_header("Content-Type", "application/json")
    handler.send_header("Content-Length", str(len(body)))
    handler.end_headers()
    handler.wfile.write(body)


# ---- Anthropic Messages ----------------------------------------------------------------------------

def anthropic_reply(req):
    messages = req.get("messages", [])
    last = messages[-1] if messages else {}
    content = last.get("content")
    has_result = isinstance(content, list) and any(
        isinstance(b, dict) and b.get("type") == "tool_result" for b in content)
    wants_tool = any(RUN_TOOL_MARKER in t for t in texts_of(messages))
    tool = pick_tool(req.get("tools") or [])
    if wants_tool and tool and not has_result:
        name, schema = tool
        return [{"type": "tool_use", "id": f"toolu_mock{next_id()}", "name": name,
                 "input": shell_arguments(schema)}], "tool_use"
    return [{"type": "text", "text": DONE_ANSWER if has_result else TEXT_ANSWER}], "end_turn"


def handle_anthropic(handler, req):
    blocks, stop = anthropic_reply(req)
    model = req.get("model", "mock")
    usage = {"input_tokens": 10, "output_tokens": 5, "cache_creation_input_tokens": 0,
             "cache_read_input_tokens": 0}
    msg_id = f"msg_mock{next_id()}"
    if not req.get("stream"):
        send_json(handler, {"id": msg_id, "type": "message", "role": "assistant", "model": model,
                            "content": blocks, "stop_reason": stop, "stop_sequence": None, "usage": usage})
        return
    events = [("message_start", {"type": "message_start", "message": {
        "id": msg_id, "type": "message", "role": "assistant", "model": model, "content": [],
        "stop_reason": None, "stop_sequence": None, "usage": usage}})]
    for i, block in enumerate(blocks):
        if block["type"] == "text":
            events.append(("content_block_start", {"type": "content_block_start", "index": i,
                                                   "content_block": {"type": "text", "text": ""}}))
            events.append(("content_block_delta", {"type": "content_block_delta", "index": i,
                                                   "delta": {"type": "text_delta", "text": block["text"]}}))
        else:
            start = dict(block, input={})
            events.append(("content_block_start", {"type": "content_block_start", "index": i,
                                                   "content_block": start}))
            events.append(("content_block_delta", {"type": "content_block_delta", "index": i, "delta": {
                "type": "input_json_delta", "partial_json": json.dumps(block["input"])}}))
        events.append(("content_block_stop", {"type": "content_block_stop", "index": i}))
    events.append(("message_delta", {"type": "message_delta",
                                     "delta": {"stop_reason": stop, "stop_sequence": None},
                                     "usage": {"output_tokens": 5}}))
    events.append(("message_stop", {"type": "message_stop"}))
    sse(handler, events)


# ---- OpenAI Responses ------------------------------------------------------------------------------

def handle_responses(handler, req):
    items = req.get("input") or []
    has_result = any(isinstance(i, dict) and i.get("type", "").endswith("call_output") for i in items)
    wants_tool = any(RUN_TOOL_MARKER in t for t in texts_of(items))
    tool = pick_tool(req.get("tools") or [])
    resp_id = f"resp_mock{next_id()}"
    if wants_tool and tool and not has_result:
        name, schema = tool
        item = {"type": "function_call", "id": f"fc_mock{next_id()}", "call_id": f"call_mock{next_id()}",
                "name": name, "arguments": json.dumps(shell_arguments(schema))}
    else:
        text = DONE_ANSWER if has_result else TEXT_ANSWER
        item = {"type": "message", "id": f"msg_mock{next_id()}", "role": "assistant", "status": "completed",
                "content": [{"type": "output_text", "text": text, "annotations": []}]}
    usage = {"input_tokens": 10, "input_tokens_details": {"cached_tokens": 0}, "output_tokens": 5,
             "output_tokens_details": {"reasoning_tokens": 0}, "total_tokens": 15}
    events = [("response.created", {"type": "response.created",
                                    "response": {"id": resp_id, "status": "in_progress"}})]
    if item["type"] == "message":
        events.append(("response.output_item.added", {"type": "response.output_item.added",
                                                       "output_index": 0, "item": dict(item, content=[])}))
        events.append(("response.output_text.delta", {"type": "response.output_text.delta",
                                                      "item_id": item["id"], "output_index": 0,
                                                      "content_index": 0, "delta": item["content"][0]["text"]}))
    events.append(("response.output_item.done", {"type": "response.output_item.done", "output_index": 0,
                                                 "item": item}))
    events.append(("response.completed", {"type": "response.completed", "response": {
        "id": resp_id, "status": "completed", "output": [item], "usage": usage}}))
    sse(handler, events)


# ---- Gemini ----------------------------------------------------------------------------------------

def gemini_tools(req):
    tools = []
    for group in req.get("tools") or []:
        for decl in group.get("functionDeclarations") or []:
            tools.append(decl)
    return tools


def handle_gemini(handler, req, method):
    usage = {"promptTokenCount": 10, "candidatesTokenCount": 5, "totalTokenCount": 15}
    if method == "countTokens":
        send_json(handler, {"totalTokens": 10})
        return
    config = req.get("generationConfig") or {}
    schema = config.get("responseJsonSchema") or config.get("responseSchema")
    contents = req.get("contents") or []
    if schema is not None:
        # Side calls (routing, next-speaker checks) ask for JSON of a given schema.
        parts = [{"text": json.dumps(example_for(schema))}]
    else:
        last = contents[-1] if contents else {}
        has_result = any("functionResponse" in p for p in last.get("parts", []))
        wants_tool = any(RUN_TOOL_MARKER in t for t in texts_of(contents))
        tool = pick_tool(gemini_tools(req))
        if wants_tool and tool and not has_result:
            name, params = tool
            parts = [{"functionCall": {"name": name, "args": shell_arguments(params)}}]
        else:
            parts = [{"text": DONE_ANSWER if has_result else TEXT_ANSWER}]
    body = {"candidates": [{"content": {"role": "model", "parts": parts}, "finishReason": "STOP", "index": 0}],
            "usageMetadata": usage, "modelVersion": "mock"}
    if method == "streamGenerateContent":
        sse(handler, [(None, body)])
    else:
        send_json(handler, body)


class Handler(BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, fmt, *args):
        pass

    def _body(self):
        length = int(self.headers.get("Content-Length") or 0)
        raw = self.rfile.read(length) if length else b""
        try:
            return json.loads(raw or b"{}")
        except ValueError:
            return {}

    def do_GET(self):
        log({"t": time.time(), "method": "GET", "path": self.path})
        if "/models" in self.path:
            send_json(self, {"data": [{"id": "mock-model", "type": "model", "display_name": "Mock"}],
                             "models": [], "object": "list"})
        else:
            send_json(self, {}, 404)

    def do_POST(self):
        req = self._body()
        path = self.path.split("?")[0]
        log({"t": time.time(), "method": "POST", "path": self.path, "body": req})
        try:
            if path.endswith("/messages/count_tokens"):
                send_json(self, {"input_tokens": 10})
            elif path.endswith("/messages"):
                handle_anthropic(self, req)
            elif path.endswith("/responses"):
                handle_responses(self, req)
            elif m := re.search(r"/models/[^/:]+:(\w+)$", path):
                handle_gemini(self, req, m.group(1))
            else:
                send_json(self, {"error": {"message": f"mock: unknown path {path}"}}, 404)
        except (BrokenPipeError, ConnectionResetError):
            pass


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--port", type=int, default=0)
    parser.add_argument("--port-file")
    parser.add_argument("--log")
    args = parser.parse_args()
    global _log_path
    _log_path = args.log
    server = ThreadingHTTPServer(("127.0.0.1", args.port), Handler)
    server.daemon_threads = True
    if args.port_file:
        with open(args.port_file + ".tmp", "w") as f:
            f.write(str(server.server_address[1]))
        import os
        os.replace(args.port_file + ".tmp", args.port_file)
    print(f"mock model API on 127.0.0.1:{server.server_address[1]}", file=sys.stderr, flush=True)
    server.serve_forever()


if __name__ == "__main__":
    main()
