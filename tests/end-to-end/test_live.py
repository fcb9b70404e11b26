#!/usr/bin/env python3
"""Translations that follow the screen: another program plays a scene beneath the pane, and what it showed is compared with
what was sent, shown and recorded."""
import re
import subprocess
import time

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
        self.player = self.screen.start([str(SHOW), "--scene", scene, "--at", "100,100", "--turn"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.assertEqual(self.player.stdout.readline(), b"shown\n")

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

    def test_a_growing_chat(self):
        self.play("chat")
        self.screen.start_pane(*PANE)
        self.assertEqual(self.sent(), [], "it is off at first")
        self.switch("on")
        self.shows("THE HARBOUR OPENS")
        self.turn()
        self.shows("THE HARBOUR OPENS", "NOBODY KNOWS")
        before = self.places()
        self.turn()
        self.shows("BRING THREE LANTERNS")
        after = self.places()
        for text in ("THE HARBOUR OPENS AT SEVEN", "NOBODY KNOWS THE OLD CAPTAIN"):
            self.assertEqual(after[text], before[text], f"{text} has moved")
        texts = [letters(text) for text in self.sent()]
        self.assertEqual(len(texts), len(set(texts)), f"sent twice: {texts}")
        originals = eventually(lambda: len(self.history()) == 3 and [entry["originalText"] for entry in self.history()])
        self.assertEqual(letters(originals[0]), "bringthreelanternstonight")
        self.switch("off")
        asked = len(self.server.requests)
        self.turn()
        time.sleep(1)
        self.assertEqual(len(self.server.requests), asked)
        self.assertTrue(any("BRING THREE" in text for text in self.screen.texts()), "what is shown stays")

    def test_subtitles_over_a_moving_picture(self):
        self.screen.preferences = {**self.screen.preferences, "isLive": True}
        self.server.queued = [too_many_requests]
        self.play("video")
        self.screen.start_pane(*PANE)
        self.shows("Slow down", seconds=30)
        self.shows("THE HARBOUR OPENS")
        self.assertFalse(any("Slow down" in text for text in self.screen.texts()), "all is well again")
        self.turn()
        self.shows("NOBODY KNOWS THE OLD")
        self.assertFalse(any("THE HARBOUR" in text for text in self.screen.texts()), "its line is gone")


if __name__ == "__main__":
    import unittest
    unittest.main()
