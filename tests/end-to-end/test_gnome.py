#!/usr/bin/env python3
"""The pane in a GNOME session of Wayland: over a window of Wayland, which is captured through the desktop's portal."""
import subprocess
import time

import sample_page
from case import OnADisplay
from gnome import Gnome
from screen import Pane, eventually

LINES = ["The lighthouse keeper writes", "one letter every evening", "and posts it on Sundays"]
PAGE = (200, 160)
PANE = (220, 170, 520, 300)
MEDIA_KEYS = "org.gnome.settings-daemon.plugins.media-keys"
SHORTCUTS_SWITCH = "Let the desktop's shortcuts call Lucentra"


class InGnome(OnADisplay):
    def make_screen(self) -> Gnome:
        return Gnome()

    def setUp(self):
        super().setUp()
        self.screen.preferences |= {"translationClickGesture": 0}
        self.page = self.screen.home / "page.png"
        sample_page.render(self.page, ["", *LINES], dark=True, size="720x400")  # clear of the pane's buttons

    def show_page(self, *options: str) -> subprocess.Popen:
        self.screen.environment["QT_QPA_PLATFORM"] = "wayland"
        page = self.screen.show_picture(self.page, 0, 0, *options)
        del self.screen.environment["QT_QPA_PLATFORM"]
        self.screen.place_other_windows(*PAGE)
        return page

    def click(self, pane: Pane) -> None:
        self.shows("Click to translate")
        x, y, width, height = pane.frame
        place = (x + width // 2, y + height - 24)
        # A shell that is busy shows the pane later than the pane's own controls say.
        self.screen.must(lambda: self.screen.process_at(*place) == pane.process.pid, "the pane under the pointer", 30)
        for _ in range(3):  # and may lose a click
            self.screen.click(*place)
            if eventually(lambda: not any("Click to translate" in text for text in self.screen.texts()), 10):
                break

    def test_what_is_beneath_is_translated(self):
        self.show_page()
        self.screen.preferences |= {"screenShares": self.screen.shares}
        pane = self.screen.start_pane(*PANE)
        self.click(pane)
        self.assertEqual(self.requested(1), [LINES], self.screen.texts())
        self.shows(*map(str.upper, LINES))
        self.screen.stop(pane.process)
        self.assertTrue(self.screen.preferences["screenShares"], "no token for the next time")
        self.assertEqual(self.screen.preferences_path.stat().st_mode & 0o777, 0o600)

        pane = self.screen.start_pane(*PANE)
        x, y, width, height = pane.frame
        self.screen.drag((x + 300, y + height - 40), (x + 288, y + height - 20))
        self.assertEqual(self.requested(2), [LINES, LINES], "a drag is a trigger, and the desktop doesn't ask again")
        self.assertEqual(pane.frame, (x - 12, y + 20, width, height))
        time.sleep(2)
        self.assertEqual(len(self.server.requests), 2)
        self.screen.drag_with_super(10, 6)
        self.assertEqual(self.requested(3)[2:], [LINES], "the shell's drag is a trigger")
        self.assertEqual(pane.frame, (x - 2, y + 26, width, height))
        self.screen.keys(56, 65)  # Alt+F7: moves by keys
        for key in (103, 103, 1):  # up, and back by Escape
            self.screen.pause(0.3)
            self.screen.keys(key)
        time.sleep(2)
        self.assertEqual(len(self.server.requests), 3)
        self.screen.stop(pane.process)

        # The user is asked, after an explanation.
        self.screen.preferences |= {"screenShares": ""}
        pane = self.screen.start_pane(*PANE)
        self.click(pane)
        self.shows("will now ask you to share the screen")
        self.screen.press("Share the Screen…")
        self.screen.answer(False)
        self.shows("Without a shared screen")
        self.screen.press("Share the Screen…")
        self.screen.answer(True)
        self.shows(*map(str.upper, LINES), seconds=60)
        self.assertEqual(len(self.requested(4)), 4)
        self.show_page("--video")
        for count in range(5, 11):  # over its own overlays, which no picture shows
            self.screen.lucentra("translate")
            self.assertNotRegex("|".join(self.requested(count)[count - 1]), "[A-Z]{3}")
        self.screen.stop(pane.process)

    def test_keys_of_gnome_call_the_program(self):
        screen = self.screen
        screen.quietly(["/usr/libexec/gsd-media-keys"])
        screen.wait_for_name("org.gnome.SettingsDaemon.MediaKeys")
        folder = f"/{MEDIA_KEYS.replace('.', '/')}/custom-keybindings/"
        screen.set(MEDIA_KEYS, "custom-keybindings", f"['{folder}other/']")

        def entries() -> str:
            return screen.output("gsettings", "get", MEDIA_KEYS, "custom-keybindings")

        pane = screen.start_pane(*PANE)
        screen.lucentra("settings")
        screen.press("Shortcuts")
        screen.press(SHORTCUTS_SWITCH)
        self.assertTrue(eventually(lambda: "lucentra-translate" in entries()))
        self.show_page()
        screen.click(PAGE[0] + 650, PAGE[1] + 350)  # the keys go to a window of Wayland
        screen.pause(2)  # until GNOME has taken the keys
        for expected in (False, True):
            screen.keys(56, 20)  # Alt+T
            self.assertTrue(eventually(lambda: pane.is_shown() == expected), "the key does nothing, or too much")
            screen.pause(1)
            self.assertEqual(pane.is_shown(), expected)
        screen.press(SHORTCUTS_SWITCH)
        self.assertTrue(eventually(lambda: entries() == f"['{folder}other/']"), "only the program's own are removed")
        self.screen.stop(pane.process)
