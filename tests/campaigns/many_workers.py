"""Thirty-two workers at a time take runs from one queue, each run exactly once.

The runs are those of an add-in that does nothing but write a line for each, so that the queue is all that there is.
Some workers are killed on the way; what they had taken goes back to the queue, and may then be written twice.
"""

import os
import signal
import sqlite3
import time

from ground import BIN, Ground, Outcome

FEW = 300
FULL = 10000
WORKERS = 32
KILLS = 4
FINISHED = 7
TEXT = 8  # the type of a stored value

CLASSES = "machine\\SOFTWARE\\Classes"


def launch(ground, count):
    """One run by the program, the others as its copies."""
    ground.must("arkin", "vault", "create", "Queue", "--root", ground.folder / "V")
    ground.must("arkin", "registry", "set", f"{CLASSES}\\ZNTaskAddIn.ZNTaskAddIn\\CLSID", "", "{ADD-IN}")
    library = "Z:" + str(BIN / "libTestAddIn.so").replace("/", "\\")
    ground.must("arkin", "registry", "set", f"{CLASSES}\\CLSID\\{{ADD-IN}}\\InprocServer32", "", library)
    (ground.folder / "a.step").write_text("ISO-10303-21;")
    ground.must("arkin", "add", ground.folder / "a.step", "--to", ground.folder / "V")
    ground.must("arkin", "task", "create", "Lines", "--kind", "convert")
    ground.must("arkin", "task", "launch", "Lines", ground.folder / "V/a.step")
    marks = ground.folder / "marks"
    with sqlite3.connect(ground.home / "vault.sqlite") as vault:
        names = [row[1] for row in vault.execute("PRAGMA table_info(task_runs)") if row[1] not in ("id", "guid")]
        rest = ", ".join(names)
        for run in range(2, count + 1):
            vault.execute(f"INSERT INTO task_runs (id, guid, {rest}) SELECT ?, ?, {rest} FROM task_runs WHERE id = 1",
                          (run, f"{{{run:036}}}"))
            vault.execute("INSERT INTO task_run_items SELECT ?, position, file_id, folder_id, path, configuration, "
                          "item_type, version FROM task_run_items WHERE run_id = 1", (run,))
        values = [("Plan", "finish"), ("Mark", str(marks)), ("Number", "x")]
        for name, value in values:
            vault.execute("INSERT INTO task_run_variables SELECT id, ?, ?, ?, 1 FROM task_runs", (name, TEXT, value))
        vault.execute("UPDATE next_ids SET next_id = ? WHERE sequence = 'task_runs'", (count + 1,))
    return marks


def run(count, chance):
    outcome = Outcome("runs", attacks=count)
    with Ground() as ground:
        marks = launch(ground, count)
        begun = time.monotonic()
        workers = [ground.start("arkin", "worker", "--once", stdout=open(os.devnull, "wb")) for _ in range(WORKERS)]
        for worker in chance.sample(workers, KILLS):
            time.sleep(chance.uniform(0, 0.5))
            os.killpg(worker.pid, signal.SIGKILL)
        for worker in workers:
            worker.wait()
        ground.run("arkin", "worker", "--once")  # what the last of the killed had taken
        rate = count / (time.monotonic() - begun)
        with sqlite3.connect(ground.home / "vault.sqlite") as vault:
            ended, once = vault.execute("SELECT COUNT(*), COALESCE(SUM(claim = 1), 0) FROM task_runs WHERE state = ?",
                                        (FINISHED,)).fetchone()
        lines = len(marks.read_text().splitlines())
        if ended != count:
            outcome.failures.append(f"{count - ended} runs didn't finish ({ground.keep()})")
        if once < count - KILLS or not count <= lines <= count + KILLS:
            outcome.failures.append(f"{once} runs were taken once, {lines} lines written ({ground.keep()})")
        outcome.more = f"{WORKERS} workers, {KILLS} of them killed, {rate:.0f} runs a second"
    return outcome
