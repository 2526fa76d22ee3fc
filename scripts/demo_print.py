"""The part of the demo that prints: drawings to a printer that is a folder, checked and turned into pictures."""

import json
import re
import subprocess
from pathlib import Path

SOURCE = Path(__file__).resolve().parent.parent

PRINTER_KEY = r"machine\SOFTWARE\Zentrel\Printers\Plots"

# Each task: name, settings, copies, the sheets that are launched (empty: the drawing, and so all of its sheets), and the
# jobs that must come out: file, pages, paper in mm, texts on the first page.
PRINTS = [
    ("Print drawings", "print-drawings.json", 1, ["Stand", "Bracket"],
     [("Чертёж - Stand.pdf", 1, (420, 297), ["Stand", "A3"]), ("Чертёж - Bracket.pdf", 1, (210, 297), ["Bracket", "A4"])]),
    ("Print on A4", "print-on-a4.json", 2, [""],
     [("Чертёж - Stand (2).pdf", 2, (297, 210), ["Workshop", "Copy for the floor", "Return after use"]),
      ("Чертёж - Bracket (2).pdf", 2, (297, 210), ["Workshop", "Copy for the floor", "Return after use"])]),
]


def output_of(*command):
    return subprocess.run(command, text=True, capture_output=True, check=True).stdout


def task_file(settings, copies, folder):
    """The file from which a task is made. Nobody is asked for the number of copies here, and then it is one; a task
    that always prints more has it in its macro."""
    sample = SOURCE / "samples" / "tasks" / settings
    if copies == 1:
        return sample
    macro = (SOURCE / "resources" / "macros" / "PrintFiles.bas").read_bytes()
    (folder / "Copies.bas").write_bytes(macro.replace(b'"[__printer_copycount]"', b'"%d"' % copies))
    made = folder / settings
    made.write_text(json.dumps(dict(json.loads(sample.read_text()), script="Copies.bas")))
    return made


def make_pictures(pdf):
    """The pages beside the job, as <job>-1.png and so on; those that are there before stay."""
    subprocess.run(["pdftoppm", "-r", "60", "-png", str(pdf), str(pdf.with_suffix(""))], check=True)
    return sorted(path.name for path in pdf.parent.glob(f"{pdf.stem}-*.png"))


def examine_job(folder, job, problems):
    """One row of the table; what is wrong with the job goes into `problems`."""
    name, pages, paper, texts = job
    pdf = folder / name
    if not pdf.is_file():
        problems.append(f"{name} was not printed")
        return None
    info = output_of("pdfinfo", str(pdf))
    found = int(re.search(r"Pages: +(\d+)", info)[1])
    width, height = (round(float(size) / 72 * 25.4) for size in re.search(r"Page size: +([\d.]+) x ([\d.]+)", info).groups())
    if found != pages or (width, height) != paper:
        problems.append(f"{name} has {found} pages of {width} x {height} mm")
    first = output_of("pdftotext", "-l", "1", str(pdf), "-")
    problems += [f"{name} doesn't show '{text}'" for text in texts if text not in first]
    return [name, f"{found}", f"{width} x {height} mm", ", ".join(make_pictures(pdf))]


def examine_prints(folder, problems):
    """The rows of the table of all jobs."""
    jobs = [job for *_, expected in PRINTS for job in expected]
    rows = [examine_job(folder, job, problems) for job in jobs]
    extra = {path.name for path in folder.glob("*.pdf")} - {job[0] for job in jobs}
    problems += [f"{name} was not expected" for name in sorted(extra)]
    return [row for row in rows if row]
