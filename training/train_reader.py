#!/usr/bin/python3
"""usage: train_reader.py STRIPS MODEL STEPS OUT.lstm [OPTIONS] - trains a net of Tesseract on, on strips.

STRIPS is a folder of what make_strips.py made for MODEL, the traineddata file to start from. One page of 25 is held back;
errors there are told every 1,000 steps. OUT.lstm is the net's part of such a file with the new weights, OUT.lstm.pt has
them unrounded. With --share .6 those of OUT.lstm are means, .4 of each from MODEL: what it knows of a language is kept better
than by training alone. --sharpness 1.6 makes the last layer's so many times as large.
"""
import argparse
import glob
import os
import pathlib
import pickle
import random
import sys
import time
import unicodedata

import numpy as np
import torch
from PIL import Image, ImageFilter
from torch import distributed, multiprocessing
from torch.nn import functional

from reader_net import LSTM, ReaderNet, characters, parts, values_of

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "benchmarks/recognition"))
from scores import distance  # noqa: E402

BATCH, HELD_BACK = 32, 25
PROCESSES = 2  # each with a half of a batch: threads of one make it hardly faster
FOREIGN, CLINGING = .25, 4.  # strips of other scripts by the others; weight of a place on them by that of a character
PICTURES = .1  # of the strips get a sign beside their text
LATIN_LEFT_OUT = .7  # of the strips without letters of a reader of others
WIDEST = 25  # heights; wider strips are left out


def load(folder, known):
    """Strips of pages with what is to be read on them: (array, codes), or None where other scripts are on them. First those
    to train with. `known` are the codes of each character."""
    train, held, foreign = [], [], []
    # Who reads ideographs or syllables needs Latin letters mostly among these.
    left_out, chance = LATIN_LEFT_OUT if len(known) > 1000 else 0, random.Random(3)
    for i, path in enumerate(sorted(glob.glob(f"{folder}/*.pkl"))):
        with open(path, "rb") as file:
            for text, strips in pickle.load(file):
                text = text and "".join(c if c in known else unicodedata.normalize("NFKC", c) for c in text)
                unknown = [c for c in text or "" if c not in known]
                if text is None or any(c.isalpha() for c in unknown):
                    foreign += [(strip, None) for strip in strips if strip.shape[1] <= WIDEST * strip.shape[0]]
                if text is None or unknown:
                    continue
                if text.isascii() and chance.random() < left_out:
                    continue
                codes = [code for character in text for code in known[character]]
                for strip in strips if i % HELD_BACK else strips[:1]:
                    height, width = strip.shape
                    # What is found and no text is a sign or two; wider ones may be icons with letters on them.
                    if width <= WIDEST * height and width // 3 > 1.3 * len(codes) and (text or width < 1.7 * height):
                        (train if i % HELD_BACK else held).append((strip, codes))
    repeated = foreign * round(FOREIGN * len(train) / max(1, len(foreign)))
    return train + repeated, held


def cropped(strip, chance):
    """Cut out once more, nearly as tight as the letters, as Tesseract does it where it looks for them itself."""
    height, dark = strip.shape[0], strip < 150
    rows, columns = np.flatnonzero(dark.any(1)), np.flatnonzero(dark.any(0))
    if not rows.size or rows[-1] - rows[0] < 6:
        return strip
    top, bottom = max(0, rows[0] - chance.randint(2, 6)), rows[-1] + chance.randint(3, 7)
    part = Image.fromarray(strip[top:bottom + 1, max(0, columns[0] - chance.randint(2, 6)):columns[-1] + chance.randint(3, 7)])
    return np.asarray(part.resize((max(12, round(part.width * height / part.height)), height), Image.BILINEAR))


def changed(strip, chance):
    """A little wider, higher, softer or fainter, as other fonts and boxes would have it."""
    strip = cropped(strip, chance) if chance.random() < .5 else strip
    height, width = strip.shape
    x, y = chance.uniform(.9, 1.1), chance.uniform(.94, 1.06)
    matrix = (1 / x, 0, chance.uniform(-2, 2), 0, 1 / y, chance.uniform(-1.5, 1.5) + height * (1 - 1 / y) / 2)
    picture = Image.fromarray(strip).transform((max(12, round(width * x)), height), Image.AFFINE, matrix, Image.BILINEAR, fillcolor=255)
    if chance.random() < .15:
        picture = picture.filter(ImageFilter.GaussianBlur(chance.uniform(.4, 1.1)))
    strip = np.asarray(picture)
    if chance.random() < .3:
        strip = (255 * (strip / 255.) ** chance.uniform(.6, 1.6)).astype(np.uint8)
    if chance.random() < .15:
        noise = np.random.default_rng(chance.randrange(1 << 30)).normal(0, chance.uniform(3, 14), strip.shape)
        strip = np.clip(strip + noise, 0, 255).astype(np.uint8)
    return strip


def beside_picture(strip, picture, chance):
    """With a sign beside the text that isn't to be read, as where both are found as one line."""
    height = strip.shape[0]
    gap = np.full((height, round(chance.uniform(.05, .5) * height)), 255, np.uint8)
    return np.concatenate((strip, gap, picture) if chance.random() < .2 else (picture, gap, strip), 1)


def joined(strips):
    """Strips of about one width, paper beside the narrower ones."""
    values = [torch.from_numpy(values_of(strip)) for strip in strips]
    width = max(value.shape[1] for value in values)
    return torch.stack([functional.pad(value, (0, width - value.shape[1]), value=1.) for value in values])


def batches(samples, chance):
    """All samples in batches of about one width, in random order."""
    order = chance.sample(range(len(samples)), len(samples))
    for start in range(0, len(order), BATCH * 40):
        part = sorted(order[start:start + BATCH * 40], key=lambda i: samples[i][0].shape[1])
        groups = [part[i:i + BATCH] for i in range(0, len(part) - BATCH + 1, BATCH)]
        chance.shuffle(groups)
        yield from groups


@torch.no_grad()
def errors(net, held, none):
    """The share of wrong codes of strips, without Tesseract's word lists."""
    net.eval()
    wrong = length = 0
    held = sorted(held, key=lambda sample: sample[0].shape[1])[::max(1, len(held) // 2000)]
    for i in range(0, len(held), BATCH):
        part = held[i:i + BATCH]
        best = net(joined([strip for strip, _ in part])).argmax(2).T.tolist()
        for places, (_, codes) in zip(best, part):
            read = [here for before, here in zip([none] + places, places) if here not in (before, none)]
            wrong, length = wrong + distance(codes, read), length + len(codes)
    net.train()
    return wrong / length


def loss_of(net, former, samples, strips, none):
    """Of strips with known texts by how likely these are, of others by how far the net is from what it said before: it is to
    stay as unsure of them, not to take them for drawings."""
    logits = net(strips).log_softmax(2)
    own = [i for i, (_, codes) in enumerate(samples) if codes is not None]
    foreign = [i for i, (_, codes) in enumerate(samples) if codes is None]
    loss = torch.zeros(())
    if own:
        codes = torch.tensor([code for i in own for code in samples[i][1]], dtype=torch.long)
        lengths = torch.tensor([len(samples[i][1]) for i in own])
        loss = functional.ctc_loss(logits[:, own], codes, torch.full_like(lengths, logits.shape[0]), lengths, none,
                                   reduction="sum", zero_infinity=True) / max(1, len(codes))
    if foreign:
        with torch.no_grad():
            before = former(strips[foreign]).log_softmax(2)
        far = functional.kl_div(logits[:, foreign], before, log_target=True, reduction="sum") / before[:, :, 0].numel()
        loss = loss + CLINGING * far * len(foreign) / len(samples)
    return loss


def mean_gradients(net):
    """Makes the gradients those of all processes."""
    together = torch.cat([value.grad.reshape(-1) for value in net.parameters()])
    distributed.all_reduce(together)
    start = 0
    for value in net.parameters():
        value.grad = (together[start:start + value.numel()] / PROCESSES).reshape(value.shape)
        start += value.numel()


def save(net, former, options, part):
    """Returns the net as it was saved."""
    torch.save(net.state_dict(), options.out + ".pt")
    before, mean = former.state_dict(), ReaderNet(part)
    mean.load_state_dict({name: (options.share * value + (1 - options.share) * before[name])
                          * (options.sharpness if name.startswith("out.") else 1) for name, value in net.state_dict().items()})
    with open(options.out, "wb") as file:
        file.write(mean.written(part))
    return mean


def train(process, options):
    os.environ.update(MASTER_ADDR="127.0.0.1", MASTER_PORT=str(options.port))
    distributed.init_process_group("gloo", rank=process, world_size=PROCESSES)
    torch.set_num_threads(1)
    torch.manual_seed(1 + process)
    with open(options.model, "rb") as file:
        model = file.read()
    net, former = (ReaderNet(parts(model)[LSTM]) for _ in range(2))
    if options.start:
        net.load_state_dict(torch.load(options.start))
    codes, none = characters(model)
    known, held = load(options.strips, codes)
    if process == 0:
        print(len(known), "strips,", len(held), "held back; errors", round(errors(net, held, none), 4), flush=True)
    pictures = [strip for strip, codes in known if codes == []]
    optimizer = torch.optim.Adam(net.parameters(), options.rate)
    chance, changes = random.Random(1), random.Random(2 + process)
    step, total, start = 0, 0., time.time()
    while step < options.steps:
        for group in batches(known, chance):
            for part in optimizer.param_groups:
                part["lr"] = options.rate * min(1, (step + 1) / 200) * (1 - step / options.steps)
            samples = [known[i] for i in group[process::PROCESSES]]
            strips = [beside_picture(strip, changes.choice(pictures), changes)
                      if codes and pictures and changes.random() < PICTURES else strip for strip, codes in samples]
            loss = loss_of(net, former, samples, joined([changed(strip, changes) for strip in strips]), none)
            optimizer.zero_grad()
            loss.backward()
            mean_gradients(net)
            torch.nn.utils.clip_grad_norm_(net.parameters(), 1.)
            optimizer.step()
            step, total = step + 1, total + loss.item()
            if process == 0 and step % 100 == 0:
                print(f"{step}: loss {total / 100:.4f}, {time.time() - start:.0f} s", flush=True)
                total = 0.
            if process == 0 and (step % 1000 == 0 or step == options.steps):
                saved = save(net, former, options, parts(model)[LSTM])
                print("errors", round(errors(saved, held, none), 4), flush=True)
            if step == options.steps:
                break


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("strips")
    parser.add_argument("model")
    parser.add_argument("steps", type=int)
    parser.add_argument("out")
    parser.add_argument("--start")
    parser.add_argument("--rate", type=float, default=1e-3)
    parser.add_argument("--share", type=float, default=1., help="of the trained weights in what is written")
    parser.add_argument("--sharpness", type=float, default=1., help="factor of the last layer's weights in what is written")
    parser.add_argument("--port", type=int, default=29517, help="of this machine, for the processes")
    multiprocessing.spawn(train, (parser.parse_args(),), PROCESSES)


if __name__ == "__main__":
    main()
