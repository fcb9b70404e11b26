"""A display of the tests' own: an X server without a monitor, a window manager, and a compositor where asked for. What
is seen and done there is seen and done as by a user: by screenshots, the pointer and the keyboard."""
import contextlib
import json
import os
import pathlib
import select
import subprocess

import Xlib.display
from PIL import Image, ImageGrab

from desktop import Session, eventually  # noqa: F401

HERE = pathlib.Path(__file__).parent
SHOW = pathlib.Path(os.environ.get("SHOW_PICTURE", "build/dev/bin/show_picture")).resolve()


class Screen(Session):
    """A session with a display. `composited`: with a compositor. Points are pixels: the scale is 1."""

    def __init__(self, composited: bool = True, size: str = "1280x800", **options):
        super().__init__(**options)
        self.composited = composited
        self.size = size
        self.display = ""
        self.reader: subprocess.Popen | None = None

    def __enter__(self):
        super().__enter__()
        try:
            self.begin()
        except Exception:
            self.__exit__()
            raise
        return self

    def begin(self) -> None:
        reading, writing = os.pipe()
        self.start(["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{self.size}x24", "-noreset", "-nolisten", "tcp"],
                   pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writing)
        if not select.select([reading], [], [], 20)[0]:
            raise RuntimeError("the X server didn't start")
        with open(reading, encoding="ascii") as numbers:
            self.display = f":{numbers.readline().strip()}"
        self.environment |= {"DISPLAY": self.display, "QT_QPA_PLATFORM": "xcb"}
        self.quietly(["openbox", "--sm-disable"])
        self.must(lambda: "window id" in self.output("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"), "window manager")
        if self.composited:
            self.quietly(["picom", "--backend", "xrender", "--config", "/dev/null"])
            self.must(lambda: self.selection_owner("_NET_WM_CM_S0"), "compositor")
        self.environment |= {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        self.quietly(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"])
        self.wait_for_name("org.a11y.Bus")

    def quietly(self, command: list[str]) -> subprocess.Popen:
        return self.start(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def let_the_bus_start_programs(self) -> None:
        """Tells the bus the environment of the programs that it starts, as a desktop does at login."""
        values = ",".join(f"{name},{self.environment[name]}" for name in
                          ("DISPLAY", "HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"))
        subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
                        "org.freedesktop.DBus.UpdateActivationEnvironment", f"dict:string:string:{values}"],
                       env=self.environment, check=True, stdout=subprocess.DEVNULL)

    def selection_owner(self, name: str):
        """Its window, or a false value."""
        with contextlib.closing(Xlib.display.Display(self.display)) as display:
            return display.get_selection_owner(display.get_atom(name))

    # Programs

    def show_picture(self, path: pathlib.Path, x: int, y: int, *options: str) -> subprocess.Popen:
        """Another program's window, whose content begins at (x, y)."""
        return self.start_and_wait([str(SHOW), str(path), "--at", f"{x},{y}", *options])

    def start_pane(self, x: int, y: int, width: int = 480, height: int = 280) -> "Pane":
        """Starts the program and lays its pane where it is wanted, as the window manager would: no user moved it."""
        process = self.start_program()
        pane = Pane(self, process, self.must(lambda: self.windows("--pid", str(process.pid)), "the pane")[0])
        pane.place(x, y, width, height)
        return pane

    def start_tray(self) -> subprocess.Popen:
        """A watcher of status items, which prints the address of each."""
        tray = self.start(["/usr/bin/python3", str(HERE / "tray.py")], stdout=subprocess.PIPE)
        self.wait_for_name("org.kde.StatusNotifierWatcher")
        return tray

    def item_in(self, tray: subprocess.Popen) -> str:
        """The address of the next status item."""
        if not select.select([tray.stdout], [], [], 20)[0]:
            raise RuntimeError("no item was registered")
        return tray.stdout.readline().decode().strip()

    def hold_key(self, code: int, modifiers: int) -> None:
        """Another program takes a hotkey."""
        holder = self.start(["/usr/bin/python3", str(HERE / "hold_key.py"), str(code), str(modifiers)], stdout=subprocess.PIPE)
        if holder.stdout.readline() != b"held\n":
            raise RuntimeError("the hotkey isn't free")

    def start_portal(self, *options: str):
        """The desktop's portal, which asks for reduce-motion or reduce-transparency. What is returned asks for others."""
        portal = self.start(["/usr/bin/python3", str(HERE / "portal.py"), *options], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                            encoding="utf-8")
        self.portal = portal
        portal.stdout.readline()

        def ask_for(*others: str) -> None:
            portal.stdin.write(" ".join(others) + "\n")
            portal.stdin.flush()
            portal.stdout.readline()
        return ask_for

    # What is seen

    def picture(self) -> Image.Image:
        return ImageGrab.grab(xdisplay=self.display)

    def windows(self, *wanted: str) -> list[str]:
        """Those on the screen that xdotool finds by a name, a class or a process."""
        return self.output("xdotool", "search", "--onlyvisible", *wanted).split()

    def texts(self) -> list[str]:
        """The names of all that the program shows, as a screen reader reads them."""
        return self.accessibility("texts")[1].splitlines()

    def focused(self) -> list[str]:
        """The names of what has the keyboard's focus."""
        return self.accessibility("focused")[1].splitlines()

    def cursor(self) -> tuple[int, int, tuple[int, ...]]:
        """The pointer's picture: where in it the pointer is, and its pixels."""
        with contextlib.closing(Xlib.display.Display(self.display)) as display:
            display.xfixes_query_version()
            image = display.xfixes_get_cursor_image(display.screen().root)
            return image.xhot, image.yhot, tuple(image.cursor_image)

    # What is done

    def press(self, name: str) -> None:
        """Presses a control by its name."""
        self.must(lambda: self.accessibility("press", name)[0] == 0, f"the control {name}")

    def accessibility(self, *arguments: str) -> tuple[int, str]:
        """The exit code and the output of a command of accessibility.py."""
        if self.reader is None:
            self.reader = self.start(["/usr/bin/python3", str(HERE / "accessibility.py")], stdin=subprocess.PIPE,
                                     stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.reader.stdin.write(json.dumps(arguments).encode() + b"\n")
        self.reader.stdin.flush()
        return tuple(json.loads(self.reader.stdout.readline()))

    def do(self, *commands: str) -> None:
        """xdotool's own words, e.g. "mousemove 10 10 click 1"."""
        subprocess.run(["xdotool", *" ".join(commands).split()], env=self.environment, check=True,
                       stdout=subprocess.DEVNULL)

    def double_click(self, x: int, y: int) -> None:
        self.do(f"mousemove {x} {y} sleep 0.05 click --repeat 2 --delay 80 1")

    def type(self, text: str) -> None:
        """Types a text of any characters."""
        subprocess.run(["xdotool", "type", "--delay", "12", text], env=self.environment, check=True)

    def drag(self, start: tuple[int, int], end: tuple[int, int], hold: float = 0) -> None:
        """Presses, moves in twelve steps, holds, and lets go."""
        steps = [f"mousemove {start[0] + (end[0] - start[0]) * i // 12} {start[1] + (end[1] - start[1]) * i // 12} "
                 "sleep 0.02" for i in range(1, 13)]
        self.do(f"mousemove {start[0]} {start[1]} mousedown 1 sleep 0.05", *steps, f"sleep {hold} mouseup 1")


class Pane:
    """The running program's pane."""

    def __init__(self, screen: Screen, process: subprocess.Popen, window: str):
        self.screen = screen
        self.process = process
        self.window = window

    @property
    def frame(self) -> tuple[int, int, int, int]:
        answer = dict(line.split("=") for line in
                      self.screen.output("xdotool", "getwindowgeometry", "--shell", self.window).splitlines())
        return tuple(int(answer[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def is_shown(self) -> bool:
        return self.window in self.screen.windows("--pid", str(self.process.pid))

    def place(self, x: int, y: int, width: int, height: int) -> None:
        self.screen.do(f"windowsize {self.window} {width} {height} windowmove {self.window} {x} {y}")
        self.screen.must(lambda: self.frame == (x, y, width, height), "the pane's place")

    def picture(self) -> Image.Image:
        x, y, width, height = self.frame
        return self.screen.picture().crop((x, y, x + width, y + height))

    def double_click(self) -> None:
        """On the pane's body, in its lower half, clear of the hint, the capsule and the card's button."""
        x, y, width, height = self.frame
        self.screen.double_click(x + width // 2, y + height - 24)
