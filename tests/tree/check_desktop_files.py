#!/usr/bin/env python3
"""Checks what a desktop and the shells read of the program against the program itself:
check_desktop_files.py SOURCES LUCENTRA VERSION

The commands and options are those of the program's help page, so that none is missing in a completion, the manual page or
the menu's actions. The messages that the guide explains are looked up in the string table. The desktop's validators are
asked where they are installed."""
import configparser
import itertools
import os
import pathlib
import re
import shutil
import subprocess
import sys
import xml.etree.ElementTree

ENTRY_LANGUAGES = {"zh", "zh_TW", "zh_HK", "ja", "ko"}  # besides English; "zh" is written in simplified characters
METAINFO_LANGUAGES = {"zh_CN", "zh_TW", "ja", "ko"}
ACTIONS = {"translate", "show", "history", "settings"}


class Tree:
    def __init__(self, sources: pathlib.Path, lucentra: str, version: str):
        self.resources = sources / "resources"
        self.debian = sources / "packaging" / "debian"
        self.docs = sources / "docs"
        self.built = pathlib.Path(lucentra).parents[1] / "resources"
        self.version = version
        self.wrong: list[str] = []
        environment = os.environ | {"LANGUAGE": "en", "LANG": "C.UTF-8"}
        self.help = subprocess.run([lucentra, "--help"], env=environment, capture_output=True, encoding="utf-8",
                                   check=True).stdout
        # A command's options, with the dashes.
        self.commands = {name: set(re.findall(r"--[a-z-]+", rest))
                         for name, rest in re.findall(r"^  lucentra (\S+)(.*)$", self.help, re.M)}
        self.choices = {value for values in re.findall(r"--[a-z]+ (\S+\|\S+?)[\] \n]", self.help)
                        for value in values.split("|")}

    def expect(self, claim: bool, message: str) -> None:
        if not claim:
            self.wrong.append(message)

    def equal(self, found, wanted, what: str) -> None:
        found, wanted = set(found), set(wanted)
        if found != wanted:
            self.wrong.append(f"{what}: lacks {sorted(wanted - found)}, has too many {sorted(found - wanted)}")

    def ask(self, *command: str) -> None:
        """Has a validator look, where it is installed; everything that it says is wrong."""
        if not shutil.which(command[0]):
            print(f"{command[0]} isn't installed")
            return
        answer = subprocess.run(command, capture_output=True, encoding="utf-8", check=False)
        said = (answer.stdout + answer.stderr).strip()
        self.expect(answer.returncode == 0 and re.fullmatch("|.*successful.*", said) is not None,
                    f"{' '.join(command)}: {said}")

    # What a shell completes: the commands, and each one's options.

    def completed_by_bash(self, *words: str) -> list[str]:
        script = ('source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); '
                  '_lucentra 2>/dev/null; printf "%s\\n" "${COMPREPLY[@]}"')
        answer = subprocess.run(["bash", "--norc", "-c", script, "bash", str(self.resources / "completions/lucentra.bash"),
                                 "lucentra", *words], capture_output=True, encoding="utf-8", check=True)
        return answer.stdout.split()

    def bash(self) -> None:
        self.equal(self.completed_by_bash(""), [*self.commands, "--help", "--version"], "bash: commands")
        for command, options in self.commands.items():
            self.equal(self.completed_by_bash(command, "-"), options | {"--help"}, f"bash: options of {command}")
            for option in options:
                short = option[:-1]
                self.equal(self.completed_by_bash(command, short), [option], f"bash: {short} of {command}")
        self.equal(self.completed_by_bash("export", "--format", ""), self.choices, "bash: values of --format")
        self.equal(self.completed_by_bash("export", "--format", "=", "c"), ["csv"], "bash: --format=c")

    def zsh(self) -> None:
        path = self.resources / "completions/_lucentra"
        text = path.read_text(encoding="utf-8")
        self.equal(re.findall(r"^    '([a-z-]+):", text, re.M), self.commands, "zsh: commands")
        variables = dict(re.findall(r"^local ([a-z]+)='(?:\(- \*\))?(--[a-z-]+)", text, re.M))
        branches = {name: {variables.get(word[1:], word) for word in re.findall(r"\$[a-z]+|(?<=')--[a-z-]+", rest)}
                    for name, rest in re.findall(r"^    (\S+)\) _arguments (.*) ;;$", text, re.M)}
        other = branches.pop("*", set())
        for command, options in self.commands.items():
            self.equal(branches.get(command, other), options | {"--help"}, f"zsh: options of {command}")
        self.equal(set(branches) - set(self.commands), [], "zsh: branches")
        for value in self.choices:
            self.expect(value in text, f"zsh: the value {value}")
        self.ask("zsh", "-n", str(path))

    def fish(self) -> None:
        path = self.resources / "completions/lucentra.fish"
        text = path.read_text(encoding="utf-8")
        self.equal(re.findall(r"-n __fish_use_subcommand -a ([a-z-]+)", text), self.commands, "fish: commands")
        found: dict[str, set[str]] = {command: set() for command in self.commands}
        for commands, option in re.findall(r"__fish_seen_subcommand_from ([a-z -]+)' -l ([a-z-]+)", text):
            for command in commands.split():
                found.setdefault(command, set()).add(f"--{option}")
        for command in found | self.commands:
            self.equal(found[command], self.commands.get(command, set()), f"fish: options of {command}")
        for word in ("-l help", "-l version", *self.choices):
            self.expect(word in text, f"fish: {word}")
        self.ask("fish", "-n", str(path))

    def manual_page(self) -> None:
        text = (self.resources / "man/lucentra.1").read_text(encoding="utf-8").replace("\\-", "-")
        described = text[text.index(".SH COMMANDS"):text.index('.SH "EXIT STATUS"')]
        heads = set(re.findall(r"[a-z-]+", " ".join(re.findall(r"^\.TP\n(\.[A-Z]+ .*)$", described, re.M))))
        for word in [*self.commands, *sorted(set().union(*self.commands.values())), "--help", "--version"]:
            self.expect(word in heads, f"the manual page doesn't describe {word}")

    # What the desktop reads.

    def entry(self, name: str) -> configparser.ConfigParser:
        path = self.resources / "desktop" / name
        entry = configparser.ConfigParser(interpolation=None, delimiters="=")
        entry.optionxform = str
        entry.read(path, encoding="utf-8")
        for group in entry.sections():
            keys: dict[str, set[str]] = {}
            for key, language in re.findall(r"^(\w+)(?:\[(\w+)\])?$", "\n".join(entry[group]), re.M):
                keys.setdefault(key, set()).add(language)
            for key in keys.keys() & {"Name", "GenericName", "Comment", "Keywords"}:
                self.equal(keys[key], ENTRY_LANGUAGES | {""}, f"{name}: languages of {key} in [{group}]")
        icon = entry["Desktop Entry"]["Icon"]
        self.expect((self.resources / f"icons/{icon}.svg").exists(), f"{name}: there is no icon {icon}")
        self.ask("desktop-file-validate", str(path))
        return entry

    def desktop_entries(self) -> None:
        entry = self.entry("com.tarnby.lucentra.desktop")
        actions = entry["Desktop Entry"]["Actions"].strip(";").split(";")
        self.equal(actions, ACTIONS, "actions of the desktop entry")
        self.equal(entry.sections(), ["Desktop Entry", *(f"Desktop Action {name}" for name in actions)], "its groups")
        for action in actions:
            self.expect(entry[f"Desktop Action {action}"]["Exec"] == f"lucentra {action}", f"what {action} starts")
            self.expect(action in self.commands, f"{action} is no command")
        self.expect(entry["Desktop Entry"]["Exec"] == "lucentra", "what the desktop entry starts")
        self.expect(self.entry("autostart.desktop")["Desktop Entry"]["Exec"] == "lucentra", "what the autostart starts")

    def metainfo(self) -> None:
        path = self.resources / "desktop/com.tarnby.lucentra.metainfo.xml"
        text = path.read_text(encoding="utf-8")
        root = xml.etree.ElementTree.parse(path).getroot()
        language = "{http://www.w3.org/XML/1998/namespace}lang"
        for holder, tag in [(root, "name"), (root, "summary"), *((one, "caption") for one in root.iter("screenshot"))]:
            self.equal([element.get(language, "") for element in holder.findall(tag)], METAINFO_LANGUAGES | {""},
                       f"metainfo: languages of {tag}")
        paragraphs = [element.get(language, "") for element in root.findall("description/p")]
        for wanted in METAINFO_LANGUAGES:
            self.expect(paragraphs.count(wanted) == paragraphs.count(""), f"metainfo: paragraphs in {wanted}")
        self.expect(root.findtext("launchable") == "com.tarnby.lucentra.desktop", "metainfo: launchable")
        self.expect(root.find("releases/release").get("version") == self.version, "metainfo: the newest release")
        pictures = [image.text for image in root.iter("image")]
        self.expect(len(pictures) > 1, "metainfo: screenshots")
        for picture in pictures:
            self.expect((self.docs.parent / picture).exists(), f"metainfo: there is no {picture}")
        published = self.built / "published.metainfo.xml"
        published.write_text(text.replace(">docs/", ">https://example.org/docs/"), encoding="utf-8")
        for one in (published, self.built / path.name):
            self.ask("appstreamcli", "validate", "--pedantic", "--no-net", str(one))

    def guide(self) -> None:
        """Each message that the guide explains is one that the program shows."""
        table = xml.etree.ElementTree.parse(self.resources / "i18n/lucentra_en.ts")
        texts = [message.findtext("translation") for message in table.iter("message")]
        explained = (self.docs / "guide.md").read_text(encoding="utf-8").partition("| Lucentra says |")[2]
        rows = re.findall(r"^\| (\w.+?|….+?) \|", explained, re.M)
        self.expect(len(rows) > 25, f"the guide explains only these messages: {rows}")
        for said in itertools.chain.from_iterable(row.split(" / ") for row in rows):
            pattern = ".*".join(re.escape(piece.strip()) for piece in said.split("…"))
            self.expect(any(re.search(pattern, text) for text in texts), f"the guide explains what isn't said: {said}")

    def package(self) -> None:
        newest = (self.debian / "changelog").read_text(encoding="utf-8").splitlines()[0]
        self.expect(f"({self.version}-" in newest, f"the package's change log is of another version: {newest}")
        changes = (self.docs.parent / "CHANGELOG.md").read_text(encoding="utf-8")
        self.expect(f"\n## {self.version} (" in changes, f"the change log has no {self.version}")
        manifest = (self.debian.parent / "flatpak/com.tarnby.lucentra.yml").read_text(encoding="utf-8")
        self.equal(re.findall(r"url: (\S+)", manifest), re.findall(r"url: (\S+)\n +sha256: [0-9a-f]{64}\n", manifest),
                   "Flatpak: sources with a checksum")
        self.expect(not re.search("^ *- --(filesystem|device|socket=session-bus)", manifest, re.M),
                    "Flatpak: permissions beyond portals")


def main() -> int:
    tree = Tree(pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3])
    tree.expect(len(tree.commands) > 10 and tree.choices != set(), f"the help page is of another form:\n{tree.help}")
    for check in (tree.bash, tree.zsh, tree.fish, tree.manual_page, tree.desktop_entries, tree.metainfo, tree.guide, tree.package):
        check()
    print("\n".join(tree.wrong) or f"{len(tree.commands)} commands are known to desktop and shells")
    return 1 if tree.wrong else 0


if __name__ == "__main__":
    sys.exit(main())
