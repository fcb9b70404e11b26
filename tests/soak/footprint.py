"""What a running program holds: memory, files, threads, and what the X server keeps for it."""
import os
import pathlib
import re

import Xlib.display
from Xlib.ext import res


class ServerResources:
    """What the X server keeps for each process. Holds a connection of its own to the display."""

    def __init__(self, display: str):
        self.display = Xlib.display.Display(display)
        self.display.res_query_version()

    def clients(self, process: int) -> list[int]:
        """The process's connections, each by the beginning of its range of ids."""
        answer = self.display.res_query_client_ids([{"client": 0, "mask": res.LocalClientPIDMask}])
        return [each.spec.client for each in answer.ids if list(each.value) == [process]]

    def of(self, process: int) -> dict[str, int]:
        """How many of each kind, and the bytes of its pixmaps."""
        kept = {"clients": 0, "pixmap bytes": 0}
        for client in self.clients(process):
            kept["clients"] += 1
            for kind in self.display.res_query_client_resources(client).types:
                name = self.display.get_atom_name(kind.resource_type)
                kept[name] = kept.get(name, 0) + kind.count
            kept["pixmap bytes"] += self.display.res_query_client_pixmap_bytes(client).bytes
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
