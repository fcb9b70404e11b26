"""Controls of a form as a screen reader reaches them; a program of its own for the accessibility library's sake:
form.py focus NAME | tab NAME | states NAME | value NAME | tree"""
import sys

import pyatspi

from accessibility import everything

CONTROLS = {"check box", "combo box", "text", "password text", "push button", "button", "slider", "page tab", "toggle button"}


def control(name: str, roles=frozenset(CONTROLS)):
    return next((node for node in everything() if node.name == name and node.getRoleName() in roles), None)


def main(command: str, name: str = "") -> int:
    if command == "tree":
        for node in everything():
            print(node.getRoleName(), repr(node.name))
        return 0
    node = control(name, {"page tab"} if command == "tab" else CONTROLS)
    if node is None:
        return 1
    if command == "focus":
        return 0 if node.queryComponent().grabFocus() else 1
    if command == "tab":
        return 0 if node.queryAction().doAction(0) else 1
    if command == "states":
        print(*(pyatspi.stateToString(state) for state in node.getState().getStates()))
    if command == "value":
        text = node.queryText()
        print(text.getText(0, text.characterCount))
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
