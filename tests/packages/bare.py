#!/usr/bin/env python3
"""Spends a first day in a bare system where the packages are installed; called by tests/packages/run.

Usage: tests/packages/bare.py ROOT
"""

import sys
from pathlib import Path

from daily import Failed, Place, first_day

if __name__ == "__main__":
    ROOT = Path(sys.argv[1])
    USER = ["chroot", "--userspec=eva:eva", str(ROOT)]
    try:
        first_day(Place(ROOT, "/home/eva", "/usr/local/bin:/usr/bin:/bin", USER))
    except Failed as failure:
        sys.exit(f"{failure}")
