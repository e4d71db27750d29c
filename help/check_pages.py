#!/usr/bin/env python3
"""Every page of the help is in the project file and the contents, and every link leads to a page."""
import html.parser
import pathlib
import re
import sys

here = pathlib.Path(__file__).parent
faults = []


class Links(html.parser.HTMLParser):
    """Collects targets, and checks that elements are closed in their order."""

    EMPTY = {"meta", "link", "br", "param"}

    def __init__(self, name):
        super().__init__()
        self.name = name
        self.targets = []
        self.open = []
        self.titles = []

    def handle_starttag(self, tag, attributes):
        if tag not in self.EMPTY:
            self.open.append(tag)
        values = dict(attributes)
        for key in ("href", "src"):
            if values.get(key):
                self.targets.append(values[key])

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            faults.append(f"{self.name}: </{tag}> closes nothing, line {self.getpos()[0]}")

    def handle_data(self, data):
        if self.open and self.open[-1] in ("title", "h1"):
            self.titles.append(data)


def locals_of(name):
    return re.findall(r'name="Local" value="([^"]+)"', (here / name).read_text(encoding="utf-8"))


pages = sorted(path.name for path in here.glob("*.html"))
project = (here / "Quillon.hhp").read_text(encoding="utf-8")
listed = project.split("[FILES]")[1].split()
contents = locals_of("contents.hhc")

for page in pages:
    links = Links(page)
    links.feed((here / page).read_text(encoding="utf-8"))
    if links.open:
        faults.append(f"{page}: <{links.open[-1]}> is not closed")
    if len(links.titles) != 2 or links.titles[0] != links.titles[1]:
        faults.append(f"{page}: title and heading differ")
    for target in links.targets:
        if not (here / target.split("#")[0]).is_file():
            faults.append(f"{page}: link to {target}")
    if page not in contents:
        faults.append(f"{page}: not in the contents")
for name in listed + contents + locals_of("index.hhk"):
    if not (here / name).is_file():
        faults.append(f"{name}: there is no such page")
for name in pages + ["help.css"]:
    if name not in listed:
        faults.append(f"{name}: not in the project file")

print("\n".join(faults) or f"{len(pages)} pages are in order")
sys.exit(bool(faults))
