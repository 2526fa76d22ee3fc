"""Files, folders, configurations and card values are named so that they break into macros, and go through whole runs.

Each attack makes a part whose names and values hold pieces of macro code, quotes, line ends, tokens of templates, names
of devices and worse. What the vault refuses at its door is put past it, as an older program would have left it. Then a
task converts or prints the part. Nothing outside the vault may change, and a run that ends well must have made a file.
"""

import json
import os
import re
import zipfile
from pathlib import Path

from ground import SOURCE, Ground, Outcome, changeable

FEW = 12
FULL = 1000
OF_ONE_VAULT = 40

# What a foreign statement would do; Q: is the folder beside the vault. No piece has a backslash, so that names can hold
# them all.
TARGET = '"Q:" & Chr(92) & "'
STATEMENTS = [
    f'Kill {TARGET}canary.txt"', f'Kill {TARGET}*.*"', f'MkDir {TARGET}new"', f'RmDir {TARGET}empty"',
    f'Open {TARGET}new.txt" For Output As #9', f'Open {TARGET}canary.txt" For Append As #9: Print #9, 1',
    f'Name {TARGET}canary.txt" As {TARGET}away.txt"', f'FileCopy {TARGET}canary.txt", {TARGET}copy.txt"',
    f'SetAttr {TARGET}canary.txt", 1', f'CreateObject("Scripting.FileSystemObject").DeleteFolder {TARGET}empty"',
    f'CreateObject("Scripting.FileSystemObject").CreateTextFile({TARGET}new.txt").Write "x"',
    f'SHCreateDirectoryEx 0, StrPtr({TARGET}new"), 0', f'znModel.SaveAs {TARGET}new.stl"',
    f'Application.ConfineMacros Empty: Kill {TARGET}canary.txt"', 'Application.ExitApp',
    f'ChDir {TARGET}": Kill "canary.txt"', f'On Error Resume Next: Kill {TARGET}canary.txt": MkDir {TARGET}new"',
    'Kill ".." & Chr(92) & "beside" & Chr(92) & "canary.txt"', 'Do: Exit Do: Loop', 'End',
]
# What may stand before and behind a statement, so that the macro still compiles.
FRAMES = ['a": {}: docFileName = "', '" & "": {}: docFileName = "b', 'a"\n{}\ndocFileName = "', 'a"\r\n{}\r\ndocFileName = "',
          'a"\r{}\rdocFileName = "', 'a": {} \'', 'a" _\n: {}: docFileName = "', 'a"\x85{}\x85docFileName = "',
          'a"\u2028{}\u2028docFileName = "', '"\nEnd Sub\nSub Other()\n{}\ndocFileName = "',
          'a": If True Then {} Else docFileName = "', '<Filename>": {}: docFileName = "', '%Description%": {} : docFileName = "']
PIECES = ['"', '""', "'", ' _', ' _\n', '\n', '\r\n', '\x0b', '\x0c', '\x00', '\x1a', '\x7f', '\x85', '\u2028', '\u2029', '<Filename>',
          '<Path>', '<Configuration>', '<Filepath>', '[OutputPath]', '[__script]', '{#1}', '%Description%', '"+vbLf+"', '..', '.',
          '\u202e', '\u2066', 'CON', 'NUL', 'COM1', 'aux', '~$holder', '*', '?', '|', '&', '#', '$(x)', '`x`', ':', 'Q:', '日本', '🔧',
          '\udce9', '\udcff\udcfe', 'ä', '€', 'x' * 80, ' ', '  ', '-', '--', '@', 'Rem ', '#If 1 Then', '%', '<', '[', '{']


def hostile(chance, short=False):
    if chance.random() < 0.5:
        return chance.choice(FRAMES).format(chance.choice(STATEMENTS))
    count = chance.randint(1, 4 if short else 12)
    return "".join(chance.choice(PIECES + ["part"]) for _ in range(count))


class Plant(Ground):
    """A vault with three tasks; beside it a folder that nobody has any business in."""

    def __init__(self):
        super().__init__()
        self.vault = self.folder / "Plant"
        self.beside = self.folder / "beside"
        (self.beside / "empty").mkdir(parents=True)
        (self.beside / "canary.txt").write_text("precious")
        self.must("arkin", "quickstart", self.vault)
        self.must("arkin", "registry", "set", r"user\Software\Arkin\Drives", "Q", self.beside)
        if os.environ.get("UNCONFINED"):  # to see that the campaign bites
            self.must("arkin", "registry", "set", "--number",
                      r"user\Software\Zentrel\Applications\Arkin Enterprise\ZNTaskAddIn", "ConfineMacros", "0")
        settings = {"FileFormat": "STL (*.stl)", "OutputPath": r"<VaultPath>\Out\%Description%_<Filename>_<Configuration>",
                    "UsedVariables": "Description", "ErrorLogPath": r"\Logs", "PromptOutput": "no", "SourceRefs": "2",
                    "OutputConfs": "2", "OutputSheets": "2"}
        self.must("arkin", "task", "create", "Cards", "--kind", "convert",
                  *(word for name, value in settings.items() for word in ("--set", f"{name}={value}")))
        self.outside = self._outside()

    def _outside(self):
        """Everything that is neither the vault's, nor the home's, nor that of a running program."""
        found = {}
        for path in sorted(self.folder.rglob("*")):
            top = path.relative_to(self.folder).parts[0]
            if top not in ("Plant", "home", "make") and not top.startswith(("Zentrel_PID_", "TFR")):
                found[str(path)] = (path.stat().st_mode, path.read_bytes() if path.is_file() else "")
        return found

    def damage(self):
        now = self._outside()
        return "; ".join(f"{path} {'changed' if path in now and path in self.outside else 'came or went'}"
                         for path in sorted(now.keys() | self.outside.keys())
                         if now.get(path) != self.outside.get(path))

    def part(self, name, configuration):
        """A part whose first configuration has this name."""
        made = self.folder / "make" / name
        made.parent.mkdir(exist_ok=True)
        with zipfile.ZipFile(SOURCE / "samples" / "Bracket.zenprt") as sample, zipfile.ZipFile(made, "w") as copy:
            for entry in sample.namelist():
                data = sample.read(entry)
                if entry == "manifest.json":
                    manifest = json.loads(data)
                    manifest["configurations"] = manifest["configurations"][:1]
                    manifest["configurations"][0]["name"] = configuration
                    data = json.dumps(manifest)
                copy.writestr(entry, data)
        return made

    def put_past_the_door(self, safe, folder, name):
        """Gives a file and its folder, which have names that the vault takes, others in database and on the disk."""
        here = self.vault / safe
        there = self.vault / folder / name
        there.parent.mkdir()
        here.rename(there)
        with changeable(self.home / "vault.sqlite") as database:
            for table, column, old, new in (("files", "name", here.name, name), ("folders", "name", here.parent.name, folder)):
                database.execute(f"UPDATE {table} SET {column} = ? WHERE {column} = ?", (new, old))
            database.execute("UPDATE file_folders SET name_key = ? WHERE name_key = ?", (name.lower(), here.name.lower()))
            database.execute("UPDATE folders SET name_key = ? WHERE name_key = ?", (folder.lower(), here.parent.name.lower()))
        return there


def on_disk(name):
    return "/" not in name and "\\" not in name and "\0" not in name and name not in (".", "..") \
        and 0 < len(name.encode("utf-8", "surrogateescape")) <= 255


def attack(plant, number, chance, tally):
    """What is wrong after one attack, or nothing."""
    name = hostile(chance, short=True) + ".zenprt" if chance.random() < 0.6 else f"plain {number}.zenprt"
    folder = hostile(chance, short=True) if chance.random() < 0.4 else f"Folder {number}"
    configuration = hostile(chance).encode("utf-8", "replace").decode() if chance.random() < 0.4 else "Small"
    value = hostile(chance).replace("\0", "") if chance.random() < 0.6 else "plain"
    task = chance.choice(["Cards", "Cards", "To STL", "Print"])
    if not on_disk(name) or not on_disk(folder):
        name, folder = f"plain {number}.zenprt", f"Folder {number}"

    code, text = plant.run("arkin", "add", plant.part(name, configuration), "--to", folder)
    if code not in (0, 1) or (code == 1 and not text.strip()):
        return f"add ended with {code}: {text}"
    if code == 0:
        file = plant.vault / folder / name
    else:
        tally["refused"] += 1
        safe = f"Safe {number}/safe {number}.zenprt"
        if plant.run("arkin", "add", plant.part(Path(safe).name, configuration), "--to", Path(safe).parent)[0] != 0:
            return ""  # the container itself is refused; nothing entered
        utf8 = all("\udc80" > one or one > "\udcff" for one in name + folder)
        file = plant.put_past_the_door(safe, folder, name) if utf8 and not (plant.vault / folder).exists() \
            else plant.vault / safe
    code, text = plant.run("arkin", "card", file, "--set", f"Description={value}")
    if code not in (0, 1):
        return f"card ended with {code}: {text}"

    def outputs():
        return {path: path.stat().st_mtime_ns for path in plant.vault.rglob("*") if path.name.endswith((".stl", ".pdf"))}

    made_before = outputs()
    code, text = plant.run("arkin", "task", "launch", task, file, "--wait", timeout=120)
    tally["finished" if code == 0 else "failed"] += 1
    log = plant.run("arkin", "task", "log", match.group(1))[1] if (match := re.search(r"Run (\d+) of", text)) else ""
    tally["kept out"] += "may not reach" in log
    if code not in (0, 1):
        return f"the run ended with {code}: {text}"
    if code == 0 and outputs() == made_before:
        return f"the run says it is well and has made nothing: {text}"
    if code == 1 and not re.search(r"finished|wasn't launched|can't|could not|No file", text):
        return f"the run doesn't say what is wrong: {text}"
    return plant.damage()


def run(count, chance):
    outcome = Outcome("hostile names and values")
    tally = {"refused": 0, "finished": 0, "failed": 0, "kept out": 0}
    while outcome.attacks < count:
        with Plant() as plant:
            for number in range(min(OF_ONE_VAULT, count - outcome.attacks)):
                outcome.attacks += 1
                if problem := attack(plant, number, chance, tally):
                    outcome.failures.append(f"attack {outcome.attacks}: {problem} ({plant.keep()})")
                    break
            code, text = plant.run("arkin", "vault", "check")
            if code != 0:
                outcome.failures.append(f"after attack {outcome.attacks}: {text.strip()} ({plant.keep()})")
    outcome.more = ", ".join(f"{number} {what}" for what, number in tally.items())
    return outcome
