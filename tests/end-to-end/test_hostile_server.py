#!/usr/bin/env python3
"""A translation service that means harm: markup in its errors, endless answers, control characters, resets, and one
byte a second. The pane shows what it says as text, the history stays whole, and quitting waits for none of it."""
import json
import os
import pathlib
import socket
import struct
import time

import sample_page
from chat_server import by_id, completion
from hostile import HostileDesktop
from screen import eventually

MARKUP = '<img src="/dev/zero"><a href="file:///etc/passwd">here</a> &amp; '
ENDLESS = 5 << 20  # characters of 3 bytes: an answer of nearly 16 MiB
FULL = [{"id": f"6F9619FF-8B86-D011-B42D-{number:012X}", "originalText": f"old {number}", "translatedText": "kept",
         "timestamp": 1000 - number, "isStarred": False} for number in range(500)]


def error_with_markup(_server, _body):
    return 400, {"error": {"message": MARKUP * 50}}


def with_text(text: str):
    def answer(_server, body: dict):
        blocks = json.loads(body["messages"][1]["content"]) if "response_format" in body else []
        content = json.dumps({"translations": [{"id": block["id"], "text": text} for block in blocks[:1]]},
                             ensure_ascii=False)
        return 200, json.dumps(completion(content if blocks else text), ensure_ascii=False).encode()
    return answer


def reset(handler) -> None:
    """Ends the connection as a crash does."""
    handler.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    handler.connection.close()


def a_byte_a_second(handler) -> None:
    handler.wfile.write(b"HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: 1000000\r\n\r\n")
    try:
        while True:
            handler.wfile.write(b" ")
            time.sleep(1)
    except OSError:
        pass  # nobody listens any more


class HostileServer(HostileDesktop):
    def ask(self, answer) -> None:
        asked = len(self.server.requests)
        self.server.answer = answer
        self.assertEqual(self.screen.lucentra("translate").returncode, 0)
        self.assertTrue(eventually(lambda: len(self.server.requests) > asked, 20), "a pass")

    def tool_tip(self) -> str | None:
        """The window of it. The pane's and the session's others are as they were."""
        windows = self.screen.output("xdotool", "search", "--onlyvisible", "--class", "lucentra").split()
        return next((window for window in windows if window not in self.windows), None)

    def test_everything_that_a_server_can_do(self):
        self.history_path.parent.mkdir(parents=True)
        self.history_path.write_text(json.dumps(FULL), encoding="utf-8")
        self.start()
        self.windows = self.screen.output("xdotool", "search", "--onlyvisible", "--class", "lucentra").split()

        self.ask(error_with_markup)
        self.assertTrue(eventually(lambda: any("Retry" in name for name in self.screen.focused()), 20),
                        f"a card: {self.screen.focused()}")
        self.screen.do("mousemove 470 300 sleep 0.2 mousemove 474 304")
        self.assertTrue(eventually(self.tool_tip, 10), "a tool tip with all of the message")
        time.sleep(1)  # what it draws, it has drawn
        self.screen.picture().save(pathlib.Path(os.environ.get("PICTURES", str(self.screen.home))) / "tool-tip.png")
        self.assertIsNone(self.pane.process.poll(), self.screen.log())
        self.screen.do("mousemove 1000 700")

        for text in ("長" * ENDLESS, "\x01" * (2 << 20), "\u202e\u0000\x1b[2J" * 1000):
            self.ask(with_text(text))
            self.assertTrue(eventually(lambda: self.history()[0]["translatedText"].startswith(text[:3]), 60),
                            self.screen.log())
        kept = self.history()
        self.assertEqual([entry["id"] for entry in kept[-len(FULL):]], [entry["id"] for entry in FULL])
        self.assertLess(max(len(entry["translatedText"]) for entry in kept), (1 << 16) + 1)
        self.assertIn("was cut", self.screen.log())

        self.ask(lambda _server, _body: (200, reset))
        self.shows("connection to the server")
        self.assertEqual(self.screen.lucentra("history").returncode, 0)
        self.shows("\x01\x01\x01", seconds=30)
        self.server.answer = with_text("x" * 200_000)
        self.assertEqual(self.screen.lucentra("settings").returncode, 0)
        self.screen.must(lambda: self.screen.accessibility("tab", "Translation")[0] == 0, "the tab", 30)
        self.screen.press("Test Connection")
        self.shows("Connection succeeded: " + "x" * 100, seconds=30)
        self.assertLess(max(len(text) for text in self.screen.texts() if "succeeded" in text), 1000)

        self.server.answer = by_id
        self.expect_pass("after all that", lambda: self.screen.lucentra("translate"), 30)
        self.ask(lambda _server, _body: (200, a_byte_a_second))
        self.quit()
        self.assertEqual(len(self.history()), len(kept) + 1)

    def quit(self) -> None:
        """While something is under way that takes much longer than the second that the program allows itself. The limit
        leaves a busy computer three times that."""
        self.assertEqual(self.screen.lucentra("quit").returncode, 0)
        begun = time.monotonic()
        self.assertEqual(self.pane.process.wait(3), 0)
        print(f"quit after {time.monotonic() - begun:.2f} s", flush=True)

    def processor_seconds(self) -> float:
        fields = pathlib.Path(f"/proc/{self.pane.process.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def test_quitting_while_a_full_screen_is_read(self):
        sample_page.render(self.page, ["燈塔看守人每天晚上寫一封信，星期天寄出去。" * 4] * 36, size="1280x800", pixels=14)
        self.start()
        self.pane.place(0, 0, 1280, 780)
        before = self.processor_seconds()
        self.screen.lucentra("translate")
        self.assertTrue(eventually(lambda: self.processor_seconds() > before + 0.5), "it is reading")
        self.assertEqual(self.server.requests, [])
        self.quit()

    def test_quitting_while_an_installed_translator_hangs(self):
        programs = self.screen.home / "programs"
        for name in ("bin/apertium-wblank-mode", "share/apertium/modes/eng-spa.mode"):
            (programs / name).parent.mkdir(parents=True)
            (programs / name).write_text(f"#!/bin/sh\necho 'touch {programs}/asked; exec sleep 60'\n")
            (programs / name).chmod(0o755)
        self.screen.environment["PATH"] = f"{programs}/bin:{self.screen.environment['PATH']}"
        self.screen.preferences = {"translationEngine": 0, "targetLanguageCode": "es", "targetLanguageFollowsInterface": False}
        self.start()
        self.screen.lucentra("translate")
        self.assertTrue(eventually((programs / "asked").exists, 30), self.screen.log())
        self.quit()
