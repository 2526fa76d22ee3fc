#!/usr/bin/env python3
"""A run over 200 small parts to STL, from the first macro to the last, against the bare kernel over the same files.

Build first: scripts/build bench. Usage: bench/run_parts.py [COUNT]
"""

import shutil
import subprocess
import sys
from pathlib import Path

from bench_vault import BIN, SOURCE, BenchVault


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 200
    vault = BenchVault()
    parts = vault.path / "Parts"
    parts.mkdir()
    sources = [SOURCE / "samples" / "Bracket.zenprt"]
    for name in ("step/screw.step", "iges/bearing.iges", "iges/hammer.iges"):
        sources.append((vault.path / name).with_suffix(".zenprt"))
        sources[-1].parent.mkdir(exist_ok=True)
        vault.run("zentrel", "import", Path("/usr/share/opencascade/data") / name, sources[-1])
    for number in range(count):
        shutil.copy(sources[number % len(sources)], parts / f"part{number:04}.zenprt")
    vault.run("arkin", "add", parts)
    vault.run("arkin", "task", "create", "STL", "--kind", "convert", "--set", "FileFormat=STL (*.stl)",
              "--set", r"OutputPath=<VaultPath>\Out\<Filename>", "--set", "OutputConfs=4", "--set", "FileConfs=4")
    files = sorted((vault.root / "Parts").iterdir())

    begin, adding, _ = vault.timed_run("STL", vault.root / "Parts")
    written = len(list((vault.root / "Out").glob("*.stl")))
    if written != count:
        sys.exit(f"{written} files came out of {count}")
    bare = vault.path / "bare"
    bare.mkdir()
    kernel = float(subprocess.run([BIN / "kernel_loop", "stl", bare, *files], text=True, stdout=subprocess.PIPE,
                                  check=True).stdout.split()[0])
    run = adding - begin
    print(f"{count} parts: run {run:.2f} s, bare kernel {kernel:.2f} s, ratio {run / kernel:.2f} (wanted: at most 1.3)")


main()
