#!/usr/bin/env python3
"""Installs a build below a temporary folder, looks at what lies where, and spends a first day there.

Usage: tests/packages/installed.py BUILD
"""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

from daily import SOURCE, Failed, Place, first_day

# What others rely on; the private folder is looked at by using it.
EXPECTED = [
    "bin/arkin", "bin/zentrel",
    "lib/systemd/system/arkin-worker@.service", "lib/systemd/user/arkin-worker.service",
    "share/applications/arkin-worker.desktop", "share/applications/zentrel-info.desktop",
    "share/mime/packages/zentrel.xml", "share/icons/hicolor/scalable/mimetypes/application-x-zentrel-part.svg",
]
# The folders of the file hierarchy standard in which a package may put something.
HIERARCHY = {"bin", "lib", "share"}


def check_layout(prefix):
    if extra := {path.name for path in prefix.iterdir()} - HIERARCHY:
        raise Failed(f"Something lies outside the file hierarchy: {extra}")
    for name in EXPECTED:
        if not (prefix / name).exists():
            raise Failed(f"{name} isn't installed, or its link leads nowhere.")
    for path in prefix.rglob("*"):
        if path.is_symlink() and (os.readlink(path).startswith("/") or not path.exists()):
            raise Failed(f"{path} is a link to {os.readlink(path)}.")
        if path.is_file() and not path.is_symlink():
            check_file(path)


def check_file(path):
    """Nothing that is installed knows where it was built, or looks for libraries elsewhere than the system does."""
    data = path.read_bytes()
    if str(SOURCE).encode() in data:
        raise Failed(f"{path} names the folder {SOURCE} in which it was built.")
    if data.startswith(b"\x7fELF"):
        dynamic = subprocess.run(["readelf", "-d", path], stdout=subprocess.PIPE, text=True, check=True).stdout
        if "RUNPATH" in dynamic or "RPATH" in dynamic:
            raise Failed(f"{path} has a search path of its own for libraries.")


def check_service(place, folder):
    """'arkin workers --start' starts the user's service where the unit lies beside the program."""
    fake = folder / "systemctl"
    fake.write_text('#!/bin/sh\necho "$@" >> ~/asked\n[ "$2" = start ] || exit 3\n')
    fake.chmod(0o755)
    manager = ("(timeout 30 sh -c 'until grep -q start ~/asked; do sleep 0.1; done' 2>/dev/null && "
               "exec arkin worker >/dev/null 2>&1) &")
    told = place.run(f"{manager} PATH={folder}:$PATH arkin workers --start")
    told += place.run(f"arkin workers --stop {told.split()[9]} --when now && cat asked")
    if "waiting" not in told or not told.endswith("--user is-active arkin-worker.service\n"
                                                  "--user start arkin-worker.service\n"):
        raise Failed(f"'arkin workers --start' didn't start the service:\n{told}")


def main(build):
    with tempfile.TemporaryDirectory() as folder:
        staged = Path(folder, "staged")
        subprocess.run(["cmake", "--install", build, "--prefix", "/usr", "--strip"], check=True,
                       stdout=subprocess.DEVNULL, env=dict(os.environ, DESTDIR=str(staged)))
        # The tree works wherever it is moved.
        prefix = (staged / "usr").rename(Path(folder, "moved"))
        check_layout(prefix)
        home = Path(folder, "home")
        home.mkdir()
        place = Place(Path("/"), str(home), f"{prefix}/bin:/usr/bin:/bin")
        first_day(place, f"{prefix}/share/doc/zentrel/examples")
        check_service(place, Path(folder))


if __name__ == "__main__":
    try:
        main(sys.argv[1])
    except Failed as failure:
        sys.exit(f"{failure}")
