#!/usr/bin/env python3
"""Checks that the user guide names what the plug-in and its installer can say to an operator: each message,
each text of a state, each file dialog's title, each result code of a download, each picture that is made.
Exit code 0: it does."""
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
SPOKEN = ("window", "model", "plugin", "editors")
# Not said to the operator: what a number's reader tells its caller, what would be our own mistake, kinds
# of files, lists of options.
UNSPOKEN = re.compile(
    r"^(not a number|number out of range|hexadecimal number out of range|no hexadecimal digits"
    r"|division by zero|number leaves 16 bits|The serial port is not open"
    r"|The serial port's output buffer is full|\w+ Files \(|\d,)"
)


def plain(text):
    return re.sub(r"\s+", " ", text)


def literals(source):
    """The texts of a source file; neighbours are one text, as for the compiler."""
    without_comments = re.sub(r"^\s*(//|#).*$", "", source, flags=re.MULTILINE)
    joined = re.sub(r'"\s*\n\s*L?"', "", without_comments)
    for text in LITERAL.findall(joined):
        yield from (part.replace('\\"', '"') for part in re.split(r"\\r\\n", text))


def messages():
    """Texts of several words, and the states."""
    for folder in SPOKEN:
        for file in sorted((ROOT / "src" / folder).glob("*.[ch]*")):
            for text in literals(file.read_text()):
                words = text.split()
                if len(words) > 2 and not UNSPOKEN.match(text):
                    yield file.name, text.strip()
    status = (ROOT / "src/plugin/status_text.cpp").read_text()
    yield from (("status_text.cpp", text.strip()) for text in literals(status) if "/" not in text)
    for text in re.findall(r'MessageBox \S+ "([^"]*)"', (ROOT / "packaging/functions.nsh").read_text()):
        yield "functions.nsh", text.replace("$R0", "32").replace("$R2", "...")


def result_codes():
    source = (ROOT / "src/model/AppDownload.cpp").read_text()
    return re.findall(r"= 0x(8004[0-9A-F]{4})", source)


def main():
    guide = plain((ROOT / "docs/user-guide.md").read_text())
    said = [*messages(), *(("AppDownload.cpp", code) for code in result_codes())]
    said += [("docs/pictures", picture.name) for picture in (ROOT / "docs/pictures").glob("*.png")]
    missing = [(where, text) for where, text in said if plain(text) not in guide]
    for where, text in missing:
        print(f"{where}: the user guide does not name: {text}", file=sys.stderr)
    print(f"{len(said)} messages, codes and pictures, {len(missing)} of them not in the user guide")
    return bool(missing) or len(said) < 50


if __name__ == "__main__":
    sys.exit(main())
