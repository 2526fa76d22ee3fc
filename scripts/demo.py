#!/usr/bin/env python3
"""Converts and prints real CAD files from selection to vault in a vault of its own, and shows and checks what came out.

Ends with 0 if everything is as it should be, else with 1 and a line for each difference.
"""

import json
import os
import shutil
import subprocess
import sys
from pathlib import Path

from demo_print import PRINTER_KEY, PRINTS, examine_prints, task_file

SOURCE = Path(__file__).resolve().parent.parent
BIN = SOURCE / "build" / "release" / "bin"
DEMO = SOURCE / "build" / "demo"
ROOT = DEMO / "Demo"
PLOTS = DEMO / "Plots"
FOREIGN = Path("/usr/share/opencascade/data")
ENVIRONMENT = dict(os.environ, ARKIN_HOME=str(DEMO / "home"))

FOREIGN_FILES = ["step/screw.step", "step/linkrods.step", "iges/bearing.iges", "iges/hammer.iges"]
OWN_FILES = ["Bracket.zenprt", "Stand.zenasm", "Чертёж.zendrw"]
DESCRIPTIONS = {
    "screw.step": "Screw", "linkrods.step": "Link rods", "bearing.iges": "Bearing", "hammer.iges": "Hammer",
    "Bracket.zenprt": "Angle bracket", "Stand.zenasm": "Stand", "Чертёж.zendrw": "Drawing of the stand",
}
BRACKETS = ["Small", "Medium", "Large"]


def meshes(folder):
    """What the STL task must give in one of its two output folders: name, source, configuration."""
    parts = [(name, "Default") for name in ("screw.step", "linkrods.step", "bearing.iges", "hammer.iges")]
    parts += [("Bracket.zenprt", name) for name in BRACKETS]
    return [(f"Output/{folder}/{Path(s).stem}_{c}.stl", s, c) for s, c in parts]


def sheets(folder, extension):
    return [(f"Output/{folder}/Чертёж_{sheet}.{extension}", "Чертёж.zendrw", sheet) for sheet in ("Stand", "Bracket")]


# Each task: name, settings, selected files, and what must come out.
TASKS = [
    ("Models to STL", "models-to-stl.json",
     ["screw.step", "linkrods.step", "bearing.iges", "hammer.iges", "Bracket.zenprt"],
     meshes("STL") + meshes("Workshop")),
    ("Models to STEP", "models-to-step.json", ["Bracket.zenprt", "Stand.zenasm"],
     [(f"Output/STEP/Bracket_{c}.step", "Bracket.zenprt", c) for c in BRACKETS]
     + [("Output/STEP/Stand_Default.step", "Stand.zenasm", "Default"),
        ("Output/STEP/Pin^Stand_Default.step", "Stand.zenasm", "Default")]),
    ("Drawings to PDF", "drawings-to-pdf.json", ["Чертёж.zendrw"], sheets("PDF", "pdf")),
    ("Drawings to DXF", "drawings-to-dxf.json", ["Чертёж.zendrw"], sheets("DXF", "dxf")),
]


def run(program, *arguments, show=False):
    """Runs one of our programs. With `show` it speaks to the terminal itself, else its output is returned."""
    result = subprocess.run([str(BIN / program), *map(str, arguments)], env=ENVIRONMENT, text=True,
                            stdout=None if show else subprocess.PIPE, check=False)
    if result.returncode != 0:
        sys.exit(f"run-demo: '{program} {' '.join(map(str, arguments))}' ended with {result.returncode}")
    return result.stdout


def ask(*arguments):
    return json.loads(run("arkin", *arguments, "--json"))


def set_up():
    shutil.rmtree(DEMO, ignore_errors=True)
    DEMO.mkdir(parents=True)
    run("zentrel", "register")
    run("arkin", "addin", "register", BIN / "libZNTaskAddIn.so")
    run("arkin", "vault", "create", "Demo", "--root", ROOT)
    run("arkin", "variable", "add", "Description", "Source", "Configuration", "Source version", "Converted at", "Note")
    files = [FOREIGN / name for name in FOREIGN_FILES] + [SOURCE / "samples" / name for name in OWN_FILES]
    run("arkin", "add", *files, "--to", "Models")
    for name, description in DESCRIPTIONS.items():
        run("arkin", "card", ROOT / "Models" / name, "--set", f"Description={description}")
    for name, settings, _, _ in TASKS:
        run("arkin", "task", "create", name, "--kind", "convert", "--from", SOURCE / "samples" / "tasks" / settings)
    PLOTS.mkdir()
    run("arkin", "registry", "set", PRINTER_KEY, "Folder", PLOTS)
    for name, settings, copies, _, _ in PRINTS:
        run("arkin", "task", "create", name, "--kind", "print", "--from", task_file(settings, copies, DEMO))


def looks_right(path):
    """Whether the file is what its extension says; a look at its first bytes and its length."""
    data = path.read_bytes()
    if path.suffix == ".stl":
        facets = int.from_bytes(data[80:84], "little")
        return facets > 0 and len(data) == 84 + 50 * facets
    beginnings = {".step": b"ISO-10303-21;", ".pdf": b"%PDF-", ".dxf": b"  0\r\nSECTION"}
    begins = data[:64].replace(b"\r\n", b"\n").lstrip()
    return begins.startswith(beginnings[path.suffix].replace(b"\r\n", b"\n").lstrip())


def shown_size(size):
    return f"{size / 1024:,.0f} KiB" if size >= 10240 else f"{size:,} B"


def examine(output, source, configuration, problems):
    """One row of the table; what is wrong with the output goes into `problems`."""
    path = ROOT / output
    if not path.is_file():
        problems.append(f"{output} is missing")
        return None
    if not looks_right(path):
        problems.append(f"{output} is not what its extension says")
    history = ask("history", path)
    version = history[-1]
    if len(history) != 1 or version["comment"] != "ZENTREL Task Add-in" or version["size"] != path.stat().st_size:
        problems.append(f"{output} has not exactly one version with the file's content")
    card = {value["variable"]: value["value"] for value in ask("card", path)}
    wanted = {"Description": DESCRIPTIONS[source], "Configuration": configuration, "Source version": 2}
    for name, value in wanted.items():
        if card.get(name) != value:
            problems.append(f"{output}: the card's {name} is {card.get(name)!r} instead of {value!r}")
    references = [(Path(row["path"]).name, row["version"]) for row in ask("references", path)["refersTo"]]
    if references != [(source, 2)]:
        problems.append(f"{output} refers to {references} instead of version 2 of {source}")
    values = ", ".join(f"{name}={card[name]}" for name in ("Description", "Source version") if name in card)
    refers = ", ".join(f"{name} v{number}" for name, number in references)
    return [f"{source} v2", configuration, f"{output} v{version['version']}", shown_size(version["size"]), values, refers]


def print_table(head, rows):
    widths = [max(len(row[i]) for row in [head] + rows) for i in range(len(head))]
    for row in [head] + rows:
        print("  " + "  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip())


def show_state(task, identifier, problems):
    """The run's state and its log, which must not be there."""
    status = ask("task", "status", identifier)
    print(f"\n{task}: {status['state']}" + (f" - {status['text']}" if status["text"] else ""))
    if status["stateNumber"] != 7:
        problems.append(f"'{task}' ended as '{status['state']}': {status['text']}")
    log = status.get("log")
    if log and Path(log).is_file():
        text = Path(log).read_bytes().decode("cp1252", "replace").strip()
        print("  log: " + text.replace("\n", "\n       "))
        problems.append(f"'{task}' wrote a log")


def launch(*arguments):
    return str(ask("task", "launch", "--no-dialog", *arguments)["run"])


def show_conversions(runs, problems):
    for name, identifier, expected in runs:
        show_state(name, identifier, problems)
        rows = [examine(*row, problems) for row in expected]
        print_table(["SOURCE", "CONFIGURATION", "OUTPUT", "SIZE", "CARD", "REFERS TO"], [row for row in rows if row])


def show_prints(runs, problems):
    for name, identifier in runs:
        show_state(name, identifier, problems)
    print(f"\nPrinted into {PLOTS}:")
    print_table(["JOB", "PAGES", "PAPER", "PICTURES"], examine_prints(PLOTS, problems))


def main():
    set_up()
    print(f"Vault 'Demo' at {ROOT}\n")
    conversions = []
    for name, _, selected, expected in TASKS:
        conversions.append((name, launch(name, *[ROOT / "Models" / file for file in selected]), expected))
    prints = []
    for name, _, _, sheets_to_print, _ in PRINTS:
        for sheet in sheets_to_print:
            prints.append((name, launch(name, ROOT / "Models" / "Чертёж.zendrw", "--configuration", sheet)))
    run("arkin", "worker", "--once", show=True)

    problems = []
    show_conversions(conversions, problems)
    show_prints(prints, problems)
    found = {str(p.relative_to(ROOT)) for p in (ROOT / "Output").rglob("*") if p.is_file()}
    expected = {row[0] for _, _, _, rows in TASKS for row in rows}
    problems += [f"{name} was not expected" for name in sorted(found - expected)]
    print("\n" + run("arkin", "vault", "check").strip())
    if problems:
        print("\nNot as it should be:\n  " + "\n  ".join(problems))
        return 1
    print(f"\nAll {len(expected)} outputs and the prints are as they should be. Look around in {DEMO}.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
