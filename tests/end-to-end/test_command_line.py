#!/usr/bin/env python3
"""The command line as a user types it: pictures and texts through a real local chat-completions server, with a real
keyring and a bus of the tests' own."""
import json
import os
import pathlib
import pty
import stat
import subprocess

from PIL import Image, ImageOps

import chat_server
import sample_page
from chat_server import ChatServer
from case import CONSENT, Case
from desktop import LUCENTRA, Session
from screen import eventually

KEY = "sk-test-äöü-4711"


class CommandLine(Case):
    """Engine 7 with consent and a key in the keyring, against a local server."""

    def setUp(self):
        self.session = self.enter(Session())
        self.server = self.enter(ChatServer())
        self.session.preferences = {"translationEngine": 7, "compatibleBaseURL": self.server.base_url,
                                    "compatibleModel": "test-model", "targetLanguageCode": "en", CONSENT: True}
        subprocess.run(["secret-tool", "store", "--label=key", "service", "com.tarnby.lucentra.apiKeys",
                        "account", "compatibleApiKey"], input=KEY, encoding="utf-8",
                       env=self.session.environment, check=True)
        self.picture = self.session.home / "page.png"

    def succeeds(self, *arguments: str) -> str:
        answer = self.session.lucentra(*arguments)
        self.assertEqual(answer.returncode, 0, answer.stderr)
        return answer.stdout

    def fails(self, code: int, *arguments: str) -> str:
        answer = self.session.lucentra(*arguments)
        self.assertEqual(answer.returncode, code, answer.stdout + answer.stderr)
        self.assertEqual(answer.stdout, "")
        self.assertNotIn(KEY, answer.stderr)
        return answer.stderr

    def test_recognize(self):
        sample_page.render(self.picture, sample_page.ENGLISH)
        answer = json.loads(self.succeeds("recognize", str(self.picture)))
        self.assertEqual((answer["width"], answer["height"]), (960, 560))
        self.assertEqual([block["text"] for block in answer["blocks"]], sample_page.ENGLISH)
        for block in answer["blocks"]:
            x, y, width, height = block["normBox"]
            self.assertTrue(0 <= x and 0 <= y and x + width <= 1 and y + height <= 1, block)
        self.assertEqual(self.server.requests, [])

    def test_a_picture_gets_its_overlays(self):
        sample_page.render(self.picture, sample_page.ENGLISH)
        output = self.session.home / "translated.png"
        answer = json.loads(self.succeeds("image", str(self.picture), "--output", str(output), "--json", "--timing"))
        self.assertEqual((answer["engine"], answer["target"]), (7, "en"))
        self.assertEqual([block["text"] for block in answer["blocks"]], sample_page.ENGLISH)
        self.assertEqual([block["translation"] for block in answer["blocks"]],
                         [f"«{line}»" for line in sample_page.ENGLISH])
        for index, block in enumerate(answer["blocks"]):
            x, y, width, height = block["rect"]
            # the lines were drawn from (40, 40) on, three font sizes apart; the pane begins 2 points outside
            self.assertAlmostEqual(x, 42, delta=4)
            self.assertAlmostEqual(y + height, 64 + 66 * index, delta=8)
            self.assertGreaterEqual(block["frame"][2], width)
            self.assertGreaterEqual(block["lines"], 1)
            self.assertGreaterEqual(block["fontSize"], 10)
        self.assertEqual(set(answer["milliseconds"]), {"decode", "recognize", "translate", "layout"})
        self.assertEqual(output.read_bytes()[:8], b"\x89PNG\r\n\x1a\n")
        self.assertEqual(stat.S_IMODE(output.stat().st_mode), 0o600)
        path, headers, body = self.server.requests[0]
        self.assertEqual(path, "/v1/chat/completions")
        self.assertEqual(headers["Authorization"].encode("latin-1").decode(), f"Bearer {KEY}")
        self.assertEqual(body["model"], "test-model")

    def test_failures_say_what_the_pane_would_show(self):
        sample_page.render(self.picture, sample_page.ENGLISH)
        output = self.session.home / "translated.png"
        arguments = ("image", str(self.picture), "--output", str(output))
        self.server.queued.append(chat_server.too_many_requests)
        message = self.fails(2, *arguments)
        self.assertIn("429", message)
        self.assertIn("Slow down, please", message)
        self.session.preferences = {**self.session.preferences, CONSENT: False}
        self.assertIn("⚠️", self.fails(2, *arguments))
        self.assertIn("⚠️", self.fails(2, "text", "Good morning"))
        self.assertEqual(len(self.server.requests), 1)
        self.assertFalse(output.exists())
        sample_page.render(self.picture, [])
        self.assertNotEqual(self.fails(2, *arguments), "")

    def test_a_text(self):
        self.assertEqual(self.succeeds("text", "Good morning"), "«Good morning»\n")
        self.assertIn("英文", self.server.requests[0][2]["messages"][0]["content"])
        self.succeeds("text", "Good morning", "--target", "ja")
        self.assertIn("日文", self.server.requests[1][2]["messages"][0]["content"])
        self.assertEqual(self.session.preferences["targetLanguageCode"], "en")
        self.assertFalse((self.session.home / "data" / "Lucentra").exists())

    def test_a_text_from_standard_input(self):
        def read(given: bytes) -> subprocess.CompletedProcess:
            return subprocess.run([str(LUCENTRA), "text", "-"], env=self.session.environment, input=given,
                                  capture_output=True)

        self.assertEqual(read("Grüß Gott\nWelt\n".encode()).stdout.decode(), "«Grüß Gott\nWelt»\n")
        self.server.translate = lambda text: "⚠️ Achtung"  # a translation, though it looks like a message
        self.assertEqual((read(b"Warning").returncode, read(b"Warning").stdout.decode()), (0, "⚠️ Achtung\n"))
        sent = len(self.server.requests)
        for given, said in ((b"\xff\xfe", "UTF-8"), (b"a" * (1024 * 1024 + 1), "too long"), (b" \n", "There is no text")):
            answer = read(given)
            self.assertEqual(answer.returncode, 2)
            self.assertIn(said, answer.stderr.decode())
        self.assertEqual(len(self.server.requests), sent)

    def test_its_memory_is_closed_to_others(self):
        user = {"user": 65534} if os.geteuid() == 0 else {}
        process = self.session.start([str(LUCENTRA), "text", "-"], stdin=subprocess.PIPE, stderr=subprocess.DEVNULL, **user)
        files = pathlib.Path(f"/proc/{process.pid}")
        # The system gives the files of such a process to root.
        self.assertTrue(eventually(lambda: (files / "maps").stat().st_uid == 0 != files.stat().st_uid))
        self.assertRegex((files / "limits").read_text(), r"Max core file size +0 +0 ")
        self.assertEqual(int((files / "coredump_filter").read_text(), 16), 0)

    def test_the_connection_test(self):
        self.assertIn("這是一個連線測試。", self.succeeds("test-connection"))
        self.server.translate = lambda text: text
        self.assertNotEqual(self.fails(2, "test-connection"), "")

    def test_pictures_that_are_none(self):
        names = ("empty.png", "broken.png", "huge.bmp", "other-format.png", "drawing.png")
        empty, broken, huge, other, drawing = (self.session.home / name for name in names)
        empty.touch()
        other.write_bytes(b"P5 40 40 255\n" + bytes(1600))
        drawing.write_text('<svg xmlns="http://www.w3.org/2000/svg" width="40" height="40"/>')
        sample_page.render(broken, sample_page.ENGLISH)
        broken.write_bytes(broken.read_bytes()[:300])
        header = b"BM" + (0).to_bytes(4, "little") + bytes(4) + (54).to_bytes(4, "little") + (40).to_bytes(4, "little")
        huge.write_bytes(header + (60000).to_bytes(4, "little") * 2 + (1).to_bytes(2, "little")
                         + (24).to_bytes(2, "little") + bytes(24))
        for path in (empty, broken, huge, other, drawing, self.session.home, self.session.home / "missing.png", pathlib.Path("/dev/zero")):
            with self.subTest(path=path.name):
                self.assertIn(str(path), self.fails(2, "recognize", str(path)))

    def test_a_picture_through_a_pipe(self):
        sample_page.render(self.picture, sample_page.ENGLISH)
        piped = subprocess.run(["sh", "-c", 'cat "$1" | exec "$0" recognize /dev/stdin', str(LUCENTRA),
                                str(self.picture)], env=self.session.environment, check=True, capture_output=True)
        self.assertEqual(json.loads(piped.stdout), json.loads(self.succeeds("recognize", str(self.picture))))

    def test_nothing_is_sent_for_an_answer_that_cannot_be_kept(self):
        sample_page.render(self.picture, sample_page.ENGLISH)
        os.mkfifo(self.session.home / "pipe")
        for output in ("page.xyz", "none/page.png", ".", "pipe"):
            with self.subTest(output):
                self.fails(2, "image", str(self.picture), "--output", str(self.session.home / output))
        self.fails(1, "image", str(self.picture), "--output", "--json")
        self.assertEqual(self.server.requests, [])
        closed = subprocess.run(["sh", "-c", 'exec "$0" --version >&-', str(LUCENTRA)], env=self.session.environment,
                                check=False)
        self.assertEqual(closed.returncode, 2)

    def test_control_characters_of_a_server_stay_off_the_terminal(self):
        self.server.queued = [lambda *_: (401, {"error": {"message": "a\x1b]0;title\x07b"}})]
        self.assertIn("a\ufffd]0;title\ufffdb", self.fails(2, "text", "Good morning"))
        said = "a\x1b]0;title\x07\u202eb"
        self.server.translate = lambda text: said
        self.assertEqual(self.succeeds("text", "Good morning"), said + "\n")  # no terminal reads this
        screen, terminal = pty.openpty()
        self.addCleanup(os.close, screen)
        subprocess.run([str(LUCENTRA), "text", "Good morning"], env=self.session.environment, stdout=terminal, check=True)
        os.close(terminal)
        self.assertEqual(os.read(screen, 100).decode(), "a\ufffd]0;title\ufffd\ufffdb\r\n")

    def test_ink_on_nothing(self):
        sample_page.render(self.picture, sample_page.ENGLISH)
        for name, dark in (("dark ink", False), ("light ink", True)):
            with self.subTest(name):
                sample_page.render(self.picture, sample_page.ENGLISH, dark=dark)
                with Image.open(self.picture) as page:
                    grey = page.convert("L")
                    ink = grey if dark else ImageOps.invert(grey)
                    transparent = Image.new("RGBA", page.size, (200, 200, 200, 0) if dark else (20, 20, 20, 0))
                    transparent.putalpha(ink.point(lambda value: 255 if value > 128 else 0))
                    transparent.save(self.picture)
                answer = json.loads(self.succeeds("recognize", str(self.picture)))
                self.assertEqual([block["text"] for block in answer["blocks"]], sample_page.ENGLISH)
