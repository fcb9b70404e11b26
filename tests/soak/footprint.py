"""What a running program holds: memory, files, threads, and what the X server keeps for it."""
import ctypes
import os
import pathlib
import re

PID_OF_CLIENT = 2  # the bit that asks the X-Resource extension for a client's process


class Client(ctypes.Structure):
    _fields_ = [("base", ctypes.c_ulong), ("mask", ctypes.c_ulong)]


class Type(ctypes.Structure):
    _fields_ = [("atom", ctypes.c_ulong), ("count", ctypes.c_uint)]


class IdSpec(ctypes.Structure):
    _fields_ = [("client", ctypes.c_ulong), ("mask", ctypes.c_uint)]


class IdValue(ctypes.Structure):
    _fields_ = [("spec", IdSpec), ("length", ctypes.c_long), ("value", ctypes.c_void_p)]


class ServerResources:
    """What the X server keeps for each process. Holds a connection of its own to the display."""

    def __init__(self, display: str):
        self.xlib = ctypes.CDLL("libX11.so.6")
        self.xres = ctypes.CDLL("libXRes.so.1")
        self.xlib.XOpenDisplay.restype = ctypes.c_void_p
        self.xlib.XGetAtomName.restype = ctypes.c_void_p
        self.display = ctypes.c_void_p(self.xlib.XOpenDisplay(display.encode()))
        if not self.display:
            raise RuntimeError(f"no X server at {display}")

    def clients(self, process: int) -> list[int]:
        """The process's connections, each by the beginning of its range of ids."""
        asked = IdSpec(0, PID_OF_CLIENT)
        count, values = ctypes.c_long(), ctypes.POINTER(IdValue)()
        if self.xres.XResQueryClientIds(self.display, ctypes.c_long(1), ctypes.byref(asked), ctypes.byref(count),
                                        ctypes.byref(values)) != 0:
            raise RuntimeError("the X server doesn't tell its clients' processes")
        found = [values[i].spec.client for i in range(count.value)
                 if self.xres.XResGetClientPid(ctypes.byref(values[i])) == process]
        self.xres.XResClientIdsDestroy(count, values)
        return found

    def name(self, atom: int) -> str:
        text = self.xlib.XGetAtomName(self.display, ctypes.c_ulong(atom))
        name = ctypes.string_at(text).decode()
        self.xlib.XFree(ctypes.c_void_p(text))
        return name

    def of(self, process: int) -> dict[str, int]:
        """How many of each kind, and the bytes of its pixmaps."""
        kept = {"clients": 0, "pixmap bytes": 0}
        for client in self.clients(process):
            kept["clients"] += 1
            count, types = ctypes.c_int(), ctypes.POINTER(Type)()
            self.xres.XResQueryClientResources(self.display, ctypes.c_ulong(client), ctypes.byref(count),
                                               ctypes.byref(types))
            for i in range(count.value):
                name = self.name(types[i].atom)
                kept[name] = kept.get(name, 0) + types[i].count
            self.xlib.XFree(types)
            size = ctypes.c_ulong()
            self.xres.XResQueryClientPixmapBytes(self.display, ctypes.c_ulong(client), ctypes.byref(size))
            kept["pixmap bytes"] += size.value
        return kept


def resident_memory(process: int) -> int:
    """In KiB."""
    return int(re.search(r"^Rss: +(\d+)", pathlib.Path(f"/proc/{process}/smaps_rollup").read_text(), re.MULTILINE)[1])


def threads(process: int) -> dict[str, int]:
    """How many threads of each name."""
    names: dict[str, int] = {}
    for task in pathlib.Path(f"/proc/{process}/task").iterdir():
        try:
            name = (task / "comm").read_text().strip()
        except OSError:
            continue  # it has ended meanwhile
        names[name] = names.get(name, 0) + 1
    return names


def files(process: int) -> dict[str, int]:
    """How many open files of each kind: a path, or the kind of socket, pipe and the like."""
    kinds: dict[str, int] = {}
    folder = pathlib.Path(f"/proc/{process}/fd")
    for entry in folder.iterdir():
        try:
            target = os.readlink(entry)
        except OSError:
            continue
        kind = target.split(":[")[0] if ":[" in target else re.sub(r"#\d+ ", "# ", target)  # a file without a name
        kinds[kind] = kinds.get(kind, 0) + 1
    return kinds


def least(counts: list[dict[str, int]]) -> dict[str, int]:
    """The least of each kind that was seen: what comes and goes is not counted, what stays is."""
    names = {name for count in counts for name in count}
    return {name: min(count.get(name, 0) for count in counts) for name in names}


def grown(before: dict[str, int], after: dict[str, int]) -> dict[str, tuple[int, int]]:
    """The kinds of which there are more afterwards."""
    return {name: (before.get(name, 0), count) for name, count in after.items() if count > before.get(name, 0)}
