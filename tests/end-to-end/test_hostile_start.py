#!/usr/bin/env python3
"""The program in a home that gives it little: none, a read-only one, a full disk, the plain locale, as root, and as two
users at once. A pass must give its overlays all the same, and what was stored must not be lost."""
import ctypes
import json
import os
import pathlib
import subprocess
import time
import unittest

import sample_page
from desktop import LUCENTRA
from hostile import LONG, PANE, SHORT, HostileDesktop
from screen import Screen, eventually

IS_ROOT = os.geteuid() == 0
NEW_MOUNTS = 0x20000
OTHER_USER = 61234  # one that no file of users knows
NOBODY = 65534
OLD_ENTRY = [{"id": "6F9619FF-8B86-D011-B42D-00C04FC964FF", "originalText": "old", "translatedText": "kept", "timestamp": 1,
              "isStarred": True}]


def make_private_mounts() -> bool:
    """Mounts that this test makes are seen by what it starts, and by nobody else."""
    libc = ctypes.CDLL("libc.so.6", use_errno=True)
    return libc.unshare(NEW_MOUNTS) == 0 and subprocess.run(["mount", "--make-rprivate", "/"], check=False).returncode == 0


class UserScreen(Screen):
    """A session whose programs belong to another user, all of them or Lucentra alone."""

    def __init__(self, user: int | None = None, **options):
        super().__init__(**options)
        self.user = None
        self.is_whole = user is not None
        if user is not None:
            self.give_home_to(user)

    def start(self, command: list[str], **options):
        if self.user is not None and (self.is_whole or command[0] == str(LUCENTRA)):
            options |= {"user": self.user, "group": self.user, "extra_groups": []}
        return super().start(command, **options)

    def give_home_to(self, user: int) -> None:
        """From now on Lucentra is this user's, and so is the home."""
        self.user = user
        subprocess.run(["chown", "-R", f"{user}:{user}", str(self.home)], check=True)


class LittleHome(HostileDesktop):
    owner: int | None = None

    def make_screen(self) -> Screen:
        return UserScreen(self.owner, **self.options)

    def environment_without(self, *names: str) -> None:
        for name in names:
            self.screen.environment.pop(name, None)

    def put_old_entry(self) -> None:
        self.history_path.parent.mkdir(parents=True)
        self.history_path.write_text(json.dumps(OLD_ENTRY), encoding="utf-8")

    def expect_overlays(self, why: str) -> None:
        """Without a look at the history."""
        self.length = SHORT if self.length == LONG else LONG
        self.pane.double_click()
        self.assertTrue(eventually(self.shows_translation, 15), f"overlays {why}: {self.screen.log()}")

    @unittest.skipUnless(IS_ROOT, "takes another user")
    def test_no_home_at_all(self):
        self.screen.give_home_to(OTHER_USER)
        self.screen.environment |= {"XDG_CONFIG_HOME": str(self.screen.home / "config")}
        self.environment_without("HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR")
        self.start()
        self.expect_overlays("without a home")
        self.assertIn("Failed to save history: ", self.screen.log())
        self.assertFalse(pathlib.Path("/.local").exists())

    def test_without_a_home_the_users_own_is_meant(self):
        self.environment_without("HOME", "XDG_RUNTIME_DIR")
        self.start()
        self.expect_pass("without $HOME and $XDG_RUNTIME_DIR")

    @unittest.skipUnless(IS_ROOT, "root can write everywhere, so another user it must be")
    def test_a_read_only_home(self):
        self.put_old_entry()
        before = self.history_path.read_bytes(), self.screen.preferences_path.read_bytes()
        self.screen.give_home_to(OTHER_USER)
        for folder in (self.history_path.parent, self.screen.preferences_path.parent, self.screen.home):
            folder.chmod(0o555)
        self.start()
        self.expect_overlays("in a read-only home")
        asked = len(self.server.requests)
        self.screen.do("key Tab sleep 0.1 key Tab sleep 0.1 key Tab sleep 0.1 key Return sleep 0.3")  # to the trigger mode
        self.screen.drag((480, 440), (500, 440), hold=0.2)
        time.sleep(1.5)
        self.assertEqual(len(self.server.requests), asked, "a setting that can't be stored holds all the same")
        self.expect_overlays("once more")
        self.assertTrue(eventually(lambda: "Failed to save history: " in self.screen.log()))
        self.assertEqual((self.history_path.read_bytes(), self.screen.preferences_path.read_bytes()), before)

    @unittest.skipUnless(IS_ROOT, "mounts a disk")
    def test_a_full_disk(self):
        if not make_private_mounts():
            self.skipTest("may not mount")
        disk = self.screen.home / "data"
        disk.mkdir()
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "none", str(disk)], check=True)
        self.addCleanup(subprocess.run, ["umount", "-l", str(disk)], check=False)
        self.put_old_entry()
        filler = disk / "filler"
        with self.assertRaises(OSError):
            filler.write_bytes(bytes(1 << 17))
        self.start()
        self.expect_overlays("on a full disk")
        self.assertTrue(eventually(lambda: "Failed to save history: " in self.screen.log()))
        self.assertEqual([entry["originalText"] for entry in self.history()], ["old"])
        missed = self.translation
        filler.unlink()
        self.expect_pass("with room again")
        self.assertEqual([entry["translatedText"] for entry in self.history()], [self.translation, missed, "kept"])

    def test_the_plain_locale(self):
        self.screen.environment |= {"LANG": "C", "LC_ALL": "C"}
        self.environment_without("LANGUAGE")
        sample_page.render(self.page, ["", "沿海侵蝕年度報告", "港口防波堤已於春季修復"], dark=True, size="720x400")
        self.start()
        self.pane.double_click()
        self.assertTrue(eventually(self.history, 15), "an entry")
        self.assertEqual(self.history()[0]["originalText"].split("\n")[0], "沿海侵蝕年度報告")
        self.assertIn("沿海侵蝕年度報告", self.screen.lucentra("entries").stdout)

    @unittest.skipUnless(IS_ROOT, "needs root")
    def test_root_in_a_users_home(self):
        """What root changes there stays the user's."""
        self.put_old_entry()
        self.screen.give_home_to(OTHER_USER)
        self.screen.user = None
        self.start()
        self.expect_pass("as root")
        self.screen.press("Switch to Area Translation")
        self.assertTrue(eventually(lambda: self.screen.preferences.get("triggerMode") == 1))
        self.assertEqual(self.screen.lucentra("quit").returncode, 0)
        self.pane.process.wait(10)
        for path in (self.history_path, self.screen.preferences_path):
            self.assertEqual((path.stat().st_uid, path.stat().st_mode & 0o777), (OTHER_USER, 0o600), path)
        self.screen.user = OTHER_USER
        self.pane = self.screen.start_pane(*PANE)
        self.expect_pass("as the user again")
        self.assertEqual(self.history()[-1]["originalText"], "old")
        self.assertEqual(self.screen.preferences["triggerMode"], 1)

    @unittest.skipUnless(IS_ROOT, "takes another user")
    def test_two_users_on_two_displays(self):
        self.start()
        other = type(self)()
        other.owner = NOBODY
        other.setUp()
        self.addCleanup(other.doCleanups)
        other.screen.give_home_to(NOBODY)  # what was put there meanwhile
        other.start()
        self.assertNotEqual(self.screen.display, other.screen.display)
        for _ in range(2):
            self.expect_pass("of the first user")
            other.expect_pass("of the second user")
        self.assertEqual(self.screen.lucentra("quit").returncode, 0)
        self.pane.process.wait(10)
        other.expect_pass("of the second user, alone")
