"""Changed documents and STEP and IGES files are opened and saved by one CAD process after the other.

One to three numbers, references, bytes or blocks of a file are changed, in containers within their entries. The process
lives, takes no more memory than its limits, leaves no process behind, and says of each file what came of it: a whole
output, or an error number with a sentence. STEP and IGES outputs are read back too; a remark must have told of those
that a reader refuses, since they hold the faults of changed geometry.
"""

import shutil
import signal
import subprocess
import time
from pathlib import Path

from ground import SOURCE, Ground, Outcome
from mutations import mutated
from processes import Watch, inSession

FEW = 60
FULL = 20000

SECONDS = 5
MEGABYTES = 1024
# What a process takes besides what its limit counts, and the CAD process with an answer in its hands.
MOST_MEMORY = (MEGABYTES + 400) << 20
# Reading, exact and plain projection of several views, and the reading back; each may meet its limit.
MOST_SECONDS = 20 * SECONDS
BATCH = 30

# A sentence that goes on in a new line.
BREAK = "\u2424"

KERNELS = Path("/usr/share/opencascade/data")
SHARED = ("step/screw.step", "iges/hammer.iges", "iges/bearing.iges")
EXCHANGE = {".stp": "step", ".step": "step", ".igs": "iges", ".iges": "iges"}

# A line a file: begun, then its outputs with error numbers, then the messages that it led to.
MACRO = r"""
Dim app
Sub note(line)
  Open "{log}" For Append As #1
  Print #1, line
  Close #1
End Sub
Sub saved(doc, target)
  Dim e, w
  doc.Extension.SaveAs target, 0, 1, Nothing, e, w
  note "saved " & e & " " & target
  If e <> 0 Then Exit Sub
  If Right(target, 5) = ".step" Or Right(target, 4) = ".igs" Then
    Dim back, f
    Set back = app.LoadFile4(target, "", Nothing, f)
    note "read " & f & " " & target
    If f = 0 Then app.QuitDoc back.GetTitle
  End If
End Sub
Sub work(file, kind, outputs)
  Dim doc, e, w, m, i, t, one
  note "begin " & file
  app.GetErrorMessages m, i, t
  If kind = 0 Then
    Set doc = app.LoadFile4(file, "", Nothing, e)
  Else
    Set doc = app.OpenDoc6(file, kind, 1, "", e, w)
  End If
  note "opened " & e
  If e = 0 Then
    For Each one In outputs
      saved doc, file & one
    Next
    app.QuitDoc doc.GetTitle
  End If
  app.GetErrorMessages m, i, t
  For Each one In m
    note "told " & one
  Next
  note "end " & file
End Sub
Sub main()
  Set app = Application.Zentrel
{calls}
  note "done"
End Sub
"""


class Shop(Ground):
    """Sources by their kinds, and a folder for what becomes of them."""

    def __init__(self):
        super().__init__()
        self.sources = {}
        stock = self.folder / "stock"
        shutil.copytree(SOURCE / "samples", stock)
        for name in SHARED:
            if (KERNELS / name).is_file():
                shutil.copy(KERNELS / name, stock)
        self.must("zentrel", "import", stock / "screw.step", stock / "screw.zenprt")
        for file in sorted(stock.iterdir()):
            if file.suffix in EXCHANGE or file.suffix.startswith(".zen"):
                self.sources.setdefault(EXCHANGE.get(file.suffix, file.suffix), []).append(file)
        self.work = self.folder / "work"
        key = r"machine\SOFTWARE\Zentrel\Zentrel 2018\Limits"
        self.must("arkin", "registry", "set", key, "KernelSeconds", SECONDS, "--number")
        self.must("arkin", "registry", "set", key, "KernelMegabytes", MEGABYTES, "--number")

    def fill(self, first, count, chance):
        """Files of the numbers from `first` on."""
        shutil.rmtree(self.work, ignore_errors=True)
        self.work.mkdir()
        # What assemblies and drawings refer to.
        for file in (self.folder / "stock").glob("*.zen*"):
            shutil.copy(file, self.work)
        files = []
        for number in range(first, first + count):
            kind = chance.choice(sorted(self.sources))
            source = chance.choice(self.sources[kind])
            other = chance.choice(self.sources[kind]).read_bytes()
            file = self.work / f"m{number:06}{source.suffix}"
            file.write_bytes(mutated(source.name, source.read_bytes(), chance, other))
            files.append(file)
        return files


KINDS = {".zenprt": (1, (".stl", ".step", ".igs")), ".zenasm": (2, (".stl", ".step")), ".zendrw": (3, (".pdf", ".dxf"))}


def macroOf(files, log):
    calls = []
    for file in files:
        kind, outputs = KINDS.get(file.suffix, (0, (".stl",)))
        listed = ", ".join(f'"{output}"' for output in outputs)
        calls.append(f'  work "Z:{str(file).replace("/", chr(92))}", {kind}, Array({listed})')
    return MACRO.format(log="Z:" + str(log).replace("/", "\\"), calls="\n".join(calls))


def unsoundOutput(path):
    """What is wrong with an output, or nothing."""
    data = path.read_bytes() if path.is_file() else b""
    if path.suffix == ".stl":
        count = int.from_bytes(data[80:84], "little")
        return "" if count > 0 and len(data) == 84 + 50 * count else "no whole STL"
    if path.suffix == ".pdf":
        return "" if data.startswith(b"%PDF") and b"%%EOF" in data[-32:] else "no whole PDF"
    if path.suffix == ".dxf":
        return "" if data.endswith(b"EOF\r\n") and b"nan" not in data else "no whole DXF"
    return "" if len(data) > 100 else "no output"


def outputsOf(path):
    """The files of one save: an assembly gives an STL for each component."""
    return sorted(path.parent.glob(f"{path.stem} - *{path.suffix}")) or [path]


def problemsOf(lines, output):
    """A line for each promise that the record of one file and what the process printed break."""
    problems = []
    failures = sum(int(line.split()[1]) != 0 for line in lines if line.split()[0] in ("opened", "saved", "read"))
    told = [line for line in lines if line.startswith("told ")]
    if failures > len(told):
        problems.append("an error number without a sentence")
    problems += [f"no sentence: {line}" for line in told if not line.endswith(".") or BREAK in line]
    for line in lines:
        word, number, *rest = line.split(" ", 2)
        path = Path(rest[0][2:].replace("\\", "/")) if rest else None
        if word == "saved" and number == "0":
            problems += [f"{one.name}: {fault}" for one in outputsOf(path) if (fault := unsoundOutput(one))]
        if word == "saved" and number != "0" and path.exists():
            problems.append(f"{path.name} is there after a failure")
        if word == "read" and number != "0" and f"{path}' reads back with" not in output:
            problems.append(f"{path.name} is refused by a reader, and nothing was told: {told}")
    return problems


def recordsOf(log):
    """File to the lines of its record, and the file that was begun and not ended."""
    records, current = {}, None
    for line in log.read_text(errors="replace").splitlines() if log.exists() else []:
        word, _, rest = line.partition(" ")
        if word == "begin":
            current = records.setdefault(rest, [])
        elif word == "end":
            current = None
        elif current is not None and word in ("opened", "saved", "read", "told"):
            current.append(line)
        elif current:
            current[-1] += BREAK + line
    return records, next((file for file, lines in records.items() if lines is current), None)


class Batch:
    """Files that one process works on."""

    def __init__(self, shop, files):
        self.shop, self.files = shop, files
        self.log = shop.folder / "record.txt"
        self.memory = 0

    def run(self):
        """A line for each fault."""
        self.log.unlink(missing_ok=True)
        macro = self.shop.folder / "macro.bas"
        macro.write_text(macroOf(self.files, self.log))
        process = self.shop.start("zentrel", "run-macro", macro, text=True, errors="replace")
        problems = []
        with Watch(process) as watch:
            try:
                output = process.communicate(timeout=MOST_SECONDS * len(self.files))[0]
            except subprocess.TimeoutExpired:
                process.send_signal(signal.SIGKILL)
                output = process.communicate()[0]
                problems.append("came to no end")
        time.sleep(0.05)
        if left := inSession(process.pid):
            problems.append(f"left the processes {sorted(left)}")
        self.memory = watch.largest
        if watch.largest > MOST_MEMORY:
            problems.append(f"took {watch.largest >> 20} MB")
        records, unfinished = recordsOf(self.log)
        if process.returncode != 0:
            problems.append(f"the CAD process ended with {process.returncode} at {unfinished}: {output[-300:]}")
        for file, lines in records.items():
            if file != unfinished:
                problems += [f"{file}: {problem}" for problem in problemsOf(lines, output)]
        self.saved = sum(line.startswith("saved 0 ") for lines in records.values() for line in lines)
        self.refused = sum(line.startswith("read ") and not line.startswith("read 0 ")
                           for lines in records.values() for line in lines)
        self.limits = sum("came to no end" in line or "out of memory" in line for lines in records.values()
                          for line in lines)
        return problems


def run(count, chance):
    outcome = Outcome("files")
    saved = limits = refused = memory = 0
    with Shop() as shop:
        while outcome.attacks < count:
            files = shop.fill(outcome.attacks, min(BATCH, count - outcome.attacks), chance)
            batch = Batch(shop, files)
            problems = batch.run()
            outcome.attacks += len(files)
            saved, limits, memory = saved + batch.saved, limits + batch.limits, max(memory, batch.memory)
            refused += batch.refused
            if problems:
                kept = shop.keep() / f"failed-{outcome.attacks}"
                shutil.copytree(shop.work, kept)
                shutil.copy(batch.log, kept)
                outcome.failures += [f"{problem} ({kept})" for problem in problems]
        outcome.more = f"{saved} outputs, {refused} of them told to be faulty, {limits} limits met, {memory >> 20} MB at most"
    return outcome
