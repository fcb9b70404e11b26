#!/usr/bin/env python3
"""The pane's capsule and edges, as a user works them: by keyboard, by pointer, and by what a screen reader presses."""
import time

import chat_server
import sample_page
from case import OnADisplay
from screen import eventually

PANE = (220, 170, 520, 300)
CAPSULE = ["Translate Current Area", "Switch to Area Translation", "Switch to Manual Input", "Target language: English",
           "Translation History", "Settings"]


class OnThePane(OnADisplay):
    def setUp(self):
        super().setUp()
        page = self.screen.home / "page.png"
        sample_page.render(page, ["", "The lighthouse keeper", "writes a letter"], dark=True, size="720x400")
        self.screen.show_picture(page, 200, 160)
        self.ask_for = self.screen.start_portal()
        self.screen.do("mousemove 1270 790")
        self.pane = self.screen.start_pane(*PANE)

    def expect(self, claim, what: str) -> None:
        self.assertTrue(eventually(claim), what)

    def focus_is(self, name: str) -> None:
        self.expect(lambda: name in self.screen.focused(), f"{name} has the focus, not {self.screen.focused()}")

    def setting(self, key: str):
        return self.screen.preferences.get(key)


class Capsule(OnThePane):
    def test_all_of_it_by_keyboard(self):
        area = (PANE[0] + PANE[2] - 230, PANE[1] + 4, PANE[0] + PANE[2] - 14, PANE[1] + 38)
        unseen = self.screen.picture().crop(area)
        for name in CAPSULE:
            self.screen.do("key Tab")
            self.focus_is(name)
        time.sleep(0.6)
        on_settings = self.screen.picture().crop(area)
        self.assertNotEqual(unseen.tobytes(), on_settings.tobytes(), "it appears while it has the focus")
        self.screen.do("key Right")  # round to the first
        self.focus_is(CAPSULE[0])
        time.sleep(0.3)
        ring = (180, 2, 214, 32)
        self.assertNotEqual(self.screen.picture().crop(area).crop(ring).tobytes(), on_settings.crop(ring).tobytes(),
                            "the focus is seen")
        self.screen.do("key Return")
        self.expect(lambda: len(self.server.requests) == 1, "Return presses")
        self.shows("THE LIGHTHOUSE KEEPER", "Translate Again")
        self.screen.do("key Right key space")
        self.expect(lambda: self.setting("triggerMode") == 1, "Space presses")
        self.shows("Switch to Automatic Recognition")
        self.screen.do("key Right key Right")
        self.focus_is(CAPSULE[3])
        self.screen.do("key Return sleep 0.5 key Down key Down key Return")
        self.expect(lambda: self.setting("targetLanguageCode") != "en", "the menu by keyboard")
        self.assertIs(self.setting("targetLanguageFollowsInterface"), False)
        self.expect(lambda: sum("Target language:" in text for text in self.screen.texts()) > 1, "a hint besides")
        self.screen.do("key Left key Return")
        self.shows("Text to translate")
        self.screen.press("Translation History")
        self.expect(lambda: self.screen.windows("--name", "Translation History"), "its window")

    def test_a_text_goes_to_the_history_and_to_another_window(self):
        self.screen.preferences |= {"triggerMode": 1}
        self.pane.double_click()
        self.shows("WRITES A LETTER")
        place = next(line.split() for line in self.screen.accessibility("places")[1].splitlines() if "WRITES" in line)
        start = (int(place[0]) + 20, int(place[1]) + int(place[3]) // 2)
        self.screen.do("key Down key Down key Menu sleep 0.5", *["key Down"] * 4, "key Return")  # "Open in History"
        self.expect(lambda: any("writes a letter" in name for name in self.screen.focused()), "the history's entry")
        history = self.screen.windows("--name", "Translation History")[0]
        self.screen.do(f"windowmove --sync {history} 760 20 sleep 0.5 keydown ctrl")
        self.screen.drag(start, (900, 91), hold=0.5)
        self.screen.do("keyup ctrl")
        self.expect(lambda: "WRITES A LETTER" in self.screen.accessibility("contents")[1], "it is in the search field")
        self.assertEqual((self.pane.frame, len(self.server.requests)), (PANE, 1))

    def test_clicks_beneath_it_and_an_open_menu(self):
        for x in (PANE[2] - 290, PANE[2] - 150, PANE[2] - 30):
            asked = len(self.server.requests)
            self.screen.double_click(PANE[0] + x, PANE[1] + 50)
            self.expect(lambda: len(self.server.requests) == asked + 1, f"a double click at {x} starts a pass")
            time.sleep(1)
        # Escape closes the menu first and then the pane.
        self.screen.press("Target language: English")
        self.expect(lambda: "Japanese" in self.screen.texts(), "the menu")
        self.screen.do("key Escape")
        self.expect(lambda: "Japanese" not in self.screen.texts(), "the menu has gone")
        self.assertTrue(self.pane.is_shown())
        self.screen.do("key Escape")
        self.expect(lambda: not self.pane.is_shown(), "the pane has gone")

    def test_reduced_motion_while_a_pass_runs(self):
        self.server.queued = [chat_server.hang]
        self.pane.double_click()
        self.screen.do("mousemove 1270 790")
        self.expect(lambda: len(self.server.requests) == 1, "a request")
        time.sleep(1)

        def pictures() -> int:
            return len({self.pane.picture().tobytes() for _ in range(10) if not time.sleep(0.1)})
        self.assertGreater(pictures(), 3, "the border pulses and the wheel turns")
        self.ask_for("reduce-motion")
        time.sleep(0.3)
        self.assertEqual(pictures(), 1, "nothing moves")
        self.ask_for()
        time.sleep(0.3)
        self.assertGreater(pictures(), 3, "it goes on")


class Edges(OnThePane):
    def test_resizing_by_every_edge_and_corner(self):
        cursors = {}
        for across in (-1, 0, 1):
            for down in (-1, 0, 1):
                if across == down == 0:
                    continue
                x, y, width, height = self.pane.frame
                start = (x + (2, width // 2, width - 3)[across + 1], y + (2, height // 2, height - 3)[down + 1])
                self.screen.do(f"mousemove {start[0]} {start[1]} sleep 0.2")
                cursors[across, down] = self.screen.cursor()
                self.screen.drag(start, (start[0] + 30 * across, start[1] + 30 * down), hold=0.5)
                expected = (x - 30 * (across < 0), y - 30 * (down < 0), width + 30 * abs(across), height + 30 * abs(down))
                self.expect(lambda: max(abs(a - b) for a, b in zip(self.pane.frame, expected)) <= 3,
                            f"{(across, down)}: {self.pane.frame}, not {expected}")
        for one, other in (((-1, 0), (1, 0)), ((0, -1), (0, 1)), ((-1, -1), (1, 1)), ((-1, 1), (1, -1))):
            self.assertEqual(cursors[one], cursors[other], "opposite edges have the same")
        self.assertEqual(len({cursors[edge] for edge in ((1, 0), (0, 1), (1, 1), (1, -1))}), 4, "and others another")

        x, y, width, height = self.pane.frame
        self.screen.drag((x + width - 3, y + height - 3), (x + 20, y + 20))
        self.expect(lambda: self.pane.frame == (x, y, 320, 100), f"not the smallest size: {self.pane.frame}")


class Window(OnThePane):
    def state(self, name: str = "_NET_WM_STATE") -> str:
        return self.screen.output("xprop", "-id", self.pane.window, name)

    def test_hidden_and_shown(self):
        self.screen.preferences |= {"showInDock": False}
        for _ in range(2):
            self.screen.lucentra("hide")
            self.expect(lambda: "Normal" not in self.state("WM_STATE"), "hidden")
            self.screen.lucentra("show")
            for state in ("ABOVE", "SKIP_TASKBAR", "SKIP_PAGER"):
                self.expect(lambda: f"_NET_WM_STATE_{state}" in self.state(), f"{state}, not {self.state()}")
            self.expect(lambda: "4294967295" in self.state("_NET_WM_DESKTOP"), "on all desktops")
            self.expect(lambda: self.pane.frame == PANE, f"in its place, not {self.pane.frame}")
        time.sleep(1.2)
        self.assertEqual(self.server.requests, [], "the user has moved nothing")

    def test_zoomed_and_minimized(self):
        for count, is_zoomed in ((1, True), (2, False)):
            self.screen.press("Maximize")
            self.expect(lambda: (self.pane.frame[2] > 1000) == is_zoomed, f"{is_zoomed=}: {self.pane.frame}")
            self.expect(lambda: len(self.server.requests) == count, "a change of size is a trigger")
        self.assertEqual(self.pane.frame, PANE)
        self.screen.press("Minimize")
        self.expect(lambda: not self.pane.is_shown(), "minimized")
        self.screen.lucentra("show")
        self.expect(self.pane.is_shown, "and back")
