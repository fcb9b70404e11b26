"""Locks and unlocks the session's keyring, as its own program does for the user: keyring.py lock | unlock PASSWORD. A
program of its own, for it must run in the test's session."""
import sys

import dbus

KEYRING = "/org/freedesktop/secrets/collection/login"

secrets = dbus.SessionBus().get_object("org.freedesktop.secrets", "/org/freedesktop/secrets")
if sys.argv[1] == "lock":
    secrets.Lock([dbus.ObjectPath(KEYRING)], dbus_interface="org.freedesktop.Secret.Service")
else:
    _, session = secrets.OpenSession("plain", "", dbus_interface="org.freedesktop.Secret.Service")
    password = dbus.Struct((session, dbus.ByteArray(b""), dbus.ByteArray(sys.argv[2].encode()), "text/plain"),
                           signature="oayays")
    secrets.UnlockWithMasterPassword(dbus.ObjectPath(KEYRING), password,
                                     dbus_interface="org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface")
