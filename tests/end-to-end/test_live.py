#!/usr/bin/env python3
"""Translations that follow the screen: another program plays a scene beneath the pane, and what it showed is compared with
what was sent, shown and recorded."""
import re
import subprocess

from case import OnADisplay
from chat_server import blocks_of, too_many_requests
from desktop import LUCENTRA
from screen import SHOW, eventually

PANE = (100, 100, 960, 540)


def letters(text: str) -> str:
    return re.sub(r"\W", "", text).lower()


class LiveTest(OnADisplay):
    def setUp(self):
        super().setUp()
        self.screen.preferences = {**self.screen.preferences, "triggerMode": 1, "liveRequestsPerMinute": 60}

    def play(self, scene: str) -> None:
        before, self.player = getattr(self, "player", None), self.screen.start(
            [str(SHOW), "--scene", scene, "--at", "100,100", "--turn"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL)
        self.assertEqual(self.player.stdout.readline(), b"shown\n")
        if before:
            before.terminate()
            before.wait()

    def turn(self) -> None:
        """The next text appears."""
        self.player.stdin.write(b"\n")
        self.player.stdin.flush()

    def switch(self, state: str) -> None:
        subprocess.run([str(LUCENTRA), "live", state], env=self.screen.environment, check=True, timeout=20)

    def sent(self) -> list[str]:
        return [block["text"] for _, _, body in list(self.server.requests) for block in blocks_of(body)]

    def places(self) -> dict[str, str]:
        """The overlays' places by their texts."""
        lines = self.screen.accessibility("places")[1].splitlines()
        return {line.split(" ", 4)[4]: line.rsplit(" ", line.count(" ") - 3)[0] for line in lines if line.count(" ") > 3}

    def test_translations_follow(self):
        self.play("video")
        self.screen.start_pane(*PANE)
        self.assertEqual(self.sent(), [], "it is off at first")
        self.server.queued = [too_many_requests]
        self.switch("on")
        self.has_subtitles()
        self.play("chat")
        self.grows()
        self.switch("off")
        self.turn()
        self.play("scroll")
        self.assertTrue(any("BRING THREE" in text for text in self.screen.texts()), "what is shown stays")
        self.assertFalse(any("weleave" in letters(text) for text in self.sent()), "it is off")
        self.switch("on")
        self.is_scrolled()

    def has_subtitles(self):
        self.shows("Slow down")
        self.shows("THE HARBOUR OPENS")
        self.assertFalse(any("Slow down" in text for text in self.screen.texts()), "all is well again")
        self.turn()
        self.shows("NOBODY KNOWS THE OLD")
        self.assertFalse(any("THE HARBOUR" in text for text in self.screen.texts()), "its line is gone")

    def grows(self):
        asked = len(self.sent())
        self.shows("THE HARBOUR OPENS")
        self.turn()
        self.shows("THE HARBOUR OPENS", "NOBODY KNOWS")
        before = self.places()
        self.turn()
        self.shows("BRING THREE LANTERNS")
        after = self.places()
        for text in ("THE HARBOUR OPENS AT SEVEN", "NOBODY KNOWS THE OLD CAPTAIN"):
            self.assertEqual(after[text], before[text], f"{text} has moved")
        texts = [letters(text) for text in self.sent()[asked:]]
        self.assertEqual(len(texts), len(set(texts)), f"sent twice: {texts}")
        self.assertTrue(eventually(lambda: letters(self.history()[0]["originalText"]) == "bringthreelanternstonight"),
                        "the new line alone is recorded")

    def is_scrolled(self):
        text = "KEEP YOUR COMPASS DRY"
        self.shows(text)
        left, top = (int(number) for number in self.places()[text].split()[:2])
        asked = len(self.sent())
        for _ in range(15):
            self.turn()
        self.assertTrue(eventually(lambda: self.places().get(text, "").startswith(f"{left} {top - 30} ")), (top, self.places()))
        self.assertFalse(any("compass" in letters(each) for each in self.sent()[asked:]), "sent again")
