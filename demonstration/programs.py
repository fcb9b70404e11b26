#!/usr/bin/env python3
"""Shows the engine of this device over a window of another program, which speaks English: programs.py FOLDER CATALOGUES

Leaves two sheets: the window, and the pane over it in three languages, first where the computer doesn't have the program's
own message catalogues, which are in CATALOGUES, then where it does. That there is no network is verified first."""
import pathlib
import socket
import sys
import time

from PIL import Image, ImageOps

from stage import labels
from screen import Screen, eventually

LANGUAGES = ("zh-Hant", "ja", "ko")
ENGLISH = ("LC_ALL=C.UTF-8", "LANGUAGE=en", "NO_AT_BRIDGE=1")
MARGIN = 14  # of the pane around a window, and of the pictures around the pane


def has_network() -> bool:
    try:
        socket.create_connection(("192.0.2.1", 80), 2).close()
    except OSError as error:
        return error.errno != 101  # "Network is unreachable"
    return True


def frame_of(screen: Screen, window: str) -> tuple[int, int, int, int]:
    """Left, top, width and height without the window manager's frame."""
    answer = dict(line.split("=") for line in
                  screen.output("xdotool", "getwindowgeometry", "--shell", window).splitlines())
    return tuple(int(answer[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))


def show(screen: Screen, command: list[str], title: str) -> tuple[int, int, int, int]:
    """Starts a program and says where its window is."""
    screen.quietly(["env", *ENGLISH, *command])
    find = ("xdotool", "search", "--onlyvisible", "--name", title)
    window = screen.must(lambda: screen.output(*find).split(), f"a window named {title}", 20)[-1]
    time.sleep(2)
    screen.do(f"windowmove {window} 130 90 mousemove 1270 790 sleep 1")
    return frame_of(screen, window)


def pictures(screen: Screen, place: tuple[int, int, int, int]) -> list[Image.Image]:
    x, y, width, height = place
    pane_place = (x - MARGIN, y - 40 - MARGIN, width + 2 * MARGIN, height + 40 + 2 * MARGIN)
    x, y, width, height = pane_place
    shown = (x - MARGIN, y - MARGIN, x + width + MARGIN, y + height + MARGIN)
    taken = [screen.picture().crop(shown)]
    for code in LANGUAGES:
        screen.preferences = {"translationEngine": 0, "targetLanguageCode": code,
                              "targetLanguageFollowsInterface": False, "glassOpacity": 0.9}
        pane = screen.start_pane(*pane_place)
        time.sleep(1)
        pane.double_click()
        if not eventually(lambda: labels(screen) >= 3, 30):
            raise RuntimeError(f"no translation appeared in {code}")
        screen.do("mousemove 1270 790 sleep 1.5")
        taken.append(screen.picture().crop(shown))
        pane.process.terminate()
        pane.process.wait(10)
    return taken


def sheet(taken: list[Image.Image]) -> Image.Image:
    """Two in a row."""
    width, height = taken[0].size
    whole = Image.new("RGB", (2 * width, 2 * height))
    for place, picture in enumerate(taken):
        whole.paste(picture, (place % 2 * width, place // 2 * height))
    return ImageOps.expand(whole, 1).quantize(255, dither=Image.Dither.NONE)


def main() -> None:
    folder = pathlib.Path(sys.argv[1])
    if has_network():
        sys.exit("There is a network; scripts/picture-programs runs this without one.")
    for name, catalogues in (("program-without-its-catalogues", []), ("program-with-its-catalogues", [sys.argv[2]])):
        with Screen(keyring=False) as screen:
            screen.environment["XDG_DATA_DIRS"] = ":".join([*catalogues, "/usr/local/share", "/usr/share"])
            screen.lucentra("languages", timeout=120)  # waits until the phrases of the installed programs are known
            place = show(screen, ["mousepad", "--preferences"], "Preferences")
            sheet(pictures(screen, place)).save(folder / f"{name}.png", optimize=True)


if __name__ == "__main__":
    main()
