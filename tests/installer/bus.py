"""A bus of one's own with the installer on it, callers of several users, and an authority that says who may."""
import atexit
import itertools
import json
import os
import pathlib
import subprocess
import sys
import threading
import time

from gi.repository import Gio, GLib

from installation import IS_ROOT, KEEPER

NAME = "example.palvera.Palvera.Installer"
ALLOWED, REFUSED, SILENT = "allowed", "refused", "silent"
PATIENCE = 300  # seconds; who waits longer hangs

CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><listen>unix:path={folder}/socket</listen><auth>EXTERNAL</auth><servicedir>{folder}/services</servicedir>
<policy context="default"><allow user="*"/><allow own="*"/><allow send_destination="*"/><allow eavesdrop="true"/></policy>
<limit name="max_replies_per_connection">1000</limit></busconfig>
"""

AUTHORITY = """<node><interface name="org.freedesktop.PolicyKit1.Authority"><method name="CheckAuthorization">
<arg type="(sa{sv})" direction="in"/><arg type="s" direction="in"/><arg type="a{ss}" direction="in"/>
<arg type="u" direction="in"/><arg type="s" direction="in"/><arg type="(bba{ss})" direction="out"/>
</method></interface></node>"""


def wait_until(holds, what):
    """What `holds` gives in the end."""
    deadline = time.monotonic() + PATIENCE
    while not (held := holds()):
        assert time.monotonic() < deadline, f"never: {what}"
        time.sleep(0.01)
    return held


def connect(address):
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)


class Bus:
    """The bus starts the installer at the first call, which is told `options`."""

    def __init__(self, place, name, *options):
        self.folder, self.place = place.path / name, place
        (self.folder / "services").mkdir(parents=True)
        self.address = f"unix:path={self.folder}/socket"
        (self.folder / "bus.conf").write_text(CONFIGURATION.format(folder=self.folder))
        self.command = [*as_user(KEEPER), place.installer, "--session", "--root", place.path / "root", "--key",
                        place.public_key, "--bus", self.address]
        words = " ".join(map(str, [*self.command, *options]))
        (self.folder / "services/installer.service").write_text(f"[D-BUS Service]\nName={NAME}\nExec={words}\n")
        self.errors = self.folder / "errors"  # of the bus and of all that it has started
        with open(self.errors, "wb") as errors:
            self.daemon = subprocess.Popen(
                ["dbus-daemon", f"--config-file={self.folder}/bus.conf", "--nofork", "--print-address"],
                stdout=subprocess.PIPE, stderr=errors, env=os.environ | {"STEERED": "yes"})
        atexit.register(self.daemon.kill)
        self.daemon.stdout.readline()
        self.connection = connect(self.address)
        self.authority = Authority(self.connection)
        self.callers = {}

    def ask(self, method, *words):
        values = GLib.Variant(f"({'s' * len(words)})", words) if words else None
        return self.connection.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                                         values, None, Gio.DBusCallFlags.NONE, -1, None).unpack()[0]

    def has_service(self):
        return self.ask("NameHasOwner", NAME)

    def service(self):
        """The process of the installer that serves here."""
        return self.ask("GetConnectionUnixProcessID", NAME)

    def caller(self, user):
        if user not in self.callers:
            self.callers[user] = Caller(self, user)
        return self.callers[user]

    def end(self):
        for caller in self.callers.values():
            caller.process.stdin.close()
            caller.process.wait()
        service = pathlib.Path(f"/proc/{self.service()}/cmdline") if self.has_service() else None
        self.connection.close_sync()
        self.daemon.kill()
        self.daemon.wait()
        wait_until(lambda: not service or not service.exists() or not service.read_bytes(), "it goes with its bus")
        said = self.errors.read_text()
        assert "Sanitizer" not in said and "runtime error:" not in said, said


class Authority:
    """Says yes, no or nothing, and keeps what it is asked."""

    def __init__(self, connection):
        self.connection, self.says, self.questions = connection, ALLOWED, []
        self.name = None
        # Gio answers on the thread whose loop runs where the object is registered.
        self.context, ready = GLib.MainContext.new(), threading.Event()
        threading.Thread(target=self.serve, args=[ready], daemon=True).start()
        ready.wait()
        self.come()

    def serve(self, ready):
        self.context.push_thread_default()
        interface = Gio.DBusNodeInfo.new_for_xml(AUTHORITY).interfaces[0]
        self.connection.register_object("/org/freedesktop/PolicyKit1/Authority", interface, self.answer, None, None)
        ready.set()
        GLib.MainLoop.new(self.context, False).run()

    def answer(self, connection, sender, path, interface, method, words, invocation):
        self.questions.append(words.unpack())
        if self.says != SILENT:
            invocation.return_value(GLib.Variant("((bba{ss}))", ((self.says == ALLOWED, False, {}),)))

    def request(self, method, signature, *words):
        self.connection.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                                  GLib.Variant(signature, words), None, Gio.DBusCallFlags.NONE, -1, None)

    def come(self):
        self.request("RequestName", "(su)", "org.freedesktop.PolicyKit1", 0)

    def go(self):
        self.request("ReleaseName", "(s)", "org.freedesktop.PolicyKit1")


def as_user(user):
    if user == os.geteuid():
        return []
    assert IS_ROOT
    return ["/usr/bin/setpriv", "--reuid", str(user), "--regid", str(user), "--clear-groups"]


class Answer:
    """What a call comes to: a text for the user, empty when it went well, or that nobody answered."""

    def __init__(self):
        self.arrived, self.error, self.failure = threading.Event(), None, None

    def take(self, error, failure):
        self.error, self.failure = error, failure
        self.arrived.set()

    def wait(self):
        assert self.arrived.wait(PATIENCE), "no answer"
        return self

    def __str__(self):
        return f"failure {self.failure!r}" if self.failure else repr(self.error)


class Caller:
    def __init__(self, bus, user):
        self.user, self.target, self.numbers = user, str(bus.place.path / "root"), itertools.count(1)
        self.answers = {0: Answer()}
        program = bus.place.copy(pathlib.Path(__file__).with_name("caller.py"))
        self.process = subprocess.Popen([*as_user(user), sys.executable, "-B", program, bus.address], cwd="/", text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        threading.Thread(target=self.read, daemon=True).start()
        self.name = self.answers[0].wait().error

    def read(self):
        for line in self.process.stdout:
            words = json.loads(line)
            self.answers[words["number"]].take(words["error"], words["failure"])
        for answer in self.answers.values():
            if not answer.arrived.is_set():
                answer.take(None, "the caller has ended")

    def start(self, method, image=None, target=None, announced=None):
        number = next(self.numbers)
        self.answers[number] = answer = Answer()
        words = {"number": number, "method": method, "target": self.target if target is None else target,
                 "image": image and str(image), "announced": announced}
        self.process.stdin.write(json.dumps(words) + "\n")
        self.process.stdin.flush()
        return answer

    def start_prepare(self, image, build=58, version="1.5", **options):
        return self.start("PrepareWithImage", image, **{"announced": {"build": str(build), "version": version}} | options)

    def prepare(self, image, *words, **options):
        return self.start_prepare(image, *words, **options).wait()

    def install(self, **options):
        return self.start("InstallWithTarget", **options).wait()
