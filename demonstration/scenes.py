"""What the gallery lays the pane over: pages, a picture full of detail, small print; drawn at any scale. Each scene tells
its texts with their translations, so that the gallery's engine can answer."""
import dataclasses
import math
import random

from PIL import Image, ImageDraw, ImageFilter, ImageFont

NOTO = "/usr/share/fonts/truetype/noto/NotoSans-{}.ttf"
CJK = "/usr/share/fonts/opentype/noto/NotoSansCJK-{}.ttc"
SIZE = (1280, 800)


@dataclasses.dataclass
class Text:
    """A line on a scene: where its top left is, in points, and how large it is."""
    text: str
    x: int
    y: int
    pixels: int
    weight: str = "Regular"
    ink: str = "ink"


class Scene:
    def __init__(self, scale: float, paper: str, ink: str):
        self.scale = scale
        self.colors = {"ink": ink, "paper": paper}
        self.image = Image.new("RGB", (int(SIZE[0] * scale), int(SIZE[1] * scale)), paper)
        self.draw = ImageDraw.Draw(self.image)

    def box(self, x: int, y: int, width: int, height: int, color: str, radius: int = 0) -> None:
        corners = [int(side * self.scale) for side in (x, y, x + width - 1, y + height - 1)]
        self.draw.rounded_rectangle(corners, int(radius * self.scale), fill=color)

    def write(self, line: Text) -> None:
        path = CJK if any(ord(letter) > 0x2e80 for letter in line.text) else NOTO
        font = ImageFont.truetype(path.format(line.weight), int(line.pixels * self.scale))
        place = (int(line.x * self.scale), int(line.y * self.scale))
        self.draw.text(place, line.text, font=font, fill=self.colors.get(line.ink, line.ink), anchor="la")

    def paste(self, picture: Image.Image, x: int, y: int, radius: int) -> None:
        mask = Image.new("L", picture.size)
        ImageDraw.Draw(mask).rounded_rectangle((0, 0, picture.width - 1, picture.height - 1), int(radius * self.scale), 255)
        self.image.paste(picture, (int(x * self.scale), int(y * self.scale)), mask)


def coast(width: int, height: int, detail: int = 1) -> Image.Image:
    """An evening at the sea: a sky, the sun, hills and glittering water, with a camera's grain."""
    chance = random.Random(7)
    picture = Image.new("RGB", (width, height))
    draw = ImageDraw.Draw(picture)
    horizon = int(height * 0.58)
    for y in range(height):
        share = y / horizon if y < horizon else (y - horizon) / (height - horizon)
        top, bottom = ((52, 74, 140), (250, 176, 120)) if y < horizon else ((214, 140, 118), (22, 46, 84))
        draw.line((0, y, width, y), tuple(int(a + (b - a) * share) for a, b in zip(top, bottom)))
    sun = height // 11
    draw.ellipse((width * 0.66 - sun, horizon - 2.4 * sun, width * 0.66 + sun, horizon - 0.4 * sun), (255, 236, 190))
    for layer, color in enumerate([(120, 96, 130), (74, 70, 108), (34, 44, 70)]):
        points = [(x, horizon - height * (0.16 - 0.045 * layer) * (0.6 + 0.4 * math.sin(x / width * (5 + 4 * layer) + layer))
                   - chance.random() * height * 0.008) for x in range(0, width + 1, max(2, width // 160))]
        draw.polygon([(0, horizon + 2), *points, (width, horizon + 2)], color)
    for _ in range(900 * detail):
        y = horizon + (height - horizon) * chance.random() ** 1.4
        x, length = chance.gauss(0.62, 0.26) * width, chance.random() * width / 28 + 2
        shade = chance.choice([(255, 220, 170), (255, 190, 140), (120, 130, 170), (30, 50, 90)])
        draw.line((x, y, x + length, y), shade, max(1, height // 500))
    for _ in range(260 * detail):
        x, y = chance.random() * width, height * (0.86 + 0.14 * chance.random())
        draw.line((x, y, x + chance.gauss(0, 4), y - height * 0.05 * chance.random()),
                  chance.choice([(18, 36, 30), (60, 92, 52), (150, 150, 70), (210, 90, 60)]), 2)
    grain = Image.effect_noise((width, height), 26).convert("RGB")
    return Image.blend(picture, grain, 0.07).filter(ImageFilter.SMOOTH)


ARTICLE = [
    Text("Lighthouses of the North", 300, 228, 30, "Bold"),
    Text("How the lamps were kept burning through the winter", 300, 276, 17, "Regular", "dim"),
    Text("The keeper climbed the tower at dusk.", 300, 318, 19),
    Text("Every four hours the oil had to be filled up,", 300, 351, 19),
    Text("and the lens was cleaned before sunrise.", 300, 384, 19),
    Text("Read more", 316, 428, 16, "Bold", "#ffffff"),
]


def article(scale: float, dark: bool = False) -> Image.Image:
    scene = Scene(scale, "#16181d", "#d9dce3") if dark else Scene(scale, "#ffffff", "#23262d")
    scene.colors["dim"] = "#8d93a1" if dark else "#6a7180"
    scene.box(0, 0, 1280, 64, "#22252d" if dark else "#f2f4f7")
    scene.box(40, 20, 24, 24, "#e2604a", 12)
    for x, word in ((84, "The Coastal Review"), (880, "Stories"), (970, "Archive"), (1066, "About us"), (1168, "Shop")):
        scene.write(Text(word, x, 20, 17, "Bold" if x < 100 else "Regular"))
    scene.paste(coast(int(340 * scale), int(460 * scale)), 860, 130, 14)
    scene.write(Text("Photograph: the bay in October", 862, 602, 13, ink="dim"))
    scene.box(300, 422, 106, 34, "#2f6fe4", 8)
    for line in ARTICLE:
        scene.write(line)
    for row, width in enumerate((500, 470, 510, 300)):  # paragraphs too far away to matter
        scene.box(300, 500 + 30 * row, width, 10, "#262a33" if dark else "#eceff3", 5)
        scene.box(300, 660 + 30 * row, width - 40, 10, "#262a33" if dark else "#eceff3", 5)
    return scene.image


SIGNS = [Text("Harbour ferry", 330, 236, 34, "Bold", "#ffffff"), Text("Departs every twenty minutes", 330, 290, 22, "Regular", "#fff4d8"),
         Text("Bicycles travel free of charge", 330, 330, 22, "Regular", "#fff4d8")]


def photograph(scale: float) -> Image.Image:
    scene = Scene(scale, "#000000", "#ffffff")
    scene.image.paste(coast(SIZE[0] * scale, SIZE[1] * scale, 3))
    for line in SIGNS:
        scene.write(line)
    return scene.image


PALE = [Text("Almost white writing on white paper", 310, 250, 22, "Regular", "#c4c8ce"),
        Text("must not shine through the translation", 310, 296, 22, "Regular", "#b4b9c2"),
        Text("Black writing on white paper", 310, 342, 22, "Bold", "#000000")]


def white_page(scale: float, lines: list[Text]) -> Image.Image:
    scene = Scene(scale, "#ffffff", "#111111")
    for line in lines:
        scene.write(line)
    return scene.image


PRINT = [Text("Terms of use: the ticket is valid for one crossing only", 300, 240, 11),
         Text("Luggage is carried at the owner's risk", 300, 264, 11),
         Text("Children under six travel free with an adult", 300, 288, 11),
         Text("Refunds are given up to one hour before departure", 300, 312, 11),
         Text("Lost property is kept at the harbour office", 300, 336, 12),
         Text("Please keep this receipt", 300, 360, 12)]

MESSAGES = [Text("See you at the harbour tonight", 310, 240, 20), Text("The fish soup here is wonderful", 310, 284, 20),
            Text("Call me when the ferry arrives", 310, 328, 20), Text("We have three tickets left", 310, 372, 20)]


# A toolbar: what is longer in another language must not run into its neighbour.
ROW = [Text("View", 310, 240, 17), Text("Editor", 370, 240, 17), Text("Window", 446, 240, 17), Text("File", 530, 240, 17),
       Text("Wrap long lines", 312, 284, 17), Text("Display line endings", 310, 316, 17),
       Text("The lines end here", 311, 348, 17)]


# Two columns of a page, in English and in Chinese.
COLUMNS = (["Every evening the keeper climbed", "the tower with a can of oil, lit the", "lamp and waited until the ships",
            "had found their way into the bay."],
           ["When the fog came in, a bell was", "rung every two minutes, so that", "nobody who listened could miss",
            "the rocks below the tower."])
CHINESE_COLUMNS = (["每天傍晚，守塔人都會提著一罐", "油登上燈塔，點亮燈火，一直等", "到所有船隻平安駛進海灣為止。"],
                   ["起霧的時候，每兩分鐘要敲一次", "鐘，只要仔細聽，就不會撞上塔", "下的礁石。"])


def columns(scale: float, is_chinese: bool) -> Image.Image:
    scene = Scene(scale, "#fbfaf6", "#23262d")
    scene.write(Text("北方的燈塔" if is_chinese else "Lighthouses of the North", 292, 246, 24, "Bold"))
    for x, lines in zip((292, 546), CHINESE_COLUMNS if is_chinese else COLUMNS):
        for row, line in enumerate(lines):
            scene.write(Text(line, x, 304 + 26 * row, 16 if is_chinese else 14))
    return scene.image


PAGE = [Text("北の灯台", 92, 150, 30, "Bold"), Text("冬のあいだ灯はどう守られたか", 92, 204, 17, "Regular", "dim"),
        Text("灯台守は夕暮れに塔へ登った。", 92, 248, 19), Text("四時間ごとに油を足し、", 92, 281, 19),
        Text("夜明け前にレンズを磨いた。", 92, 314, 19)]
DIALOGUE = [Text("村長", 716, 300, 17, "Bold", "#ffd98a"),
            Text("旅の者よ、この先の橋は壊れている。", 716, 334, 20, "Regular", "#ffffff"),
            Text("鍛冶屋に鉄を三つ届けてくれないか。", 716, 370, 20, "Regular", "#ffffff")]
SUBTITLES = [Text("船要到天亮才會開。", 518, 664, 24, "Bold", "#ffffff"), Text("我們在港口等吧。", 530, 700, 24, "Bold", "#ffffff")]


def desk(scale: float) -> Image.Image:
    """A page, a game and a film side by side."""
    scene = Scene(scale, "#2c3440", "#23262d")
    scene.colors["dim"] = "#6a7180"
    scene.box(50, 60, 540, 350, "#ffffff", 10)
    scene.box(50, 60, 540, 46, "#eef1f5", 10)
    scene.box(70, 74, 18, 18, "#e2604a", 9)
    scene.paste(coast(int(130 * scale), int(210 * scale)), 430, 140, 8)
    scene.paste(coast(int(560 * scale), int(350 * scale), 2).transpose(Image.Transpose.FLIP_LEFT_RIGHT), 670, 60, 10)
    scene.box(690, 284, 520, 112, "#1a2233", 8)
    scene.paste(coast(int(560 * scale), int(300 * scale), 2), 350, 450, 10)
    for line in [*PAGE, *DIALOGUE]:
        scene.write(line)
    for line in SUBTITLES:
        for x, y in ((-2, 0), (2, 0), (0, -2), (0, 2)):
            scene.write(dataclasses.replace(line, x=line.x + x, y=line.y + y, ink="#101010"))
        scene.write(line)
    return scene.image


def dark_article(scale: float) -> Image.Image:
    return article(scale, True)
