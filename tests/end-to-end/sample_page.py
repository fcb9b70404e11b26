"""Lines of text that the tests' pictures and windows show, and the command that draws them."""
import os
import pathlib
import subprocess

RENDER = pathlib.Path(os.environ.get("RENDER_PAGE", "build/dev/bin/render_page")).resolve()

ENGLISH = ["Annual report on coastal erosion", "The harbour wall was repaired in spring", "Next inspection: 14 October"]
CHINESE = ["沿海侵蝕年度報告", "港口防波堤已於春季修復"]


def render(path: pathlib.Path, lines: list[str], *, dark: bool = False, columns: int = 1, size: str = "960x560",
           pixels: int = 22) -> None:
    """Draws the lines into a picture, one below the other, or side by side in columns."""
    command = [str(RENDER), str(path), "--size", size, "--pixels", str(pixels), "--columns", str(columns)]
    if dark:
        command.append("--dark")
    subprocess.run([*command, "--", *lines], check=True, env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
