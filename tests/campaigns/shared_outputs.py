"""Two workers at a time convert the same files to the same outputs, and some of them are killed on the way.

Each round launches a run for each worker. In every second round one of the workers is killed at a random moment and
another one goes on in its place. Then all runs have ended, nothing is checked out, each output has one new version for
each run, and the vault is sound.
"""

import os
import signal
import time

from ground import Outcome
from plant import Plant

FEW = 2
FULL = 200
WORKERS = 2


def make_round(plant, chance, kill):
    """What is wrong after a round, or nothing."""
    for _ in range(WORKERS):
        plant.launch()
    workers = [plant.start("arkin", "worker", "--once") for _ in range(WORKERS)]
    if kill:
        time.sleep(chance.uniform(0, 2))
        os.killpg(workers[0].pid, signal.SIGKILL)
        workers.append(plant.start("arkin", "worker", "--once"))
    said = [worker.communicate(timeout=300)[0].decode(errors="replace") for worker in workers]
    # A worker that was killed behind the last look of the others leaves its run to the next one.
    said.append(plant.run("arkin", "worker", "--once")[1])
    problem = plant.problem(WORKERS)
    return problem + "".join(said) if problem else ""


def run(count, chance):
    outcome = Outcome("rounds")
    with Plant() as plant:
        for number in range(count):
            outcome.attacks += 1
            if problem := make_round(plant, chance, number % 2 == 1):
                outcome.failures.append(f"round {number + 1}: {problem} ({plant.keep()})")
                break
        outcome.more = f"{plant.runs} runs"
    return outcome
