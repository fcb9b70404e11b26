"""What the demonstration and the gallery share: the tests' display, and a pass over what lies beneath the pane."""
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "tests" / "end-to-end"))
from screen import Pane, Screen, eventually  # noqa: E402


def labels(screen: Screen) -> int:
    """How many texts the pane shows."""
    return len(screen.accessibility("labels")[1].splitlines())


def run_pass(screen: Screen, pane: Pane, texts: int = 5) -> None:
    """A double click, and the time until that many translations are drawn and the capsule has faded."""
    pane.double_click()
    if not eventually(lambda: labels(screen) >= texts, 30):
        raise RuntimeError("no translation appeared on the pane")
    width, height = screen.size.split("x")
    screen.do(f"mousemove {int(width) - 10} {int(height) - 10} sleep 1.2")
