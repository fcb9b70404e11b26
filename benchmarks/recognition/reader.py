"""The programs that read pictures and join lines, built and asked."""

import json
import os
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]


def built_program(name):
    preset = os.environ.get("PRESET", "release")
    for command in (["cmake", "--preset", preset], ["cmake", "--build", "--preset", preset, "--target", name]):
        done = subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if done.returncode:
            sys.exit(done.stdout[-4000:])
    return next((ROOT / "build" / preset).rglob(name))


class OurReader:
    name = "ours"

    def __init__(self, program, **environment):
        self.process = subprocess.Popen(
            [program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, env=os.environ | environment
        )

    def read(self, picture):
        self.process.stdin.write(f"{picture}\n")
        self.process.stdin.flush()
        return json.loads(self.process.stdout.readline())

    def peak_megabytes(self):
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        return next(int(line.split()[1]) / 1024 for line in status.splitlines() if line.startswith("VmHWM"))

    def end(self):
        self.process.stdin.close()
        self.process.wait()
