#!/usr/bin/python3
"""A stand-in for the desktop's portal, whose file dialog chooses at once the file that this was given, and for its file
manager. The dialog's title, and what is to be shown, are added to another file.
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
  <interface name="org.freedesktop.FileManager1">
    <method name="ShowItems"><arg type="as" direction="in"/><arg type="s" direction="in"/></method>
  </interface>
</node>"""


def say(text):
    with open(sys.argv[2], "a") as said:
        print(text, file=said)


def call(connection, sender, path, interface, method, arguments, invocation):
    if method == "ShowItems":
        say("\n".join(arguments.unpack()[0]))
        return invocation.return_value(None)
    _, title, options = arguments.unpack()
    say(title)
    caller, token = sender[1:].replace(".", "_"), options.get("handle_token", "t")
    request = f"/org/freedesktop/portal/desktop/request/{caller}/{token}"
    invocation.return_value(GLib.Variant("(o)", (request,)))
    answer = GLib.Variant("(ua{sv})", (0, {"uris": GLib.Variant("as", [pathlib.Path(sys.argv[1]).as_uri()])}))
    # As a person would, no sooner than the program listens for it, which it does once it has the first answer.
    GLib.timeout_add(1000, lambda: connection.emit_signal(sender, request, "org.freedesktop.portal.Request", "Response",
                                                         answer) and False)


def start(connection, name):
    kinds = Gio.DBusNodeInfo.new_for_xml(INTERFACES).interfaces
    path, kind = ("/org/freedesktop/FileManager1", kinds[1]) if name.endswith("1") else (
        "/org/freedesktop/portal/desktop", kinds[0])
    connection.register_object(path, kind, call, lambda *_: GLib.Variant("u", 3), None)


for name in ["org.freedesktop.portal.Desktop", "org.freedesktop.FileManager1"]:
    Gio.bus_own_name(Gio.BusType.SESSION, name, Gio.BusNameOwnerFlags.NONE, start, None, None)
GLib.MainLoop().run()
