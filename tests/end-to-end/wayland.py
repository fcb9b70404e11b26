"""Wayland sessions of the tests' own, without a monitor: sway, and KWin. What is done there is done by devices that the
compositor takes for a user's, and what is seen is what it would show."""
import io
import os
import pathlib
import shutil
import subprocess

import dbus
import dbus.bus
from PIL import Image

from desktop import BUS_CONFIGURATION, LUCENTRA, Session
from screen import SHOW

INPUT = pathlib.Path(os.environ.get("WAYLAND_INPUT", LUCENTRA.parent / "wayland_input")).resolve()


class WaylandSession(Session):
    """`sizes`: of the outputs, side by side, in logical pixels; `scale`: pixels per logical pixel of the first; `centred`:
    windows are in the middle of it, not in its corner."""

    def __init__(self, sizes: tuple[str, ...] = ("1280x800",), scale: float = 1, centred: bool = False, **options):
        super().__init__(**options)
        self.sizes = sizes
        self.scale = scale
        self.centred = centred
        self.input: subprocess.Popen | None = None

    def __enter__(self):
        super().__enter__()
        try:
            self.environment |= {"XDG_SESSION_TYPE": "wayland", "LIBGL_ALWAYS_SOFTWARE": "1", "LP_NUM_THREADS": "1"}
            del self.environment["QT_QPA_PLATFORM"]
            self.begin()
            widths, heights = zip(*(map(int, size.split("x")) for size in self.sizes))
            # KWin must be able to find out which program this is.
            program = pathlib.Path(shutil.copy(INPUT, self.home / "run"))
            self.input = self.start(self.as_user([str(program), str(sum(widths)), str(max(heights))]), stdin=subprocess.PIPE,
                                    stdout=subprocess.PIPE, text=True)
        except Exception:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        if self.input:
            self.input.kill()  # before its pipes are closed
        super().__exit__()

    def begin(self) -> None:
        """Starts the compositor and adds its sockets to the environment."""
        raise NotImplementedError

    def picture(self) -> Image.Image:
        """What the compositor shows, in the pixels of the outputs."""
        raise NotImplementedError

    @staticmethod
    def as_user(command: list[str]) -> list[str]:
        """Compositors refuse to run as root."""
        return ["setpriv", "--reuid", "nobody", "--regid", "nogroup", "--clear-groups", *command] if os.geteuid() == 0 else command

    def start_compositor(self, command: list[str], **environment: str) -> None:
        if os.geteuid() == 0:
            self.home.chmod(0o711)
            shutil.chown(self.home / "run", "nobody")
        command = self.as_user(["env", *(f"{name}={value}" for name, value in environment.items()), *command])
        with (self.home / "compositor.log").open("a") as log:
            self.start(command, stdout=log, stderr=log)

    def show_picture(self, path: pathlib.Path, *options: str) -> subprocess.Popen:
        """Another program's window."""
        return self.start_and_wait([str(SHOW), str(path), *options])

    def start_pane(self) -> subprocess.Popen:
        """Starts the program. Its pane is in the middle of the first output, over something that is still."""
        before = self.picture()
        program = self.start_program()
        self.must(lambda: self.picture() != before, "the pane", 30)
        return program

    def do(self, *commands: str) -> None:
        """Words of wayland_input, e.g. "move 10 10", "press", "release", "travel 5 0", "key 30", "wait 50"."""
        for command in commands:
            self.input.stdin.write(command + "\n")
            self.input.stdin.flush()
            self.input.stdout.readline()

    def click(self, x: float, y: float, times: int = 1) -> None:
        self.do(f"move {x} {y}", "wait 50", *["press", "wait 30", "release", "wait 50"] * times)

    def drag(self, start: tuple[int, int], end: tuple[int, int], way: str = "travel") -> None:
        """Presses, moves in twelve steps and lets go: as a mouse ("travel") or as a tablet does ("move")."""
        steps = []
        for i in range(1, 13):
            x, y = (end[j] - start[j] for j in (0, 1))
            step = f"travel {x / 12} {y / 12}" if way == "travel" else f"move {start[0] + x * i / 12} {start[1] + y * i / 12}"
            steps += [step, "wait 20"]
        self.do(f"move {start[0]} {start[1]}", "wait 80", "press", "wait 60", *steps, "wait 60", "release", "wait 30")


class Sway(WaylandSession):
    def begin(self) -> None:
        lines = ["xwayland disable", "default_border none", "focus_follows_mouse no"]
        x = 0
        for number, size in enumerate(self.sizes, 1):
            width, height = map(int, size.split("x"))
            scale = self.scale if number == 1 else 1
            lines.append(f"output HEADLESS-{number} mode --custom {int(width * scale)}x{int(height * scale)}@60Hz "
                         f"position {x} 0 scale {scale} bg #203040 solid_color")
            x += width
        place = "position center" if self.centred else "absolute position 0 0"
        lines.append(f'for_window [app_id=".*"] floating enable, border none, move {place}')
        configuration = self.home / "sway.conf"
        configuration.write_text("\n".join(lines) + "\n")
        configuration.chmod(0o644)
        self.environment["XDG_CURRENT_DESKTOP"] = "sway"
        self.start_sway(WLR_BACKENDS="headless", WLR_LIBINPUT_NO_DEVICES="1", WLR_HEADLESS_OUTPUTS=str(len(self.sizes)))

    def start_sway(self, **environment: str) -> None:
        runtime = self.home / "run"
        former = set(runtime.iterdir())

        def new(pattern: str) -> pathlib.Path | None:
            return next((path for path in runtime.glob(pattern) if path.suffix != ".lock" and path not in former), None)
        self.start_compositor(["sway", "-c", str(self.home / "sway.conf")], WLR_RENDERER="pixman", **environment)
        self.environment["SWAYSOCK"] = str(self.must(lambda: new("sway-ipc.*.sock"), "sway"))
        self.environment["WAYLAND_DISPLAY"] = self.must(lambda: new("wayland-*"), "its display").name
        self.must(lambda: self.outputs() >= len(self.sizes), "the outputs")

    def outputs(self) -> int:
        return self.output("swaymsg", "-t", "get_outputs").count('"name"')

    def picture(self) -> Image.Image:
        shot = subprocess.run(["grim", "-t", "ppm", "-"], env=self.environment, capture_output=True, check=True)
        return Image.open(io.BytesIO(shot.stdout))


class NestedSway(Sway):
    """Its output is a window of another sway, which can close it."""

    def begin(self) -> None:
        super().begin()
        self.outside = self.environment.copy()
        self.start_sway(WLR_BACKENDS="wayland")

    def close_output(self) -> None:
        subprocess.run(["swaymsg", '[app_id="wlroots"] kill'], env=self.outside, check=True, stdout=subprocess.DEVNULL)
        self.must(lambda: self.outputs() == 0, "no output")


class KWin(WaylandSession):
    def begin(self) -> None:
        kwin = shutil.which("kwin_wayland")
        if not kwin:
            raise RuntimeError("kwin-wayland isn't installed")
        home = self.home / "kwin"
        (home / ".config").mkdir(parents=True)
        # A copy has no capabilities: with them the loader would ignore the environment.
        program = pathlib.Path(shutil.copy(kwin, home))
        (home / ".config" / "kwinrc").write_text(
            f"[Compositing]\nAnimationSpeed=0\n[Windows]\nPlacement={'Centered' if self.centred else 'ZeroCornered'}\n[org.kde.kdecoration2]\nNoPlugin=true\n")
        (home / ".config" / "kdeglobals").write_text("[KDE]\nAnimationDurationFactor=0\n")
        if os.geteuid() == 0:
            for path in (home, *home.rglob("*")):
                shutil.chown(path, "nobody")
        system_bus = self.home / "system-bus.conf"
        system_bus.write_text(BUS_CONFIGURATION.format(home=self.home / "run", services=""))
        self.start(["dbus-daemon", f"--config-file={system_bus}", "--nofork"], stderr=subprocess.DEVNULL)
        self.environment |= {"DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={self.home / 'run' / 'bus'}", "KWIN_COMPOSE": "O2",
                             "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5", "XDG_CURRENT_DESKTOP": "KDE", "LUCENTRA_PLATFORM": "layer"}
        self.must((self.home / "run" / "bus").exists, "the system's bus")
        width, height = self.sizes[0].split("x")
        self.start_compositor(
            [str(program), "--virtual", "--no-lockscreen", "--socket", "wayland-kwin", "--width", width, "--height", height,
             "--output-count", str(len(self.sizes)), "--scale", str(self.scale)],
            # Its services are for programs that the user installed; here everything may use them.
            HOME=str(home), XDG_CONFIG_HOME=str(home / ".config"), XDG_CACHE_HOME=str(home), XDG_DATA_HOME=str(home), KWIN_SCREENSHOT_NO_PERMISSION_CHECKS="1", KWIN_WAYLAND_NO_PERMISSION_CHECKS="1")
        self.environment["WAYLAND_DISPLAY"] = "wayland-kwin"
        self.wait_for_name("org.kde.KWin")

    def picture(self) -> Image.Image:
        """By KWin's own service."""
        reading, writing = os.pipe()
        bus = dbus.bus.BusConnection(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        service = dbus.Interface(bus.get_object("org.kde.KWin", "/org/kde/KWin/ScreenShot2"), "org.kde.KWin.ScreenShot2")
        answer = service.CaptureWorkspace({"native-resolution": True}, dbus.types.UnixFd(writing))
        os.close(writing)
        with os.fdopen(reading, "rb") as pipe:
            pixels = pipe.read()
        bus.close()
        return Image.frombytes("RGB", (int(answer["width"]), int(answer["height"])), pixels, "raw", "BGRX",
                               int(answer["stride"]))
