#!/usr/bin/env python3
"""The program on the desktop: hotkeys while another program has the focus, the status item in both kinds of tray, remote
commands, a second start, the interface language, and what a former version left."""
import os
import pathlib
import re
import select
import subprocess
import time

from case import Case
from desktop import LUCENTRA
from screen import Screen, eventually

HERE = pathlib.Path(__file__).parent
PANE_NAME = "Lucentra"


class OnADesktop(Case):
    def setUp(self):
        self.screen = self.enter(Screen(composited=False, keyring=False))

    def start(self, *arguments: str) -> subprocess.Popen:
        process = self.screen.start_program(*arguments)
        self.screen.wait_for_name("com.tarnby.lucentra")
        return process

    def panes(self) -> list[str]:
        return self.screen.windows("--name", "澄鏡通$")

    def expect_pane(self, shown: bool, why: str = "") -> None:
        self.assertTrue(eventually(lambda: bool(self.panes()) == shown), why or f"the pane isn't {shown=}")

    def expect_whole_pane(self, why: str = "") -> None:
        """The program may still be showing a pane that the X server lists as mapped."""
        self.expect_pane(True, why)
        self.screen.must(lambda: "_NET_WM_STATE_ABOVE" in self.screen.output(
            "xprop", "-id", self.panes()[0], "_NET_WM_STATE"), "all of it")

    def other_program(self) -> subprocess.Popen:
        """A window that has the focus and tells the keys that reach it."""
        window = self.screen.start(["xev", "-event", "keyboard", "-name", "other"], stdout=subprocess.PIPE,
                                   stderr=subprocess.DEVNULL)
        self.focus("other")
        return window

    def focus(self, name: str) -> None:
        window = self.screen.must(lambda: self.screen.windows("--name", f"^{name}"), name)[0]
        self.screen.do(f"windowactivate --sync {window}")

    def focused(self) -> str:
        return self.screen.output("xdotool", "getactivewindow", "getwindowname")

    @staticmethod
    def keys_of(window: subprocess.Popen) -> str:
        """The key symbols that reached another program's window so far."""
        text = b""
        while select.select([window.stdout], [], [], 0.3)[0]:
            text += os.read(window.stdout.fileno(), 65536)
        return " ".join(re.findall(r"KeyPress.*?\(keysym 0x[0-9a-f]+, (\w+)\)", text.decode(), re.DOTALL))

    def call(self, member: str, interface: str = "com.tarnby.lucentra", *arguments: str):
        return subprocess.run(["gdbus", "call", "--session", "--dest", "com.tarnby.lucentra", "--object-path",
                               "/com/tarnby/lucentra", "--method", f"{interface}.{member}", *arguments],
                              env=self.screen.environment, capture_output=True, text=True, check=False)


class Hotkeys(OnADesktop):
    def test_both_work_while_another_program_has_the_focus(self):
        self.start()
        self.expect_pane(True)
        other = self.other_program()
        self.keys_of(other)
        self.screen.do("key alt+t")
        self.expect_pane(False)
        self.assertEqual(self.focused(), "other")
        self.screen.do("key alt+t")
        self.expect_pane(True)
        self.assertTrue(eventually(lambda: PANE_NAME in self.focused()), "shown by its hotkey the pane has the focus")
        self.screen.do("key Escape")
        self.expect_pane(False)
        self.focus("other")
        self.screen.do("key alt+Return")
        self.expect_pane(True, "the translate hotkey shows a hidden pane")
        self.focus("other")
        self.screen.do("key Escape")
        time.sleep(0.3)
        self.expect_pane(True, "Escape in another window isn't the pane's")
        self.assertNotRegex(self.keys_of(other), r"\b(t|Return)\b")
        self.assertIn("✅ Carbon 熱鍵已註冊 keyCode=17 carbonMods=2048", self.screen.log())

    def test_the_pane_hides_when_another_window_gets_the_keys(self):
        self.screen.preferences = {"autoHide": True}
        self.other_program()
        self.start("-session", "a-former-one")  # as a session manager does
        self.expect_pane(True)
        self.assertTrue(eventually(lambda: PANE_NAME in self.focused()))
        self.screen.do("keydown alt keydown 36 sleep 0.8 keyup 36 keyup alt")  # held hotkeys take the keys for a moment
        time.sleep(0.4)
        self.expect_pane(True, "a held hotkey isn't another window")
        self.screen.do("mousemove 640 500 mousedown 1 sleep 0.1 mousemove 660 520 sleep 0.8 mousemove 670 530 mouseup 1")
        time.sleep(0.4)
        self.expect_pane(True, "a drag isn't another window")
        self.focus("other")
        self.expect_pane(False)


class RemoteCommands(OnADesktop):
    def succeeds(self, *arguments: str) -> None:
        answer = self.screen.lucentra(*arguments, timeout=30)
        self.assertEqual((answer.returncode, answer.stdout, answer.stderr), (0, "", ""), arguments)

    def test_each_acts_on_the_running_program(self):
        process = self.start()
        self.expect_pane(True)
        for command, shown in [("toggle", False), ("toggle", True), ("hide", False), ("hide", False), ("show", True),
                               ("show", True), ("hide", False), ("translate", True), ("hide", False),
                               ("", True)]:  # a second start
            with self.subTest(command=command):
                self.succeeds(*command.split())
                self.expect_pane(shown)
        self.succeeds("quit")
        self.assertEqual(process.wait(10), 0)

    def test_what_cannot_be_done_is_said(self):
        for command in ("hide", "quit"):
            answer = self.screen.lucentra(command)
            self.assertEqual((answer.returncode, answer.stdout), (2, ""))
            self.assertIn("not running", answer.stderr)
        self.screen.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nonexistent"
        self.assertEqual(self.screen.lucentra("toggle").returncode, 2)
        del self.screen.environment["DISPLAY"]
        answer = self.screen.lucentra()
        self.assertEqual(answer.returncode, 2)
        self.assertIn("DISPLAY", answer.stderr)
        self.screen.environment["WAYLAND_DISPLAY"] = "wayland-0"
        self.assertIn("XWayland", self.screen.lucentra().stderr)

    def test_a_command_starts_the_program(self):
        self.succeeds("toggle")
        self.expect_whole_pane("started for it, the pane is shown rather than hidden")
        self.succeeds("toggle")
        self.expect_pane(False)
        self.succeeds("quit")
        self.assertTrue(eventually(lambda: self.screen.lucentra("quit").returncode == 2))

    def test_a_second_start_without_a_bus_shows_the_first(self):
        self.screen.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nonexistent"
        first = self.screen.start([str(LUCENTRA)], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.expect_whole_pane()
        self.screen.do("key --delay 50 alt+t")
        self.expect_pane(False)
        self.succeeds()
        self.expect_pane(True)
        self.assertEqual(len(self.panes()), 1)
        self.assertIsNone(first.poll())

    def test_the_bus_knows_the_same(self):
        self.start()
        self.expect_pane(True)
        self.assertEqual(self.call("Toggle").returncode, 0)
        self.expect_pane(False)
        application = "org.freedesktop.Application"
        self.assertEqual(self.call("Activate", application, "{}").returncode, 0)
        self.expect_pane(True)
        self.assertEqual(self.call("ActivateAction", application, "hide", "[]", "{}").returncode, 0)
        self.expect_pane(False)
        self.assertNotEqual(self.call("Recognize").returncode, 0)


class WithoutATray(OnADesktop):
    def notices(self, *toggling: str) -> str:
        """What the desktop is asked to tell while the pane is hidden and shown twice."""
        monitor = self.screen.start(["dbus-monitor", "--session", "member='Notify'"], stdout=subprocess.PIPE)
        self.screen.must(lambda: b"NameAcquired" in os.read(monitor.stdout.fileno(), 65536), "the monitor")
        self.start()
        self.expect_pane(True)
        for shown in (False, True, False, True):
            subprocess.run(toggling, env=self.screen.environment, check=True)
            self.expect_pane(shown)
        text = b""
        while select.select([monitor.stdout], [], [], 0.5)[0]:
            text += os.read(monitor.stdout.fileno(), 65536)
        return text.decode()

    def test_it_is_said_once(self):
        text = self.notices("xdotool", "key", "alt+t")
        self.assertEqual(text.count("member=Notify"), 1)
        self.assertIn("press Alt+T or start Lucentra again", text)

    def test_a_hotkey_that_was_refused_is_not_recommended(self):
        self.screen.hold_key(28, 8)
        text = self.notices(str(LUCENTRA), "toggle")
        self.assertEqual(text.count("member=Notify"), 1)
        self.assertIn("To show the pane again, start Lucentra again", text)


class InAWaylandSession(OnADesktop):
    """The screen belongs to the compositor, and the desktop's portal is asked for it."""

    SHARE = "Share the Screen…"

    @staticmethod
    def said(program: subprocess.Popen) -> str:
        return program.stdout.readline() if select.select([program.stdout], [], [], 20)[0] else ""

    def test_what_becomes_of_the_question_is_said(self):
        self.screen.environment |= {"WAYLAND_DISPLAY": "wayland-0", "LUCENTRA_PLATFORM": "xcb"}
        program = self.start()
        self.expect_pane(True)
        self.screen.lucentra("translate")
        self.shows("offers no screen sharing")
        tell = self.screen.start_portal()
        self.screen.press("Retry")
        self.shows("will now ask you to share the screen")
        for outcome, text in (("refuse", "Without a shared screen"), ("end", "was interrupted"),
                              ("refuse", "Without a shared screen"), ("crash", "was interrupted")):
            with self.subTest(outcome):
                tell(outcome)
                self.screen.press(self.SHARE)
                self.shows(text)
        self.screen.start_portal("wait")
        self.screen.press(self.SHARE)
        self.assertEqual(self.said(self.screen.portal), "asked\n")
        self.screen.lucentra("quit")
        self.assertEqual(self.said(self.screen.portal), "closed\n", "the question stays")
        self.assertEqual(program.wait(10), 0)


class StatusItem(OnADesktop):
    def item(self, *arguments: str) -> str:
        answer = subprocess.run(["/usr/bin/python3", str(HERE / "status_menu.py"), *arguments],
                                env=self.screen.environment, capture_output=True, encoding="utf-8", check=False)
        self.assertEqual(answer.returncode, 0, answer.stderr)
        return answer.stdout

    def start_with_tray(self) -> str:
        tray = self.screen.start_tray()
        self.start()
        return self.screen.item_in(tray)

    def test_its_menu_over_the_bus(self):
        self.screen.preferences = {"hotkeyCode": 40, "hotkeyModifiers": 0x60000, "hotkeyString": "⌃⇧K"}
        address = self.start_with_tray()
        self.expect_pane(True)
        titles = dict(line.split("\t") for line in self.item(address, "titles").splitlines())
        self.assertEqual(titles, {"Show/Hide Pane": "Ctrl+Shift+K", "Translate Current Area": "Alt+Return",
                                  "Live Translation": "", "Translation History": "", "Settings…": "Ctrl+,", "Quit Lucentra": "Ctrl+Q"})
        self.item(address, "click", "Show/Hide Pane")
        self.expect_pane(False)
        self.item(address, "activate")
        self.expect_pane(True)
        self.screen.do("key ctrl+shift+k")
        self.expect_pane(False)
        self.item(address, "click", "Translate Current Area")
        self.expect_pane(True)
        self.item(address, "click", "Quit Lucentra")
        self.assertTrue(eventually(lambda: self.screen.lucentra("quit").returncode == 2))

    def test_in_a_tray_that_embeds_windows_and_comes_late(self):
        self.start()
        self.expect_pane(True)
        self.screen.start(["trayer", "--edge", "top", "--align", "left", "--widthtype", "pixel", "--width", "100",
                           "--heighttype", "pixel", "--height", "32", "--SetDockType", "true"],
                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        before = self.screen.must(lambda: self.screen.selection_owner("_NET_SYSTEM_TRAY_S0"), "tray")
        self.assertTrue(before)
        icon = self.screen.must(self.icon_place, "the icon", 40)
        self.screen.do(f"mousemove {icon[0]} {icon[1]} click 1")
        self.expect_pane(False)
        self.screen.do("sleep 0.6 click 1")  # later than a double click
        self.expect_pane(True)
        self.screen.do("click 3 sleep 0.5 key Down key Return")
        self.expect_pane(False, "the first entry of the menu hides the pane")

    def icon_place(self):
        """The middle of the embedded icon on the screen."""
        tree = self.screen.output("xwininfo", "-root", "-tree")
        found = re.search(r'"lucentra".*? (\d\d)x(\d\d)\+\S+ +\+(-?\d+)\+(-?\d+)', tree)  # of two digits: a small one
        return (int(found[3]) + int(found[1]) // 2, int(found[4]) + int(found[2]) // 2) if found else None


class Migration(OnADesktop):
    def test_a_former_version_is_taken_over(self):
        former = self.screen.home / "data" / "Panewise" / "history.json"
        former.parent.mkdir(parents=True)
        entry = ('[{"id":"6F9619FF-8B86-D011-B42D-00C04FC964FF","originalText":"old","translatedText":"b",'
                 '"timestamp":1,"isStarred":false}]')
        former.write_text(entry)
        preferences = self.screen.home / "config" / "com.tarnby.Panewise.plist"
        preferences.parent.mkdir(parents=True)
        preferences.write_text('<plist version="1.0"><dict><key>appLanguage</key><string>ja</string>'
                               '<key>hotkeyCode</key><integer>40</integer><key>hotkeyString</key><string>⌥K</string>'
                               '</dict></plist>')
        self.start()
        self.expect_pane(True)
        history = self.screen.home / "data" / "Lucentra" / "history.json"
        self.assertTrue(eventually(history.exists))
        self.assertEqual(history.read_text(), entry)
        self.assertTrue(eventually(lambda: "keyCode=40 carbonMods=2048" in self.screen.log()))
        self.assertEqual(self.screen.preferences["appLanguage"], "ja")
        self.assertEqual(self.screen.preferences["targetLanguageCode"], "ja", "it follows the migrated language")
