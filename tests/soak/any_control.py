"""Uses one of the program's controls, any: any_control.py SEED. Prints its kind, for what comes next is done with keys. A
program of its own for the accessibility library's sake."""
import pathlib
import random
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "end-to-end"))

from accessibility import everything

WEIGHTS = {"combo box": 6, "slider": 4, "check box": 3, "page tab": 4, "text": 2, "list item": 2, "menu item": 2}

chance = random.Random(int(sys.argv[1]))
controls = [node for node in everything() if "Action" in node.get_interfaces() and node.queryAction().nActions]
if controls:
    control = chance.choices(controls, [WEIGHTS.get(node.getRoleName(), 1) for node in controls])[0]
    actions = control.queryAction()
    names = [actions.getName(index) for index in range(actions.nActions)]
    wanted = "SetFocus" if control.getRoleName() in ("combo box", "slider", "text") else chance.choice(names)
    actions.doAction(names.index(wanted) if wanted in names else 0)
    print(control.getRoleName())
