#!/usr/bin/env python3
"""Makes the pictures of the gallery: gallery.py FOLDER [GROUP ...]

The program runs on a display of its own, over pages that are drawn here, and is used by pointer and keyboard as a user
would. Its engine is a server on this machine that knows the pages' translations."""
import contextlib
import difflib
import json
import pathlib
import sys
import time

from PIL import Image

import scenes
from stage import labels, run_pass
import chat_server
from chat_server import ChatServer
from screen import Screen

PANE = (272, 192, 520, 300)
TRANSLATIONS = json.loads((pathlib.Path(__file__).parent / "translations.json").read_text(encoding="utf-8"))
# The languages and the name of the error card's button in each.
LANGUAGES = {"en": "Retry", "zh-Hant": "重試", "zh-Hans": "重试", "ja": "再試行", "ko": "다시 시도"}
TYPED = "The lamp must not go out."
# From the pane's right end to the middle of each of the capsule's buttons.
SETTINGS, HISTORY, LANGUAGE, KEYS, TRIGGER, TRANSLATE = (37 + 34 * place for place in range(6))


def translation(text: str, code: str) -> str:
    """The one of the known text that is most like the one that was read."""
    table = TRANSLATIONS.get(code, {})
    found = difflib.get_close_matches(text, table, 1, 0.5)
    return table[found[0]] if found else text


class Stage(contextlib.ExitStack):
    """A display with a page on it and the pane over it. What is given by place is in points."""

    def __init__(self, folder: pathlib.Path, **options):
        super().__init__()
        self.folder = folder
        try:
            self.set_up(**options)
        except Exception:
            self.close()
            raise

    def set_up(self, content=scenes.article, scale=1, language="en", target="zh-Hant", pane=PANE, composited=True,
               preferences=None, portal=()) -> None:
        self.scale, self.place = scale, pane
        self.server = self.enter_context(ChatServer(translate=lambda text: translation(text, target)))
        size = "x".join(str(int(side * scale)) for side in scenes.SIZE)
        self.screen = self.enter_context(Screen(size=size, keyring=False, language=language, composited=composited))
        self.screen.preferences = {"translationEngine": 7, "compatibleBaseURL": self.server.base_url,
                                   "compatibleModel": "m", "compatibleApiKey": "key",
                                   "privacy.remoteTranslation.v1.engine.7": True, "targetLanguageCode": target,
                                   "targetLanguageFollowsInterface": False, **(preferences or {})}
        if portal:
            self.screen.start_portal(*portal)
        page = self.screen.home / "page.png"
        content(scale).save(page)
        self.point_away()
        self.screen.show_picture(page, 0, 0)
        if scale != 1:
            self.screen.environment["QT_SCALE_FACTOR"] = str(scale)
        self.pane = self.screen.start_pane(*(int(side * scale) for side in pane))
        time.sleep(1.2)  # until the glass shows what lies beneath

    def point_at(self, x: int, y: int, click: bool = False) -> None:
        self.screen.do(f"mousemove {int(x * self.scale)} {int(y * self.scale)} sleep 0.1", "click 1" if click else "")
        time.sleep(0.8)

    def point_away(self) -> None:
        self.screen.do("mousemove 1 {}".format(int(scenes.SIZE[1] * self.scale) - 2))
        time.sleep(0.8)

    def point_at_button(self, from_right: int, click: bool = False) -> None:
        self.point_at(self.place[0] + self.place[2] - from_right, self.place[1] + 21, click)

    def translate(self, texts: int = 5) -> None:
        run_pass(self.screen, self.pane, texts)

    def translate_by_key(self) -> None:
        self.screen.do("key alt+Return")
        self.screen.must(lambda: labels(self.screen) > 4, "translations", 30)
        time.sleep(1)

    def be_busy(self, seconds: float = 4) -> None:
        """Starts a pass whose answer takes a while."""
        asked = len(self.server.requests)
        self.server.queued = [chat_server.pause(seconds)]
        self.pane.double_click()
        self.point_away()
        self.screen.must(lambda: len(self.server.requests) > asked, "a request", 30)
        time.sleep(0.8)

    def picture(self, margin: int = 32) -> Image.Image:
        x, y, width, height = self.place
        return self.part(x - margin, y - margin, width + 2 * margin, height + 2 * margin)

    def part(self, x: int, y: int, width: int, height: int) -> Image.Image:
        """A part of the screen, in points."""
        area = (x, y, x + width, y + height)
        return self.screen.picture().crop([int(side * self.scale) for side in area])

    def shoot(self, name: str) -> None:
        save(self.picture(), self.folder, name)


def save(picture: Image.Image, folder: pathlib.Path, name: str) -> None:
    picture.convert("RGB").save(folder / f"{name}.png", optimize=True)
    print(f"  {name}.png", flush=True)


def sheet(pictures: list[Image.Image], columns: int) -> Image.Image:
    """All in one picture, row by row; they have the same size."""
    width, height = pictures[0].size
    rows = -(-len(pictures) // columns)
    whole = Image.new("RGB", (columns * width, rows * height), "#808080")
    for place, picture in enumerate(pictures):
        whole.paste(picture, (place % columns * width, place // columns * height))
    return whole


def states(folder: pathlib.Path, name: str, **options) -> None:
    """Everything that the pane can look like, one after the other."""
    with Stage(folder, **options) as stage:
        stage.shoot(f"{name}-pristine")
        stage.be_busy()
        stage.shoot(f"{name}-busy")
        stage.screen.must(lambda: labels(stage.screen) > 4, "translations", 30)
        time.sleep(1)
        stage.shoot(f"{name}-translated")
        stage.point_at(PANE[0] + 300, PANE[1] + 270)
        stage.shoot(f"{name}-capsule")
        stage.point_at_button(TRIGGER)
        stage.shoot(f"{name}-tooltip")
        stage.point_at_button(LANGUAGE, click=True)
        stage.point_at(PANE[0] + PANE[2] - LANGUAGE + 40, PANE[1] + 118)
        stage.shoot(f"{name}-language-menu")
        stage.screen.do("key Escape")
        stage.point_at_button(TRIGGER, click=True)
        stage.shoot(f"{name}-hint-over-translations")
        stage.point_at_button(TRIGGER, click=True)
        stage.server.queued = [chat_server.too_many_requests]
        stage.pane.double_click()
        stage.screen.must(lambda: "Retry" in stage.screen.texts(), "the card", 30)
        stage.point_away()
        stage.shoot(f"{name}-error")
        input_mode(stage, name)


def input_mode(stage: Stage, name: str) -> None:
    stage.point_at_button(KEYS, click=True)
    stage.shoot(f"{name}-input-hint")
    stage.point_away()
    time.sleep(2)  # the hint goes
    stage.shoot(f"{name}-input-empty")
    stage.server.queued = [chat_server.pause(2.5)]
    asked = len(stage.server.requests)
    stage.screen.type(TYPED)
    stage.screen.must(lambda: len(stage.server.requests) > asked, "a request", 30)
    stage.shoot(f"{name}-input-busy")
    time.sleep(3)
    stage.point_at_button(TRANSLATE, click=True)  # it copies now
    stage.shoot(f"{name}-input-copied")


def in_five_languages(folder: pathlib.Path) -> None:
    for language, retry in LANGUAGES.items():
        target = "en" if language != "en" else "zh-Hant"
        pictures = []
        with Stage(folder, language=language, target=target) as stage:
            pictures.append(stage.picture())
            stage.point_at_button(TRIGGER)
            pictures.append(stage.picture())
            stage.point_at_button(LANGUAGE, click=True)
            pictures.append(stage.picture())
            stage.screen.do("key Escape")
            stage.server.queued = [chat_server.too_many_requests]
            stage.pane.double_click()
            stage.screen.must(lambda: retry in stage.screen.texts(), "the card", 30)
            stage.point_away()
            time.sleep(1)
            pictures.append(stage.picture())
            stage.point_at_button(KEYS, click=True)
            pictures.append(stage.picture())
            time.sleep(2)
            stage.screen.type(TYPED)
            time.sleep(3)
            stage.point_at_button(TRANSLATE, click=True)
            pictures.append(stage.picture())
        save(sheet(pictures, 2), folder, f"language-{language}")


def borders(folder: pathlib.Path) -> None:
    pictures = []
    for color in ("white", "blue", "pink", "none"):
        for dark in (False, True):
            with Stage(folder, content=lambda scale, dark=dark: scenes.article(scale, dark), pane=(272, 192, 400, 180),
                       preferences={"neonBorderColor": color}) as stage:
                stage.translate(3)
                pictures.append(stage.picture())
    save(sheet(pictures, 2), folder, "border-colours")


def scales(folder: pathlib.Path) -> None:
    """The capsule, its tooltip and a corner, at the scales of common screens; each as large as it is there."""
    rows = []
    for scale in (1, 1.25, 2, 3):
        with Stage(folder, scale=scale) as stage:
            x, y, width, _ = stage.place
            stage.screen.press("Switch to Area Translation")  # which has a symbol of its own
            stage.point_at_button(KEYS)
            time.sleep(2)
            rows.append(stage.part(x + width - 300, y - 16, 316, 90))
    whole = Image.new("RGB", (rows[-1].width, sum(row.height for row in rows)), "#808080")
    for place, row in enumerate(rows):
        whole.paste(row, (0, sum(each.height for each in rows[:place])))
    save(whole, folder, "scales")


def display_options(folder: pathlib.Path) -> None:
    with Stage(folder, portal=("reduce-motion",)) as stage:
        stage.be_busy()
        stage.shoot("reduced-motion-busy")
    with Stage(folder, portal=("reduce-transparency",)) as stage:
        stage.translate()
        stage.shoot("reduced-transparency-translated")
    with Stage(folder, preferences={"glassOpacity": 0.1}) as stage:
        stage.shoot("clear-glass-pristine")
        stage.translate()
        stage.shoot("clear-glass-translated")
        stage.server.queued = [chat_server.too_many_requests]
        stage.pane.double_click()
        stage.screen.must(lambda: "Retry" in stage.screen.texts(), "the card", 30)
        stage.shoot("clear-glass-error")
    with Stage(folder, composited=False) as stage:
        stage.translate()
        stage.shoot("without-compositor")


def contents(folder: pathlib.Path) -> None:
    """Translations over what makes them hard to read, and such as are hard to set."""
    def lines(texts):
        return lambda scale: scenes.white_page(scale, texts)
    for name, content, target, count in (
            ("white-on-white", lines(scenes.PALE), "zh-Hant", 3), ("photograph", scenes.photograph, "ja", 3),
            ("row-of-words", lines(scenes.ROW), "ja", 7),
            ("small-print", lines(scenes.PRINT), "zh-Hant", 6), ("right-to-left", lines(scenes.MESSAGES), "ar", 4),
            ("hebrew", lines(scenes.MESSAGES), "he", 4), ("thai", lines(scenes.MESSAGES), "th", 4),
            ("emoji-and-mixed-scripts", lines(scenes.MESSAGES), "mixed", 4),
            ("long-without-spaces", lines(scenes.MESSAGES), "long", 4)):
        with Stage(folder, content=content, target=target) as stage:
            stage.translate(count)
            stage.shoot(f"content-{name}")


def light_glass(folder: pathlib.Path) -> None:
    for name, options in (("light-glass", {}), ("light-glass-dark-page", {"content": scenes.dark_article}),
                          ("light-glass-scale-2", {"scale": 2})):
        with Stage(folder, preferences={"glassTone": 1}, **options) as stage:
            stage.shoot(f"{name}-pristine")
            stage.translate()
            stage.screen.do("key Down")  # chooses a translation
            stage.shoot(f"{name}-translated")
            stage.screen.do("key Menu sleep 1")
            stage.shoot(f"{name}-menu")


def first_tips(folder: pathlib.Path) -> None:
    room = (*PANE[:3], PANE[3] + 100)  # beneath the translations
    for scale in (1, 2):
        with Stage(folder, scale=scale, pane=room, preferences={"firstTipsDone": 0}) as stage:
            stage.shoot(f"tip-drag-scale-{scale}")
            stage.translate_by_key()
            stage.shoot(f"tip-hotkey-scale-{scale}")
    with Stage(folder, pane=room, preferences={"firstTipsDone": 0, "translationEngine": 0}) as stage:
        stage.translate_by_key()
        time.sleep(8)  # the engine's own hint goes
        stage.shoot("tip-models")


def paragraphs(folder: pathlib.Path) -> None:
    """Text in two columns, translated line by line and in paragraphs, into each of the five languages."""
    pictures = []
    for target in LANGUAGES:
        for unit in (0, 1):
            with Stage(folder, content=lambda scale: scenes.columns(scale, target == "en"), target=target,
                       preferences={"translationUnit": unit}) as stage:
                stage.translate(3 if unit else 7)
                pictures.append(stage.picture(8))
    sheet(pictures, 2).save(folder / "paragraphs.webp", quality=80, method=6)


def sizes(folder: pathlib.Path) -> None:
    with Stage(folder, pane=(272, 192, 320, 100)) as stage:
        pictures = [stage.picture()]
        stage.point_at(PANE[0] + 160, PANE[1] + 80)
        pictures.append(stage.picture())
        stage.server.queued = [chat_server.too_many_requests]
        stage.pane.double_click()
        stage.screen.must(lambda: "Retry" in stage.screen.texts(), "the card", 30)
        stage.point_away()
        pictures.append(stage.picture())
        stage.point_at_button(27 + 34 * 3, click=True)
        time.sleep(2)
        pictures.append(stage.picture())
        stage.screen.type(TYPED)
        time.sleep(3)
        pictures.append(stage.picture())
        stage.point_at_button(27 + 34 * 5, click=True)
        pictures.append(stage.picture())
    save(sheet(pictures, 2), folder, "smallest-size")


GROUPS = {
    "light": lambda folder: states(folder, "light"),
    "dark": lambda folder: states(folder, "dark", content=scenes.dark_article),
    "scales": scales,
    "scale-2": lambda folder: states(folder, "scale-2", scale=2),
    "languages": in_five_languages,
    "borders": borders,
    "options": display_options,
    "contents": contents,
    "paragraphs": paragraphs,
    "sizes": sizes,
    "light-glass": light_glass,
    "tips": first_tips,
}


def main() -> None:
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for group in sys.argv[2:] or GROUPS:
        GROUPS[group](folder)


if __name__ == "__main__":
    main()
