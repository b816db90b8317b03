"""Holds the tree against the rules of the house: which folder includes which, without a circle, what a public header may pull in,
and what each folder's README.md tells of its headers and includes.

Usage: layering.py TREE. Prints each breach with its place and ends with status 1 when there is one.
"""

import collections
import graphlib
import pathlib
import re
import sys

# From the lowest row to the highest; a folder includes those on its own row and below, in a row those before it. A file that
# needs one from a higher row is listed here by name, with the reason beside it.
ROWS = [
    ["platform"],
    ["core"],
    ["geometry", "colour"],
    ["files"],
    ["dates", "numerics"],
    ["commands"],
    ["diagnostics"],
    ["fonts"],
    ["mathtext"],
]
UPWARD = {
    # file: {headers from a higher row}
    # Polygons are written to files and read from them; their headers only name the file.
    "velum/geometry/GPolygon.h": {"velum/files/Forward.h"},
    "velum/geometry/GPolygon.cpp": {"velum/files/BufferedFile.h"},
    "velum/geometry/GPolygon2d.h": {"velum/files/Forward.h"},
    "velum/geometry/GPolygon2dFiles.cpp": {"velum/files/BufferedFile.h"},
    # A bitmap is written to files and read from them; its header only names the file.
    "velum/colour/Dib.h": {"velum/files/Forward.h"},
    "velum/colour/Dib.cpp": {"velum/files/File.h", "velum/files/detail/FileError.h"},
    # The colour table is a file of settings, which may lie in any of the places of files.
    "velum/colour/detail/ColorFile.cpp": {"velum/diagnostics/LocateFile.h", "velum/files/ConfigFile.h"},
    # Charts are drawn with the painting classes, in the face that the application has set.
    "velum/numerics/DrawStats.h": {"velum/diagnostics/Forward.h"},
    "velum/numerics/DrawStats.cpp": {
        "velum/diagnostics/GdiPlus.h", "velum/diagnostics/GdiPlusStart.h", "velum/diagnostics/GdiPlusUtil.h"},
    "velum/numerics/detail/ChartPaper.h": {"velum/diagnostics/GdiPlus.h"},
    "velum/numerics/detail/ChartPaper.cpp": {"velum/diagnostics/SystemInfo.h"},
    # The default faces are those that the list of faces gives.
    "velum/diagnostics/SystemInfo.cpp": {"velum/fonts/SystemFaceInfo.h"},
}

SERVICES = re.compile(
    r"^(unistd|fcntl|dlfcn|pthread|langinfo|locale_t|xlocale|execinfo|cpuid|sqlite3|hb|ft2build)\b"
    r"|^(sys|linux|netinet|arpa|unicode|cairo|pango|fontconfig|freetype2?|tbb|oneapi)/"
    r"|^(cairo|pango|hb|fontconfig)[-_a-z]*\.h$"
)
HEAVY = {"regex", "iostream", "filesystem", "sstream"}
# A public header that is about one of them.
ABOUT_IT = {"velum/files/HtmlReport.h": "sstream"}  # the report is a stream into a string
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^">]+)[">]', re.M)


def row_of(folder):
    for number, row in enumerate(ROWS):
        if folder in row:
            return number
    return None


def is_public(path):
    return path.suffix == ".h" and not {"detail", "test"} & set(path.parts) or path.name.endswith(".inl.h")


def breaches(tree):
    umbrella = (tree / "velum/velum.h").read_text()
    for path in sorted((tree / "velum").rglob("*")):
        if path.suffix not in {".h", ".cpp"} or path.parent == tree / "velum":
            continue
        name = path.relative_to(tree)
        folder = name.parts[1]
        in_test = "test" in name.parts
        if row_of(folder) is None:
            yield f"{name}: the folder {folder} has no row"
            continue
        if is_public(name) and not name.name.endswith(".inl.h") and f"<{name}>" not in umbrella:
            yield f"{name}: velum/velum.h does not include it"
        for style, header in INCLUDE.findall(path.read_text()):
            parts = pathlib.PurePosixPath(header).parts
            if style == '"':
                yield f'{name}: includes "{header}" with quotes'
            if parts[0] == "velum":
                if len(parts) > 2 and row_of(parts[1]) is None:
                    yield f"{name}: includes {header}, a folder without a row"
                elif (len(parts) > 2 and not in_test and row_of(parts[1]) > row_of(folder)
                      and header not in UPWARD.get(str(name), ())):
                    yield f"{name}: includes {header}, which stands higher"
                if is_public(name) and "detail" in parts and not header.endswith(".inl.h"):
                    yield f"{name}: a public header includes {header}"
                if not (tree / header).exists():
                    yield f"{name}: includes {header}, which is not there"
            elif SERVICES.match(header) and folder != "platform" and not in_test:
                yield f"{name}: includes {header}; only velum/platform may"
            elif SERVICES.match(header) and is_public(name):
                yield f"{name}: a public header includes {header}"
            elif header in HEAVY and is_public(name) and ABOUT_IT.get(str(name)) != header:
                yield f"{name}: a public header includes <{header}>"


def includes(tree, folders):
    """The files of our own that each file includes; tests aside, which nothing includes."""
    paths = [path for folder in folders for path in (tree / folder).rglob("*") if path.suffix in {".h", ".cpp"}]
    names = {str(path.relative_to(tree)): path for path in paths if "test" not in path.relative_to(tree).parts}
    return {name: [h for _, h in INCLUDE.findall(path.read_text()) if h in names] for name, path in names.items()}


def circles(tree):
    """A header that leads back to itself; and a header with its source that does so through another folder of the library."""
    files = includes(tree, ["velum", "testing", "examples"])
    # A .inl.h is the tail of a header and names that one so that it compiles alone.
    try:
        graphlib.TopologicalSorter({
            name: [h for h in headers if not (name.endswith(".inl.h") and name in files[h])]
            for name, headers in files.items()}).prepare()
    except graphlib.CycleError as error:
        yield " <- ".join(error.args[1])
    pairs = collections.defaultdict(set)
    for name, headers in files.items():
        if name.startswith("velum/") and name != "velum/velum.h":
            pairs[name.split(".")[0]] |= {header.split(".")[0] for header in headers}
    for name, others in pairs.items():
        for other in others:
            if name.split("/")[1] != other.split("/")[1] and name in reachable(pairs, other):
                yield f"{name} -> {other} -> ... -> {name}"


def reachable(graph, start):
    found, ahead = {start}, [start]
    while ahead:
        for name in graph.get(ahead.pop(), set()) - found:
            found.add(name)
            ahead.append(name)
    return found


def folders(tree):
    """Pairs of folders of the library of which the first includes the second."""
    edges = {(name.split("/")[1], header.split("/")[1])
             for name, headers in includes(tree, ["velum"]).items() if name != "velum/velum.h" for header in headers}
    return {(one, other) for one, other in edges if one != other}


def pages(tree):
    """What a folder's README.md does not tell, or tells although it is not so: the headers that users include, the folders that
    it includes itself."""
    edges = folders(tree)
    for folder in sum(ROWS, []):
        here = tree / "velum" / folder
        page = (here / "README.md").read_text()
        included = {other for one, other in edges if one == folder}
        for what, pattern, needed, allowed in (
                ("the header", r"`(?:\w+/)*(\w+\.h)`", {path.name for path in here.glob("*.h")}, {path.name for path in here.rglob("*.h")}),
                ("includes of", r"`velum/(\w+)`", included, included)):
            told = set(re.findall(pattern, page))
            yield from (f"velum/{folder}/README.md: leaves out {what} {name}" for name in sorted(needed - told))
            yield from (f"velum/{folder}/README.md: tells wrongly of {what} {name}" for name in sorted(told - allowed))


def main():
    if len(sys.argv) != 2 or not pathlib.Path(sys.argv[1], "velum").is_dir():
        sys.exit(__doc__)
    tree = pathlib.Path(sys.argv[1]).resolve()
    found = [*breaches(tree), *pages(tree), *(f"circle: {c}" for c in circles(tree))]
    print("\n".join(found) if found else "every include keeps to its row")
    sys.exit(bool(found))


if __name__ == "__main__":
    main()
