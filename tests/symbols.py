"""Compares what a shared library exports with the list in the tree.

Usage: symbols.py LIBRARY LIST [--update]. --update rewrites the list; without it a difference is printed and ends with status 1.
"""

import pathlib
import subprocess
import sys


def exported(library):
    table = subprocess.run(["nm", "-D", "--defined-only", "--demangle", "--format=posix", library],
                           check=True, capture_output=True, text=True).stdout
    names = set()
    for line in table.splitlines():
        # "name kind value size", and the demangled name may hold blanks.
        name, kind = line.rsplit(maxsplit=3)[0:2] if not line.endswith(" ") else line.split(" A ")[0:2]
        if kind != "A":
            names.add(name.split("@@")[0])
    return names


def main():
    if len(sys.argv) not in (3, 4) or sys.argv[3:] not in ([], ["--update"]):
        sys.exit(__doc__)
    listed = pathlib.Path(sys.argv[2])
    now = exported(sys.argv[1])
    if sys.argv[3:]:
        listed.write_text("".join(f"{name}\n" for name in sorted(now)))
    before = set(listed.read_text().splitlines())
    for name in sorted(before - now):
        print("gone: ", name)
    for name in sorted(now - before):
        print("new:  ", name)
    if now != before:
        sys.exit("the exported names differ from the list; tools/symbols rewrites it when that is meant")
    print(len(now), "exported names, as listed")


if __name__ == "__main__":
    main()
