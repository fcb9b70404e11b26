"""What a screen reader sees of the program, and what it does with it. Runs as a program of its own, since the
accessibility library binds itself to one bus; reads commands, a line of JSON each, and answers each with its exit code
and output: texts | labels | places | contents | focused | tree | names | press NAME | focus NAME | open NAME | tab NAME |
states NAME | value NAME | any SEED"""
import json
import os
import random
import sys
import traceback

import pyatspi

CONTROLS = {"check box", "combo box", "text", "password text", "push button", "button", "slider", "page tab", "toggle button"}

WEIGHTS = {"combo box": 6, "slider": 4, "check box": 3, "page tab": 4, "text": 2, "list item": 2, "menu item": 2}


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


def act(node, *wanted: str) -> bool:
    """Does the first action with a wanted name, or else the first of all if that is wanted as "first"."""
    actions = node.queryAction()
    names = [actions.getName(index) for index in range(actions.nActions)]
    found = next((index for index, name in enumerate(names) if name in wanted), 0 if "first" in wanted and names else None)
    return found is not None and actions.doAction(found)


def press(name: str) -> bool:
    node = next((node for node in everything() if node.name == name and node.queryAction().nActions), None)
    return node is not None and act(node, "Press", "Toggle", "first")


def labels_of(node):
    return [relation.getTarget(index).name for relation in node.getRelationSet()
            if relation.getRelationType() == pyatspi.RELATION_LABELLED_BY for index in range(relation.getNTargets())]


def control(name: str, roles):
    """By its own name, or by that of its label: the name of a picker is what it shows."""
    return next((node for node in everything()
                 if node.getRoleName() in roles and (node.name == name or name in labels_of(node))), None)


def use_any(chance: random.Random) -> bool:
    """Uses one of the controls and prints its kind, for what comes next is done with keys."""
    controls = [node for node in everything() if "Action" in node.get_interfaces() and node.queryAction().nActions]
    if not controls:
        return False
    control = chance.choices(controls, [WEIGHTS.get(node.getRoleName(), 1) for node in controls])[0]
    names = [control.queryAction().getName(index) for index in range(control.queryAction().nActions)]
    role = control.getRoleName()
    print(role)
    return act(control, "SetFocus" if role in ("combo box", "slider", "text") else chance.choice(names), "first")


def text_of(node) -> str:
    text = node.queryText()
    return text.getText(0, text.characterCount)


def perform(command: str, name: str = "") -> bool:
    if command == "press":
        return press(name)
    if command == "any":
        return use_any(random.Random(int(name)))
    if command in ("focus", "open", "tab", "states", "value"):
        node = control(name, {"page tab"} if command == "tab" else CONTROLS)
        if node is None:
            return False
        if command == "states":
            print(*(pyatspi.stateToString(state) for state in node.getState().getStates()))
        elif command == "value":
            print(text_of(node))
        else:
            return act(node, "SetFocus" if command == "focus" else "first")
        return True
    for node in everything():
        if command == "tree":
            print(node.getRoleName(), repr(node.name), repr(node.description))
        elif command == "contents":
            if "EditableText" in pyatspi.listInterfaces(node) or node.getRoleName() == "text":
                print(node.name, text_of(node), sep="\t")
        elif command == "names" or (command == "focused" and node.getState().contains(pyatspi.STATE_FOCUSED)):
            print(node.name)
        elif command == "places" and node.getRoleName() == "label":
            box = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
            print(box.x, box.y, box.width, box.height, node.name)
        elif command == "texts" or (command == "labels" and node.getRoleName() == "label"):
            print(*filter(None, (node.name, node.description)), sep="\n")
    return True


def answer(arguments: list[str]) -> tuple[int, str]:
    """In a process of its own: what the library remembers of the program's windows would be out of date next time."""
    reading, writing = os.pipe()
    child = os.fork()
    if child == 0:
        os.dup2(writing, 1)
        try:
            is_done = perform(*arguments)
            sys.stdout.flush()
        except Exception:
            traceback.print_exc()
            is_done = False
        os._exit(0 if is_done else 1)
    os.close(writing)
    with open(reading, encoding="utf-8") as output:
        text = output.read()
    return os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]), text


if __name__ == "__main__":
    for line in sys.stdin:
        print(json.dumps(answer(json.loads(line))), flush=True)
