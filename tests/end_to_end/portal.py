#!/usr/bin/python3
"""A stand-in for the desktop's portal: its file dialog chooses at once the file that the program was given, and its
title is added to another.
"""
import pathlib
import sys

from gi.repository import Gio, GLib

INTERFACES = """<node>
  <interface name="org.freedesktop.portal.FileChooser">
    <method name="OpenFile">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="a{sv}" direction="in"/>
      <arg type="o" direction="out"/>
    </method>
    <property name="version" type="u" access="read"/>
  </interface>
</node>"""


def call(connection, sender, path, interface, method, arguments, invocation):
    _, title, options = arguments.unpack()
    with open(sys.argv[2], "a") as said:
        print(title, file=said)
    caller, token = sender[1:].replace(".", "_"), options.get("handle_token", "t")
    request = f"/org/freedesktop/portal/desktop/request/{caller}/{token}"
    invocation.return_value(GLib.Variant("(o)", (request,)))
    answer = GLib.Variant("(ua{sv})", (0, {"uris": GLib.Variant("as", [pathlib.Path(sys.argv[1]).as_uri()])}))
    # As a person would, no sooner than the program listens for it, which it does once it has the first answer.
    GLib.timeout_add(1000, lambda: connection.emit_signal(sender, request, "org.freedesktop.portal.Request", "Response",
                                                         answer) and False)


def start(connection, _):
    interface = Gio.DBusNodeInfo.new_for_xml(INTERFACES).interfaces[0]
    connection.register_object("/org/freedesktop/portal/desktop", interface, call,
                               lambda *_: GLib.Variant("u", 3), None)


Gio.bus_own_name(Gio.BusType.SESSION, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE, start, None, None)
GLib.MainLoop().run()
