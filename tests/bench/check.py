"""check.py BENCH: the report writer in the folder BENCH makes the page stored here of the results stored here; it refuses what it
cannot place; and the tree's own text has a section for every benchmark."""

import json
import pathlib
import subprocess
import sys
import tomllib

HERE = pathlib.Path(__file__).resolve().parent
BENCH = pathlib.Path(sys.argv[1])


def report(*words):
    return subprocess.run([sys.executable, "-B", BENCH / "report.py", *words], capture_output=True, text=True, check=False)


def refuses(results, data, message):
    run = subprocess.run([sys.executable, "-B", BENCH / "report.py", "/dev/stdin", data], input=json.dumps(results),
                         capture_output=True, text=True, check=False)
    assert run.returncode == 1 and message in run.stderr and not run.stdout, run


made = report(HERE / "results.json", HERE / "report.toml")
assert made.returncode == 0, made.stderr
expected = (HERE / "page.md").read_text(encoding="utf-8")
for line, (got, wanted) in enumerate(zip(made.stdout.split("\n"), expected.split("\n")), 1):
    assert got == wanted, f"page.md:{line}: expected\n  {wanted}\nand got\n  {got}"
assert made.stdout == expected, "the page is longer or shorter than page.md"

refuses({"machine": {}, "programs": {"Knots": {}}, "failed": {}}, HERE / "report.toml", "no section has Knots")
refuses([], HERE / "missing.toml", "missing.toml")
everything = {path.name.removesuffix("Bench.cpp"): {} for path in BENCH.glob("*Bench.cpp")}
whole = subprocess.run([sys.executable, "-B", BENCH / "report.py", "/dev/stdin"], text=True, capture_output=True, check=False,
                       input=json.dumps({"machine": {}, "programs": everything, "failed": {}}))
assert whole.returncode == 0, whole.stderr
sections = tomllib.loads((BENCH / "report.toml").read_text(encoding="utf-8"))["section"]
assert sorted(everything) == sorted(name for section in sections for name in section["programs"])
