"""What the tests of a hostile desktop share: the program over a page, and the question whether it still does its work."""
import sample_page
from case import OnADisplay
from screen import Pane, eventually

PAGE = (200, 160)
PANE = (220, 170, 520, 300)
LINES = ["The lighthouse keeper writes", "a letter every evening", "and posts it on Sundays"]
BLOCK = "█"
SHORT, LONG = 4, 12  # blocks in a translation: two passes after each other are told apart by it
FIRST_LINE = 283  # the height on the screen at which the first line's translation lies
WITHIN_BOTH, BEYOND_SHORT = 260, 420  # points of it: within both lengths, and within the long one only


class HostileDesktop(OnADisplay):
    """A test starts with a page on the screen and a server that translates it; the program is started by the test."""

    options: dict = {"keyring": False}

    def setUp(self):
        super().setUp()
        self.length = LONG
        self.page = self.screen.home / "page.png"
        sample_page.render(self.page, ["", *LINES], dark=True, size="720x400")

    def translate(self, _text: str) -> str:
        return BLOCK * self.length

    def start(self) -> Pane:
        self.screen.show_picture(self.page, *PAGE)
        self.screen.do("mousemove 1000 700")
        self.pane = self.screen.start_pane(*PANE)
        return self.pane

    def is_bright(self, picture, x: int, y: int) -> bool:
        area = picture.crop((x, y - 2, x + 14, y + 2)).convert("L")
        return sum(area.getdata()) / (area.width * area.height) > 190

    def shows_translation(self, down: int = 0) -> bool:
        """On the screen, over the source line. `down`: how far below its usual place the page lies."""
        picture = self.screen.picture()
        return (self.is_bright(picture, WITHIN_BOTH, FIRST_LINE + down) and
                self.is_bright(picture, BEYOND_SHORT, FIRST_LINE + down) == (self.length == LONG))

    def expect_pass(self, why: str = "", trigger=None, seconds: float = 15) -> None:
        """A pass gives its overlays over the page, and the history has them."""
        self.length = SHORT if self.length == LONG else LONG
        asked = len(self.server.requests)
        (trigger or self.pane.double_click)()
        self.assertTrue(eventually(lambda: len(self.server.requests) > asked, seconds), f"a pass {why}")
        self.assertTrue(eventually(self.shows_translation, seconds), f"overlays {why}")
        self.expect_in_history(self.translation, why)

    @property
    def translation(self) -> str:
        return "\n".join([BLOCK * self.length] * len(LINES))

    def expect_in_history(self, translation: str, why: str = "") -> None:
        self.assertTrue(eventually(lambda: self.history() and self.history()[0]["translatedText"] == translation),
                        f"in the history {why}: {self.history()}")

    def end(self, process) -> None:
        """Without a word of farewell."""
        process.kill()
        process.wait(10)
