#!/usr/bin/env python3
"""Close-out of 5,000 small outputs against copying and hashing the same files.

Build first: scripts/build bench. Usage: bench/close_out.py [COUNT]
"""

import hashlib
import shutil
import sys
import time

from bench_vault import SOURCE, BenchVault

MACRO = """Sub main()
    Dim znApp As Object, znModel As Object, errors As Long, warnings As Long, i As Long
    Set znApp = Application.Zentrel
    Dim docSpec As Object
    Set docSpec = znApp.GetOpenDocSpec("<Filepath>")
    docSpec.DocumentType = znDocPART
    docSpec.ReadOnly = True
    Set znModel = znApp.OpenDoc7(docSpec)
    For i = 1 To COUNT
        znModel.Extension.SaveAs "<VaultPath>\\Out\\out" & i & ".stl", znSaveAsCurrentVersion, _
            znSaveAsOptions_Silent, Nothing, errors, warnings
    Next
End Sub
"""


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 5000
    vault = BenchVault()
    vault.run("arkin", "add", SOURCE / "samples" / "Bracket.zenprt")
    (vault.path / "many.bas").write_text(MACRO.replace("COUNT", str(count)).replace("\n", "\r\n"), newline="")
    (vault.root / "Out").mkdir()
    (vault.path / "many.json").write_text('{"script": "many.bas", "variables": {"FileFormat": "STL (*.stl)"}}')
    vault.run("arkin", "task", "create", "Many", "--kind", "convert", "--from", vault.path / "many.json")

    _, adding, end = vault.timed_run("Many", vault.root / "Bracket.zenprt")
    files = sorted((vault.root / "Out").glob("*.stl"))
    copies = vault.path / "copies"
    copies.mkdir()
    begin = time.monotonic()
    for file in files:
        copy = copies / file.name
        shutil.copyfile(file, copy)
        hashlib.sha256(copy.read_bytes()).digest()
    plain = time.monotonic() - begin
    closing = end - adding
    print(f"{len(files)} outputs: close-out {closing:.2f} s, copying and hashing {plain:.2f} s, "
          f"ratio {closing / plain:.2f} (wanted: at most 3)")


main()
