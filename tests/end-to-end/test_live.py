#!/usr/bin/env python3
"""Translations that follow the screen: another program plays a scene beneath the pane, and what it showed is compared with
what was sent, shown and recorded."""
import re
import subprocess
import time

from case import OnADisplay
from chat_server import blocks_of, too_many_requests
from desktop import LUCENTRA
from screen import eventually

PANE = (100, 100, 960, 540)


def letters(text: str) -> str:
    return re.sub(r"\W", "", text).lower()


class LiveTest(OnADisplay):
    def setUp(self):
        super().setUp()
        self.screen.preferences = {**self.screen.preferences, "triggerMode": 1, "liveRequestsPerMinute": 60}

    def play(self, scene: str) -> subprocess.Popen:
        from screen import SHOW
        return self.screen.start_and_wait([str(SHOW), "--scene", scene, "--at", "100,100"])

    def switch(self, state: str) -> None:
        subprocess.run([str(LUCENTRA), "live", state], env=self.screen.environment, check=True, timeout=20)

    def sent(self) -> list[str]:
        return [block["text"] for _, _, body in list(self.server.requests) for block in blocks_of(body)]

    def places(self) -> dict[str, str]:
        """The overlays' places by their texts."""
        lines = self.screen.accessibility("places")[1].splitlines()
        return {line.split(" ", 4)[4]: line.rsplit(" ", line.count(" ") - 3)[0] for line in lines if line.count(" ") > 3}

    def test_a_growing_chat(self):
        player = self.play("chat")
        self.screen.start_pane(*PANE)
        time.sleep(1)
        self.assertEqual(self.sent(), [], "it is off at first")
        self.switch("on")
        self.shows("THE HARBOUR OPENS", "NOBODY KNOWS")
        before = self.places()
        self.shows("BRING THREE LANTERNS", "WE LEAVE BEFORE")
        after = self.places()
        for text, place in before.items():
            if text.isupper():
                self.assertEqual(after.get(text), place, f"{text} has moved")
        texts = [letters(text) for text in self.sent()]
        self.assertEqual(len(texts), len(set(texts)), f"sent twice: {texts}")
        # Off: nothing more is sent, and what is shown stays.
        self.switch("off")
        time.sleep(0.5)
        asked = len(self.server.requests)
        time.sleep(2)
        self.assertEqual(len(self.server.requests), asked)
        self.assertIn("WE LEAVE BEFORE", " ".join(self.screen.texts()))
        entries = [entry["original"] for entry in self.history()]
        self.assertTrue(any(letters(entry) == letters("Bring three lanterns tonight") for entry in entries), entries)
        player.terminate()

    def test_subtitles_over_a_moving_picture(self):
        self.screen.preferences = {**self.screen.preferences, "isLive": True}
        self.server.queued = [too_many_requests]
        self.play("video")
        self.screen.start_pane(*PANE)
        self.assertTrue(eventually(lambda: "Slow down" in " ".join(self.screen.texts()), 15), "the trouble is told")
        for text in ("BRING THREE LANTERNS", "HER LETTER NEVER"):
            self.shows(text)
        gone = eventually(lambda: not any("BRING THREE" in text for text in self.screen.texts()), 5)
        self.assertTrue(gone, "its line is gone")
        for text in self.sent():
            self.assertNotIn("\n", text)


if __name__ == "__main__":
    import unittest
    unittest.main()
