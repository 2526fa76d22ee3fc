"""Workers are stopped past their lease, their runs taken over, and the workers continued.

A worker is stopped at a random moment, the sign of life that it gave last is made old, and another worker takes its run
over. The first one goes on before, while or after the second one works. Whatever it does then, the run's outputs are
the second one's: one new version each, nothing checked out, the vault sound.
"""

import signal
import sqlite3
import time

from ground import Outcome
from plant import Plant

FEW = 1
FULL = 1000
OLD = 1000  # seconds, well past what makes a worker lost


def stop_with_an_old_sign(plant, worker):
    worker.send_signal(signal.SIGSTOP)
    try:
        with sqlite3.connect(plant.home / "vault.sqlite", timeout=0.5) as vault:
            vault.execute("UPDATE task_runs SET heartbeat_at = heartbeat_at - ? WHERE id = ?", (OLD, plant.runs))
        return True
    except sqlite3.OperationalError:
        return False


def take_over(plant, chance):
    """What is wrong after a cycle, or nothing."""
    plant.launch()
    late = plant.start("arkin", "worker", "--once")
    time.sleep(chance.uniform(0.1, 1.5))
    while not stop_with_an_old_sign(plant, late):
        late.send_signal(signal.SIGCONT)  # it has the writers' turn, and nobody could take anything over
        time.sleep(0.02)
    second = plant.start("arkin", "task", "run", plant.runs)
    time.sleep(chance.choice([0, 0.3, 0.8, 1.5]))
    late.send_signal(signal.SIGCONT)
    said = [worker.communicate(timeout=300)[0].decode(errors="replace") for worker in (second, late)]
    problem = plant.problem()
    return problem + "".join(said) if problem else ""


def run(count, chance):
    outcome = Outcome("cycles")
    with Plant() as plant:
        for number in range(count):
            outcome.attacks += 1
            if problem := take_over(plant, chance):
                outcome.failures.append(f"cycle {number + 1}: {problem} ({plant.keep()})")
                break
    return outcome
