#!/usr/bin/python3
"""The path that suppliers take every day, with the real programs: a file is dragged onto a deliverable, the program is
killed in the middle, started again and told to resume; the file is filed, and downloaded again.
"""
import os
import subprocess

import support
from desktop_programs import Desktop, Display
from support import DONE, Client, Platform, Workspace, digest, expect, expect_filed, wait_until

DRAG_SOURCE = os.environ["PALVERA_DRAG_SOURCE"]
ROW = "salt-row-1"
PART = 1 << 20


class FileManager:
    """A window from which `file` can be dragged."""

    def __init__(self, file):
        self.file = file

    def __enter__(self):
        self.process = subprocess.Popen([DRAG_SOURCE, self.file], stdout=subprocess.PIPE, text=True)
        self.window = subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--name", "^Files$"], check=True,
                                     capture_output=True, text=True, timeout=support.PATIENCE).stdout.split()[0]
        return self

    def __exit__(self, *unused):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()

    def drag_to(self, x, y):
        """As a hand does: several small movements, of which the desktop hears each."""
        steps = [(x + (1170 - x) * left // 8, y + (810 - y) * left // 8) for left in range(7, -1, -1)]
        moves = [word for at in [(1180, 815), *steps, (x + 2, y + 2)]
                 for word in ("mousemove", "--sync", str(at[0]), str(at[1]), "sleep", "0.05")]
        subprocess.run(["xdotool", "mousemove", "--sync", "1170", "810", "mousedown", "1", *moves, "sleep", "0.2", "mouseup", "1"],
                       check=True, timeout=support.PATIENCE)
        return self.process.stdout.readline().strip()


def stored_parts(platform):
    return sum(len(upload.get("parts", [])) for upload in platform.uploads(ROW))


def dragged_killed_resumed_filed_and_downloaded_again():
    with Workspace() as workspace, Display(), \
            Platform(workspace, "--part-size", str(PART), "--bytes-per-second", "1000000") as platform:
        file = workspace.make_file("Salt – 100% final #2.mov", 60 * PART + 123)
        folder = workspace.path / "Downloads"
        folder.mkdir()
        client = Client(workspace, platform.address)
        expect(DONE, client.run("downloads-folder", folder))
        with Desktop(workspace, platform.address) as desktop:
            desktop.sign_in(support.EMAIL, support.PASSWORD)
            desktop.open_row()
            zone = desktop.middle_of(desktop.find("panel|grouping", "Drop a file here"))
            with FileManager(file) as files:
                result = files.drag_to(*zone)
                assert result == "copied", f"the drop was {result}"
                desktop.find("heading|label|static|text", "Uploading")  # until then the file is still to be fetched
            wait_until(lambda: stored_parts(platform) > 10, "parts in storage")
            assert desktop.says("upload, running"), "the panel has not opened"
            desktop.process.kill()
        assert client.journal(ROW), "no journal is left"
        before = stored_parts(platform)
        with Desktop(workspace, platform.address) as desktop:
            desktop.find("heading", "Choose a client")
            desktop.activate(desktop.BUTTON, "Transfers")
            desktop.activate("page tab", "Interrupted")
            assert desktop.says("of 61 parts done")
            desktop.activate(desktop.BUTTON, "Resume")
            wait_until(lambda: any(upload["filed"] for upload in platform.uploads(ROW)), "the file is filed")
            wait_until(lambda: not client.journal(ROW), "the journal is gone")
            assert len(platform.uploads(ROW)) == 1, "it was not resumed but sent again"
            expect_filed(platform, client, ROW, file)
            desktop.open_row()
            desktop.find("heading", "Filed against this deliverable")
            desktop.activate(desktop.BUTTON, "Download")
            wait_until(lambda: (folder / file.name).exists() and len(list(folder.iterdir())) == 1
                       and digest(folder / file.name) == digest(file), "the same bytes come down")
            desktop.quit()
            said = desktop.errors.read_text()
            assert said == "", said
        assert before > 10 and platform.violations() == [], platform.violations()


if __name__ == "__main__":
    support.main(dragged_killed_resumed_filed_and_downloaded_again)
