#!/usr/bin/env python3
"""Translation models as a user gets them, by commands and in the settings window, from a local server with faults."""
import os
import subprocess
import unittest

from case import Case
from desktop import LUCENTRA, Session
from model_server import ModelServer
from screen import Screen, eventually
from test_hostile_start import make_private_mounts

MODEL = "en-ja/model.enja.intgemm.alphas.bin"


class Models(Case):
    def begin(self, session: Session) -> None:
        self.session, self.server = self.enter(session), self.enter(ModelServer())
        for pair in ("en-ja", "ja-en", "ko-en", "en-zh"):
            self.server.offer(pair)
        self.session.preferences = self.server.preferences | {"targetLanguageCode": "ja",
                                                              "targetLanguageFollowsInterface": False}
        self.folder = self.session.home / "data" / "Lucentra" / "models"

    def installed(self) -> set[str]:
        return {path.name for path in self.folder.iterdir() if not path.is_file()} if self.folder.exists() else set()

    def expect_content(self, pair: str) -> None:
        for name, content in self.server.content.items():
            if name.startswith(f"{pair}/"):
                self.assertEqual((self.folder / name).read_bytes(), content, name)

    def stall(self, part: str) -> None:
        self.server.faults = {part: "stall"}
        self.server.stalled.clear()
        self.server.released.clear()

    def go_on(self) -> None:
        self.server.faults = {}
        self.server.released.set()
        self.server.requests.clear()


class Commands(Models):
    def setUp(self):
        self.begin(Session(keyring=False))

    def models(self, *arguments: str, fails: bool = False) -> str:
        answer = self.session.lucentra("models", *arguments)
        self.assertEqual(answer.returncode, 2 if fails else 0, answer.stdout + answer.stderr)
        return answer.stderr if fails else answer.stdout

    def test_install_and_remove(self):
        listed = self.models()
        self.assertIn("none", listed)
        self.assertRegex(listed, r"en-ja +1 MB  2\.0 base  COMET 0\.90\n")
        for pair, models in [("en-ja", {"en-ja"}), ("ko-ja", {"en-ja", "ko-en"}),
                             ("en-zh-Hant", {"en-ja", "ko-en", "en-zh"})]:
            with self.subTest(pair):
                self.models("install", pair)
                self.assertEqual(self.installed(), models)
        for model in self.installed():
            self.expect_content(model)
        self.assertEqual({key for _, headers in self.server.requests for key in headers}, {"Host", "User-Agent", "Accept"})
        self.assertIn("newest", self.models("install", "en-ja"))
        self.server.offer("en-ja", version="2.1")
        self.models("install", "en-ja")
        self.expect_content("en-ja")
        self.assertRegex(self.models(), r"en-ja +1 MB  2\.1 base\n")
        kept = (self.folder / "en-ja").rename(self.session.home / "kept")
        (self.folder / "en-ja").symlink_to(kept)
        self.models("remove", "en-ja")
        self.assertEqual(len(list(kept.iterdir())), 4)  # of a link, only the link is removed
        self.assertEqual(self.installed(), {"ko-en", "en-zh"})
        self.assertIn("isn't installed", self.models("remove", "en-ja", fails=True))
        self.assertIn("no translation model", self.models("install", "en-ko", fails=True))
        self.assertIn("Not a pair", self.models("install", "../x", fails=True))

    def test_faults(self):
        for part, fault, message in [("/records", 500, "HTTP 500"), ("/records", lambda _: b"<html>", "list of models"),
                                     ("lex", 404, "HTTP 404"), ("lex", lambda data: data + b"!", "wrong size"),
                                     ("lex", lambda data: data[:-1] + b"!", "wrong content"),
                                     ("lex", lambda data: data[:-1], "interrupted"), ("lex", "cut", "connection")]:
            with self.subTest(message):
                self.server.faults = {part: fault}
                self.assertIn(message, self.models("install", "en-ja", fails=True))
                self.assertNotIn("en-ja", self.installed())
        # A hash that matches, of what isn't a packed file.
        record = next(record for record in self.server.records if "model.enja" in record["name"])
        unpacked = record["decompressedHash"]
        record["decompressedHash"] = "0" * 64
        self.server.faults = {}
        self.assertIn("wrong content", self.models("install", "en-ja", fails=True))
        record["decompressedHash"] = unpacked

        # What has arrived is continued, also after the process was killed.
        self.stall("model.enja")
        program = self.session.start([str(LUCENTRA), "models", "install", "en-ja"], stdout=subprocess.DEVNULL,
                                     stderr=subprocess.DEVNULL)
        self.assertTrue(self.server.stalled.wait(20))
        half = len(self.server.files["main/2.0/base/model.enja.intgemm.alphas.bin.zst"]) // 2
        arrived = self.folder / ".unfinished-en-ja"
        self.assertTrue(eventually(lambda: half in [path.stat().st_size for path in arrived.iterdir()]))
        self.assertIn("Another download", self.models("install", "ja-en", fails=True))
        program.kill()
        program.wait()
        self.assertIn("not complete", self.models())
        self.go_on()
        self.models("install", "en-ja")
        ranges = [headers.get("Range") for path, headers in self.server.requests if "model.enja" in path]
        self.assertEqual(ranges, [f"bytes={half}-"])
        self.expect_content("en-ja")
        self.assertEqual(self.installed(), {"en-ja"})

    @unittest.skipIf(os.geteuid(), "only root mounts a small disk")
    def test_a_full_disk(self):
        if not make_private_mounts():
            self.skipTest("may not mount")
        self.folder.mkdir(parents=True)
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=18m", "none", str(self.folder)], check=True)
        self.addCleanup(subprocess.run, ["umount", "--lazy", str(self.folder)], check=True)
        self.stall("model.enja")
        program = self.session.start([str(LUCENTRA), "models", "install", "en-ja"], stdout=subprocess.DEVNULL,
                                     stderr=subprocess.PIPE, encoding="utf-8")
        self.assertTrue(self.server.stalled.wait(20))
        with self.assertRaises(OSError):
            (self.folder / "filler").write_bytes(bytes(18 << 20))
        self.go_on()
        self.assertIn("enough space", program.communicate(timeout=20)[1])
        self.server.requests.clear()
        self.assertIn("enough space", self.models("install", "en-ja", fails=True))
        self.assertEqual([path for path, _ in self.server.requests], ["/records"])


class SettingsWindow(Models):
    def setUp(self):
        self.begin(Screen(composited=False, keyring=False))
        self.screen = self.session

    def test_one_button(self):
        self.session.start([str(LUCENTRA)], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.session.wait_for_name("com.tarnby.lucentra")
        self.assertEqual(self.session.lucentra("settings").returncode, 0)
        self.session.must(lambda: self.session.accessibility("tab", "Translation")[0] == 0, "the tab", 20)
        self.stall("model.enja")
        self.session.press("Download English → 日本語, about 36 MB")
        self.assertTrue(self.server.stalled.wait(20))
        self.shows("English → 日本語: 1 MB of 1 MB")
        self.session.press("Cancel Download")
        self.shows("not complete yet")
        self.assertNotIn("en-ja", self.installed())
        self.go_on()
        self.session.press("Continue English → 日本語, about 36 MB")
        self.shows("The models for this language are installed.")
        self.expect_content("en-ja")
        self.session.press("Remove English → 日本語")
        self.assertTrue(eventually(lambda: not self.installed()))
        self.shows("Download English → 日本語, about 36 MB")
