#!/usr/bin/env python3
"""bench/report.py RESULTS [DATA]

Prints the page docs/performance.md. The figures come from RESULTS, which tools/bench leaves in build/release/bench/results.json;
the sections, their text and the goals come from DATA, bench/report.toml unless named.
"""

import json
import math
import pathlib
import re
import sys
import tomllib

UNITS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def time_text(nanoseconds):
    unit = next((u for u in ("s", "ms", "us") if nanoseconds >= UNITS[u]), "ns")
    return f"{nanoseconds / UNITS[unit]:.3g} {unit}"


def time_of(text):
    number, unit = text.split()
    return float(number) * UNITS[unit]


def number_text(number):
    return f"{number:.2g}" if number < 1 else f"{number:.3g}"


def range_text(numbers, text=number_text):
    low, high = text(min(numbers)), text(max(numbers))
    return low if low == high else f"{low} to {high}"


class Row:
    """What one benchmark measured: a task, which is its family and its input, and the median time of each who did it."""

    def __init__(self, task):
        self.task = task
        self.velum = None
        self.peers = {}

    @property
    def title(self):
        return self.task.replace("/", " ").strip()

    @property
    def size(self):
        """(what grows, how large it is here), or None where the input does not end in a number of its own."""
        found = re.fullmatch(r"(.*[/ _])(\d+(?:e\d+)?)", self.task)
        return found and (found[1].rstrip("/_ ").replace("/", " "), float(found[2]))


def rows_of(times):
    """The rows of {"Family/who/input": nanoseconds}, in order of their tasks."""
    rows = {}
    for name, time in times.items():
        family, who, *rest = name.split("/")
        row = rows.setdefault("/".join([family, *rest]), Row("/".join([family, *rest])))
        if who == "velum":
            row.velum = time
        else:
            row.peers[who] = time
    return sorted(rows.values(), key=lambda row: (row.size or (row.title, 0)))


def growth_of(rows):
    """{what grows: {who: [(size, time), ...]}} of all that were run on more than one size."""
    families = {}
    for row in rows:
        if row.size:
            what, size = row.size
            for who, time in {"velum": row.velum, **row.peers}.items():
                if time is not None:
                    families.setdefault(what, {}).setdefault(who, []).append((size, time))
    grown = {what: {who: sorted(runs) for who, runs in by.items() if len(runs) > 1} for what, by in families.items()}
    return {what: by for what, by in grown.items() if "velum" in by}


def exponent(runs):
    """The slope of the line through the logarithms, by least squares: time grows with this power of the size."""
    xs, ys = [math.log(n) for n, _ in runs], [math.log(t) for _, t in runs]
    x0, y0 = sum(xs) / len(xs), sum(ys) / len(ys)
    return sum((x - x0) * (y - y0) for x, y in zip(xs, ys)) / sum((x - x0) ** 2 for x in xs)


def tenfold(runs):
    """How often the time of ten times the size has that of the size, from each size to the next."""
    return [(t1 / t0) ** (1 / math.log10(n1 / n0)) for (n0, t0), (n1, t1) in zip(runs, runs[1:])]


class Goal:
    """A bound that some rows keep or not: `ratio` to the peers, `time`, or `tenfold`, the growth of the time with the size."""

    def __init__(self, data):
        unknown = data.keys() - {"what", "rows", "peers", "ratio", "time", "tenfold", "why"}
        if unknown or "what" not in data or "rows" not in data or len(data.keys() & {"ratio", "time", "tenfold"}) != 1:
            sys.exit(f"bench/report.py: a goal needs what, rows and one of ratio, time, tenfold: {data}")
        self.data = data
        self.text = time_text
        if "time" in data:
            self.bound = time_of(data["time"])
        else:
            self.bound = data.get("ratio", data.get("tenfold"))
            self.text = number_text

    def is_for(self, row, peer=None):
        return (re.fullmatch(self.data["rows"], row.task) is not None
                and (peer is None or re.fullmatch(self.data.get("peers", ".*"), peer) is not None))

    def figures(self, rows):
        if "tenfold" in self.data:
            return [step for by in growth_of([r for r in rows if self.is_for(r)]).values() for step in tenfold(by["velum"])]
        measured = [row for row in rows if row.velum is not None and self.is_for(row)]
        if "time" in self.data:
            return [row.velum for row in measured]
        return [row.velum / time for row in measured for peer, time in row.peers.items() if self.is_for(row, peer)]

    def is_met(self, figure):
        """Judged as it is shown: what rounds to the goal keeps it."""
        return figure <= self.bound or self.text(figure) == self.text(self.bound)

    def verdict(self, figure):
        return f"{self.text(self.bound)}, {'met' if self.is_met(figure) else '**missed**'}"


def table(head, rows):
    return ["| " + " | ".join(cells) + " |" for cells in (head, ["---"] * len(head), *rows)]


def task_lines(rows, goals):
    """A line for each row and peer: task, Velum, peer, ratio, goal."""
    for row in rows:
        ours = time_text(row.velum) if row.velum is not None else ""
        timed = [g for g in goals if "time" in g.data and g.is_for(row)] if ours else []
        told = ", ".join(g.verdict(row.velum) for g in timed)
        if not row.peers:
            yield [row.title, ours, "", "", told]
        for peer, time in row.peers.items():
            ratio = row.velum / time if ours else None
            judged = [g.verdict(ratio) for g in goals if ours and "ratio" in g.data and g.is_for(row, peer)]
            yield [row.title, ours, f"{peer} {time_text(time)}", number_text(ratio) if ours else "",
                   ", ".join(judged + ([told] if told else []))]


def growth_lines(rows):
    for what, by in growth_of(rows).items():
        runs = by["velum"]
        others = ", ".join(f"{who} {exponent(r):.2f}" for who, r in by.items() if who != "velum")
        yield [what, f"{runs[0][0]:g} to {runs[-1][0]:g}", f"{exponent(runs):.2f}", others]


def goal_lines(sections, rows):
    for section in sections:
        for goal in section["goals"]:
            figures = goal.figures(rows[section["title"]])
            met = sum(goal.is_met(f) for f in figures)
            verdict = "not run" if not figures else "met" if met == len(figures) else f"**missed** by {len(figures) - met} of {len(figures)}"
            yield goal, [goal.data["what"], goal.text(goal.bound), range_text(figures, goal.text) if figures else "", verdict]


def page(results, data):
    sections = data["section"]
    placed = {program for section in sections for program in section["programs"]}
    if missing := results["programs"].keys() - placed:
        sys.exit(f"bench/report.py: no section has {', '.join(sorted(missing))}")
    for section in sections:
        section["goals"] = [Goal(goal) for goal in section.pop("goal", [])]
    rows = {section["title"]: rows_of({name: time for program in section["programs"]
                                       for name, time in results["programs"].get(program, {}).items()})
            for section in sections}

    lines = ["# Performance", "", *data["head"].strip().split("\n"), "", "## Machine", ""]
    lines += table(["", ""], results["machine"].items())
    judged = list(goal_lines(sections, rows))
    run = [cells for _, cells in judged if cells[3] != "not run"]
    lines += ["", "## Goals", "", f"{sum(cells[3] == 'met' for cells in run)} of {len(run)} are met by all of their rows. "
              "A figure without a unit is the ratio of Velum's time to the peer's, or how often the time of ten times the input "
              "holds that of the input.", ""]
    lines += table(["goal", "at most", "found", ""], [cells for _, cells in judged])
    behind = [f"- {goal.data['what']}: {' '.join(goal.data['why'].split())}" for goal, cells in judged
              if cells[3] not in ("met", "not run") and "why" in goal.data]
    if behind:
        lines += ["", "What stops those that are behind:", "", *behind]
    for section in sections:
        lines += ["", f"## {section['title']}", ""]
        if "text" in section:
            lines += [*section["text"].strip().split("\n"), ""]
        lines += table(["task", "Velum", "peer", "ratio", "goal"], task_lines(rows[section["title"]], section["goals"]))
        grown = list(growth_lines(rows[section["title"]]))
        if grown:
            lines += ["", "Time grows with this power of the size, fitted over all sizes:", "",
                      *table(["what", "sizes", "Velum", "peers"], grown)]
    if results["failed"]:
        lines += ["", "## Not run", "", *(f"- {row}: {why}" for row, why in results["failed"].items())]
    return "\n".join(lines) + "\n"


def main():
    if len(sys.argv) not in (2, 3) or sys.argv[1] in ("-h", "--help"):
        asked = len(sys.argv) == 2
        print(__doc__.strip(), file=sys.stdout if asked else sys.stderr)
        sys.exit(0 if asked else 2)
    data = pathlib.Path(sys.argv[2]) if len(sys.argv) == 3 else pathlib.Path(__file__).with_name("report.toml")
    try:
        results = json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"))
        sys.stdout.write(page(results, tomllib.loads(data.read_text(encoding="utf-8"))))
    except (OSError, ValueError) as error:
        sys.exit(f"bench/report.py: {error}")


if __name__ == "__main__":
    main()
