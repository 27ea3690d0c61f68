#!/usr/bin/python3
"""How a browser's last address finds the program that waits for it, on the desktop and on the command line: over the
bus, by another start, from another home, past one that is deaf. No browser is needed: what is opened is written down.
"""
import ctypes
import os
import re
import socket
import subprocess

import gi

import support
from desktop_programs import DESKTOP, Desktop, Display
from support import DONE, Client, Platform, Workspace, expect, wait_until

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib # noqa: E402: only with the version

GOOGLE = "Continue with Google, in a sign-in window."
ID = "example.palvera.Palvera"


class FakeBrowser:
    """It keeps a list of what it was to open."""

    def __init__(self, workspace, *homes):
        self.list, self.used = workspace.path / "opened", 0
        script = workspace.path / "browser"
        script.write_text(f'#!/bin/sh\necho "$1" >>"{self.list}"\n')
        script.chmod(0o755)
        for home in homes:
            support.install_handlers(workspace.path / home, {"http": script})

    def next(self):
        def look():
            lines = self.list.read_text().splitlines() if self.list.exists() else []
            return lines[self.used:]

        opened = wait_until(look, "the browser is opened")
        self.used += len(opened)
        return opened[0]


def handler(home, address, token=""):
    """What a desktop file starts, with the user's own environment."""
    environment = os.environ | support.homes(home, "http://0.0.0.0:1/api") | {"DESKTOP_STARTUP_ID": token}
    return subprocess.Popen([DESKTOP, address], env=environment, stderr=subprocess.PIPE)


def call_over_the_bus(method, arguments):
    Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(
        ID, "/" + ID.replace(".", "/"), "org.freedesktop.Application", method, arguments, None, 0, 5000, None)


class WindowRequests:
    """Hears what windows ask the window manager for."""

    def __init__(self):
        self.x = ctypes.CDLL("libX11.so.6")
        for function in "XOpenDisplay", "XGetAtomName":
            getattr(self.x, function).restype = ctypes.c_void_p
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(None))
        self.x.XDefaultRootWindow.restype = ctypes.c_ulong
        root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))
        self.x.XSelectInput(self.display, root, ctypes.c_long(1 << 19)) # SubstructureNotifyMask
        self.x.XSync(self.display, 0)

    def asked_to_activate(self):
        """With which time; None when nothing has asked."""
        event = (ctypes.c_long * 24)() # ClientMessage: type, serial, sent, display, window, message type, format, data
        while self.x.XPending(self.display):
            self.x.XNextEvent(self.display, event)
            if event[0] & 0xff == 33:
                name = self.x.XGetAtomName(self.display, ctypes.c_ulong(event[5]))
                if ctypes.string_at(name) == b"_NET_ACTIVE_WINDOW" and event[7] == 1:
                    return event[8]
        return None


def deaf_one(folder):
    """Somebody who began to wait later than all others and takes nothing any more."""
    listener, waiting = socket.socket(socket.AF_UNIX), []
    listener.bind(str(folder / "waiting-1"))
    listener.listen(0)
    while True:
        waiting.append(socket.socket(socket.AF_UNIX))
        waiting[-1].setblocking(False)
        try:
            waiting[-1].connect(str(folder / "waiting-1"))
        except BlockingIOError:
            return [listener, *waiting]


def holds(home, secret):
    """The files below `home` in which it stands."""
    return [file for file in home.rglob("*") if file.is_file() and secret.encode() in file.read_bytes()]


def comes_back_by_every_way_to_whoever_waits():
    with Workspace() as workspace, Display() as display, Platform(workspace) as platform:
        browser, elsewhere = FakeBrowser(workspace, "home", "another-home"), workspace.path / "elsewhere"
        folder = support.pathlib.Path(display.runtime.name) / "palvera"
        manager, grants = WindowRequests(), []

        def finished(account):
            assert browser.next().startswith(platform.address + "/auth/workos/start?native=1&return=%2F")
            address = platform.sign_in_on_page(account)
            grants.append(address.split("=")[1])
            return address

        with Desktop(workspace, platform.address) as desktop:
            desktop.find("text|entry", "Work email")
            handed_over = handler(workspace.path / "home", "palvera://sign-in?grant=unasked", "launcher_TIME4242")
            assert handed_over.wait(support.PATIENCE) == 0
            desktop.find(".*", "That sign-in was not started here, so it was not used.")
            assert wait_until(manager.asked_to_activate, "the window asks to come to the front") == 4242

            def wait_in_browser():
                desktop.activate(desktop.BUTTON, GOOGLE)
                desktop.find("heading", "Finish in your browser")

            wait_in_browser()
            held, address = deaf_one(folder), finished("ada@northlight.example")
            process = handler(elsewhere, address)
            command = support.pathlib.Path(f"/proc/{process.pid}/cmdline")

            def is_clean():
                arguments = command.read_bytes() # none while the program is being loaded, and once it has ended
                return arguments.startswith(os.fsencode(DESKTOP)) and b"palvera:" not in arguments

            wait_until(lambda: process.poll() is not None or is_clean(), "the address leaves the arguments")
            assert process.poll() is None, "it was not held"
            assert process.wait(support.PATIENCE) == 0
            del held
            desktop.find(".*", "You are signed in as ada@northlight.example.")
            desktop.sign_out()

            wait_in_browser()
            call_over_the_bus("Open", GLib.Variant("(asa{sv})", ([finished("ben@northlight.example")], {})))
            desktop.find(".*", "You are signed in as ben@northlight.example.")
            desktop.sign_out()

            wait_in_browser()
            finished("ada@northlight.example")
            client = Client(workspace, platform.address, "another-home")
            waiting = client.start("sign-in", "--web", "--email", "eve@harbour.example", "--json",
                                   start_new_session=True)
            call_over_the_bus("Open", GLib.Variant("(asa{sv})", ([finished("eve@harbour.example")], {})))
            result = expect(DONE, client.finish(waiting))
            assert result.records()[-1]["email"] == "eve@harbour.example", result
            assert desktop.find("heading", "Finish in your browser"), "that was not its own"
            assert len(list(folder.iterdir())) == 1, "who is gone has left something"
            desktop.press("Escape")
            desktop.find("text|entry", "Work email")
            assert not list(folder.iterdir())
            assert desktop.complaints() == "", desktop.complaints()
        [cookies] = (client.home / "data").rglob("cookies")
        cookie = re.search(r"pv_session\s+(\S+)", cookies.read_text())[1]
        assert holds(client.home, cookie) == [cookies] and cookie not in result.out + result.error
        for grant in grants:
            found = [file for home in ("home", "elsewhere", "another-home") for file in holds(workspace.path / home, grant)]
            assert not found and grant not in result.out + result.error, found


def a_security_key_signs_in():
    with Workspace() as workspace, Display(), Platform(workspace) as platform:
        keys = support.plug_in_key(workspace, platform, "24681357", "ada@northlight.example")
        desktop = Desktop(workspace, platform.address.replace("127.0.0.1", "localhost"))
        desktop.environment |= keys
        with desktop:
            desktop.find(".*", "With your security key.")
            desktop.activate(desktop.BUTTON, "Sign in with a passkey")
            for pin in "11112222", "24681357":
                desktop.type("password text", "PIN", pin)
                desktop.press("Return")
                if pin != "24681357":
                    desktop.find(".*", "That PIN is not right. 7 tries left.")
            desktop.find("heading", "Choose a client")
            assert desktop.complaints() == "", desktop.complaints()
        assert not holds(workspace.path / "home", "24681357")


def without_a_program_one_is_started_that_knows_nothing_of_it():
    with Workspace() as workspace, Display(), Platform(workspace) as platform:
        home = workspace.path / "home"
        environment = os.environ | support.homes(home, platform.address)
        subprocess.run([DESKTOP, "palvera://sign-in?grant=early"], env=environment, check=True,
                       stderr=subprocess.DEVNULL, timeout=support.PATIENCE)
        found = subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--name", "Palvera", "getwindowpid"],
                               check=True, capture_output=True, text=True, timeout=support.PATIENCE)
        pid = int(found.stdout.split()[0])
        try:
            command = support.pathlib.Path(f"/proc/{pid}/cmdline").read_bytes()
            assert command == os.fsencode(DESKTOP) + b"\0", command
        finally:
            os.kill(pid, 15)
            wait_until(lambda: not os.path.exists(f"/proc/{pid}"), "it ends")


def the_bus_starts_the_program_and_gives_it_the_address():
    with Workspace() as workspace, Platform(workspace) as platform:
        services, home = workspace.path / "share" / "dbus-1" / "services", workspace.path / "home"
        services.mkdir(parents=True)
        surroundings = support.homes(home, platform.address) | {
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        (services / f"{ID}.service").write_text(f"[D-BUS Service]\nName={ID}\nExec=/usr/bin/env " + " ".join(
            f"{name}={value}" for name, value in surroundings.items()) + f" {DESKTOP}\n")
        os.environ["XDG_DATA_DIRS"] = f"{workspace.path / 'share'}:/usr/local/share:/usr/share"
        with Display():
            desktop = Desktop(workspace, platform.address) # which it does not start
            desktop.errors.write_text("")
            call_over_the_bus("Open", GLib.Variant("(asa{sv})", (["palvera://sign-in?grant=unasked"], {})))
            desktop.find(".*", "That sign-in was not started here, so it was not used.")
            desktop.focus()
            desktop.press("ctrl+q")


support.main()
