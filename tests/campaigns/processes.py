"""What runs below a process: who, how much memory, and since when."""

import threading
from pathlib import Path


def _facts(process):
    """(parent, session, resident bytes) of a process, or nothing for one that has gone."""
    try:
        fields = Path(f"/proc/{process}/stat").read_text(errors="replace").rpartition(")")[2].split()
    except OSError:
        return None
    return None if fields[0] == "Z" else (int(fields[1]), int(fields[3]), int(fields[21]) * 4096)


def inSession(leader):
    """Process to resident bytes, of all that began in the session of a process."""
    found = {}
    for entry in Path("/proc").iterdir():
        facts = _facts(entry.name) if entry.name.isdigit() else None
        if facts and facts[1] == leader:
            found[int(entry.name)] = facts[2]
    return found


class Watch:
    """Follows a process's session while it lives: the most memory of one process and of all together, in bytes."""

    def __init__(self, process):
        self.largest = 0
        self.together = 0
        self._process = process
        self._ended = threading.Event()
        self._thread = threading.Thread(target=self._look, daemon=True)

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._ended.set()
        self._thread.join()

    def _look(self):
        while not self._ended.wait(0.05):
            sizes = inSession(self._process.pid).values()
            self.largest = max(self.largest, max(sizes, default=0))
            self.together = max(self.together, sum(sizes))
