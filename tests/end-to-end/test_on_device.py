#!/usr/bin/env python3
"""The on-device engine as a user meets it: no server, no key, no consent; what it knows are the message catalogues of a
program that only this session has."""
import json
import stat
import struct
import time

from PIL import Image, ImageDraw, ImageFont

import sample_page
from case import Case
from screen import Screen, eventually

PHRASES = {
    "Polish the _lantern": {"ja": "ランタンを磨く(_L)", "zh_TW": "擦亮燈籠(_L)", "ko": "랜턴 닦기(_L)"},
    "Wind the tower clock…": {"ja": "塔時計を巻く…", "zh_TW": "為塔鐘上發條…", "ko": "탑시계 감기…"},
    "Count %d seagulls": {"ja": "カモメを %d 羽数える", "zh_TW": "數 %d 隻海鷗", "ko": "갈매기 %d마리 세기"},
}
LINES = ["Polish the lantern", "Wind the tower clock…", "Count 12 seagulls"]
JAPANESE = ["ランタンを磨く", "塔時計を巻く…", "カモメを 12 羽数える"]
PARAGRAPH = ["Yesterday the heron slept beside our borrowed", "wheelbarrow, and nobody in the whole village",
             "wanted to wake it before the rain."]
UNKNOWN = ["Yesterday the heron slept beside", "our borrowed wheelbarrow"]


def message_catalogue(messages: dict[str, str]) -> bytes:
    """A catalogue as gettext's msgfmt writes it: two sorted tables of lengths and offsets, then the texts."""
    texts = [("", "Content-Type: text/plain; charset=UTF-8\n"), *sorted(messages.items())]
    count, place, tables, texts_bytes = len(texts), 28 + 16 * len(texts), b"", b""
    for column in (0, 1):
        for pair in texts:
            text = pair[column].encode()
            tables += struct.pack("<II", len(text), place + len(texts_bytes))
            texts_bytes += text + b"\0"
    return struct.pack("<IIIIIII", 0x950412de, 0, count, 28, 28 + 8 * count, 0, place) + tables + texts_bytes


class OnDevice(Case):
    """A pane and a command line with the engine that every user starts with."""

    def setUp(self):
        self.screen = self.enter(Screen(keyring=False))
        for language in ("ja", "zh_TW", "ko"):
            folder = self.screen.home / "share" / "locale" / language / "LC_MESSAGES"
            folder.mkdir(parents=True)
            (folder / "lighthouse.mo").write_bytes(
                message_catalogue({source: target[language] for source, target in PHRASES.items()}))
        self.screen.environment["XDG_DATA_DIRS"] = f"{self.screen.home / 'share'}:/usr/local/share:/usr/share"
        self.screen.preferences = {"targetLanguageCode": "ja", "targetLanguageFollowsInterface": False}
        self.page = self.screen.home / "page.png"

    def text(self, text: str, target: str = "ja") -> tuple[str, str]:
        answer = self.screen.lucentra("text", text, "--target", target)
        self.assertEqual(answer.returncode, 0, answer.stderr)
        return answer.stdout.rstrip("\n"), answer.stderr

    def test_phrases_of_an_installed_program(self):
        for source, target, translation in [
                *((line, "ja", translation) for line, translation in zip(LINES, JAPANESE)),
                ("POLISH THE LANTERN", "zh-Hant", "擦亮燈籠"),
                ("Wind the tower clock:", "ko", "탑시계 감기:"),
                ("擦亮燈籠", "ja", "Polish the lantern"),  # typed ideographs go into English, whatever the target
                ("랜턴 닦기", "ja", "ランタンを磨く")]:  # by way of English
            with self.subTest(source, target=target):
                self.assertEqual(self.text(source, target)[0], translation)
        cached = [path for path in (self.screen.home / "cache" / "lucentra").rglob("*") if path.is_file()]
        self.assertTrue(cached)
        self.assertTrue(all(stat.S_IMODE(path.stat().st_mode) == 0o600 for path in cached))
        report = self.screen.lucentra("doctor")
        self.assertEqual(report.returncode, 0, report.stderr)
        self.assertRegex(report.stdout, "Window manager: Openbox\n    Compositor: yes\n")
        self.assertRegex(report.stdout, "phrases: [0-9]+ language pairs, [0-9,]+ phrases\n")
        self.assertIn("gnome-keyring", report.stdout)  # this session has none
        self.assertIn("Settings: ~/", report.stdout)
        self.assertNotIn(str(self.screen.home), report.stdout)

    def test_a_picture(self):
        sample_page.render(self.page, [*LINES, *UNKNOWN])
        answer = self.screen.lucentra("image", str(self.page), "--output", str(self.screen.home / "out.png"), "--json")
        self.assertEqual(answer.returncode, 0, answer.stderr)
        blocks = json.loads(answer.stdout)["blocks"]
        self.assertEqual([block["translation"] for block in blocks], [*JAPANESE, *UNKNOWN])
        self.assertEqual([(block["outcome"], block.get("service"), block.get("confidence")) for block in blocks],
                         [("translated", "phrases", 0.5)] * 3 + [("unknown phrase", None, None)] * 2)

    def test_the_pane(self):
        self.text(LINES[0])  # the memory is built
        sample_page.render(self.page, ["", *LINES], dark=True, size="720x400")
        self.screen.show_picture(self.page, 200, 160)
        pane = self.screen.start_pane(220, 170, 520, 300)
        pane.double_click()
        self.shows(*JAPANESE)
        history = self.screen.home / "data" / "Lucentra" / "history.json"
        self.assertTrue(eventually(history.exists))
        self.assertEqual(json.loads(history.read_text())[0]["translatedText"], "\n".join(JAPANESE))

        # Another page, of which it knows nothing: the pane says so instead of showing the source as if translated.
        sample_page.render(self.page, ["", *UNKNOWN], dark=True, size="720x400")
        self.screen.show_picture(self.page, 200, 160)
        self.screen.do(f"windowraise {pane.window}")
        time.sleep(0.5)
        pane.double_click()
        self.shows("no model for this text yet")

        # Sentences that the lines cut: paragraphs are recommended, and once chosen they are one text.
        page = Image.new("RGB", (720, 400), "#1e1f29")
        font = ImageFont.truetype("/usr/share/fonts/truetype/noto/NotoSans-Regular.ttf", 20)
        for y, line in [(50, LINES[0]), *((110 + 30 * row, line) for row, line in enumerate(PARAGRAPH))]:
            ImageDraw.Draw(page).text((40, y), line, "#d8d9e0", font)
        page.save(self.page)
        self.screen.show_picture(self.page, 200, 160)
        self.screen.do(f"windowraise {pane.window}")
        time.sleep(0.5)
        pane.double_click()
        self.shows("choose paragraphs")
        self.screen.preferences |= {"translationUnit": 1}
        pane.double_click()
        self.shows(JAPANESE[0], " ".join(PARAGRAPH))
