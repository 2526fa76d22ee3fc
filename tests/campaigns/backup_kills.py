"""Backups and restores are killed, or lose their power, at each point of their work.

Points are all writes, syncs, renames, removals and new names of the work. Half of the interruptions stop a backup that
also removes an old copy, half a restore. Afterwards the backups from before are sound, a home is there whole or not at
all, the next backup and the next restore do their work, and what is restored equals the vault.
"""

import shutil
import sqlite3

from ground import BIN, Ground, Outcome, changeable

FEW = 8
FULL = 2000

FILES = 24  # enough for the archive's way with many files
KEPT = 3
VERSIONS = "SELECT f.name, v.version, v.content, v.comment_text FROM versions v JOIN files f ON f.id = v.file_id ORDER BY 1, 2"


def rows(database):
    with sqlite3.connect(database) as opened:
        return opened.execute(VERSIONS).fetchall()


def contents(archive):
    return {file.name: file.read_bytes() for file in archive.glob("??/*")}


class Work(Ground):
    """A vault with backups of three of its states, and contents since then that no backup has."""

    def __init__(self):
        super().__init__()
        # Only what lies below is watched; a removed file is kept beside it until the power is lost.
        self.disk = self.folder / "disk"
        self.disk.mkdir()
        self.backup = self.disk / "backup"
        self.restored = self.disk / "restored"
        self.first = self.folder / "first"
        self.must("arkin", "vault", "create", "Demo", "--root", self.folder / "view")
        for state in range(KEPT + 1):
            source = self.folder / f"state{state}"
            source.mkdir()
            for number in range(FILES if state in (0, KEPT) else 2):
                (source / f"f{state}-{number}.txt").write_text(f"content {number} of state {state}\n" * 50)
            self.must("arkin", "add", source, "--to", "Parts")
            if state < KEPT:
                self.must("arkin", "vault", "backup", self.backup)
        # What only the oldest copy has is to be removed by the next backup.
        with changeable(self.home / "vault.sqlite") as database:
            database.execute("UPDATE versions SET content = (SELECT content FROM versions v JOIN files f ON "
                             "f.id = v.file_id WHERE f.name = 'f1-1.txt'), content_size = (SELECT content_size FROM "
                             "versions v JOIN files f ON f.id = v.file_id WHERE f.name = 'f1-1.txt') WHERE file_id = "
                             "(SELECT id FROM files WHERE name = 'f0-0.txt')")
        self.rows = rows(self.home / "vault.sqlite")
        shutil.copytree(self.disk, self.first)

    def commands(self, kind):
        if kind == "backup":
            return ["vault", "backup", self.backup, "--keep", KEPT]
        return ["vault", "restore", self.backup, "--to", self.restored]

    def attack(self, kind, fault):
        """What `arkin` ended with and printed, with a fault of the shim."""
        plain = dict(self.environment)
        self.environment.update(CRASH_ROOT=str(self.disk), CRASH_AT=fault, LD_PRELOAD=str(BIN / "libcrash_shim.so"))
        try:
            return self.run("arkin", *self.commands(kind))
        finally:
            self.environment = plain

    def points(self, kind):
        self.reset()
        code, text = self.attack(kind, "count")
        if code != 0:
            raise RuntimeError(text)
        return int(text.split()[-1])

    def reset(self):
        shutil.rmtree(self.disk)
        for kept in self.folder.glob("disk.kept*"):
            kept.unlink()
        shutil.copytree(self.first, self.disk)

    def copies(self):
        return sorted(path.name for path in (self.backup / "copies").iterdir() if path.name.startswith("2"))

    def interrupt(self, kind, fault):
        """What is wrong after an interruption, or nothing."""
        self.reset()
        before = self.copies()
        code, text = self.attack(kind, fault)
        if code == 0:
            return f"not interrupted: {text}"
        if lost := set(before[-(KEPT - 1):]) - set(self.copies()):
            return f"copies are lost: {lost}"
        steps = [["vault", "backup", self.backup, "--check"]]
        if self.restored.exists() and any(self.restored.iterdir()):
            if problem := self.differs():
                return f"a home was restored by half: {problem}"
            steps.append(["vault", "check", "--home", self.restored])
        else:
            steps.append(["vault", "restore", self.backup, "--to", self.restored])
        last = self.disk / "last"
        steps += [["vault", "backup", self.backup, "--keep", KEPT], ["vault", "backup", self.backup, "--check"],
                  ["vault", "restore", self.backup, "--to", last], ["vault", "check", "--home", last]]
        for step in steps:
            code, text = self.run("arkin", *step)
            if code != 0:
                return f"'arkin {' '.join(map(str, step))}': {text}"
        if rows(last / "vault.sqlite") != self.rows:
            return "what was restored isn't what the vault has"
        named = {row[2] for row in self.rows}
        mine = {name: content for name, content in contents(self.home / "archive").items() if name in named}
        if contents(last / "archive") != mine:
            return "the restored contents aren't those of the vault"
        wanted = set()
        for copy in (self.backup / "copies").iterdir():
            wanted |= {row[2] for row in rows(copy / "vault.sqlite")}
        if set(contents(self.backup / "archive")) != wanted and kind == "backup":
            return "the backup keeps contents that no copy needs"
        return ""

    def differs(self):
        copy = self.backup / "copies" / self.copies()[-1]
        if not (self.restored / "vault.sqlite").exists():
            return "no database"
        if rows(self.restored / "vault.sqlite") != rows(copy / "vault.sqlite"):
            return "other versions"
        named = {row[2] for row in rows(copy / "vault.sqlite")}
        return "" if set(contents(self.restored / "archive")) == named else "other contents"


def run(count, chance):
    outcome = Outcome("interruptions")
    with Work() as work:
        reach = {kind: work.points(kind) for kind in ("backup", "restore")}
        for index in range(count):
            kind = ("backup", "restore")[index % 2]
            number = index // 4
            # Each point in its turn as long as there is one, then points by chance.
            point = number + 1 if count >= 4 * max(reach.values()) and number < reach[kind] else chance.randint(
                1, reach[kind])
            fault = f"{('kill', 'power')[index // 2 % 2]}:{point}"
            outcome.attacks += 1
            if problem := work.interrupt(kind, fault):
                shutil.move(work.disk, work.keep() / f"failed-{kind}-{fault}")
                work.disk.mkdir()
                outcome.failures.append(f"{kind} {fault}: {problem} ({work.folder}/failed-{kind}-{fault})")
        outcome.more = f"{reach['backup']} points of a backup, {reach['restore']} of a restore"
    return outcome
