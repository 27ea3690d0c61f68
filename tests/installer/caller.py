#!/usr/bin/env python3
"""Somebody who calls the installer: reads calls as lines of JSON, makes each at once, and says what it is answered.

Its argument is the address of the bus. A call has a number, the method's name, the target and, to prepare, what to hand
over as the image: a path, or a kind of descriptor that is no image.
"""
import json
import os
import socket
import sys
import threading

from gi.repository import Gio, GLib

NAME, PATH = "example.palvera.Palvera.Installer", "/example/palvera/Palvera/Installer"
KINDS = {
    "folder": lambda: os.open("/", os.O_RDONLY), "path": lambda: os.open("/etc/passwd", os.O_PATH),
    "socket": lambda: socket.socketpair()[0].detach(), "zeros": lambda: os.open("/dev/zero", os.O_RDONLY),
    "pipe": lambda: os.pipe()[0], "foreign file": lambda: os.open("/etc/passwd", os.O_RDONLY),
    "write only": lambda: os.open(f"/proc/self/fd/{os.memfd_create('file')}", os.O_WRONLY)}


def say(number, error=None, failure=None):
    print(json.dumps({"number": number, "error": error, "failure": failure}), flush=True)


def call(bus, number, method, target, image, announced):
    files, words = Gio.UnixFDList(), GLib.Variant("(s)", (target,))
    if image:
        handle = KINDS[image]() if image in KINDS else os.open(image, os.O_RDONLY)
        place = files.append(handle)  # which keeps a copy
        os.close(handle)
        kinds = {str: "s", int: "i"}
        words = GLib.Variant("(hsa{sv})", (place, target, {
            key: GLib.Variant(kinds[type(value)], value) for key, value in announced.items()}))

    def answered(_, result):
        try:
            reply, _ = bus.call_with_unix_fd_list_finish(result)
            say(number, error=reply.unpack()[0])
        except GLib.Error as failure:
            say(number, failure=failure.message)

    bus.call_with_unix_fd_list(NAME, PATH, NAME + "1", method, words, None, Gio.DBusCallFlags.NONE, 600_000, files, None,
                               answered)
    return False


def main():
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    bus = Gio.DBusConnection.new_for_address_sync(sys.argv[1], flags, None, None)
    loop = GLib.MainLoop()

    def read():
        for line in sys.stdin:
            GLib.idle_add(lambda words=json.loads(line): call(bus, **words))
        loop.quit()

    say(0, error=bus.get_unique_name())
    threading.Thread(target=read, daemon=True).start()
    loop.run()


main()
