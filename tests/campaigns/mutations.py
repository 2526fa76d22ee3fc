"""Changes of documents and exchange files: numbers, bytes, cuts, doubled and spliced blocks."""

import io
import re
import struct
import zipfile
import zlib

NUMBER = re.compile(rb"(?<![\w#.])-?\d+(?:\.\d*)?(?:[eE][-+]?\d+)?")
REFERENCE = re.compile(rb"#\d+")
DOUBLES = (0.0, -1.0, 1e-7, 1e9, 1e300, float("inf"), float("nan"))


def otherNumber(text, chance):
    if b"." not in text:
        value = int(text)
        return str(chance.choice((0, -1, value + 1, value - 1, value * 1000, 2**31 - 1, -value))).encode()
    value = float(text)
    changed = chance.choice((0.0, -value, value * 1e3, value * 1e6, value * 1e-6, value * 1.01, value + 1, 1e300))
    return f"{changed:.12E}".encode()


def replaced(data, match, piece):
    return data[:match.start()] + piece + data[match.end():]


def number(data, chance, _):
    """One number becomes another one."""
    places = list(NUMBER.finditer(data))
    match = chance.choice(places) if places else None
    return replaced(data, match, otherNumber(match.group(), chance)) if match else data


def reference(data, chance, _):
    """One entity's number becomes another entity's."""
    places = list(REFERENCE.finditer(data))
    return replaced(data, chance.choice(places), chance.choice(places).group()) if places else number(data, chance, b"")


def double(data, chance, _):
    """Eight bytes become a number that geometry seldom has."""
    at = chance.randrange(max(1, len(data) - 8))
    return data[:at] + struct.pack("<d", chance.choice(DOUBLES)) + data[at + 8:]


def bytesChanged(data, chance, _):
    changed = bytearray(data)
    for _ in range(chance.choice((1, 1, 2, 8, 64))):
        changed[chance.randrange(len(changed))] = chance.choice((0, 0xFF, 0x7F, chance.randrange(256)))
    return bytes(changed)


def cut(data, chance, _):
    return data[:chance.randrange(1, len(data))]


def hollowed(data, chance, _):
    begin = chance.randrange(len(data))
    return data[:begin] + data[begin + chance.randrange(1, 400):]


def doubled(data, chance, _):
    begin = chance.randrange(len(data))
    block = data[begin:begin + chance.choice((20, 200, 4000))]
    return data[:begin] + block * chance.choice((2, 2, 50)) + data[begin:]


def spliced(data, chance, other):
    begin, end = sorted(chance.randrange(len(data)) for _ in range(2))
    start = chance.randrange(len(other))
    return data[:begin] + other[start:start + end - begin] + data[end:]


TEXT = (number, number, number, number, reference, reference, bytesChanged, cut, hollowed, doubled, spliced)
BINARY = (double, double, double, bytesChanged, bytesChanged, cut, hollowed, doubled, spliced)


# What a container raises whose own bytes were changed before.
UNREADABLE = (zipfile.BadZipFile, zlib.error, NotImplementedError, RuntimeError, EOFError, OSError, ValueError,
              struct.error)


def entriesOf(data):
    with zipfile.ZipFile(io.BytesIO(data)) as archive:
        return {name: archive.read(name) for name in archive.namelist()}


def container(data, chance, other):
    """A container of which one entry has been changed, and sometimes its bytes."""
    if chance.random() < 0.1:
        return chance.choice(BINARY)(data, chance, other)
    entries, others = entriesOf(data), entriesOf(other)
    name = chance.choice(sorted(entries))
    stranger = others.get(name) or others["manifest.json"]
    how = chance.choice(TEXT if name == "manifest.json" else BINARY)
    entries[name] = how(entries[name], chance, stranger)
    result = io.BytesIO()
    with zipfile.ZipFile(result, "w", zipfile.ZIP_DEFLATED) as archive:
        for entry, content in entries.items():
            archive.writestr(entry, content)
    return result.getvalue()


def mutated(name, data, chance, other):
    """`data` of the file `name`, changed in one to three places; `other` is another file of its kind."""
    isContainer = name.rsplit(".", 1)[1].startswith("zen")
    for _ in range(chance.choice((1, 1, 1, 2, 3))):
        try:
            data = container(data, chance, other) if isContainer else chance.choice(TEXT)(data, chance, other)
        except UNREADABLE:
            return data
    return data
