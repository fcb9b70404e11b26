#!/usr/bin/env python3
"""Shows the main job on a display of its own and leaves pictures of it: demonstrate.py FOLDER [gnome|sway|kwin]

The pane is laid over another program's window and translates it with the engine of this device: no network, no key.
Before and after are screenshots; the lines, their translations and places come from the command line over the same
pixels."""
import os
import pathlib
import subprocess
import sys
import time

from PIL import Image, ImageChops

from stage import labels, run_pass
from desktop import Session
from gnome import Gnome
from screen import Screen, eventually
from wayland import KWin, Sway, WaylandSession

WINDOW = (200, 160)
PANE = (188, 124, 684, 420)
NATIVE_PANE = (298, 184, 684, 420)  # over a window in the middle of the screen
SHOWN = (90, 60, 970, 610)  # the part of the screen that the pictures show
LANGUAGES = {"zh-Hant": "Traditional Chinese", "ja": "Japanese", "ko": "Korean"}


def keep_beneath(shown: Image.Image, folder: pathlib.Path, pane: tuple[int, int, int, int] = PANE, scale: int = 1) -> None:
    x, y, width, height = pane
    shown.crop((scale * (x + 2), scale * (y + 2), scale * (x + width - 2), scale * (y + height - 2))).save(folder / "beneath.png")


def keep_blocks(screen: Session, folder: pathlib.Path, code: str) -> None:
    blocks = screen.lucentra("image", str(folder / "beneath.png"), "--output", str(folder / f"picture-{code}.png"), "--json")
    if blocks.returncode != 0:
        raise RuntimeError(blocks.stderr)
    (folder / f"blocks-{code}.json").write_text(blocks.stdout, encoding="utf-8")


def demonstrate(screen: Screen, folder: pathlib.Path) -> None:
    sample = str(pathlib.Path(os.environ["SAMPLE_WINDOW"]).resolve())
    screen.start_and_wait([sample, "{},{}".format(*WINDOW)])
    screen.do("mousemove 1270 790")
    keep_beneath(screen.picture(), folder)
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
        keep_blocks(screen, folder, code)


def demonstrate_on_gnome(session: Gnome, folder: pathlib.Path) -> None:
    """As a user does it who has shared the screen before: a double click on the pane over a window of Wayland."""
    session.environment["QT_QPA_PLATFORM"] = "wayland"
    session.start_and_wait([str(pathlib.Path(os.environ["SAMPLE_WINDOW"]).resolve())])
    del session.environment["QT_QPA_PLATFORM"]
    session.place_other_windows(WINDOW[0], WINDOW[1] - 14)  # with its title bar
    session.move_pointer(1270, 790)
    keep_beneath(settled(session, 1), folder)
    session.lucentra("languages", timeout=60)
    for code in LANGUAGES:
        session.preferences = {"translationEngine": 0, "targetLanguageCode": code, "targetLanguageFollowsInterface": False,
                               "glassOpacity": 0.9, "screenShares": session.shares}
        pane = session.start_pane(*PANE)
        time.sleep(1)
        settled(session, 1).save(folder / "before.png")
        x, y, width, height = PANE
        session.double_click(x + width // 2, y + height - 24)
        if not eventually(lambda: labels(session) >= 5, 60):
            raise RuntimeError("no translation appeared on the pane")
        session.move_pointer(1270, 790)
        settled(session, 2).save(folder / f"after-{code}.png")
        pane.process.terminate()
        pane.process.wait(20)
        keep_blocks(session, folder, code)


def settled(session: Gnome | WaylandSession, seconds: float) -> Image.Image:
    """The picture once it hasn't changed for that long."""
    shown = session.picture()
    while eventually(lambda: ImageChops.difference(session.picture(), shown).getbbox(), seconds):
        shown = session.picture()
    return shown


def demonstrate_on_wayland(session: WaylandSession, folder: pathlib.Path) -> None:
    """As a user does it: the pane is moved over a window, and translates by itself."""
    session.start([str(pathlib.Path(os.environ["SAMPLE_WINDOW"]).resolve())], stdout=subprocess.PIPE).stdout.readline()
    session.do("move 1270 790")
    keep_beneath(settled(session, 1), folder, NATIVE_PANE, 2)
    eventually(lambda: "still" not in session.lucentra("languages", timeout=60).stdout, 60)
    for code in LANGUAGES:
        session.preferences = {"translationEngine": 0, "targetLanguageCode": code, "targetLanguageFollowsInterface": False,
                               "glassOpacity": 0.9}
        pane = session.start_pane()
        settled(session, 2).save(folder / "before.png")
        session.drag((640, 510), (538, 434))
        settled(session, 0.3)
        session.drag((774, 460), (978, 600))  # over the whole window
        session.do("move 1270 790", "wait 3000")
        settled(session, 3).save(folder / f"after-{code}.png")
        pane.terminate()
        pane.wait(10)
        keep_blocks(session, folder, code)


def main() -> None:
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    if sys.argv[2:] == ["gnome"]:
        with Gnome() as session:
            demonstrate_on_gnome(session, folder)
    elif len(sys.argv) > 2:
        with {"sway": Sway, "kwin": KWin}[sys.argv[2]](scale=2, centred=True, keyring=False) as session:
            demonstrate_on_wayland(session, folder)
    else:
        with Screen(keyring=False) as screen:
            demonstrate(screen, folder)
    print(f"Lucentra ran on a display of its own, over another program's window, with the engine of this device.\n"
          f"Left in {folder}:")
    for path in sorted(folder.iterdir()):
        print(f"  {path.name}")


if __name__ == "__main__":
    main()
