"""A first day with the installed programs, as their documents tell it: the commands of README.md as they stand, and the
three tasks of a new vault on the example documents. Without a display, in a fresh home."""

import json
import re
import shlex
import shutil
import subprocess
from dataclasses import dataclass, field
from pathlib import Path

SOURCE = Path(__file__).resolve().parent.parent.parent
FOREIGN = Path("/usr/share/opencascade/data/step/screw.step")

# The tasks of a new vault: name, the example document, what must come out below the vault's folder, and its beginning.
TASKS = [
    ("To STL", "Bracket.zenprt", ["Output/STL/Bracket_Small.stl", "Output/STL/Bracket_Medium.stl",
                                  "Output/STL/Bracket_Large.stl"], None),
    ("Drawings to PDF", "Чертёж.zendrw", ["Output/PDF/Чертёж_Stand.pdf", "Output/PDF/Чертёж_Bracket.pdf"], b"%PDF-"),
    ("Print", "Чертёж.zendrw", ["Prints/Чертёж - Stand.pdf", "Prints/Чертёж - Bracket.pdf"], b"%PDF-"),
]


class Failed(Exception):
    """A sentence that says what isn't as it should be."""


@dataclass
class Place:
    """Where the programs are installed: `root` is the folder that stands for "/", `enter` begins a command line that is
    carried out there, and `home`, an absolute path there, is the user's, empty at first."""

    root: Path
    home: str
    search: str
    enter: list = field(default_factory=list)

    def outside(self, path):
        """The path as this test sees it; a relative one is below the home."""
        return self.root / Path(self.home, path).relative_to("/")

    def run(self, command, code=0):
        """What the command prints, both streams; it must end with the code."""
        done = subprocess.run(
            [*self.enter, "env", "-i", f"HOME={self.home}", f"PATH={self.search}", "LANG=C.UTF-8", "TZ=UTC",
             "sh", "-c", f"cd && {command}"],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        if done.returncode != code:
            raise Failed(f"'{command}' ended with {done.returncode} instead of {code}:\n{done.stdout}")
        return done.stdout


def project_version():
    return re.search(r"^project\(\S+ VERSION (\S+)", (SOURCE / "CMakeLists.txt").read_text(), re.MULTILINE)[1]


def readme_commands(caption):
    """The lines of the fenced block that follows the heading or sentence `caption` of README.md."""
    readme = (SOURCE / "README.md").read_text()
    after = readme.split(caption, 1)
    block = re.search(r"^```sh\n(.*?)^```$", after[1], re.MULTILINE | re.DOTALL) if len(after) == 2 else None
    commands = [line for line in block[1].splitlines() if line.strip()] if block else []
    if not commands:
        raise Failed(f"README.md has no commands behind '{caption}'.")
    return commands


def check_versions(place):
    version = project_version()
    for program in ("arkin", "zentrel"):
        if (told := place.run(f"{program} --version").strip()) != f"{program} {version}":
            raise Failed(f"'{program} --version' says '{told}', not {version}.")
    newest = re.search(r"^## (\S+)", (SOURCE / "CHANGELOG.md").read_text(), re.MULTILINE)[1]
    if newest != version:
        raise Failed(f"The newest entry of CHANGELOG.md is {newest}, the version is {version}.")


def check_readme(place):
    """The daily commands work as they stand; those of the windows say why they can't, and aren't wrong use."""
    shutil.copyfile(FOREIGN, place.outside("bracket.step"))
    for command in readme_commands("## Daily commands"):
        print(f"$ {command}\n{place.run(command)}", end="", flush=True)
    check_outputs(place, ["Output/STL/bracket_Default.stl"], None)
    for command in readme_commands("With a display"):
        said = place.run(command, code=1)
        if not re.fullmatch(r"arkin: .*\.\n", said):
            raise Failed(f"'{command}' doesn't say in one sentence why there is no window: {said}")


def check_outputs(place, names, beginning):
    for name in names:
        file = place.outside("Plant") / name
        if not file.is_file():
            raise Failed(f"{name} wasn't made.")
        data = file.read_bytes()
        facets = int.from_bytes(data[80:84], "little")
        sound = data.startswith(beginning) if beginning else facets > 0 and len(data) == 84 + 50 * facets
        if not sound:
            raise Failed(f"{name} isn't what its name says.")


def check_tasks(place, examples):
    """`examples`: the folder of the example documents, as the user sees it."""
    place.run(f"arkin add {examples}/*.zen* --to Models")
    for task, document, *_ in TASKS:
        place.run(f"arkin task launch {shlex.quote(task)} Models/{document}")
    place.run("arkin worker --once")
    for task, _, outputs, beginning in TASKS:
        check_outputs(place, outputs, beginning)
    for run in json.loads(place.run("arkin task status --json")):
        log = place.outside(run["log"]) if run.get("log") else None
        if run["state"] != "finished" or log and log.exists():
            raise Failed(f"A run isn't clean: {run}\n{log.read_bytes() if log and log.exists() else ''}")
    place.run("arkin vault check")


def first_day(place, examples="/usr/share/doc/zentrel/examples"):
    check_versions(place)
    check_readme(place)
    check_tasks(place, examples)
