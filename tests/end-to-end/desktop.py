"""A private session for the end-to-end tests: a home of its own, a bus, a keyring. What it starts it ends, by pid."""
import json
import os
import pathlib
import select
import shutil
import subprocess
import tempfile
import time

LUCENTRA = pathlib.Path(os.environ.get("LUCENTRA", "build/dev/bin/lucentra")).resolve()

# A bus that starts no service by itself but the program, where a test asks for that: what else is on it, the test has
# put there.
BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={home}/bus</listen>
  {services}
  <policy context="default">
    <allow user="*"/>
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


def eventually(claim, seconds: float = 10, step: float = 0.05):
    """The claim's first true value, or its last one when the time is over."""
    deadline = time.monotonic() + seconds
    while not (value := claim()) and time.monotonic() < deadline:
        time.sleep(step)
    return value


class Session:
    """Use as a context manager; `environment` is that of every program started in the session. `activatable`: the bus
    starts the program, and no other service of this computer."""

    def __init__(self, keyring: bool = True, language: str = "en", activatable: bool = False):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="lucentra-test-"))
        self.keyring = keyring
        services = LUCENTRA.parent.parent / "share" / "dbus-1" / "services"
        self.services = f"<servicedir>{services}</servicedir>" if activatable else ""
        self.processes: list[subprocess.Popen] = []
        runtime = self.home / "run"
        runtime.mkdir(mode=0o700)
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(self.home),
            "XDG_CONFIG_HOME": str(self.home / "config"),
            "XDG_DATA_HOME": str(self.home / "data"),
            "XDG_CACHE_HOME": str(self.home / "cache"),
            "XDG_RUNTIME_DIR": str(runtime),
            "LANG": "C.UTF-8",
            "LANGUAGE": language,
            "QT_QPA_PLATFORM": "offscreen",
        }
        for name in ("ASAN_OPTIONS", "LSAN_OPTIONS", "TSAN_OPTIONS", "UBSAN_OPTIONS", "TESSDATA_PREFIX"):
            if name in os.environ:
                self.environment[name] = os.environ[name]

    @property
    def preferences_path(self) -> pathlib.Path:
        return self.home / "config" / "lucentra" / "preferences.json"

    @property
    def preferences(self) -> dict:
        return json.loads(self.preferences_path.read_text(encoding="utf-8")) if self.preferences_path.exists() else {}

    @preferences.setter
    def preferences(self, values: dict) -> None:
        self.preferences_path.parent.mkdir(parents=True, exist_ok=True)
        # What the tests look at isn't covered by what is explained to a new user, unless they want it. And the program
        # has nothing to write when it starts: that would undo what a test writes at that moment.
        values = {"firstTipsDone": 15, "isAlwaysOnTop": True} | values
        self.preferences_path.write_text(json.dumps(values), encoding="utf-8")
        self.preferences_path.chmod(0o600)

    def __enter__(self):
        configuration = self.home / "bus.conf"
        configuration.write_text(BUS_CONFIGURATION.format(home=self.home, services=self.services))
        self.start_bus()
        if self.keyring:
            self.start_keyring()
        return self

    def start_bus(self) -> subprocess.Popen:
        """At the same address each time."""
        bus = self.start(["dbus-daemon", f"--config-file={self.home / 'bus.conf'}", "--nofork", "--print-address=1"],
                         stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        if not select.select([bus.stdout], [], [], 10)[0]:
            raise RuntimeError("the session bus didn't start")
        address = bus.stdout.readline().decode().strip()
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address.split(",guid=")[0]
        return bus

    def start_keyring(self) -> subprocess.Popen:
        daemon = self.start(["gnome-keyring-daemon", "--foreground", "--unlock", "--components=secrets"],
                            stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        daemon.stdin.write(b"test")
        daemon.stdin.close()
        self.wait_for_name("org.freedesktop.secrets")
        return daemon

    def __exit__(self, *_):
        for process in reversed(self.processes):
            if process.poll() is None:
                process.terminate()
                try:
                    process.wait(5)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()
            for pipe in (process.stdin, process.stdout, process.stderr):
                if pipe:
                    pipe.close()
        shutil.rmtree(self.home, ignore_errors=True)

    def start(self, command: list[str], **options) -> subprocess.Popen:
        process = subprocess.Popen(command, env=self.environment, **options)
        self.processes.append(process)
        return process

    def start_and_wait(self, command: list[str]) -> subprocess.Popen:
        """Starts a program that says "shown" once its window is."""
        program = self.start(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        if not select.select([program.stdout], [], [], 20)[0] or program.stdout.readline() != b"shown\n":
            raise RuntimeError(f"the window of {command[0]} didn't appear")
        return program

    def start_program(self, *arguments: str) -> subprocess.Popen:
        """Lucentra; `log` is what it says."""
        with (self.home / "lucentra.log").open("w") as log:
            return self.start([str(LUCENTRA), *arguments], stdout=log, stderr=subprocess.STDOUT)

    def log(self) -> str:
        return (self.home / "lucentra.log").read_text(encoding="utf-8", errors="replace")

    @staticmethod
    def stop(process: subprocess.Popen) -> int:
        """Asks a program to end, and returns its exit code."""
        process.terminate()
        return process.wait(20)

    def must(self, claim, what: str, seconds: float = 20):
        value = eventually(claim, seconds)
        if not value:
            raise RuntimeError(f"waited in vain: {what}")
        return value

    def output(self, *command: str) -> str:
        return subprocess.run(command, env=self.environment, capture_output=True, text=True, check=False).stdout.strip()

    def wait_for_name(self, name: str) -> None:
        """Waits until the bus has an owner for a name."""
        self.must(lambda: "true" in self.output(
            "dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
            "org.freedesktop.DBus.NameHasOwner", f"string:{name}"), name)

    def secret(self, account: str) -> str | None:
        """What the keyring holds for an account."""
        answer = subprocess.run(["secret-tool", "lookup", "service", "com.tarnby.lucentra.apiKeys", "account", account],
                                env=self.environment, capture_output=True, text=True, check=False)
        return answer.stdout if answer.returncode == 0 else None

    def lucentra(self, *arguments: str, timeout: float = 120) -> subprocess.CompletedProcess:
        """Runs a command of the program and returns its outputs as text."""
        return subprocess.run([str(LUCENTRA), *arguments], env=self.environment, capture_output=True, encoding="utf-8",
                              timeout=timeout, check=False)
