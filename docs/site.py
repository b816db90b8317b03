"""Writes the site's pages as Doxygen reads them: site.py TREE FOLDER

The README and the pages of docs/ are copied with their links turned from places in the tree to places in the site. Pages of their
own are made for the gallery, from its list, and for the reference by subsystem, from the README of each folder of velum/. The
sources of the examples become pages too, with links from each name to its reference. A link to what is not in the tree is an error.
"""
import os
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree as xml

tree, folder = (pathlib.Path(argument) for argument in sys.argv[1:])
examples = {e.get("name"): e for e in xml.parse(tree / "examples/gallery/gallery.xml").getroot().iter("example")}
faults = []


def sources(name):
    """The sources of an example, its program first."""
    paths = sorted(p for p in (tree / "examples" / name).iterdir() if p.suffix in (".h", ".cpp"))
    return sorted(paths, key=lambda p: p.stem != name)


def ref(target, text):
    return f'@ref {target} "{text}"'


def link(text, target, page):
    """A link of a page as it is in the site; its text alone where the site has nothing of that place."""
    if re.match(r"\w+:|#", target):
        return f"[{text}]({target})"
    path = pathlib.Path(os.path.normpath((tree / page).parent / target)).relative_to(tree)
    parts = path.parts
    if not (tree / path).exists():
        faults.append(f"{page}: there is no {target}")
    elif path.suffix == ".md" and parts[0] in ("docs", "README.md"):
        return f"[{text}]({path.name})"
    elif path.suffix in (".png", ".svg"):
        return f"[{text}]({path.name})"
    elif parts[0] == "velum" and path.suffix == ".h":
        return ref(path, text.strip("`"))
    elif parts[0] == "velum" and len(parts) == 2:
        return f"[{text}](reference-{parts[1]}.md)"
    elif parts[0] == "examples" and len(parts) == 1:
        return f"[{text}](gallery.md)"
    elif parts[0] == "examples" and parts[1] in examples and len(parts) == 2:
        return ref(f"gallery-{parts[1]}", text)
    elif parts[0] == "examples" and path.suffix in (".h", ".cpp"):
        return f"[{text}]({example_page(path.relative_to('examples'))})"
    return text


def code(match):
    """Code within a line as Doxygen reads it: a quote would end it, and a % before a word vanish."""
    text = re.sub(r"%(?=[A-Za-z])", "%%", match[0])
    return f"`{text}`" if "'" in text else text


def example_page(path):
    """The name that Doxygen gives the page of an example's source."""
    escaped = str(path).replace("_", "__").replace("/", "_2").replace(".", "_8")
    return f"{escaped}-example.html"


def site_text(text, page):
    """A page with its links turned, but for its programs."""
    parts = re.split(r"(^```.*?^```|^    .*?$)", text, flags=re.M | re.S)
    for i in range(0, len(parts), 2):
        parts[i] = re.sub(r"`([^`\n]+)`", code, parts[i])
        parts[i] = re.sub(r"\[((?:[^][]|\[[^][]*\])*)\]\(([^) ]+)\)", lambda m: link(m[1], m[2], page), parts[i])
    return "".join(parts)


def write(name, text):
    (folder / name).write_text(text, encoding="utf-8")


def copy_pages():
    for page in ["README.md"] + sorted(f"docs/{p.name}" for p in (tree / "docs").glob("*.md")):
        title, text = (tree / page).read_text(encoding="utf-8").split("\n", 1)
        name = pathlib.Path(page).name
        write(name, f"{title} {{#page-{pathlib.Path(page).stem}}}\n{site_text(text, page)}")


def words(element):
    return " ".join(element.text.split())


def write_gallery():
    root = xml.parse(tree / "examples/gallery/gallery.xml").getroot()
    text = f"# Gallery {{#gallery}}\n\n{words(root.find('intro'))}\n"
    text += "`tools/demo` draws all of it anew, and tells the time that each took.\n"
    for name, example in examples.items():
        text += f"\n## {example.get('title')} {{#gallery-{name}}}\n\n{words(example.find('story'))}\n\n"
        for picture in example.iter("picture"):
            if not (tree / "docs/pictures" / picture.get("file")).exists():
                faults.append(f"docs/pictures has no {picture.get('file')} of the gallery")
            text += f"![{picture.get('about')}]({picture.get('file')})\n"
        command = "\n".join(line.strip() for line in example.find("command").text.strip().splitlines())
        text += f"\n```text\n{command.replace('{examples}', '../examples')}\n```\n\n"
        names = ", ".join(f'<a href="{example_page(p.relative_to(tree / "examples"))}">{p.name}</a>' for p in sources(name))
        text += f"<details><summary>Sources</summary>{names}</details>\n"
    write("gallery.md", text)


def write_sources():
    """A comment for each source of an example, by which Doxygen makes a page of it."""
    text = ""
    for name in [*examples, "common"]:
        for path in sources(name):
            text += f"/** @example {path.relative_to(tree / 'examples')} */\n"
    write("sources.dox", text)


def write_reference():
    names = sorted(p.parent.name for p in (tree / "velum").glob("*/README.md"))
    for name in names:
        page = f"velum/{name}/README.md"
        text = (tree / page).read_text(encoding="utf-8").split("\n", 1)[1]
        text = re.sub(r"`([A-Z]\w*\.h)`",
                      lambda m: ref(f"velum/{name}/{m[1]}", m[1]) if (tree / f"velum/{name}/{m[1]}").exists() else m[0], text)
        write(f"reference-{name}.md", f"# velum/{name} {{#reference-{name}}}\n{site_text(text, page)}")


def write_layout():
    """Doxygen's own layout with the menu of docs/menu.xml, and what a class or a header is for above its members."""
    subprocess.run(["doxygen", "-l", folder / "layout.xml"], check=True, stdout=subprocess.DEVNULL)
    menu = (tree / "docs/menu.xml").read_text(encoding="utf-8")
    layout = (folder / "layout.xml").read_text(encoding="utf-8")
    for page in sorted(folder.glob("*.md")):
        name = re.match(r"# .* \{#(.*)\}", page.read_text(encoding="utf-8"))[1]
        if page.name != "README.md" and f'"@ref {name}"' not in menu:
            faults.append(f"docs/menu.xml leaves out {name}")
    layout = re.sub(r"<navindex>.*</navindex>", lambda _: menu, layout, flags=re.S)
    layout = re.sub(r' *<detaileddescription title=""/>\n', "", layout)
    write("layout.xml", layout.replace('<briefdescription visible="yes"/>', '<detaileddescription title="About"/>'))


folder.mkdir(parents=True, exist_ok=True)
for old in folder.iterdir():
    old.unlink()
copy_pages()
write_gallery()
write_sources()
write_reference()
write_layout()
if faults:
    sys.exit("\n".join(faults))
