#!/usr/bin/python3
"""usage: window_session.py PLAN.json - runs one program on several displays at once and keeps what they show.

Runs as root inside the system of windows.py, alone in its namespaces. Each display is for one way of drawing letters
(glyphs.c). The same keys and clicks go to all; when all have come to rest, their pictures are kept as STATE-WAY.xwd.
"""
import json
import os
import random
import shutil
import subprocess
import sys
import time

REST = .6     # seconds without change
LONGEST = 5  # seconds until what never rests is taken as it is; for the first picture six times as many
OFFSETS = (30, 60, 96)  # pixels from the top of a window: menus and tools


class Display:
    def __init__(self, number, way, plan):
        self.way, self.folder = way, f"/run/display-{number}"
        self.home = f"{self.folder}/home"
        shutil.copytree(plan["home"], self.home)
        self.environment = dict(os.environ, **plan["environment"], DISPLAY=f":{number}", HOME=self.home, XDG_RUNTIME_DIR=self.folder,
                                NO_AT_BRIDGE="1", LIBGL_ALWAYS_SOFTWARE="1", LD_PRELOAD="/training/glyphs.so")
        if way != "shown":
            self.environment["GLYPHS"] = way
        self.start(["Xvfb", f":{number}", "-fbdir", self.folder, "-nocursor", "-nolisten", "tcp", "-screen", "0", f"{plan['width']}x{plan['height']}x24"])
        while self.run("xdpyinfo").returncode:
            time.sleep(.1)
        address = f"unix:path={self.folder}/bus"
        self.start(["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}"])
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.run("hsetroot", *plan["ground"])
        self.start(["openbox"])
        time.sleep(.5)
        # With a /tmp of its own, so that programs don't find themselves running already.
        self.start(["unshare", "--mount", "--propagation", "unchanged", "sh", "-c", f"mount -t tmpfs tmpfs /tmp && exec {plan['command']}"])

    def start(self, command):
        subprocess.Popen(command, env=self.environment, cwd=self.home, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def run(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True, text=True, timeout=30, check=False)

    def place(self, x, y, width, height):
        """Moves the program's window, once there is one."""
        for _ in range(20):
            window = self.run("xdotool", "getactivewindow").stdout.strip()
            if window:
                self.run("xdotool", "windowmove", window, str(x), str(y))
                self.run("xdotool", "windowsize", window, str(width), str(height))
                return
            time.sleep(.25)

    def pixels(self):
        with open(f"{self.folder}/Xvfb_screen0", "rb") as file:
            return file.read()


def rest(displays, longest):
    """Waits until no display changes any more. Returns what they show."""
    begun = time.time()
    seen, since = None, begun
    while time.time() - begun < longest and (seen is None or time.time() - since < REST):
        time.sleep(.25)
        now = [display.pixels() for display in displays]
        if now != seen:
            seen, since = now, time.time()
    return seen


def act(displays, chance, width, height):
    """Something a user may do, the same on all displays."""
    deed = chance.random()
    place = None
    if deed < .45:
        place = ("click", "1", chance.randint(8, width * 2 // 3), chance.choice(OFFSETS) + chance.randint(-12, 12))
    elif deed < .6:
        place = ("click", chance.choice(("1", "1", "3")), chance.randint(8, width - 8), chance.randint(60, height - 8))
    key = chance.choice(("ctrl+o", "alt+f", "F10", "ctrl+comma", "ctrl+p", "alt+h", "alt+e", "ctrl+f", "ctrl+n", "Escape", "F1", "Tab"))
    for display in displays:
        if place:
            display.run("xdotool", "mousemove", str(place[2]), str(place[3]), place[0], place[1])
        else:
            display.run("xdotool", "key", "--clearmodifiers", key)


def main():
    with open(sys.argv[1]) as file:
        plan = json.load(file)
    chance = random.Random(plan["seed"])
    displays = [Display(20 + number, way, plan) for number, way in enumerate(plan["ways"])]
    empty = rest(displays, 2)
    begun, shown = time.time(), empty
    while time.time() - begun < 40 and any(a == b for a, b in zip(shown, empty)):
        shown = rest(displays, 6 * LONGEST)
    for display in displays:
        display.place(plan["x"], plan["y"], plan["w"], plan["h"])
    kept, last = 0, None
    for _ in range(plan["states"]):
        now = rest(displays, LONGEST)
        if now[0] != last:
            for display, picture in zip(displays, now):
                with open(f"{plan['out']}/{kept}-{display.way}.xwd", "wb") as file:
                    file.write(picture)
            kept, last = kept + 1, now[0]
        act(displays, chance, plan["width"], plan["height"])


if __name__ == "__main__":
    main()
