"""The n-th call to the system fails in each of some twenty operations, once or from then on, with EIO or a full disk.

Calls are the openings, reads, writes, syncs, renames, removals and new folders below the folder of the vault. What the
command says agrees with what the vault holds (done: all of it; failed: with a sentence, and all or nothing but where a
person can finish what has several steps), the vault is sound, and the operation repeated or finished without faults
leads to where it leads undisturbed. The worker isn't among the operations: a run's outcome is its report.
"""

import errno
import shutil
import sqlite3
import subprocess

from ground import BIN, Ground, Outcome

FEW = 10
STUCK = "no end within a minute"
MANY = 20  # files of the added folder
FULL = 1_000_000  # each operation, each call, each kind of failure

STATE = (
    "SELECT name FROM vaults",
    "SELECT name, latest_version, deleted_at <> 0 FROM files",
    "SELECT f.name, d.name FROM file_folders p JOIN files f ON f.id = p.file_id JOIN folders d ON d.id = p.folder_id",
    "SELECT f.name, v.version, v.content, v.comment_text FROM versions v JOIN files f ON f.id = v.file_id",
    "SELECT f.name, c.base_version FROM check_outs c JOIN files f ON f.id = c.file_id",
    "SELECT * FROM card_values",
    "SELECT from_file.name, r.version, to_file.name, r.to_version FROM file_references r JOIN files from_file "
    "ON from_file.id = r.file_id JOIN files to_file ON to_file.id = r.to_file_id",
    "SELECT name FROM variables",
    "SELECT user_name, folder_id FROM permissions",
    "SELECT name FROM tasks",
    "SELECT task_name, state FROM task_runs",
)

# An operation's name, what comes before it undisturbed, the operation itself, and what a person does to finish it where
# it has several steps and failed between them. {in}, {view}, {home}, {backup} and {restored} are places of the vault's
# disk; "!" begins what a shell does.
OPERATIONS = (
    # A commit may have reached the disk though its sync failed. The copies are away then, and can be got again.
    ("add", (), "add {in}/one.txt --to Parts", ("get Parts/one.txt", "checkin Parts/one.txt -m Added",)),
    ("add a folder", (), "add {in}/many --to Parts",
     ("add {in}/many --to Parts", *(f"get Parts/many/m{number}.txt" for number in range(MANY)),
      "checkin -m Added Parts/many/*")),
    ("check out", (), "checkout Parts/a.txt", ()),
    ("check in", ("checkout Parts/a.txt", "!echo changed > {view}/Parts/a.txt"), "checkin Parts/a.txt -m new", ()),
    # The changes were to be dropped, so the copy may go.
    ("undo", ("checkout Parts/a.txt", "!echo changed > {view}/Parts/a.txt"), "undo Parts/a.txt",
     ("!rm -f {view}/Parts/a.txt", "get Parts/a.txt")),
    ("get", ("!rm -f {view}/Parts/a.txt",), "get Parts/a.txt", ()),
    ("get an old version", (), "get Parts/b.txt --version 1", ()),
    ("card", (), "card Parts/a.txt --set Description=Angle",
     ("undo Parts/a.txt", "card Parts/a.txt --set Description=Angle")),
    ("new variable", (), "variable add Weight", ()),
    ("delete", (), "delete Parts/a.txt", ("!rm -f {view}/Parts/a.txt",)),
    ("restore", ("delete Parts/a.txt",), "restore Parts/a.txt", ("get Parts/a.txt",)),
    ("restore a version", (), "restore Parts/b.txt --version 1",
     ("undo Parts/b.txt", "restore Parts/b.txt --version 1")),
    ("right", (), "right set Parts anna --no-delete", ()),
    ("new vault", (), "vault create Other --root {in}/other", ()),
    ("check", (), "vault check", ()),
    ("clean", ("!touch -d 2001-01-01 {home}/archive/00/" + "0" * 64,), "vault clean", ()),
    ("refresh", (), "vault refresh", ()),
    ("backup", (), "vault backup {backup}", ()),
    ("restore a backup", ("vault backup {backup}",), "vault restore {backup} --to {restored}", ()),
    ("new task", (), "task create Other --kind script", ()),
    ("launch", (), "task launch Script Parts/a.txt", ()),
    ("registry", (), "registry set machine\\Software\\Arkin KeepRunsDays 5", ()),
)


class Work(Ground):
    def __init__(self):
        super().__init__()
        self.disk = self.folder / "disk"
        self.disk.mkdir()
        self.first = self.folder / "first"
        self.home = self.disk / "home"
        self.environment["ARKIN_HOME"] = str(self.home)
        self.places = {"in": self.disk / "in", "view": self.disk / "view", "home": self.home,
                       "backup": self.disk / "backup", "restored": self.disk / "restored"}
        source = self.places["in"]
        (source / "many").mkdir(parents=True)
        for number in range(MANY):
            (source / "many" / f"m{number}.txt").write_text(f"one of many, number {number}\n")
        for name in ("a.txt", "b.txt", "one.txt"):
            (source / name).write_text(f"first version of {name}\n")
        self.must("arkin", "quickstart", self.places["view"])
        self.must("arkin", "add", source / "a.txt", source / "b.txt", "--to", "Parts")
        self.must("arkin", "checkout", "Parts/b.txt")
        (self.places["view"] / "Parts" / "b.txt").write_text("second version\n")
        self.must("arkin", "checkin", "Parts/b.txt")
        self.must("arkin", "task", "create", "Script", "--kind", "script")
        (self.home / "archive" / "00").mkdir()
        (self.home / "archive" / "00" / ("0" * 64)).write_text("left by interrupted work")
        shutil.copytree(self.disk, self.first, symlinks=True)
        self._known = {}

    def arkin(self, line, fault=None):
        """Exit code and output of a command of the table."""
        words = [word.format(**self.places) for word in line.split(" ")]
        if words[-1].endswith("/*"):
            words[-1:] = [words[-1][:-1] + path.name for path in sorted((self.places["in"] / "many").iterdir())]
        plain = dict(self.environment)
        if fault:
            self.environment.update(LD_PRELOAD=str(BIN / "libfail_shim.so"), FAIL_ROOT=str(self.disk), FAIL_AT=fault,
                                    FAIL_PROGRAM="arkin")
        try:
            return self.run("arkin", *words, timeout=60)
        except subprocess.TimeoutExpired as stuck:
            return STUCK, (stuck.stdout or b"").decode(errors="replace")
        finally:
            self.environment = plain

    def begin(self, steps):
        shutil.rmtree(self.disk)
        shutil.copytree(self.first, self.disk, symlinks=True)
        for step in steps:
            if self.step(step)[0] != 0:
                raise RuntimeError(step)

    def step(self, step):
        """Exit code and output of a command or of what a shell does."""
        if step.startswith("!"):
            return subprocess.run(["sh", "-c", step[1:].format(**self.places)], check=True).returncode, ""
        return self.arkin(step)

    def state(self):
        """All that the vault and its local folder hold, as far as two runs of an operation agree in it."""
        with sqlite3.connect(self.home / "vault.sqlite") as database:
            rows = [sorted(map(repr, database.execute(query))) for query in STATE]
        view = {str(path.relative_to(self.disk)): path.read_bytes() for path in self.places["view"].rglob("*")
                if path.is_file() and not path.name.startswith("~$")}
        return rows, view, self.places["restored"].exists() and any(self.places["restored"].iterdir())

    def known(self, operation):
        """The state before and after an operation, and how many of its calls could fail, by the error."""
        name, steps, line, _ = operation
        if name not in self._known:
            self.begin(steps)
            before = self.state()
            code, text = self.arkin(line)
            if code != 0:
                raise RuntimeError(f"{name}: {text}")
            after, calls = self.state(), {}
            for error in (errno.EIO, errno.ENOSPC):
                self.begin(steps)
                calls[error] = int(self.arkin(line, f"count:0:{error}")[1].split()[-1])
            self._known[name] = before, after, calls
        return self._known[name]

    def attack(self, operation, fault):
        """What is wrong after an operation with a failing call, or nothing."""
        _, steps, line, finish = operation
        before, after, _ = self.known(operation)
        self.begin(steps)
        code, text = self.arkin(line, fault)
        if code not in (0, 1) or "terminate called" in text:
            return f"ended with {code}: {text}"
        if code == 1 and not any(sign in text for sign in ("arkin: ", "Problem: ", "NOT sound")):
            return f"failed without a sentence: {text}"
        if "'arkin undo' gives it back" in text:
            self.arkin("undo " + line.split()[1])
        now = self.state()
        if code == 0 and now != after:
            return f"done was said, but it isn't: {text}"
        checked, said = self.arkin("vault check")
        if checked != 0:
            return f"not sound after {text!r}: {said}"
        if now == after:
            return ""
        if now == before:
            finish = [line]
        elif not finish:
            return f"failed by half: {text}"
        said = [self.step(step)[1] for step in finish]
        if self.state() != after:
            return f"can't be finished after {text!r}: {said}"
        checked, said = self.arkin("vault check")
        return f"not sound after repeating: {said}" if checked != 0 else ""


def every_fault(work, operation):
    return [f"{mode}:{call}:{error}" for error, calls in work.known(operation)[2].items()
            for mode in ("once", "forever") for call in range(1, calls + 1)]


def run(count, chance):
    outcome = Outcome("failing calls")
    with Work() as work:
        if count == FULL:
            attacks = [(operation, fault) for operation in OPERATIONS for fault in every_fault(work, operation)]
        else:
            operations = [OPERATIONS[index % len(OPERATIONS)] for index in range(chance.randrange(100), count + 100)]
            attacks = [(operation, chance.choice(every_fault(work, operation))) for operation in operations[:count]]
        for operation, fault in attacks:
            outcome.attacks += 1
            if problem := work.attack(operation, fault):
                outcome.failures.append(f"{operation[0]}, {fault}: {problem.strip()}")
    return outcome
