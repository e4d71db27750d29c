#!/usr/bin/env python3
"""Checks that every relative link of the project's documents leads somewhere: to a file, and in it to a
heading. Exit code 0: all do."""
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
LINK = re.compile(r"\]\(([^)\s]+)\)")
FENCE = re.compile(r"^```.*?^```", re.MULTILINE | re.DOTALL)


def anchors(page):
    """The names under which a page's headings are reached."""
    headings = re.findall(r"^#+ +(.*)$", FENCE.sub("", page.read_text()), re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def trouble(page, link):
    file, _, heading = link.partition("#")
    target = (page.parent / file).resolve() if file else page
    if not target.exists():
        return "no such file"
    if heading and heading not in anchors(target):
        return "no such heading"
    return None


def main():
    pages = [page for page in sorted(ROOT.rglob("*.md")) if "build" not in page.relative_to(ROOT).parts]
    checked = bad = 0
    for page in pages:
        for link in LINK.findall(FENCE.sub("", page.read_text())):
            if "://" in link:
                continue
            checked += 1
            why = trouble(page, link)
            if why:
                bad += 1
                print(f"{page.relative_to(ROOT)}: {link}: {why}", file=sys.stderr)
    print(f"{checked} links in {len(pages)} documents, {bad} lead nowhere")
    return bad > 0 or checked == 0


if __name__ == "__main__":
    sys.exit(main())
