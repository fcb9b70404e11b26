"""Controls of a form as a screen reader reaches them; a program of its own for the accessibility library's sake:
form.py focus NAME | open NAME | tab NAME | states NAME | value NAME | names"""
import sys

import pyatspi

from accessibility import everything

CONTROLS = {"check box", "combo box", "text", "password text", "push button", "button", "slider", "page tab", "toggle button"}


def labels_of(node):
    return [relation.getTarget(index).name for relation in node.getRelationSet()
            if relation.getRelationType() == pyatspi.RELATION_LABELLED_BY for index in range(relation.getNTargets())]


def control(name: str, roles=frozenset(CONTROLS)):
    """By its own name, or by that of its label: the name of a picker is what it shows."""
    return next((node for node in everything()
                 if node.getRoleName() in roles and (node.name == name or name in labels_of(node))), None)


def main(command: str, name: str = "") -> int:
    if command == "names":
        print(*(node.name for node in everything() if node.name), sep="\n")
        return 0
    node = control(name, {"page tab"} if command == "tab" else CONTROLS)
    if node is None:
        return 1
    if command in ("focus", "tab", "open"):
        actions = node.queryAction()
        names = [actions.getName(index) for index in range(actions.nActions)]
        wanted = "SetFocus" if command == "focus" else names[0]
        return 0 if wanted in names and actions.doAction(names.index(wanted)) else 1
    if command == "states":
        print(*(pyatspi.stateToString(state) for state in node.getState().getStates()))
    if command == "value":
        text = node.queryText()
        print(text.getText(0, text.characterCount))
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
