"""The desktop's settings as a portal tells them: portal.py [reduce-motion] [reduce-transparency]. Runs as a program of its
own on the session bus; each line that it reads is the list of what is asked for from then on, and it says when that has
been told."""
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

SETTINGS = "org.freedesktop.portal.Settings"
APPEARANCE = "org.freedesktop.appearance"


def values(words: list[str]) -> dict:
    return {"reduced-motion": dbus.UInt32("reduce-motion" in words, variant_level=1),
            "contrast": dbus.UInt32("reduce-transparency" in words, variant_level=1)}


class Portal(dbus.service.Object):
    values = values(sys.argv[1:])

    @dbus.service.method(SETTINGS, in_signature="as", out_signature="a{sa{sv}}")
    def ReadAll(self, _):
        return {APPEARANCE: self.values}

    @dbus.service.signal(SETTINGS, signature="ssv")
    def SettingChanged(self, group, key, value):
        pass

    def read_line(self, stream, _) -> bool:
        line = stream.readline()
        if not line:
            return False
        self.values = values(line.split())
        for key, value in self.values.items():
            self.SettingChanged(APPEARANCE, key, value)
        print("told", flush=True)
        return True


if __name__ == "__main__":
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    name = dbus.service.BusName("org.freedesktop.portal.Desktop", dbus.SessionBus())
    portal = Portal(name, "/org/freedesktop/portal/desktop")
    GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, portal.read_line)
    print("ready", flush=True)
    GLib.MainLoop().run()
