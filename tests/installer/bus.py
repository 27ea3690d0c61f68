"""A bus of one's own with the installer on it, callers of several users, and an authority that says who may."""
import atexit
import os
import pathlib
import socket
import subprocess
import threading
import time

from gi.repository import Gio, GLib

from installation import IS_ROOT, KEEPER

NAME, PATH = "example.palvera.Palvera.Installer", "/example/palvera/Palvera/Installer"
AUTHORITY = "org.freedesktop.PolicyKit1"
ALLOWED, REFUSED, SILENT = "allowed", "refused", "silent"
PATIENCE = 300  # seconds; who waits longer hangs
# Descriptors that are no image.
KINDS = {
    "folder": lambda: os.open("/", os.O_RDONLY), "path": lambda: os.open("/etc/passwd", os.O_PATH),
    "socket": lambda: socket.socketpair()[0].detach(), "zeros": lambda: os.open("/dev/zero", os.O_RDONLY),
    "pipe": lambda: os.pipe()[0], "foreign file": lambda: os.open("/etc/passwd", os.O_RDONLY),
    "write only": lambda: os.open(f"/proc/self/fd/{os.memfd_create('file')}", os.O_WRONLY)}

CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><listen>unix:path={folder}/socket</listen><auth>EXTERNAL</auth><servicedir>{folder}/services</servicedir>
<policy context="default"><allow user="*"/><allow own="*"/><allow send_destination="*"/><allow eavesdrop="true"/></policy>
<limit name="max_replies_per_connection">1000</limit></busconfig>
"""

QUESTIONS = f"""<node><interface name="{AUTHORITY}.Authority"><method name="CheckAuthorization">
<arg type="(sa{{sv}})" direction="in"/><arg type="s" direction="in"/><arg type="a{{ss}}" direction="in"/>
<arg type="u" direction="in"/><arg type="s" direction="in"/><arg type="(bba{{ss}})" direction="out"/>
</method></interface></node>"""


def wait_until(holds, what):
    """What `holds` gives in the end."""
    deadline = time.monotonic() + PATIENCE
    while not (held := holds()):
        assert time.monotonic() < deadline, f"never: {what}"
        time.sleep(0.01)
    return held


def has_ended(process):
    try:
        return not pathlib.Path(f"/proc/{process}/cmdline").read_bytes()  # empty while its parent does not look
    except (FileNotFoundError, ProcessLookupError):
        return True


class Bus:
    """The bus starts the installer at the first call, which is told `options`. The authority on it says yes, no or
    nothing, and keeps what it is asked."""

    def __init__(self, place, name, *options):
        self.folder, self.callers, self.says, self.questions = place.path / name, {}, ALLOWED, []
        self.root, self.address = str(place.path / "root"), f"unix:path={self.folder}/socket"
        (self.folder / "services").mkdir(parents=True)
        (self.folder / "bus.conf").write_text(CONFIGURATION.format(folder=self.folder))
        as_keeper = ["/usr/bin/setpriv", "--reuid", str(KEEPER), "--regid", str(KEEPER), "--clear-groups"]
        self.command = [*(as_keeper if IS_ROOT else []), place.installer, "--session", "--root", self.root, "--key",
                        place.public_key, "--bus", self.address]
        words = " ".join(map(str, [*self.command, *options]))
        (self.folder / "services/installer.service").write_text(f"[D-BUS Service]\nName={NAME}\nExec={words}\n")
        with open(self.folder / "errors", "wb") as errors:  # of the bus and of all that it has started
            self.daemon = subprocess.Popen(
                ["dbus-daemon", f"--config-file={self.folder}/bus.conf", "--nofork", "--print-address"],
                stdout=subprocess.PIPE, stderr=errors, env=os.environ | {"STEERED": "yes"})
        atexit.register(self.daemon.kill)
        self.daemon.stdout.readline()
        self.connection = self.connect(os.geteuid())
        interface = Gio.DBusNodeInfo.new_for_xml(QUESTIONS).interfaces[0]
        self.connection.register_object(f"/{AUTHORITY.replace('.', '/')}/Authority", interface, self.judge, None, None)
        self.ask("RequestName", "(su)", AUTHORITY, 0)

    def connect(self, user):
        os.seteuid(user)  # as whom the bus knows the connection from then on
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        try:
            return Gio.DBusConnection.new_for_address_sync(self.address, flags, None, None)
        finally:
            os.seteuid(os.getuid())

    def judge(self, connection, sender, path, interface, method, words, invocation):
        self.questions.append(words.unpack())
        if self.says != SILENT:
            invocation.return_value(GLib.Variant("((bba{ss}))", ((self.says == ALLOWED, False, {}),)))

    def ask(self, method, signature, *words):
        answer = self.connection.call_sync(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
            GLib.Variant(signature, words), None, Gio.DBusCallFlags.NONE, -1, None)
        return answer.unpack()[0]

    def has_service(self):
        return self.ask("NameHasOwner", "(s)", NAME)

    def service(self):
        """The process of the installer that serves here, None when there is none: an idle one may go at any moment."""
        try:
            return self.ask("GetConnectionUnixProcessID", "(s)", NAME)
        except GLib.Error as failure:
            if Gio.DBusError.get_remote_error(failure) != "org.freedesktop.DBus.Error.NameHasNoOwner":
                raise
            return None

    def caller(self, user):
        if user not in self.callers:
            self.callers[user] = Caller(self.connect(user), self.root)
        return self.callers[user]

    def end(self):
        service = self.service()
        self.connection.close_sync()
        self.daemon.kill()
        self.daemon.wait()
        wait_until(lambda: not service or has_ended(service), "it goes with its bus")
        said = (self.folder / "errors").read_text()
        assert "Sanitizer" not in said and "runtime error:" not in said, said


class Answer:
    """What a call comes to: a text for the user, empty when it went well, or that nobody answered."""

    def __init__(self):
        self.arrived, self.error, self.failure = threading.Event(), None, None

    def take(self, connection, result):
        try:
            self.error = connection.call_with_unix_fd_list_finish(result)[0].unpack()[0]
        except GLib.Error as failure:
            self.failure = failure.message
        self.arrived.set()

    def wait(self):
        assert self.arrived.wait(PATIENCE), "no answer"
        return self

    def __str__(self):
        return f"failure {self.failure!r}" if self.failure else repr(self.error)


class Caller:
    def __init__(self, connection, root):
        self.connection, self.root = connection, root

    def start(self, method, image=None, target=None, announced=None):
        """An image is a path, or a kind of descriptor that is none."""
        target = self.root if target is None else target
        files, words, answer = Gio.UnixFDList(), GLib.Variant("(s)", (target,)), Answer()
        if image:
            handle = KINDS[image]() if image in KINDS else os.open(image, os.O_RDONLY)
            kinds = {str: "s", int: "i"}
            words = GLib.Variant("(hsa{sv})", (files.append(handle), target, {
                key: GLib.Variant(kinds[type(value)], value) for key, value in announced.items()}))
            os.close(handle)  # of which the list has a copy
        self.connection.call_with_unix_fd_list(NAME, PATH, NAME + "1", method, words, None, Gio.DBusCallFlags.NONE,
                                               600_000, files, None, answer.take)
        return answer

    def start_prepare(self, image, build=58, **options):
        return self.start("PrepareWithImage", image, **{"announced": {"build": str(build), "version": "1.5"}} | options)

    def prepare(self, image, *words, **options):
        return self.start_prepare(image, *words, **options).wait()

    def install(self, **options):
        return self.start("InstallWithTarget", **options).wait()


threading.Thread(target=GLib.MainLoop().run, daemon=True).start()  # takes the answers, and the authority's questions
