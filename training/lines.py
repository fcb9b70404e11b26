"""From a picture to line boxes, as the program does it, for measuring."""
import numpy as np
import torch
from scipy import ndimage

from net import MULTIPLE

SETTINGS = {"core": .5, "gap": .5, "ink": .3, "mean": .6, "reach": .8, "area": 3}


def maps(net, picture):
    """RGB bytes to (ink at full size, core and gap at half size), each 0..1."""
    height, width = picture.shape[:2]
    padded = np.pad(picture, ((0, -height % MULTIPLE), (0, -width % MULTIPLE), (0, 0)), mode="edge")
    values = torch.from_numpy(padded.transpose(2, 0, 1)[None].astype(np.float32)) / 255 - .5
    with torch.no_grad():
        out = torch.sigmoid(net(values)[0])[0].numpy()
    ink = out[:4].reshape(2, 2, *out.shape[1:]).transpose(2, 0, 3, 1).reshape(padded.shape[:2])
    return ink[:height, :width], out[4, :(height + 1) // 2, :(width + 1) // 2], out[5, :(height + 1) // 2, :(width + 1) // 2]


def boxes(ink, core, gap, settings=None):
    """Components of the core between gaps; each takes the ink near it. Returns boxes (left, top, right, bottom)."""
    given = SETTINGS if settings is None else settings
    labels, count = ndimage.label((core > given["core"]) & (gap < given["gap"]))
    if not count:
        return []
    mean = np.append(0, ndimage.mean(core, labels, range(1, count + 1)))
    area = np.bincount(labels.ravel(), minlength=count + 1)
    thick = np.zeros(count + 1)
    for i, place in enumerate(ndimage.find_objects(labels), 1):
        rows, columns = (s.stop - s.start for s in place)
        thick[i] = max(1., min(rows, 1.15 * area[i] / columns))
    keep = (mean >= given["mean"]) & (area >= given["area"])
    keep[0] = False
    labels[~keep[labels]] = 0
    if not labels.any():
        return []
    distance, (ys, xs) = ndimage.distance_transform_edt(labels == 0, return_indices=True)
    nearest = labels[ys, xs]
    mine = np.where(distance <= given["reach"] * thick[nearest] + 1, nearest, 0)
    height, width = ink.shape
    mine = mine.repeat(2, 0).repeat(2, 1)[:height, :width] * (ink > given["ink"])
    found = []
    for i, place in enumerate(ndimage.find_objects(mine), 1):
        if place is None:
            continue
        rows, columns = place
        if rows.stop - rows.start >= max(3, 1.2 * thick[i]):
            found.append((columns.start, rows.start, columns.stop, rows.stop))
    return found
