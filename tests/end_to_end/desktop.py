#!/usr/bin/python3
"""The path that suppliers take every day, with the real programs, as somebody takes it who has a keyboard, a pointer
and a program that reads the screen out: a file is dragged onto a row of the list, the program is killed in the middle,
started again and told to resume; the file is filed, downloaded, shown by the file manager and replaced by one from the
desktop's own dialog; two more go into a folder of Uploads. Twice on the way the platform forgets who is signed in."""
import signal

import support
from desktop_programs import Desktop, Display, FileManager, install_portal
from support import DONE, Client, Platform, Workspace, digest, expect, expect_filed, wait_until

ROW = "salt-row-1"
DELIVERABLE = "Northlight Pictures", "Salt", "Picture master"
PART = 1 << 20


def dragged_killed_resumed_filed_downloaded_and_replaced():
    with Workspace() as workspace:
        file = workspace.make_file("Salt – 100% final #2.mov", 60 * PART + 123)
        chosen = workspace.make_file("chosen in the dialog.mov", 100_000)
        asked = install_portal(workspace, chosen)
        with Display(), Platform(workspace, "--part-size", str(PART), "--bytes-per-second", "700000") as platform:
            deliver(workspace, platform, file)
            platform.kill()
            platform.options = "--part-size", str(PART)  # what is left need not take long enough to be killed in
            platform.start()
            resume_and_replace(workspace, platform, file, chosen, asked)
        assert asked.read_text() == "Choose a file to send\n"


def begin_on_row(desktop, platform, *files):
    desktop.open(*DELIVERABLE[:-1])
    row = desktop.middle_of(desktop.find("list item", DELIVERABLE[-1]))
    with FileManager(*files) as manager:
        result = manager.drag_to(*row)
        assert result == "copied", f"the drop was {result}"
        desktop.find(".*", f"Send “{files[0].name}” to {DELIVERABLE[-1]}?")
        assert desktop.says(f"Left out: “{files[1].name}”."), "the others are named"
        desktop.activate(desktop.BUTTON, "Send")
        wait_until(lambda: platform.stored_parts(ROW) > 10, "parts in storage")
    assert "Transferring" in desktop.find("list item", DELIVERABLE[-1]).get_description(), "the list stays"


def deliver(workspace, platform, file):
    with Desktop(workspace, platform.address) as desktop:
        desktop.sign_in(support.EMAIL, support.PASSWORD)
        assert "libLLVM" not in desktop.mapped_files(), "OpenGL draws with the processor"
        assert desktop.start_again() == 0, "a second start does not hand over to the first"
        begin_on_row(desktop, platform, file, workspace.make_file("left out.mov", 1))
        assert desktop.says("upload, running"), "the panel has not opened"
        platform.expire()
        desktop.find(".*", "Your sign-in has expired. Sign in again.")
        wait_until(lambda: desktop.says("Waiting for you to sign in"), "the panel says what it waits for")
        before = platform.stored_parts(ROW)
        desktop.focus()
        desktop.sign_in(support.EMAIL, support.PASSWORD)
        wait_until(lambda: platform.stored_parts(ROW) > before, "it goes on by itself")
        desktop.process.kill()


def resume_and_replace(workspace, platform, file, chosen, asked):
    client, folder = Client(workspace, platform.address), workspace.path / "Downloads"
    folder.mkdir()
    expect(DONE, client.run("downloads-folder", folder))
    confirmed = client.recorded_parts(ROW)
    assert 10 <= len(confirmed) < 61, confirmed
    with Desktop(workspace, platform.address) as desktop:
        desktop.find("heading", "Choose a client")
        desktop.activate(desktop.BUTTON, "Show")
        wait_until(lambda: desktop.says("of 61 parts done"), "the panel says how far it has come")
        desktop.activate(desktop.BUTTON, f"Resume {file.name}")
        wait_until(lambda: platform.is_filed(ROW, file) and not client.journal(ROW), "the file is filed")
        assert len(platform.uploads(ROW)) == 1, "it was not resumed but sent again"
        sent = expect_filed(platform, client, ROW, file)["parts"]
        assert all(sent[number]["times"] == 1 for number in confirmed), "a confirmed part was sent again"
        desktop.open(*DELIVERABLE)
        desktop.find("heading", "Filed against this deliverable")
        desktop.activate(desktop.BUTTON, f"Download {file.name}")
        wait_until(lambda: (folder / file.name).exists() and len(list(folder.iterdir())) == 1
                   and digest(folder / file.name) == digest(file), "the same bytes come down")
        desktop.activate("page tab", "Finished (2)")
        desktop.activate("list item", f"Picture master, {file.name}, download, Done · 62.9 MB")
        wait_until(asked.exists, "the file manager shows the file")
        assert asked.read_text() == f"{(folder / file.name).as_uri()}\n", asked.read_text()
        asked.unlink()
        desktop.activate_until(desktop.BUTTON, "Choose a file", asked.exists)
        wait_until(lambda: platform.is_filed(ROW, chosen), "the chosen file is filed")
        desktop.process.send_signal(signal.SIGSTOP)  # it might ask in between
        platform.expire()
        client.sign_in()  # of which the window learns by the cookies
        desktop.process.send_signal(signal.SIGCONT)
        desktop.activate(desktop.BUTTON, "Deliverables")
        desktop.activate(desktop.BUTTON, "Projects")
        add_to_uploads(workspace, desktop)
        desktop.sign_out()
        desktop.quit()
        assert desktop.complaints() == "", desktop.complaints()


def add_to_uploads(workspace, desktop):
    files = [workspace.make_file(f"Reel {name}.mov", PART + 1, seed=name) for name in "AB"]
    desktop.open("Assets", "Uploads", "Rushes 2025")
    with FileManager(*files) as manager:
        result = manager.drag_to(*desktop.middle_of(desktop.find("list item", "Day 5.mov")))
        assert result == "copied", f"the drop was {result}"
        for file in files:
            wait_until(lambda: ["Date:" in node.get_description() for kind, name, node in desktop.items()
                                if (kind, name) == ("list item", file.name)] == [True], "it is listed once, as filed")


support.main()
