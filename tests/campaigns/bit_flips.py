"""Single bits of a vault's archive and database are turned.

Each is found by `arkin vault check`, refused with a sentence, or harmless: then the tables hold what they held, and
every version still comes out with the bytes that went in. No command is ended by a signal.
"""

import shutil
import sqlite3

from ground import Ground, Outcome

FEW = 40
FULL = 10000

VERSIONS = 3
FILES = 6
TABLES = ("vaults", "folders", "files", "file_folders", "versions", "variables", "card_values", "file_references",
          "check_outs", "permissions", "store_identity")


def text(database, tables=TABLES):
    """All that the vault's tables hold."""
    with sqlite3.connect(f"file:{database}?mode=ro", uri=True) as opened:
        opened.text_factory = bytes
        return {table: opened.execute(f"SELECT * FROM {table}").fetchall() for table in tables}


class Work(Ground):
    def __init__(self):
        super().__init__()
        self.view = self.folder / "view"
        self.must("arkin", "vault", "create", "Demo", "--root", self.view)
        self.must("arkin", "variable", "add", "Title")
        source = self.folder / "in"
        source.mkdir()
        for number in range(FILES):
            (source / f"f{number}.txt").write_bytes(bytes(f"file {number} version 1\n", "ascii") * (40 * number + 1))
        self.must("arkin", "add", source, "--to", "Parts", "-m", "first")
        for number in range(2):
            for version in range(2, VERSIONS + 1):
                path = self.view / "Parts" / "in" / f"f{number}.txt"
                self.must("arkin", "checkout", path)
                path.write_text(f"file {number} version {version}\n" * 30)
                self.must("arkin", "checkin", path, "-m", f"change {version}")
            self.must("arkin", "card", path, "--set", f"Title=Number {number}")
        self.home.rename(self.folder / "first")
        self.first = self.folder / "first"
        with sqlite3.connect(self.first / "vault.sqlite") as database:
            database.execute("PRAGMA journal_mode = DELETE")
        self.files = sorted(path for path in self.first.glob("archive/??/*")) + [self.first / "archive" / "identity"]
        self.truth = text(self.first / "vault.sqlite")
        self.contents = {path.name: path.read_bytes() for path in self.files}
        with sqlite3.connect(self.first / "vault.sqlite") as database:
            self.versions = database.execute("SELECT f.name, v.version, v.content FROM versions v JOIN files f ON "
                                             "f.id = v.file_id").fetchall()

    def flip(self, chance):
        """A home with one turned bit: what was turned, in words."""
        if self.home.exists():
            shutil.rmtree(self.home)
        shutil.copytree(self.first, self.home)
        shutil.rmtree(self.view)
        self.view.mkdir()
        # The database has more places that matter than the contents have.
        path = chance.choice([self.first / "vault.sqlite"] * 2 + [chance.choice(self.files)])
        bit = chance.randrange(path.stat().st_size * 8)
        target = self.home / path.relative_to(self.first)
        target.chmod(0o600)
        with open(target, "r+b") as opened:
            opened.seek(bit // 8)
            byte = opened.read(1)[0]
            opened.seek(bit // 8)
            opened.write(bytes([byte ^ 1 << bit % 8]))
        return f"bit {bit % 8} of byte {bit // 8} of {path.relative_to(self.first)}"

    def verdict(self, chance):
        """"found", "refused" or "harmless", or a sentence that says what is wrong."""
        code, said = self.run("arkin", "vault", "check")
        if code < 0 or "terminate called" in said:
            return f"'vault check' died with {code}: {said}"
        if code == 1:
            return "found" if "NOT sound" in said else "refused" if "arkin: " in said else f"no sentence: {said}"
        for path in self.files:
            if (self.home / path.relative_to(self.first)).read_bytes() != self.contents[path.name]:
                return f"the vault is called sound, but {path.name} is changed"
        try:
            now = text(self.home / "vault.sqlite")
        except sqlite3.Error as error:
            return f"the vault is called sound, but: {error}"
        changed = [table for table in TABLES if now[table] != self.truth[table]]
        if changed:
            return f"called sound, but {changed} are changed"
        name, version, content = chance.choice(self.versions)
        path = self.view / "Parts" / "in" / name
        code, said = self.run("arkin", "get", path, "--version", version)
        if code < 0:
            return f"'get' died with {code}: {said}"
        if code != 0:
            return f"the vault is called sound, but {name}, version {version} doesn't come out: {said}"
        if path.read_bytes() != self.contents[content]:
            return f"{name}, version {version} came out with other bytes"
        return "harmless"


def run(count, chance):
    outcome = Outcome("turned bits")
    seen = {"found": 0, "refused": 0, "harmless": 0}
    with Work() as work:
        for _ in range(count):
            what = work.flip(chance)
            outcome.attacks += 1
            verdict = work.verdict(chance)
            if verdict in seen:
                seen[verdict] += 1
            else:
                outcome.failures.append(f"{what}: {verdict}")
    outcome.more = ", ".join(f"{number} {name}" for name, number in seen.items())
    return outcome
