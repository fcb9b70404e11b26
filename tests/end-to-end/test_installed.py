#!/usr/bin/env python3
"""What `cmake --install` puts down, in a folder of its own: everything is there, the desktop's services start it from
there, and the installed program finds what it needs."""
import os
import pathlib
import shutil
import subprocess
import tempfile

from PIL import Image, ImageChops

BUILD = pathlib.Path(os.environ.get("LUCENTRA_BUILD", "build/dev")).resolve()
PREFIX = pathlib.Path(tempfile.mkdtemp(prefix="lucentra-installed-"))
os.environ["LUCENTRA"] = str(PREFIX / "bin" / "lucentra")

import sample_page
from case import Case
from screen import Screen, eventually  # which reads LUCENTRA

ICON = "com.tarnby.lucentra"
FILES = {
    "bin/lucentra",
    "libexec/lucentra-engines.so",
    "libexec/lucentra-program",
    "share/applications/com.tarnby.lucentra.capture.desktop",
    "share/applications/com.tarnby.lucentra.desktop",
    "share/bash-completion/completions/lucentra",
    "share/dbus-1/services/com.tarnby.lucentra.service",
    "share/doc/lucentra/CHANGELOG.md",
    "share/doc/lucentra/LICENSE",
    "share/doc/lucentra/privacy.md",
    "share/fish/vendor_completions.d/lucentra.fish",
    *(f"share/icons/hicolor/{size}x{size}/apps/{ICON}.svg" for size in (16, 22, 24, 32)),
    f"share/icons/hicolor/scalable/apps/{ICON}.svg",
    f"share/icons/hicolor/symbolic/apps/{ICON}-symbolic.svg",
    "share/lucentra/autostart/com.tarnby.lucentra.desktop",
    *(f"share/lucentra/i18n/lucentra_{code}.qm" for code in ("en", "ja", "ko", "zh-Hans", "zh-Hant")),
    *(f"share/lucentra/privacy/privacy_{code}.html" for code in ("en", "ja", "ko", "zh-Hans", "zh-Hant")),
    "share/man/man1/lucentra.1",
    "share/metainfo/com.tarnby.lucentra.metainfo.xml",
    "share/zsh/site-functions/_lucentra",
}


def setUpModule():
    subprocess.run(["cmake", "--install", str(BUILD), "--prefix", str(PREFIX)], check=True, stdout=subprocess.DEVNULL)


def tearDownModule():
    shutil.rmtree(PREFIX)


class Installed(Case):
    def setUp(self):
        self.screen = Screen(composited=False, keyring=False, activatable=True, language="ja")
        self.screen.environment["XDG_DATA_DIRS"] = f"{PREFIX}/share:/usr/share"
        self.enter(self.screen)

    def has_pane(self) -> bool:
        return bool(self.screen.windows("--name", "澄鏡通$"))

    def test_everything_is_there_and_nothing_else(self):
        found = {str(path.relative_to(PREFIX)) for path in PREFIX.rglob("*") if path.is_file()}
        self.assertEqual(found, FILES)

    def test_the_bus_starts_it(self):
        self.screen.let_the_bus_start_programs()
        answer = self.screen.output("dbus-send", "--session", "--print-reply", "--dest=com.tarnby.lucentra",
                                    "/com/tarnby/lucentra", "com.tarnby.lucentra.Show")
        self.assertIn("method return", answer)
        self.assertTrue(eventually(self.has_pane))
        owner = self.screen.output("dbus-send", "--session", "--print-reply=literal", "--dest=org.freedesktop.DBus",
                                   "/org/freedesktop/DBus", "org.freedesktop.DBus.GetConnectionUnixProcessID",
                                   "string:com.tarnby.lucentra").split()[-1]
        self.assertEqual(os.readlink(f"/proc/{owner}/exe"), str(PREFIX / "libexec" / "lucentra-program"), "it is the installed one")
        self.assertEqual(self.screen.lucentra("quit").returncode, 0)
        self.assertTrue(eventually(lambda: self.screen.lucentra("quit").returncode == 2))

    def test_it_finds_its_texts_and_icons(self):
        self.assertIn("画面上のテキストを翻訳", self.screen.lucentra("--help").stdout)
        tray = self.screen.start_tray()
        self.screen.start([os.environ["LUCENTRA"]], stdout=subprocess.DEVNULL)
        item = self.screen.item_in(tray).split()[0]
        name = self.screen.output("dbus-send", "--session", "--print-reply", f"--dest={item}", "/StatusNotifierItem",
                                  "org.freedesktop.DBus.Properties.Get", "string:org.kde.StatusNotifierItem",
                                  "string:IconName")
        self.assertIn(f'"{ICON}-symbolic"', name, "the tray is told the installed icon, which it recolours")
        self.assertTrue(eventually(self.has_pane))
        window = self.screen.windows("--name", "澄鏡通$")[0]
        properties = self.screen.output("xprop", "-id", window, "WM_CLASS", "_KDE_NET_WM_DESKTOP_FILE", "_NET_WM_ICON")
        self.assertIn('"lucentra"', properties.splitlines()[0], "as the desktop entry says")
        self.assertIn("Icon (", properties)
        self.assertEqual(self.screen.lucentra("quit").returncode, 0)

    def test_its_icon_keeps_its_shape_in_a_panel(self):
        self.screen.start_pane(600, 300)
        self.screen.lucentra("hide")
        self.screen.quietly(["trayer", "--edge", "top", "--align", "left", "--widthtype", "pixel", "--width", "96",
                             "--heighttype", "pixel", "--height", "32", "--SetDockType", "true", "--transparent", "true",
                             "--alpha", "0", "--tint", "0xf6f5f4"])

        def drawn():
            panel = self.screen.picture().crop((0, 0, 96, 32)).convert("RGB")
            ground = Image.new("RGB", panel.size, panel.getpixel((90, 16)))
            return ImageChops.difference(panel, ground).crop((2, 2, 88, 30)).getbbox()  # without the panel's edge
        left, top, right, bottom = self.screen.must(drawn, "the icon", 40)
        self.assertGreaterEqual(right - left, bottom - top, "it is wider than high")
