#!/usr/bin/env python3
"""Packs rendered pictures into the formats that Windows resources take.

    pack_pictures.py strip OUT.bmp SIZE IN.rgba...         one row of SIZE x SIZE cells, in order
    pack_pictures.py icon  OUT.ico SIZE IN.rgba [SIZE IN.rgba]...   one picture a size

An IN.rgba holds SIZE * SIZE * 4 bytes: red, green, blue, alpha, top row first, colours not
multiplied by alpha. The strip is a 32-bit BI_RGB bitmap with the same straight alpha, which is what
a 32-bit image list takes. Exit code 1 and a message when a file is missing or has the wrong length.
"""

import struct
import sys

HEADER_BYTES = 40
FILE_HEADER_BYTES = 14


def read_rows(path, size):
    """The picture's rows, top first, as lists of (blue, green, red, alpha)."""
    with open(path, "rb") as file:
        data = file.read()
    if len(data) != size * size * 4:
        expected = size * size * 4
        raise ValueError(f"{path}: {len(data)} bytes, expected {expected} for {size} x {size}")
    pixels = []
    for red, green, blue, alpha in struct.iter_unpack("4B", data):
        # A colour nobody sees would still make two equal pictures differ in their bytes.
        pixels.append((blue, green, red, alpha) if alpha else (0, 0, 0, 0))
    return [pixels[start : start + size] for start in range(0, size * size, size)]


def dib_header(width, height, image_bytes):
    fields = (HEADER_BYTES, width, height, 1, 32, 0, image_bytes, 0, 0, 0, 0)
    return struct.pack("<IiiHHIIiiII", *fields)


def bottom_up(rows):
    return b"".join(struct.pack("4B", *pixel) for row in reversed(rows) for pixel in row)


def strip(size, paths):
    cells = [read_rows(path, size) for path in paths]
    rows = [[pixel for cell in cells for pixel in cell[y]] for y in range(size)]
    bits = bottom_up(rows)
    offset = FILE_HEADER_BYTES + HEADER_BYTES
    file_header = struct.pack("<2sIHHI", b"BM", offset + len(bits), 0, 0, offset)
    return file_header + dib_header(size * len(cells), size, len(bits)) + bits


def icon_mask(rows, size):
    """One bit a pixel, set where nothing is drawn; each row fills whole 32-bit words."""
    row_bytes = (size + 31) // 32 * 4
    mask = b""
    for row in reversed(rows):
        bits = 0
        for pixel in row:
            bits = bits << 1 | (pixel[3] == 0)
        mask += (bits << (row_bytes * 8 - size)).to_bytes(row_bytes, "big")
    return mask


def icon(pictures):
    offset = 6 + 16 * len(pictures)
    directory = struct.pack("<HHH", 0, 1, len(pictures))
    images = b""
    for size, path in pictures:
        rows = read_rows(path, size)
        bits = bottom_up(rows) + icon_mask(rows, size)
        # An icon's header counts the colour rows and the mask rows together.
        image = dib_header(size, size * 2, len(bits)) + bits
        start = offset + len(images)
        directory += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(image), start)
        images += image
    return directory + images


def main(arguments):
    if len(arguments) >= 4 and arguments[0] == "strip":
        data = strip(int(arguments[2]), arguments[3:])
    elif len(arguments) >= 4 and len(arguments) % 2 == 0 and arguments[0] == "icon":
        data = icon(list(zip(map(int, arguments[2::2]), arguments[3::2])))
    else:
        sys.exit(__doc__)
    with open(arguments[1], "wb") as file:
        file.write(data)


if __name__ == "__main__":
    try:
        main(sys.argv[1:])
    except (OSError, ValueError) as error:
        sys.exit(f"pack_pictures: {error}")
