#!/usr/bin/env python3
"""Typed text on the pane, as a user types it: into the editor, by keys, and read by what a screen reader reads."""
import time

from case import OnADisplay
from screen import eventually


class TypedText(OnADisplay):
    options = {"composited": False}

    def setUp(self):
        super().setUp()
        self.start()

    def start(self) -> None:
        self.pane = self.screen.start_pane(300, 200)
        self.screen.press("Switch to Manual Input")
        self.contents("Text to translate", "")

    def contents(self, name: str, text: str) -> None:
        """Waits until the named field holds the text."""
        def fields() -> dict[str, str]:
            lines = self.screen.accessibility("contents")[1].splitlines()
            return dict(line.split("\t", 1) for line in lines if "\t" in line)
        self.assertTrue(eventually(lambda: fields().get(name) == text, 20), fields())

    def sent(self, count: int) -> list[str]:
        """The typed texts of all requests, once there are as many."""
        eventually(lambda: len(self.server.requests) >= count, 20)
        return [body["messages"][1]["content"] for _, _, body in self.server.requests]

    def recorded(self) -> list[tuple[str, str]]:
        return [(item["originalText"], item["translatedText"]) for item in self.history()]

    def test_it_is_translated_copied_and_recorded(self):
        self.screen.do("type --delay 30 lighthouse")
        self.contents("Translation", "LIGHTHOUSE")
        self.assertEqual(self.sent(1), ["lighthouse"])

        self.screen.press("Copy Translation")
        self.shows("Copied")
        self.screen.do("key ctrl+a key ctrl+v")
        self.contents("Text to translate", "LIGHTHOUSE")
        self.assertEqual(self.sent(2), ["lighthouse", "LIGHTHOUSE"])
        self.assertTrue(eventually(lambda: self.recorded() == [("LIGHTHOUSE", "LIGHTHOUSE"),
                                                               ("lighthouse", "LIGHTHOUSE")]), self.recorded())

        self.screen.do("key alt+Return")  # translates what is typed, not the screen
        self.assertEqual(self.sent(3)[2:], ["LIGHTHOUSE"])

        self.screen.press("Back to Area Translation")
        self.screen.press("Switch to Manual Input")
        self.contents("Text to translate", "")

    def test_a_note_says_why_nothing_was_translated(self):
        self.screen.stop(self.pane.process)
        self.screen.preferences |= {"translationEngine": 0, "targetLanguageCode": "ja",
                                    "targetLanguageFollowsInterface": False}
        self.screen.lucentra("languages")  # waits until the phrases of the installed programs are known
        self.start()
        self.screen.type("the quiet keeper of an unknown tower")
        hint = "This computer has no model for this text yet."

        def is_noted() -> bool:
            self.screen.do("key alt+Return")  # once more: with many programs installed, their phrases take a while
            return eventually(lambda: any(text.startswith(hint) for text in self.screen.texts()), 4)
        self.assertTrue(eventually(is_noted, 240), self.screen.texts())
        self.screen.do("key ctrl+a key BackSpace")
        self.assertTrue(eventually(lambda: not any(text.startswith(hint) for text in self.screen.texts())), "it goes")

    def test_what_an_input_method_composes(self):
        self.screen.stop(self.pane.process)
        self.screen.environment["QT_IM_MODULE"] = "ibus"
        self.screen.quietly(["ibus-daemon", "--panel", "disable"])
        self.screen.must(lambda: "hangul" in self.screen.output("ibus", "list-engine"), "the input method", 20)
        self.start()
        self.screen.must(lambda: self.screen.output("ibus", "engine", "hangul") == ""
                         and self.screen.output("ibus", "engine") == "hangul", "its engine")
        self.screen.do("key shift+space sleep 0.3 type --delay 80 gks")  # one syllable, which isn't done
        time.sleep(1.5)
        self.assertEqual(self.sent(0), [])
        self.contents("Text to translate", "")
        self.screen.do("key Escape")
        self.contents("Text to translate", "한")
        self.contents("Translation", "한")
        self.assertEqual(self.sent(1), ["한"])
        self.screen.do("key Escape")
        self.assertTrue(eventually(lambda: not self.screen.texts()), "the second Escape hides the pane")
