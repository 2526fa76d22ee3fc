"""One worker converts file after file; its memory, its descriptors and what lies in folders stay as they are.

The worker is looked at after each run of thirty conversions. Of the first runs, in which caches fill, the last one is
the measure for the last of all: memory may have grown by a twentieth, descriptors and temporary files by nothing.
"""

import os
import signal
import time
from pathlib import Path

from ground import SOURCE, Outcome
from plant import Plant

FEW = 120
FULL = 10000
PARTS = 10
CONVERSIONS = 3 * PARTS  # a run
WARM = 3  # runs
GROWTH = 1.05


def memory(pid):
    """What the process itself has written to, in kB. Pages of libraries count as its own or not by who else runs."""
    lines = Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines()
    return sum(int(line.split()[1]) for line in lines if line.startswith("Private_Dirty"))


def look(plant, worker):
    """Memory, descriptors, and files outside of vault and home."""
    files = sum(1 for path in plant.folder.rglob("*") if not path.is_relative_to(plant.home)
                and not path.is_relative_to(plant.folder / "V"))
    return memory(worker.pid), len(os.listdir(f"/proc/{worker.pid}/fd")), files


def await_end(plant, worker):
    """Waits until the runs have ended; a time limit is the caller's."""
    while not plant.ended():
        if worker.poll() is not None:
            raise RuntimeError(f"The worker ended with {worker.returncode}.")
        time.sleep(0.1)


def run(count, chance):
    outcome = Outcome("conversions")
    with Plant() as plant:
        for number in range(PARTS):
            part = plant.folder / f"Part {chance.randrange(1000)} {number}.zenprt"
            part.write_bytes((SOURCE / "samples/Bracket.zenprt").read_bytes())
            plant.must("arkin", "add", part, "--to", plant.folder / "V/Parts")
            part.unlink()
        worker = plant.start("arkin", "worker", stdout=open(os.devnull, "wb"))
        looks = []
        while outcome.attacks < count:
            plant.launch("V/Parts")
            await_end(plant, worker)
            looks.append(look(plant, worker))
            outcome.attacks += CONVERSIONS
        os.killpg(worker.pid, signal.SIGTERM)
        worker.wait()
        first, last = looks[min(WARM, len(looks)) - 1], looks[-1]
        if last[0] > first[0] * GROWTH or last[1] > first[1] or last[2] > first[2]:
            outcome.failures.append(f"memory, descriptors, files: {first} became {last} ({plant.keep()})")
        outcome.more = f"{first[0]} kB became {last[0]} kB, {first[1]} descriptors {last[1]}, {first[2]} files {last[2]}"
    return outcome
