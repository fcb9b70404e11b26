#!/usr/bin/env python3
"""The history's window: what arrives in it, what is deleted and taken back, what is found, and what a restart keeps."""
import csv
import json
import time
import uuid

import sample_page
from case import OnADisplay
from screen import Pane, eventually

LINES = ["The lighthouse keeper writes", "a letter every evening"]


def entry(original: str, translation: str, seconds: int, starred: bool = False) -> dict:
    return {"id": str(uuid.uuid4()).upper(), "originalText": original, "translatedText": translation,
            "timestamp": seconds, "isStarred": starred}


class HistoryWindow(OnADisplay):
    options = {"composited": False}

    def setUp(self):
        super().setUp()
        self.screen.preferences |= {"triggerMode": 1}

    def store(self, entries: list[dict]) -> None:
        self.history_path.parent.mkdir(parents=True, exist_ok=True)
        self.history_path.write_text(json.dumps(entries), encoding="utf-8")

    def stored(self) -> list[str]:
        return [item["originalText"] for item in self.history()]

    def open_window(self) -> None:
        self.assertEqual(self.screen.lucentra("history").returncode, 0)
        self.window = self.screen.must(lambda: self.screen.windows("--name", "^Translation History$"), "window")[0]
        time.sleep(0.5)

    def restart(self, pane: Pane) -> Pane:
        self.assertEqual(self.screen.stop(pane.process), 0)
        return self.screen.start_pane(120, 170, 520, 300)

    def type_on(self, pane: Pane, text: str) -> None:
        self.shows("Text to translate")
        self.screen.do(f"windowactivate --sync {pane.window} sleep 0.5 key ctrl+a", f"type --delay 50 {text}")

    def test_a_pass_and_typed_text_arrive_and_a_restart_keeps_everything(self):
        page = self.screen.home / "page.png"
        sample_page.render(page, ["", *LINES], dark=True, size="720x400")
        self.screen.show_picture(page, 100, 160)
        pane = self.screen.start_pane(120, 170, 520, 300)
        self.open_window()
        self.shows("No translations yet")
        self.screen.do(f"windowmove {self.window} 760 60")
        pane.double_click()
        self.shows("THE LIGHTHOUSE KEEPER WRITES")
        self.screen.do(f"windowfocus --sync {self.window} key Down key ctrl+d")
        self.assertTrue(eventually(lambda: self.history()[0]["isStarred"]))
        self.screen.press("Switch to Manual Input")
        self.type_on(pane, "lamp")
        self.shows("LAMP")
        self.screen.press("Pause recording")
        self.shows("Recording is paused")
        self.type_on(pane, "wick")
        self.assertTrue(eventually(lambda: "wick" in json.dumps([body for _, _, body in self.server.requests])))
        self.screen.do(f"windowactivate --sync {self.window} sleep 1")
        frame = self.screen.output("xdotool", "getwindowgeometry", self.window).splitlines()[1:]
        before = self.history_path.read_bytes()
        self.assertEqual(self.stored(), ["lamp", "\n".join(LINES)])

        self.restart(pane)
        self.open_window()
        self.shows("THE LIGHTHOUSE KEEPER WRITES", "Starred", "LAMP")
        self.assertFalse([name for name in self.screen.texts() if "Recording is paused" in name])
        self.assertEqual(self.history_path.read_bytes(), before)
        self.assertEqual(self.screen.output("xdotool", "getwindowgeometry", self.window).splitlines()[1:], frame)

    def test_the_display_goes_away(self):
        self.store([entry(name, f"{name} x", 1000 - i) for i, name in enumerate(["alpha", "beta", "gamma"])])
        pane = self.screen.start_pane(40, 40)
        self.open_window()
        self.screen.do(f"windowfocus --sync {self.window} key Home key Delete")
        self.shows("1 entry deleted")
        next(process for process in self.screen.processes if process.args[0] == "Xvfb").kill()
        self.assertEqual(pane.process.wait(20), 2, "it ended in order")
        self.assertEqual(self.stored(), ["beta", "gamma"])

    def test_by_keys_alone(self):
        self.store([entry(name, f"{name} x", 1000 - i) for i, name in enumerate(["alpha", "beta", "gamma"])])
        self.screen.start_pane(40, 40)
        self.open_window()
        names = self.screen.texts()
        places = [names.index(name) for name in ("Edit", "Search history…", "alpha")]
        self.assertEqual(places, sorted(places), names)
        self.screen.do(f"windowfocus --sync {self.window} key Home key Down key Menu sleep 0.5 key Up key Return")
        self.shows("1 entry deleted")
        self.assertTrue(eventually(lambda: self.stored() == ["alpha", "gamma"]), self.stored())
        target = self.screen.home / "shown.json"
        self.screen.do("key ctrl+f", "type --delay 30 GAMMA")
        self.screen.do("key Tab key Tab key space sleep 0.5 key Down key Down key Return sleep 1",
                       f"type --delay 10 {target}")
        self.screen.do("key Return")
        self.assertTrue(eventually(target.exists))
        self.assertEqual([item["originalText"] for item in json.loads(target.read_text())], ["gamma"])

    def test_an_unreadable_file_is_told_of_and_kept(self):
        self.history_path.parent.mkdir(parents=True)
        self.history_path.write_text("[{broken")
        self.screen.start_pane(40, 40)
        self.open_window()
        self.shows("The earlier history could not be read. Its file is kept in the same folder.")
        self.screen.do(f"windowfocus --sync {self.window} key Escape")
        self.open_window()
        self.assertFalse([name for name in self.screen.texts() if "could not be read" in name])

    def test_exports_of_the_command_line(self):
        empty = self.screen.home / "empty.csv"
        self.assertEqual(self.screen.lucentra("export", str(empty)).returncode, 0)
        self.assertEqual(empty.read_text(encoding="utf-8").count("\n"), 1)
        self.store([entry("two\nlines", 'a "quote"', 86400, starred=True), entry("other", "x", 5)])
        before = self.history_path.read_bytes()
        target = self.screen.home / "out.csv"
        self.assertEqual(self.screen.lucentra("export", str(target), "--search", "TWO").returncode, 0)
        with target.open(newline="", encoding="utf-8") as file:
            self.assertEqual(list(csv.reader(file))[1:], [["2001-01-02T00:00:00Z", "two\nlines", 'a "quote"', "true"]])
        self.assertEqual(target.stat().st_mode & 0o077, 0)
        listed = json.loads(self.screen.lucentra("entries", "--json").stdout)
        self.assertEqual([item["originalText"] for item in listed], ["two\nlines", "other"])
        refused = self.screen.lucentra("export", str(self.screen.home / "no" / "out.csv"))
        self.assertEqual(refused.returncode, 2)
        self.assertIn("Could not export", refused.stderr)
        self.assertEqual(self.history_path.read_bytes(), before)
