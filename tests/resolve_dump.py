"""Holds tools/resolve-dump against dumps that are whole, foreign, cut and hostile.

Usage: resolve_dump.py TOOL PROGRAM, with a program that has debug information and a function `main`.
"""

import pathlib
import re
import subprocess
import sys
import tempfile

HEAD = "Velum crash dump 1\nApplication: Gridder\nTime: 2026-11-23 14:05:33 UTC\n\n"
CRASH = "Exception Info\n--------------\nCode = c0000005 (Access Violation)\n\n"


def main_of(program):
    """Where a program has its main, counted from its first byte, and its build ID."""
    table = subprocess.run(["nm", program], check=True, capture_output=True, text=True).stdout
    notes = subprocess.run(["readelf", "-n", program], check=True, capture_output=True, text=True).stdout
    return int(re.search("([0-9a-f]+) T main$", table, re.M)[1], 16), re.search("Build ID: ([0-9a-f]+)", notes)[1]


def dump_of(frames, modules):
    trace = "Stack trace\n-----------\n" + "".join(f"#{i:<3} {address:016x}  {place}\n" for i, (address, place) in enumerate(frames))
    loaded = "Loaded modules\n--------------\n" + "".join(f"{b:016x}-{e:016x}  {i}  {p}\n" for b, e, i, p in modules)
    # What a log says is no part of a dump.
    log = "Last log lines\n--------------\nStack trace\n-----------\n#0   0000000000000001  nothing\n"
    return HEAD + CRASH + trace + "\n" + loaded + "\n" + log


def main():
    tool, program = sys.argv[1:]
    offset, build_id = main_of(program)
    base = 0x7F0000000000
    good = [(base + offset, "child + 0x1"), (base + offset + 1, "child + 0x2"), (7, "(no module)")]
    here = (base, base + (1 << 24), build_id, program)
    line = r"#0   main at [^ ]+:\d+\n#1   main at [^ ]+:\d+\n#2   \(no module\)\n$"
    addressed = CRASH[:-1] + f"Address = {base + offset:#x}\n\n"
    rows = [
        # why, dump, further arguments, status, output, complaint
        ("whole", dump_of(good, [here]), [], 0, "Application: Gridder\n(.*\n)*Code = c0000005 .*\n\n" + line, "^$"),
        ("another build", dump_of(good, [here[:2] + ("00" * 20, program)]), [], 0, r"#0   child \+ 0x1\n", "it has changed since"),
        ("a module that is gone", dump_of(good, [here[:3] + ("/no/such/child",)]), [], 0, r"#0   child \+ 0x1\n",
         "no lines for /no/such/child: it is not there"),
        ("replaced while the program ran", dump_of(good, [here[:3] + (program + " (deleted)",)]), [], 0, line, "^$"),
        ("found elsewhere", dump_of(good, [here[:3] + ("/no/such/" + pathlib.Path(program).name,)]),
         ["--debug", str(pathlib.Path(program).parent)], 0, line, "^$"),
        ("a module that is no ELF file", dump_of(good, [here[:3] + ("/etc/passwd",)]), [], 0, "#0", "it is no 64-bit ELF file"),
        ("what a terminal would obey", dump_of([(7, "\x1b[2Jx\u202e")], []), [], 0, r"#0   \?\[2Jx\?\n", "^$"),
        ("empty", "", [], 1, "^$", "it is no crash dump"),
        ("foreign", "PNG\n", [], 1, "^$", "it is no crash dump"),
        ("newer", HEAD.replace("dump 1", "dump 2"), [], 1, "^$", "of version 2, and this tool reads up to 1"),
        ("cut before its address", HEAD + CRASH + "Stack tr", [], 1, "^$", "it has no stack trace and no address"),
        ("cut behind its address", HEAD + addressed, [], 0, r"Gridder\n(.*\n)*#0   Address = 0x[0-9a-f]+\n\(there is no stack", "^$"),
        ("without a frame", dump_of([], [here]).replace(CRASH, addressed), [], 0, r"#0   main at [^ ]+:\d+\n\(there is no stack", "^$"),
        ("an address beyond all", dump_of([(base, "x")], []).replace("7f0000000000", "7" * 40), [], 1, "^$", "it has no stack trace"),
        ("a wrong option", "", ["--line"], 2, "^$", "unknown option '--line'; see --help"),
        ("an option without its value", "", ["--debug"], 2, "^$", "--debug needs a value"),
        ("no such tool", dump_of(good, [here]), ["--addr2line", "/no/tool"], 1, "^$", "there is no addr2line"),
    ]
    failed = []
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder, "a.dmp")
        for why, dump, arguments, status, output, complaint in rows:
            path.write_text(dump, encoding="utf-8")
            run = subprocess.run([tool, str(path), *arguments], capture_output=True, text=True, check=False)
            if run.returncode != status or not re.search(output, run.stdout) or not re.search(complaint, run.stderr):
                failed.append(f"{why}: status {run.returncode}\n{run.stdout}{run.stderr}")
        for path, complaint in ((folder, "Is a directory"), (folder + "/none", "No such file")):
            run = subprocess.run([tool, path], capture_output=True, text=True, check=False)
            if run.returncode != 1 or complaint not in run.stderr:
                failed.append(f"{complaint}: status {run.returncode}\n{run.stderr}")
    print("\n".join(failed) or f"{len(rows) + 2} dumps, as told")
    sys.exit(bool(failed))


if __name__ == "__main__":
    main()
