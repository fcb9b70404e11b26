#!/usr/bin/env python3
"""The pane on a real X server with a window manager, once with and once without a compositor: over another program's
window, translating through a local chat-completions server."""
import subprocess
import time

from PIL import Image

import chat_server
import sample_page
from case import CONSENT, OnADisplay
from screen import Pane, eventually

LINES = ["The lighthouse keeper writes", "one letter every evening", "and posts it on Sundays"]
PAGE = (200, 160)  # where the page's picture begins on the screen
PANE = (220, 170, 520, 300)
BORDER = 14  # points at the pane's edges that the border and its glow take


def ink_rows(picture: Image.Image) -> list[tuple[int, int, int]]:
    """(left, top, bottom) of every line of bright writing."""
    bright = picture.convert("L").point(lambda value: 255 if value > 190 else 0)
    rows, start = [], None
    filled = [bright.crop((0, y, bright.width, y + 1)).getbbox() is not None for y in range(bright.height)] + [False]
    for y, is_filled in enumerate(filled):
        if is_filled and start is None:
            start = y
        elif not is_filled and start is not None:
            rows.append((bright.crop((0, start, bright.width, y)).getbbox()[0], start, y))
            start = None
    return rows


class OnAScreen:
    """What must hold with and without a compositor."""

    def setUp(self):
        super().setUp()
        self.page = self.screen.home / "page.png"
        sample_page.render(self.page, ["", *LINES], dark=True, size="720x400")  # clear of the pane's buttons

    def pane_over_page(self) -> Pane:
        self.screen.show_picture(self.page, *PAGE)
        return self.screen.start_pane(*PANE)

    def overlays_lie_over_their_lines(self, pane: Pane, page_at: tuple[int, int], scale: float = 1) -> None:
        """After a pass over the page. `scale` is in pixels a point."""
        pane.double_click()
        self.shows(*map(str.upper, LINES))
        self.screen.do("mousemove 1270 790")
        time.sleep(0.8)  # the capsule fades
        x, y, width, height = pane.frame
        with Image.open(self.page) as page:
            sources = [(left + page_at[0] - x, top + page_at[1] - y) for left, top, _ in ink_rows(page)]
        left, top, right, bottom = (int(edge * scale) for edge in (BORDER, BORDER + 16, BORDER, BORDER + 20))
        body = pane.picture().crop((left, top, width - right, height - bottom))
        overlays = [(row[0] + left, row[1] + top) for row in ink_rows(body)]
        self.assertEqual(len(overlays), len(LINES), overlays)
        for source, overlay in zip(sources, overlays):
            self.assertAlmostEqual(overlay[0], source[0] + 4 * scale, delta=3 * scale)  # 4: an overlay's side padding
            self.assertAlmostEqual(overlay[1], source[1], delta=3 * scale)

    def test_the_capture_shows_what_lies_beneath_and_nothing_of_ours(self):
        above = self.screen.home / "above.png"
        sample_page.render(above, ["Window above"], size="260x90")
        balloon = self.screen.home / "balloon.png"
        sample_page.render(balloon, ["Rounded balloon"], size="280x110", dark=True)
        menu = self.screen.home / "menu.png"
        sample_page.render(menu, ["Unmanaged menu"], size="250x80")
        sample_page.render(self.page, ["", *LINES[:1]], dark=True, size="720x400")
        pane = self.pane_over_page()
        self.screen.show_picture(above, 485, 290)
        self.screen.show_picture(balloon, 224, 320, "--rounded")
        self.screen.show_picture(menu, 485, 385, "--unmanaged")
        self.screen.do(f"windowraise {pane.window}")
        pane.double_click()
        expected = {LINES[0], "Window above", "Rounded balloon", "Unmanaged menu"}
        self.assertEqual(set(self.requested(1)[0]), expected)

        # A pass with the overlays still shown and our menu open over the text.
        self.shows(*(line.upper() for line in expected))
        self.screen.drag((470, 452), (470, 464))
        self.screen.do("mousemove 260 300 click 3")
        self.assertEqual(set(self.requested(2)[1]), expected)
        self.screen.do("key Escape")

    def test_a_capture_is_not_seen(self):
        self.screen.preferences = {**self.screen.preferences, "neonBorderColor": "none"}
        self.server.queued = [chat_server.pause(3), chat_server.pause(3)]
        pane = self.pane_over_page()
        pane.double_click()
        self.requested(1)
        self.screen.do("mousemove 1200 780")
        time.sleep(1)
        body = (PANE[0] + 20, PANE[1] + 60, PANE[0] + PANE[2] - 20, PANE[1] + PANE[3] - 30)
        page = (PAGE[0], PAGE[1] + 320, PAGE[0] + 700, PAGE[1] + 390)
        before = [self.screen.picture().crop(area).tobytes() for area in (body, page)]
        self.screen.do("key --window 0 alt+Return")
        seen = 0
        while len(self.server.requests) < 2 or seen < 5:
            picture = self.screen.picture()
            self.assertEqual([picture.crop(area).tobytes() for area in (body, page)], before)
            seen += 1
            self.assertLess(seen, 1000)


class WithACompositor(OnAScreen, OnADisplay):
    def test_every_trigger_starts_one_pass(self):
        pane = self.pane_over_page()
        time.sleep(1.5)
        self.assertEqual(self.requested(0), [], "the window manager's move isn't the user's")

        pane.double_click()
        self.assertEqual(self.requested(1), [LINES])
        self.shows(*map(str.upper, LINES))

        self.screen.do("mousemove 480 440 click 3 sleep 0.3 key Down key Return")  # the menu's first entry
        self.assertEqual(self.requested(2), [LINES] * 2)
        self.shows(*map(str.upper, LINES))

        x, y, _, _ = pane.frame
        self.screen.drag((480, 440), (492, 452))
        self.assertTrue(eventually(lambda: (x, y) != pane.frame[:2]))
        self.screen.drag((492, 452), (480, 440), hold=1.2)  # back to where it was
        self.assertEqual(len(self.server.requests), 2, "nothing while the button is down, of the first drag neither")
        self.assertEqual(self.requested(3), [LINES] * 3)
        time.sleep(1.2)
        self.assertEqual(len(self.server.requests), 3)
        # Three times the same pair is one entry.
        self.assertEqual([item["originalText"] for item in eventually(self.history)], ["\n".join(LINES)])

    def test_moves_by_means_of_the_window_manager(self):
        pane = self.pane_over_page()
        for number, (name, how) in enumerate([
                ("a drag with a modifier key", "mousemove 480 440 keydown alt mousedown 1 sleep 0.1 "
                 "mousemove 490 446 sleep 0.05 mousemove 500 452 sleep 0.1 mouseup 1 keyup alt"),
                ("a flick that is over before it is heard of",
                 "mousemove 480 440 mousedown 1 mousemove 470 430 mousemove 460 420 mouseup 1")]):
            with self.subTest(name):
                before = pane.frame
                for _ in range(3):  # on a busy machine the window manager may take longer than a user's own move lasts
                    self.screen.do(how)
                    if len(self.requested(number + 1, 5)) == number + 1:
                        break
                self.assertEqual(len(self.requested(number + 1)), number + 1)
                self.assertNotEqual(before, pane.frame)
                after = pane.frame
                self.screen.do("mousemove 400 400 sleep 0.1 mousemove 480 440")
                time.sleep(0.3)
                self.assertEqual(after, pane.frame, "the pane doesn't stick to the pointer")

    def test_taken_off_the_screen_by_the_window_manager(self):
        pane = self.pane_over_page()

        def is_viewable() -> bool:
            return "IsViewable" in self.screen.output("xwininfo", "-id", pane.window)

        def desktop_is_shown() -> bool:
            # The window manager itself misses its own shortcut now and then on a busy machine.
            if is_viewable():
                self.screen.do("key super+d")
            return eventually(lambda: not is_viewable(), 3)

        # A pane that is still being given the focus would come back at once.
        self.assertTrue(eventually(lambda: self.screen.output("xdotool", "getactivewindow").strip() == pane.window))
        time.sleep(0.5)
        self.assertTrue(any(desktop_is_shown() for _ in range(4)))
        time.sleep(0.3)
        self.screen.do("key alt+Return")  # shows a hidden pane, and no more
        self.assertTrue(eventually(is_viewable))
        time.sleep(0.5)
        self.assertEqual(self.server.requests, [])
        self.screen.do("key alt+t")
        self.assertTrue(eventually(lambda: not is_viewable()))

    def test_a_refusal_shows_its_card_and_can_be_retried(self):
        self.screen.preferences = {**self.screen.preferences, CONSENT: False}
        self.server.queued = [chat_server.too_many_requests]
        self.pane_over_page().double_click()
        self.shows("Retry", "First allow text to be sent")
        self.assertEqual(self.server.requests, [])
        self.screen.preferences = {**self.screen.preferences, CONSENT: True}
        self.screen.press("Retry")
        self.shows("Retry", "Compatible API error 429: Slow down, please")
        self.screen.press("Retry")
        self.shows(*map(str.upper, LINES))
        self.assertNotIn("Retry", self.screen.texts())

    def test_scales_and_several_monitors(self):
        for name, width, x in (("left", 600, 0), ("right", 680, 600)):
            subprocess.run(["xrandr", "--setmonitor", name, f"{width}/200x800/200+{x}+0", "none"],
                           env=self.screen.environment, check=True)
        for scale, pixels, place in (("1", 18, (100, 170, 480, 300)), ("1.25", 22, (620, 170, 640, 400)),
                                     ("2", 30, (610, 170, 660, 520))):
            with self.subTest(scale=scale):
                page = (place[0] + 10, place[1] - 10)
                sample_page.render(self.page, ["", *LINES], dark=True, size="680x540", pixels=pixels)
                window = self.screen.show_picture(self.page, *page)
                self.screen.environment["QT_SCALE_FACTOR"] = scale
                pane = self.screen.start_pane(*place)
                del self.screen.environment["QT_SCALE_FACTOR"]  # the page is in pixels
                self.overlays_lie_over_their_lines(pane, page, float(scale))
                for process in (pane.process, window):
                    self.screen.stop(process)


class WithoutACompositor(OnAScreen, OnADisplay):
    options = {"composited": False}

    def test_overlays_lie_over_their_lines(self):
        self.overlays_lie_over_their_lines(self.pane_over_page(), PAGE)
