"""The native pane over another program's window in sessions of sway and KWin, translating through a local server."""
import shutil
import time
import unittest

from PIL import Image, ImageChops

from case import Case, OnADisplay
from sample_page import render
from screen import eventually
from wayland import KWin, NestedSway, Sway, WaylandSession

LINES = ["The lighthouse keeper writes", "one letter every evening", "and posts it on Sundays"]
SCREEN = (1280, 800)
PANE = (400, 260, 880, 540)  # at first, in the middle of the output
HELLO = ("key 35", "key 18", "key 38", "key 38", "key 24")  # by the kernel's numbers


class NativePane:
    """What must hold with each compositor. One session does it all, since each takes seconds to start."""

    def make_screen(self) -> WaylandSession:
        return self.session_type(keyring=False, **self.options)

    def setUp(self):
        super().setUp()
        text = self.screen.home / "text.png"
        render(text, LINES, dark=True, size="440x220")
        self.page = Image.new("RGB", SCREEN, "#203040")
        with Image.open(text) as lines:
            self.page.paste(lines.convert("RGB"), (PANE[0] + 20, PANE[1] + 46))
        path = self.screen.home / "page.png"
        self.page.save(path)
        self.screen.show_picture(path)
        self.program = self.screen.start_pane()

    def requests(self, count: int) -> list[list[str]]:
        self.requested(count, 25)
        time.sleep(0.5)  # for more than that
        return self.requested(count)

    def pane(self) -> tuple[int, int, int, int]:
        """Where the first output shows anything but the page."""
        clear_of_pointer = (0, 0, SCREEN[0] - 4, SCREEN[1] - 4)
        shown = self.screen.picture().crop(clear_of_pointer)
        return ImageChops.difference(shown, self.page.crop(clear_of_pointer)).convert("L").point(lambda value: 255 * (value > 8)).getbbox()

    def see_pane(self, expected: tuple[int, int, int, int]) -> None:
        self.screen.do("move 1279 799")

        def is_there() -> bool:
            return all(abs(a - b) <= 2 for a, b in zip(self.pane() or (0, 0, 0, 0), expected))
        self.assertTrue(eventually(is_there), f"{self.pane()} instead of {expected}")

    def visit_other_output(self):
        """Where there is one."""

    def press_hotkey(self):
        """Where the desktop has a service for hotkeys."""

    def test_pane(self):
        session = self.screen
        self.see_pane(PANE)
        plain = session.picture()
        for _ in range(3):  # a busy compositor may deliver the second click too late for a double click
            session.click(640, 510, times=2)
            if eventually(lambda: self.server.requests, 10):
                break
        self.assertEqual(self.requests(1)[:1], [LINES])
        self.assertTrue(eventually(lambda: ImageChops.difference(session.picture(), plain).crop(
            (PANE[0] + 20, PANE[1] + 46, PANE[2] - 20, PANE[3] - 20)).getbbox()), "the overlays")
        for _ in range(3):  # over its own overlays
            self.assertEqual(session.lucentra("translate").returncode, 0)
            self.assertEqual(set(map(tuple, self.requests(len(self.server.requests) + 1))), {tuple(LINES)})

        refused = session.lucentra("live", "on")
        self.assertTrue(refused.returncode == 2 and "would blink" in refused.stderr, refused)

        count = len(self.server.requests)
        session.drag((640, 510), (652, 502))
        self.see_pane((412, 252, 892, 532))
        self.assertEqual(self.requests(count + 1)[count:], [LINES], "one pass for a drag")
        session.drag((888, 528), (918, 558))
        self.see_pane((412, 252, 922, 562))
        self.assertEqual(self.requests(count + 2)[count + 1:], [LINES], "one pass for another size")

        self.visit_other_output()
        session.click(922 - 140, 272)  # typed text
        time.sleep(1)
        session.click(600, 330)
        session.do(*HELLO)
        self.assertTrue(eventually(lambda: b"hello" in str(self.server.requests[-1]).encode(), 15), "typed text")
        session.click(422, 272)  # close
        session.do("move 1279 799")
        self.assertTrue(eventually(lambda: self.pane() is None), "hidden")
        self.press_hotkey()
        self.assertIsNone(self.program.poll())
        self.assertEqual(session.lucentra("quit").returncode, 0)
        self.assertEqual(self.program.wait(20), 0)


class OnSway(NativePane, OnADisplay):
    session_type = Sway
    options = {"sizes": ("1280x800", "800x800")}

    def visit_other_output(self):
        def other_output() -> Image.Image:
            return self.screen.picture().crop((1280, 0, 2080, 800))
        empty = other_output()
        self.screen.drag((640, 510), (1640, 510))
        self.assertTrue(eventually(lambda: self.pane() is None and ImageChops.difference(other_output(), empty).getbbox()))
        self.screen.drag((1640, 510), (640, 510))
        self.see_pane((412, 252, 922, 562))


class WithoutOutputs(Case):
    def test_the_pane_comes_back_with_an_output(self):
        session = self.enter(NestedSway(keyring=False))
        empty = session.picture()

        def pane() -> tuple[int, int, int, int] | None:
            return ImageChops.difference(session.picture(), empty).getbbox()
        program = session.start_pane()
        before = pane()
        session.close_output()
        self.assertEqual(session.lucentra("toggle").returncode, 0)
        self.assertEqual(session.lucentra("toggle").returncode, 0)
        session.output("swaymsg", "create_output")
        session.must(session.outputs, "another output")
        self.assertTrue(eventually(lambda: pane() == before), f"{pane()} instead of {before}")
        self.assertEqual(session.lucentra("quit").returncode, 0)
        self.assertEqual(program.wait(20), 0)


@unittest.skipUnless(shutil.which("kwin_wayland"), "KWin isn't installed")
class OnKWin(NativePane, OnADisplay):
    session_type = KWin

    def press_hotkey(self):
        self.screen.do("key 56 20")
        self.see_pane((412, 252, 922, 562))
