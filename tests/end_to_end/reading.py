#!/usr/bin/python3
"""What every screen of the desktop application says to a screen reader, from its first item to its last: read over the
accessibility bus, and compared with the text that is kept beside the pictures. With --write, keeps what it reads.
"""
import difflib
import os
import pathlib
import re
import subprocess
import sys
import time

import desktop_programs as programs
import support
from desktop_programs import Atspi, GLib

KEPT = pathlib.Path(__file__).resolve().parents[2] / "docs/pictures/screens.txt"
TOLD = {state: state.value_nick for state in (
    Atspi.StateType.FOCUSED, Atspi.StateType.SELECTED, Atspi.StateType.CHECKED, Atspi.StateType.EXPANDED,
    Atspi.StateType.MODAL)}
# What one run says otherwise than another.
CHANGING = tuple((re.compile(pattern), instead) for pattern, instead in (
    (r"palvera-screenshots-\w+", "folder"), (r", [\d.]+ \w+/s|, (\d+[hms] )+left", ""), (r"[\d.]+ [KMG]?B\b", "0 B"),
    (r"[\d.]+(%| percent)", r"0\1"), (r"^(\d+[hms] ?)+$", "0s"), (r"about \d+:\d+", "about 0:00"),
    (r"\d+ \w+ \d+ \d+:\d+:\d+", "1 Jan 2026 0:00:00"), (r"\d+ of (\d+) parts", r"0 of \1 parts")))


class Screens(programs.Desktop):
    """The program that shows one screen after the other, each until it has been read."""

    def __init__(self):
        self.process = subprocess.Popen(
            [os.environ["PALVERA_SCREENSHOTS"], "--read"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
            env=os.environ | {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})

    def names(self):
        for name in self.process.stdout:
            yield name.strip()
            self.process.stdin.write("\n")
            self.process.stdin.flush()
        assert self.process.wait(support.PATIENCE) == 0

    def lines(self):
        """Of the window that has the keyboard, as far as it says anything."""
        lines, active = [], False
        for role, name, node in self.items():
            try:
                states = node.get_state_set()
                description = node.get_description() if role != "password text" else ""
            except GLib.Error:
                return None  # it has just gone
            if not states.contains(Atspi.StateType.SHOWING):
                return None  # the same, or it is not yet there
            if role == "frame":
                active = states.contains(Atspi.StateType.ACTIVE)
            about = [told for state, told in TOLD.items() if states.contains(state)]
            if not states.contains(Atspi.StateType.SENSITIVE):
                about.append("disabled")
            text = " - ".join(filter(None, (name, description if description != name else "")))
            for pattern, instead in CHANGING:
                text = pattern.sub(instead, text)
            if active and (text or about) and role != "notification":  # which comes and goes
                lines.append(f"    {role}: {' '.join(text.split())}" + (f" [{', '.join(about)}]" if about else ""))
        return lines

    def read(self, expected):
        """Once it reads as expected, or no longer changes."""
        before, limit = None, time.monotonic() + (5 if expected else 0)
        while (lines := self.lines()) != expected and (lines is None or lines != before or time.monotonic() < limit):
            before = lines
            time.sleep(0.5)
        return lines


def kept():
    """The lines of each screen."""
    screens = {}
    for line in KEPT.read_text().splitlines():
        if line and not line.startswith(" "):
            lines = screens.setdefault(line.rstrip(":"), [])
        elif line:
            lines.append(line)
    return screens


def main():
    expected, read = kept(), {}
    writes = "--write" in sys.argv
    with programs.Display(), programs.WindowManager():
        screens = Screens()
        for name in screens.names():
            if name in expected:
                read[name] = screens.read(None if writes else expected[name])
    if writes:
        KEPT.write_text("\n".join("\n".join([f"{name}:", *lines]) + "\n" for name, lines in read.items()))
    wrong = [line for name, lines in expected.items() if lines != read.get(name)
             for line in [f"{name}:", *difflib.unified_diff(lines, read.get(name) or [], "kept", "read", lineterm="", n=1)]]
    assert writes or not wrong, "\n".join(wrong)


main()
