"""What a tray shows of a status item and does with it, over the session bus: status_menu.py ADDRESS titles | activate |
click TITLE. Runs as a program of its own, since the bus library binds itself to one bus."""
import sys

import dbus

SHORTCUT_WORDS = {"Control": "Ctrl", "Super": "Meta"}


class StatusItem:
    def __init__(self, address: str):
        sender = address.split()[0]
        bus = dbus.SessionBus()
        self.item = bus.get_object(sender, "/StatusNotifierItem")
        path = self.item.Get("org.kde.StatusNotifierItem", "Menu", dbus_interface=dbus.PROPERTIES_IFACE)
        self.menu = dbus.Interface(bus.get_object(sender, path), "com.canonical.dbusmenu")

    def entries(self):
        """(number, title, shortcut) of the menu's entries, separators left out."""
        self.menu.AboutToShow(0)
        _, (_, _, children) = self.menu.GetLayout(0, -1, dbus.Array([], "s"))
        for number, properties, _ in children:
            if properties.get("type") == "separator" or not properties.get("visible", True):
                continue
            keys = [SHORTCUT_WORDS.get(str(key), str(key)) for key in (properties.get("shortcut") or [[]])[0]]
            yield int(number), str(properties["label"]).replace("_", ""), "+".join(keys)

    def click(self, title: str) -> None:
        number = next(number for number, label, _ in self.entries() if label == title)
        self.menu.Event(number, "clicked", dbus.Int32(0, variant_level=1), dbus.UInt32(0))


if __name__ == "__main__":
    status_item = StatusItem(sys.argv[1])
    if sys.argv[2] == "titles":
        for _, label, shortcut in status_item.entries():
            print(label, shortcut, sep="\t")
    elif sys.argv[2] == "activate":
        status_item.item.Activate(0, 0, dbus_interface="org.kde.StatusNotifierItem")
    else:
        status_item.click(sys.argv[3])
