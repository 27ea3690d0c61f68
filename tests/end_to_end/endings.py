#!/usr/bin/python3
"""Every way in which the program comes to its end while a master is on its way, and what the next start makes of it."""
import os
import signal
import subprocess

import support
from desktop_programs import Desktop, Display, FileManager, WindowManager
from support import Client, Platform, Workspace, wait_until

ROW = "salt-row-1"
DELIVERABLE = "Northlight Pictures", "Salt", "Picture master"
PART = 1 << 20


class SessionManager:
    """The desktop's, for one program, which registers with it."""

    def __enter__(self):
        self.process = subprocess.Popen([os.environ["PALVERA_SESSION_MANAGER"]], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)
        self.address = self.hear()
        return self

    def __exit__(self, *unused):
        self.process.kill()
        self.process.communicate()

    def hear(self):
        return self.process.stdout.readline().strip()

    def ask_to(self, what):
        self.process.stdin.write(what + "\n")
        self.process.stdin.flush()
        return self.hear()


def title_bar(desktop):
    """Where the window is inside its frame; the frame is that much higher."""
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "Palvera$", "getwindowgeometry", "--shell"],
                           capture_output=True, text=True, check=True).stdout
    return tuple(int(line.split("=")[1]) for line in found.splitlines() if line[:2] in ("X=", "Y="))


def expect_end(process):
    assert process.wait(support.PATIENCE) == 0, process.returncode


def begin(desktop, platform, file):
    desktop.open(*DELIVERABLE)
    zone = desktop.middle_of(desktop.find("panel|grouping", "Drop a file here"))
    with FileManager(file) as files:
        assert files.drag_to(*zone) == "copied"
        desktop.find("heading|label|static|text", "Uploading")
    wait_until(lambda: platform.stored_parts(ROW) > 10, "parts in storage")


def resume_all(desktop, platform):
    desktop.find(".*", "1 upload was cut off.")
    before = platform.stored_parts(ROW)
    desktop.activate(desktop.BUTTON, "Resume all")
    wait_until(lambda: platform.stored_parts(ROW) > before + 5, "more parts")


def ended_in_every_way_and_gone_on_with():
    with Workspace() as workspace:
        file = workspace.make_file("film.mov", 120 * PART + 123)
        with (Display(), WindowManager(), SessionManager() as session,
              Platform(workspace, "--part-size", str(PART), "--bytes-per-second", "500000") as platform):
            client = Client(workspace, platform.address)
            desktop = Desktop(workspace, platform.address)
            desktop.environment["SESSION_MANAGER"] = session.address
            with desktop:
                assert session.hear() == "registered" and session.hear() == "saved"
                desktop.sign_in(support.EMAIL, support.PASSWORD)
                begin(desktop, platform, file)
                assert session.ask_to("cancel") == "saved"
                desktop.focus()
                desktop.press("ctrl+q")
                desktop.find("dialog", "Quit while files are moving?")  # it goes on with the session
                assert session.ask_to("end") == "saved" and session.hear() == "gone"
                expect_end(desktop.process)
            with Desktop(workspace, platform.address) as desktop:
                resume_all(desktop, platform)
                first = desktop.process
                first.send_signal(signal.SIGTERM)
                desktop.__enter__()  # at once
                expect_end(first)
                resume_all(desktop, platform)
                place = title_bar(desktop)
                assert place[1] > 0, f"the title bar is above the screen: {place}"
                desktop.process.kill()
                desktop.process.wait()
                desktop.__enter__()
                resume_all(desktop, platform)
                assert title_bar(desktop) == place
                desktop.focus()
                desktop.press("ctrl+q")
                desktop.activate(desktop.BUTTON, "Quit")
                expect_end(desktop.process)
                assert len(client.recorded_parts(ROW)) > 20
                assert len(platform.uploads(ROW)) == 1, "it was not resumed but sent again"
            discard(workspace, platform, client, file)


def discard(workspace, platform, client, file):
    with Desktop(workspace, platform.address) as desktop:
        desktop.activate(desktop.BUTTON, "Show")
        desktop.activate(desktop.BUTTON, f"Discard {file.name}")
        desktop.activate(desktop.BUTTON, "Discard")
        wait_until(lambda: not client.journal(ROW), "the journal goes")
        assert [upload["phase"] for upload in platform.uploads(ROW)] == ["aborted"]
        desktop.sign_out()
        desktop.quit()
        assert desktop.errors.read_text() == "", desktop.errors.read_text()


support.main()
