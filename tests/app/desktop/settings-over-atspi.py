#!/usr/bin/python3
# The system's interpreter: pyatspi comes with the distribution, not with other Pythons on PATH.
"""The settings window as a screen reader user meets it, over the real accessibility bus: the
category is chosen by name, a switch found by its words and flipped, and the setting is in
defaults.json at once. Usage: settings-over-atspi.py <tovrin>; exits 77 (skipped) without the tools."""

from desktop_session import Failure, run


def test(desktop):
    app = desktop.launch("--show=settings")
    window = desktop.wait_for(app, "frame", "Tovrin Settings")

    desktop.press(desktop.wait_for(window, "list item", "Alerts"), "toggle")
    switch = desktop.wait_for(window, "check box", "Repeat the alert while still waiting")
    if desktop.has_state(switch, "checked"):
        raise Failure("the repeat switch starts on")
    desktop.press(switch, "toggle")
    desktop.poll(lambda: desktop.defaults().get("repeatReminderEnabled") is True,
                 "repeatReminderEnabled in defaults.json")
    desktop.poll(lambda: desktop.has_state(switch, "checked"), "the switch to read as checked")


run(test)
