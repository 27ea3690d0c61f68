#!/usr/bin/python3
"""Every way in that leads through the browser, with a real one and nobody at the keyboard."""
import shutil
import time

import chromium
import support

if not (chromium.PROGRAM and shutil.which("openbox")):
    chromium.skip("Chromium or openbox is not installed")
chromium.leave_root()

from desktop_programs import DESKTOP, Desktop, Display, WindowManager # noqa: E402: as that user
from support import Platform, Workspace, wait_until # noqa: E402

GOOGLE, MICROSOFT = (f"Continue with {name}, in a sign-in window." for name in ("Google", "Microsoft"))


def every_door_opens():
    with Workspace() as workspace, Display(), WindowManager(), Platform(workspace) as platform:
        address = platform.address.replace("127.0.0.1", "localhost")
        browser = chromium.Chromium(workspace, workspace.path / "home", DESKTOP, address.removesuffix("/api"))
        with Desktop(workspace, address) as desktop:
            began = time.monotonic()

            def begin(button):
                desktop.activate(desktop.BUTTON, button)
                desktop.find("heading", "Finish in your browser")

            def arrive_as(email):
                nonlocal began
                desktop.find(".*", f"You are signed in as {email}.")
                print(f"        as {email} after {time.monotonic() - began:.1f} s", flush=True)
                assert desktop.is_active(), "the window has not come to the front"
                desktop.sign_out()
                began = time.monotonic()

            begin(GOOGLE)
            browser.attach()
            start = browser.page("/auth/workos/start?native=1&return=%2F&provider=google")
            browser.click(start, "Ada Lindqvist")
            arrive_as("ada@northlight.example")
            browser.wait_for_text(start, "You are signed in. You can close this page.")

            browser.touch(start)
            begin(MICROSOFT) # whose page the browser does not show, since it knows its user
            arrive_as("ada@northlight.example")
            browser.click(start, "Sign in as somebody else")

            desktop.type("text|entry", "Work email", "eve@harbour.example")
            desktop.press("Return")
            browser.click(browser.page("&email=eve"), "Eve Castellan")
            arrive_as("eve@harbour.example")
            made = browser.page("/finish?account=eve")
            browser.click(made, "Sign in as somebody else")

            key = browser.plug_in_key(made)
            browser.click(made, "Make a passkey")
            browser.click(made, "Cleo Marchetti")
            browser.wait_for_text(made, "That passkey signs Cleo Marchetti in.")
            passkey = browser.passkeys(made, key)
            begin("Sign in with a passkey")
            page = browser.page("/sign-in?native=1")
            browser.plug_in_key(page, passkey)
            browser.click(page, "Use your passkey")
            arrive_as("cleo@northlight.example")
            browser.wait_for_text(page, "You are signed in. You can close this page.")
            browser.close()
            assert desktop.errors.read_text() == "", desktop.errors.read_text()


support.main()
