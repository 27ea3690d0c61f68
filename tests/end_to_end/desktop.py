#!/usr/bin/python3
"""The desktop application as somebody meets it who has a keyboard and a program that reads the screen out.

A window on a display of its own, found and read through the accessibility bus; keys come from the X server.
"""
import support
from desktop_programs import Desktop, Display
from support import Platform, Workspace, wait_until


def the_way_to_a_project_and_out_again():
    with Workspace() as workspace, Display(), Platform(workspace) as platform:
        with Desktop(workspace, platform.address) as desktop:
            desktop.sign_in("ada@northlight.example", "reel-one")
            desktop.find("heading", "Choose a client")
            desktop.activate("list item", "Northlight Pictures")
            desktop.find("list item", "Assets")
            desktop.type("text|entry", "Find a project", "salt")
            wait_until(lambda: [text for kind, text, _ in desktop.items() if kind == "list item"] == ["Salt"], "one row")
            desktop.press("Escape")
            desktop.activate("push button|button", "Choose another client")
            desktop.find("heading", "Choose a client")
            wait_until(lambda: not desktop.says("Choose another client"), "the projects have faded away")
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
