"""A GNOME session without a monitor: GNOME Shell with XWayland, PipeWire and the desktop's portal, on buses of its own. The
pointer and keys come through the shell's remote control, pictures through its screenshots."""
import json
import pathlib
import re
import shutil
import subprocess

from gi.repository import Gio, GLib
from PIL import Image

from screen import Screen

PORTAL = "org.freedesktop.portal.Desktop"
BACK_END = "org.freedesktop.impl.portal.desktop.gnome"
REMOTE = "org.gnome.Mutter.RemoteDesktop"
BUTTON = 0x110
SIZE = (1280, 800)
# What the portal's store holds after the user has shared the monitor: its token, for programs outside of containers.
TOKEN = "11111111-2222-4333-8444-555555555555"


class Gnome(Screen):
    """One monitor. `shares` is what the program's settings hold after the user has shared it."""

    shares = json.dumps({f"0,0,{SIZE[0]},{SIZE[1]}": TOKEN})
    input = ""

    def __init__(self):
        super().__init__(keyring=False)

    def begin(self) -> None:
        self.environment |= {"XDG_CURRENT_DESKTOP": "GNOME", "XDG_SESSION_TYPE": "wayland", "GSETTINGS_BACKEND": "keyfile",
                             "LIBGL_ALWAYS_SOFTWARE": "1", "LP_NUM_THREADS": "1", "DBUS_SYSTEM_BUS_ADDRESS": self.environment["DBUS_SESSION_BUS_ADDRESS"],
                             "WAYLAND_DISPLAY": "wayland-0", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        self.environment.pop("QT_QPA_PLATFORM")
        self.describe_portals()
        pathlib.Path("/tmp/.X11-unix").mkdir(mode=0o1777, exist_ok=True)
        runtime = pathlib.Path(self.environment["XDG_RUNTIME_DIR"])
        self.set("org.gnome.desktop.interface", "enable-animations", "false")
        self.set("org.gnome.desktop.interface", "enable-hot-corners", "false")
        self.set("org.gnome.desktop.notifications", "show-banners", "false")
        self.set("org.gnome.desktop.background", "picture-options", "none")
        self.quietly(["/usr/libexec/xdg-permission-store"])
        self.quietly(["pipewire"])
        self.must((runtime / "pipewire-0").exists, "PipeWire")
        self.quietly(["wireplumber"])
        log = (self.home / "shell.log").open("w")
        self.shell = self.start(["gnome-shell", "--headless", "--wayland", "--sm-disable", "--unsafe-mode",
                                 "--virtual-monitor", "{}x{}".format(*SIZE)], stdout=log, stderr=subprocess.STDOUT)
        log.close()
        self.bus = Gio.DBusConnection.new_for_address_sync(
            self.environment["DBUS_SESSION_BUS_ADDRESS"], Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        self.must(lambda: "GNOME Shell started" in self.shell_log(), "GNOME Shell", 60)
        self.display = re.search(r"public X11 display (:\d+)", self.shell_log())[1]
        self.environment |= {"DISPLAY": self.display, "XAUTHORITY": str(next(runtime.glob(".mutter-Xwaylandauth.*")))}
        self.evaluate("Main.overview.hide()")
        self.quietly(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"])
        self.wait_for_name("org.a11y.Bus")
        self.permit()
        self.start_portal_of_desktop()

    def describe_portals(self) -> None:
        """GNOME's portal, and one of another desktop that is installed as well: it alone has global shortcuts."""
        folder = self.home / "portals"
        folder.mkdir()
        shutil.copy("/usr/share/xdg-desktop-portal/portals/gnome.portal", folder)
        (folder / "other.portal").write_text("[portal]\nDBusName=org.freedesktop.impl.portal.desktop.other\n"
                                             "Interfaces=org.freedesktop.impl.portal.GlobalShortcuts;\nUseIn=other\n")
        self.environment["XDG_DESKTOP_PORTAL_DIR"] = str(folder)

    def start_portal_of_desktop(self) -> None:
        self.quietly(["/usr/libexec/xdg-desktop-portal-gnome"])
        self.wait_for_name(BACK_END)
        self.portal = self.quietly(["/usr/libexec/xdg-desktop-portal"])
        self.wait_for_name(PORTAL)

    def __exit__(self, *_):
        if shell := getattr(self, "shell", None):
            shell.kill()  # it doesn't end soon when asked
        super().__exit__()

    def shell_log(self) -> str:
        return (self.home / "shell.log").read_text(encoding="utf-8")

    def set(self, schema: str, key: str, value: str) -> None:
        subprocess.run(["gsettings", "set", schema, key, value], env=self.environment, check=True)

    def call(self, name: str, path: str, method: str, arguments: GLib.Variant | None = None):
        interface, member = method.rsplit(".", 1)
        answer = self.bus.call_sync(name, path, interface, member, arguments, None, 0, 20000, None)
        return answer.unpack()

    def evaluate(self, script: str):
        """What a script in the shell returns."""
        done, value = self.call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell.Eval", GLib.Variant("(s)", (script,)))
        if not done:
            raise RuntimeError(value)
        return json.loads(value) if value else None

    def permit(self) -> None:
        monitor = (0, 1, GLib.Variant("s", "MetaVendor:MetaVirtualMonitor:0x00"))
        data = GLib.Variant("(suv)", ("GNOME", 1, GLib.Variant("(xxa(uuv))", (0, 0, [monitor]))))
        self.call("org.freedesktop.impl.portal.PermissionStore", "/org/freedesktop/impl/portal/PermissionStore",
                  "org.freedesktop.impl.portal.PermissionStore.Set",
                  GLib.Variant("(sbsa{sas}v)", ("screencast", True, TOKEN, {"": ["yes"]}, data)))

    def place_other_windows(self, x: int, y: int) -> None:
        """Moves the windows of Wayland."""
        self.evaluate("global.get_window_actors().map(actor => actor.meta_window).filter(window => !window.get_client_type())"
                      f".forEach(window => window.move_frame(true, {x}, {y}))")

    # What is seen

    def question(self) -> list[int] | None:
        """The frame of the window in which the desktop asks which monitor to share."""
        return self.evaluate("global.get_window_actors().map(actor => actor.meta_window)"
                             ".filter(window => /portal/.test(window.get_wm_class()))"
                             ".map(window => window.get_frame_rect()).map(r => [r.x, r.y, r.width, r.height])[0] ?? null")

    def answer(self, is_allowed: bool) -> None:
        self.must(self.question, "the desktop's question", 60)
        self.pause(2)  # until it is in its place
        x, y, width, _ = self.question()
        if is_allowed:
            self.click(x + width // 2, y + 176)  # the only monitor
            self.pause(0.5)
            self.click(x + width - 42, y + 22)
        else:
            self.click(x + 44, y + 22)

    def process_at(self, x: int, y: int) -> int | None:
        """The process whose window a click would reach."""
        return self.evaluate(f"let actor = global.stage.get_actor_at_pos(imports.gi.Clutter.PickMode.REACTIVE, {x}, {y});"
                             "while (actor && !actor.meta_window) actor = actor.get_parent();"
                             "actor ? actor.meta_window.get_pid() : null")

    def picture(self) -> Image.Image:
        path = self.home / "screenshot.png"
        self.call("org.gnome.Shell.Screenshot", "/org/gnome/Shell/Screenshot", "org.gnome.Shell.Screenshot.Screenshot",
                  GLib.Variant("(bbs)", (False, False, str(path))))
        with Image.open(path) as picture:
            return picture.convert("RGB")

    # What is done

    def remote(self, method: str, signature: str, *values) -> None:
        if not self.input:
            self.input, = self.call(REMOTE, "/org/gnome/Mutter/RemoteDesktop", REMOTE + ".CreateSession")
            self.call(REMOTE, self.input, REMOTE + ".Session.Start")
        self.call(REMOTE, self.input, f"{REMOTE}.Session.{method}", GLib.Variant(signature, values))

    def move_pointer(self, x: int, y: int) -> None:
        self.remote("NotifyPointerMotionRelative", "(dd)", -9999.0, -9999.0)
        self.remote("NotifyPointerMotionRelative", "(dd)", float(x), float(y))

    def push(self, dx: int, dy: int) -> None:
        self.remote("NotifyPointerMotionRelative", "(dd)", float(dx), float(dy))

    def button(self, pressed: bool) -> None:
        self.remote("NotifyPointerButton", "(ib)", BUTTON, pressed)

    def click(self, x: int, y: int, count: int = 1) -> None:
        self.move_pointer(x, y)
        for pressed in (True, False) * count:
            self.pause()
            self.button(pressed)

    def double_click(self, x: int, y: int) -> None:
        self.click(x, y, 2)

    def drag(self, start: tuple[int, int], end: tuple[int, int], hold: float = 0) -> None:
        self.move_pointer(*start)
        self.button(True)
        for i in range(12):
            self.pause()
            self.push((end[0] - start[0]) * (i + 1) // 12 - (end[0] - start[0]) * i // 12,
                      (end[1] - start[1]) * (i + 1) // 12 - (end[1] - start[1]) * i // 12)
        self.pause(hold)
        self.button(False)

    def keys(self, *codes: int) -> None:
        """Presses keys, by their evdev codes, together."""
        for pressed, order in ((True, codes), (False, codes[::-1])):
            for code in order:
                self.remote("NotifyKeyboardKeycode", "(ub)", code, pressed)
                self.pause()

    def drag_with_super(self, x: int, y: int) -> None:
        """The shell's own drag of the window under the pointer."""
        self.remote("NotifyKeyboardKeycode", "(ub)", 125, True)
        self.pause(0.2)
        self.button(True)
        self.pause(0.2)
        self.push(x, y)
        self.pause(0.2)
        self.button(False)
        self.remote("NotifyKeyboardKeycode", "(ub)", 125, False)
        self.pause(0.2)
        self.push(1, 1)

    @staticmethod
    def pause(seconds: float = 0.03) -> None:
        GLib.usleep(int(seconds * 1e6))
