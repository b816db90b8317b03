"""Holds the tree against the rules of the house: which folder includes which, and what a public header may pull in.

Usage: layering.py TREE. Prints each breach with its place and ends with status 1 when there is one.
"""

import pathlib
import re
import sys

# From the lowest row to the highest; a folder includes those on its own row and below. A file that needs one from a higher
# row is listed here by name, with the reason beside it.
ROWS = [
    {"platform"},
    {"core"},
    {"colour", "geometry"},
    {"files"},
    {"numerics", "dates"},
    {"commands"},
    {"diagnostics"},
    {"fonts"},
    {"mathtext"},
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


def circles(tree):
    """Headers that lead back to themselves."""
    graph = {}
    for path in (tree / "velum").rglob("*.h"):
        name = str(path.relative_to(tree))
        graph[name] = [h for _, h in INCLUDE.findall(path.read_text()) if h.startswith("velum/")]
    # A .inl.h is the tail of a header and names that one so that it compiles alone.
    for name in graph:
        if name.endswith(".inl.h"):
            graph[name] = [h for h in graph[name] if name not in graph.get(h, ())]
    done, open_ = set(), []

    def visit(name):
        if name in open_:
            yield " -> ".join(open_[open_.index(name):] + [name])
            return
        if name in done:
            return
        open_.append(name)
        for header in graph.get(name, ()):
            yield from visit(header)
        open_.pop()
        done.add(name)

    for name in sorted(graph):
        yield from visit(name)


def main():
    if len(sys.argv) != 2 or not pathlib.Path(sys.argv[1], "velum").is_dir():
        sys.exit(__doc__)
    tree = pathlib.Path(sys.argv[1]).resolve()
    found = list(breaches(tree)) + [f"circle: {c}" for c in circles(tree)]
    print("\n".join(found) if found else "every include keeps to its row")
    sys.exit(bool(found))


if __name__ == "__main__":
    main()
