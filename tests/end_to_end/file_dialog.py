#!/usr/bin/python3
"""A file is chosen in the desktop's own dialog, which the desktop's portal shows."""
import support
from desktop_programs import Desktop, Display, Portal
from support import Platform, Workspace, wait_until

ROW = "salt-row-1"


def the_desktops_own_dialog_chooses_the_file():
    with Workspace() as workspace, Display(), Platform(workspace) as platform:
        file = workspace.make_file("chosen in the dialog.mov", 100_000)
        with Portal(workspace, file) as portal, Desktop(workspace, platform.address) as desktop:
            desktop.sign_in(support.EMAIL, support.PASSWORD)
            desktop.open_row()
            desktop.activate(desktop.BUTTON, "Choose a file")
            wait_until(lambda: any(upload["filed"] for upload in platform.uploads(ROW)), "the file is filed")
            assert portal.asked() == ["Choose a file to send"], portal.asked()
            desktop.find("heading", "Filed against this deliverable")
        assert platform.violations() == [], platform.violations()


if __name__ == "__main__":
    support.main(the_desktops_own_dialog_chooses_the_file)
