"""What gdb shows of a program's values, held against what their users would write.

Usage: check.py PROGRAM [PRINTERS]. Without PRINTERS gdb must find those that are installed by itself. Ends with status 77 where
the system lets no program trace another.
"""

import subprocess
import sys

EXPECTED = [
    ("text", '"Köln \\"1\\""'),
    ("point", "(1.5, -2)"),
    ("space", "(1, 2, 3)"),
    ("box", "[(0, 0.25) .. (10, 20)]"),
    ("plane", "{(1, 0, 0), (0, 1, 0), (4, 5, 1)}"),
    ("solid", "{(1, 0, 0, 0), (0, 1, 0, 0), (0, 0, 1, 0), (0, 0, 0, 1)}"),
    ("turn", "(0, 0, 1, 2)"),
    ("four", "(1, 2, 3, 4)"),
    ("light", "(0.5, 0.25, 0, 1)"),
    ("colour", "(255, 128, 0, 64)"),
    ("third", "0.33333333333333331 + 1.8503717077085941e-17"),
    ("row", "RVector of 3 = {0, 0.5, 1}"),
    ("table", "RMatrix of 2 x 2 = {(0, 1), (2, 3)}"),
]


def main():
    program, printers = sys.argv[1], sys.argv[2:]
    command = ["gdb", "-nx", "-batch", "-ex", "set breakpoint pending on", "-ex", "set charset UTF-8"]
    command += ["-ex", "source " + printers[0]] if printers else []
    command += ["-ex", "break Look", "-ex", "run", "-ex", "up"]
    for name, _ in EXPECTED:
        command += ["-ex", "echo @%s\\n" % name, "-ex", "output " + name, "-ex", "echo \\n"]
    run = subprocess.run(command + [program], capture_output=True, text=True, timeout=120)
    if "ptrace: Operation not permitted" in run.stderr:
        print("no program may be traced here")
        sys.exit(77)
    lines = run.stdout.split("\n")
    wrong = 0
    for name, wanted in EXPECTED:
        shown = lines[lines.index("@" + name) + 1] if "@" + name in lines else "nothing"
        if shown != wanted:
            print("%s: %s, not %s" % (name, shown, wanted))
            wrong += 1
    if wrong:
        print(run.stdout, run.stderr, sep="\n")
        sys.exit("%d values are shown otherwise" % wrong)


main()
