#!/usr/bin/python3
"""Every way in which the program comes to its end while a master is on its way, and what the next start makes of it."""
import ctypes
import pathlib
import queue
import select
import signal
import subprocess
import threading

from gi.repository import Gio, GLib

import support
from desktop_programs import Desktop, Display, FileManager, WindowManager
from support import Client, Platform, Workspace, wait_until

ROW = "salt-row-1"
DELIVERABLE = "Northlight Pictures", "Salt", "Picture master"
PART = 1 << 20
SM, ICE, Pointer = ctypes.CDLL("libSM.so.6"), ctypes.CDLL("libICE.so.6"), ctypes.c_void_p
CALLBACK = ctypes.CFUNCTYPE(ctypes.c_int, *5 * [Pointer])  # of which some take fewer
ICE.IceGetListenConnectionString.restype = ctypes.c_char_p
SM.SmsGenerateClientID.restype = ICE.IceAcceptConnection.restype = Pointer


class SessionManager:
    """The desktop's (XSMP), for one program, which registers with it."""

    def __init__(self):
        self.said, self.lock, self.client, self.is_ending = queue.Queue(), threading.Lock(), None, False
        others = 5 * [lambda *_: 1]  # which the program asks for nothing
        does = [self.register, *others[:4], self.take_saved, self.lose, *others[:3]]
        self.callbacks = [CALLBACK(each) for each in (*does, self.accept, lambda *_: 1)]
        error, count, listeners = ctypes.create_string_buffer(256), ctypes.c_int(), ctypes.POINTER(Pointer)()
        accept, admit = self.callbacks[-2:]
        assert SM.SmsInitialize(b"stand-in", b"1", accept, None, admit, len(error), error), error.value
        assert ICE.IceListenForConnections(ctypes.byref(count), ctypes.byref(listeners), len(error), error), error.value
        names = {ICE.IceGetListenConnectionString(Pointer(each)): Pointer(each) for each in listeners[:count.value]}
        name, self.listener = next(each for each in names.items() if each[0].startswith(b"local/"))
        ICE.IceSetHostBasedAuthProc(self.listener, admit)
        ICE.IceSetIOErrorHandler(admit)  # its own ends the script
        self.address = name.decode()
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        talk, status, listening = None, ctypes.c_int(), ICE.IceGetListenConnectionNumber(self.listener)
        while True:
            ready = select.select([listening, *([ICE.IceConnectionNumber(talk)] if talk else [])], [], [])[0]
            with self.lock:
                if listening in ready:
                    talk = Pointer(ICE.IceAcceptConnection(self.listener, ctypes.byref(status)))
                elif ICE.IceProcessMessages(talk, None, None):
                    ICE.IceCloseConnection(talk)
                    talk = None

    def accept(self, connection, data, mask, callbacks, reason):
        ctypes.cast(mask, ctypes.POINTER(ctypes.c_ulong))[0] = (1 << 10) - 1
        places = ctypes.cast(callbacks, ctypes.POINTER(Pointer))  # each with a pointer to data of its own
        for number, callback in enumerate(self.callbacks[:10]):
            places[2 * number] = ctypes.cast(callback, Pointer)
        return 1

    def register(self, connection, *unused):
        self.client = Pointer(connection)
        SM.SmsRegisterClientReply(self.client, Pointer(SM.SmsGenerateClientID(self.client)))
        SM.SmsSaveYourself(self.client, 1, False, 0, False)  # a manager's first word
        self.said.put("registered")
        return 1

    def take_saved(self, connection, data, success, *unused):
        self.said.put("saved" if success else "not saved")
        (SM.SmsDie if self.is_ending else SM.SmsSaveComplete)(self.client)
        return 1

    def lose(self, *unused):
        self.said.put("gone")
        return 1

    def hear(self):
        return self.said.get(timeout=support.PATIENCE)

    def ask_to(self, what):
        """"end" or "cancel": what became of asking the program to save itself before the session ends."""
        with self.lock:
            self.is_ending = what == "end"
            SM.SmsSaveYourself(self.client, 2, True, 2, False)  # all of it, and it may ask the user
            if not self.is_ending:
                SM.SmsShutdownCancelled(self.client)
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
        file, session = workspace.make_file("film.mov", 120 * PART + 123), SessionManager()
        with (Display(), WindowManager(),
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
        assert desktop.complaints() == "", desktop.complaints()


def is_shown(desktop):
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(desktop.process.pid)], capture_output=True)
    return found.returncode == 0


class Tray:
    """The desktop's, and what is done with the program's symbol there."""

    def __init__(self):
        self.process = subprocess.Popen(["/usr/bin/python3", pathlib.Path(__file__).with_name("tray.py")],
                                        stdout=subprocess.PIPE, text=True)
        self.item = self.process.stdout.readline().strip()

    def call(self, path, interface, method, arguments):
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        return bus.call_sync(self.item, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE,
                             10_000).unpack()


def closed_into_the_tray_and_brought_back():
    with Workspace() as workspace, Display(), WindowManager(), Platform(workspace) as platform:
        desktop = Desktop(workspace, platform.address)
        preferences = workspace.path / "home" / "config" / "Palvera" / "palvera.conf"
        preferences.parent.mkdir(parents=True)
        preferences.write_text("[General]\npv.background=on\n")
        with desktop:
            tray = Tray()
            _, menu = tray.call("/MenuBar", "com.canonical.dbusmenu", "GetLayout", GLib.Variant("(iias)", (0, -1, [])))
            assert [line[1]["label"] for line in menu[2]] == ["Show Palvera", "Quit"], menu
            for show in (lambda: tray.call("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate",
                                           GLib.Variant("(ii)", (0, 0))),
                         desktop.start_again, tray.process.kill):
                wait_until(lambda: is_shown(desktop), "the window")
                desktop.focus()
                desktop.press("ctrl+w")
                wait_until(lambda: not is_shown(desktop), "the window goes")
                assert desktop.process.poll() is None, "the program goes with its window"
                show()
            wait_until(lambda: is_shown(desktop), "the window comes back with its tray gone")
            desktop.focus()
            desktop.press("ctrl+w")
            expect_end(desktop.process)


support.main()
