#!/usr/bin/env python3
"""Two sheets with four views each to PDF and then to DXF, against one projection of the distinct views.

Build first: scripts/build bench programs make_step.
Usage: bench/drawing_views.py [MODEL]   a STEP file or part; without one a generated part of 1 to 5 MB

The reference is the same four views on one sheet, to PDF alone. Processor seconds of all processes, one process each,
alternating; half of the reference's overhead (start, reading the model) is in both.
"""

import os
import subprocess
import sys
from pathlib import Path

from bench_vault import BIN, BenchVault

ROUNDS = 3

MACRO = """Sub main()
    Dim document As Object, errors As Long, warnings As Long
    Set document = Application.OpenDoc6("{drawing}", 3, 1, "", errors, warnings)
{saves}End Sub
"""
SAVE = '    If Not document.Extension.SaveAs("{file}", 0, 1, Nothing, errors, warnings) Then Err.Raise 5\n'


def backslashes(path):
    return "Z:" + str(path).replace("/", "\\")


def processor_of(vault, drawing, outputs):
    """Processor seconds of one process that saves the drawing into the outputs."""
    macro = vault.path / "save.znb"
    saves = "".join(SAVE.format(file=backslashes(file)) for file in outputs)
    macro.write_text(MACRO.format(drawing=backslashes(drawing), saves=saves))
    before = os.times()
    subprocess.run([BIN / "zentrel", "run-macro", macro], env=vault.environment, check=True)
    after = os.times()
    if any(not file.stat().st_size for file in outputs):
        sys.exit("An output is empty.")
    return after.children_user + after.children_system - before.children_user - before.children_system


def model_of(vault):
    if len(sys.argv) > 1:
        return Path(sys.argv[1]).resolve()
    subprocess.run([BIN / "make_step", vault.path / "made", "0", "1", "0", "0"], check=True, stdout=subprocess.DEVNULL)
    return next((vault.path / "made" / "large").iterdir())


def main():
    vault = BenchVault()
    model = model_of(vault)
    part = model
    if model.suffix.lower() != ".zenprt":
        part = vault.path / "model.zenprt"
        vault.run("zentrel", "import", model, part)
    one, two = vault.path / "one.zendrw", vault.path / "two.zendrw"
    vault.run("zentrel", "draw", one, "--sheet", f"First:A3:landscape={part}")
    vault.run("zentrel", "draw", two, "--sheet", f"First:A3:landscape={part}", "--sheet", f"Second:A4={part}")
    distinct = both = 0.0
    for _ in range(ROUNDS):
        distinct += processor_of(vault, one, [vault.path / "one.pdf"])
        both += processor_of(vault, two, [vault.path / "two.pdf", vault.path / "two.dxf"])
    print(f"distinct views {distinct / ROUNDS:.2f} s, two sheets to PDF and DXF {both / ROUNDS:.2f} s, "
          f"ratio {both / distinct:.2f} (wanted: at most 1.2)")


main()
