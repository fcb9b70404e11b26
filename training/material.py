"""What the samples are made of: fonts, icons, pictures, documents and strings of the packages in material.txt.

The packages are unpacked into a folder of their own, never installed, so that samples depend neither on the fonts nor on
the catalogues of the machine.
"""
import glob
import gettext
import json
import os
import random
import re
import subprocess

from PIL import Image

HERE = os.path.dirname(os.path.abspath(__file__))
# Fonts of signs, of small capitals and of handwriting.
UNREADABLE = re.compile(r"Keyboard|\\|Symbols|Math|D050000L|Z003|Smallcaps|Monoisome")
LANGUAGES = ("en", "zh_TW", "zh_CN", "ja", "ko")
FONT_CONFIG = """<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd"><fontconfig>
<dir>{root}/usr/share/fonts</dir><cachedir>{cache}</cachedir>
<match target="font"><edit name="antialias" mode="assign"><bool>{antialias}</bool></edit>
<edit name="hinting" mode="assign"><bool>{hinting}</bool></edit>
<edit name="hintstyle" mode="assign"><const>{style}</const></edit>
<edit name="rgba" mode="assign"><const>{order}</const></edit></match>
</fontconfig>"""


def unpack(folder):
    """Downloads and unpacks the packages. Returns the root of their files."""
    root, debs = f"{folder}/root", f"{folder}/debs"
    if os.path.exists(f"{root}/done"):
        return root
    os.makedirs(root, exist_ok=True)
    os.makedirs(debs, exist_ok=True)
    names = open(f"{HERE}/material.txt").read().split()
    missing = [name for name in names if not glob.glob(f"{debs}/{name}_*.deb")]
    if missing:
        subprocess.run(["apt-get", "download", *missing], cwd=debs, check=True)
    for package in sorted(glob.glob(f"{debs}/*.deb")):
        subprocess.run(["dpkg", "-x", package, root], check=True)
    open(f"{root}/done", "w").close()
    return root


def font_config(folder, chance, name):
    """Writes a font configuration that knows the unpacked fonts only. Returns the environment that makes programs use it."""
    path = f"{folder}/{name}.conf"
    style = chance.choice(("hintnone", "hintslight", "hintslight", "hintfull"))
    with open(path, "w") as file:
        file.write(FONT_CONFIG.format(root=f"{folder}/root", cache=f"{folder}/font-cache",
                                      antialias="false" if chance.random() < .04 else "true",
                                      hinting=str(style != "hintnone").lower(), style=style,
                                      order=chance.choice(("none", "rgb", "rgb", "bgr"))))
    return dict(os.environ, FONTCONFIG_FILE=path)


def families(folder):
    """Font families by language, and the monospaced ones of each."""
    environment, found = font_config(folder, random.Random(1), "fonts"), {}
    for language in LANGUAGES:
        for kind, more in ((language, ""), (language + " mono", ":spacing=100")):
            pattern = f":lang={language.replace('_', '-').lower()}{more}"
            out = subprocess.run(["fc-list", pattern, "family"], env=environment, capture_output=True, text=True, check=True)
            names = {line.split(",")[0].strip() for line in out.stdout.splitlines()}
            found[kind] = sorted(name for name in names if not UNREADABLE.search(name))
    east = {name for language in LANGUAGES[1:] for name in found[language]}
    for kind in ("en", "en mono"):  # CJK fonts draw Latin too, on their own pages
        found[kind] = [name for name in found[kind] if name not in east]
    for language in LANGUAGES[1:]:
        found[language + " mono"] = found[language + " mono"] or found[language]
    return found


def regular_files(root):
    """All files of the packages without links, which icon themes have by the ten thousand."""
    out = subprocess.run(["find", f"{root}/usr/share", "-type", "f", "-size", "+200c"], stdout=subprocess.PIPE, text=True, check=False)
    return sorted(path for path in out.stdout.splitlines() if "'" not in path)


def pictures(root, files):
    """Wallpapers and games' pictures, none much larger than a screen. Returns (grounds, sprites)."""
    place = re.compile(r"/usr/share/(wallpapers|backgrounds|games|tuxpaint/stamps|openclonk)/.*\.(png|jpe?g)$")
    unwanted = re.compile(r"font|text|title|splash|credit|logo|letter|alphabet|number|menu|button|cursor|/gui|_l10n")
    paths = [path for path in files if place.search(path) and not unwanted.search(path[len(root):].lower())]
    grounds, sprites = [], []
    for path in random.Random(1).sample(paths, min(len(paths), 5000)):
        try:
            with Image.open(path) as picture:
                small, large = sorted(picture.size)
        except (OSError, ValueError):
            continue
        if small >= 240 and 480 <= large <= 2600 and len(grounds) < 500:
            grounds.append(path)
        elif small >= 12 and large < 480 and len(sprites) < 2500:
            sprites.append(path)
    return grounds, sprites


def icons(files):
    """Icons by look: coloured ones and those of one colour."""
    place = re.compile(r"/usr/share/icons/(Papirus|breeze|Tango|elementary-xfce|oxygen)/.*(16|22|24|32|48|symbolic|scalable).*\.(png|svg)$")
    unwanted = re.compile(r"text-x|format-text|font|spell|keyboard-|flag|locale|animation")
    paths = [path for path in files if place.search(path) and not unwanted.search(path)]
    is_plain = re.compile(r"symbolic|/breeze/actions|Papirus/(16x16|22x22|24x24)/(actions|panel)")
    plain, coloured = [p for p in paths if is_plain.search(p)], [p for p in paths if not is_plain.search(p)]
    chance = random.Random(1)
    return chance.sample(coloured, min(5000, len(coloured))), chance.sample(plain, min(3000, len(plain)))


def documents(root, files):
    """HTML documents by language."""
    found = {language: [] for language in LANGUAGES}
    for path in files:
        if not path.endswith(".html") or os.path.getsize(path) < 5000:
            continue
        match = re.search(r"(?:^|[./_-])(ja|ko|zh[-_]cn|zh[-_]tw|en)(?:[./_-]|$)", path[len(root):].lower())
        name = match.group(1).replace("-", "_") if match else "en"
        found[{"zh_cn": "zh_CN", "zh_tw": "zh_TW"}.get(name, name)].append(path)
    return found


def strings(root):
    """Short strings of windows and sentences, by language, from message catalogues."""
    def clean(text):
        return re.sub(r"\s+", " ", re.sub(r"\(_?&?\w\)$|[_&]", "", text)).strip()
    found, english = {}, set()
    for language in LANGUAGES[1:]:
        short, long = set(), set()
        for path in sorted(glob.glob(f"{root}/usr/share/locale/{language}*/LC_MESSAGES/*.mo")):
            try:
                with open(path, "rb") as file:
                    catalogue = gettext.GNUTranslations(file)._catalog
            except (OSError, UnicodeDecodeError, ValueError):
                continue
            for source, text in catalogue.items():
                if not isinstance(source, str) or not source or re.search(r"[%<{|\\]", text + source):
                    continue
                source, text = clean(source.split("\x04")[-1]), clean(text)
                if re.search(r"[\u3040-\u30ff\u3400-\u9fff\uac00-\ud7a3]", text):
                    (short if len(text) <= 14 else long).add(text[:200])
                if 1 < len(source) <= 200 and source.isascii():
                    english.add(source)
        found[language] = {"short": sorted(short), "long": sorted(long)}
    found["en"] = {"short": sorted(s for s in english if len(s) <= 24), "long": sorted(s for s in english if len(s) > 24)}
    chance = random.Random(1)
    return {language: {kind: chance.sample(v, min(len(v), 8000)) for kind, v in kinds.items()} for language, kinds in found.items()}


def collect(folder):
    """Everything of the above, found once and remembered in the folder."""
    folder = os.path.abspath(folder)
    path = f"{folder}/material.json"
    if not os.path.exists(path):
        root = unpack(folder)
        files = regular_files(root)
        grounds, sprites = pictures(root, files)
        coloured, plain = icons(files)
        found = {"families": families(folder), "grounds": grounds, "sprites": sprites, "icons": coloured, "plain icons": plain,
                 "documents": documents(root, files), "strings": strings(root)}
        with open(path + ".new", "w") as file:
            json.dump(found, file)
        os.rename(path + ".new", path)
    with open(path) as file:
        return json.load(file)
