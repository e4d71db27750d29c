#!/usr/bin/env python3
"""Packs PNG pictures into one Windows icon.

    pack_pictures.py OUT.ico SIZE IN.png [SIZE IN.png]...

Each picture is SIZE x SIZE pixels and stays compressed as it is, which icons may hold since Windows
Vista. Exit code 1 and a message when a file is missing, is no PNG or has another size.
"""

import struct
import sys

PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"


def read_picture(path, size):
    with open(path, "rb") as file:
        data = file.read()
    if data[:8] != PNG_SIGNATURE or data[12:16] != b"IHDR":
        raise ValueError(f"{path}: no PNG")
    width, height = struct.unpack(">II", data[16:24])
    if (width, height) != (size, size):
        raise ValueError(f"{path}: {width} x {height}, expected {size} x {size}")
    return data


def icon(pictures):
    offset = 6 + 16 * len(pictures)
    directory = struct.pack("<HHH", 0, 1, len(pictures))
    images = b""
    for size, path in pictures:
        image = read_picture(path, size)
        start = offset + len(images)
        directory += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(image), start)
        images += image
    return directory + images


def main(arguments):
    if len(arguments) < 3 or len(arguments) % 2 == 0:
        sys.exit(__doc__)
    data = icon(list(zip(map(int, arguments[1::2]), arguments[2::2])))
    with open(arguments[0], "wb") as file:
        file.write(data)


if __name__ == "__main__":
    try:
        main(sys.argv[1:])
    except (OSError, ValueError) as error:
        sys.exit(f"pack_pictures: {error}")
