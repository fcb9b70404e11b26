"""The second half of scripts/check-package, on a display of its own: package_pass.py PICTURE FOLDER

The installed program's pane translates a window of another program; the bus starts the program by the installed service
file; its icon is looked at in a dark and a light panel."""
import pathlib
import sys
import time

from screen import Screen, eventually

EXPECTED = {"取消", "全部儲存", "不要儲存", "開啟"}  # of the lines in package_picture.py
PANE = (90, 60, 500, 420)
PANELS = {"light": "0xf6f5f4", "dark": "0x1d1d1d"}
PANEL_HEIGHT = 32


def check(claim, message: str) -> None:
    if not claim:
        sys.exit(message)


def translate_a_window(screen: Screen, picture: pathlib.Path, folder: pathlib.Path) -> None:
    screen.preferences = {"translationEngine": 0, "targetLanguageCode": "zh-Hant", "targetLanguageFollowsInterface": False}
    screen.quietly(["feh", "--borderless", "--no-fehbg", "--geometry", "+100+70", str(picture)])
    screen.must(lambda: screen.output("xdotool", "search", "--onlyvisible", "--class", "feh"), "the other window")
    screen.lucentra("languages")  # waits until the phrases of the installed programs are known
    pane = screen.start_pane(*PANE)
    time.sleep(1)
    screen.do("mousemove 1200 700")
    screen.lucentra("translate")
    seen = eventually(lambda: EXPECTED <= set(texts := screen.texts()) and texts, 30)
    check(seen, f"the translations aren't on the pane; what is there: {screen.texts()}")
    print("  on the pane:", ", ".join(text for text in seen if text in EXPECTED))
    time.sleep(1)
    screen.picture().save(folder / "pass.png")
    check(screen.lucentra("quit").returncode == 0, "the program didn't quit")
    check(pane.process.wait(10) == 0, "the program ended badly")


def start_by_the_bus(screen: Screen) -> None:
    screen.let_the_bus_start_programs()
    call = ["dbus-send", "--session", "--print-reply", "--dest=com.tarnby.lucentra", "/com/tarnby/lucentra",
            "com.tarnby.lucentra.Show"]
    check("method return" in screen.output(*call), "the bus didn't start the program")
    check(eventually(lambda: screen.output("xdotool", "search", "--onlyvisible", "--class", "lucentra")),
          "the bus started the program, but there is no pane")
    check(screen.lucentra("quit").returncode == 0, "the program that the bus started didn't quit")
    check(eventually(lambda: screen.lucentra("quit").returncode == 2), "it still runs")


def luminance(pixel) -> float:
    linear = [(c / 255 / 12.92) if c <= 10 else ((c / 255 + 0.055) / 1.055) ** 2.4 for c in pixel[:3]]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(one, other) -> float:
    lighter, darker = sorted((luminance(one), luminance(other)), reverse=True)
    return (lighter + 0.05) / (darker + 0.05)


def look_at_the_icon(screen: Screen, name: str, folder: pathlib.Path) -> None:
    program = screen.start_pane(600, 300)
    screen.lucentra("hide")
    panel = screen.quietly(["trayer", "--edge", "top", "--align", "left", "--widthtype", "pixel", "--width", "96",
                            "--heighttype", "pixel", "--height", str(PANEL_HEIGHT), "--SetDockType", "true",
                            "--transparent", "true", "--alpha", "0", "--tint", PANELS[name]])
    screen.must(lambda: screen.selection_owner("_NET_SYSTEM_TRAY_S0"), "the panel")

    def best():
        strip = screen.picture().crop((0, 0, 96, PANEL_HEIGHT)).convert("RGB")
        colours = strip.getcolors(96 * PANEL_HEIGHT)
        ground = max(colours)[1]
        # The icon's own colour: the commonest that isn't the panel's.
        seen = [(count, contrast(colour, ground)) for count, colour in colours if contrast(colour, ground) > 3]
        return sum(count for count, _ in seen) >= 60 and max(seen)
    found = eventually(best, 40)
    screen.picture().crop((0, 0, 160, 60)).resize((640, 240)).save(folder / f"panel-{name}.png")
    check(found, f"the icon can't be made out in the {name} panel")
    print(f"  in the {name} panel the icon has a contrast of {found[1]:.1f}")
    check(screen.lucentra("quit").returncode == 0, "the program didn't quit")
    program.process.wait(10)
    panel.terminate()
    panel.wait(10)


def main() -> None:
    picture, folder = (pathlib.Path(argument) for argument in sys.argv[1:])
    with Screen(keyring=False, activatable=True) as screen:
        translate_a_window(screen, picture, folder)
        start_by_the_bus(screen)
        for name in PANELS:
            look_at_the_icon(screen, name, folder)


if __name__ == "__main__":
    main()
