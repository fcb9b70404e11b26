#!/usr/bin/env python3
"""Many passes in one process: soak.py [PASSES]

The program runs under a window manager and a compositor over windows whose pages change, and translates each through a
local server that answers after 20 ms. Afterwards it must hold no more than it did after a hundred passes, and be no
slower than in the first hundred."""
import argparse
import dataclasses
import json
import pathlib
import random
import statistics
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "end-to-end"))

import chat_server
import footprint
import sample_page
import Xlib.display
from Xlib import XK, X
from chat_server import ChatServer
from screen import SHOW, Screen

PAGES = 25  # different ones; their number divides a hundred, so that every hundred passes read the same
BLOCK = "█"  # a line of these is told from any other by its brightness
PANE_SIZE = (520, 300)
MEMORY_LIMIT = 5 * 1024  # KiB
LATENCY_LIMIT = 1.10
WORDS = """harbour wall spring report evening lighthouse keeper letter Sunday erosion coastal inspection October annual
number valley market engine weather station window language mountain garden paper bridge winter silver journey
library captain market question answer island river""".split()
CHINESE = "海岸侵蝕年度報告港口防波堤春季修復下次檢查日期燈塔看守人每晚寫信星期天寄出圖書館河流花園冬天銀色旅程"


class Keyboard:
    """Presses the hotkey as a keyboard does."""

    def __init__(self, display: str):
        self.display = Xlib.display.Display(display)
        self.alt, self.enter = (self.display.keysym_to_keycode(symbol) for symbol in (XK.XK_Alt_L, XK.XK_Return))

    def press_hotkey(self) -> None:
        for key, kind in ((self.alt, X.KeyPress), (self.enter, X.KeyPress), (self.enter, X.KeyRelease),
                          (self.alt, X.KeyRelease)):
            self.display.xtest_fake_input(kind, key)
        self.display.flush()


class Eye:
    """Looks at small parts of the screen, as often as it is asked to."""

    def __init__(self, display: str):
        self.root = Xlib.display.Display(display).screen().root

    def brightness(self, x: int, y: int, width: int, height: int) -> float:
        """The share of bright points."""
        picture = self.root.get_image(x, y, width, height, X.ZPixmap, 0xFFFFFF).data
        greens = picture[1::4]
        return sum(green > 170 for green in greens) / len(greens)


def make_pages(folder: pathlib.Path) -> list[pathlib.Path]:
    """Pages of six lines, some of them Chinese, light and dark."""
    chance = random.Random(7)
    pages = []
    for number in range(PAGES):
        lines = [" ".join(chance.sample(WORDS, 5)) if chance.random() < 0.7 else "".join(chance.sample(CHINESE, 14))
                 for _ in range(4)]
        path = folder / f"page{number}.png"
        sample_page.render(path, ["", *lines], dark=True, size="720x400")
        pages.append(path)
    return pages


@dataclasses.dataclass
class Sample:
    memory: int  # KiB
    files: dict[str, int]
    threads: dict[str, int]
    resources: dict[str, int]


class Soak:
    """The screen, the server, the changing windows and the pane over them."""

    def __init__(self, screen: Screen, server: ChatServer):
        self.screen = screen
        self.server = server
        self.pages = make_pages(screen.home)
        self.passes = 0
        self.window = None
        self.keyboard = Keyboard(screen.display)
        self.eye = Eye(screen.display)
        self.server_resources = footprint.ServerResources(screen.display)
        self.pane = None

    def open_window(self) -> None:
        """Another window, in the place of the last one."""
        if self.window:
            self.window.stdin.close()
            self.window.stdout.close()
            self.window.terminate()
            self.window.wait(10)
            self.screen.processes.remove(self.window)
        self.window = self.screen.start([str(SHOW), str(self.pages[0]), "--at", "200,160", "--turn"],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.window.stdout.readline()
        if self.pane:
            self.screen.do(f"windowraise {self.pane.window}")

    def start_program(self) -> None:
        """Anew, where it runs."""
        if self.pane:
            self.screen.stop(self.pane.process)
            self.pane = None
        self.open_window()
        self.pane = self.screen.start_pane(220, 170, *PANE_SIZE)
        self.screen.do("mousemove 1270 790")
        self.screen.must(lambda: "keyCode=17" in self.screen.log(), "the hotkeys")
        time.sleep(1)  # the engine is loaded

    def turn_page(self, page: pathlib.Path) -> None:
        self.window.stdin.write(f"{page}\n".encode())
        self.window.stdin.flush()
        self.window.stdout.readline()
        time.sleep(0.15)  # the glass has its new picture

    @staticmethod
    def first_line() -> tuple[int, int, int, int]:
        """A part of the screen within the translation of the first line."""
        return 250, 280, 60, 3

    def run_pass(self) -> float:
        """One pass over another page; how long it took from the press of the hotkey to the overlays, in ms."""
        if self.passes % 40 == 0:
            self.open_window()
        self.turn_page(self.pages[self.passes % PAGES])
        self.passes += 1
        pressed = time.monotonic()
        self.keyboard.press_hotkey()
        was_cleared = self.passes == 1
        while time.monotonic() < pressed + 20:
            is_shown = self.eye.brightness(*self.first_line()) > 0.85
            if is_shown and was_cleared:
                return (time.monotonic() - pressed) * 1000
            was_cleared |= not is_shown
            time.sleep(0.002)
        raise RuntimeError(f"pass {self.passes} didn't end; shown: {self.screen.texts()}")

    def sample(self) -> Sample:
        process = self.pane.process.pid
        return Sample(footprint.resident_memory(process), footprint.files(process), footprint.threads(process),
                      self.server_resources.of(process))


class Outcome:
    """What the run must have kept to."""

    def __init__(self, window: int, samples: list[Sample], latencies: list[float]):
        self.window = window
        self.samples = samples
        self.latencies = latencies

    def leaks(self) -> list[str]:
        """Compares the window after the first one with the last one."""
        early, late = self.samples[self.window:2 * self.window], self.samples[-self.window:]
        found = []
        for kind in ("files", "threads", "resources"):
            before, after = (footprint.least([getattr(sample, kind) for sample in samples]) for samples in (early, late))
            if grown := footprint.grown(before, after):
                found.append(f"{kind}: {grown}")
        memory = statistics.median(sample.memory for sample in late[-20:]) - statistics.median(
            sample.memory for sample in early[:20])
        print(f"resident memory: {memory:+.0f} KiB since pass {self.window}")
        if memory >= MEMORY_LIMIT:
            found.append(f"memory: {memory:+.0f} KiB")
        return found

    def is_slower(self) -> bool:
        """Whether the last passes took longer than the first ones."""
        early, late = latency(self.latencies[:self.window]), latency(self.latencies[-self.window:])
        print(f"latency: {early:.0f} ms in the first {self.window} passes, {late:.0f} ms in the last {self.window}")
        return late > early * LATENCY_LIMIT

    def slowness(self, fresh: list[float]) -> list[str]:
        """`fresh`: the latencies of a program that was started anew. Where it is as slow, the machine has become so."""
        late, anew = latency(self.latencies[-self.window:]), latency(fresh)
        print(f"latency: {anew:.0f} ms in a program that was started anew")
        return [f"latency: {late:.0f} ms, {anew:.0f} ms anew"] if late > anew * LATENCY_LIMIT else []


def latency(passes: list[float]) -> float:
    """The mean of the fastest pass over each page: others' work on the machine makes a pass slower, never faster."""
    return statistics.mean(min(passes[page::PAGES]) for page in range(PAGES))


def run(passes: int) -> list[str]:
    def answer(server: ChatServer, body: dict):
        time.sleep(0.02)
        return chat_server.by_id(server, body)

    with ChatServer(answer=answer) as server, Screen(keyring=False) as screen:
        screen.preferences = {"translationEngine": 7, "compatibleBaseURL": server.base_url, "compatibleModel": "m",
                              "targetLanguageCode": "en", "compatibleApiKey": "key", "autoCopy": True,
                              "privacy.remoteTranslation.v1.engine.7": True}
        soak = Soak(screen, server)
        server.translate = lambda _: f"{12 * BLOCK} {soak.passes}"  # no two passes give the same
        soak.start_program()
        samples, latencies = [], []
        for number in range(passes):
            latencies.append(soak.run_pass())
            samples.append(soak.sample())
            server.requests.clear()
            if number % 100 == 99:
                print(f"{number + 1}: {samples[-1].memory} KiB, {statistics.median(latencies[-100:]):.0f} ms", flush=True)
        window = min(100, passes // 3)
        outcome = Outcome(window, samples, latencies)
        last = samples[-1]
        print(f"{sum(last.files.values())} files, {sum(last.threads.values())} threads, X resources {last.resources}")
        found = outcome.leaks()
        if soak.pane.process.poll() is not None:
            return [*found, "the program has ended"]
        entries = len(json.loads((screen.home / "data" / "Lucentra" / "history.json").read_text()))
        print(f"{entries} entries in the history")
        if passes >= 1000 and outcome.is_slower():
            soak.start_program()
            found += outcome.slowness([soak.run_pass() for _ in range(window)])
        return found


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("passes", type=int, nargs="?", default=2000)
    found = run(parser.parse_args().passes)
    print(*found or ["nothing leaks"], sep="\n")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
