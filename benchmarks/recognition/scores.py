"""How well the lines that were found in a picture match those that are in it.

A line is a dictionary with "text", "x", "y", "width", "height" (pixels, origin top-left); a true line may have "ignore"
(it is cut off at an edge, so neither finding nor missing it counts).

- Texts are compared after NFKC, without white space, with one sign for the variants of dots, dashes and quotes.
- A found line belongs to a true one where they share half of the smaller height and half of the smaller width. Lines
  that belong together, directly or through others, are compared as one text each, so that splitting a line costs
  nothing here.
- recall: the share of the true lines that have a found line of their own whose box matches (overlap at least half of
  the union).
- spurious: the share of the found lines that belong to no true line.
- exact: the share of the true lines in whose group there is no error.
"""

import unicodedata

VARIANTS = str.maketrans(
    "・‧•∙⋅“”„‘’‐‑‒–—―−",
    "·····" + '"""' + "''" + "-------",
)


def plain(text):
    return "".join(unicodedata.normalize("NFKC", text).translate(VARIANTS).split())


def distance(a, b):
    """Insertions, deletions and replacements that make b of a."""
    if len(a) < len(b):
        a, b = b, a
    costs = list(range(len(b) + 1))
    for row, left in enumerate(a, 1):
        diagonal, costs[0] = costs[0], row
        for column, right in enumerate(b, 1):
            best = min(costs[column], costs[column - 1]) + 1
            diagonal, costs[column] = costs[column], min(best, diagonal + (left != right))
    return costs[-1]


def shared(a, b, origin, size):
    return min(a[origin] + a[size], b[origin] + b[size]) - max(a[origin], b[origin])


def belong_together(a, b):
    return all(
        shared(a, b, origin, size) > 0 and 2 * shared(a, b, origin, size) >= min(a[size], b[size])
        for origin, size in (("x", "width"), ("y", "height"))
    )


def box_overlap(a, b):
    width, height = shared(a, b, "x", "width"), shared(a, b, "y", "height")
    if width <= 0 or height <= 0:
        return 0
    common = width * height
    return common / (a["width"] * a["height"] + b["width"] * b["height"] - common)


def text_in_order(lines):
    """The lines' text from the top to the bottom, those at one height from the left to the right."""
    rows = []
    for line in sorted(lines, key=lambda l: 2 * l["y"] + l["height"]):
        if rows and 2 * shared(rows[-1][0], line, "y", "height") >= min(rows[-1][0]["height"], line["height"]):
            rows[-1].append(line)
        else:
            rows.append([line])
    return "".join(plain(line["text"]) for row in rows for line in sorted(row, key=lambda l: l["x"]))


def groups_of(true, found):
    """Pairs of lists: true lines and the found ones that belong to them."""
    groups = [([line], []) for line in true]
    for line in found:
        mine = [group for group in groups if any(belong_together(other, line) for other in group[0])]
        if not mine:
            continue
        merged = ([], [line])
        for group in mine:
            merged[0].extend(group[0])
            merged[1].extend(group[1])
        groups = [group for group in groups if group not in mine] + [merged]
    return groups


def count_matching_boxes(true, found):
    pairs = sorted(
        ((box_overlap(a, b), i, j) for i, a in enumerate(true) for j, b in enumerate(found)), reverse=True
    )
    taken_true, taken_found = set(), set()
    for overlap, i, j in pairs:
        if overlap >= 0.5 and i not in taken_true and j not in taken_found:
            taken_true.add(i)
            taken_found.add(j)
    return len(taken_true)


def score(true, found):
    """Counts of one picture, to be summed up over several; and the pairs of texts that differ."""
    ignored = [line for line in true if line.get("ignore")]
    true = [line for line in true if not line.get("ignore")]
    found = [line for line in found if plain(line["text"]) and line["width"] > 0 and line["height"] > 0]
    found = [
        line
        for line in found
        if any(belong_together(other, line) for other in true)
        or not any(belong_together(other, line) for other in ignored)
    ]
    counts = {"lines": len(true), "found": len(found), "characters": 0, "errors": 0, "exact": 0}
    differences = []
    for mine, theirs in groups_of(true, found):
        meant, read = text_in_order(mine), text_in_order(theirs)
        errors = distance(meant, read)
        counts["characters"] += len(meant)
        counts["errors"] += errors
        counts["exact"] += 0 if errors else len(mine)
        if errors:
            differences.append((meant, read))
    spurious = [line for line in found if not any(belong_together(other, line) for other in true)]
    differences += [("", plain(line["text"])) for line in spurious]
    counts["spurious"] = len(spurious)
    counts["matched"] = count_matching_boxes(true, found)
    return counts, differences


def rates(counts):
    return {
        "cer": counts["errors"] / max(1, counts["characters"]),
        "recall": counts["matched"] / max(1, counts["lines"]),
        "spurious": counts["spurious"] / max(1, counts["found"]),
        "exact": counts["exact"] / max(1, counts["lines"]),
    }
