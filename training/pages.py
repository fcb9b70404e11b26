"""Random screens as HTML: programs' windows, web pages, games and subtitles.

A screen needs to look like something that exists less than it needs to be unlike the others. Each part draws its own
colours, sizes and texts; `Screen` holds what the parts of one screen share.
"""
import math
from html import escape, unescape

WORDS = ("count index value name self node item list left right width text state error result key path size data buffer "
         "offset user file config request response line token user_id max_size isValid toString getValue").split()
KEYWORDS = "for if else return int void def let const import class while switch auto static public #include fn match".split()


class Screen:
    def __init__(self, chance, material, language, dark):
        self.chance, self.material, self.language, self.dark = chance, material, language, dark
        self.pick, self.number = chance.choice, chance.randint
        tint = self.number(0, 360)

        def colour(low, high, most):
            return f"hsl({(tint + self.number(-30, 30)) % 360},{self.number(0, most)}%,{self.number(low, high)}%)"
        if dark:
            self.ground, self.panel, self.text = colour(4, 24, 30), colour(10, 32, 30), colour(72, 100, 25)
            self.edge, self.soft = colour(24, 48, 20), colour(50, 68, 15)
        else:
            self.ground, self.panel, self.text = colour(92, 100, 40), colour(80, 97, 30), colour(0, 28, 40)
            self.edge, self.soft = colour(60, 86, 20), colour(38, 58, 15)
        self.accent = f"hsl({self.number(0, 360)},{self.number(35, 95)}%,{self.number(30, 60)}%)"
        self.size = self.pick((9, 10, 11, 11, 12, 12, 13, 13, 13, 14, 14, 15, 16, 18))
        self.font, self.mono = self.fonts(), self.fonts(" mono")

    def maybe(self, probability):
        return self.chance.random() < probability

    def some(self, low, high, part, joiner=""):
        return joiner.join(part() for _ in range(self.number(low, high)))

    def fonts(self, kind=""):
        known = self.material["families"]
        own, latin = self.pick(known[self.language + kind] or known[self.language]), self.pick(known["en" + kind])
        names = [latin, own] if self.maybe(.5) else [own, latin]
        return ",".join(f"'{name}'" for name in names + [self.pick(known[l]) for l in ("ja", "zh_CN", "ko")])

    def tone(self, low=20, high=80):
        return f"hsl({self.number(0, 360)},{self.number(0, 95)}%,{self.number(low, high)}%)"

    def vivid(self):
        """A full colour such as games give their numbers."""
        return f"hsl({self.number(0, 360)},{self.number(60, 100)}%,{self.number(38, 65)}%)"

    def bright(self):
        """A colour that is seen on the ground."""
        return self.tone(60, 88) if self.dark else self.tone(18, 44)

    # texts
    def strings(self, kind):
        return self.material["strings"]["en" if self.maybe(.12) else self.language][kind]

    def worded(self, kind, probability):
        """A text, now and then with a word of one letter before it, which looks much like an icon."""
        text = self.pick(self.strings(kind))
        return escape(f"{self.pick('AaI')} {text[0].lower()}{text[1:]}" if text.isascii() and self.maybe(probability) else text)

    def short(self):
        return self.worded("short", .05)

    def long(self):
        return self.worded("long", .2)

    def figure(self):
        n, c = self.number, self.chance
        return self.pick((lambda: str(n(0, 20)), lambda: str(n(0, 9)), lambda: str(n(10, 99)), lambda: str(n(0, 99999)), lambda: f"{c.random() * 1000:.{n(1, 2)}f}",
                          lambda: f"{n(0, 100)}%", lambda: f"{n(0, 23)}:{n(10, 59)}", lambda: f"20{n(10, 26)}-0{n(1, 9)}-{n(10, 28)}",
                          lambda: f"{n(1, 999)} {self.pick(('KB', 'MB', 'GiB', 'kB/s', 'ms', 'px', 'Hz', 'dB', '°C'))}",
                          lambda: f"{self.pick('$€¥£')}{n(1, 9999):,}", lambda: f"{n(0, 40)}/{n(1, 99)}", lambda: f"+{n(1, 99)}", lambda: f"-{n(1, 99)}",
                          lambda: f"x{n(2, 99)}", lambda: f"#{n(0, 0xffffff):06x}", lambda: f"v{n(0, 9)}.{n(0, 30)}.{n(0, 9)}", lambda: f"{n(1, 31)}/{n(1, 12)}/20{n(10, 26)}"))()

    def access(self):
        return f"({self.pick('ABCDEFGHIOPSTVW')})"

    def name(self):
        return self.pick((lambda: f"{self.pick(WORDS)}{self.pick(('', '_old', '-2', '1'))}.{self.pick(('txt', 'png', 'cpp', 'odt', 'html', 'tar.gz', 'mp3'))}",
                          lambda: self.pick(WORDS).capitalize(), lambda: f"{self.pick(WORDS)}_{self.pick(WORDS)}", self.short))()

    def family(self):
        """Returns a maker of names that begin alike: City AA, City BB; Model 01, Model 02."""
        head = self.pick((self.short, lambda: self.pick(WORDS).capitalize()))()
        tail = self.pick((lambda: self.pick("ABCDEFG") * 2, lambda: f"0{self.number(1, 9)}", lambda: str(self.number(1, 40)), lambda: self.pick("ABCDEFGH"), lambda: self.pick(WORDS)))
        return lambda: f"{head} {tail()}"

    def date(self):
        n = self.number
        y, m, d = n(2001, 2029), n(1, 12), n(1, 28)
        return self.pick((f"{y}-{m:02}-{d:02}", f"{d:02}/{m:02}/{y}", f"{y}年{m:02}月{d:02}日", f"{y}年{m}月{d}日", f"{d} {self.pick(('Jan', 'Feb', 'May', 'Oct'))} {y}", f"{y}-{m:02}-{d:02} {n(0, 23):02}:{n(0, 59):02}",
                          f"{y}년 {m}월 {d}일", f"{y}/{m}/{d}"))

    def label(self):
        return self.pick((self.short, self.short, self.short, self.short, self.figure, self.name))()

    # pictures and signs that are no text
    def icon(self, size=None, plain=None):
        size = size or self.pick((16, 16, 22, 24, 32))
        if self.maybe(.2):
            return self.sign(size)
        plain = self.maybe(.5) if plain is None else plain
        shade = f"filter:brightness(0) invert({self.pick((.75, .85, 1)) if self.dark else self.pick((0, .2, .4))});" if plain else ""
        path = self.pick(self.material["plain icons" if plain else "icons"])
        return f'<img src="file://{path}" style="width:{size}px;height:{size}px;vertical-align:middle;flex:none;{shade}">'

    def sign(self, size=14, colour=None):
        """A line drawing as toolkits have: check mark, arrow, cross, radio button, three strokes, dots."""
        n, colour = self.number, colour or self.pick((self.text, self.soft, self.accent))
        shape = self.pick(("M3 7l3 3 6-7", "M4 2l6 5-6 5", "M2 5l5 5 5-5z", "M3 3l8 8M11 3l-8 8", "M2 3h10M2 7h10M2 11h10", "M7 2v10M2 7h10",
                           "M2 7h10", "M2 2h10v10h-10z", "M2 2h10v10h-10zM4 7l2 2 4-5", "M7 2a5 5 0 1 0 .1 0z", "M7 2a5 5 0 1 0 .1 0zM7 5a2 2 0 1 0 .1 0z",
                           "M3 3v.5M3 7v.5M3 11v.5", "M6 2a4 4 0 1 0 .1 0zM9 9l4 4", "M2 12l3-1 7-7-2-2-7 7z", "M2 8l5-5 5 5M7 3v10",
                           f"M{n(1, 13)} {n(1, 13)}L{n(1, 13)} {n(1, 13)}L{n(1, 13)} {n(1, 13)}L{n(1, 13)} {n(1, 13)}"))
        return (f'<svg width="{size}" height="{size}" viewBox="0 0 14 14" style="vertical-align:middle;flex:none"><path d="{shape}" '
                f'fill="{colour if self.maybe(.2) else "none"}" stroke="{colour}" stroke-width="{self.pick((1, 1.4, 2))}"/></svg>')

    def badge(self, size=16):
        """A drawing or a letter on a coloured disc or square, such as lists of a program's parts have."""
        return (f'<span style="display:inline-flex;align-items:center;justify-content:center;width:{size}px;height:{size}px;background:{self.tone(25, 60)};'
                f'border-radius:{self.pick((0, 3, size))}px;vertical-align:middle;flex:none">{self.sign(size - self.number(2, 6), "#fff")}</span>')

    def picture(self, style=""):
        return f'<img src="file://{self.pick(self.material["sprites"] + self.material["grounds"])}" style="object-fit:cover;{style}">'

    def drawing(self, width, height, kind=None):
        """A chart, ruler, wave form, piano roll, bar code, grid, field of dots or map: strokes where no text is."""
        n, parts = self.number, []
        kind = n(0, 8) if kind is None else kind
        stroke = self.pick((self.bright(), self.soft, self.edge))
        if kind == 0:
            points = " ".join(f"{x},{n(2, height - 2)}" for x in range(0, width, n(6, 24)))
            parts.append(f'<polyline fill="none" stroke="{stroke}" stroke-width="{n(1, 3)}" points="{points}"/>')
        elif kind == 1:
            step = n(3, 10)
            parts += [f'<path d="M{x} {height}v-{height * (.9 if i % 10 == 0 else .6 if i % 5 == 0 else .35):.0f}" stroke="{stroke}"/>' for i, x in enumerate(range(0, width, step))]
        elif kind == 2:
            parts += [f'<rect x="{x}" y="{height / 2 - h}" width="1.5" height="{2 * h}" fill="{stroke}"/>' for x in range(0, width, n(2, 4)) for h in (n(1, height // 2),)]
        elif kind == 3:
            parts += [f'<rect x="{n(0, width)}" y="{n(0, height // 8) * 8}" width="{n(5, 60)}" height="6" rx="2" fill="{self.bright()}"/>' for _ in range(n(5, 40))]
        elif kind == 4:
            parts += [f'<rect x="{x}" y="0" width="{n(1, 4)}" height="{height}" fill="{stroke}"/>' for x in range(0, width, n(5, 8))]
        elif kind == 5:
            step = n(5, 20)
            parts += [f'<path d="M0 {y}H{width}" stroke="{self.edge}"/>' for y in range(0, height, step)] + [f'<path d="M{x} 0V{height}" stroke="{self.edge}"/>' for x in range(0, width, step)]
        elif kind == 6:
            for _ in range(n(4, 16)):
                x, y = n(0, width), n(0, height)
                parts.append(f'<path fill="none" stroke="{self.pick((self.edge, self.bright()))}" stroke-width="{n(1, 6)}" d="M{x} {y}' + "".join(f"L{n(0, width)} {n(0, height)}" for _ in range(n(1, 4))) + '"/>')
        elif kind == 7:
            wide, name = n(1, 4), f"dots{n(0, 10 ** 9)}"
            pitch = wide + n(1, 6)
            parts.append(f'<pattern id="{name}" width="{pitch}" height="{pitch}" patternUnits="userSpaceOnUse"><rect width="{wide}" height="{wide}" rx="{self.pick((0, 0, wide / 2))}" fill="{stroke}"/></pattern>'
                         f'<rect width="{width}" height="{height}" fill="url(#{name})"/>')
        else:
            width = n(2, 6) * 20
            parts += [f'<rect x="{i * 20}" y="{height - h}" width="14" height="{h}" fill="{self.accent}"/>' for i in range(width // 20) for h in (n(2, height),)]
        return f'<svg width="{width}" height="{height}" style="display:block;flex:none">{"".join(parts)}</svg>'

    # parts of windows
    def row(self, items, gap=None, style=""):
        return f'<div style="display:flex;align-items:center;white-space:nowrap;overflow:hidden;gap:{self.number(3, 16) if gap is None else gap}px;{style}">{items}</div>'

    def titlebar(self):
        buttons = self.row(self.some(1, 3, lambda: self.sign(self.number(10, 16))), self.number(4, 14))
        name = f'<div style="flex:1;text-align:{self.pick(("center", "left"))};font-weight:{self.pick((400, 700))}">{self.pick((self.short, self.name))()}{self.pick((" - ", " — ", ": "))}{self.short()}</div>'
        parts = self.pick(((self.icon(16), name, buttons), (buttons, name, ""), (name, buttons)))
        return self.row("".join(parts), 8, f"padding:{self.number(2, 9)}px 8px;background:{self.pick((self.panel, self.edge, self.accent))}")

    def menubar(self):
        key = self.maybe(.4)
        pad = self.number(4, 9)
        return self.row(self.some(4, 11, lambda: f'<div style="padding:{self.number(1, 5)}px {pad}px;{"background:" + self.accent if self.maybe(.06) else ""}">{self.short()}{self.access() if key else ""}</div>'), self.pick((0, 0, 0, 2, 6)), "padding:0 4px")

    def toolbar(self):
        size, plain, arrows = self.pick((16, 16, 22, 24, 24, 32)), self.maybe(.5), self.maybe(.4)

        def item():
            k = self.chance.random()
            if k < .62:
                return self.icon(size, plain) + (f'<span style="margin-left:{self.number(1, 3)}px">{self.sign(self.number(6, 10))}</span>' if arrows and self.maybe(.4) else "")
            if k < .72:
                return f'<div style="width:1px;height:{size}px;background:{self.edge}"></div>'
            if k < .8:
                return self.sign(10)
            if k < .9:
                return f'<div>{self.icon(size, plain)}<span style="margin-left:{self.number(2, 7)}px">{self.short()}</span></div>'
            return self.field(self.number(30, 120))
        return self.row(self.some(6, 28, item), self.number(1, 10), f"padding:{self.number(2, 6)}px;border-bottom:{self.number(0, 1)}px solid {self.edge}")

    def bigtools(self):
        return self.row(self.some(4, 10, lambda: f'<div style="text-align:center">{self.icon(self.pick((22, 24, 32)))}<div style="font-size:90%">{self.short()}</div></div>'), self.number(6, 18), "padding:4px")

    def tabs(self):
        pad = f"padding:{self.number(2, 7)}px {self.number(5, 14)}px;border:1px solid {self.edge};border-radius:{self.number(0, 6)}px"
        return self.row(self.some(2, 7, lambda: f'<div style="{pad};background:{self.pick((self.panel, self.ground))}">{self.icon(16) if self.maybe(.2) else ""} {self.pick((self.short, self.name))()} {self.sign(9) if self.maybe(.4) else ""}</div>'), self.number(0, 3))

    def field(self, width=None):
        inner = self.pick((self.label, self.figure, self.figure))()
        tail = self.pick(("", self.sign(9), self.row(self.sign(8) + self.sign(8), self.number(1, 8)), f'<div style="line-height:.6">{self.sign(8)}<br>{self.sign(8)}</div>'))
        return (f'<div style="display:flex;align-items:center;justify-content:space-between;gap:{self.number(2, 8)}px;overflow:hidden;border:1px solid {self.edge};border-radius:{self.number(0, 5)}px;'
                f'background:{self.ground};padding:{self.number(0, 4)}px {self.number(2, 7)}px;width:{width or self.number(40, 240)}px"><span>{inner}</span>{tail}</div>')

    def gauge(self):
        """A bar that is partly filled, with its name and its number on it."""
        part = self.number(0, 100)
        return (f'<div style="display:flex;justify-content:space-between;width:{self.number(120, 260)}px;padding:{self.number(1, 4)}px 4px;margin:2px;border:1px solid {self.edge};white-space:nowrap;overflow:hidden;'
                f'background:linear-gradient(90deg,{self.pick((self.edge, self.panel, self.soft))} {part}%,{self.ground} {part}%)"><span>{self.short()}</span><span>{self.figure()} {self.sign(8) if self.maybe(.5) else ""}</span></div>')

    def button(self, style=""):
        strong = self.maybe(.25)
        look = f"background:{self.accent};color:#fff" if strong else f"background:{self.pick((self.panel, self.ground))}"
        return (f'<div style="{look};display:inline-block;border:1px solid {self.edge};border-radius:{self.number(0, 9)}px;padding:{self.number(1, 8)}px {self.number(4, 26)}px;{style}">'
                f'{self.icon(16) + " " if self.maybe(.25) else ""}{self.short()}</div>')

    def check(self):
        on = self.number(0, 1)
        round_ = self.maybe(.4)
        size = self.number(11, 18)
        sign = (f'<svg width="{size}" height="{size}" viewBox="0 0 16 16" style="vertical-align:middle;flex:none"><rect x="1" y="1" width="14" height="14" rx="{8 if round_ else self.number(0, 3)}" '
                f'fill="{self.accent if on and self.maybe(.5) else "none"}" stroke="{self.soft}"/>' + (('<circle cx="8" cy="8" r="4"/>' if round_ else f'<path d="M4 8l3 3 5-6" fill="none" stroke="{self.text}" stroke-width="2"/>') if on else "") + "</svg>")
        return f'<div style="display:flex;align-items:center;margin:{self.number(1, 6)}px"><span style="flex:none">{sign}</span><span style="margin-left:{self.number(2, 9)}px">{self.pick((self.short, self.short, self.long))()}</span></div>'

    def form(self):
        width = self.number(60, 200)

        def entry():
            what = self.pick((self.field, self.field, self.button, lambda: self.slider(), lambda: self.check(), self.label))()
            return f'<div style="display:flex;align-items:center;margin:{self.number(1, 7)}px 0"><div style="width:{width}px;margin-right:8px;text-align:{align}">{self.short()}{colon}</div>{what}</div>'
        align, colon = self.pick(("left", "right")), self.pick((":", "", "："))
        head = f'<div style="font-weight:700;margin:4px 0">{self.short()}</div>' if self.maybe(.5) else ""
        return f'<div style="padding:8px">{head}{self.some(2, 8, entry)}</div>'

    def slider(self):
        at = self.number(5, 95)
        return (f'<svg width="120" height="16" style="flex:none"><rect y="6" width="120" height="4" rx="2" fill="{self.edge}"/><rect y="6" width="{at * 1.2}" height="4" fill="{self.accent}"/>'
                f'<circle cx="{at * 1.2}" cy="8" r="{self.number(4, 7)}" fill="{self.soft}"/></svg><span style="margin-left:6px">{self.figure()}</span>')

    def settings(self):
        rule = f"border-bottom:1px solid {self.edge}" if self.maybe(.6) else ""

        def entry():
            more = f'<div style="color:{self.soft};font-size:{self.number(78, 95)}%">{self.long()}</div>' if self.maybe(.5) else ""
            end = self.pick((self.field(90), self.sign(16), self.figure(), self.button(), f'<svg width="36" height="20" style="flex:none"><rect width="36" height="20" rx="10" fill="{self.accent}"/><circle cx="{self.pick((10, 26))}" cy="10" r="8" fill="#fff"/></svg>'))
            return f'<div style="display:flex;align-items:center;gap:10px;padding:{self.number(3, 11)}px;{rule}">{self.icon(24) if self.maybe(.4) else ""}<div style="flex:1;overflow:hidden">{self.short()}{more}</div>{end}</div>'
        return f'<div style="padding:8px"><div style="font-size:{self.number(100, 170)}%">{self.short()}</div>{self.some(3, 9, entry)}</div>'

    def menu(self, style=""):
        mark, keys = self.maybe(.6), self.maybe(.6)

        def entry():
            if self.maybe(.12):
                return f'<div style="border-top:1px solid {self.edge};margin:3px 0"></div>'
            lead = f'<span style="display:inline-block;width:22px;text-align:center">{self.pick(("", "", self.sign(12), self.icon(16)))}</span>' if mark else ""
            tail = self.pick(("", f"Ctrl+{self.pick('ABCDEFGSXZ')}", f"F{self.number(1, 12)}", f"Shift+Ctrl+{self.pick('NSP')}", self.sign(9))) if keys else ""
            key = self.access() if self.maybe(.3) else ""
            shade = f"background:{self.accent};color:#fff;" if self.maybe(.08) else f"color:{self.soft};" if self.maybe(.15) else ""
            return f'<div style="{shade}display:flex;justify-content:space-between;gap:{self.number(8, 40)}px;padding:{pad}px 8px"><span>{lead}{self.short()}{key}{self.pick(("", "", "...", "…"))}</span><span>{tail}</span></div>'
        pad = self.number(0, 6)
        return (f'<div style="background:{self.panel};border:1px solid {self.edge};box-shadow:{self.pick(("none", "2px 3px 8px #0008"))};border-radius:{self.number(0, 8)}px;padding:{self.number(0, 6)}px 0;'
                f'white-space:nowrap;display:inline-block;{style}">{self.some(3, 14, entry)}</div>')

    def dialog(self, style=""):
        return (f'<div style="background:{self.ground};border:1px solid {self.edge};box-shadow:3px 4px 16px #0009;width:{self.number(220, 480)}px;{style}">{self.titlebar() if self.maybe(.7) else ""}'
                f'<div style="padding:12px;display:flex;gap:12px">{self.icon(48) if self.maybe(.6) else ""}<div><b>{self.short()}</b><p style="margin:6px 0">{self.long()}</p>{self.check() if self.maybe(.4) else ""}</div></div>'
                f'<div style="display:flex;justify-content:flex-end;gap:{self.number(4, 10)}px;padding:8px">{self.some(1, 4, self.button)}</div></div>')

    def table(self):
        """Tables, sheets and lists: with rules or without, with coloured, bold and empty cells."""
        columns, rows, rules = self.number(2, 9), self.number(4, 22), self.pick(("all", "all", "rows", "none", "none", "zebra"))
        kinds = [self.pick((self.figure, self.figure, self.short, self.label, self.name, self.family(), self.date, lambda: f"{self.number(0, 99)}", lambda: (self.icon(16) + " " + self.name()))) for _ in range(columns)]
        pads, empty = (self.number(0, 5), self.number(1, 10)), self.pick((0, .1, .4))
        rule = f"1px solid {self.edge}"

        def cell(i, head=False):
            look = f"background:{self.panel};font-weight:{self.pick((400, 700))};" if head else ""
            if not head and self.maybe(.05):
                look += self.pick((f"background:{self.tone()};color:{self.pick(('#fff', '#000'))};", "font-weight:700;", f"color:{self.bright()};", "font-style:italic;", f"background:{self.accent};color:#fff;"))
            inner = (chr(65 + i) if letters else self.short() + (self.sign(8) if self.maybe(.1) else "")) if head else "" if self.maybe(empty) else kinds[i]()
            border = f"border:{rule};" if rules == "all" else f"border-bottom:{rule};" if rules == "rows" else ""
            return f'<td style="{border}padding:{pads[0]}px {pads[1]}px;text-align:{"center" if head else aligns[i]};{look}">{inner}</td>'
        letters, numbers = self.maybe(.3), self.maybe(.3)
        aligns = [self.pick(("left", "left", "right", "center")) for _ in range(columns)]
        lead = (lambda text: f'<td style="border:{rule};padding:0 4px;background:{self.panel};text-align:center">{text}</td>') if numbers else (lambda text: "")
        head = f'<tr>{lead("")}{"".join(cell(i, True) for i in range(columns))}</tr>' if self.maybe(.8) else ""
        body = "".join(f'<tr style="{"background:" + self.panel if rules == "zebra" and r % 2 else "background:" + self.accent if self.maybe(.03) else ""}">{lead(r + 1)}{"".join(cell(i) for i in range(columns))}</tr>' for r in range(rows))
        return f'<table style="border-collapse:collapse;white-space:nowrap;{"width:100%;" if self.maybe(.5) else ""}{"font-size:85%" if self.maybe(.2) else ""}">{head}{body}</table>'

    def files(self):
        pad, size, gap = self.number(0, 5), self.pick((16, 16, 22, 24)), self.number(2, 8)
        ends = self.number(0, 3)

        def entry():
            cells = "".join(f'<div style="width:{w}px;text-align:{a};overflow:hidden">{self.figure()}</div>' for w, a in widths[:ends])
            shade = f"background:{self.accent};color:#fff;" if self.maybe(.06) else ""
            return f'<div style="display:flex;align-items:center;padding:{pad}px 6px;white-space:nowrap;{shade}">{self.icon(size)}<div style="flex:1;margin-left:{gap}px;overflow:hidden">{self.name()}</div>{cells}</div>'
        widths = [(self.number(50, 130), self.pick(("left", "right"))) for _ in range(3)]
        return f'<div>{self.some(5, 24, entry)}</div>'

    def details(self):
        """A list of files: columns as wide as their longest entry, without rules, close to each other."""
        gap, pad, kinds = self.number(2, 7), self.number(0, 6), [self.short() for _ in range(self.number(1, 4))]
        columns = [lambda: f"{self.number(1, 9999) / 10:.1f} {self.pick(('KiB', 'KiB', 'MiB', 'kB', 'MB'))}", lambda: self.pick(kinds), self.date, self.family(), lambda: str(self.number(0, 99))]
        self.chance.shuffle(columns)
        columns = columns[:self.number(2, 5)]
        aligns, icons = [self.pick(("left", "left", "right")) for _ in columns], self.maybe(.7)
        place = f'style="padding:{pad}px {gap}px'
        head = "<tr>" + "".join(f'<td {place}">{self.short()}</td>' for _ in range(len(columns) + 1)) + "</tr>" if self.maybe(.7) else ""
        wide = ";width:100%" if self.maybe(.5) else ""
        rows = self.some(6, 24, lambda: f'<tr style="{"background:" + self.accent if self.maybe(.04) else ""}"><td {place}{wide}">{self.icon(16) + " " if icons else ""}<span>{self.name()}</span></td>'
                         + "".join(f'<td {place};text-align:{align}">{column()}</td>' for column, align in zip(columns, aligns)) + "</tr>")
        return f'<table style="border-collapse:collapse;white-space:nowrap;{"width:100%" if self.maybe(.5) else ""}">{head}{rows}</table>'

    def grid(self):
        size, width = self.pick((32, 48, 48, 64)), self.number(72, 120)
        return f'<div style="display:flex;flex-wrap:wrap;gap:{self.number(2, 10)}px;padding:8px">' + self.some(6, 24, lambda: f'<div style="width:{width}px;text-align:center;font-size:{self.number(80, 100)}%;overflow-wrap:anywhere">{self.icon(size)}<div>{self.name()}</div></div>') + "</div>"

    def tree(self):
        step, pad, gap = self.number(10, 22), self.number(0, 4), self.pick((None, 1, 2, 3, 4))
        mark = self.pick((self.icon, self.icon, self.badge))
        space = " " if gap is None else ""
        return '<div style="padding:4px;white-space:nowrap;overflow:hidden">' + self.some(6, 24, lambda: f'<div style="padding:{pad}px 0 {pad}px {self.number(0, 3) * step}px;{"background:" + self.accent if self.maybe(.05) else ""}">{self.sign(9) if self.maybe(.4) else ""} {mark(16) if self.maybe(.7) else ""}{space}<span style="margin-left:{gap or 0}px">{self.name()}</span></div>') + "</div>"

    def code(self, lines=None):
        colours = [self.bright() for _ in range(5)]

        def word():
            return self.pick((lambda: self.pick(WORDS), lambda: f"{self.pick(WORDS)}.{self.pick(WORDS)}()", lambda: f'"{self.short()}"', lambda: self.figure(), lambda: f"__{self.pick(WORDS)}__", lambda: f"{self.pick(WORDS)}[{self.number(0, 9)}]"))()

        def line():
            indent = "&nbsp;" * (self.number(0, 5) * self.pick((2, 4)))
            if self.maybe(.1):
                return "&nbsp;"
            if self.maybe(.12):
                return f'{indent}<span style="color:{colours[0]}">{self.pick(("//", "#", "/*", "--"))} {self.long()}</span>'
            spans = [f'<span style="color:{self.pick(colours)}">{self.pick(KEYWORDS)}</span>'] if self.maybe(.5) else []
            spans += [f'<span style="color:{self.pick(colours + [self.text])}">{word()}</span>' for _ in range(self.number(1, 6))]
            return indent + self.pick((" ", " ", " = ")).join(spans) + self.pick((";", ")", " {", "", ","))
        numbers, start = self.maybe(.7), self.number(1, 300)
        fold = f'<svg width="14" height="20" style="flex:none"><path fill="none" stroke="{self.soft}" d="{self.pick(("M7 0v20", "M7 0v20M7 10h6", "M3 6h8v8h-8zM5 10h4M7 14v6", "M3 6h8v8h-8zM5 10h4M7 8v4"))}"/></svg>' if self.maybe(.3) else ""
        rows = "".join('<div style="display:flex">' + (f'<div style="width:36px;margin-right:{self.pick((8, 14))}px;color:{self.soft};text-align:right;flex:none">{start + i}</div>' if numbers else "") + (fold if self.maybe(.6) else '<div style="width:14px;flex:none"></div>' if fold else "") + f"<div>{line()}</div></div>" for i in range(lines or self.number(8, 40)))
        return f'<div style="font-family:{self.mono};white-space:pre;line-height:{self.pick((1.1, 1.2, 1.35, 1.5))};padding:4px;overflow:hidden">{rows}</div>'

    def terminal(self):
        prompt = f'<span style="color:{self.bright()}">{self.pick(("user@host", "root@debian", "me@laptop"))}</span>:<span style="color:{self.bright()}">~/{self.pick(WORDS)}</span>{self.pick("$#")} '

        def line():
            return self.pick((lambda: prompt + self.pick(("ls -la", "git log", "make -j4", "cat /proc/cpuinfo", "apt list", "python3 run.py")),
                              lambda: f"-rw-r--r-- 1 user user {self.number(10, 99999):>7} {self.pick(('Jan', 'Mai', 'Oct'))} {self.number(1, 30):>2} {self.number(0, 23):02}:{self.number(0, 59):02} {self.name()}",
                              self.long, self.long, lambda: f"[{self.number(0, 100):>3}%] {self.short()}", lambda: f"{self.short()}: {self.figure()}", lambda: "&nbsp;",
                              lambda: f'<span style="background:{self.accent};color:#fff">{self.short()}</span> {self.name()}'))()
        return f'<div style="font-family:{self.mono};white-space:pre;line-height:{self.pick((1, 1.1, 1.2, 1.3))};padding:{self.number(1, 6)}px;overflow:hidden">{self.some(8, 40, lambda: f"<div>{line()}</div>")}</div>'

    def shell(self):
        """A whole terminal: rows of short words, all characters equally wide."""
        n = self.number

        def token():
            return self.pick((lambda: self.pick(WORDS), lambda: self.pick(KEYWORDS), lambda: str(n(0, 999)), lambda: self.pick("=+-*/|&<>$#;{}()[]!?"), lambda: self.pick("abcijknxyABCIXY"),
                              lambda: f"-{self.pick('abflnrvx')}", lambda: f"--{self.pick(WORDS)}", lambda: f"{self.pick(('/usr/', '~/', './', '/etc/'))}{self.pick(WORDS)}", self.figure, self.name,
                              lambda: self.pick(("&&", "==", "!=", "||", ">>", "...", "x;", "y)", "(i", "do", "go", "in", "is", "a", "to", "cd", "ls", "total", "drwxr-xr-x", "root", "pts/0", "?"))))()

        def columns(widths):
            return "".join(token()[:width - 1].ljust(width) for width in widths).rstrip()

        def rows():
            kind = n(0, 5)
            if kind == 0:  # a table
                widths = [n(2, 14) for _ in range(n(2, 8))]
                return [columns(widths) for _ in range(n(2, 12))]
            if kind == 1:
                return [self.long()]
            if kind == 2:
                return [f"{self.short()} {self.figure()}"]
            start = self.pick(("", "", "$ ", "# ", "> ", "% ", "user@host:~$ ", f"{n(1, 99)}  ", " " * n(1, 8)))
            return [start + self.some(1, 9, token, " ")]
        shade, ground = self.pick((("#fff", "#000"), ("#ccc", "#000"), ("#aaa", "#000"), ("#ddd", "#1e1e1e"), ("#eee", "#300a24"), ("#3f3", "#000"), ("#000", "#fff"), ("#333", "#fdf6e3"), (self.text, self.ground)))
        colours, body = [shade] * 6 + [self.tone(40, 65) for _ in range(3)], ""
        while body.count("<div") < 46:
            colour = self.pick(colours)
            body += "".join(f'<div style="color:{colour}">{escape(unescape(row))}</div>' for row in rows())
        size = self.pick((9, 10, 11, 12, 12, 13, 13, 14, 14, 15, 16, 18, 20, 24))
        return f'<div style="height:100vh;overflow:hidden;white-space:pre;background:{ground};font:{size}px/{self.pick((1, 1.1, 1.2, 1.3, 1.6))} {self.mono};padding:{n(0, 8)}px">{body}</div>'

    def prose(self):
        head = f'<div style="font-size:{self.number(110, 260)}%;font-weight:{self.pick((400, 700))};margin:6px 0">{self.short()}</div>' if self.maybe(.7) else ""

        def sentence():
            text = self.long()
            look = self.pick(("",) * 8 + (f"color:{self.bright()}", f"color:{self.bright()};text-decoration:underline", "font-weight:700", "font-style:italic", f"background:{self.panel};font-family:{self.mono}".replace('"', "'")))
            return f'<span style="{look}">{text}</span>' if look else text
        align = self.pick(("left", "left", "left", "justify", "center"))
        return (f'<div style="padding:8px {self.number(4, 40)}px">{head}' + self.some(1, 4, lambda: f'<p style="margin:{self.number(2, 12)}px 0;text-align:{align};line-height:{self.pick((1.1, 1.25, 1.4, 1.6, 1.9))};{f"font-family:{self.fonts()}" if self.maybe(.2) else ""}">{self.some(1, 6, sentence, " ")}</p>')
                + (f'<ul style="margin:4px">{self.some(2, 6, lambda: f"<li>{self.pick((self.short, self.long))()}</li>")}</ul>' if self.maybe(.3) else "") + "</div>")

    def chat(self):
        def message():
            own = self.maybe(.4)
            ground = self.accent if own else self.panel
            face = f'<img src="file://{self.pick(self.material["sprites"])}" style="width:32px;height:32px;border-radius:16px;flex:none;object-fit:cover">' if self.maybe(.6) else ""
            return (f'<div style="display:flex;gap:8px;margin:{self.number(2, 10)}px;justify-content:{"flex-end" if own else "flex-start"}">{face}<div style="background:{ground};{"color:#fff;" if own else ""}border-radius:{self.number(2, 16)}px;padding:{self.number(3, 9)}px {self.number(6, 14)}px;max-width:70%">'
                    f'{f"<div style=font-size:80%;font-weight:700>{self.short()}</div>" if self.maybe(.4) else ""}{self.pick((self.short, self.long))()}<span style="font-size:70%;margin-left:8px;opacity:.7">{self.number(0, 23)}:{self.number(10, 59)}</span></div></div>')
        return f"<div>{self.some(3, 12, message)}</div>"

    def cards(self):
        def card():
            top = self.pick((self.picture(f"width:100%;height:{self.number(50, 140)}px;display:block"), "", self.drawing(140, 40)))
            return (f'<div style="flex:1;min-width:110px;background:{self.panel};border:{self.number(0, 1)}px solid {self.edge};border-radius:{self.number(0, 12)}px;overflow:hidden">{top}<div style="padding:{self.number(4, 12)}px"><div style="font-size:{self.number(75, 120)}%;color:{self.pick((self.soft, self.text))}">{self.short()}</div>'
                    + self.pick((f'<div style="font-size:{self.number(140, 280)}%;font-weight:{self.pick((300, 700))}">{self.figure()}</div>', f'<div style="font-size:90%">{self.long()}</div>', self.button())) + "</div></div>")
        return f'<div style="display:flex;flex-wrap:wrap;gap:{self.number(4, 14)}px;padding:8px">{self.some(2, 8, card)}</div>'

    def chart(self):
        marks = "".join(f'<div style="position:absolute;left:{self.number(0, 90)}%;top:{self.number(0, 90)}%;font-size:{self.number(70, 100)}%">{self.pick((self.figure, self.short))()}</div>' for _ in range(self.number(2, 10)))
        return f'<div style="position:relative;padding:10px">{self.drawing(self.number(150, 420), self.number(40, 180))}{marks}</div>'

    def map(self):
        """A picture or drawing with small labels on it, as maps, schedules and drawing programs show."""
        halo = self.pick(("", "text-shadow:0 0 2px #fff,0 0 3px #fff;color:#222;", "text-shadow:1px 1px 1px #000,-1px -1px 1px #000;color:#fff;"))
        labels = "".join(f'<div style="position:absolute;left:{self.number(0, 85)}%;top:{self.number(0, 92)}%;white-space:nowrap;font-size:{self.number(70, 150)}%;{halo}">{self.sign(8) if self.maybe(.3) else ""} <span>{self.short()}</span></div>' for _ in range(self.number(3, 14)))
        back = self.drawing(600, 300) if not halo else self.picture("width:100%;height:300px")
        return f'<div style="position:relative;height:300px;overflow:hidden">{back}{labels}</div>'

    def status(self):
        return self.row(self.some(2, 6, lambda: f'<div style="padding:1px {self.number(3, 10)}px;border-right:{line}px solid {self.edge}">{self.pick((self.short, self.figure, self.long, lambda: self.short() + ": " + self.figure()))()}</div>'), self.number(0, 8), f"padding:2px;background:{self.panel}") if (line := self.number(0, 1)) is not None else ""

    def rulers(self):
        marks = "".join(f'<div style="position:absolute;left:{i * 60 + 2}px;top:0;font-size:9px;color:{self.soft}">{i * step}</div>' for i in range(16) for step in (self.scale_step,))
        return f'<div style="position:relative;height:18px;background:{self.panel};overflow:hidden"><svg width="960" height="18">' + "".join(f'<path d="M{x} 18v-{16 if x % 60 == 0 else 8 if x % 30 == 0 else 4}" stroke="{self.soft}"/>' for x in range(0, 960, 6)) + f"</svg>{marks}</div>"

    scale_step = 50

    def sheet(self):
        """A spreadsheet: columns of fixed width whose rules are close to the letters, bold, coloured and chosen cells."""
        rule = f"{self.pick((1, 1, 1, 2, 3))}px solid {self.pick((self.edge, self.edge, self.soft, self.text))}"
        wide, side, pad = [self.number(28, 120) for _ in range(self.number(4, 14))], self.number(0, 2), self.number(0, 3)
        kinds = [self.pick((self.figure, lambda: str(self.number(0, 9)), lambda: str(self.number(0, 99)), self.short, self.label, self.family())) for _ in wide]
        head = f"background:{self.panel};text-align:center;font-weight:{self.pick((400, 700))}"

        def cell(i, text, look=""):
            return f'<td style="border:{rule};padding:{pad}px {side}px;overflow:hidden;max-width:{wide[i]}px;min-width:{wide[i]}px;{look}">{text}</td>'

        def inner(i):
            if self.maybe(.25):
                return cell(i, "")
            look = self.pick((f"background:{self.tone()};color:{self.pick(('#fff', '#000'))}", "font-weight:700", f"color:{self.bright()}", f"outline:2px solid {self.accent}")) if self.maybe(.12) else ""
            return cell(i, kinds[i](), f"text-align:{aligns[i]};{look}")
        aligns = [self.pick(("left", "right", "right", "center")) for _ in wide]
        top = f'<tr><td style="{head}"></td>{"".join(cell(i, chr(65 + i), head) for i in range(len(wide)))}</tr>'
        return f'<table style="border-collapse:collapse;white-space:nowrap">{top}' + "".join(
            f'<tr><td style="border:{rule};padding:0 3px;{head}">{row + 1}</td>{"".join(inner(i) for i in range(len(wide)))}</tr>' for row in range(self.number(5, 26))) + "</table>"

    DAYS = {"en": ("S M T W T F S", "Su Mo Tu We Th Fr Sa", "Mon Tue Wed Thu Fri Sat Sun"), "zh_TW": ("日 一 二 三 四 五 六", "週一 週二 週三 週四 週五 週六 週日"),
            "zh_CN": ("一 二 三 四 五 六 日", "周日 周一 周二 周三 周四 周五 周六"), "ja": ("日 月 火 水 木 金 土", "月 火 水 木 金 土 日"), "ko": ("일 월 화 수 목 금 토",)}

    def calendar(self):
        rule = self.pick(("", "", f"border:1px solid {self.edge};"))
        width, height, round_ = self.number(20, 66), self.number(18, 50), self.pick((0, 4, 40))
        start, today, week = self.number(0, 6), self.number(1, 30), self.maybe(.3)

        def cell(text, look=""):
            return f'<td style="{rule}width:{width}px;height:{height}px;text-align:{align};vertical-align:{place};border-radius:{round_ if not rule else 0}px;{look}">{text}</td>'
        align, place = self.pick(("center", "center", "right", "left")), self.pick(("middle", "middle", "top"))
        days = self.pick(self.DAYS[self.language]).split()
        rows = [days] + [[d if 1 <= d <= 31 else "" for d in range(r * 7 + 1 - start, r * 7 + 8 - start)] for r in range(6)]
        looks = {0: f"color:{self.bright()};", 6: f"color:{self.bright()};"} if self.maybe(.5) else {}
        body = "".join("<tr>" + (cell(n + 20, f"color:{self.soft};") if week else "") + "".join(cell(d, looks.get(i, "") + (f"background:{self.accent};color:#fff;" if d == today else "")) for i, d in enumerate(row)) + "</tr>" for n, row in enumerate(rows))
        return f'<div style="padding:6px"><div style="text-align:center">{self.sign(10)} {self.short()} 20{self.number(10, 30)} {self.sign(10)}</div><table style="border-collapse:{"collapse" if rule else "separate"}">{body}</table></div>'

    def alone(self):
        """One character or a few."""
        own = {"en": "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghkmnprstuvwxyz", "ja": "あいうえおかきくけこさしすせそたちつてとなにぬねのはひふへほまみむめもやゆよらりるれろわをんアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワヲンー",
               "ko": "가나다라마바사아자차카타파하예확인끔켬상하좌우"}.get(self.language, "")
        signs = [c for c in self.short() if "\u3400" <= c <= "\u9fff" or "\uac00" <= c <= "\ud7a3"]
        return self.pick((lambda: self.pick("0123456789"), lambda: self.pick("一二三四五六七八九十日月火水木金土上下左右大中小人口山川田力心手目年時分前後東西南北春夏秋冬開關开关是否有無新全高低男女"), lambda: self.pick(own or "東南西北年月日時分秒"), lambda: self.pick(signs or ["中"]), lambda: str(self.number(10, 99))))()

    def keys(self):
        """Keys of a keyboard, tiles of a game, marks in circles: one character each, in frames or without."""
        size, gap = self.number(20, 64), self.number(0, 26)
        look = self.pick((f"border:{self.number(1, 2)}px solid {self.edge};border-radius:{self.number(0, 9)}px;background:{self.panel}", f"border-radius:{size}px;background:{self.accent};color:#fff", "", "", f"border:1px solid {self.soft}", f"background:linear-gradient({self.tone(20, 50)},{self.tone(10, 40)});color:#fff;border-radius:4px"))
        letter = self.number(10, max(11, min(40, size - 6)))
        columns = self.number(3, 12)
        return (f'<div style="display:grid;grid-template-columns:repeat({columns},{size}px);gap:{gap}px;padding:8px;font-size:{letter}px;line-height:1">'
                + self.some(6, 40, lambda: f'<div style="height:{size}px;display:flex;align-items:center;justify-content:center;{look}">{self.alone()}</div>') + "</div>")

    def palette(self):
        size = self.number(10, 26)
        return f'<div style="display:flex;flex-wrap:wrap;gap:{self.number(0, 4)}px;padding:4px">' + self.some(12, 60, lambda: f'<div style="width:{size}px;height:{size}px;background:{self.tone()}"></div>') + "</div>"

    def toolbox(self):
        size, n = self.pick((16, 22, 24)), self.number(1, 3)
        return f'<div style="display:grid;grid-template-columns:repeat({n},{size + 6}px);padding:4px;gap:{self.number(0, 4)}px">' + self.some(8, 30, lambda: self.icon(size)) + "</div>"

    def part(self):
        k = self.pick((self.table, self.table, self.details, self.details, self.files, self.tree, self.tree, lambda: self.some(3, 9, self.gauge), self.form, self.form, self.settings, self.code, self.terminal, self.prose, self.prose, self.chat, self.cards,
                       self.chart, self.map, self.grid, self.sheet, self.sheet, self.calendar, self.keys, self.keys, self.toolbar, self.toolbar, self.menubar, self.tabs, self.bigtools, self.palette, self.toolbox, self.rulers, self.tracks,
                       lambda: self.some(3, 9, self.check), lambda: f'<div style="padding:8px">{self.some(1, 6, self.button, " ")}</div>', self.menu, self.status))
        return k()

    def tracks(self):
        def track():
            head = f'<div style="width:{self.number(90, 150)}px;background:{self.panel};padding:3px;flex:none">{self.short()}{self.sign(9)}<br>{self.some(1, 3, self.button, " ")}</div>'
            return f'<div style="display:flex;font-size:90%;border:1px solid {self.edge};overflow:hidden">{head}{self.drawing(500, self.number(30, 70))}</div>'
        return self.some(1, 4, track)

    # whole screens
    def window(self):
        if self.maybe(.1):
            return f'<div style="height:100vh;overflow:hidden">{self.titlebar()}{self.menubar()}{self.toolbar()}{self.sheet()}{self.sheet()}</div>'
        top = (self.titlebar() if self.maybe(.7) else "") + (self.menubar() if self.maybe(.7) else "") + (self.some(1, 2, self.pick((self.toolbar, self.toolbar, self.bigtools, self.tabs))) if self.maybe(.8) else "")
        column = lambda width, parts: f'<div style="{width};overflow:hidden;border-right:{self.number(0, 1)}px solid {self.edge}">{parts}</div>'
        columns = []
        if self.maybe(.5):
            columns.append(column(f"width:{self.number(110, 260)}px;flex:none;background:{self.panel}", self.pick((self.tree, self.files, self.toolbox, lambda: self.some(3, 14, lambda: f'<div style="padding:{self.number(2, 9)}px 8px">{self.icon(16) if self.maybe(.6) else ""} <span>{self.short()}</span></div>')))() + self.part()))
        columns += [column("flex:1", self.some(4, 6, self.part)) for _ in range(self.pick((1, 1, 1, 2)))]
        if self.maybe(.3):
            columns.append(column(f"width:{self.number(140, 280)}px;flex:none", self.some(4, 6, self.part)))
        over = self.menu(f"position:absolute;left:{self.number(0, 500)}px;top:{self.number(20, 200)}px") if self.maybe(.25) else self.dialog(f"position:absolute;left:{self.number(20, 300)}px;top:{self.number(60, 300)}px") if self.maybe(.2) else ""
        return f'<div style="height:100vh;display:flex;flex-direction:column;overflow:hidden">{top}<div style="flex:1;display:flex;overflow:hidden">{"".join(columns)}</div>{self.status() if self.maybe(.6) else ""}</div>{over}'

    def site(self):
        head = self.row(f"<b style=font-size:140%>{self.short()}</b>" + self.some(3, 8, lambda: f"<span>{self.short()}</span>"), self.number(6, 26), f"padding:10px 16px;background:{self.pick((self.panel, self.accent))}")
        main = self.some(4, 8, lambda: self.pick((self.prose, self.prose, self.prose, self.cards, self.table, self.settings, self.code, self.chat, self.map))())
        side = f'<div style="width:{self.number(140, 240)}px;flex:none;background:{self.panel}">{self.some(2, 4, self.part)}</div>' if self.maybe(.5) else ""
        return f'{head}<div style="display:flex"><div style="flex:1;overflow:hidden">{main}</div>{side}</div>'

    def scene(self):
        """A game's picture, sometimes with rows of small shapes in front of it."""
        return self.backdrop() + (self.some(1, 5, self.lights) if self.maybe(.25) else "")

    def backdrop(self):
        """A ground, tiles or sprites."""
        kind = self.chance.random()
        if kind < .45:
            return f'<img src="file://{self.pick(self.material["grounds"])}" style="position:absolute;width:100%;height:100%;object-fit:cover;filter:brightness({self.pick((.4, .7, 1, 1, 1, 1.3))}) saturate({self.pick((.5, 1, 1, 1.5))}) blur({self.pick((0, 0, 0, 0, 1, 3))}px)">'
        tiles = [self.pick(self.material["sprites"]) for _ in range(self.number(1, 5))]
        size = self.pick((24, 32, 48, 64, 96))
        ground = f"background:linear-gradient({self.number(0, 360)}deg,{self.tone(10, 70)},{self.tone(10, 70)})"
        if kind < .6:
            ground = f"background:url('file://{self.pick(self.material['grounds'] + self.material['sprites'])}')"
        cells = "" if kind < .6 and self.maybe(.5) else "".join(f'<img src="file://{self.pick(tiles)}" style="position:absolute;left:{self.number(-20, 960)}px;top:{self.number(-20, 620)}px;width:{size}px">' for _ in range(self.number(8, 70)))
        return f'<div style="position:absolute;inset:0;overflow:hidden;{ground}">{cells}</div>'

    def lights(self):
        """Rows of small shapes where no text is: lit windows, bricks, lamps, seats."""
        n = self.number
        wide, high, across, down = n(2, 12), n(2, 16), n(2, 24), n(2, 30)
        shades, share = [self.tone(45, 95) for _ in range(n(1, 3))], self.chance.uniform(.25, 1)
        width, height, round_ = n(60, 500), n(40, 400), self.pick((0, 0, 1, wide // 2))
        shapes = "".join(f'<rect x="{x}" y="{y}" width="{wide}" height="{high}" rx="{round_}" fill="{self.pick(shades)}"/>'
                         for y in range(3, height - high, high + down) for x in range(3, width - wide, wide + across) if self.maybe(share))
        ground = f"background:{self.tone(2, 30)};" if self.maybe(.6) else ""
        return f'<svg width="{width}" height="{height}" style="position:absolute;left:{n(-40, 800)}px;top:{n(-20, 500)}px;{ground}">{shapes}</svg>'

    def letters(self, size=None, over_picture=True):
        """Style of letters as games and subtitles have them: plain, outlined, shadowed, glowing, with a gradient."""
        size = size or round(math.exp(self.chance.uniform(math.log(10), math.log(64))))
        light = self.maybe(.8)
        fill = self.pick(("#fff", "#fff", "#ff0", "#ffe97a", self.tone(65, 95))) if light else self.pick(("#000", self.tone(5, 25)))
        dark = self.pick(("#000", "#000", "#222", self.tone(0, 18))) if light else self.pick(("#fff", self.tone(82, 100)))
        far, width = max(1, round(size * self.chance.uniform(.03, .09))), max(1, round(size * self.chance.uniform(.04, .16)))
        looks = [f"-webkit-text-stroke:{width}px {dark};paint-order:stroke fill", f"text-shadow:{far}px {far}px 0 {dark}", f"text-shadow:{far}px {far}px {far + 1}px {dark},0 0 {far}px {dark}",
                 f"text-shadow:0 0 {2 * far}px {dark},0 0 {2 * far}px {dark},0 0 {3 * far}px {dark}", f"text-shadow:0 0 {3 * far}px {self.tone(50, 80)},0 0 {far}px {dark}"]
        look = self.pick(looks + looks[:1] + ([] if over_picture else [""] * 6))
        weight = f"font-weight:{self.pick((400, 400, 700))};" + ("font-style:italic;" if self.maybe(.08) else "") + (f"letter-spacing:{self.pick((-.5, 1, 2, 3))}px;" if self.maybe(.08) else "")
        extra = ""
        if self.maybe(.1) and "stroke" not in look:
            extra = f'class="gradient" style="background:linear-gradient({self.tone(75, 95)},{self.tone(40, 65)});-webkit-background-clip:text;-webkit-text-fill-color:transparent;'
            look = f"filter:drop-shadow({far}px {far}px 1px #000)"
        return extra or 'style="', f"font-size:{size}px;color:{fill};{look};{weight}"

    def said(self, text, size=None, over_picture=True, more=""):
        start, style = self.letters(size, over_picture)
        return f'<div {start}{style}{more}">{text}</div>'

    def plate(self, inner, style):
        """A game's panel: half transparent, solid or a picture, with a frame."""
        frame = self.pick(("border:none", f"border:{self.number(1, 5)}px {self.pick(('solid', 'double', 'ridge', 'outset'))} {self.tone()}", f"border:1px solid #fff8;border-radius:{self.number(4, 18)}px"))
        ground = self.pick((f"rgba(0,0,0,{self.chance.uniform(.35, .9):.2f})", self.tone(8, 25), f"rgba(255,255,255,{self.chance.uniform(.7, .95):.2f})", f"linear-gradient({self.tone(10, 30)},{self.tone(8, 40)})", f"url('file://{self.pick(self.material['grounds'])}')"))
        ink = "#111" if "255,255,255" in ground else self.pick(("#fff", "#eee", "#fd8", self.tone(75, 92)))
        if ground.startswith("url"):
            ground = f"linear-gradient(#000b,#000b),{ground}"
        return f'<div style="position:absolute;overflow:hidden;background:{ground};color:{ink};{frame};padding:{self.number(3, 14)}px;{style}">{inner}</div>'

    def game(self):
        parts, n = [self.scene()], self.number
        size, gold = self.pick((11, 12, 13, 14, 15, 16, 18, 20, 22)), self.tone(60, 85)
        if self.maybe(.6):  # bar at the top or bottom
            items = self.some(3, 9, lambda: f'<span style="display:flex;align-items:center;gap:4px">{self.pick((self.icon(16), self.picture("width:18px;height:18px"), ""))}<span>{self.pick((self.figure, self.figure, self.short, lambda: self.short() + " " + self.figure()))()}</span></span>')
            parts.append(self.plate(self.row(items, n(6, 40)), f"left:0;right:0;{self.pick(('top', 'bottom'))}:0;padding:{n(1, 6)}px;"))
        if self.maybe(.6):  # panel at a side
            def close():
                """Names with values beneath them, the rows as close as they can be."""
                shade = self.pick((gold, "#fff", "#ccc", "#bbb"))
                return (f'<div style="font-size:{n(9, 14)}px;line-height:{self.pick((.7, .75, .8, .85, .9, 1))};margin:{n(1, 7)}px 0">'
                        + self.some(1, 3, lambda: f'<div style="color:{shade}">{self.short()}</div><div style="padding-left:{n(0, 6)}px;margin-bottom:{n(0, 6)}px;color:{self.vivid()}">{self.figure()}</div>') + "</div>")

            def stat():
                return self.pick((close, close, lambda: f'<div style="display:flex;gap:{n(8, 40)}px">{close()}{close()}</div>', lambda: f'<div style="display:flex;justify-content:space-between;gap:8px"><span>{self.short()}</span><span>{self.figure()}</span></div>', lambda: f"<div>{self.short()}{self.pick((': ', ' ', ' '))}{self.figure()}</div>",
                                  lambda: f'<div style="height:{n(5, 12)}px;border:1px solid #888;margin:3px 0"><div style="height:100%;width:{n(5, 100)}%;background:{self.accent}"></div></div>',
                                  lambda: f'<div style="display:grid;grid-template-columns:1fr 1fr;gap:{n(0, 4)}px {n(4, 14)}px;font-size:{n(8, 12)}px;line-height:1.1">' + self.some(2, 6, lambda: f'<div><div style="color:{self.pick((gold, "#fff", "#bbb"))}">{self.short()}</div><div>{self.figure()}</div></div>') + "</div>",
                                  lambda: f'<div>{self.picture("width:24px;height:24px")} <span style="font-size:{n(8, 12)}px">{n(1, 20)}{self.pick("x×-")}{n(1, 9)} {self.short()}</span></div>',
                                  lambda: f"<div>{self.picture('width:40px;height:40px')}{self.short()}</div>", self.counters, lambda: f"<div>{self.long()}</div>", lambda: f'<div style="text-align:center;border:1px solid #888;padding:{n(2, 6)}px;margin:{n(2, 6)}px;background:{self.tone(15, 40)};color:#fff">{self.short()}</div>'))()
            parts.append(self.plate(self.some(4, 14, stat), f"{self.pick(('left', 'right'))}:{n(0, 10)}px;top:{n(0, 120)}px;width:{n(110, 260)}px;"))
        if self.maybe(.5):  # dialogue
            face = self.picture(f"width:{n(48, 120)}px;height:{n(48, 120)}px;float:left;margin-right:10px") if self.maybe(.5) else ""
            name = f'<div style="font-weight:700;color:{self.tone(60, 85)}">{self.short()}</div>' if self.maybe(.6) else ""
            parts.append(self.plate(f'{face}{name}<div style="font-size:{n(90, 150)}%">{self.some(1, 3, self.long, " ")}</div>' + (f'<div style="text-align:right">{self.some(1, 3, self.button, " ")}</div>' if self.maybe(.4) else ""), f"left:{n(2, 20)}%;right:{n(2, 20)}%;{self.pick(('bottom', 'bottom', 'top'))}:{n(5, 60)}px;"))
        if self.maybe(.35):  # menu in the middle
            wide = n(160, 320)
            entries = self.some(3, 9, lambda: self.pick((lambda: self.said(self.short(), n(16, 34), True, "text-align:center;"), lambda: f'<div style="background:linear-gradient({self.tone(15, 40)},{self.tone(10, 30)});border:{n(1, 3)}px outset #aaa;border-radius:{n(0, 14)}px;margin:6px;padding:{n(3, 10)}px;text-align:center;color:#fff;text-shadow:1px 1px #000">{self.short()}</div>'))())
            parts.append(f'<div style="position:absolute;left:calc(50% - {wide // 2}px);top:{n(60, 160)}px;width:{wide}px">{entries}</div>')
        if self.maybe(.4):  # small print in a corner of the picture
            shadow = self.pick(("1px 1px 0 #000", "1px 1px 2px #000", "0 0 2px #000,0 0 2px #000", "none", "none;-webkit-text-stroke:2px #000;paint-order:stroke fill", "none;-webkit-text-stroke:3px #111;paint-order:stroke fill"))
            parts.append(f'<div style="position:absolute;{self.pick(("left", "right"))}:{n(0, 9)}px;{self.pick(("bottom", "bottom", "top"))}:{n(0, 9)}px;color:{self.pick(("#fff", "#eee", gold))};text-shadow:{shadow};font-size:{n(9, 13)}px;line-height:{self.pick((.9, 1, 1.1, 1.3))};white-space:nowrap">'
                         + self.some(1, 4, lambda: f"<div>{self.pick((self.short, self.long, lambda: f'{self.short()} {self.figure()}'))()}</div>") + "</div>")
        for _ in range(self.pick((0, 1, 2, 4, 8))):  # words on the picture itself
            parts.append(f'<div style="position:absolute;left:{n(0, 80)}%;top:{n(0, 92)}%;white-space:nowrap">{self.said(self.pick((self.short, self.short, self.figure, self.long))(), n(10, 30))}</div>')
        if self.maybe(.3):
            parts.append(f'<div style="position:absolute;left:0;right:0;top:{n(0, 60)}%;text-align:center">{self.said(self.short(), n(30, 96))}</div>')
        if self.maybe(.3):
            parts.append(self.plate(self.some(2, 7, lambda: f"<div>{self.short()}: {self.long()}</div>"), f"left:{n(0, 8)}px;bottom:{n(0, 40)}px;width:{n(220, 420)}px;white-space:nowrap;font-size:{n(85, 100)}%;"))
        return f'<div style="position:relative;width:100vw;height:100vh;overflow:hidden;font-size:{size}px">{"".join(parts)}</div>'

    def hud(self):
        """A game's panel of small print: names with values close beneath them, pictures with numbers in dark boxes."""
        n = self.number
        size, gap = n(9, 15), n(2, 14)
        shade = self.pick(("#fff", "#eee", "#ccc", "#bbb", "#d6c9a8", self.tone(70, 90)))
        dark = lambda: self.pick(("#000", "#000", "rgba(0,0,0,.6)", "rgba(0,0,0,.8)", self.tone(3, 16), "none"))
        value = lambda: self.pick((self.figure, lambda: f"{n(0, 99)}/{n(1, 99)}", lambda: f"{n(0, 99)}/{n(1, 99)}", lambda: str(n(0, 9)), lambda: f"{n(0, 23)}:{n(10, 59)}", lambda: f"{n(0, 100)}%", lambda: f"{self.pick(('Lv', 'Lvl', 'LV', 'HP', 'XP', 'x', '#'))} {n(0, 30)}", lambda: f"{n(1, 99)},{n(1, 99)}", lambda: f"{n(1, 20)}-{n(1, 9)}"))()

        def boxed():
            """A picture and a number in a box of their own, as in a bar."""
            frame = f"border:{n(1, 2)}px {self.pick(('solid', 'ridge', 'outset'))} {self.tone(20, 60)};border-radius:{n(0, 5)}px;" if self.maybe(.5) else ""
            return f'<span style="display:inline-flex;align-items:center;gap:{n(1, 8)}px;padding:{n(0, 3)}px {n(1, 6)}px;margin:0 {n(0, 8)}px;background:{dark()};{frame}">{self.token() if self.maybe(.85) else ""}<span style="min-width:{n(0, 40)}px;color:{self.vivid() if self.maybe(.15) else shade}">{self.pick((value, value, value, self.short))()}</span></span>'

        def stack():
            """Rows as close as they can be, in two colours."""
            close, name = self.pick((.72, .76, .8, .84, .88, .92, 1)), shade if self.maybe(.8) else self.vivid()
            return (f'<div style="line-height:{close};margin:{n(0, 5)}px 0;white-space:nowrap">' + self.some(1, 4, lambda: f'<div style="color:{name}">{self.short()}</div>'
                    f'<div style="padding-left:{n(0, 5)}px;margin-bottom:{n(0, 4)}px;color:{self.tone(48, 75) if self.maybe(.3) else self.vivid() if self.maybe(.7) else shade}">{value()}</div>') + "</div>")

        def line():
            return self.pick((lambda: f"<div>{self.token()} {value()}</div>", lambda: f'<div><span style="color:{self.vivid()}">{value()}</span> {self.short()}</div>', lambda: f"<div>{self.short()}</div>", lambda: f"<div>{value()}</div>", lambda: f"<div>{boxed()}</div>"))()
        panels = ""
        for _ in range(n(1, 4)):
            inner = self.some(2, 7, lambda: self.pick((lambda: f'<div style="display:flex;gap:{n(6, 50)}px;align-items:flex-start">{self.picture(f"width:{n(20, 90)}px;height:{n(20, 90)}px") if self.maybe(.4) else ""}{self.some(1, 3, stack)}</div>', stack, lambda: self.some(1, 4, line), lambda: self.picture(f"width:{n(40, 140)}px;height:{n(30, 140)}px;display:block")))())
            ground = self.pick((f"linear-gradient(rgba(0,0,0,{self.chance.uniform(.4, .85):.2f}),rgba(0,0,0,{self.chance.uniform(.4, .85):.2f})),url('file://{self.pick(self.material['grounds'])}')",) * 3 + ("none", "rgba(0,0,0,.6)", self.tone(4, 24)))
            panels += f'<div style="position:absolute;left:{n(0, 800)}px;top:{n(0, 380)}px;padding:{n(2, 12)}px;background:{ground};color:{shade};overflow:hidden;max-width:{n(110, 420)}px">{inner}</div>'
        bars = "".join(f'<div style="position:absolute;left:0;right:0;{edge}:0;background:{self.pick((self.tone(4, 26), "none", "#0008"))};display:flex;gap:{gap}px;padding:{n(1, 5)}px;white-space:nowrap;color:{shade}">{self.some(4, 12, boxed)}</div>' for edge in ("top", "bottom") if self.maybe(.6))
        light = "filter:invert(1) hue-rotate(180deg);" if self.maybe(.08) else ""
        return f'<div style="position:relative;width:100vw;height:100vh;overflow:hidden;font-size:{size}px;line-height:1.15;{light}">{self.scene()}{panels}{bars}</div>'

    def film(self):
        """A film's picture with subtitles, sometimes with other words on it."""
        n = self.number
        shade = self.pick(("", "", f'<div style="position:absolute;inset:0;background:rgba(0,0,0,{self.chance.uniform(.1, .6):.2f})"></div>', '<div style="position:absolute;left:0;right:0;bottom:0;height:90px;background:linear-gradient(transparent,#000)"></div>', '<div style="position:absolute;left:0;right:0;bottom:0;height:70px;background:#000"></div>'))
        size = n(16, 48)
        start, style = self.letters(size)
        box = f"background:rgba(0,0,0,{self.chance.uniform(.3, 1):.2f});padding:1px {n(3, 12)}px;" if self.maybe(.3) else ""
        if "gradient" in start:
            box = ""
        text = self.pick((self.long, self.long, self.short))
        lines = "<br>".join(f'<span {start}{style}{box}">{text()}</span>' for _ in range(self.pick((1, 1, 2, 2, 3))))
        where = self.pick(("bottom", "bottom", "bottom", "top"))
        more = f'<div style="position:absolute;left:{n(1, 80)}%;top:{n(1, 30)}%;white-space:nowrap">{self.said(self.short(), n(12, 40))}</div>' if self.maybe(.3) else ""
        bar = self.plate(self.row(self.sign(18) + self.sign(18) + f"<span>{n(0, 2)}:{n(10, 59)} / {n(1, 3)}:{n(10, 59)}:{n(10, 59)}</span><div style='flex:1;height:4px;background:#888'></div>" + self.sign(18), 10), "left:0;right:0;bottom:0;padding:6px;") if self.maybe(.15) else ""
        return (f'<div style="position:relative;width:100vw;height:100vh;overflow:hidden;background:#000">{self.scene()}{shade}<div style="position:absolute;left:{n(2, 14)}%;right:{n(2, 14)}%;{where}:{n(8, 60)}px;text-align:{self.pick(("center", "center", "left"))};line-height:{self.pick((1.1, 1.25, 1.45))}">{lines}</div>{more}{bar}</div>')

    def desk(self):
        """A desktop with icons and a panel, and a window on it."""
        n = self.number
        names = "".join(f'<div style="position:absolute;left:{n(0, 8) * 100 + 10}px;top:{n(0, 5) * 90 + 10}px;width:90px;text-align:center">{self.icon(48, False)}<div style="color:#fff;text-shadow:{self.pick(("1px 1px 2px #000", "0 0 3px #000,0 0 3px #000"))}">{self.name()}</div></div>' for _ in range(n(3, 14)))
        panel = f'<div style="position:absolute;left:0;right:0;{self.pick(("top", "bottom"))}:0;background:{self.panel}">{self.row(self.icon(22) + self.some(2, 6, lambda: f"<span>{self.short()}</span>") + self.some(2, 6, lambda: self.icon(16)) + f"<span>{self.figure()}</span>", n(5, 14), "padding:3px")}</div>'
        inner = f'<div style="position:absolute;left:{n(60, 300)}px;top:{n(30, 120)}px;width:{n(340, 620)}px;height:{n(220, 440)}px;overflow:hidden;background:{self.ground};border:1px solid {self.edge};box-shadow:2px 4px 14px #000a">{self.titlebar()}{self.menubar()}{self.some(2, 4, self.part)}</div>' if self.maybe(.7) else ""
        return f'<div style="position:relative;width:100vw;height:100vh;overflow:hidden">{self.scene()}{names}{inner}{panel}{self.menu(f"position:absolute;left:{n(0, 600)}px;top:{n(40, 260)}px") if self.maybe(.3) else ""}</div>'

    def columns(self):
        """Vertical text: a page of it, or speech bubbles."""
        n, dense = self.number, self.pick((1, 1.1, 1.2, 1.35, 1.5, 1.7, 2))
        size = n(11, 36)
        text = lambda: self.pick(self.material["strings"][self.language]["long"])
        if self.maybe(.5):
            body = f'<div style="position:absolute;inset:{n(2, 40)}px;overflow:hidden;column-width:{n(120, 400)}px;column-gap:{n(14, 50)}px">{self.some(2, 6, lambda: f"<p style=margin:{n(0, 12)}px>{escape(self.some(1, 6, text))}</p>")}</div>'
        else:
            body = self.scene() if self.maybe(.6) else ""
            for _ in range(n(2, 7)):
                round_ = self.pick((0, 4, 20, 60, 200))
                body += (f'<div style="position:absolute;left:{n(0, 800)}px;top:{n(0, 480)}px;max-height:{n(3, 12)}em;max-width:{n(90, 360)}px;overflow:hidden;padding:{n(4, 22)}px;border-radius:{round_}px;'
                         f'background:{self.ground};border:{n(0, 2)}px solid {self.text};font-size:{max(10, size + n(-4, 4))}px">{escape(text()[:n(3, 40)])}</div>')
        return f'<div style="position:absolute;inset:0;overflow:hidden;font-size:{size}px;line-height:{dense};{"font-weight:700;" if self.maybe(.2) else ""}"><style>body *{{writing-mode:vertical-rl}}</style>{body}</div>'

    def token(self):
        """A small picture of a game, or two, as beside a number."""
        size, look = self.number(11, 30), self.pick(("", "", "image-rendering:pixelated;", f"background:{self.tone()};"))
        return "".join(f'<img src="file://{self.pick(self.material["sprites"] if self.maybe(.75) else self.material["icons"])}" style="height:{size}px;width:{size + self.number(-4, 6)}px;object-fit:contain;vertical-align:middle;flex:none;{look}">'
                       for _ in range(self.pick((1, 1, 1, 2))))

    def counters(self):
        """Small pictures with numbers or words beside them, as games have for a player's goods and skills."""
        n = self.number
        size, gap, far = n(10, 22), n(1, 12), n(8, 60)
        ground = self.pick((self.tone(4, 25), self.tone(4, 25), f"linear-gradient({self.tone(5, 30)},{self.tone(5, 30)})", f"linear-gradient(#000b,#000b),url('file://{self.pick(self.material['grounds'])}')", self.ground))
        shade = self.text if ground == self.ground else self.pick(("#fff", "#eee", "#ccc", "#fd8", self.tone(75, 92)))

        def item():
            text = self.pick((self.figure, self.figure, lambda: str(n(0, 99)), lambda: str(n(0, 9)), self.short, lambda: f'{n(1, 20)}{self.pick("x×-/")}{n(1, 9)} {self.short()}'))()
            parts = [self.token() if self.maybe(.85) else "", f'<span style="color:{self.vivid() if self.maybe(.15) else shade}">{text}</span>']
            if self.maybe(.15):
                parts.reverse()
            return f'<div style="display:flex;align-items:center;gap:{gap}px;white-space:nowrap">{"".join(parts)}</div>'
        return f'<div style="display:flex;flex-wrap:wrap;gap:{n(1, 10)}px {far}px;padding:{n(1, 10)}px;max-width:{n(120, 900)}px;background:{ground};font-size:{size}px;line-height:1.2">{self.some(6, 40, item)}</div>'

    def scraps(self):
        """What is rare in whole windows: many check boxes, fields of dots, texts of a few characters, ellipses."""
        def checks():
            return f'<div style="display:flex;flex-wrap:wrap;font-size:{self.number(11, 20)}px">{self.some(4, 16, self.check)}</div>'

        def ticks():
            mark = self.pick((self.sign, self.sign, self.badge))
            return f'<div style="display:flex;flex-wrap:wrap;gap:{self.number(4, 20)}px;font-size:{self.number(11, 20)}px">' + self.some(4, 16, lambda: f'<span>{mark(self.number(9, 18))}<span style="margin-left:{self.number(2, 10)}px">{self.pick((self.short, self.short, lambda: ""))()}</span></span>') + "</div>"

        def word():
            n = self.number
            framed, letters = "口日回國田四目因困囚国曰固圓", "aAIOo0VxXiyBC17l"
            text = self.pick((lambda: "".join(self.chance.choices(framed, k=n(2, 6))), lambda: f"{self.pick(framed)} {n(1, 40)} {self.pick('次日回目個')} {n(1, 31)} {self.pick('日月口')}",
                              lambda: f"{self.pick(framed + '一三二十工人中上下')} {self.short()}", lambda: f"{self.pick(letters)} {self.short()}", lambda: f"{self.short()} {self.pick('口日回国田0OxX一三')}",
                              lambda: self.short() + self.pick(("...", "…", " ...", "。", "!")), lambda: f" {self.pick(('or', 'and', 'to'))} ".join(self.chance.sample(letters, 2)), lambda: f"{self.short()} {n(0, 9)}", lambda: f"{n(0, 9)} {self.short()}",
                              lambda: f"{n(1, 12)} 月 {n(1, 28)} 日", lambda: f"{n(1, 9)} {self.short()} {n(1, 9)}", self.short, self.short, self.alone, lambda: self.pick("Il1ij|!7"), self.figure))()
            return f'<div style="font-size:{n(10, 40)}px;margin:4px{self.pick(("", "", "", f";font-family:{self.mono}"))}">{text}</div>'
        parts = (checks, checks, ticks, ticks, self.counters, self.counters, self.counters, lambda: self.drawing(self.number(200, 900), self.number(80, 420), 7), lambda: self.some(3, 8, word), lambda: self.some(3, 8, word), self.calendar, self.keys, self.menu, self.details, self.details, self.menubar, self.toolbar, self.toolbar, self.toolbox)
        return f'<div style="height:100vh;overflow:hidden;display:flex;flex-flow:column wrap">{"".join(self.pick(parts)() for _ in range(7))}</div>'


def draw(chance, material, language=None):
    """Returns (kind, HTML) of a random screen, in a random language if none is given."""
    language = language or chance.choices(("en", "zh_TW", "zh_CN", "ja", "ko"), (28, 22, 15, 20, 15))[0]
    kind = chance.choices(("window", "site", "game", "hud", "film", "desk", "scraps", "shell", "columns"), (34, 11, 18, 22, 10, 5, 20, 16, 14))[0]
    if kind == "columns" and language in ("en", "ko"):
        language = "ja"
    screen = Screen(chance, material, language, chance.random() < .45)
    screen.scale_step = chance.choice((1, 5, 10, 50, 100))
    body = getattr(screen, kind)()
    return kind, (f'<!DOCTYPE html><html lang="{language.replace("_", "-")}"><meta charset="utf-8"><body style="margin:0;background:{screen.ground};color:{screen.text};'
                  f'font:{screen.size}px {screen.font};line-height:{chance.choice(("normal", "1.15", "1.3"))}">{body}</body></html>').replace("font-family:'", "font-family:'")
