#!/usr/bin/python3
"""usage: train_variant.py FOLDER STEPS OUT.net - trains the net that tells simplified from traditional Chinese.

FOLDER has the strips that make_strips.py made for chi_tra, chi_sim and jpn. One page of 25 is held back; every 1,000 steps it is
told how many lines there are taken for the wrong one, by the number of their characters that only one of the two has.

Each place of a strip speaks for simplified and for traditional, in logarithms of odds that aren't below 0; a line is the
difference of their sums. What is written alike in both, Latin letters, kana and pictures are to be 0. Single characters are
learned first, then more and more of whole lines.
"""
import argparse
import collections
import glob
import os
import pickle
import random
import subprocess
import time

import numpy as np
import torch
from PIL import Image
from torch import distributed, multiprocessing, nn
from torch.nn import functional

import net as finder
from reader_net import HEIGHTS
from train_reader import HELD_BACK, PROCESSES, changed, mean_gradients

# name, kernel, stride, dilation, channels in, channels out, ReLU, as those of the net that finds lines
SIZES = ((1, 16, 2), (16, 16, 1), (16, 32, 2), (32, 32, 1), (32, 48, 2), (48, 48, 1), (48, 96, 2), (96, 96, 1))
LAYERS = tuple((f"c{i + 1}", 3, stride, 1, inputs, outputs, True) for i, (inputs, outputs, stride) in enumerate(SIZES)) + (
    ("out", 1, 1, 1, SIZES[-1][1], 2, True),)
HEIGHT, WIDEST = HEIGHTS["chi_tra"], 30  # of a strip; heights
RATE = 2e-3
SINGLE, WHOLE = 1500, 3000  # steps until whole lines count as well, and until they count as much
MODELS = ("chi_tra", "chi_sim")


class Net(nn.Module):
    """Grey at full size, value / 255 - 0.5, to evidence for simplified Chinese."""

    def __init__(self):
        super().__init__()
        finder.add_layers(self, LAYERS)
        nn.init.constant_(self.out[1].weight, .1)  # a line has many places

    def forward(self, x):
        for name, *_ in LAYERS:
            x = getattr(self, name)(x)
        return (x[:, 0] - x[:, 1]).sum((1, 2))


def is_han(character):
    return "一" <= character <= "鿿"


def converted(characters, form):
    """Each of the characters as ICU writes it in the other form."""
    text = "\n".join(characters)
    return dict(zip(characters, subprocess.run(["uconv", "-x", form], input=text, capture_output=True, text=True, check=True).stdout.split("\n")))


def lines_of(folder, model):
    """(text, strip, whether it is held back) of the lines there."""
    for i, path in enumerate(sorted(glob.glob(f"{folder}/strips-{model}/*.pkl"))):
        with open(path, "rb") as file:
            for text, strips in pickle.load(file):
                if text is None or not strips:
                    continue
                strip = Image.fromarray(strips[0])
                strip = np.asarray(strip.resize((round(strip.width * HEIGHT / strip.height), HEIGHT), Image.BILINEAR))
                if 16 <= strip.shape[1] <= WIDEST * HEIGHT:
                    yield text, strip, i % HELD_BACK == 0


def places_of(text, strip):
    """Where the characters of a line of ideographs are: their middles, as they are equally wide."""
    dark = strip < 140
    rows, columns = np.flatnonzero(dark.any(1)), np.flatnonzero(dark.any(0))
    if not text or not all(map(is_han, text)) or not columns.size:
        return
    width = (columns[-1] - columns[0] + 1) / len(text)
    if .6 < width / (rows[-1] - rows[0] + 1) < 1.5:
        for i in range(len(text)):
            yield i, columns[0] + (i + .5) * width


class Material:
    """`single`: places of characters that only one of the two has (0 traditional, 1 simplified), or both (2), by character.
    `lines`: strips with such characters, of what has neither (2) and of other scripts (3). `held`: lines held back."""

    def __init__(self, folder):
        every = {model: list(lines_of(folder, model)) for model in MODELS}
        known = [{c for text, *_ in every[model] for c in text if is_han(c)} for model in MODELS]
        together = sorted(known[0] | known[1])
        forms = converted(together, "Hans-Hant"), converted(together, "Hant-Hans")
        only = [{c for c in known[k] - known[1 - k] if forms[1 - k][c] != c} for k in (0, 1)]
        alike = {c for c in together if forms[0][c] == c == forms[1][c]} | (known[0] & known[1])
        self.single = [collections.defaultdict(list) for _ in range(3)]
        self.lines, self.held = [[] for _ in range(4)], []
        for k, model in enumerate(MODELS):
            for text, strip, is_held in every[model]:
                telling = sum(c in only[k] for c in text)
                if any(c in only[1 - k] for c in text):
                    continue
                if is_held:
                    self.held += [(strip, k, telling)] if telling else []
                    continue
                self.lines[k if telling else 2 if any(map(is_han, text)) else 3].append(strip)
                for i, x in places_of(text, strip):
                    if text[i] in only[k]:
                        self.single[k][text[i]].append((strip, x))
                    elif all(c in alike for c in text[max(0, i - 1):i + 2]):
                        self.single[2][text[i]].append((strip, x))
        self.lines[3] += [strip for text, strip, _ in lines_of(folder, "jpn") if any("ぁ" <= c <= "ヿ" for c in text)]
        self.names = [list(characters) for characters in self.single]
        self.weights = [[len(characters[name]) ** .5 for name in names] for characters, names in zip(self.single, self.names)]

    def windows(self, kind, count, chance):
        """Squares with a character in the middle."""
        for name in chance.choices(self.names[kind], self.weights[kind], k=count):
            strip, x = chance.choice(self.single[kind][name])
            yield square(strip, x + chance.gauss(0, 3))


def square(strip, x):
    """The square of a strip around a column, on paper."""
    result, left = np.full((HEIGHT, HEIGHT), 255, np.uint8), round(x) - HEIGHT // 2
    part = strip[:, max(0, left):max(0, left + HEIGHT)]
    start = max(0, -left)
    result[:, start:start + part.shape[1]] = part
    return result


def stretch(strip, chance):
    """Mostly a part of a longer line."""
    heights = strip.shape[1] // HEIGHT
    if heights <= 4 or chance.random() < .15:
        return strip
    width = HEIGHT * chance.randint(4, min(heights, 7))
    left = chance.randint(0, strip.shape[1] - width)
    return strip[:, left:left + width]


def joined(strips):
    width = -(-max(64, max(strip.shape[1] for strip in strips)) // 16) * 16
    return torch.from_numpy(np.stack([np.pad(strip, ((0, 0), (0, width - strip.shape[1])), constant_values=255)
                                      for strip in strips])[:, None]).float() / 255 - .5


@torch.no_grad()
def wrong_lines(net, held):
    """By the number of telling characters: (lines, wrong ones)."""
    net.eval()
    result = collections.defaultdict(lambda: [0, 0])
    for strip, kind, telling in held:
        counts = result[min(telling, 6)]
        counts[0] += 1
        counts[1] += (net(joined([strip])).item() > 0) != kind
    net.train()
    return dict(sorted(result.items()))


def train(process, options):
    os.environ.update(MASTER_ADDR="127.0.0.1", MASTER_PORT=str(options.port))
    distributed.init_process_group("gloo", rank=process, world_size=PROCESSES)
    torch.set_num_threads(1)
    torch.manual_seed(1)
    net, material, chance = Net(), Material(options.folder), random.Random(1 + process)
    optimizer = torch.optim.AdamW(net.parameters(), RATE, weight_decay=1e-2)
    kinds, total, start = torch.tensor([0.] * 16 + [1.] * 16), np.zeros(2), time.time()
    for step in range(1, options.steps + 1):
        for part in optimizer.param_groups:
            part["lr"] = RATE * min(1, step / 100) * (1 - step / (options.steps + 1))
        windows = [window for kind, count in ((0, 16), (1, 16), (2, 14)) for window in material.windows(kind, count, chance)]
        windows += [square(strip, chance.uniform(10, strip.shape[1])) for strip in chance.choices(material.lines[3], k=6)]
        single = net(joined([square(part, part.shape[1] / 2) for part in (changed(window, chance) for window in windows)]))
        whole = net(joined([changed(stretch(chance.choice(material.lines[kind]), chance), chance) for kind in (0, 1, 0, 1, 0, 1, 2, 2, 2, 3)]))
        share = min(1, max(0, (step - SINGLE) / (WHOLE - SINGLE)))
        of_single = functional.binary_cross_entropy_with_logits(single[:32], kinds)
        of_whole = functional.binary_cross_entropy_with_logits(whole[:6], torch.tensor([0., 1.] * 3))
        loss = (of_single + (.01 + .14 * share) * (single[32:].clamp(-6, 6) ** 2).mean()
                + (.1 + .9 * share) * of_whole + (.002 + .118 * share) * (whole[6:].clamp(-6, 6) ** 2).mean())
        optimizer.zero_grad()
        loss.backward()
        mean_gradients(net)
        torch.nn.utils.clip_grad_norm_(net.parameters(), 5.)
        optimizer.step()
        total += of_single.item(), of_whole.item()
        if process == 0 and step % 100 == 0:
            print(f"{step}: single {total[0] / 100:.4f}, lines {total[1] / 100:.4f}, {time.time() - start:.0f} s", flush=True)
            total[:] = 0
        if process == 0 and (step % 1000 == 0 or step == options.steps):
            print("lines and wrong ones by telling characters", wrong_lines(net, material.held), flush=True)
            finder.save(net, options.out, LAYERS)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder")
    parser.add_argument("steps", type=int)
    parser.add_argument("out")
    parser.add_argument("--port", type=int, default=29518, help="of this machine, for the processes")
    multiprocessing.spawn(train, (parser.parse_args(),), PROCESSES)


if __name__ == "__main__":
    main()
