"""What the tests on a display have in common: a server that translates, and the program set up to ask it."""
import json
import pathlib
import unittest

from chat_server import ChatServer, blocks_of
from screen import Screen, eventually

CONSENT = "privacy.remoteTranslation.v1.engine.7"


class Case(unittest.TestCase):
    def enter(self, context):
        value = context.__enter__()
        self.addCleanup(context.__exit__, None, None, None)
        return value

    def shows(self, *texts: str, seconds: float = 20) -> None:
        """Waits until the program shows texts with these parts."""
        found = eventually(lambda: all(any(text in name for name in self.screen.texts()) for text in texts), seconds)
        self.assertTrue(found, f"{texts} not in {self.screen.texts()}")


class OnADisplay(Case):
    """The program is started by the test."""

    options: dict = {}  # of the session

    @staticmethod
    def translate(text: str) -> str:
        return text.upper()

    def make_screen(self) -> Screen:
        return Screen(**self.options)

    def setUp(self):
        self.server = self.enter(ChatServer(translate=self.translate))
        self.screen = self.enter(self.make_screen())
        self.screen.preferences = self.engine() | {"targetLanguageCode": "en", "compatibleApiKey": "key"}

    def engine(self) -> dict:
        return {"translationEngine": 7, "compatibleBaseURL": self.server.base_url, "compatibleModel": "m", CONSENT: True}

    def requested(self, count: int, seconds: float = 60) -> list[list[str]]:
        """The lines of each request, once there are as many."""
        eventually(lambda: len(self.server.requests) >= count, seconds)
        return [[block["text"] for block in blocks_of(body)] for _, _, body in self.server.requests]

    @property
    def history_path(self) -> pathlib.Path:
        return self.screen.home / "data" / "Lucentra" / "history.json"

    def history(self) -> list[dict]:
        return json.loads(self.history_path.read_text(encoding="utf-8")) if self.history_path.exists() else []
