#!/usr/bin/python3
"""A stand-in for the tray of a desktop: says on standard output who offers a symbol."""
from gi.repository import Gio, GLib

NAME = "org.kde.StatusNotifierWatcher"
INTERFACE = Gio.DBusNodeInfo.new_for_xml(f"""<node><interface name="{NAME}">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
</interface></node>""").interfaces[0]


def call(connection, sender, path, interface, method, arguments, invocation):
    print(arguments.unpack()[0], flush=True)
    invocation.return_value(None)


def start(connection, name):
    connection.register_object("/StatusNotifierWatcher", INTERFACE, call, lambda *_: GLib.Variant("b", True), None)


Gio.bus_own_name(Gio.BusType.SESSION, NAME, Gio.BusNameOwnerFlags.NONE, start, None, None)
GLib.MainLoop().run()
