#!/usr/bin/python3
"""usage: windows.py FOLDER FIRST COUNT [PART PARTS] - samples of the windows of real programs, as root.

FOLDER is that of make-weights, whose strings and pictures are used. The programs run in FOLDER/system, a Debian of its own
without network, in eight languages and many themes. A window is shown by a display with letters, by a second without and
by a third with boxes in their place (glyphs.c); the difference of the pictures says where the text is. Group n depends on
n and on how fast the programs are; it becomes samples n0 to n5 of FOLDER/windows.
The first call installs the system; call it alone. If that breaks off, remove FOLDER/system and begin anew.
"""
import json
import os
import random
import re
import shutil
import subprocess
import sys

import numpy as np
from scipy import ndimage

import material
from samples import sample

HERE = os.path.dirname(os.path.abspath(__file__))
LOCALES = {"en": "en_US", "zh_TW": "zh_TW", "zh_CN": "zh_CN", "ja": "ja_JP", "ko": "ko_KR", "de": "de_DE", "fr": "fr_FR", "es": "es_ES"}
MEASURED = re.compile("DejaVu|Noto")  # fonts that screens are measured with
SEEN = 20     # levels; a smaller difference of a channel is no box
BAND = .4     # of the em; height of a box, which begins .05 above the base line
HIGHEST = 120 # pixels; boxes of the largest letters are lower, so that something else has changed
STATES = 6    # of a program, at most
STRAY = .01   # of the places that change without text; more means that the windows weren't the same


def install(folder):
    """The system with the programs of windows.txt. Returns its root."""
    root = f"{folder}/system"
    if not os.path.exists(f"{root}/training/done"):
        subprocess.run(["debootstrap", "--variant=minbase", "--include=ca-certificates,locales", "bookworm", root], check=True)
        with open(f"{root}/etc/locale.gen", "w") as file:
            file.writelines(f"{name}.UTF-8 UTF-8\n" for name in LOCALES.values())
        with open(f"{root}/usr/sbin/policy-rc.d", "w") as file:
            file.write("#!/bin/sh\nexit 101\n")  # nothing is started
        os.chmod(f"{root}/usr/sbin/policy-rc.d", 0o755)
        subprocess.run(["chroot", root, "locale-gen"], check=True)
        names = [line.split()[0] for line in open(f"{HERE}/windows.txt") if line.strip()]
        subprocess.run(["chroot", root, "apt-get", "install", "-y", "--no-install-recommends", *names],
                       env=dict(os.environ, DEBIAN_FRONTEND="noninteractive"), check=True)
        os.makedirs(f"{root}/training", exist_ok=True)
        open(f"{root}/training/done", "w").close()
    flags = subprocess.run(["pkg-config", "--cflags", "freetype2"], capture_output=True, text=True, check=True).stdout.split()
    subprocess.run(["cc", "-shared", "-fPIC", "-O2", *flags, f"{HERE}/glyphs.c", "-o", f"{root}/training/glyphs.so", "-ldl"], check=True)
    shutil.copy(f"{HERE}/window_session.py", f"{root}/training/")
    return root


def programs():
    """The commands of windows.txt: what follows the package's name, if anything."""
    return [line.split(None, 1)[1].strip() for line in open(f"{HERE}/windows.txt") if len(line.split(None, 1)) > 1]


def names_in(folder, part=""):
    """What is in a folder; with a part only folders that have it."""
    found = sorted(os.listdir(folder)) if os.path.isdir(folder) else []
    return [name for name in found if os.path.exists(f"{folder}/{name}/{part}")] if part else found


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w") as file:
        file.write(text)


def make_files(home, chance, known, language):
    """Files that the programs show, and those of windows.txt."""
    texts = known["strings"].get(language, known["strings"]["en"])
    for name in chance.sample(texts["short"], 24):
        name = name.replace("/", " ")[:60].strip(". ")
        if name and chance.random() < .4:
            os.makedirs(f"{home}/{name}", exist_ok=True)
        elif name:
            write(f"{home}/{name}{chance.choice(('.txt', '.csv', '.odt', '.pdf', '.zip', '.html', '.c', ''))}", "x" * chance.randint(0, 4000))

    def cell():
        return chance.choice((chance.choice(texts["short"]).replace(",", " "), str(chance.randint(0, 9999)), f"{chance.random() * 100:.2f}"))
    lines = (" ".join(chance.sample(texts["long"], chance.randint(1, 3))) if chance.random() < .8 else "" for _ in range(40))
    write(f"{home}/text.txt", "\n".join(lines))
    write(f"{home}/table.csv", "".join(",".join(cell() for _ in range(7)) + "\n" for _ in range(30)))
    shutil.copy(f"{HERE}/{chance.choice([name for name in names_in(HERE) if name.endswith('.py')])}", f"{home}/program.py")
    shutil.copy(chance.choice(known["sprites"]), f"{home}/picture.png")


def make_settings(root, home, chance, fonts):
    """Theme, icons, font and smoothing for both toolkits and the window manager."""
    share = f"{root}/usr/share"
    theme, icons = chance.choice(names_in(f"{share}/themes", "gtk-3.0")), chance.choice(names_in(f"{share}/icons", "index.theme"))
    font, size = chance.choice(fonts), chance.choice((8, 9, 10, 10, 11, 11, 12, 14))
    smooth, hints = chance.random() > .04, chance.choice(("hintnone", "hintslight", "hintslight", "hintfull"))
    order = chance.choice(("none", "rgb", "rgb", "bgr"))
    gtk = (f"[Settings]\ngtk-theme-name={theme}\ngtk-icon-theme-name={icons}\ngtk-font-name={font} {size}\n"
           f"gtk-application-prefer-dark-theme={int(chance.random() < .3)}\ngtk-xft-antialias={int(smooth)}\ngtk-xft-hinting=1\n"
           f"gtk-xft-hintstyle={hints}\ngtk-xft-rgba={order}\ngtk-cursor-blink=0\ngtk-enable-animations=0\n"
           f"gtk-toolbar-style={chance.choice(('GTK_TOOLBAR_ICONS', 'GTK_TOOLBAR_BOTH', 'GTK_TOOLBAR_BOTH_HORIZ'))}\n")
    for version in ("3.0", "4.0"):
        write(f"{home}/.config/gtk-{version}/settings.ini", gtk)
    write(f"{home}/.gtkrc-2.0", f'gtk-theme-name="{theme}"\ngtk-icon-theme-name="{icons}"\ngtk-font-name="{font} {size}"\ngtk-cursor-blink=0\n')
    style = chance.choice(("Fusion", "Fusion", "Windows", "Breeze", "kvantum", "kvantum-dark", "Oxygen", "cleanlooks", "plastique", "gtk2"))
    colours = chance.choice(names_in(f"{share}/qt5ct/colors"))
    for tool in ("qt5ct", "qt6ct"):
        write(f"{home}/.config/{tool}/{tool}.conf",
              f"[Appearance]\nstyle={style}\nicon_theme={icons}\ncustom_palette={'true' if chance.random() < .4 else 'false'}\n"
              f"color_scheme_path=/usr/share/qt5ct/colors/{colours}\n[Fonts]\nfixed=\"Hack,{size},-1,5,50,0,0,0,0,0\"\n"
              f"general=\"{font},{size},-1,5,50,0,0,0,0,0\"\n[Interface]\ncursor_flash_time=0\n")
    write(f"{home}/.config/Kvantum/kvantum.kvconfig", f"[General]\ntheme={chance.choice(names_in(f'{share}/Kvantum'))}\n")
    write(f"{home}/.config/kdeglobals", f"[Icons]\nTheme={icons}\n[General]\nfont={font},{size},-1,5,50,0,0,0,0,0\n")
    write(f"{home}/.config/fontconfig/fonts.conf",
          '<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd"><fontconfig><match target="font">'
          f'<edit name="hintstyle" mode="assign"><const>{hints}</const></edit><edit name="rgba" mode="assign"><const>{order}</const></edit>'
          '</match></fontconfig>')
    with open(f"{root}/etc/xdg/openbox/rc.xml") as file:
        manager = file.read().replace("<name>Clearlooks</name>", f"<name>{chance.choice(names_in(f'{share}/themes', 'openbox-3'))}</name>")
    write(f"{home}/.config/openbox/rc.xml", manager.replace("<name>sans</name>", f"<name>{font}</name>"))


def show(root, number, known):
    """Runs a program. Returns the folder with what its displays showed, and the plan."""
    chance = random.Random(f"window {number}")
    language = chance.choice(("en", "en", "en", "zh_TW", "zh_CN", "ja", "ko", "de", "fr", "es"))
    scale = chance.choice((1, 1, 1, 1, 1, 1.25, 1.5, 2))
    width, height = chance.choice(((960, 640), (1120, 720), (1280, 800))) if scale < 2 else (1440, 1000)
    out = f"{root}/training/{number}"
    shutil.rmtree(out, ignore_errors=True)
    os.makedirs(out)
    make_files(f"{out}/home", chance, known, language)
    make_settings(root, f"{out}/home", chance, known["window fonts"])
    ground = ["-solid", f"#{chance.getrandbits(24):06x}"]
    if chance.random() < .4:
        shutil.copy(chance.choice(known["grounds"]), f"{out}/ground")
        ground = ["-fill", f"/training/{number}/ground"]
    x, y = chance.randint(0, width // 8), chance.randint(0, height // 8)
    locale = LOCALES[language]
    plan = {"seed": number, "states": STATES, "width": width, "height": height, "ground": ground, "x": x, "y": y,
            "w": width - x - chance.randint(8, width // 6), "h": height - y - chance.randint(30, height // 5),
            "home": f"/training/{number}/home", "out": f"/training/{number}", "command": chance.choice(programs()),
            "ways": ["shown", "none", "boxes"] + (["scripts"] if locale[:2] in ("zh", "ja", "ko") else []),
            "environment": {"LANG": f"{locale}.UTF-8", "LC_ALL": f"{locale}.UTF-8", "LANGUAGE": locale, "QT_QPA_PLATFORMTHEME": "qt5ct",
                            "GSK_RENDERER": "cairo", "GDK_SCALE": str(int(scale == 2) + 1), "GDK_DPI_SCALE": str(scale if scale < 2 else 1),
                            "QT_SCALE_FACTOR": str(scale), "XDG_CURRENT_DESKTOP": "KDE",
                            "PATH": "/usr/local/bin:/usr/bin:/bin:/usr/games:/usr/sbin:/sbin"}}
    write(f"{out}/plan.json", json.dumps(plan))
    script = (f"mount -t proc proc {root}/proc && mount -t tmpfs tmpfs {root}/tmp && mount -t tmpfs tmpfs {root}/run && ip link set lo up && "
              f"exec chroot {root} python3 /training/window_session.py /training/{number}/plan.json")
    # All that runs inside ends with the first process there.
    subprocess.run(["unshare", "--net", "--pid", "--ipc", "--mount", "--fork", "--kill-child", "sh", "-c", script], timeout=240, check=False)
    shutil.rmtree(f"{out}/home", ignore_errors=True)
    return out, plan


def read_xwd(path):
    data = np.fromfile(path, np.uint8)
    fields = data[:100].view(">u4")
    width, height, line, colours = (int(fields[i]) for i in (4, 5, 12, 19))
    start = int(fields[0]) + 12 * colours
    return data[start:start + height * line].reshape(height, line)[:, :4 * width].reshape(height, width, 4)[..., 2::-1].copy()


def difference(a, b):
    return np.abs(a.astype(np.int16) - b).max(2)


def pieces_of(hidden, boxes, scripts):
    """The runs of text and the scripts in them, as the browser reports them."""
    labels, _ = ndimage.label(ndimage.binary_closing(difference(boxes, hidden) > SEEN, np.ones((1, 3))))
    kinds = None if scripts is None else difference(scripts, hidden) > SEEN
    pieces = []
    for number, (rows, columns) in enumerate(ndimage.find_objects(labels)):
        tall, wide = rows.stop - rows.start, columns.stop - columns.start
        if tall < 3 or wide < 3 or (labels[rows, columns] == number + 1).mean() < .8:
            continue
        em = tall / BAND
        base = rows.stop + .05 * em
        kind = np.zeros(wide, np.int8)
        if kinds is not None:
            inside = kinds[rows, columns]
            upper, lower = inside[:tall // 2].any(0), inside[-(tall // 2):].any(0)
            kind[lower] = 2
            kind[upper] = 3
            kind[upper & lower] = 1
        changes = np.flatnonzero(np.diff(kind)) + 1
        for start, end in zip([0, *changes], [*changes, wide]):
            if end - start > 1:
                pieces.append([number, columns.start + start, base - .95 * em, columns.start + end, base + .25 * em, int(kind[start]), "", 1, 1])
    return pieces, labels > 0


def take(out, plan, target):
    """Makes samples of what the displays showed. Returns for each state what became of it."""
    taken = []
    for state in range(STATES):
        if not os.path.exists(f"{out}/{state}-shown.xwd"):
            break
        pictures = {way: read_xwd(f"{out}/{state}-{way}.xwd") for way in plan["ways"]}
        pieces, places = pieces_of(pictures["none"], pictures["boxes"], pictures.get("scripts"))
        around = ndimage.binary_dilation(places, np.ones((3, 3)), iterations=12)
        stray = ((difference(pictures["shown"], pictures["none"]) > SEEN) & ~around).mean()
        if stray > STRAY or not pieces or any(bottom - top > HIGHEST for _, _, top, _, bottom, *_ in pieces):
            taken.append(f"{stray:.3f}")
            continue
        full, bits, script = sample(pictures["shown"], pictures["none"], pieces)
        np.save(f"{target}{state}.script.npy", script)
        np.save(f"{target}{state}.half.npy", bits)
        np.save(f"{target}{state}.full.npy", full)
        taken.append("taken")
    return taken


def main():
    folder, first, count = os.path.abspath(sys.argv[1]), int(sys.argv[2]), int(sys.argv[3])
    part, parts = (int(v) for v in sys.argv[4:6]) if len(sys.argv) > 4 else (0, 1)
    root, known = install(folder), material.collect(folder)
    listed = subprocess.run(["chroot", root, "fc-list", "--format", "%{family[0]}\n"], capture_output=True, text=True, check=True).stdout
    known["window fonts"] = sorted({name for name in listed.splitlines() if not material.UNREADABLE.search(name) and not MEASURED.match(name)})
    os.makedirs(f"{folder}/windows", exist_ok=True)
    for number in range(first, first + count):
        if number % parts != part or os.path.exists(f"{folder}/windows/{number}.done"):
            continue
        try:
            out, plan = show(root, number, known)
        except subprocess.TimeoutExpired:
            print(number, "took too long", flush=True)
            continue
        taken = take(out, plan, f"{folder}/windows/{number}")
        shutil.rmtree(out)
        open(f"{folder}/windows/{number}.done", "w").close()
        print(number, plan["command"], plan["environment"]["LANG"], *taken, flush=True)


if __name__ == "__main__":
    main()
