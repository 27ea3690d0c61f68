"""The desktop application on a display of its own, met through the accessibility bus, the keyboard and the pointer."""
import os
import pathlib
import re
import subprocess
import tempfile
import time

import gi

import support
from support import wait_until

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib # noqa: E402: only with the version

DESKTOP, DRAG_SOURCE = os.environ["PALVERA"], os.environ.get("PALVERA_DRAG_SOURCE")


class Display:
    """An X server and a session bus that nobody else uses."""

    def __enter__(self):
        self.runtime = tempfile.TemporaryDirectory(prefix="palvera-run-")
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x900x24", "-nolisten", "tcp"],
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


class WindowManager:
    """What a desktop has for it; without one, no window is active but by force."""

    def __enter__(self):
        self.process = subprocess.Popen(["openbox"], stderr=subprocess.DEVNULL)

    def __exit__(self, *unused):
        self.process.terminate()
        self.process.wait()


class Desktop:
    """The program, in homes of its own."""

    BUTTON = "push button|button"
    # Qt's own, seen once in many runs on a busy machine: a late stop finds the driver of animations stopped already.
    HARMLESS = "QUnifiedTimer::stopAnimationDriver: driver is not running\n"

    def __init__(self, workspace, address, program=DESKTOP, home="home"):
        self.program = program
        self.environment = os.environ | support.homes(workspace.path / home, address) | {
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        self.errors = workspace.path / "errors"

    def __enter__(self):
        with open(self.errors, "wb") as errors:
            self.process = subprocess.Popen([self.program], env=self.environment, stderr=errors)
        # No window manager gives the window the keyboard.
        self.focus()
        return self

    def __exit__(self, *unused):
        self.process.kill()
        self.process.wait()

    def complaints(self):
        return self.errors.read_text().replace(self.HARMLESS, "")

    def focus(self):
        give = ["xdotool", "search", "--sync", "--onlyvisible", "--name", "Palvera", "windowfocus", "--sync"]
        wait_until(lambda: subprocess.run(give, timeout=support.PATIENCE, stdout=subprocess.DEVNULL,
                                          stderr=subprocess.DEVNULL).returncode == 0,  # a window may just have gone
                   "the window has the keyboard")

    def mapped_files(self):
        return pathlib.Path(f"/proc/{self.process.pid}/maps").read_text()

    def quit(self):
        self.focus()
        self.press("ctrl+q")
        status = self.process.wait(support.PATIENCE)
        assert status == 0, f"it ends with {status}: {self.errors.read_text()}"

    def start_again(self):
        # It ends before Qt's D-Bus has come to what it left for the event loop, and loses track of that.
        quiet = {"ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"}
        return subprocess.run([self.program], env=self.environment | quiet, timeout=support.PATIENCE).returncode

    def items(self):
        """Everything that a screen reader finds in the window, as pairs of role and name."""
        while GLib.MainContext.default().iteration(False):
            pass
        root = Atspi.get_desktop(0)
        root.clear_cache()
        return [item for i in range(root.get_child_count()) for item in self.below(root.get_child_at_index(i))]

    def below(self, node):
        if not node:
            return
        try:
            node.clear_cache()
            if node.get_state_set().contains(Atspi.StateType.SHOWING) or node.get_role_name() == "application":
                # Qt keeps the name of a field for secrets to itself.
                name = node.get_description() if node.get_role_name() == "password text" else node.get_name()
                yield node.get_role_name(), name or "", node
                for i in range(node.get_child_count()):
                    yield from self.below(node.get_child_at_index(i))
        except GLib.Error:
            pass # an item that has just gone

    def find(self, role, name):
        def look():
            return next((node for kind, text, node in self.items() if re.fullmatch(role, kind) and text == name), None)

        try:
            return wait_until(look, f"{role} {name}")
        except AssertionError as failure:
            shown = [(kind, text) for kind, text, _ in self.items() if text]
            raise AssertionError(f"{failure}; shown: {shown}; said: {self.errors.read_text()}") from None

    def type(self, role, name, text):
        """Tabs to a field and types into it."""
        node = self.find(role, name)
        for _ in range(30):
            node.clear_cache()
            if node.get_state_set().contains(Atspi.StateType.FOCUSED):
                subprocess.run(["xdotool", "type", "--delay", "5", text], check=True)
                return
            self.press("Tab")
        raise AssertionError(f"Tab does not lead to {name}")

    def sign_in(self, email, password):
        self.type("text|entry", "Work email", email)
        self.press("Return")
        self.type("password text", "Password", password)
        self.press("Return")

    def open(self, *names):
        """The last of these, through the others."""
        for name in names:
            self.activate("list item", name)
        self.find("heading", names[-1])

    def press(self, *keys):
        subprocess.run(["xdotool", "key", "--delay", "20", *keys], check=True)

    def says(self, text):
        return any(text in name for _, name, _ in self.items())

    def middle_of(self, node):
        place = node.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
        return place.x + place.width // 2, place.y + place.height // 2

    def activate(self, role, name):
        """As a screen reader does. Of two screens of which one fades away, it may be on the other."""
        def press():
            node = self.find(role, name)
            actions = node.get_action_iface()
            if not actions or not node.get_state_set().contains(Atspi.StateType.ENABLED):
                return False
            names = [actions.get_action_name(i).lower() for i in range(actions.get_n_actions())]
            return "press" in names and actions.do_action(names.index("press"))

        wait_until(press, f"{name} can be pressed")

    def activate_until(self, role, name, holds):
        """Again, when nothing comes of it in a few seconds: what was pressed may have been about to go, as on a screen
        that fades away."""
        def press():
            self.activate(role, name)
            limit = time.monotonic() + 3
            while time.monotonic() < limit:
                if holds():
                    return True
            return False

        wait_until(press, f"{name} does something")

    def sign_out(self):
        self.activate_until(self.BUTTON, "Account",
                            lambda: any((kind, text) == ("menu item", "Sign out") for kind, text, _ in self.items()))
        self.activate("menu item", "Sign out")
        self.find("text|entry", "Work email")


def install_portal(workspace, file):
    """The desktop's portal, whose file dialog chooses `file`, and its file manager, for a display that is started later:
    its bus starts them when they are asked for. The file that says what they were asked.
    """
    services, said = workspace.path / "share" / "dbus-1" / "services", workspace.path / "portal"
    services.mkdir(parents=True, exist_ok=True)
    for name in "org.freedesktop.portal.Desktop", "org.freedesktop.FileManager1":
        (services / f"{name}.service").write_text(
            f"[D-BUS Service]\nName={name}\n"
            f"Exec=/usr/bin/python3 {pathlib.Path(__file__).with_name('portal.py')} '{file}' '{said}'\n")
    others = os.environ.get("XDG_DATA_DIRS", "/usr/local/share:/usr/share")
    os.environ["XDG_DATA_DIRS"] = f"{workspace.path / 'share'}:{others}"
    return said


class FileManager:
    """A window from which `files` can be dragged, all at once."""

    def __init__(self, *files):
        self.files = files

    def __enter__(self):
        self.process = subprocess.Popen([DRAG_SOURCE, *self.files], stdout=subprocess.PIPE, text=True)
        subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--name", "^Files$"], check=True,
                       stdout=subprocess.DEVNULL, timeout=support.PATIENCE)
        return self

    def __exit__(self, *unused):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()

    def drag_to(self, x, y):
        """As a hand does: several small movements, of which the desktop hears each. What became of it."""
        steps = [(x + (1170 - x) * left // 8, y + (810 - y) * left // 8) for left in range(7, -1, -1)]
        moves = [word for at in [(1180, 815), *steps, (x + 2, y + 2)]
                 for word in ("mousemove", "--sync", str(at[0]), str(at[1]), "sleep", "0.05")]
        subprocess.run(["xdotool", "mousemove", "--sync", "1170", "810", "mousedown", "1", *moves,
                        "sleep", "0.2", "mouseup", "1"], check=True, timeout=support.PATIENCE)
        return self.process.stdout.readline().strip()
