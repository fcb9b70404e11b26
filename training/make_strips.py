#!/usr/bin/python3
"""usage: make_strips.py FOLDER CUT_STRIPS MODEL FIRST COUNT [PART PARTS] - makes strips of lines with their texts to train a reader.

The material is that in FOLDER, CUT_STRIPS the program cut-strips of benchmarks/recognition, MODEL the traineddata file of eng,
jpn, kor, chi_tra or chi_sim. Page n depends on n alone. Of each page FOLDER/strips-eng/n.pkl or the like is written: a list
of (text, strips), a strip being an array of rows of grey bytes. What was found but is no text has an empty text, and what
has letters of other scripts has None. What is cut off is left out.
"""
import base64
import json
import os
import pathlib
import pickle
import random
import re
import signal
import subprocess
import sys

import numpy as np
from PIL import Image

import make_samples
import material
import pages
import rows
from browser import Browser
from reader_net import HEIGHTS, characters

SAME = str.maketrans({"\xa0": " ", "–": "-", "−": "-", "‐": "-", "‑": "-", "…": "...", "×": "x", "`": "‘"})
STARTS = 20_000_000  # the numbers of the pages that the line finder is trained and measured with are smaller

FOREIGN = object()
LATIN, HAN, KANA, HANGUL = range(4)  # what the browser says of a piece
SCRIPTS = {"eng": {LATIN}, "jpn": {LATIN, HAN, KANA}, "kor": {LATIN, HAN, HANGUL}, "chi_tra": {LATIN, HAN}, "chi_sim": {LATIN, HAN}}
LANGUAGES = {"eng": "en", "jpn": "ja", "kor": "ko", "chi_tra": "zh_TW", "chi_sim": "zh_CN"}


def text_in(box, pieces, scripts):
    """The text in a box; FOREIGN where another script is there, None where it isn't sure."""
    left, top, right, bottom = box
    row = []
    if any(p[5] >= 0 and p[5] not in scripts and p[7] and min(p[3], right) - max(p[1], left) > 2 and min(p[4], bottom) - max(p[2], top) > .4 * (p[4] - p[2]) for p in pieces):
        return FOREIGN
    for piece in pieces:
        _, p_left, p_top, p_right, p_bottom, kind, _, is_text, whole = piece[:9]
        if min(p_bottom, bottom) - max(p_top, top) < .25 * min(p_bottom - p_top, bottom - top):
            continue
        slack = .12 * (p_bottom - p_top)
        # The ink of these signs ends or begins in the middle of their square.
        before = after = slack
        if is_text and piece[9].strip()[-1:] in tuple("。，、．！？：；」』）》】"):
            after += .75 * piece[10]
        if is_text and piece[9].strip()[:1] in tuple("「『（《【"):
            before += .75 * piece[10]
        if p_right <= left + (slack if is_text and kind >= 0 else 0) or p_left >= right - (slack if is_text and kind >= 0 else 0):
            if is_text and (min(p_right, right) - max(p_left, left) > 2 or after > slack and right <= p_left < right + slack):
                return None
            continue
        if not is_text:
            row.append(piece)
            continue
        if whole < .9 or p_left < left - before or p_right > right + after:
            return None
        if abs((p_top + p_bottom) - (top + bottom)) > .5 * (p_bottom - p_top):
            return None
        row.append(piece)
    row.sort(key=lambda piece: piece[1])
    text, before = "", None
    for piece in row:
        if before is not None and (piece[0] != before[0] or piece[1] - before[3] > .25 * (piece[4] - piece[2])):
            text += " "
        text += piece[9]
        before = piece
    return re.sub(r"\s+", " ", text.translate(SAME)).strip()


def strips_of(shown, pieces, cutter, model, path):
    Image.fromarray(shown).save(path, compress_level=1)
    cutter.stdin.write(path + "\n")
    cutter.stdin.flush()
    found = json.loads(cutter.stdout.readline())["lines"]
    os.remove(path)
    result = []
    for line in found:
        box = line["x"], line["y"], line["x"] + line["width"], line["y"] + line["height"]
        text = text_in(box, pieces, SCRIPTS[model])
        if text is not None and line["strips"]:
            bitmaps = [np.frombuffer(base64.b64decode(strip), np.uint8).reshape(HEIGHTS[model], -1) for strip in line["strips"]]
            result.append((None if text is FOREIGN else text, bitmaps))
    return result


def take(browser, number, known, language, letters, folder):
    chance = random.Random(number)
    scale = chance.choice((.8, 1, 1, 1, 1, 1, 1.25, 1.5, 2))
    if chance.random() < .12:
        height = browser.open("file://" + chance.choice(known["documents"][language] or known["documents"]["en"]), 960, 640, scale)
        browser.style(make_samples.restyle(chance, known["families"]))
        return browser.shoot(chance.random() * max(0, height - 640), False)
    path = f"{folder}/page-{number % 1000}-{os.getpid()}.html"
    if chance.random() < .55:
        kind, html = rows.draw(chance, known, language, letters)
    else:
        kind, html = pages.draw(chance, known, language if chance.random() < .7 else None)
    with open(path, "w") as file:
        file.write(html)
    height = browser.open("file://" + path, 960, 640, scale)
    os.remove(path)
    return browser.shoot(chance.random() * max(0, height - 640) if kind == "site" else 0, False)


def main():
    folder, cutter = os.path.abspath(sys.argv[1]), sys.argv[2]
    first, count = int(sys.argv[4]), int(sys.argv[5])
    part, parts = (int(v) for v in sys.argv[6:8]) if len(sys.argv) > 6 else (0, 1)
    model = pathlib.Path(sys.argv[3]).stem
    letters = [name for name in characters(pathlib.Path(sys.argv[3]).read_bytes())[0] if name.isalpha()]
    known = material.collect(folder)
    os.makedirs(f"{folder}/strips-{model}", exist_ok=True)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    cutter = subprocess.Popen([cutter, model], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    browser, group = None, None
    try:
        for number in range(first, first + count):
            target = f"{folder}/strips-{model}/{number:05d}.pkl"
            if number // make_samples.BROWSER_PAGES % parts != part or os.path.exists(target):
                continue
            if browser is None or number // make_samples.BROWSER_PAGES != group:
                if browser:
                    browser.close()
                group = number // make_samples.BROWSER_PAGES
                chance = random.Random(STARTS + group)
                browser = Browser(material.font_config(folder, chance, f"fonts-{group}"), chance.random() < .6)
            try:
                shown, _, pieces = take(browser, STARTS + number, known, LANGUAGES[model], letters, folder)
            except Exception as error:  # a page that does not load must not end the whole run
                print(number, repr(error)[:200], flush=True)
                browser.close()
                browser = None
                continue
            strips = strips_of(shown, pieces, cutter, model, f"{folder}/page-{os.getpid()}.png")
            with open(target + ".new", "wb") as file:
                pickle.dump(strips, file)
            os.rename(target + ".new", target)
    finally:
        if browser:
            browser.close()
        cutter.stdin.close()
        cutter.wait()


if __name__ == "__main__":
    main()
