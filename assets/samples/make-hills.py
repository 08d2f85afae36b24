#!/usr/bin/env python3
"""Draws install/Samples/hills.png: rows of hills in the haze of a morning, the picture that the screenshots show.

Everything comes from sums of sines, so the file is the same wherever it is drawn.
"""
import math
import struct
import sys
import zlib

WIDTH, HEIGHT = 1200, 760
SKY_TOP, SKY_LOW = (92, 148, 206), (252, 222, 182)
SUN, SUN_COLOR = (860, 250), (255, 244, 214)
# From far to near: height of the ridge, roughness, colour.
RIDGES = [
    (400, 26, (150, 170, 196)),
    (455, 34, (112, 142, 168)),
    (520, 40, (78, 116, 124)),
    (590, 46, (54, 92, 82)),
    (660, 38, (34, 66, 52)),
]


def ridge(x, i):
    base, rough, _ = RIDGES[i]
    waves = ((0.0061, 1.0), (0.0137, 0.55), (0.031, 0.22), (0.083, 0.07), (0.21, 0.03))
    return base + rough * sum(a * math.sin(x * f * (1 + 0.13 * i) + 1.7 * i + 40 * f) for f, a in waves)


def mix(a, b, t):
    t = min(1.0, max(0.0, t))
    return tuple(p + (q - p) * t for p, q in zip(a, b))


def pixel(x, y, ridges):
    for i in range(len(RIDGES) - 1, -1, -1):
        depth = y - ridges[i]
        if depth >= 0:
            # Haze gathers at the foot of a hill, where the next ridge stands before it.
            color = mix(mix(RIDGES[i][2], (255, 250, 236), 0.18), RIDGES[i][2], depth / 18)
            haze = mix(color, SKY_LOW, min(0.5, depth / 260) * (1 - i / len(RIDGES)))
            grain = 5 * math.sin(x * 0.9 + 3 * math.sin(y * 0.7)) * math.sin(y * 1.3) * (i / len(RIDGES))
            return tuple(c + grain for c in haze)
    sky = mix(SKY_TOP, SKY_LOW, (y / 430) ** 1.3)
    distance = math.hypot(x - SUN[0], y - SUN[1])
    glow = math.exp(-((distance / 170) ** 1.2))
    cloud = max(0.0, math.sin(x * 0.011 + 2 * math.sin(y * 0.021)) * math.sin(y * 0.047 + x * 0.003)) ** 2
    sky = mix(mix(sky, (255, 248, 240), 0.35 * cloud), SUN_COLOR, glow)
    return mix(sky, SUN_COLOR, (46 - distance) / 3)


def main():
    columns = [[ridge(x, i) for i in range(len(RIDGES))] for x in range(WIDTH)]
    rows = bytearray()
    for y in range(HEIGHT):
        rows.append(0)
        for x in range(WIDTH):
            rows.extend(min(255, max(0, int(c + 0.5))) for c in pixel(x, y, columns[x]))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 2, 0, 0, 0)
    with open(sys.argv[1], "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(bytes(rows), 9)) + chunk(b"IEND", b""))


main()
