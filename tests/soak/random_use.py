#!/usr/bin/env python3
"""A user who does anything: random_use.py [MINUTES] [--seed N]

Clicks, drags, keys, resizes, and changes of language and settings, at random, for a while. The program must end neither
by itself nor with a report of its sanitizers, and its main thread must never be away from its event loop for longer than
200 ms, not counting the time for which it had no processor. Needs the system's Python, which has the library for D-Bus."""
import argparse
import collections
import pathlib
import random
import re
import subprocess
import sys
import threading
import time

from gi.repository import Gio, GLib

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "end-to-end"))

import sample_page
from chat_server import ChatServer, pause, too_many_requests
from loopback import leave_the_network
from screen import Screen

HANG_LIMIT = 200  # ms
SIZE = (1280, 800)
LINES = ["The lighthouse keeper writes", "a letter every evening", "and posts it on Sundays", "沿海侵蝕年度報告"]
KEYS = """Return Tab Escape Return Tab space space shift+Tab space Down Up Left Right Home End Page_Down Page_Up Delete BackSpace F2 F10 Menu ctrl+a
ctrl+c ctrl+v ctrl+x ctrl+z ctrl+shift+z ctrl+f ctrl+w ctrl+m ctrl+comma ctrl+Tab ctrl+Page_Down alt+Return alt+t
alt+Down alt+F10 super+Right""".split()
TYPED = ["The lamp must not go out.", "燈塔", "a", "long " * 40, "🙂 emoji", "\n", "0123", "key-0000", "http://127.0.0.1:9/v1"]
COMMANDS = ["Show", "Hide", "Toggle", "Translate", "Translate", "Settings", "History"]
ANSWERS = [pause(0.02), pause(0.02), pause(0.5), pause(3), too_many_requests]


class User:
    """Does one thing after another and remembers the last of them."""

    def __init__(self, screen: Screen, chance: random.Random, engine: dict):
        self.screen = screen
        self.engine = engine
        self.chance = chance
        self.done: collections.deque[str] = collections.deque(maxlen=40)
        self.counts: collections.Counter[str] = collections.Counter()
        self.process = None
        self.starts = 0

    def start(self) -> None:
        """The program, which may have been told to quit by a menu."""
        self.process = self.screen.start_program()
        self.starts += 1
        self.screen.must(self.windows, "the pane", 20)

    def windows(self) -> list[tuple[int, int, int, int]]:
        """The program's windows on the screen: x, y, width, height."""
        windows = self.screen.windows("--pid", str(self.process.pid))
        asked = [word for window in windows for word in ("getwindowgeometry", "--shell", window)]
        answer = self.screen.output("xdotool", *asked) if asked else ""
        values = [int(value) for value in re.findall(r"(?:X|Y|WIDTH|HEIGHT)=(-?\d+)", answer)]
        found = [tuple(values[i:i + 4]) for i in range(0, len(values), 4)]
        return [frame for frame in found if frame[2] > 1 and frame[3] > 1]

    def point(self) -> str:
        """A point within one of the windows, often the newest."""
        windows = self.windows()
        if not windows:
            return "640 400"
        x, y, width, height = self.chance.choice(windows)
        return "{} {}".format(*(max(0, min(corner + self.chance.randrange(side), limit - 1)) for corner, side, limit in
                                ((x, width, SIZE[0]), (y, height, SIZE[1]))))

    # What can be done

    def click(self) -> None:
        button = self.chance.choice("1111113")
        repeat = self.chance.choice(["", "", "--repeat 2 --delay 60 ", "--repeat 3 --delay 30 "])
        self.xdotool(f"mousemove {self.point()} click {repeat}{button}")

    def scroll(self) -> None:
        self.xdotool(f"mousemove {self.point()} click --repeat {self.chance.randint(1, 8)} --delay 10 "
                     f"{self.chance.choice('4567')}")

    def drag(self) -> None:
        target = f"{self.chance.randrange(SIZE[0])} {self.chance.randrange(SIZE[1])}"
        self.xdotool(f"mousemove {self.point()} mousedown 1 sleep 0.03 mousemove_relative -- {self.small()} {self.small()} "
                     f"sleep 0.03 mousemove {target} sleep 0.05 mouseup 1")

    def small(self) -> int:
        return self.chance.randint(-20, 20)

    def resize(self) -> None:
        """By an edge or a corner of a window."""
        windows = self.windows()
        if not windows:
            return
        x, y, width, height = self.chance.choice(windows)
        left, top = (self.chance.choice([2, side // 2, side - 3]) for side in (width, height))
        self.xdotool(f"mousemove {max(0, x + left)} {max(0, y + top)} sleep 0.02 mousedown 1 sleep 0.02 mousemove_relative "
                     f"-- {self.chance.randint(-300, 300)} {self.chance.randint(-200, 200)} sleep 0.05 mouseup 1")

    def press_keys(self) -> None:
        self.xdotool("key --delay 15 " + " ".join(self.chance.choices(KEYS, k=self.chance.randint(1, 6))))

    def type(self) -> None:
        self.remember("type")
        subprocess.run(["xdotool", "type", "--delay", "4", self.chance.choice(TYPED)], env=self.screen.environment,
                       check=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def command(self) -> None:
        self.call(self.chance.choice(COMMANDS))

    def call(self, member: str) -> None:
        self.remember(f"command {member}")
        subprocess.run(["dbus-send", "--session", "--type=method_call", "--dest=com.tarnby.lucentra", "/com/tarnby/lucentra",
                        f"com.tarnby.lucentra.{member}"], env=self.screen.environment, check=False)

    def use_a_control(self) -> None:
        """One of those that a screen reader finds, so that small ones and lists have their turn."""
        used = self.screen.accessibility("any", str(self.chance.randrange(1 << 30)))[1].strip()
        self.remember(f"control {used}")
        if used in ("combo box", "slider"):
            self.xdotool("key " + " ".join(self.chance.choices(["Down", "Up", "Right", "Left"],
                                                               k=self.chance.randint(1, 4))))

    def change_settings(self) -> None:
        """As somebody else who writes the preferences: the program reads them when it needs them."""
        key, value = self.chance.choice([
            ("triggerMode", self.chance.choice([0, 1])), ("translationUnit", self.chance.choice([0, 1])), ("translationClickGesture", self.chance.choice([0, 1])),
            ("glassOpacity", self.chance.random()), ("isFontSizeAuto", self.chance.choice([True, False])),
            ("fontSize", self.chance.randint(6, 60)), ("autoHide", False), ("autoCopy", self.chance.choice([True, False])),
            ("neonBorderColor", self.chance.choice(["white", "blue", "pink", "none", "green"])),
            ("targetLanguageCode", self.chance.choice(["en", "ja", "ko", "zh-Hans", "zh-Hant", "fr"])),
            ("translationEngine", self.chance.choice([7, 7, 7, 0]))])
        self.remember(f"setting {key}={value}")
        self.screen.preferences = {**self.screen.preferences, key: value}

    def settle(self) -> None:
        """A pass with an engine that answers, whatever was done before."""
        self.screen.preferences = {**self.screen.preferences, **self.engine, "autoHide": False}
        for member in ("Show", "Translate"):
            self.call(member)
        time.sleep(1)

    def xdotool(self, words: str) -> None:
        self.remember(words)
        subprocess.run(["xdotool", *words.split()], env=self.screen.environment, check=False, timeout=60,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def remember(self, words: str) -> None:
        self.done.append(words)
        self.counts[words.split()[0]] += 1

    def act(self) -> None:
        if not self.windows():
            self.call(self.chance.choice(["Show", "Show", "Settings", "History"]))
            time.sleep(0.5)
        actions = {self.click: 10, self.drag: 4, self.scroll: 2, self.resize: 4, self.press_keys: 6, self.type: 2,
                   self.command: 3, self.use_a_control: 4, self.change_settings: 2, self.settle: 2}
        self.chance.choices(list(actions), list(actions.values()))[0]()
        time.sleep(self.chance.choice([0, 0.02, 0.1, 0.3]))


class HangWatch:
    """Asks the program for its bus interface again and again, which its main thread answers."""

    def __init__(self, user: User):
        self.user = user
        self.longest = 0  # ms, without the time in which the main thread had no processor
        self.hangs: list[str] = []  # beyond the limit, with what was done before
        address = user.screen.environment["DBUS_SESSION_BUS_ADDRESS"]
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        threading.Thread(target=self.watch, daemon=True).start()

    def without_processor(self, task: int) -> int:
        """Nanoseconds so far; 0 if the program has ended."""
        try:
            return int(pathlib.Path(f"/proc/{task}/schedstat").read_text().split()[1])
        except OSError:
            return 0

    def watch(self) -> None:
        while True:
            time.sleep(0.02)
            task, asked = self.user.process.pid, time.monotonic_ns()
            waited = self.without_processor(task)
            try:
                self.bus.call_sync("com.tarnby.lucentra", "/com/tarnby/lucentra", "org.freedesktop.DBus.Introspectable",
                                   "Introspect", None, None, Gio.DBusCallFlags.NO_AUTO_START, 60_000, None)
            except GLib.Error:
                continue  # it starts or ends
            ms = (time.monotonic_ns() - asked - max(0, self.without_processor(task) - waited)) // 1_000_000
            self.longest = max(self.longest, ms)
            if ms > HANG_LIMIT:
                self.hangs.append(f"the main thread hung for {ms} ms after:\n" + "\n".join(list(self.user.done)[-5:]))


def reports(folder: pathlib.Path) -> list[str]:
    return [path.read_text(encoding="utf-8", errors="replace") for path in sorted(folder.glob("report*"))]


def run(minutes: float, seed: int, hangs_count: bool) -> list[str]:
    chance = random.Random(seed)
    with ChatServer(answer=lambda server, body: chance.choice(ANSWERS)(server, body)) as server, Screen() as screen:
        options = f"log_path={screen.home}/report:print_stacktrace=1:handle_abort=1"
        screen.environment |= {"ASAN_OPTIONS": options, "UBSAN_OPTIONS": options,
                               "LSAN_OPTIONS": f"suppressions={pathlib.Path(__file__).parents[1]}/lsan.supp"}
        engine = {"translationEngine": 7, "compatibleBaseURL": server.base_url, "compatibleModel": "m",
                  "compatibleApiKey": "key", "privacy.remoteTranslation.v1.engine.7": True}
        screen.preferences = {**engine, "targetLanguageCode": "en"}
        page = screen.home / "page.png"
        sample_page.render(page, ["", *LINES], dark=True, size="720x400")
        screen.show_picture(page, 200, 160, "--video")
        user = User(screen, chance, engine)
        found = []
        user.start()
        watch = HangWatch(user)
        end = time.monotonic() + 60 * minutes
        while time.monotonic() < end and not found:
            user.act()
            if user.process.poll() is not None:
                if user.process.returncode != 0:
                    found.append(f"the program ended with {user.process.returncode} after:\n" + "\n".join(user.done))
                    found.append("its last words:\n" + "\n".join(screen.log().splitlines()[-20:]))
                else:
                    user.start()
        if user.process.poll() is None:
            user.process.terminate()
            if (code := user.process.wait(60)) != 0:
                found.append(f"told to end, the program ended with {code}")
        print(f"{sum(user.counts.values())} actions in {minutes:g} minutes, {len(server.requests)} passes reached the server, "
              f"{user.starts} starts; the main thread was away for {watch.longest} ms at most")
        print(*(f"{name}: {number}" for name, number in user.counts.most_common()), sep=", ")
        return found + reports(screen.home) + (watch.hangs if hangs_count else [])


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("minutes", type=float, nargs="?", default=10)
    parser.add_argument("--seed", type=int, default=int(time.time()))
    parser.add_argument("--tell-hangs-only", action="store_true", help="hangs of the main thread are no failure")
    arguments = parser.parse_args()
    print(f"seed {arguments.seed}", flush=True)
    leave_the_network()
    found = run(arguments.minutes, arguments.seed, not arguments.tell_hangs_only)
    print(*found or ["no report, no hang"], sep="\n\n")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
