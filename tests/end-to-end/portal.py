"""The desktop's portal, a program of its own on the session bus. portal.py [reduce-motion] [reduce-transparency]
[refuse|crash|end|wait]: the settings, and what becomes of the question whether to share the screen. Each line that it reads
is the list of what holds from then on, and it says when that has been told. It also prints the questions that are closed."""
import os
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

SETTINGS = "org.freedesktop.portal.Settings"
CAST = "org.freedesktop.portal.ScreenCast"
PATH = "/org/freedesktop/portal/desktop"
APPEARANCE = "org.freedesktop.appearance"


def values(words: list[str]) -> dict:
    return {"reduced-motion": dbus.UInt32("reduce-motion" in words, variant_level=1),
            "contrast": dbus.UInt32("reduce-transparency" in words, variant_level=1)}


class Request(dbus.service.Object):
    @dbus.service.signal("org.freedesktop.portal.Request", signature="ua{sv}")
    def Response(self, code, results):
        pass

    @dbus.service.method("org.freedesktop.portal.Request", in_signature="", out_signature="")
    def Close(self):
        print("closed", flush=True)


class Session(dbus.service.Object):
    is_asking = False

    @dbus.service.method("org.freedesktop.portal.Session", in_signature="", out_signature="")
    def Close(self):  # with its question
        if self.is_asking:
            print("closed", flush=True)

    @dbus.service.signal("org.freedesktop.portal.Session", signature="")
    def Closed(self):
        pass


class Portal(dbus.service.Object):
    words = sys.argv[1:]
    values = values(words)
    count = 0
    session = None

    def answer(self, code: int, results: dict) -> dbus.ObjectPath:
        self.count += 1
        handle = Request(self.connection, f"{PATH}/request/{self.count}")
        GLib.timeout_add(20, lambda: handle.Response(dbus.UInt32(code), dbus.Dictionary(results, signature="sv")))
        return dbus.ObjectPath(handle._object_path)

    @dbus.service.method(CAST, in_signature="a{sv}", out_signature="o")
    def CreateSession(self, _):
        self.count += 1
        self.session = Session(self.connection, f"{PATH}/session/{self.count}")
        return self.answer(0, {"session_handle": self.session._object_path})

    @dbus.service.method(CAST, in_signature="oa{sv}", out_signature="o")
    def SelectSources(self, session, _):
        return self.answer(0, {})

    @dbus.service.method(CAST, in_signature="osa{sv}", out_signature="o")
    def Start(self, session, window, _):
        if "crash" in self.words:
            GLib.timeout_add(50, os._exit, 1)
        elif "end" in self.words:
            GLib.timeout_add(50, self.session.Closed)
        elif "refuse" in self.words:
            return self.answer(1, {})
        else:
            self.session.is_asking = True
            print("asked", flush=True)
        self.count += 1
        return dbus.ObjectPath(Request(self.connection, f"{PATH}/request/{self.count}")._object_path)

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
        self.words = line.split()
        self.values = values(self.words)
        for key, value in self.values.items():
            self.SettingChanged(APPEARANCE, key, value)
        print("told", flush=True)
        return True


if __name__ == "__main__":
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    name = dbus.service.BusName("org.freedesktop.portal.Desktop", dbus.SessionBus())
    portal = Portal(name, PATH)
    GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, portal.read_line)
    print("ready", flush=True)
    GLib.MainLoop().run()
