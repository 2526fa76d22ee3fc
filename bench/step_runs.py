#!/usr/bin/env python3
"""Runs over STEP files against the bare kernel over the same files, alternating, as ratios.

Build first: scripts/build bench programs kernel_loop make_step.
Usage: bench/step_runs.py [--small N] [--large N] [--components N] [--rounds N] [--memory] [FOLDER...]

Without numbers it makes 200 small files (10 KB), 20 large ones (1 to 5 MB) and an assembly of 500 components with 50
distinct parts, which takes a quarter of an hour; --small 40 --large 2 --components 50 takes two minutes. A folder adds
the STEP files of its own.

A run is all of `arkin task run` with every process below it, from an empty cache: its processor time holds the start of
the programs, too, while the wall counts from the first macro to "Adding files to vault...", as the loop's does from its
first file to its last. The peak memory is that of a run that reads nothing ahead.
"""

import argparse
import ctypes
import os
import shutil
import subprocess
import sys
import threading
import time
from pathlib import Path

from bench_vault import BIN, BenchVault

LIMITS = r"machine\SOFTWARE\Zentrel\Zentrel 2018\Limits"
LOOP = BIN / "kernel_loop"
WANTED = {"cold processor": 1.10, "cold wall": 0.65, "small processor": 1.3, "second wall": 0.30,
          "step processor": 1.10, "step bytes": 1.10, "memory": 1.5}
FORMATS = {"stl": ("STL (*.stl)", ".stl"), "vrml": ("VRML (*.wrl)", ".wrl"), "step": ("STEP (*.step)", ".step")}


def adopt_orphans():
    """What a process of a run leaves behind is waited for here, too, and counts."""
    ctypes.CDLL(None).prctl(36, 1, 0, 0, 0)  # PR_SET_CHILD_SUBREAPER


def reap():
    """Waits for the adopted and returns nothing; their time stands in RUSAGE_CHILDREN."""
    try:
        while True:
            os.wait4(-1, 0)
    except ChildProcessError:
        pass


def children_time():
    times = os.times()
    return times.children_user + times.children_system


def descendants(process):
    children = {}
    for entry in Path("/proc").iterdir():
        if entry.name.isdigit():
            try:
                parent = int((entry / "stat").read_text().rsplit(")", 1)[1].split()[1])
            except (OSError, IndexError):
                continue
            children.setdefault(parent, []).append(int(entry.name))
    found, waiting = [], [process]
    while waiting:
        more = children.get(waiting.pop(), [])
        found += more
        waiting += more
    return found


def memory_of(processes):
    """Their proportional share in kB, so that what a fork shares counts once."""
    total = 0
    for process in processes:
        try:
            for line in Path(f"/proc/{process}/smaps_rollup").read_text().splitlines():
                if line.startswith("Pss:"):
                    total += int(line.split()[1])
        except OSError:
            pass
    return total


class PeakMemory(threading.Thread):
    def __init__(self):
        super().__init__(daemon=True)
        self.peak = 0
        self.done = threading.Event()

    def run(self):
        while not self.done.wait(0.02):
            self.peak = max(self.peak, memory_of(descendants(os.getpid())))


class Bench:
    def __init__(self, arguments):
        self.arguments = arguments
        self.vault = BenchVault()
        self.targets = 0
        self.rows = []

    def make_files(self):
        made = self.vault.path / "made"
        distinct = max(1, self.arguments.components // 10)
        subprocess.run([BIN / "make_step", made, str(self.arguments.small), str(self.arguments.large),
                        str(self.arguments.components), str(distinct)], check=True, stdout=subprocess.DEVNULL)
        sets = {kind: sorted((made / kind).iterdir()) for kind in ("small", "large", "assembly")}
        for folder in self.arguments.folders:
            sets[folder.name] = sorted(file for file in folder.iterdir() if file.suffix.lower() in (".stp", ".step"))
        return {kind: files for kind, files in sets.items() if files}

    def add(self, kind, files):
        folder = self.vault.path / "sources" / kind
        folder.mkdir(parents=True)
        for file in files:
            shutil.copy(file, folder)
        self.vault.run("arkin", "add", folder)
        return sorted((self.vault.root / kind).iterdir())

    def loop(self, kind, form, files):
        target = self.vault.path / "bare" / kind / form
        target.mkdir(parents=True, exist_ok=True)
        wall, processor, memory = subprocess.run([LOOP, form, target, *files], check=True, text=True,
                                                 stdout=subprocess.PIPE).stdout.split()[-3:]
        return float(wall), float(processor), int(memory)

    def set_readers(self, count):
        self.vault.run("arkin", "registry", "set", LIMITS, "Readers", str(count), "--number")

    def clear_cache(self):
        self.vault.run("arkin", "cache", "clear")

    def run(self, kind, form):
        """Wall and processor seconds of a run, and the folder of its outputs."""
        self.targets += 1
        folder = f"out{self.targets}"
        self.vault.run("arkin", "task", "create", folder, "--kind", "convert", "--set", f"FileFormat={FORMATS[form][0]}",
                       "--set", rf"OutputPath=<VaultPath>\{folder}\<Filename>", "--set", "OutputConfs=4",
                       "--set", "FileConfs=4", "--set", "StlQuality=1")
        identifier = self.vault.ask("task", "launch", folder, self.vault.root / kind, "--defaults")["run"]
        reap_before = children_time()
        begin, adding = self.follow(identifier)
        reap()
        return adding - begin, children_time() - reap_before, self.vault.root / folder

    def follow(self, identifier):
        worker = subprocess.Popen([BIN / "arkin", "task", "run", str(identifier)], env=self.vault.environment, text=True,
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        begin = adding = None
        lines = []
        for line in worker.stdout:
            lines.append(line)
            if begin is None and line.startswith("[0/"):
                begin = time.monotonic()
            if adding is None and "Adding files to vault" in line:
                adding = time.monotonic()
        worker.wait()
        if begin is None or adding is None:
            sys.exit("The run failed:\n" + "".join(lines[-5:]))
        return begin, adding

    def compare(self, kind, form, outputs):
        """Names what differs between a run's outputs and the loop's."""
        ours = sorted(outputs.glob("*" + FORMATS[form][1]))
        theirs = {file.stem: file for file in (self.vault.path / "bare" / kind / form).iterdir()}
        pairs = [(file, theirs[stem]) for file in ours if (stem := file.stem.removesuffix("_Default")) in theirs]
        print(f"  {kind} to {form}: {len(pairs)} of {len(theirs)} outputs")
        if form == "vrml" or not pairs:
            return 1.0
        measures = [subprocess.run([LOOP, "measure", *files], check=True, text=True, stdout=subprocess.PIPE).stdout
                    for files in zip(*pairs)]
        size = [0, 0]
        for (file, _), mine, other in zip(pairs, *(measure.splitlines() for measure in measures)):
            mine, other = mine.split(), other.split()
            if form == "step":
                size[0] += int(mine.pop())
                size[1] += int(other.pop())
                same = mine == other
            else:
                same = mine[0] == other[0] and abs(float(mine[1]) - float(other[1])) <= 1e-4 * abs(float(other[1]))
            if not same:
                print(f"  {file.name}: {' '.join(mine)} against {' '.join(other)}")
        return size[0] / size[1] if size[1] else 1.0

    def row(self, measure, kind, ratio, wanted):
        self.rows.append(f"{measure:44} {kind:10} {ratio:5.2f}  (at most {WANTED[wanted]:.2f})")
        print("  " + self.rows[-1], flush=True)

    def measure(self, kind, files):
        total = {name: [0.0, 0.0] for name in ("cold", "second", "loop", "loop2")}
        for round_ in range(self.arguments.rounds):
            bare = self.loop(kind, "stl", files)
            self.clear_cache()
            wall, processor, outputs = self.run(kind, "stl")
            second = self.run(kind, "vrml")
            other = self.loop(kind, "vrml", files)
            for name, taken in (("cold", (wall, processor)), ("second", second), ("loop", bare), ("loop2", other)):
                total[name] = [sum(pair) for pair in zip(total[name], taken[:2])]
            if round_ == 0:
                self.compare(kind, "stl", outputs)
                self.compare(kind, "vrml", second[2])
        (wall, processor), (wall2, _), (loop, loop_processor), (loop2, _) = total.values()
        print(f"  seconds: run {wall:.1f} wall, {processor:.1f} processor; loop {loop:.1f}, {loop_processor:.1f}; "
              f"second run {wall2:.1f}, its loop {loop2:.1f}")
        self.row("cold run, processor time of all processes", kind, processor / loop_processor,
                 "small processor" if kind == "small" else "cold processor")
        self.row("cold run, wall", kind, wall / loop, "cold wall")
        self.row("second run into another mesh format, wall", kind, wall2 / min(loop, loop2), "second wall")
        if self.arguments.memory:
            self.clear_cache()
            self.set_readers(0)
            peak = PeakMemory()
            peak.start()
            self.run(kind, "stl")
            peak.done.set()
            peak.join()
            self.set_readers(os.cpu_count())
            self.row("peak memory, one file at a time", kind, peak.peak / bare[2], "memory")

    def measure_step(self, files):
        bare = self.loop("assembly", "step", files)
        self.clear_cache()
        _, processor, outputs = self.run("assembly", "step")
        size = self.compare("assembly", "step", outputs)
        self.row("STEP assembly to STEP, processor time", "assembly", processor / bare[1], "step processor")
        self.row("STEP assembly to STEP, bytes", "assembly", size, "step bytes")

    def all(self):
        for kind, files in self.make_files().items():
            size = sum(file.stat().st_size for file in files) / len(files) / 1000
            print(f"{kind}: {len(files)} files of {size:.0f} kB on average", flush=True)
            files = self.add(kind, files)
            self.measure(kind, files)
            if kind == "assembly":
                self.measure_step(files)
        print()
        print("\n".join(self.rows))


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n", maxsplit=1)[0])
    parser.add_argument("--small", type=int, default=200)
    parser.add_argument("--large", type=int, default=20)
    parser.add_argument("--components", type=int, default=500)
    parser.add_argument("--rounds", type=int, default=1, help="how often run and loop alternate")
    parser.add_argument("--memory", action="store_true", help="measure the peak memory, too, in a run of its own")
    parser.add_argument("folders", nargs="*", type=Path, metavar="FOLDER", help="further STEP files")
    arguments = parser.parse_args()
    adopt_orphans()
    Bench(arguments).all()


main()
