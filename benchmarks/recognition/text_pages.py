"""Random screens whose paragraphs are known, beside what must not be joined: lists, settings, tables, menus, code, verse."""
import functools
import html
import re

from pages import Screen

KINDS = ("article", "columns", "forum", "chat", "novel", "subtitle", "bubbles", "list", "settings", "table", "menu", "code", "verse")
SCRIPTS = {"en": "[a-z]", "zh_TW": "[\u4e00-\u9fff]", "zh_CN": "[\u4e00-\u9fff]", "ja": "[\u3041-\u30ff]", "ko": "[\uac00-\ud7a3]"}
SENTENCE = {"en": r"(?<=[.!?])\s+(?=[A-Z])", "ko": r"(?<=[.!?])\s+"}


@functools.cache
def paragraphs(paths, language):
    """The paragraphs of documents that are mostly written in the language."""
    found = set()
    for path in paths:
        with open(path, encoding="utf-8", errors="replace") as file:
            texts = re.findall(r"<p[^>]*>(.*?)</p>", file.read(), re.S)
        for text in (each for each in texts if "<pre" not in each):
            text = re.sub(r"\s+", " ", html.unescape(re.sub(r"<[^>]+>", "", text))).strip()
            if language != "en" and language != "ko":  # the sources break lines where no space is meant
                text = re.sub(r"(?<=[\u3000-\u9fff\uff00-\uffef]) (?=[\u3000-\u9fff\uff00-\uffef])", "", text)
            if 40 <= len(text) <= 700 and len(re.findall(SCRIPTS[language], text)) > .3 * len(text):
                found.add(text)
    return sorted(found)


class TextScreen(Screen):
    def __init__(self, chance, material, language, dark):
        super().__init__(chance, material, language, dark)
        self.texts = paragraphs(tuple(material["documents"][language]), language)
        self.leading = f"line-height:{self.pick((1.15, 1.25, 1.35, 1.4, 1.5, 1.6, 1.75, 1.9))};"
        self.align = self.pick(("left", "left", "justify"))

    def passage(self):
        return html.escape(self.pick(self.texts))

    def sentences(self, shortest, longest):
        """One to three sentences, of about that many characters of Latin text."""
        factor = 1 if self.language == "en" else .45
        for _ in range(300):
            parts = re.split(SENTENCE.get(self.language, "(?<=[。！？])"), self.pick(self.texts))
            text = "".join(parts[:1]) if self.maybe(.6) else (" " if self.language in SENTENCE else "").join(parts[:3])
            if shortest * factor <= len(text) <= longest * factor:
                return html.escape(text)
        return html.escape(text[:int(longest * factor)])

    def paragraph(self, gap="", text=None):
        return f'<p style="margin:0;{self.leading}text-align:{self.align};{gap}">{text or self.passage()}</p>'

    def running(self, low, high):
        gap = self.pick(("text-indent:2em;", *(f"margin-bottom:{gap}em;" for gap in (.5, .8, 1))))
        return self.some(low, high, lambda: self.paragraph(gap))

    def heading(self):
        return f'<div style="font-size:{self.number(125, 240)}%;font-weight:{self.pick((400, 700))};line-height:1.25;margin:.5em 0 .3em">{self.pick((self.short, self.long))()}</div>'

    def note(self):
        return f'<div style="font-size:{self.number(75, 88)}%;color:{self.soft};margin:.3em 0">{self.short()} · {self.figure()}</div>'

    def article(self):
        picture = f'<div style="float:right;width:230px;margin:0 0 12px 18px">{self.picture("width:230px;height:130px;display:block")}<div style="font-size:80%;line-height:1.3;margin-top:4px">{self.sentences(40, 110)}</div></div>' if self.maybe(.3) else ""
        quote = f'<div style="font-size:140%;line-height:1.3;margin:.6em 2em;text-align:{self.pick(("left", "center"))}">{self.sentences(50, 130)}</div>' if self.maybe(.3) else ""
        return f'<div style="width:{self.number(420, 860)}px">{self.heading()}{self.note()}{picture}{self.running(1, 2)}{quote}{self.running(2, 4)}</div>'

    def columns(self):
        return f'{self.heading()}<div style="columns:{self.pick((2, 2, 3))};column-gap:{self.number(20, 48)}px">{self.running(2, 3)}{self.heading()}{self.running(3, 5)}</div>'

    def forum(self):
        return self.some(4, 6, lambda: f'<div style="width:{self.number(460, 800)}px;margin-bottom:{self.number(6, 20)}px">{self.note()}{self.paragraph(text=self.sentences(40, 400))}<div style="font-size:85%">{self.short()} &nbsp; {self.short()}</div></div>')

    def chat(self):
        look = f"border-radius:{self.number(4, 16)}px;padding:{self.number(4, 9)}px {self.number(8, 14)}px;max-width:{self.number(240, 460)}px;line-height:{self.pick((1.2, 1.3, 1.4))}"
        name = self.maybe(.4)

        def message():
            own = self.maybe(.4)
            head = f'<div style="font-size:82%;font-weight:700">{self.short()}</div>' if name and not own else ""
            return f'<div style="display:flex;margin:6px;justify-content:flex-{"end" if own else "start"}"><div style="background:{self.edge if own else self.panel};{look}">{head}<div>{self.sentences(8, 180)}</div></div></div>'
        return f'<div style="width:{self.number(420, 880)}px">{self.some(6, 10, message)}</div>'

    def novel(self):
        return f'<div style="width:{self.number(440, 720)}px">' + self.some(5, 9, lambda: self.paragraph("text-indent:2em;", self.sentences(30, 420))) + "</div>"

    def subtitle(self):
        box = "background:#000a;" if self.maybe(.3) else ""
        return (f'<div style="position:fixed;inset:0;overflow:hidden;background:#000">{self.scene()}<div style="position:absolute;left:12%;right:12%;bottom:{self.number(16, 70)}px;text-align:center">'
                f'<div style="display:inline-block;text-wrap:balance;font-size:{self.number(22, 38)}px;color:#fff;{box}text-shadow:0 0 3px #000,0 0 3px #000;line-height:{self.pick((1.15, 1.25, 1.4))};max-width:{self.number(420, 640)}px">{self.sentences(30, 90)}</div></div></div>')

    def bubbles(self):
        def bubble(i):
            width = self.number(150, 220)
            return f'<div style="position:absolute;left:{20 + 305 * (i % 3) + self.number(0, 40)}px;top:{20 + 300 * (i // 3) + self.number(0, 60)}px;width:{width}px;text-align:center;line-height:{self.pick((1.2, 1.35))};border:2px solid;border-radius:{self.number(20, 80)}px;padding:22px">{self.sentences(20, 100)}</div>'
        return "".join(bubble(i) for i in range(self.number(3, 6)))

    def list(self):
        mark = self.pick((lambda i: "• ", lambda i: "– ", lambda i: f"{i + 1}. ", lambda i: f"({i + 1}) ", lambda i: ""))
        entry = self.pick((self.short, self.long, lambda: self.sentences(20, 200)))
        gap = f"margin:0 0 {self.pick((0, .2, .5))}em;padding-left:1.6em;text-indent:-1.2em;{self.leading}"
        return f'<div style="width:{self.number(300, 640)}px">{self.paragraph()}' + "".join(f'<div style="{gap}">{mark(i)}{entry()}</div>' for i in range(self.number(5, 12))) + "</div>"

    def settings(self):
        pad = self.number(0, 8)
        side = self.some(6, 14, lambda: f'<div style="padding:{pad}px 8px">{self.short()}</div>')
        main = self.pick((super().settings, self.form, lambda: self.some(5, 12, self.check)))
        return f'<div style="display:flex;gap:20px"><div style="width:{self.number(120, 240)}px;white-space:nowrap;overflow:hidden">{side}</div><div style="flex:1">{main()}{main()}</div></div>'

    def table(self):
        return self.pick((super().table, self.details, self.sheet))()

    def menu(self, style=""):
        return self.menubar() + super().menu("margin:8px 40px") + super().menu("margin:8px;vertical-align:top")

    def code(self, lines=None):
        return self.pick((super().code, self.terminal))()

    def verse(self):
        # The author breaks the lines.
        lines = "<br>".join("<br>" if self.maybe(.12) else self.short() if self.maybe(.5) else self.sentences(12, 40) for _ in range(self.number(8, 16)))
        return f'<div style="text-align:{self.pick(("left", "center"))};{self.leading}white-space:nowrap">{lines}</div>'


def draw(chance, material):
    """Returns (kind, HTML) of a random screen."""
    language = chance.choices(("en", "zh_TW", "zh_CN", "ja", "ko"), (28, 22, 14, 22, 14))[0]
    screen = TextScreen(chance, material, language, chance.random() < .45)
    kind = chance.choice(KINDS)
    if kind not in ("settings", "table", "menu", "code"):
        screen.size = chance.choice((12, 13, 14, 14, 15, 16, 16, 17, 18, 20))
    hyphens = "hyphens:auto;" if chance.random() < .3 else ""
    return kind, (f'<!DOCTYPE html><html lang="{language.replace("_", "-")}"><meta charset="utf-8"><style>div{{max-width:100%;box-sizing:border-box}}</style><body style="margin:{chance.randint(8, 30)}px;background:{screen.ground};color:{screen.text};'
                  f'{hyphens}font:{screen.size}px {screen.font};line-height:{chance.choice(("normal", "1.15", "1.3"))}">{getattr(screen, kind)()}</body></html>')
