#!/usr/bin/env python3
"""Shows the main job on a display of its own and leaves pictures of it: demonstrate.py FOLDER

The pane is laid over another program's window and translates it with the engine of this device: no network, no key.
Before and after are screenshots; the lines, their translations and places come from the command line over the same
pixels."""
import os
import pathlib
import sys
import time

from stage import run_pass
from screen import Screen

WINDOW = (200, 160)
PANE = (188, 124, 684, 420)
SHOWN = (90, 60, 970, 610)  # the part of the screen that the pictures show
LANGUAGES = {"zh-Hant": "Traditional Chinese", "ja": "Japanese", "ko": "Korean"}


def demonstrate(screen: Screen, folder: pathlib.Path) -> None:
    sample = str(pathlib.Path(os.environ["SAMPLE_WINDOW"]).resolve())
    screen.start_and_wait([sample, "{},{}".format(*WINDOW)])
    screen.do("mousemove 1270 790")
    x, y, width, height = PANE
    beneath = folder / "beneath.png"
    screen.picture().crop((x + 2, y + 2, x + width - 2, y + height - 2)).save(beneath)
    screen.lucentra("languages", timeout=60)  # waits until the phrases of the installed programs are known
    for code in LANGUAGES:
        screen.preferences = {"translationEngine": 0, "targetLanguageCode": code,
                              "targetLanguageFollowsInterface": False, "glassOpacity": 0.9}
        pane = screen.start_pane(*PANE)
        time.sleep(1)  # the window manager and the pane settle
        if code == next(iter(LANGUAGES)):
            screen.picture().crop(SHOWN).save(folder / "before.png")
        run_pass(screen, pane)
        screen.picture().crop(SHOWN).save(folder / f"after-{code}.png")
        pane.process.terminate()
        pane.process.wait(10)
        blocks = screen.lucentra("image", str(beneath), "--output", str(folder / f"picture-{code}.png"), "--json")
        if blocks.returncode != 0:
            raise RuntimeError(blocks.stderr)
        (folder / f"blocks-{code}.json").write_text(blocks.stdout, encoding="utf-8")


def main() -> None:
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    with Screen(keyring=False) as screen:
        demonstrate(screen, folder)
    print(f"Lucentra ran on a display of its own, over another program's window, with the engine of this device.\n"
          f"Left in {folder}:")
    for path in sorted(folder.iterdir()):
        print(f"  {path.name}")


if __name__ == "__main__":
    main()
