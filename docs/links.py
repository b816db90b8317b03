"""Checks the pages of a site: links.py FOLDER

Tells each link to a file that is not there, or to a place that its page does not have, and each text with a mark of code that was
not read as one; fails if there is any. Links to other hosts are not followed.
"""
import html.parser
import pathlib
import re
import sys
import urllib.parse

CODE = ("code", "pre", "script", "style")  # and a line of a program, which is a div
root = pathlib.Path(sys.argv[1]).resolve()


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.links, self.places, self.marks = [], set(), []
        self.holds_code = []
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        if tag in ("div", *CODE):
            self.holds_code.append(tag in CODE or ("class", "line") in attributes)
        for name, value in attributes:
            if name in ("href", "src", "data") and value:
                self.links.append(value)
            elif name == "id" or (tag == "a" and name == "name"):
                self.places.add(value)

    def handle_endtag(self, tag):
        if tag in ("div", *CODE):
            self.holds_code.pop()

    def handle_data(self, data):
        if not any(self.holds_code) and "`" in data:
            self.marks.append(data.strip())


pages = {path: Page(path) for path in sorted(root.rglob("*.html"))}
links = [(path, link) for path, page in pages.items() for link in page.links]
# The menu of all pages stands in a script.
for path in root.glob("menudata.js"):
    links += [(path, link) for link in re.findall(r'url:"([^"]*)"', path.read_text(encoding="utf-8"))]

faults = {f"{path.relative_to(root)}: '{mark}'" for path, page in pages.items() for mark in page.marks}
checked = 0
for path, link in links:
    parts = urllib.parse.urlsplit(link)
    # Doxygen leads to a list of nested classes from the head of a class whose nested classes are all private.
    if parts.scheme or parts.netloc or link == "#nested-classes":
        continue
    checked += 1
    target = (path.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else path
    place = urllib.parse.unquote(parts.fragment)
    if not target.exists():
        faults.add(f"{path.relative_to(root)}: there is no {link}")
    elif place and target in pages and place not in pages[target].places:
        faults.add(f"{path.relative_to(root)}: {target.name} has no place '{place}'")
if not checked:
    sys.exit(f"{root} holds no links")
if faults:
    sys.exit("\n".join(sorted(faults)))
print(f"{checked} links between {len(pages)} pages lead somewhere")
