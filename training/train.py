#!/usr/bin/python3
"""usage: train.py SAMPLES STEPS OUT.pt [--rate R] [--start START [--keep SHARE | --near WEIGHT]] - trains the net; goes on by itself
after a stop.

SAMPLES are folders, with commas between them; those of "FOLDER*N" are taken N times as often. START are weights to begin with,
of a former run (.pt) or of the program (.net). SHARE of them stays in OUT.pt at the end: a mean of weights does well on what
either was trained with. With --near the norms are fixed and the net is held near what START says where that is right, so
that little is unlearned.

Every 25th sample is held back and watched. OUT.pt gets the running mean of the weights, OUT.pt.state what a stopped run
needs to go on. Set OMP_WAIT_POLICY=PASSIVE when the machine has other work: threads that spin take ten times as long.
"""
import argparse
import copy
import glob
import io
import math
import os
import random
import time

import numpy as np
import torch
from PIL import Image, ImageFilter
from scipy import ndimage
from torch.nn import functional
from torch.utils.data import DataLoader, Dataset

from net import LAYERS, Net, load
from samples import CORE, GAP, UNSURE

SIDE, BATCH, HELD_BACK = 320, 6, 25


NARROW = 5  # weight of the places between two lines on one row that are nearer than about their height
LONE = 4    # weight of the places about a lone character
WORDS = 3   # weight of the places between two words of a line
TAKEN = 3   # weight of places far from lines, or on something drawn, that START took for a line's
DRAWN = .15 # difference of brightness within three pixels; less is flat ground
ENDS = 2.5  # weight of the first and the last character of a line
BESIDE = 2  # weight of the places before and behind a line, where an icon may be


class Crops(Dataset):
    """Crop i of a run depends on the samples and on i alone."""

    def __init__(self, names, count, change=True):
        self.names, self.count, self.change = names, count, change

    def __len__(self):
        return self.count

    def __getitem__(self, index):
        chance = random.Random(index)
        name = chance.choice(self.names) if self.change else self.names[index]
        full = np.load(name + ".full.npy", mmap_mode="r")
        bits, script = np.load(name + ".half.npy", mmap_mode="r"), np.load(name + ".script.npy", mmap_mode="r")
        scale = math.exp(chance.uniform(-.35, .3)) if self.change and chance.random() < .3 else 1
        side = min(int(SIDE / scale) // 8 * 8, *(s // 8 * 8 for s in full.shape[:2]))
        for _ in range(6):  # most crops have text
            y, x = (chance.randint(0, (s - side) // 8) * 8 for s in full.shape[:2])
            part = bits[y // 2:(y + side) // 2, x // 2:(x + side) // 2]
            if (part & CORE).any():
                break
        picture = Image.fromarray(full[y:y + side, x:x + side, :3])
        ink = Image.fromarray(full[y:y + side, x:x + side, 3])
        script = script[y // 8:(y + side) // 8, x // 8:(x + side) // 8]
        if side != SIDE:
            picture = picture.resize((SIDE, SIDE), chance.choice((Image.BILINEAR, Image.BICUBIC, Image.BOX)))
            ink = ink.resize((SIDE, SIDE), Image.BILINEAR)
            part = np.asarray(Image.fromarray(part).resize((SIDE // 2, SIDE // 2), Image.NEAREST))
            script = np.asarray(Image.fromarray(script).resize((SIDE // 8, SIDE // 8), Image.NEAREST))
        values = changed(picture, chance) if self.change else np.asarray(picture, np.float32) / 255
        ink = (np.asarray(ink, np.float32) / 255).reshape(SIDE // 2, 2, SIDE // 2, 2).transpose(1, 3, 0, 2).reshape(4, SIDE // 2, SIDE // 2)
        core, weight = refined((part & CORE) > 0, (part & UNSURE) == 0, ink.max(0) > .3)
        lines = np.stack([core, ((part & GAP) > 0) & ~core]).astype(np.float32)
        return (np.ascontiguousarray(values.transpose(2, 0, 1)) - np.float32(.5), np.concatenate([ink, lines]),
                weight[None].astype(np.float32), (script[None] >> np.arange(4)[:, None, None] & 1).astype(np.float32))


def has_hangul(name):
    script = np.load(name + ".script.npy")
    return (script & 8 > 0).sum() > .2 * (script > 0).sum()


def refined(core, sure, inked):
    """Cores of lone characters are wider and weigh more, else they are too few places to be learned. Between lines as
    near to each other as words are, anything is right; between others that are near, the places weigh more, as they do
    between words. Returns the core and the weight of each place."""
    labels, _ = ndimage.label(core)
    core, weight = core.copy(), sure.astype(np.float32)
    for rows, columns in ndimage.find_objects(labels):
        thick, width = rows.stop - rows.start, columns.stop - columns.start
        if width <= 1.5 * thick + 1:
            core[rows, max(0, columns.start - 1):columns.stop + 1] = True
            weight[rows.start:rows.stop, max(0, columns.start - 4):columns.stop + 4] *= LONE
        empty = ~inked[max(0, rows.start - thick // 2):rows.stop + thick // 2, columns].any(0)
        runs, _ = ndimage.label(empty)
        for (run,) in ndimage.find_objects(runs):
            if run.stop - run.start > .7 * thick:
                weight[max(0, rows.start - thick):rows.stop + thick, columns.start + run.start:columns.start + run.stop] *= WORDS
        for beside in (np.s_[rows, max(0, columns.start - 4 * thick):columns.start - 1], np.s_[rows, columns.stop + 1:columns.stop + 3 * thick]):
            weight[beside][~core[beside]] *= BESIDE
        if width > 1.5 * thick + 1:
            for end in (np.s_[rows, columns.start:columns.start + 2 * thick], np.s_[rows, max(columns.start, columns.stop - 2 * thick):columns.stop]):
                weight[end] = np.maximum(weight[end], ENDS * (weight[end] > 0))
        row = labels[(rows.start + rows.stop) // 2, columns.stop:columns.stop + 6 * thick]
        if not row.any():
            continue
        wide = int(np.argmax(row > 0))
        between = np.s_[max(0, rows.start - thick):rows.stop + thick, columns.stop:columns.stop + wide]
        if wide <= 1.4 * thick + 1:
            weight[between] = 0
        else:  # what parts columns and menus is narrow and rare
            weight[between] *= NARROW
    return core, weight


def changed(picture, chance):
    """Lossy, blurred, inverted, recoloured, paler or noisy."""
    if chance.random() < .22:
        store = io.BytesIO()
        if chance.random() < .75:
            picture.save(store, "JPEG", quality=chance.randint(25, 92), subsampling=chance.choice((0, 2, 2)))
        else:
            picture.save(store, "WEBP", quality=chance.randint(20, 90), method=0)
        picture = Image.open(store).convert("RGB")
    if chance.random() < .06:
        picture = picture.filter(ImageFilter.GaussianBlur(chance.uniform(.3, .8)))
    values = np.asarray(picture, np.float32) / 255
    if chance.random() < .2:
        values = 1 - values
    if chance.random() < .4:
        values = values[..., chance.sample(range(3), 3)]
    if chance.random() < .12:
        values = values.mean(2, keepdims=True).repeat(3, 2)
    if chance.random() < .35:
        values = values ** np.float32(math.exp(chance.uniform(-.5, .5)))
    if chance.random() < .3:
        span = chance.uniform(.4, 1)
        values = values * np.float32(span) + np.float32(chance.uniform(0, 1 - span))
    if chance.random() < .2:
        noise = np.random.default_rng(chance.getrandbits(32)).standard_normal(values.shape, np.float32)
        values = np.clip(values + noise * np.float32(chance.uniform(.005, .04)), 0, 1)
    return values


RARE = torch.tensor([1., 1.5, 2., 4.]).view(1, 4, 1, 1)  # weight of each script
POSITIVE = torch.tensor([1.] * 4 + [2., 2.]).view(1, 6, 1, 1)  # weight of what is there


def overlap(guess, truth):
    """Dice of each output over the batch."""
    both = (guess * truth).sum((0, 2, 3))
    return (2 * both + 1) / ((guess * guess).sum((0, 2, 3)) + (truth * truth).sum((0, 2, 3)) + 1)


def may_be_icon(picture, truth):
    """Where no line is near, or something other than letters is drawn. Flat ground near a line may be a space of it."""
    alone = functional.max_pool2d(truth[:, 4:5], (9, 41), 1, (4, 20)) == 0
    bright = picture.mean(1, keepdim=True)
    change = functional.max_pool2d(bright, 3, 1, 1) + functional.max_pool2d(-bright, 3, 1, 1)
    letters = functional.max_pool2d(truth[:, :4].amax(1, keepdim=True), 5, 1, 2) > .05
    drawn = functional.max_pool2d((functional.max_pool2d(change, 2) > DRAWN).float() * ~letters, 3, 1, 1)
    # Dashes and bars are part of lines too often, so what is thin doesn't count.
    thick = functional.max_pool2d(1 - functional.max_pool2d(1 - drawn, 7, 1, 3), 9, 1, 4) > 0
    return (alone | thick & ~letters) & (truth[:, 4:5] == 0)


def distance(outputs, known, truth, sure):
    """How far the outputs are from those known before, where these were right."""
    parts = []
    for guess, was, right in zip(outputs, known, truth):
        was = torch.sigmoid(was)
        apart = functional.binary_cross_entropy_with_logits(guess, was, reduction="none") - functional.binary_cross_entropy(was, was, reduction="none")
        parts.append(apart * ((was - right).abs() < .5))
    maps = (parts[0] * (sure > 0)).mean((0, 2, 3))
    return maps[:4].mean() + maps[4] + maps[5] + parts[1].mean()


def loss(outputs, truth, sure, script):
    maps, scripts = outputs
    entropy = (functional.binary_cross_entropy_with_logits(maps, truth, reduction="none", pos_weight=POSITIVE) * sure).mean((0, 2, 3))
    dice = overlap(torch.sigmoid(maps) * sure, truth * sure)
    parts = 2 * entropy + 1 - dice
    known = (script.sum(1, keepdim=True) > 0).float() * 3 + 1
    kinds = (functional.binary_cross_entropy_with_logits(scripts, script, reduction="none", pos_weight=RARE) * known).mean()
    return parts[:4].mean() + parts[4] + parts[5] + kinds, dice.detach(), kinds.detach()


def with_statistics(path, crops):
    """The weights of a program's file, whose batch norms pass values through, with norms that can be trained further."""
    folded, sums = load(path), {}

    def watch(name):
        def hook(_, inputs):
            x = inputs[0].double()
            before = sums.get(name, (0, 0, 0))
            sums[name] = (before[0] + x.numel() / x.shape[1], before[1] + x.sum((0, 2, 3)), before[2] + (x * x).sum((0, 2, 3)))
        return hook
    normed = [name for name, *_, relu in LAYERS if relu]
    for name in normed:
        getattr(folded, name)[1].register_forward_pre_hook(watch(name))
    with torch.no_grad():
        for picture, *_ in DataLoader(crops, BATCH):
            folded(picture)
    weights = folded.state_dict()
    for name in normed:
        count, total, squares = sums[name]
        mean = total / count
        variance = (squares / count - mean * mean).clamp(min=1e-6)
        weights[name + ".1.running_mean"], weights[name + ".1.running_var"] = mean.float(), variance.float()
        weights[name + ".1.weight"] = torch.sqrt(variance + Net().stem[1].eps).float()
        weights[name + ".1.bias"] = (weights[name + ".1.bias"] + mean).float()
    return weights


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("samples")
    parser.add_argument("steps", type=int)
    parser.add_argument("out")
    parser.add_argument("--rate", type=float, default=4e-3)
    parser.add_argument("--start")
    parser.add_argument("--keep", type=float, default=0)
    parser.add_argument("--near", type=float, default=0)
    parser.add_argument("--first", type=int, default=0, help="number of the first crop, so that a second run sees others")
    given = parser.parse_args()
    torch.set_num_threads(2)
    torch.manual_seed(1)
    held, taught = [], []
    for folder in given.samples.split(","):
        folder, _, times = folder.partition("*")
        names = sorted(path[:-len(".full.npy")] for path in glob.glob(folder + "/*.full.npy"))
        held += names[::HELD_BACK]
        taught += [name for i, name in enumerate(names) if i % HELD_BACK] * int(times or 1)
    taught += [name for name in taught if has_hangul(name)] * 2  # a tenth of the letters otherwise
    net, mean, step = Net().to(memory_format=torch.channels_last), Net(), 0
    if given.start:
        if given.start.endswith(".pt"):
            start = torch.load(given.start)
        else:
            start = load(given.start).state_dict() if given.near else with_statistics(given.start, Crops(taught, 40 * BATCH))
        net.load_state_dict(start)
    mean.load_state_dict(net.state_dict())
    if given.near:
        before = copy.deepcopy(net).eval().requires_grad_(False)
    trained = [weight for name, weight in net.named_parameters() if not (given.near and name.endswith(".1.weight"))]
    optimizer = torch.optim.AdamW(trained, lr=given.rate, weight_decay=0 if given.near else 1e-4)
    if os.path.exists(given.out + ".state"):
        step, state, weights = torch.load(given.out + ".state")
        net.load_state_dict(weights)
        optimizer.load_state_dict(state)
        mean.load_state_dict(torch.load(given.out))
    print(f"{len(taught)} samples, {len(held)} held back, from step {step}", flush=True)
    crops = Crops(taught, (given.steps - step) * BATCH)
    offset = given.first + step * BATCH
    loader = DataLoader(torch.utils.data.Subset(Crops(taught, given.first + given.steps * BATCH), range(offset, offset + len(crops))), BATCH, num_workers=2, prefetch_factor=4)
    watched = DataLoader(Crops(held[::max(1, len(held) // 60)], min(len(held), 60), False), BATCH)
    begun, sums = time.time(), []
    for picture, truth, sure, script in loader:
        part = step / given.steps
        for group in optimizer.param_groups:
            group["lr"] = given.rate * min(1, part / .03 + .02) * (.5 + .5 * math.cos(math.pi * part)) + 1e-5
        net.train(not given.near)
        optimizer.zero_grad()
        picture = picture.contiguous(memory_format=torch.channels_last)
        outputs = net(picture)
        held_near = 0
        if given.near:
            with torch.no_grad():
                known = before(picture)
                sure = sure * (1 + (TAKEN - 1) * ((torch.sigmoid(known[0][:, 4:5]) > .3) & may_be_icon(picture, truth)))
            held_near = given.near * distance(outputs, known, (truth, script), sure)
        value, _, _ = loss(outputs, truth, sure, script)
        (value + held_near).backward()
        torch.nn.utils.clip_grad_norm_(trained, 5.)
        optimizer.step()
        step += 1
        sums.append(value.item())
        keep = min(.995, step / (step + 20))
        with torch.no_grad():
            for target, source in zip(mean.state_dict().values(), net.state_dict().values()):
                target.copy_(target * keep + source * (1 - keep) if target.is_floating_point() else source)
        if step % 250 == 0 or step == given.steps:
            mean.eval()
            with torch.no_grad():
                seen = [loss(mean(p), t, s, k) for p, t, s, k in watched]
            dice = torch.stack([d for _, d, _ in seen]).mean(0)
            print(f"{(time.time() - begun) / 60:6.1f} min, step {step}: loss {np.mean(sums):.3f}, held back {np.mean([v.item() for v, _, _ in seen]):.3f}, "
                  f"ink {dice[:4].mean():.3f} core {dice[4]:.3f} gap {dice[5]:.3f} script {np.mean([k.item() for _, _, k in seen]):.3f}", flush=True)
            sums = []
            torch.save(mean.state_dict(), given.out)
            torch.save((step, optimizer.state_dict(), net.state_dict()), given.out + ".state")
    if given.keep:
        torch.save({key: value * (1 - given.keep) + start[key] * given.keep if value.is_floating_point() else value
                    for key, value in mean.state_dict().items()}, given.out)


if __name__ == "__main__":
    main()
