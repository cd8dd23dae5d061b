# SPDX-License-Identifier: MIT
"""Stand-ins for parts of a desktop, on the session bus; and waiting on its loop."""
import time

from gi.repository import Gio, GLib

PATIENCE = 8.0  # seconds; a busy machine is slow

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
WATCHER_XML = f"""<node><interface name='{WATCHER}'>
<method name='RegisterStatusNotifierItem'><arg type='s' direction='in'/></method>
<property name='IsStatusNotifierHostRegistered' type='b' access='read'/>
</interface></node>"""

PORTAL_PATH = "/org/freedesktop/portal/desktop"
SETTINGS = "org.freedesktop.portal.Settings"
PORTAL_XML = f"""<node><interface name='{SETTINGS}'>
<method name='Read'><arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='v' direction='out'/></method>
</interface></node>"""


def turn_loop():
    context = GLib.MainContext.default()
    while context.iteration(False):
        pass


def wait_until(condition, what, patience=PATIENCE):
    """Returns the first true value of `condition`."""
    end = time.monotonic() + patience
    while True:
        turn_loop()
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited {patience} s in vain: {what}")
        time.sleep(0.02)


class StatusBar:
    """The watcher, and a host that uses the items."""

    def __init__(self, bus):
        self.bus = bus
        self.items = []
        self.names = []
        info = Gio.DBusNodeInfo.new_for_xml(WATCHER_XML).interfaces[0]
        self.object = bus.register_object("/StatusNotifierWatcher", info, self.called, self.read, None)
        self.name = Gio.bus_own_name_on_connection(bus, WATCHER, Gio.BusNameOwnerFlags.NONE, None, None)

    def called(self, _bus, _sender, _path, _interface, _method, parameters, invocation):
        item = parameters.unpack()[0]
        self.items.append(item)
        self.names.append(Gio.bus_watch_name_on_connection(
            self.bus, item, Gio.BusNameWatcherFlags.NONE, None, lambda *_: self.forget(item)))
        invocation.return_value(None)

    def forget(self, item):
        """An item is gone with its name."""
        if item in self.items:
            self.items.remove(item)

    def read(self, *_):
        return GLib.Variant("b", True)

    def item(self):
        return wait_until(lambda: self.items and self.items[-1], "the status item registers")

    def call(self, method, signature, *arguments, path="/StatusNotifierItem", interface=ITEM):
        """Of the newest item; of the next one when that goes before it answers."""
        while True:
            item = self.item()
            answer = []
            self.bus.call(item, path, interface, method, GLib.Variant(signature, arguments), None,
                          Gio.DBusCallFlags.NONE, 5000, None, lambda _bus, result, to=answer: to.append(result))
            wait_until(lambda to=answer: to, f"{method} is answered")
            try:
                return self.bus.call_finish(answer[0]).unpack()
            except GLib.Error:
                turn_loop()
                if item in self.items:
                    raise

    def property(self, name):
        return self.call("Get", "(ss)", ITEM, name, interface="org.freedesktop.DBus.Properties")[0]

    def menu(self):
        """(number, properties) of each row."""
        layout = self.call("GetLayout", "(iias)", 0, -1, [], path="/StatusNotifierItem/Menu",
                           interface="com.canonical.dbusmenu")[1]
        return [(row[0], row[1]) for row in layout[2]]

    def choose(self, label):
        number = next(number for number, row in self.menu() if row.get("label") == label)
        self.call("Event", "(isvu)", number, "clicked", GLib.Variant("s", ""), 0,
                  path="/StatusNotifierItem/Menu", interface="com.canonical.dbusmenu")

    def close(self):
        self.bus.unregister_object(self.object)
        Gio.bus_unown_name(self.name)
        for name in self.names:
            Gio.bus_unwatch_name(name)
        turn_loop()


class AppearancePortal:
    """The desktop portal, as far as it tells whether the user wants dark windows."""

    def __init__(self, bus, dark):
        self.bus = bus
        self.dark = dark
        info = Gio.DBusNodeInfo.new_for_xml(PORTAL_XML).interfaces[0]
        self.object = bus.register_object(PORTAL_PATH, info, self.called, None, None)
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
        self.bus.emit_signal(None, PORTAL_PATH, SETTINGS, "SettingChanged", arguments)

    def close(self):
        self.bus.unregister_object(self.object)
        Gio.bus_unown_name(self.name)
        turn_loop()
