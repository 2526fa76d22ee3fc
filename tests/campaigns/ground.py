"""What campaigns stand on: a folder with a home of its own, and the programs run in it."""

import dataclasses
import hashlib
import os
import shutil
import sqlite3
import subprocess
import tempfile
from pathlib import Path

SOURCE = Path(__file__).resolve().parent.parent.parent
BIN = Path(os.environ.get("BIN", SOURCE / "build" / "release" / "bin"))


def row_sum(*values):
    """The checksum that the vault's tables keep of a row."""
    number_of = {int: 1, float: 2, str: 3, bytes: 4, type(None): 5}
    text = b""
    for value in values:
        content = value if isinstance(value, bytes) else b"" if value is None else str(value).encode()
        text += f"{number_of[type(value)]}:{len(content)}:".encode() + content
    return int(hashlib.sha256(text).hexdigest()[:15], 16)


def changeable(database):
    """A connection that may change a vault's tables; for a `with`, which commits."""
    connection = sqlite3.connect(database)
    connection.create_function("row_sum", -1, row_sum)
    return connection


@dataclasses.dataclass
class Outcome:
    """`attacks` were made; `what` says what an attack was ("kills"), `failures` has a line for each that did damage."""

    what: str
    attacks: int = 0
    failures: list = dataclasses.field(default_factory=list)
    more: str = ""


class Ground:
    """A temporary folder, removed at the end of its `with` unless `keep` was called."""

    def __init__(self):
        self.folder = Path(tempfile.mkdtemp(prefix="zn-campaign-"))
        self.home = self.folder / "home"
        self.environment = dict(os.environ, ARKIN_HOME=str(self.home), TZ="UTC", LC_ALL="C.UTF-8",
                                TMPDIR=str(self.folder), QT_QPA_PLATFORM="offscreen")
        self._kept = False

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if not self._kept:
            shutil.rmtree(self.folder, ignore_errors=True)

    def keep(self):
        """The folder's path, for the line of a failure."""
        self._kept = True
        return self.folder

    def start(self, program, *arguments, **options):
        """A process of ours, in a process group of its own; what it prints can be read from `stdout`."""
        options = {"stdout": subprocess.PIPE, "stderr": subprocess.STDOUT, **options}
        return subprocess.Popen([str(BIN / program), *map(str, arguments)], cwd=self.folder, env=self.environment,
                                stdin=subprocess.DEVNULL, start_new_session=True, **options)

    def run(self, program, *arguments, timeout=300):
        """What a program printed, both streams, and its exit code: (code, text)."""
        done = subprocess.run([str(BIN / program), *map(str, arguments)], cwd=self.folder, env=self.environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              errors="replace", timeout=timeout, check=False)
        return done.returncode, done.stdout

    def must(self, program, *arguments, timeout=300):
        """What a program printed that has to succeed."""
        code, text = self.run(program, *arguments, timeout=timeout)
        if code != 0:
            raise RuntimeError(f"{program} {' '.join(map(str, arguments))} ended with {code}: {text}")
        return text
