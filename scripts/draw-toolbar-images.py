#!/usr/bin/env python3
"""Draws the browse dialog's toolbar glyphs (back, forward, list, columns) into the bundle.

Each glyph is designed on a 16-point grid with straight strokes on whole points and drawn at
two device pixels per point, so it is sharp on a 2x display and stays crisp when halved for a
1x one. Usage: scripts/draw-toolbar-images.py [bundle/Resources]
"""
import math
import struct
import sys
import zlib
from pathlib import Path

SCALE = 2  # device pixels per point
SIZE = 16  # points
SAMPLES = 4  # per pixel and axis
INK = (0x3C, 0x3C, 0x43)


def segment_distance(px, py, ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    t = max(0.0, min(1.0, ((px - ax) * dx + (py - ay) * dy) / (dx * dx + dy * dy)))
    return math.hypot(px - (ax + t * dx), py - (ay + t * dy))


def polyline(points, width):
    def inside(x, y):
        return any(segment_distance(x, y, *a, *b) <= width / 2 for a, b in zip(points, points[1:]))
    return inside


def rects(*boxes):
    def inside(x, y):
        return any(left <= x < right and top <= y < bottom for left, top, right, bottom in boxes)
    return inside


GLYPHS = {
    "_internal_left.png": polyline([(10, 3.5), (5.5, 8), (10, 12.5)], 1.75),
    "_internal_right.png": polyline([(6, 3.5), (10.5, 8), (6, 12.5)], 1.75),
    # Three rows, each a bullet and a line.
    "_internal_list.png": rects(*[box for top in (3, 7, 11)
                                  for box in ((2, top, 4, top + 2), (5, top, 14, top + 2))]),
    # A frame split into three columns.
    "_internal_column.png": rects((1, 2, 15, 3), (1, 13, 15, 14), (1, 2, 2, 14), (14, 2, 15, 14),
                                  (5, 2, 6, 14), (10, 2, 11, 14)),
}


def coverage(inside, px, py):
    hits = 0
    for sy in range(SAMPLES):
        for sx in range(SAMPLES):
            x = (px + (sx + 0.5) / SAMPLES) / SCALE
            y = (py + (sy + 0.5) / SAMPLES) / SCALE
            hits += inside(x, y)
    return hits / (SAMPLES * SAMPLES)


def png(pixels, width, height):
    rows = b"".join(b"\0" + bytes(pixels[y * width * 4:(y + 1) * width * 4]) for y in range(height))
    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF))
    return (b"\x89PNG\r\n\x1a\n" +
            chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def main():
    folder = Path(sys.argv[1] if len(sys.argv) > 1 else "bundle/Resources")
    side = SIZE * SCALE
    for name, inside in GLYPHS.items():
        pixels = []
        for py in range(side):
            for px in range(side):
                pixels += [*INK, round(255 * coverage(inside, px, py))]
        (folder / name).write_bytes(png(pixels, side, side))


if __name__ == "__main__":
    main()
