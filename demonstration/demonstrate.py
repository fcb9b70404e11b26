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
LANGUAGES = ("zh-Hant", "ja", "ko")
SCENES = [*((code, False) for code in LANGUAGES), (LANGUAGES[0], True)]  # the language, and whether the window is dark


class SampleWindow:
    """The other program's window, light or dark."""

    def __init__(self, session: Session):
        self.session = session
        self.is_dark = None
        self.process = None

    def show(self, is_dark: bool) -> bool:
        """Returns whether it is another one than before."""
        if is_dark == self.is_dark:
            return False
        if self.process:
            self.process.terminate()
            self.process.wait(10)
        self.is_dark = is_dark
        command = [str(pathlib.Path(os.environ["SAMPLE_WINDOW"]).resolve()), "{},{}".format(*WINDOW), *["dark"] * is_dark]
        environment = self.session.environment | {"QT_QPA_PLATFORM": "xcb" if type(self.session) is Screen else "wayland"}
        self.process = subprocess.Popen(command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.session.processes.append(self.process)
        self.process.stdout.readline()  # once it is shown
        return True


def preferences(code: str) -> dict:
    return {"translationEngine": 0, "targetLanguageCode": code, "targetLanguageFollowsInterface": False, "glassOpacity": 0.9}


def keep_beneath(shown: Image.Image, folder: pathlib.Path, pane: tuple[int, int, int, int] = PANE, scale: int = 1) -> None:
    x, y, width, height = pane
    shown.crop((scale * (x + 2), scale * (y + 2), scale * (x + width - 2), scale * (y + height - 2))).save(folder / "beneath.png")


def keep_blocks(screen: Session, folder: pathlib.Path, name: str) -> None:
    blocks = screen.lucentra("image", str(folder / "beneath.png"), "--output", str(folder / f"picture-{name}.png"), "--json")
    if blocks.returncode != 0:
        raise RuntimeError(blocks.stderr)
    (folder / f"blocks-{name}.json").write_text(blocks.stdout, encoding="utf-8")


def wait_for_phrases(session: Session) -> None:
    """Until the phrases of the installed programs are known."""
    if not eventually(lambda: "still" not in session.lucentra("languages", timeout=60).stdout, 60):
        raise RuntimeError("the phrases of the installed programs aren't known")


def demonstrate(screen: Screen, folder: pathlib.Path) -> None:
    window = SampleWindow(screen)
    wait_for_phrases(screen)
    for code, is_dark in SCENES:
        name = code + "-dark" * is_dark
        if window.show(is_dark):
            screen.do("mousemove 1270 790")
            keep_beneath(screen.picture(), folder)
        screen.preferences = preferences(code)
        pane = screen.start_pane(*PANE)
        time.sleep(1)  # the window manager and the pane settle
        if (code, is_dark) == SCENES[0]:
            screen.picture().crop(SHOWN).save(folder / "before.png")
        run_pass(screen, pane)
        screen.picture().crop(SHOWN).save(folder / f"after-{name}.png")
        pane.process.terminate()
        pane.process.wait(10)
        keep_blocks(screen, folder, name)


def demonstrate_on_gnome(session: Gnome, folder: pathlib.Path) -> None:
    """As a user does it who has shared the screen before: a double click on the pane over a window of Wayland."""
    window = SampleWindow(session)
    wait_for_phrases(session)
    for code, is_dark in SCENES:
        name = code + "-dark" * is_dark
        if window.show(is_dark):
            session.place_other_windows(WINDOW[0], WINDOW[1] - 14)  # with its title bar
            session.move_pointer(1270, 790)
            keep_beneath(settled(session, 1), folder)
        session.preferences = preferences(code) | {"screenShares": session.shares}
        pane = session.start_pane(*PANE)
        time.sleep(1)
        if (code, is_dark) == SCENES[0]:
            settled(session, 1).save(folder / "before.png")
        x, y, width, height = PANE
        session.double_click(x + width // 2, y + height - 24)
        if not eventually(lambda: labels(session) >= 5, 60):
            raise RuntimeError("no translation appeared on the pane")
        session.move_pointer(1270, 790)
        settled(session, 2).save(folder / f"after-{name}.png")
        pane.process.terminate()
        pane.process.wait(20)
        keep_blocks(session, folder, name)


def settled(session: Gnome | WaylandSession, seconds: float) -> Image.Image:
    """The picture once it hasn't changed for that long."""
    shown = session.picture()
    while eventually(lambda: ImageChops.difference(session.picture(), shown).getbbox(), seconds):
        shown = session.picture()
    return shown


def demonstrate_on_wayland(session: WaylandSession, folder: pathlib.Path) -> None:
    """As a user does it: the pane is moved over a window, and translates by itself."""
    session.environment["QT_LOGGING_RULES"] = "lucentra.pass.debug=true"
    window = SampleWindow(session)
    wait_for_phrases(session)

    def passes() -> int:
        return (session.home / "lucentra.log").read_text(encoding="utf-8", errors="replace").count("lucentra.pass")
    for code, is_dark in SCENES:
        name = code + "-dark" * is_dark
        if window.show(is_dark):
            session.do("move 1270 790")
            keep_beneath(settled(session, 1), folder, NATIVE_PANE, 2)
        session.preferences = preferences(code)
        pane = session.start_pane()
        if (code, is_dark) == SCENES[0]:
            settled(session, 2).save(folder / "before.png")
        session.drag((640, 510), (538, 434))
        if not eventually(passes, 60):
            raise RuntimeError("nothing was translated after the move")
        before = passes()
        session.drag((774, 460), (978, 600))  # over the whole window
        session.do("move 1270 790")
        if not eventually(lambda: passes() > before, 60):
            raise RuntimeError("nothing was translated after the change of the size")
        settled(session, 2).save(folder / f"after-{name}.png")
        pane.terminate()
        pane.wait(10)
        keep_blocks(session, folder, name)


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
