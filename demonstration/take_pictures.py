#!/usr/bin/env python3
"""Pictures of the settings' and the history's windows as users see them, in every language, light and dark, at scales
1 and 2, to be looked at: take_pictures.py FOLDER [settings|history] [LANGUAGE...]

Makes one contact sheet per language, theme and scale in the folder, and the single pictures in a folder below it."""
import json
import pathlib
import sys
import time
import uuid

from PIL import Image

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "tests" / "end-to-end"))

from desktop import LUCENTRA
from screen import Screen

LANGUAGES = ["zh-Hant", "zh-Hans", "en", "ja", "ko"]
ENGINES = 8
# What a desktop with dark colours tells its programs.
DARK = """[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
ForegroundNormal=252,252,252
ForegroundInactive=161,169,177
ForegroundLink=61,174,233
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=252,252,252
[Colors:Tooltip]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
"""
TEXTS = [("The lighthouse keeper writes a letter every evening", "燈塔看守人每晚寫一封信", True),
         ("Erste Zeile\nZweite Zeile der Straße\n\nVierte Zeile", "第一行\n街道的第二行\n\n第四行", False),
         ("שלום עולם, זה טקסט מימין לשמאל שנמשך יותר משורה אחת כדי שיהיה אפשר לראות איך הוא נשבר", "Hello world", False),
         ("A very long text without an end. " * 40, "沒有盡頭的長文。" * 60, False),
         ("x" * 400, "👩‍👩‍👧 한국어와 日本語が混ざった文", True)]


def entries() -> list[dict]:
    now = time.time() - 978307200
    return [{"id": str(uuid.uuid4()).upper(), "originalText": original, "translatedText": translation,
             "timestamp": now - 4000 * i, "isStarred": starred} for i, (original, translation, starred) in enumerate(TEXTS)]


class Pictures:
    """One run of the program, in one language, theme and scale."""

    def __init__(self, folder: pathlib.Path, language: str, dark: bool, scale: int):
        self.name = f"{language}-{'dark' if dark else 'light'}-{scale}"
        self.folder = folder
        self.language, self.dark, self.scale = language, dark, scale
        self.taken: list[pathlib.Path] = []

    def take(self, window_kind: str) -> None:
        size = f"{1280 * self.scale}x{1200 * self.scale}"
        with Screen(composited=False, keyring=False, size=size) as screen:
            self.screen = screen
            screen.environment |= {"QT_SCALE_FACTOR": str(self.scale)}
            if self.dark:
                screen.environment |= {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5", "KDE_FULL_SESSION": "true"}
                (screen.home / "config").mkdir(exist_ok=True)
                (screen.home / "config" / "kdeglobals").write_text(DARK)
            screen.preferences = {"appLanguage": self.language, "compatibleBaseURL": "http://127.0.0.1:11434/v1"}
            getattr(self, window_kind)()
        self.contact_sheet(window_kind)

    def start(self, command: str) -> str:
        """The window of a command of the program, in front of the others."""
        process = self.screen.quietly([str(LUCENTRA)])
        self.screen.wait_for_name("com.tarnby.lucentra")
        windows = lambda: set(self.screen.output("xdotool", "search", "--onlyvisible", "--pid", str(process.pid)).split())  # noqa: E731
        before = self.screen.must(windows, "the pane", 20)
        if self.screen.lucentra(command).returncode != 0:
            raise RuntimeError(f"no {command}")
        window = self.screen.must(lambda: windows() - before, "the window", 20).pop()
        self.process = process
        self.screen.lucentra("hide")
        return window

    def shot(self, window: str, name: str) -> None:
        time.sleep(0.5)
        shape = dict(line.strip().split(":", 1) for line in
                     self.screen.output("xwininfo", "-id", window).splitlines() if ":" in line)
        x, y, width, height = (int(shape[key]) for key in
                               ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
        path = self.folder / self.name / f"{name}.png"
        path.parent.mkdir(parents=True, exist_ok=True)
        self.screen.picture().crop((x, y, x + width, y + height)).save(path)
        self.taken.append(path)

    def settings(self) -> None:
        window = self.start("settings")
        do = self.screen.do
        do(f"windowfocus --sync {window} sleep 0.5")
        self.shot(window, "1-general")
        do("key ctrl+Tab sleep 0.3 key ctrl+Tab")
        self.shot(window, "3-appearance")
        do("key ctrl+Tab")
        self.shot(window, "4-shortcuts")
        do("key ctrl+Tab")
        self.shot(window, "5-about")
        do("key ctrl+shift+Tab key ctrl+shift+Tab key ctrl+shift+Tab")
        self.shot(window, "2-translation")
        width = self.screen.output("xdotool", "getwindowgeometry", "--shell", window).split("WIDTH=")[1].split()[0]
        do(f"windowmove {window} {20 * self.scale} {20 * self.scale} windowsize {window} {width} {1100 * self.scale}")
        for engine in range(ENGINES):
            changed = self.screen.home / "changed.json"
            changed.write_text(json.dumps(self.screen.preferences | {"translationEngine": engine}))
            changed.replace(self.screen.preferences_path)
            self.shot(window, f"2-translation-{engine}")

    def history(self) -> None:
        window = self.start("history")
        do = self.screen.do
        do(f"windowfocus --sync {window}")
        self.shot(window, "1-empty")
        self.process.terminate()
        self.process.wait(20)
        path = self.screen.home / "data" / "Lucentra" / "history.json"
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(json.dumps(entries()), encoding="utf-8")
        window = self.start("history")
        do(f"windowfocus --sync {window}")
        self.shot(window, "2-entries")
        do(f"windowsize {window} {700 * self.scale} {1000 * self.scale} sleep 0.3")
        self.shot(window, "3-large")
        do(f"windowsize {window} {400 * self.scale} {500 * self.scale} sleep 0.3 key ctrl+f type --delay 30 ss")
        self.shot(window, "4-found")
        do("type --delay 30 zz")
        self.shot(window, "5-nothing-found")
        do("key Escape sleep 0.3 key Home key Delete key Delete")
        self.shot(window, "6-undo")

    def contact_sheet(self, window_kind: str) -> None:
        pictures = [Image.open(path) for path in self.taken]
        width = max(picture.width for picture in pictures) + 12
        height = max(picture.height for picture in pictures) + 12
        columns = -(-len(pictures) // 2)
        sheet = Image.new("RGB", (width * columns, height * 2), (128, 128, 160))
        for i, picture in enumerate(pictures):
            sheet.paste(picture, (i % columns * width + 6, i // columns * height + 6))
        sheet.save(self.folder / f"{window_kind}-{self.name}.png")


def main() -> None:
    folder = pathlib.Path(sys.argv[1])
    kinds = [kind for kind in ("settings", "history") if kind in sys.argv[2:]] or ["settings", "history"]
    languages = [language for language in LANGUAGES if language in sys.argv[2:]] or LANGUAGES
    for kind in kinds:
        for language in languages:
            for dark in (False, True):
                for scale in (1, 2):
                    Pictures(folder, language, dark, scale).take(kind)


if __name__ == "__main__":
    main()
