"""Pages of many unlike rows of text, for the training of readers."""
from html import escape

from pages import Screen

NAMES = "Anna Bill Ian Lil Eva Illya Oliver Tom Lee Jill Olga Ivy".split()
LETTERS = "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
ON_PICTURE = .15  # of the pages
ENDS = "txt png cpp h odt html tar.gz mp3 py json ini log svg so.1 conf md xml pdf".split()


class Rows(Screen):
    """`letters` are those that the reader knows, which each is to see now and then."""

    def __init__(self, chance, material, language, dark, letters):
        super().__init__(chance, material, language, dark)
        self.letters = letters

    def word(self):
        words = self.pick(self.strings("long")).split()
        word = self.pick(words)
        start = self.number(0, max(0, len(word) - 2))
        return word if word.isascii() else word[start:start + self.number(1, 8)]

    def rare(self):
        return "".join(self.pick(self.letters) for _ in range(self.number(1, 9)))

    def looks(self):
        """Letters and digits that look alike, mixed."""
        return "".join(self.pick("0O1Il5S8B2Z6GQDo|iLtfrnmcvwuyCePR") for _ in range(self.number(2, 9)))

    def code(self):
        n, pick, word = self.number, self.pick, lambda: self.word().strip(".,:;()\"'").replace("-", "_") or "x"
        return pick((lambda: f"{word()}({word()}, {n(0, 99)});", lambda: f"if ({word()} != {n(0, 9)} && !{word()}[{n(0, 9)}]) {{",
                     lambda: f"#include <{word().lower()}.h>", lambda: f"{word()}->{word()} = \"{word()}\";", lambda: f"// {self.pick(self.strings('long'))}",
                     lambda: f"self.{word()} += {word()}[{n(0, 9)}:{n(10, 99)}]", lambda: f"const auto &{word()} = {word()}::{word()}<{word()}>();",
                     lambda: f"def __{word().lower()}__(self, {word()}=None):", lambda: f"{{ \"{word()}\": [{n(0, 9)}, {n(0, 99)}], }}",
                     lambda: f"<{word().lower()} class=\"{word()}\">{word()}</{word().lower()}>", lambda: f"return {word()} ? {n(0, 9)} : -{n(1, 9)};"))()

    def shell_line(self):
        n, pick, word = self.number, self.pick, lambda: self.word().strip(".,:;()\"'").lower() or "x"
        return pick((lambda: f"{word()}@{word()}:~$ {word()} -{pick('abclrtvx')} {word()}", lambda: f"$ {word()} --{word()}={n(0, 999)} | {word()}", lambda: f"# {word()} {word()}",
                     lambda: f"-rw-r--r-- {n(1, 9)} {word()} {word()} {n(1, 99999)} {pick(('Jan', 'Apr', 'Jul', 'Nov'))} {n(1, 28)} {n(10, 23)}:{n(10, 59)} {self.file()}",
                     lambda: f"/{word()}/{word()}/{self.file()}", lambda: f"[{n(0, 9999)}.{n(100000, 999999)}] {word()}: {word()} {n(0, 99)}", lambda: f"~/{word()}/{self.file()}",
                     lambda: f"https://{word()}.org/{word()}/{word()}?{word()}={n(1, 99)}", lambda: f"{word()}.{word()}@{word()}.com"))()

    def file(self):
        return f"{self.word().strip('.,:;()')}{self.pick(('', '_', '-'))}{self.pick(('', '', str(self.number(0, 12))))}.{self.pick(ENDS)}"

    def game(self):
        n, pick = self.number, self.pick
        return pick((lambda: f"HP: {n(0, 99)}/{n(10, 99)}", lambda: f"Lv{pick(('', '.', ' '))}{n(1, 60)}", lambda: f"{self.word()} x{n(1, 20)}", lambda: f"{n(0, 9999)} ({n(0, 99)})", lambda: f"XP {n(0, 99)} / {n(10, 150)}",
                     lambda: f"{n(1, 30)}-{n(1, 4)} melee", lambda: f"+{n(1, 20)} {self.word()}", lambda: f"Turn {n(1, 40)}", lambda: f"{n(0, 99)}% Def", lambda: f"{n(0, 59)}:{n(10, 59)}", lambda: f"FPS: {n(10, 144)}", lambda: f"{pick(LETTERS)}{pick((':', ': ', '=', ' ', '-', '.'))}{n(0, 999)}", lambda: f"{pick(LETTERS)}{n(0, 99)}",
                     lambda: f"{pick(LETTERS.lower())}{pick(('', '_', '='))}{n(0, 99)}", lambda: f"{n(0, 99)}{pick(('', ' '))}{pick(LETTERS)}",
                     lambda: f"[{pick('EFQRSXI')}] {self.word().capitalize()}", lambda: f"{pick(NAMES)}: {self.pick(self.strings('long'))}"))()

    def phrase(self):
        n, pick = self.number, self.pick
        short = lambda: pick(self.strings("short"))
        words = lambda: " ".join(self.word() for _ in range(n(1, 6)))
        if self.language != "en" and self.maybe(.2):
            return self.rare()
        if self.language not in ("en", "ko") and self.maybe(.15):
            return pick((lambda: f"{words()}{pick('。！？，、：；')}", lambda: f"「{words()}」", lambda: f"{words()}，{words()}。", lambda: f"{words()}！{words()}？"))().replace(" ", "")
        return pick((lambda: pick(self.strings("long")), lambda: pick(self.strings("long")), short, short, words, words, lambda: words().upper(), lambda: short().upper(), lambda: short().title(), self.figure, self.figure,
                     lambda: f"{short()}: {self.figure()}", lambda: f"{self.figure()} {self.figure()} {self.figure()}", lambda: f"{short()} {self.access()}", self.looks, lambda: f"{self.looks()} {self.looks()} {self.looks()}",
                     self.code, self.code, self.shell_line, self.shell_line, self.file, lambda: f"{self.file()} {self.file()}", self.game, self.game, lambda: f"{pick(NAMES)} {pick('ABIJLO')}. {pick(NAMES)}", lambda: f"\"{short()}\"",
                     lambda: f"{n(1, 20)}. {short()}", lambda: f"{pick('IVX')}{pick(('', 'I', 'V', 'II'))}. {short()}", lambda: f"{short()}...", lambda: f"{short()} - {short()}", lambda: f"{short()} ({n(0, 99)})", lambda: f"{short()}?", self.date,
                     lambda: f"Ctrl+{pick(('Shift+', 'Alt+', ''))}{pick('ABCDFILOPQSTVXZ1')}", lambda: f"F{n(1, 12)}", lambda: f"{n(1, 9)} {pick('+-=<>/*')} {n(1, 99)}", lambda: f"{pick('&@#%*!?')} {short()}", lambda: f"I {words()}", lambda: pick(("{", "}", "};", "})", ");", "]", "],", "(", "[", "/*", "*/", "//", "...", "--", ">", "<", "=", ":")), lambda: pick(("I", "l", "1", "O", "0", "a", "A", "x", "X", "?", "#", "OK", "No", "On", "Off", "Yes", "Go", "In", "I/O"))))()

    def look_on_picture(self):
        """How a row is drawn on a picture: bright with something dark around it, or the reverse."""
        n = self.number
        size, family = self.pick((9, 10, 10, 11, 11, 12, 12, 13, 14, 15, 16, 18, 22, 28)), self.pick(self.material["families"][self.language])
        bright, dark = self.tone(80, 100), self.tone(0, 20)
        if self.maybe(.2):
            bright, dark = dark, bright
        elif self.maybe(.25):
            bright = self.vivid()
        around = self.pick((f"-webkit-text-stroke:{self.pick((1.5, 2, 2, 3))}px {dark};paint-order:stroke fill", f"text-shadow:1px 1px 0 {dark}", f"text-shadow:1px 1px 2px {dark},0 0 1px {dark}", f"text-shadow:0 0 2px {dark},0 0 2px {dark},0 0 3px {dark}",
                            f"text-shadow:1px 0 {dark},-1px 0 {dark},0 1px {dark},0 -1px {dark},{n(0, 2)}px {n(0, 2)}px {dark}"))
        return f"font:{self.pick((400, 400, 500, 700))} {size}px '{family}';font-stretch:{self.pick((100, 100, 75))}%;color:{bright};{around}"

    def look(self):
        """How a row is drawn."""
        n = self.number
        size = self.pick((9, 10, 10, 11, 11, 12, 12, 13, 13, 14, 14, 15, 16, 16, 18, 20, 24, 30, 38))
        language = self.language
        family = self.pick(self.material["families"][self.pick((language, language, language, language + " mono"))])
        colour, style = self.pick((self.text, self.text, self.text, self.soft, self.bright(), self.vivid())), ""
        kind = n(0, 15)
        if kind == 0:
            colour, style = self.tone(80, 100), f"-webkit-text-stroke:{self.pick((2, 3))}px {self.tone(0, 20)};paint-order:stroke fill;"
        elif kind == 1:
            style = f"text-shadow:{n(1, 2)}px {n(1, 2)}px {n(0, 3)}px {self.tone(0, 100)};"
        elif kind == 2:
            style = f"background:{self.accent};padding:{n(0, 3)}px {n(2, 8)}px;border-radius:{n(0, 8)}px;"
            colour = "#fff"
        return (f"font:{self.pick(('', 'italic '))}{self.pick((400, 400, 400, 700, 300))} {size}px '{family}';color:{colour};{style}"
                f"letter-spacing:{self.pick((0, 0, 0, 0, 0, .5, 1, -.3))}px")

    def page(self):
        ground = ""
        look_of = self.look
        if self.maybe(ON_PICTURE):
            ground = f"background:url('file://{self.pick(self.material['grounds'])}');background-size:{self.pick(('cover', 'cover', '250%', '60%'))};"
            look_of = self.look_on_picture
        elif self.maybe(.25):
            shade = "rgba(0,0,0,.4)" if self.dark else "rgba(255,255,255,.5)"
            ground = f"background:linear-gradient({shade},{shade}),url('file://{self.pick(self.material['grounds'])}');background-size:cover;"
        columns, signs = [], self.pick((0, .1, .1, .8))
        for _ in range(self.number(1, 3)):
            look, part = look_of(), ""
            for _ in range(40):
                look = look_of() if self.maybe(.5) else look
                before = self.pick((self.icon, self.icon, self.badge))(self.number(9, 20)) + f"<span style='width:{self.number(0, 6)}px;display:inline-block'></span>" if self.maybe(signs) else ""
                part += f"<div style='white-space:pre;overflow:hidden;padding:{self.number(1, 6)}px 0'>{before}<span style=\"{look}\">{escape(self.phrase())}</span></div>"
            columns.append(f"<div style='flex:1 1 {self.number(20, 60)}%;min-width:0;overflow:hidden'>{part}</div>")
        return f"<div style='display:flex;gap:30px;height:100vh;overflow:hidden;padding:6px 12px;{ground}'>{''.join(columns)}</div>"


def draw(chance, material, language, letters):
    """Returns (kind, HTML) of a random page."""
    screen = Rows(chance, material, language, chance.random() < .45, letters)
    return "rows", f'<!DOCTYPE html><html lang="{language.replace("_", "-")}"><meta charset="utf-8"><body style="margin:0;background:{screen.ground};color:{screen.text};line-height:1.2">{screen.page()}</body></html>'
