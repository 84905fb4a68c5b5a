#!/usr/bin/python3
# The system's interpreter: pyatspi comes with the distribution, not with other Pythons on PATH.
"""The tray panel over the real accessibility bus: a session row is one item named by its title,
tool, state and age, also for a session that starts while the panel is open; the keyboard reaches
it; the About button, pressed by name, opens the About window, which takes over from the panel, and
Escape closes that. Usage: panel-reads-over-atspi.py <tovrin>; exits 77 (skipped) without the tools."""

from desktop_session import Failure, run


def test(desktop):
    desktop.write_session("w1", "waiting", seconds_ago=120)
    app = desktop.launch("--show=sessions")

    panel = desktop.wait_for(app, "frame", "Sessions")
    row = desktop.wait_for(panel, "list item", name_prefix="Session w1, ")
    if row.name != "Session w1, Claude Code, waiting, 2m ago":
        raise Failure(f'the row reads "{row.name}"')

    # A session that starts while the panel is open reads the same way.
    desktop.write_session("k2", "working", tool="codex-cli", seconds_ago=30)
    desktop.wait_for(panel, "list item", name_prefix="Session k2, Codex, working, ")

    # Nothing is chosen as the panel opens; the first Down takes the top row.
    desktop.key("Down")
    desktop.poll(lambda: desktop.has_state(row, "focused"), "the row to take the keyboard's focus")

    desktop.press(desktop.wait_for(panel, "push button", "About"))
    desktop.wait_for(app, "frame", "About Tovrin")
    desktop.wait_until_gone(app, "frame", "Sessions")

    desktop.key("Escape")
    desktop.wait_until_gone(app, "frame", "About Tovrin")


run(test)
