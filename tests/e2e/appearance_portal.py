# SPDX-License-Identifier: MIT
"""A stand-in for the desktop portal, as far as it tells whether the user wants dark windows."""
from gi.repository import Gio, GLib

from status_bar import turn_loop

PATH = "/org/freedesktop/portal/desktop"
SETTINGS = "org.freedesktop.portal.Settings"
XML = f"""<node><interface name='{SETTINGS}'>
<method name='Read'><arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='v' direction='out'/></method>
</interface></node>"""


class AppearancePortal:
    def __init__(self, bus, dark):
        self.bus = bus
        self.dark = dark
        info = Gio.DBusNodeInfo.new_for_xml(XML).interfaces[0]
        self.object = bus.register_object(PATH, info, self.called, None, None)
        self.name = Gio.bus_own_name_on_connection(bus, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE,
                                                   None, None)

    def scheme(self):
        return GLib.Variant("u", 1 if self.dark else 2)

    def called(self, _bus, _sender, _path, _interface, _method, parameters, invocation):
        if parameters.unpack() == ("org.freedesktop.appearance", "color-scheme"):
            invocation.return_value(GLib.Variant("(v)", (GLib.Variant("v", self.scheme()),)))
        else:
            invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "not there")

    def choose(self, dark):
        self.dark = dark
        arguments = GLib.Variant("(ssv)", ("org.freedesktop.appearance", "color-scheme", self.scheme()))
        self.bus.emit_signal(None, PATH, SETTINGS, "SettingChanged", arguments)

    def close(self):
        self.bus.unregister_object(self.object)
        Gio.bus_unown_name(self.name)
        turn_loop()
