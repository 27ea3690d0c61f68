"""A real browser on the display of a test, steered through the pipe that it has for that. It never runs as root, and
never without its sandbox: where the tests do, the script starts itself over as a user who may do nothing."""
import json
import os
import shlex
import shutil
import subprocess
import tempfile
import time

import nobody
import support
from nobody import skip
from support import wait_until

PROGRAM = shutil.which("chromium")
# It would talk to its makers: nothing leaves this machine.
ALONE = ("--disable-background-networking --disable-component-update --disable-sync --disable-quic "
         "--host-resolver-rules='MAP * ~NOTFOUND, EXCLUDE localhost'")


def require_sandbox():
    """What a browser locks its pages into, the system may refuse."""
    with tempfile.TemporaryDirectory() as profile:
        tried = subprocess.run([PROGRAM, "--headless", "--disable-gpu", *shlex.split(ALONE), "--dump-dom", "about:blank",
                                f"--user-data-dir={profile}"], capture_output=True, text=True, timeout=support.PATIENCE)
    if tried.returncode != 0 and "sandbox" in tried.stderr:
        skip("this system lets no browser have a sandbox")


def leave_root():
    nobody.leave_root("PALVERA", "PALVERA_CLI", "PALVERA_LOCAL_PLATFORM")
    require_sandbox()


class Chromium:
    """The user's browser for programs whose home is `home`: it starts when one of them opens an address, and knows them
    as what opens `palvera:`, without asking, for pages of `origin`."""

    def __init__(self, workspace, home, program, origin):
        self.profile = workspace.path / "profile"
        self.pipes = [workspace.path / "orders", workspace.path / "answers"]
        for pipe in self.pipes:
            os.mkfifo(pipe)
        (self.profile / "Default").mkdir(parents=True)
        (self.profile / "Default" / "Preferences").write_text(json.dumps(
            {"protocol_handler": {"allowed_origin_protocol_pairs": {origin: {"palvera": True}}}}))
        script = workspace.path / "browser"
        start = f'{PROGRAM} --user-data-dir="{self.profile}" --no-first-run --password-store=basic --disable-gpu {ALONE}'
        script.write_text(f"""#!/bin/bash
exec >>"{workspace.path}/chromium.log" 2>&1
if [ -L "{self.profile}/SingletonLock" ]; then # a second start, which tells the first one and ends
  exec {start} "$1"
fi
exec {start} --remote-debugging-pipe "$1" 3<"{self.pipes[0]}" 4>"{self.pipes[1]}"
""")
        script.chmod(0o755)
        support.install_handlers(home, {"http": script, "https": script, "palvera": program})
        self.number = 0
        self.orders = self.answers = None

    def attach(self):
        """Waits until it is started."""
        self.orders, self.answers = open(self.pipes[0], "wb", buffering=0), open(self.pipes[1], "rb")
        return self

    def close(self):
        self.ask("Browser.close")
        self.answers.read()
        wait_until(lambda: not (self.profile / "SingletonLock").is_symlink(), "the browser ends")
        self.orders.close()
        self.answers.close()

    def ask(self, method, session=None, **parameters):
        self.number += 1
        order = {"id": self.number, "method": method, "params": parameters} | ({"sessionId": session} if session else {})
        self.orders.write(json.dumps(order).encode() + b"\0")
        while True:
            text = b""
            while not text.endswith(b"\0"):
                byte = self.answers.read(1)
                assert byte, "the browser has ended"
                text += byte
            answer = json.loads(text[:-1])
            if answer.get("id") == self.number:
                gone = any(reason in str(answer.get("error")) for reason in ("navigated or closed", "Cannot find context"))
                assert gone or "error" not in answer, answer
                return answer.get("result", {})  # nothing of a page that has just given way to another

    def page(self, path):
        """One that is shown, as a session."""
        def look():
            pages = [each for each in self.ask("Target.getTargets")["targetInfos"]
                     if each["type"] == "page" and path in each["url"]]
            return pages and pages[-1]["targetId"]

        target = wait_until(look, f"a page at {path}")
        return self.ask("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]

    def evaluate(self, session, expression):
        """Nothing while one page gives way to another."""
        return self.ask("Runtime.evaluate", session, expression=expression, userGesture=True,
                        returnByValue=True).get("result", {}).get("value")

    def click(self, session, text):
        """The link or button that begins so, with the pointer: for what no hand has asked for, the browser calls a
        program once only. It takes no notice of a hand before it has painted the page, so the page must change."""
        self.place_of(session, text)
        before = self.shown(session)
        deadline = time.monotonic() + support.PATIENCE
        while self.shown(session) == before:
            assert time.monotonic() < deadline, f"a click on {text} does nothing"
            self.press(session, *self.place_of(session, text))
            changes = time.monotonic() + 2
            while self.shown(session) == before and time.monotonic() < changes:
                time.sleep(0.03)

    def shown(self, session):
        return self.evaluate(session, "[location.href, document.body && document.body.innerText]")

    def place_of(self, session, text):
        """The middle of it, once the page is whole."""
        return wait_until(lambda: self.evaluate(session, f"""(each => {{
            if (!each || document.readyState !== 'complete') return null;
            each.scrollIntoView();
            const at = each.getBoundingClientRect();
            return [at.x + at.width / 2, at.y + at.height / 2];
        }})([...document.querySelectorAll('a, button')].find(each => each.textContent.startsWith({json.dumps(text)})))"""),
                          f"{text} is on the page")

    def press(self, session, x, y):
        for kind in "mousePressed", "mouseReleased":
            self.ask("Input.dispatchMouseEvent", session, type=kind, x=x, y=y, button="left", clickCount=1)

    def touch(self, session):
        """As somebody does who looks at the page."""
        self.press(session, 5, 5)

    def wait_for_text(self, session, text):
        wait_until(lambda: text in (self.evaluate(session, "document.body.innerText") or ""), f"the page says {text}")

    def plug_in_key(self, session, passkeys=()):
        """A security key of software, of that page alone, which is always touched."""
        self.ask("WebAuthn.enable", session)
        key = self.ask("WebAuthn.addVirtualAuthenticator", session, options={
            "protocol": "ctap2", "transport": "internal", "hasResidentKey": True, "hasUserVerification": True,
            "isUserVerified": True, "automaticPresenceSimulation": True})["authenticatorId"]
        for passkey in passkeys:
            self.ask("WebAuthn.addCredential", session, authenticatorId=key, credential=passkey)
        return key

    def passkeys(self, session, key):
        return self.ask("WebAuthn.getCredentials", session, authenticatorId=key)["credentials"]
