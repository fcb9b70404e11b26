"""The picture on which scripts/check-package tries the program:
package_picture.py draw PICTURE | judge PICTURE TRANSLATED ANSWER.json"""
import json
import sys

from PIL import Image, ImageChops, ImageDraw, ImageFont

FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"
# Texts of file dialogs, which the toolkit's own catalogues hold.
LINES = ["Cancel", "Save All", "Close without Saving", "Don't Save", "Open", "Restore Defaults"]


def draw(path: str) -> None:
    picture = Image.new("RGB", (480, 400), "#fbfbf8")
    pen = ImageDraw.Draw(picture)
    font = ImageFont.truetype(FONT, 24)
    for number, line in enumerate(LINES):
        pen.text((48, 40 + 56 * number), line, fill="#1c1c22", font=font)
    picture.save(path)


def judge(original: str, translated: str, answer: str) -> None:
    with open(answer, encoding="utf-8") as file:
        blocks = json.load(file)["blocks"]
    for block in blocks:
        print(f"  {block['text']}  →  {block['translation']}")
    read = [block["text"] for block in blocks]
    if read != LINES:
        sys.exit(f"these lines were read: {read}")
    known = [block for block in blocks if any("\u4e00" <= character <= "\u9fff" for character in block["translation"])]
    if len(known) < 3:
        sys.exit("hardly a line was translated")
    before, after = (Image.open(path).convert("L") for path in (original, translated))
    if not ImageChops.difference(before, after).getbbox():
        sys.exit("nothing was drawn over the lines")
    drawn = {block["translation"]: ink(after, block["frame"]) for block in known}
    if len(set(drawn.values())) < len(drawn):
        sys.exit("different translations look the same: no font has their characters")


def ink(picture: Image.Image, frame: list[float]) -> bytes:
    """What is written in an overlay, in the overlays' near white: the pane's point (2, 2) is the picture's corner."""
    x, y, width, height = (round(value) for value in frame)
    part = picture.crop((x - 2, y - 2, x - 2 + width, y - 2 + height)).point(lambda value: 255 * (value > 200))
    return part.crop(part.getbbox()).tobytes() if part.getbbox() else b""


if __name__ == "__main__":
    draw(*sys.argv[2:]) if sys.argv[1] == "draw" else judge(*sys.argv[2:])
