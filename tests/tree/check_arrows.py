#!/usr/bin/env python3
"""Checks that includes follow the direction of the arrows between the folders of src/, and says in words where not."""
import pathlib
import re
import sys

# The arrows from each folder; it may include the headers of every folder that it reaches by them.
ARROWS = {
    "support": [],
    "widgets": [],
    "platform": ["support"],
    "platform/linux": ["platform"],
    "settings": ["platform"],
    "settings/texts": ["settings"],
    "settings/migration": ["settings"],
    "history": ["platform"],
    "translation": ["history", "settings/texts"],
    "capture": ["translation"],
    "live": ["capture"],
    "pane/glass": ["widgets", "settings"],
    "pane/overlay": ["pane/glass", "capture"],
    "pane/capsule": ["pane/glass", "capture"],
    "pane/window": ["pane/overlay", "pane/capsule"],
    "manual": ["widgets", "translation"],
    "history/window": ["history", "settings/texts", "widgets"],
    "settings/window": ["translation", "widgets"],
}
ALLOWED: dict[str, set[str]] = {}
for folder, arrows in ARROWS.items():
    ALLOWED[folder] = set(arrows).union(*(ALLOWED[other] for other in arrows))
ALLOWED["app"] = set(ALLOWED)


def folder_of(path: pathlib.PurePath) -> str:
    """The longest known folder that holds the file."""
    parts = path.parts[:-1]
    for length in range(len(parts), 0, -1):
        name = "/".join(parts[:length])
        if name in ALLOWED:
            return name
    return parts[0] if parts else ""


def main() -> int:
    source = pathlib.Path(sys.argv[1])
    files = [path for path in source.rglob("*") if path.suffix in (".h", ".cpp")]
    owners: dict[str, set[str]] = {}
    for path in files:
        owners.setdefault(path.name, set()).add(folder_of(path.relative_to(source)))
    wrong = [f"two headers are named {name}: in {', '.join(sorted(folders))}"
             for name, folders in owners.items() if name.endswith(".h") and len(folders) > 1]
    for path in files:
        here = folder_of(path.relative_to(source))
        if here not in ALLOWED:
            wrong.append(f"{path.relative_to(source)}: the folder {here} has no place among the arrows")
            continue
        for include in re.findall(r'^\s*#include "([^"]+)"', path.read_text(encoding="utf-8"), re.M):
            for there in owners.get(pathlib.PurePath(include).name, set()):
                if there != here and there not in ALLOWED[here]:
                    wrong.append(f"{path.relative_to(source)} includes {include} of {there}: {here} may not reach there")
    print("\n".join(wrong) if wrong else f"{len(files)} files follow the arrows")
    return 1 if wrong or not files else 0


if __name__ == "__main__":
    sys.exit(main())
