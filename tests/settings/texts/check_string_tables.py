#!/usr/bin/env python3
"""Checks the interface's string tables against the program's source, and says in words what is missing.

Every text that the source looks up, and every other literal with Chinese characters in it, must have an entry in all
foreign tables, finished and with the key's placeholders in the key's order.
"""
import pathlib
import re
import sys

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(ROOT / "resources" / "i18n"))
import string_tables  # noqa: E402

# Files whose Chinese literals are no texts of the interface; what they look up is checked all the same.
NOT_SHOWN = {
    "platform/linux/recognizer": "punctuation and characters of the scripts that are recognized",
    "settings/HotkeyManager.cpp": "words of the log's lines",
    "settings/KeychainStore.cpp": "words of the log's lines",
    "platform/linux/desktop/AutostartEntry.cpp": "names in a desktop entry",
    "translation/ConnectionTest.cpp": "the sentence that the test has translated",
    "translation/Prompts.cpp": "instructions to language models",
    "translation/TargetLanguage.cpp": "names of languages in instructions to language models",
}
LOOK_UPS = {"localized", "formatted"}
TOKEN = re.compile(r"""
      (?P<comment>//[^\n]*|/\*.*?\*/)
    | (?:u8|[uUL])?R"(?P<delimiter>[^(\s]*)\((?P<raw>.*?)\)(?P=delimiter)"(?:_\w+)?
    | (?:u8|[uUL])?"(?P<text>(?:[^"\\\n]|\\.)*)"(?:_\w+)?
    | (?P<character>(?:u8|[uUL])?'(?:[^'\\\n]|\\.)+')
    | (?P<word>\w+)
    | (?P<sign>[^\s])
""", re.VERBOSE | re.DOTALL)
ESCAPE = re.compile(r"\\(u[0-9a-fA-F]{4}|U[0-9a-fA-F]{8}|x[0-9a-fA-F]+|.)", re.DOTALL)
HAN = re.compile(r"[\u3400-\u9fff\uf900-\ufaff]")


def unescape(text: str) -> str:
    def plain(match: re.Match) -> str:
        code = match.group(1)
        if code[0] in "uUx" and len(code) > 1:
            return chr(int(code[1:], 16))
        return {"n": "\n", "t": "\t", "0": "\0"}.get(code, code)

    return ESCAPE.sub(plain, text)


def tokens_of(source: str):
    """Words, signs and literals with their lines; neighbouring literals are one."""
    tokens: list[tuple[str, str, int]] = []
    line, counted = 1, 0
    for match in TOKEN.finditer(source):
        kind = match.lastgroup
        line += source.count("\n", counted, match.start())
        counted = match.start()
        if kind in ("comment", "character"):
            continue
        if match["raw"] is not None or match["text"] is not None:
            value = match["raw"] if match["raw"] is not None else unescape(match["text"])
            if tokens and tokens[-1][0] == "literal":
                tokens[-1] = ("literal", tokens[-1][1] + value, tokens[-1][2])
            else:
                tokens.append(("literal", value, line))
        else:
            tokens.append((kind, match.group(), line))
    return tokens


def first_argument(tokens, start: int):
    """The literals of the first argument of a call whose parenthesis stands at `start`."""
    depth = 0
    for kind, value, line in tokens[start:]:
        if kind == "sign" and value in "([{":
            depth += 1
        elif kind == "sign" and value in ")]}":
            depth -= 1
        if depth == 0 or (depth == 1 and kind == "sign" and value == ","):
            return
        if kind == "literal" and depth == 1:
            yield value, line


def keys_of(path: pathlib.PurePath, source: str):
    """The keys that a source file uses, with their lines."""
    tokens = tokens_of(source)
    for index, (kind, value, _) in enumerate(tokens[:-1]):
        if kind == "word" and value in LOOK_UPS and tokens[index + 1][1] == "(":
            yield from first_argument(tokens, index + 1)
    if any(path.as_posix().startswith(hidden) for hidden in NOT_SHOWN):
        return
    for kind, value, line in tokens:
        if kind == "literal" and HAN.search(value):
            yield value, line


def main() -> int:
    problems = []
    tables = {language: string_tables.read(language) for language in string_tables.LANGUAGES}
    for language, table in tables.items():
        for key, text in table.items():
            if text is None:
                problems.append(f"{language}: {key} is unfinished")
            elif string_tables.placeholders(text) != string_tables.placeholders(key):
                problems.append(f"{language}: {key} has other placeholders: {text}")
    used = 0
    source_folder = ROOT / "src"
    for path in sorted(source_folder.rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        relative = path.relative_to(source_folder)
        for key, line in dict(keys_of(relative, path.read_text(encoding="utf-8"))).items():
            used += 1
            missing = [language for language in string_tables.FOREIGN if key not in tables[language]]
            if missing:
                problems.append(f"src/{relative}:{line}: no entry in {', '.join(missing)} for {key}")
    print("\n".join(problems) if problems else f"{used} uses of keys, {len(tables['en'])} entries, all translated")
    return 1 if problems or not used else 0


if __name__ == "__main__":
    sys.exit(main())
