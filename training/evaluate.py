#!/usr/bin/python3
"""usage: evaluate.py NET SET... [--boxes OUT.json] - recall and precision of lines on pictures with truth.

A SET is a folder with truth.json ({"images": {file: {"category", "lines": [{text, x, y, width, height, ignore?}]}}}).
A line is found if a box shares half of the union of both. Lines of one sign or without letters, and what has only ignored
lines under it, count neither way. NET is a weights file or a .pt of the training.
"""
import argparse
import collections
import json

import numpy as np
import torch
from PIL import Image

import lines
from net import Net, load


def shared(a, b):
    width, height = min(a[2], b[2]) - max(a[0], b[0]), min(a[3], b[3]) - max(a[1], b[1])
    return max(0, width) * max(0, height)


def size(a):
    return (a[2] - a[0]) * (a[3] - a[1])


def count(truth, found):
    """Lines, found boxes, hits, boxes on nothing, lines joined with another, lines without a box."""
    boxes = [((t["x"], t["y"], t["x"] + t["width"], t["y"] + t["height"]), not t.get("ignore") and len(t["text"].strip()) > 1 and any(c.isalnum() for c in t["text"])) for t in truth]
    wanted, passed = [b for b, sane in boxes if sane], [b for b, sane in boxes if not sane]
    found = [f for f in found if not any(shared(f, p) > .3 * size(f) for p in passed) or any(shared(f, w) > .3 * min(size(f), size(w)) for w in wanted)]
    pairs = sorted(((shared(w, f) / (size(w) + size(f) - shared(w, f)), i, j) for i, w in enumerate(wanted) for j, f in enumerate(found) if shared(w, f)), reverse=True)
    left, right = set(), set()
    for value, i, j in pairs:
        if value >= .5 and i not in left and j not in right:
            left.add(i)
            right.add(j)
    result = collections.Counter(lines=len(wanted), found=len(found), hits=len(left))
    result["false"] = sum(not any(shared(f, w) for w in wanted) for f in found)
    for i, w in enumerate(wanted):
        if i in left:
            continue
        near = [f for f in found if shared(w, f) > .15 * size(w)]
        result["none" if not near else "joined" if any(sum(shared(f, v) > .5 * size(v) for v in wanted) > 1 for f in near) else "cut" if len(near) > 1 else "off"] += 1
    return result


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("net")
    parser.add_argument("sets", nargs="+")
    parser.add_argument("--boxes")
    parser.add_argument("--pictures", action="store_true", help="figures of each picture")
    given = parser.parse_args()
    torch.set_num_threads(2)
    if given.net.endswith(".pt"):
        net = Net().eval()
        net.load_state_dict(torch.load(given.net))
    else:
        net = load(given.net)
    stored = {}
    for folder in given.sets:
        table = collections.defaultdict(collections.Counter)
        for name, image in json.load(open(f"{folder}/truth.json"))["images"].items():
            picture = np.asarray(Image.open(f"{folder}/{name}").convert("RGB"))
            stored[name] = lines.boxes(*lines.maps(net, picture))
            result = count(image["lines"], stored[name])
            for kind in (image["category"], "ALL") + ((name,) if given.pictures else ()):
                table[kind].update(result)
        print(f"{folder}\n{'kind':14s} lines recall  prec. false  none joined  cut  off")
        for kind, c in sorted(table.items(), key=lambda item: (item[0] == "ALL", item[0])):
            print(f"{kind:14s} {c['lines']:5d}  {c['hits'] / max(1, c['lines']):.3f}  {c['hits'] / max(1, c['found']):.3f} {c['false']:5d} {c['none']:5d} {c['joined']:6d} {c['cut']:4d} {c['off']:4d}")
    if given.boxes:
        json.dump(stored, open(given.boxes, "w"))


if __name__ == "__main__":
    main()
