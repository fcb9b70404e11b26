#!/usr/bin/env python3
"""Makes the moving picture at the head of the README: moving_picture.py FILE.png

The pane is dragged over a page, a game and a film on a display of its own, as a user would; after each drag it
translates by itself. A frame is taken after each step, so that the picture is the same on a slow machine."""
import pathlib
import sys
import time

from PIL import Image, ImageDraw

import scenes
from gallery import Stage
from stage import labels

SIZE = (430, 240)
STEPS = 8
# Where the pane goes, and how many texts it shows there.
STOPS = [((62, 112), 5), ((700, 182), 3), ((410, 520), 2)]
SHOWN = (800, 500)


class Film:
    def __init__(self, stage: Stage):
        self.stage = stage
        self.frames: list[Image.Image] = []
        self.durations: list[int] = []

    def take(self, pointer: tuple[int, int], milliseconds: int) -> None:
        """A frame with the pointer, which pictures of the screen lack."""
        picture = self.stage.screen.picture().convert("RGB")
        x, y = pointer
        arrow = [(x, y), (x, y + 19), (x + 5, y + 15), (x + 8, y + 22), (x + 12, y + 20), (x + 9, y + 14), (x + 15, y + 14)]
        ImageDraw.Draw(picture).polygon(arrow, "#ffffff", "#000000")
        picture = picture.resize(SHOWN, Image.Resampling.LANCZOS).point(lambda value: value & 0xf8)
        self.frames.append(picture)
        self.durations.append(milliseconds)

    def save(self, path: pathlib.Path) -> None:
        self.frames[0].save(path, format="PNG", save_all=True, append_images=self.frames[1:], duration=self.durations,
                            loop=0, optimize=True)


def drag(film: Film, start: tuple[int, int], end: tuple[int, int]) -> tuple[int, int]:
    """Drags the pane by a place near its lower left corner. Returns where the pointer is then."""
    grip = (60, SIZE[1] - 24)
    screen = film.stage.screen
    screen.do(f"mousemove {start[0] + grip[0]} {start[1] + grip[1]} sleep 0.3 mousedown 1 sleep 0.1")
    for step in range(1, STEPS + 1):
        share = step / STEPS
        share = share * share * (3 - 2 * share)
        pointer = tuple(round(a + (b - a) * share) + by for a, b, by in zip(start, end, grip))
        screen.do(f"mousemove {pointer[0]} {pointer[1]} sleep 0.25")
        film.take(pointer, 70)
    screen.do("mouseup 1")
    return pointer


def main() -> None:
    path = pathlib.Path(sys.argv[1])
    place = (430, 330)
    with Stage(path.parent, content=scenes.desk, target="en", pane=(*place, *SIZE)) as stage:
        film = Film(stage)
        film.take((place[0] + 200, place[1] + 260), 700)
        for stop, texts in STOPS:
            pointer = drag(film, place, stop)
            film.take(pointer, 500)
            stage.screen.must(lambda texts=texts: labels(stage.screen) == texts, f"{texts} translations", 30)
            time.sleep(1)
            film.take(pointer, 2200)
            place = stop
        film.save(path)
    print(f"{path}: {len(film.frames)} frames, {path.stat().st_size // 1024} KB")


if __name__ == "__main__":
    main()
