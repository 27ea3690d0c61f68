#!/usr/bin/python3
"""The desktop application as somebody meets it who has a keyboard and a program that reads the screen out.

A window on a display of its own, found and read through the accessibility bus; keys come from the X server.
"""
import os
import re
import subprocess
import tempfile

import support
from support import Platform, Workspace, wait_until

DESKTOP = os.environ["PALVERA"]


class Display:
    """An X server and a session bus that nobody else uses."""

    def __enter__(self):
        self.runtime = tempfile.TemporaryDirectory(prefix="palvera-run-")
        read, write = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x900x24", "-nolisten", "tcp"],
                                       pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as said:
            self.name = ":" + said.readline().strip()
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"],
                                    stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                                    env=self.environment())
        os.environ.update(self.environment(), DBUS_SESSION_BUS_ADDRESS=self.bus.stdout.readline().strip())
        return self

    def __exit__(self, *unused):
        for process in (self.bus, self.server):
            process.terminate()
            process.wait()
        self.runtime.cleanup()

    def environment(self):
        return os.environ | {"DISPLAY": self.name, "XDG_RUNTIME_DIR": self.runtime.name, "NO_AT_BRIDGE": "0"}


class Desktop:
    """The program, in homes of its own."""

    def __init__(self, workspace, address):
        home = workspace.path / "home"
        home.mkdir(exist_ok=True)
        self.environment = os.environ | {
            "PV_API": address, "HOME": str(home), "XDG_DATA_HOME": str(home / "data"),
            "XDG_STATE_HOME": str(home / "state"), "XDG_CACHE_HOME": str(home / "cache"),
            "XDG_CONFIG_HOME": str(home / "config"), "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "QT_QUICK_BACKEND": "software"}
        self.errors = workspace.path / "errors"

    def __enter__(self):
        with open(self.errors, "wb") as errors:
            self.process = subprocess.Popen([DESKTOP], env=self.environment, stderr=errors)
        # No window manager gives the window the keyboard.
        subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--name", "Palvera", "windowfocus", "--sync"],
                       check=True, timeout=support.PATIENCE, stdout=subprocess.DEVNULL)
        return self

    def __exit__(self, *unused):
        self.process.kill()
        self.process.wait()

    def start_again(self):
        return subprocess.run([DESKTOP], env=self.environment, timeout=support.PATIENCE).returncode

    def items(self):
        """Everything that a screen reader finds in the window, as pairs of role and name."""
        from gi.repository import Atspi, GLib
        while GLib.MainContext.default().iteration(False):
            pass
        root = Atspi.get_desktop(0)
        root.clear_cache()
        found = []
        for i in range(root.get_child_count()):
            self.collect(root.get_child_at_index(i), found)
        return found

    def collect(self, node, found):
        from gi.repository import Atspi, GLib
        if not node:
            return
        try:
            node.clear_cache()
            states = node.get_state_set()
            if states.contains(Atspi.StateType.SHOWING) or node.get_role_name() == "application":
                # Qt keeps the name of a field for secrets to itself.
                name = node.get_description() if node.get_role_name() == "password text" else node.get_name()
                found.append((node.get_role_name(), name or "", node))
                for i in range(node.get_child_count()):
                    self.collect(node.get_child_at_index(i), found)
        except GLib.Error:
            pass # an item that has just gone

    def find(self, role, name):
        found = []

        def look():
            found[:] = [node for kind, text, node in self.items() if re.fullmatch(role, kind) and text == name]
            return bool(found)

        try:
            wait_until(look, f"{role} {name}")
        except AssertionError as failure:
            shown = [(kind, text) for kind, text, _ in self.items() if text]
            raise AssertionError(f"{failure}; shown: {shown}; said: {self.errors.read_text()}") from None
        return found[0]

    def has_keyboard(self, node):
        from gi.repository import Atspi
        node.clear_cache()
        return node.get_state_set().contains(Atspi.StateType.FOCUSED)

    def type(self, role, name, text):
        """Tabs to a field and types into it."""
        node = self.find(role, name)
        for _ in range(30):
            if self.has_keyboard(node):
                break
            self.press("Tab")
        assert self.has_keyboard(node), f"Tab does not lead to {name}"
        subprocess.run(["xdotool", "type", "--delay", "5", text], check=True)

    def press(self, *keys):
        subprocess.run(["xdotool", "key", "--delay", "20", *keys], check=True)

    def activate(self, role, name):
        """As a screen reader does."""
        node = self.find(role, name)
        actions = node.get_action_iface()
        names = [actions.get_action_name(i) for i in range(actions.get_n_actions())]
        press = [i for i, each in enumerate(names) if each.lower() == "press"]
        assert press, f"{name} cannot be pressed, only {names}"
        actions.do_action(press[0])


def the_way_to_a_project_and_out_again():
    with Workspace() as workspace, Display(), Platform(workspace) as platform:
        import gi
        gi.require_version("Atspi", "2.0")
        with Desktop(workspace, platform.address) as desktop:
            desktop.type("text|entry", "Work email", "ada@northlight.example")
            desktop.press("Return")
            desktop.type("password text", "Password", "reel-one")
            desktop.press("Return")
            desktop.find("heading", "Choose a client")
            desktop.activate("list item", "Northlight Pictures")
            desktop.find("list item", "Assets")
            desktop.type("text|entry", "Find a project", "salt")
            wait_until(lambda: [text for kind, text, _ in desktop.items() if kind == "list item"] == ["Salt"], "one row")
            desktop.press("Escape")
            desktop.activate("push button|button", "Choose another client")
            desktop.find("heading", "Choose a client")
            assert desktop.start_again() == 0, "a second start does not hand over to the first"
            desktop.activate("push button|button", "Account")
            desktop.activate("menu item", "Sign out")
            desktop.find("text|entry", "Work email")
            assert desktop.process.poll() is None
            said = desktop.errors.read_text()
            assert said == "", said
        assert platform.violations() == [], platform.violations()


if __name__ == "__main__":
    support.main(the_way_to_a_project_and_out_again)
