"""Turns two pictures of a page, with text and without, into a sample: the picture and what the net is to say about it."""
import numpy as np

SEEN = 14        # smallest difference of a channel that counts as ink
CORE, GAP, UNSURE = 1, 2, 4  # bits of the map at half size; the map at an eighth has a bit for each script


def ink_and_lines(shown, hidden, pieces):
    """Coverage of the letters, 0..1, what of it belongs to no line, and the lines as (ink box, pieces, cut off?)."""
    difference = np.abs(shown.astype(np.int16) - hidden).max(2)
    height, width = difference.shape
    ink, known = np.zeros((height, width), np.float32), np.zeros((height, width), bool)
    lines = []
    rows = [row for block in rows_of(pieces) for row in parted(block, difference)]
    ends = np.array([(min(p[1] for p in row), min(p[2] for p in row), max(p[3] for p in row), max(p[4] for p in row)) for row in rows]).reshape(-1, 4)
    for row, own in zip(rows, ends):
        left, top = max(0, int(own[0]) - 2), max(0, int(own[1]) - 1)
        right, bottom = int(own[2]) + 3, int(own[3]) + 2
        area = np.s_[top:bottom, left:right]
        inside = difference[area].copy()
        leave_to_neighbours(inside, left, top, own, ends, difference)
        strong = inside[inside > SEEN]
        if not strong.size or np.percentile(strong, 90) < 22:
            continue  # nothing to be seen
        part = coverage(shown[area], hidden[area], inside, row)
        ink[area], known[area] = np.maximum(ink[area], part), True
        ys, xs = np.nonzero(part > .3)
        if not ys.size:
            continue
        box = (left + xs.min(), top + ys.min(), left + xs.max() + 1, top + ys.max() + 1)
        area_height = np.median([p[4] - p[2] for p in row])
        if box[3] - box[1] < .3 * area_height:  # flat characters such as a lone ideograph for one: as high as others
            middle = np.median([p[2] + p[4] for p in row]) / 2
            box = (box[0], max(0, round(middle - .28 * area_height)), box[2], min(shown.shape[0], round(middle + .28 * area_height)))
        whole = max(p[8] for p in row if p[7]) > .6 and not (box[0] == 0 and min(p[1] for p in row) <= 0)
        lines.append((box, row, whole and any(p[5] >= 0 for p in row) and box[3] - box[1] >= 3))
    return ink, (difference > SEEN) & ~known, lines


def border(difference, upper, lower):
    """Where the lower of two rows begins, whose boxes overlap: the emptiest place about the middle."""
    middle, reach = (upper[3] + lower[1]) / 2, .15 * min(upper[3] - upper[1], lower[3] - lower[1])
    columns = np.s_[max(0, int(max(upper[0], lower[0]))):int(min(upper[2], lower[2])) + 1]
    rows = range(max(0, round(middle - reach)), min(difference.shape[0] - 1, round(middle + reach)) + 1)
    return min(rows, key=lambda y: (difference[y, columns].astype(int).sum(), abs(y - middle)), default=round(middle))


def leave_to_neighbours(inside, left, top, own, ends, difference):
    """Clears what of an area belongs to the rows above and below its own, which reach into it where rows are close."""
    bottom, right = top + inside.shape[0], left + inside.shape[1]
    middle = own[1] + own[3]
    for other in ends[(ends[:, 0] < right) & (ends[:, 2] > left) & (ends[:, 1] < bottom) & (ends[:, 3] > top)]:
        columns = np.s_[max(0, int(other[0]) - left):max(0, int(other[2]) + 1 - left)]
        apart = .6 * min(other[3] - other[1], own[3] - own[1])
        if other[1] + other[3] > middle + apart:
            inside[max(0, border(difference, own, other) - top):, columns] = 0
        elif other[1] + other[3] < middle - apart:
            inside[:max(0, border(difference, other, own) - top), columns] = 0


def colour(text):
    numbers = text[text.find("(") + 1:-1].split(",")
    return np.array([float(v) for v in numbers[:3]], np.float32) if len(numbers) >= 3 else None


def coverage(shown, hidden, difference, row):
    """How far each pixel went from the ground to the text's colour; by the strongest difference where that varies."""
    fills = {p[6] for p in row}
    fill = colour(next(iter(fills))) if len(fills) == 1 else None
    if fill is None:
        return np.clip(difference / max(SEEN, np.percentile(difference[difference > SEEN], 90)), 0, 1)
    way = fill - hidden
    length = (way * way).sum(2)
    part = ((shown.astype(np.float32) - hidden) * way).sum(2) / np.maximum(length, 1)
    part[(length < 24 ** 2) | (difference <= 2)] = 0
    strong = part[part > .2]
    return np.clip(part / max(.3, np.percentile(strong, 95) if strong.size else 1), 0, 1)


def rows_of(pieces):
    """The pieces of each visual line of each block."""
    blocks = {}
    for piece in pieces:
        rows = blocks.setdefault(piece[0], [])
        for row in rows:
            top, bottom = max(p[2] for p in row[-3:]), min(p[4] for p in row[-3:])
            shared = min(bottom, piece[4]) - max(top, piece[2])
            if shared > .5 * min(piece[4] - piece[2], bottom - top):
                row.append(piece)
                break
        else:
            rows.append([piece])
    for rows in blocks.values():
        for row in rows:
            if any(p[7] for p in row):
                yield sorted(row, key=lambda p: p[1])


def parted(row, difference):
    """Parts a row where more than 2.2 heights hold no ink; pieces with such a run inside are cut there."""
    top, bottom = max(0, int(min(p[2] for p in row))), int(max(p[4] for p in row)) + 1
    left, right = max(0, int(row[0][1]) - 2), int(max(p[3] for p in row)) + 3
    inked = np.flatnonzero((difference[top:bottom, left:right] > SEEN).any(0))
    if not inked.size:
        return
    height = np.median([p[4] - p[2] for p in row])
    breaks = inked[1:][np.diff(inked) > 2.2 * height * .8]  # of content areas, higher than the ink
    start = left
    for end in [*(left + breaks - 1), right + 1]:
        part = [[p[0], max(p[1], start), p[2], min(p[3], end), *p[4:]] for p in row if min(p[3], end) - max(p[1], start) > .5]
        if any(p[7] for p in part):
            yield part
        start = end


def half(array):
    height, width = array.shape
    return array.reshape(height // 2, 2, width // 2, 2)


def sample(shown, hidden, pieces):
    """Returns (RGB and ink at full size, bits at half size, script bits at an eighth), sides multiples of 8."""
    height, width = (side // 8 * 8 for side in shown.shape[:2])
    shown, hidden = shown[:height, :width], hidden[:height, :width]
    ink, stray, lines = ink_and_lines(shown, hidden, pieces)
    core, gap, taken = (np.zeros((height // 2, width // 2), bool) for _ in range(3))
    unsure = half(stray).any((1, 3))
    script = np.zeros((height // 8, width // 8), np.uint8)
    for (left, top, right, bottom), row, whole in lines:
        if not whole:
            unsure[top // 2:(bottom + 1) // 2, left // 2:(right + 1) // 2] = True
            continue
        tall, middle = bottom - top, (top + bottom) / 2
        thick, short = max(1., tall * .25), min(tall * .12, (right - left) * .2)
        first = max(0, round((middle - thick) / 2))
        core[first:max(first + 1, round((middle + thick) / 2)), round((left + short) / 2):max(round((left + short) / 2) + 1, round((right - short) / 2))] = True
        taken[top // 2:(bottom + 1) // 2, left // 2:(right + 1) // 2] = True
        reach = max(4, tall * .6)
        rows = np.s_[round((middle - tall * .42) / 2):max(first + 1, round((middle + tall * .42) / 2))]
        gap[rows, max(0, round((left - reach) / 2)):left // 2] = True
        gap[rows, (right + 1) // 2:round((right + reach) / 2)] = True
        for piece in row:
            if piece[5] >= 0:
                script[round((middle - tall * .3) / 8):max(round((middle + tall * .3) / 8), round((middle - tall * .3) / 8) + 1), int(piece[1] / 8):int(piece[3] / 8) + 1] |= 1 << piece[5]
    bits = core * np.uint8(CORE) | (gap & ~taken) * np.uint8(GAP) | (unsure & ~core) * np.uint8(UNSURE)
    return np.dstack([shown, np.round(ink * 255).astype(np.uint8)]), bits, script
