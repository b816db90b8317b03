"""Draws which folder of the library includes which, as layering.py finds it.

Usage: includes_picture.py TREE PICTURE [--update]. Ends with status 1 when PICTURE is not the drawing of the tree; --update writes it.
"""

import pathlib
import sys

import layering

WIDTH, HEIGHT = 96, 40  # of a cell
BOX = 86, 26
MARGIN = 12
HEAD = 56  # what stands above the first cell
FONT = 'font-family="DejaVu Sans, Helvetica, sans-serif"'
DOWN, UP = "#2f5d8a", "#c0561b"


def middle(column, row):
    return MARGIN + WIDTH * column + WIDTH // 2, HEAD + HEIGHT * row + HEIGHT // 2


def arrow(at, to):
    """From the folder in place `at`, along its row to the column of the other, and along that to the other's box."""
    (x0, y0), (x1, y1) = middle(at, at), middle(to, to)
    colour, side = (DOWN, 1) if to < at else (UP, -1)
    tip = y1 + side * BOX[1] // 2
    return (f'<path d="M{x0 - side * BOX[0] // 2} {y0}H{x1}V{tip + side * 6}" fill="none" stroke="{colour}" stroke-width="1.2"/>\n'
            f'<path d="M{x1} {tip}l-4 {side * 7}h8z" fill="{colour}"/>\n'
            f'<circle cx="{x1}" cy="{y0}" r="5" fill="{colour}"/>\n')


def box(place, folder):
    x, y = middle(place, place)
    return (f'<rect x="{x - BOX[0] // 2}" y="{y - BOX[1] // 2}" width="{BOX[0]}" height="{BOX[1]}" rx="4" fill="#e8eef4" '
            f'stroke="#34495e"/>\n<text x="{x}" y="{y + 4}" font-size="13" text-anchor="middle" fill="#1b2733">{folder}</text>\n')


def drawing(tree):
    order = sum(layering.ROWS, [])
    edges = sorted((order.index(one), order.index(other)) for one, other in layering.folders(tree))
    width, height = 2 * MARGIN + WIDTH * len(order), HEAD + HEIGHT * len(order) + MARGIN
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}" {FONT}>\n'
            "<title>Which folder of the library includes which</title>\n"
            f'<rect width="{width}" height="{height}" fill="#ffffff"/>\n'
            f'<text x="{MARGIN + 5}" y="26" font-size="13" fill="{DOWN}">The folders of velum/ include those that their arrows lead to.</text>\n'
            f'<text x="{MARGIN + 5}" y="46" font-size="13" fill="{UP}">Only a few files, listed by name in tests/layering.py, need a '
            "higher folder; no circle of files comes of it.</text>\n"
            + "".join(arrow(*edge) for edge in edges) + "".join(box(*place) for place in enumerate(order)) + "</svg>\n")


def main():
    if len(sys.argv) not in (3, 4) or sys.argv[3:] not in ([], ["--update"]):
        sys.exit(__doc__)
    drawn = drawing(pathlib.Path(sys.argv[1]).resolve())
    picture = pathlib.Path(sys.argv[2])
    if sys.argv[3:]:
        picture.write_text(drawn)
    elif not picture.exists() or picture.read_text() != drawn:
        sys.exit(f"{picture} shows other includes than the tree has; run python3 tests/includes_picture.py . {picture} --update")


if __name__ == "__main__":
    main()
