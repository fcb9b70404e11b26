"""A tray of the newer kind: the watcher that status items register with, and what a user does with them. Runs as a
program of its own on the session bus: it prints each registered item's address."""
import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

WATCHER = "org.kde.StatusNotifierWatcher"


class Watcher(dbus.service.Object):
    @dbus.service.method(WATCHER, in_signature="s", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, service, sender):
        print(f"{sender} {service}", flush=True)

    @dbus.service.method(WATCHER, in_signature="s")
    def RegisterStatusNotifierHost(self, service):
        pass

    @dbus.service.method(dbus.INTROSPECTABLE_IFACE, out_signature="s")
    def Introspect(self):  # the toolkit looks for the property here
        return f"""<node><interface name="{WATCHER}">
            <method name="RegisterStatusNotifierItem"><arg direction="in" type="s"/></method>
            <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
            <property name="ProtocolVersion" type="i" access="read"/></interface></node>"""

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="ss", out_signature="v")
    def Get(self, _, name):
        return {"IsStatusNotifierHostRegistered": True, "ProtocolVersion": 0}.get(str(name), dbus.Array([], "s"))

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="s", out_signature="a{sv}")
    def GetAll(self, _):
        return {"IsStatusNotifierHostRegistered": True, "ProtocolVersion": 0}


if __name__ == "__main__":
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    name = dbus.service.BusName(WATCHER, bus)
    watcher = Watcher(bus, "/StatusNotifierWatcher")
    GLib.MainLoop().run()
