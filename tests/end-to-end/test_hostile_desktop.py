#!/usr/bin/env python3
"""A desktop that changes under the running program: what it relies on ends, comes back, or is replaced. Each time a pass
must give its overlays again, and history and settings must be kept."""
import os
import pathlib
import signal
import subprocess
import time

import chat_server
from desktop import LUCENTRA
from hostile import PANE, HostileDesktop
from screen import eventually

FAKE_CLOCK = pathlib.Path(os.environ.get("FAKE_CLOCK", "build/dev/lib/libfake_clock.so")).resolve()
PAGE_COLOUR = (0x1e, 0x1f, 0x29)
YEAR = 365 * 24 * 3600


class Compositor(HostileDesktop):
    options = {"keyring": False, "composited": False}

    def start_compositor(self, *options: str) -> subprocess.Popen:
        compositor = self.screen.quietly(["picom", "--backend", "xrender", "--config", "/dev/null", *options])
        self.screen.must(lambda: self.screen.selection_owner("_NET_WM_CM_S0"), "compositor")
        return compositor

    def expect_corner_of_glass(self, why: str) -> None:
        """Beyond the rounded corner lies what is beneath, nothing black."""
        self.screen.do("mousemove 1000 700")
        self.assertTrue(eventually(lambda: max(abs(a - b) for a, b in zip(
            self.screen.picture().getpixel(PANE[:2])[:3], PAGE_COLOUR)) < 40), why)

    def test_started_killed_and_replaced(self):
        self.start()
        self.expect_pass("without a compositor")
        first = self.start_compositor()
        self.expect_pass("once there is one")
        self.expect_corner_of_glass("composited")
        self.end(first)
        self.screen.must(lambda: not self.screen.selection_owner("_NET_WM_CM_S0"), "no compositor")
        self.expect_pass("after it was killed")
        self.expect_corner_of_glass("no longer composited")
        self.end(self.start_compositor("--shadow"))
        second = self.start_compositor("--fading")
        self.expect_pass("after it was replaced")
        self.expect_corner_of_glass("composited by another")
        second.terminate()
        self.expect_pass("after it has ended")


class WindowManager(HostileDesktop):
    def manager(self) -> subprocess.Popen:
        return next(process for process in reversed(self.screen.processes) if process.args[0] == "openbox")

    def restart(self) -> None:
        self.screen.quietly(["openbox", "--sm-disable"])
        self.screen.must(lambda: self.pane.window in self.screen.output(
            "xprop", "-root", "_NET_CLIENT_LIST").replace(hex(int(self.pane.window)), self.pane.window), "a managed pane")

    def test_killed_and_restarted(self):
        self.start()
        self.expect_pass("with the window manager")
        self.end(self.manager())
        self.expect_pass("without it")
        self.screen.do("key alt+t sleep 0.5 key alt+t sleep 0.5")
        self.screen.must(self.pane.is_shown, "the shown pane")
        self.pane.place(*PANE)
        self.expect_pass("hidden and shown without it")
        self.restart()
        self.pane.place(*PANE)

        def click_until_heard() -> None:  # a window manager that has just started may keep the first click
            asked = len(self.server.requests)
            for _ in range(3):
                self.pane.double_click()
                if eventually(lambda: len(self.server.requests) > asked, 5):
                    return

        self.expect_pass("with another one", click_until_heard)
        self.assertIn("_NET_WM_STATE_ABOVE", self.screen.output("xprop", "-id", self.pane.window, "_NET_WM_STATE"))
        self.screen.drag((480, 440), (520, 470), hold=0.3)
        self.assertTrue(eventually(lambda: self.pane.frame[0] > PANE[0] + 10), f"a drag moves it: {self.pane.frame}")


class Monitors(HostileDesktop):
    options = {"keyring": False, "size": "1280x1280"}

    def xrandr(self, *arguments: str) -> None:
        subprocess.run(["xrandr", *arguments], env=self.screen.environment, check=True,
                       stdout=subprocess.DEVNULL)
        time.sleep(0.5)

    def mode(self, name: str, width: int, height: int) -> None:
        """A size that the screen can take, as by turning or unplugging a monitor."""
        timing = [width, width + 72, width + 200, width + 400, height, height + 3, height + 9, height + 31]
        self.xrandr("--newmode", name, "83.5", *map(str, timing))
        self.xrandr("--addmode", "screen", name)

    def test_turned_made_smaller_added_and_removed(self):
        for name, size in (("wide", (1280, 800)), ("tall", (800, 1280)), ("small", (800, 600))):
            self.mode(name, *size)
        self.xrandr("--output", "screen", "--mode", "wide")
        self.start()
        for name in ("tall", "small", "wide"):
            self.xrandr("--output", "screen", "--mode", name)
            self.pane.place(*PANE)
            self.expect_pass(f"on a screen that is {name}")
        self.xrandr("--setmonitor", "left", "640/200x800/200+0+0", "screen")
        self.pane.place(PANE[0], PANE[1], 410, PANE[3])
        self.expect_pass("on one that is half of the screen")
        self.xrandr("--setmonitor", "right", "640/200x800/200+640+0", "none")
        self.expect_pass("with a second one")
        for name in ("right", "left"):
            self.xrandr("--delmonitor", name)
        self.pane.place(*PANE)
        self.expect_pass("with the first one whole again")

        self.pane.place(740, 480, 520, 300)
        self.xrandr("--output", "screen", "--mode", "small")
        self.screen.lucentra("show")

        def is_reachable() -> bool:
            x, y, width, _ = self.pane.frame
            return x + 40 < 800 and x + width > 40 and -20 <= y < 580
        self.assertTrue(eventually(is_reachable), f"the pane lies at {self.pane.frame}")

    def test_the_scale_changes(self):
        self.start()
        for dpi in (192, 96):
            subprocess.run(["xrdb", "-merge"], input=f"Xft.dpi: {dpi}\n", text=True, env=self.screen.environment, check=True)
            time.sleep(0.5)
            self.pane.place(*PANE)
            self.expect_pass(f"after the resolution became {dpi} dpi")


class Clock(HostileDesktop):
    def setUp(self):
        super().setUp()
        self.offset = self.screen.home / "offset"
        self.offset.write_bytes(bytes(8))
        self.screen.environment["FAKE_CLOCK_OFFSET"] = str(self.offset)

    def set_clock(self, seconds: int) -> None:
        with self.offset.open("r+b") as file:  # the program has it mapped
            file.write(seconds.to_bytes(8, "little", signed=True))

    def move(self) -> None:
        x, y, _, _ = self.pane.frame
        self.screen.drag((x + 300, y + 270), (x + (320 if x <= PANE[0] else 280), y + 270), hold=0.2)

    def test_set_forward_and_back(self):
        self.screen.environment["LD_PRELOAD"] = str(FAKE_CLOCK)
        self.start()
        del self.screen.environment["LD_PRELOAD"]
        self.expect_pass("at the right time")
        for seconds in (10 * YEAR, -10 * YEAR, 3600, 0):
            self.set_clock(seconds)
            self.expect_pass(f"{seconds} seconds away")
            # By itself after a move: the delay isn't measured by this clock.
            self.expect_pass(f"by itself {seconds} seconds away", self.move)
        stamps = [entry["timestamp"] for entry in self.history()]
        self.assertEqual(len(stamps), 9, "every pass has its entry")
        self.assertGreater(max(stamps) - min(stamps), 15 * YEAR, "the clock was really another")


class Services(HostileDesktop):
    def test_the_bus_goes_and_comes_back(self):
        self.screen.start_keyring()
        tray = self.screen.start_tray()
        self.start()
        self.screen.item_in(tray)
        self.expect_pass("with a bus")
        bus = self.program("dbus-daemon")
        for process in (bus, self.program("gnome-keyring-daemon")):
            self.end(process)
        (self.screen.home / "bus").unlink(missing_ok=True)
        self.screen.do("key alt+t")
        self.assertTrue(eventually(lambda: not self.pane.is_shown()), "hotkeys need no bus")
        self.screen.do("key alt+t")
        self.assertTrue(eventually(self.pane.is_shown))
        self.screen.start_bus()
        self.screen.start_keyring()
        self.screen.wait_for_name("com.tarnby.lucentra")
        tray = self.screen.start_tray()
        self.screen.item_in(tray)
        self.screen.start_portal("reduce-motion")
        self.pane.place(*PANE)
        self.expect_pass("with a new bus", lambda: self.screen.lucentra("translate"))
        self.server.queued = [chat_server.pause(3)]
        self.pane.double_click()
        self.screen.do("mousemove 1000 700")
        time.sleep(1)
        self.assertEqual(len({self.pane.picture().tobytes() for _ in range(6) if not time.sleep(0.1)}), 1,
                         "the portal is heard: nothing moves")

    def program(self, name: str) -> subprocess.Popen:
        return next(process for process in reversed(self.screen.processes) if process.args[0] == name)

    def test_stopped_for_a_while(self):
        self.start()
        self.expect_pass("before")
        self.server.queued = [chat_server.pause(1)]
        self.expect_pass("when it went on", self.stop_while_the_answer_comes)
        self.screen.do("key alt+t")
        self.assertTrue(eventually(lambda: not self.pane.is_shown()))
        self.pane.process.send_signal(signal.SIGSTOP)
        self.screen.do("key alt+t")
        time.sleep(1)
        self.assertFalse(self.pane.is_shown())
        self.pane.process.send_signal(signal.SIGCONT)
        self.assertTrue(eventually(self.pane.is_shown), "the hotkey that was pressed meanwhile isn't lost")

    def test_signals_while_the_display_hangs(self):
        """The first asks the program to quit, which ends by itself though the windows can't be closed; the second one
        ends it at once, wherever it hangs."""
        server = self.program("Xvfb")
        for is_blocked, signals in ((False, [signal.SIGTERM]), (False, [signal.SIGTERM, signal.SIGINT]),
                                    (True, [signal.SIGHUP, signal.SIGTERM])):
            with self.subTest(is_blocked=is_blocked, signals=signals):
                self.start()
                self.expect_pass()
                server.send_signal(signal.SIGSTOP)
                self.addCleanup(server.send_signal, signal.SIGCONT)
                asking = self.screen.start([str(LUCENTRA), "settings"]) if is_blocked else None
                time.sleep(1)
                for each in signals:
                    self.assertIsNone(self.pane.process.poll())
                    self.pane.process.send_signal(each)
                    time.sleep(0.5)
                self.assertEqual(self.pane.process.wait(20), 0 if len(signals) == 1 else -signals[1])
                server.send_signal(signal.SIGCONT)
                if asking:
                    asking.wait(30)

    def stop_while_the_answer_comes(self) -> None:
        asked = len(self.server.requests)
        self.pane.double_click()
        eventually(lambda: len(self.server.requests) > asked)
        self.pane.process.send_signal(signal.SIGSTOP)
        time.sleep(4)
        self.pane.process.send_signal(signal.SIGCONT)

