#!/usr/bin/env python3
"""On a terminal: the password is asked for and not shown, progress is drawn on one line and cleared, tables fit."""
import fcntl
import os
import pty
import re
import select
import struct
import termios

import support
from support import DONE, FAILED, INTERRUPTED, NOT_SIGNED_IN, ORG, PROJECT, Client, Platform, Workspace, expect, signed_in

PART = 100_000
CELLS = 72
SLOW = {"operation": "put", "times": 0, "latencyMs": 300}


class Terminal:
    """The client as the leader of a session on a terminal of its own."""

    def __init__(self, client, *arguments):
        self.pid, self.end = pty.fork()
        if self.pid == 0:
            fcntl.ioctl(0, termios.TIOCSWINSZ, struct.pack("HHHH", 24, CELLS, 0, 0))
            os.execve(support.CLI, [support.CLI, *map(str, arguments)], client.environment | {"TERM": "xterm"})
        self.seen = b""

    def read_until(self, wanted, times=1):
        while wanted is None or self.seen.count(wanted) < times:
            assert select.select([self.end], [], [], support.PATIENCE)[0], f"never: {wanted}\n{self.seen[-2000:]}"
            try:
                piece = os.read(self.end, 1 << 16)
            except OSError:  # the program has closed it
                piece = b""
            if not piece:
                assert wanted is None, f"ended without: {wanted}\n{self.seen[-2000:]}"
                return
            self.seen += piece

    def shows_typing(self):
        return bool(termios.tcgetattr(self.end)[3] & termios.ECHO)

    def type(self, text):
        os.write(self.end, text)

    def finish(self):
        self.read_until(None)
        code = os.waitstatus_to_exitcode(os.waitpid(self.pid, 0)[1])
        os.close(self.end)
        return code, self.seen.decode()


def the_password_is_asked_for_and_not_shown():
    with Workspace() as workspace, Platform(workspace) as platform:
        client = Client(workspace, platform.address)
        app, mail = "Code from your authenticator app: ", "Code that was sent to ben@northlight.example, or Enter for another: "
        for email, password, prompt, codes, expected in (
                (support.EMAIL, "guess-7", "", [], NOT_SIGNED_IN), (support.EMAIL, support.PASSWORD, "", [], DONE),
                ("cleo@northlight.example", "reel-three", app, ["000000", "135-790"], DONE),
                ("ben@northlight.example", "reel-two", mail, ["000000", "", "246 810"], DONE)):
            terminal = Terminal(client, "sign-in", "--email", email)
            terminal.read_until(f"Password of {email}: ".encode())
            assert not terminal.shows_typing()
            terminal.type(password.encode() + b"\n")
            for number, code in enumerate(codes, 1):
                terminal.read_until(prompt.encode(), number)
                assert terminal.shows_typing()
                terminal.type(code.encode() + b"\n")
            ended, seen = terminal.finish()
            assert ended == expected and password not in seen and all(code in seen for code in codes), seen
            assert ("That code is not right." in seen) == bool(codes), seen
            assert ("Another code is on its way." in seen) == ("" in codes), seen


def a_sign_in_in_a_browser_elsewhere_ends_with_a_pasted_address_that_is_not_shown():
    with Workspace() as workspace, Platform(workspace) as platform:
        client = Client(workspace, platform.address)
        client.environment = {key: value for key, value in client.environment.items()
                              if key not in ("DISPLAY", "WAYLAND_DISPLAY")}
        for options, begins in (["--web"], "/sign-in?native=1"), (
                ["--email", "eve@harbour.example"], "/api/auth/workos/start?native=1&return=%2F&email=eve"):
            terminal = Terminal(client, "sign-in", *options)
            terminal.read_until(b"Address: ")
            assert f"\n{platform.origin}{begins}".encode() in terminal.seen.replace(b"\r", b""), terminal.seen
            assert not terminal.shows_typing()
            terminal.type(b"https://elsewhere.test\n")
            terminal.read_until(b"begins with \"palvera:\".", 2)
            terminal.read_until(b"Address: ", 2)
            callback = platform.sign_in_on_page("eve@harbour.example")
            terminal.type(f" {callback}\n".encode())
            code, seen = terminal.finish()
            assert code == DONE and "Signed in as Eve Castellan" in seen and callback not in seen, seen
            assert client.run("whoami", "--json").records()[0]["email"] == "eve@harbour.example"
        result = expect(FAILED, client.run("sign-in", "--web"))
        assert "neither a display" in result.error and "did not finish" in result.error, result


def a_security_key_asks_for_its_pin_and_for_the_account():
    with Workspace() as workspace, Platform(workspace) as platform:
        client = Client(workspace, platform.address.replace("127.0.0.1", "localhost"))
        client.environment |= support.plug_in_key(workspace, platform, "24681357", "ada@northlight.example", "ben@northlight.example")
        terminal = Terminal(client, "sign-in", "--passkey")
        terminal.read_until(b"Enter your security key's PIN.")
        terminal.read_until(b"PIN: ")
        assert not terminal.shows_typing()
        terminal.type(b"11112222\n")
        terminal.read_until(b"That PIN is not right. 7 tries left.")
        terminal.read_until(b"PIN: ", 2)
        terminal.type(b"24681357\n")
        terminal.read_until(b"Number: ")
        terminal.type(b"2\n")
        code, seen = terminal.finish()
        assert code == DONE and "Signed in as Ben Okafor" in seen and "24681357" not in seen, seen
        for file in client.home.rglob("*"):
            assert not file.is_file() or b"24681357" not in file.read_bytes(), file
        result = expect(FAILED, client.run("sign-in", "--passkey"))
        assert "There is no terminal to ask for the security key's PIN." in result.error, result
        del client.environment["LD_PRELOAD"]
        waiting = Terminal(client, "sign-in", "--passkey")
        waiting.read_until(b"Put in your security key.")
        waiting.type(b"\x03")
        assert waiting.finish()[0] == INTERRUPTED


def an_interruption_while_the_password_is_asked_for_leaves_the_terminal_as_it_was():
    with Workspace() as workspace, Platform(workspace) as platform:
        terminal = Terminal(Client(workspace, platform.address), "sign-in", "--email", support.EMAIL)
        keeper = os.open(f"/proc/{terminal.pid}/fd/0", os.O_RDWR | os.O_NOCTTY)  # or the terminal ends with the program
        terminal.read_until(b"Password")
        assert not terminal.shows_typing()
        terminal.type(b"\x03")
        terminal.read_until(b"Interrupted.")
        code = os.waitstatus_to_exitcode(os.waitpid(terminal.pid, 0)[1])
        assert code == INTERRUPTED and terminal.shows_typing(), code
        os.close(keeper)
        os.close(terminal.end)


def progress_is_one_line_that_is_cleared_at_the_end():
    with signed_in("--part-size", str(PART), rules=[SLOW]) as (workspace, platform, client):
        file = workspace.make_file("Reel 1.mov", 80 * PART)
        code, seen = Terminal(client, "upload", ORG, PROJECT, "salt-row-1", file).finish()
        assert code == DONE, seen
        drawn = re.findall(r"\r\x1b\[K([^\r\n]+)", seen)
        bars = [line for line in drawn if "%" in line and "[" in line]
        assert len(bars) > 5 and all(len(line) < CELLS for line in bars), seen
        lines = [re.split(r"\x1b\[K", line)[-1].strip("\r") for line in seen.split("\n")]
        assert lines[0].startswith("Sending “Reel 1.mov”") and lines[1].startswith("Filed on"), lines


support.main()
