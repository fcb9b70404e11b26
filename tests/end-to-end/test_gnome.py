#!/usr/bin/env python3
"""The pane in a GNOME session of Wayland: over a window of Wayland, which is captured through the desktop's portal."""
import json
import os
import pathlib
import subprocess
import time

import sample_page
from case import CONSENT, Case
from chat_server import ChatServer, blocks_of
from desktop import LUCENTRA
from gnome import Gnome
from screen import Pane, eventually

CAPTURE_OFTEN = pathlib.Path(os.environ.get("CAPTURE_OFTEN", LUCENTRA.parent / "capture_often")).resolve()
LINES = ["The lighthouse keeper writes", "one letter every evening", "and posts it on Sundays"]
PAGE = (200, 160)
PANE = (220, 170, 520, 300)
MEDIA_KEYS = "org.gnome.settings-daemon.plugins.media-keys"
SHORTCUTS_SWITCH = "Let the desktop's shortcuts call Lucentra"


class InGnome(Case):
    def setUp(self):
        self.server = self.enter(ChatServer(translate=str.upper))
        self.screen = self.enter(Gnome())
        self.page = self.screen.home / "page.png"
        sample_page.render(self.page, ["", *LINES], dark=True, size="720x400")  # clear of the pane's buttons

    def prefer(self, **values) -> None:
        self.screen.preferences = {"translationEngine": 7, "compatibleBaseURL": self.server.base_url, "compatibleModel": "m",
                                   CONSENT: True, "compatibleApiKey": "key", "targetLanguageCode": "en",
                                   "translationClickGesture": 0, **values}

    def show_page(self, *options: str) -> subprocess.Popen:
        self.screen.environment["QT_QPA_PLATFORM"] = "wayland"
        page = self.screen.show_picture(self.page, 0, 0, *options)
        del self.screen.environment["QT_QPA_PLATFORM"]
        self.screen.place_other_windows(*PAGE)
        return page

    def translated(self, count: int) -> list[list[str]]:
        """The lines of each request, once there are as many."""
        eventually(lambda: len(self.server.requests) >= count, 60)
        return [[block["text"] for block in blocks_of(body)] for _, _, body in self.server.requests]

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

    def end(self, pane: Pane) -> None:
        pane.process.terminate()
        pane.process.wait(20)

    def test_what_is_beneath_is_translated(self):
        self.show_page()
        self.prefer(screenShares=self.screen.shares)
        pane = self.screen.start_pane(*PANE)
        self.click(pane)
        self.assertEqual(self.translated(1), [LINES], self.screen.texts())
        self.shows(*map(str.upper, LINES))
        self.end(pane)
        self.assertTrue(self.screen.preferences["screenShares"], "no token for the next time")
        self.assertEqual(self.screen.preferences_path.stat().st_mode & 0o777, 0o600)

        pane = self.screen.start_pane(*PANE)
        x, y, width, height = pane.frame
        self.screen.drag((x + 300, y + height - 40), (x + 288, y + height - 20))
        self.assertEqual(self.translated(2), [LINES, LINES], "a drag is a trigger, and the desktop doesn't ask again")
        self.assertEqual(pane.frame, (x - 12, y + 20, width, height))
        time.sleep(2)
        self.assertEqual(len(self.server.requests), 2)
        self.screen.drag_with_super(10, 6)
        self.assertEqual(self.translated(3)[2:], [LINES], "the shell's drag is a trigger")
        self.assertEqual(pane.frame, (x - 2, y + 26, width, height))
        self.screen.keys(56, 65)  # Alt+F7: moves by keys
        for key in (103, 103, 1):  # up, and back by Escape
            self.screen.pause(0.3)
            self.screen.keys(key)
        time.sleep(2)
        self.assertEqual(len(self.server.requests), 3)
        self.end(pane)

        # The user is asked, after an explanation.
        self.prefer()
        pane = self.screen.start_pane(*PANE)
        self.click(pane)
        self.shows("will now ask you to share the screen")
        self.screen.press("Share the Screen…")
        self.screen.answer(False)
        self.shows("Without a shared screen")
        self.screen.press("Share the Screen…")
        self.screen.answer(True)
        self.shows(*map(str.upper, LINES), seconds=60)
        self.assertEqual(len(self.translated(4)), 4)
        self.end(pane)

        self.show_page("--video")
        result = subprocess.run([str(CAPTURE_OFTEN), "12", self.screen.preferences["screenShares"]],
                                env=self.screen.environment | {"QT_QPA_PLATFORM": "xcb"}, capture_output=True, check=True)
        outcome = json.loads(result.stdout)
        self.assertEqual((outcome["contaminated"], outcome["failures"]), (0, []))

    def test_keys_of_gnome_call_the_program(self):
        screen = self.screen
        screen.quietly(["/usr/libexec/gsd-media-keys"])
        screen.wait_for_name("org.gnome.SettingsDaemon.MediaKeys")
        folder = f"/{MEDIA_KEYS.replace('.', '/')}/custom-keybindings/"
        screen.set(MEDIA_KEYS, "custom-keybindings", f"['{folder}other/']")

        def entries() -> str:
            return screen.output("gsettings", "get", MEDIA_KEYS, "custom-keybindings")

        def is_shown() -> bool:
            visible = screen.output("xdotool", "search", "--onlyvisible", "--pid", str(pane.process.pid))
            return pane.window in visible.split()
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
            self.assertTrue(eventually(lambda: is_shown() == expected), "the key does nothing, or too much")
            screen.pause(1)
            self.assertEqual(is_shown(), expected)
        screen.press(SHORTCUTS_SWITCH)
        self.assertTrue(eventually(lambda: entries() == f"['{folder}other/']"), "only the program's own are removed")
        self.end(pane)


if __name__ == "__main__":
    import unittest
    unittest.main()
