#!/usr/bin/python3
"""usage: make_samples.py FOLDER FIRST COUNT [PART PARTS] - makes samples FIRST to FIRST + COUNT - 1 from the material in FOLDER.

Sample n depends on n alone. With PART of PARTS the maker leaves the groups of pages of other makers to them.
Three files each: n.full.npy (RGB, ink), n.half.npy (bits), n.script.npy (bits at an eighth).
"""
import os
import random
import signal
import sys

import numpy as np

import material
import pages
from browser import Browser
from samples import sample

BROWSER_PAGES = 40  # pages of one browser, which has one way of smoothing


def restyle(chance, known):
    """Other fonts and colours for a document, so that a few hundred of them look like more."""
    dark = chance.random() < .4
    fonts = ",".join(f"'{chance.choice(known[language])}'" for language in chance.sample(list(material.LANGUAGES), 5))
    ground = f"hsl({chance.randint(0, 360)},{chance.randint(0, 40)}%,{chance.randint(4, 22) if dark else chance.randint(88, 100)}%)"
    text = f"hsl({chance.randint(0, 360)},{chance.randint(0, 30)}%,{chance.randint(75, 100) if dark else chance.randint(0, 28)}%)"
    own = f"html,body,body *{{background-color:transparent!important;color:{text}!important}}html{{background:{ground}!important}}" if chance.random() < .6 else ""
    return f"{own}body{{font-size:{chance.randint(11, 19)}px;line-height:{chance.choice((1.1, 1.3, 1.5))}}}body,body *{{font-family:{fonts}{chance.choice(('', '!important'))}}}"


def turned(shown, hidden, pieces):
    """Turned by 90 degrees counterclockwise, as the program sees vertical text."""
    width = shown.shape[1]
    return (*(np.ascontiguousarray(np.rot90(picture)) for picture in (shown, hidden)),
            [[p[0], p[2], width - p[3], p[4], width - p[1], *p[5:8], 1, *p[9:]] for p in pieces])


def take(browser, number, known, folder):
    chance = random.Random(number)
    scale = chance.choice((.8, 1, 1, 1, 1, 1, 1.25, 1.5, 2))
    if chance.random() < .16:
        language = chance.choice([l for l in material.LANGUAGES if known["documents"][l]])
        height = browser.open("file://" + chance.choice(known["documents"][language]), 960, 640, scale)
        browser.style(restyle(chance, known["families"]))
        return browser.shoot(chance.random() * max(0, height - 640))
    path = f"{folder}/page-{number % 1000}-{os.getpid()}.html"
    kind, html = pages.draw(chance, known)
    with open(path, "w") as file:
        file.write(html)
    height = browser.open("file://" + path, 960, 640, scale)
    os.remove(path)
    shot = browser.shoot(chance.random() * max(0, height - 640) if kind == "site" else 0)
    return turned(*shot) if kind == "columns" else shot


def main():
    folder, first, count = os.path.abspath(sys.argv[1]), int(sys.argv[2]), int(sys.argv[3])
    part, parts = (int(v) for v in sys.argv[4:6]) if len(sys.argv) > 4 else (0, 1)
    known = material.collect(folder)
    os.makedirs(f"{folder}/samples", exist_ok=True)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # so that no browser is left behind
    browser, group = None, None
    try:
        for number in range(first, first + count):
            target = f"{folder}/samples/{number:05d}"
            if number // BROWSER_PAGES % parts != part or os.path.exists(target + ".full.npy"):
                continue
            if browser is None or number // BROWSER_PAGES != group:
                if browser:
                    browser.close()
                group = number // BROWSER_PAGES
                chance = random.Random(group)
                browser = Browser(material.font_config(folder, chance, f"fonts-{group}"), chance.random() < .6)
            try:
                full, bits, script = sample(*take(browser, number, known, folder))
            except Exception as error:  # a page that does not load must not end the whole run
                print(number, repr(error)[:200], flush=True)
                browser.close()
                browser = None
                continue
            np.save(target + ".script.npy", script)
            np.save(target + ".half.npy", bits)
            np.save(target + ".new.npy", full)
            os.rename(target + ".new.npy", target + ".full.npy")
    finally:
        if browser:
            browser.close()


if __name__ == "__main__":
    main()
