#!/usr/bin/env python3
"""Makes the font "LayeredSans" of DejaVu Sans: make_layered_font.py DEJAVU_SANS.ttf RESULT.ttf

Its A is a red B under a green C, its D a red B under a C in the colour of the text (tables COLR and CPAL)."""
import struct
import sys

A, B, C, D = 36, 37, 38, 39  # glyphs
COLOR_OF_TEXT = 0xFFFF


def tables_of(font):
    """The tables by their tags."""
    count = struct.unpack(">H", font[4:6])[0]
    entries = (struct.unpack(">4sIII", font[12 + 16 * i:28 + 16 * i]) for i in range(count))
    return {tag: font[start:start + size] for tag, _, start, size in entries}


def renamed(table):
    """The names, with one of the same length instead of the family's."""
    for encoding in "ascii", "utf-16-be":
        for old, new in ("DejaVu Sans", "LayeredSans"), ("DejaVuSans", "LayeredSan"):
            table = table.replace(old.encode(encoding), new.encode(encoding))
    return table


def font_of(tables):
    """A font file; its check sums, which nobody looks at, are 0."""
    tags = sorted(tables)
    start = 12 + 16 * len(tags)
    directory = struct.pack(">IHHHH", 0x10000, len(tags), 0, 0, 0)
    body = b""
    for tag in tags:
        directory += struct.pack(">4sIII", tag, 0, start + len(body), len(tables[tag]))
        body += tables[tag] + bytes(-len(tables[tag]) % 4)
    return directory + body


def main(source, result):
    with open(source, "rb") as file:
        tables = tables_of(file.read())
    tables[b"name"] = renamed(tables[b"name"])
    header = struct.pack(">HHIIH", 0, 2, 14, 26, 4)
    bases = struct.pack(">HHHHHH", A, 0, 2, D, 2, 2)
    tables[b"COLR"] = header + bases + struct.pack(">HHHHHHHH", B, 0, C, 1, B, 0, C, COLOR_OF_TEXT)
    red, green = bytes([0, 0, 255, 255]), bytes([0, 200, 0, 255])  # blue first
    tables[b"CPAL"] = struct.pack(">HHHHIH", 0, 2, 1, 2, 14, 0) + red + green
    with open(result, "wb") as file:
        file.write(font_of(tables))


main(*sys.argv[1:])
