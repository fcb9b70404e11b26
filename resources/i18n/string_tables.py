"""Reads and writes the string tables beside this file: one Qt Linguist file a language, the source text is the key."""
import contextlib
import fcntl
import pathlib
import re
import xml.etree.ElementTree as ElementTree
from xml.sax.saxutils import escape

FOLDER = pathlib.Path(__file__).resolve().parent
CONTEXT = "Lucentra"
# The languages that every key is translated into, and the code that Qt knows each by. The keys' own language has a
# table too, for wordings that shall differ from the key.
FOREIGN = {"zh-Hans": "zh_CN", "en": "en", "ja": "ja", "ko": "ko"}
LANGUAGES = {"zh-Hant": "zh_TW"} | FOREIGN


def path_of(language: str) -> pathlib.Path:
    return FOLDER / f"lucentra_{language}.ts"


def placeholders(text: str) -> list[str]:
    """What a text leaves to be filled in, in order."""
    return [found for found in re.findall(r"%[@d%]", text) if found != "%%"]


def read(language: str) -> dict[str, str | None]:
    """The entries by key; None for one without a finished translation."""
    entries: dict[str, str | None] = {}
    for context in ElementTree.parse(path_of(language)).getroot().iter("context"):
        if context.findtext("name") != CONTEXT:
            raise ValueError(f"{path_of(language)}: the context {context.findtext('name')} is never looked up")
        for message in context.iter("message"):
            key = message.findtext("source") or ""
            translation = message.find("translation")
            finished = translation is not None and "type" not in translation.attrib and translation.text
            if key in entries:
                raise ValueError(f"{path_of(language)}: {key} is there twice")
            entries[key] = translation.text if finished else None
    return entries


def write(language: str, entries: dict[str, str | None]) -> None:
    lines = ['<?xml version="1.0" encoding="utf-8"?>', "<!DOCTYPE TS>",
             f'<TS version="2.1" language="{LANGUAGES[language]}" sourcelanguage="zh_TW">', "<context>",
             f"    <name>{CONTEXT}</name>"]
    for key in sorted(entries):
        text = entries[key]
        translation = '<translation type="unfinished"/>' if text is None else f"<translation>{escape(text)}</translation>"
        lines += ["    <message>", f"        <source>{escape(key)}</source>", f"        {translation}", "    </message>"]
    lines += ["</context>", "</TS>", ""]
    temporary = path_of(language).with_suffix(".new")
    temporary.write_text("\n".join(lines), encoding="utf-8")
    temporary.replace(path_of(language))


@contextlib.contextmanager
def locked():
    """Keeps other writers of the tables away."""
    with open(FOLDER / "string_tables.py", "rb") as handle:
        fcntl.flock(handle, fcntl.LOCK_EX)
        yield
