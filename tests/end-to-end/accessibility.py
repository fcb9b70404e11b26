"""What a screen reader sees of the program: its controls by name, and pressing them. Runs as a program of its own, since
the accessibility library binds itself to one bus: accessibility.py texts | labels | contents | focus | press NAME | tree"""
import sys

import pyatspi


def programs():
    return [program for program in pyatspi.Registry.getDesktop(0) if program and program.name == "lucentra"]


def showing(node):
    """The node and everything below that is on the screen."""
    if node is None or not node.getState().contains(pyatspi.STATE_SHOWING):
        return
    yield node
    for child in node:
        yield from showing(child)


def everything():
    for program in programs():
        for window in program:
            yield from showing(window)


def press(name: str) -> bool:
    for node in everything():
        if node.name == name and node.queryAction().nActions:
            actions = node.queryAction()
            names = [actions.getName(index) for index in range(actions.nActions)]
            return actions.doAction(next((i for i, action in enumerate(names) if action in ("Press", "Toggle")), 0))
    return False


if __name__ == "__main__":
    if sys.argv[1] == "press":
        sys.exit(0 if press(sys.argv[2]) else 1)
    for found in everything():
        if sys.argv[1] == "focus":
            if found.getState().contains(pyatspi.STATE_FOCUSED):
                print(found.name)
        elif sys.argv[1] == "tree":
            print(found.getRoleName(), repr(found.name), repr(found.description))
        elif sys.argv[1] == "contents":
            if "EditableText" in pyatspi.listInterfaces(found) or found.getRoleName() == "text":
                text = found.queryText()
                print(found.name, text.getText(0, text.characterCount), sep="\t")
        elif sys.argv[1] == "texts" or found.getRoleName() == "label":
            print(*filter(None, (found.name, found.description)), sep="\n")
