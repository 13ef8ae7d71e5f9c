#!/usr/bin/python3
"""A notification service that shows nothing: it writes each notice as a line of JSON to the file that it is called with, and
takes texts for markup when a second word says so."""
import itertools
import json
import sys

from gi.repository import Gio, GLib

INTERFACE = """<node><interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="Notify">
    <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="as" direction="in"/><arg type="a{sv}" direction="in"/><arg type="i" direction="in"/>
    <arg type="u" direction="out"/>
  </method>
</interface></node>"""


def main():
    log, capabilities = open(sys.argv[1], "a", encoding="utf-8"), ["body", *sys.argv[2:]]
    new_ids = itertools.count(41)

    def on_call(_connection, _sender, _path, _interface, method, arguments, invocation):
        if method == "GetCapabilities":
            invocation.return_value(GLib.Variant("(as)", (capabilities,)))
            return
        names = ("application", "replaces", "icon", "title", "text", "actions", "hints", "stays")
        notice = dict(zip(names, arguments.unpack()))
        notice["id"] = notice["replaces"] or next(new_ids)
        log.write(json.dumps(notice) + "\n")
        log.flush()
        invocation.return_value(GLib.Variant("(u)", (notice["id"],)))

    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    bus.register_object("/org/freedesktop/Notifications", Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0], on_call)
    Gio.bus_own_name_on_connection(bus, "org.freedesktop.Notifications", Gio.BusNameOwnerFlags.NONE, None, None)
    GLib.MainLoop().run()


main()
