#!/usr/bin/env python3
"""Draws the seamless textures of the brushes (install/BrushTexture, grey: white lets all the paint through) and the
patterns (install/Textures, in colour). Run it after changing one; with a folder as its argument it writes there.

Each is a function of (u, v), both in [0, 1) around the tile, so every one meets itself at its edges.
"""
import math
import pathlib
import sys

from noise import Cells, Fractal, Lattice, byte, clamp, hash01, mix, step, write_tiff

TAU = 2 * math.pi
SIZE = 128


# Brush textures: how much paint a place takes, 0..1.

def fine_paper():
    grain, cloud = Lattice(64, 64, 1), Fractal(8, 8, 3, 2)
    return lambda u, v: 0.62 + 0.75 * (grain.at(u, v) - 0.5) + 0.5 * (cloud.at(u, v) - 0.5)


def watercolour_paper():
    cells, wave = Fractal(12, 12, 4, 11, 0.55), Lattice(6, 6, 12)
    return lambda u, v: step(0.28, 0.74, cells.at(u + 0.02 * wave.at(u, v), v))


def chalk_paper():
    tooth = Fractal(24, 24, 3, 21, 0.7)
    return lambda u, v: step(0.42, 0.6, tooth.at(u, v))


def canvas():
    thread = Lattice(32, 32, 31)

    def value(u, v):
        x, y = u * 16, v * 16
        over = (int(x) + int(y)) % 2 == 0
        along, across = (x % 1, y % 1) if over else (y % 1, x % 1)
        lift = math.sin(math.pi * along) ** 0.6 * math.sin(math.pi * across) ** 0.8
        return 0.18 + 0.8 * lift + 0.25 * (thread.at(u, v) - 0.5)
    return value


def linen():
    warp, weft = Lattice(64, 4, 41), Lattice(4, 64, 42)
    return lambda u, v: 0.1 + 0.55 * (warp.at(u, v) + weft.at(u, v)) * (0.85 + 0.15 * math.sin(TAU * 32 * u) * math.sin(TAU * 32 * v))


def burlap():
    warp, weft = Lattice(4, 16, 51), Lattice(16, 4, 52)

    def value(u, v):
        x = u * 10 + 0.35 * (warp.at(u, v) - 0.5)
        y = v * 10 + 0.35 * (weft.at(u, v) - 0.5)
        a, b = abs(math.sin(math.pi * x)), abs(math.sin(math.pi * y))
        over = (int(math.floor(x)) + int(math.floor(y))) % 2
        return clamp((a if over else b) ** 0.7 * (0.55 + 0.45 * (b if over else a)))
    return value


def wood():
    bend, fibre, ring = Fractal(2, 3, 3, 61), Lattice(4, 64, 62), Lattice(2, 16, 63)

    def value(u, v):
        w = v + 0.10 * (bend.at(u, v) - 0.5)
        rings = 0.5 + 0.5 * math.sin(TAU * (6 * w + 0.6 * ring.at(u, v)))
        return 0.25 + 0.5 * rings + 0.45 * (fibre.at(u, v) - 0.5)
    return value


def brick():
    rough, soft = Lattice(48, 48, 71), Fractal(8, 8, 2, 72)

    def value(u, v):
        row = int(v * 8)
        x, y = (u * 4 + 0.5 * (row % 2)) % 4, v * 8 - row
        wobble = 0.03 * (soft.at(u, v) - 0.5)
        edge = min(step(0.03, 0.09, (x % 1) + wobble) * step(0.03, 0.09, 1 - x % 1 + wobble),
                   step(0.06, 0.18, y + wobble) * step(0.06, 0.18, 1 - y + wobble))
        tone = 0.7 + 0.25 * hash01(73, row, int(x))
        return edge * (tone + 0.3 * (rough.at(u, v) - 0.5)) + 0.04
    return value


def grain():
    return lambda u, v: hash01(81, int(u * SIZE + 0.5), int(v * SIZE + 0.5))


def mist():
    cloud = Fractal(4, 4, 5, 91, 0.55)
    return lambda u, v: step(0.25, 0.75, cloud.at(u, v))


def hatch():
    shake = Fractal(6, 6, 2, 101)
    return lambda u, v: step(0.3, 0.62, 0.5 + 0.5 * math.sin(TAU * (12 * u + 12 * v + 0.5 * shake.at(u, v))))


def cross_hatch():
    shake = Fractal(6, 6, 2, 111)

    def value(u, v):
        d = 0.5 * shake.at(u, v)
        a = 0.5 + 0.5 * math.sin(TAU * (10 * u + 10 * v + d))
        b = 0.5 + 0.5 * math.sin(TAU * (10 * u - 10 * v + d))
        return 1 - step(0.45, 0.8, max(a, b))
    return value


def screen_dots():
    def value(u, v):
        x, y = (u + v) * 8, (u - v) * 8
        return step(0.3, 0.55, 0.5 + 0.25 * (math.cos(TAU * x) + math.cos(TAU * y)))
    return value


def leather():
    cells, rough = Cells(11, 121, 0.9), Lattice(48, 48, 122)

    def value(u, v):
        near, next_, _ = cells.at(u, v)
        return step(0.02, 0.28, next_ - near) * (0.95 - 0.35 * near) + 0.2 * (rough.at(u, v) - 0.5)
    return value


def stone():
    cloud, crack, rough = Fractal(4, 4, 5, 131, 0.6), Cells(5, 132), Lattice(64, 64, 133)

    def value(u, v):
        near, next_, _ = crack.at(u, v)
        return (0.35 + 0.9 * (cloud.at(u, v) - 0.28)) * (0.45 + 0.55 * step(0.0, 0.07, next_ - near)) + 0.2 * rough.at(u, v)
    return value


def corduroy():
    fuzz = Lattice(64, 24, 141)
    return lambda u, v: 0.12 + 0.8 * abs(math.sin(math.pi * 12 * u)) ** 0.8 + 0.3 * (fuzz.at(u, v) - 0.5)


def ripples():
    bend = Fractal(3, 3, 3, 151)
    return lambda u, v: 0.5 + 0.48 * math.sin(TAU * (9 * v + 1.1 * bend.at(u, v)))


def splatter():
    big, small = Cells(9, 161, 1.0), Cells(23, 162, 1.0)

    def value(u, v):
        a, _, ia = big.at(u, v)
        b, _, ib = small.at(u, v)
        drop = step(0.12 + 0.3 * hash01(163, ia), 0.05 + 0.3 * hash01(163, ia), a)
        dot = step(0.1 + 0.25 * hash01(164, ib), 0.05 + 0.2 * hash01(164, ib), b)
        return max(drop, dot)
    return value


BRUSH_TEXTURES = {
    "고운 종이": fine_paper, "수채화 종이": watercolour_paper, "거친 종이": chalk_paper, "캔버스": canvas, "리넨": linen,
    "삼베": burlap, "나뭇결": wood, "벽돌": brick, "알갱이": grain, "안개": mist, "빗금": hatch, "엇빗금": cross_hatch,
    "망점": screen_dots, "가죽": leather, "돌": stone, "골덴": corduroy, "잔물결": ripples, "물감 방울": splatter,
}


# Patterns: a colour of 0..255 each.

def waves():
    sea, foam, deep = (58, 110, 165), (226, 238, 244), (36, 78, 128)

    def value(u, v):
        best = None
        for row in range(-2, 10):  # a scale hides the one behind it, around the edges too
            y = v * 8 - row
            x = (u * 4 + 0.5 * (row % 2)) % 1 - 0.5
            r = math.hypot(x * 2, y * 1.0 - 1)
            if r <= 1:
                best = r
        r = 1.0 if best is None else best
        ring = step(0.42, 0.5, abs((r * 4) % 1 - 0.5) * 2)
        return mix(mix(deep, sea, r), foam, 0.85 * (1 - ring))
    return value


def gingham():
    ink, paper = (196, 70, 76), (250, 246, 240)

    def value(u, v):
        a = 1 if (u * 4) % 1 < 0.5 else 0
        b = 1 if (v * 4) % 1 < 0.5 else 0
        weave = 0.06 * ((int(u * SIZE) + int(v * SIZE)) % 2)
        return mix(paper, ink, 0.5 * (a + b) * (1 - weave))
    return value


def polka():
    def value(u, v):
        x, y = u * 4, v * 4
        d = min(math.hypot(x % 1 - 0.5, y % 1 - 0.5), math.hypot((x + 0.5) % 1 - 0.5, (y + 0.5) % 1 - 0.5))
        return mix((247, 205, 96), (255, 251, 240), step(0.17, 0.22, d))
    return value


def brick_wall():
    tone = brick()
    rough = Lattice(40, 40, 201)

    def value(u, v):
        row = int(v * 8)
        column = int((u * 4 + 0.5 * (row % 2)) % 4)
        face = mix((150, 66, 48), (192, 104, 74), hash01(202, row, column))
        return mix((196, 188, 176), tuple(c * (0.85 + 0.3 * rough.at(u, v)) for c in face), step(0.12, 0.4, tone(u, v)))
    return value


def planks():
    bend, fibre = Fractal(2, 3, 3, 211), Lattice(6, 64, 212)

    def value(u, v):
        board = int(v * 4)
        w = v * 4 - board
        rings = 0.5 + 0.5 * math.sin(TAU * (3 * w + 1.5 * bend.at(u, (v + 0.37 * board) % 1)))
        color = mix((142, 96, 56), (198, 150, 96), clamp(0.25 + 0.5 * rings + 0.5 * (fibre.at(u, v) - 0.5)))
        gap = step(0.0, 0.05, w) * step(0.0, 0.05, 1 - w)
        return mix((70, 44, 24), color, 0.35 + 0.65 * gap)
    return value


def marble():
    cloud, vein = Fractal(3, 3, 5, 221, 0.55), Fractal(3, 3, 4, 222)

    def value(u, v):
        line = abs(math.sin(TAU * (u + v + 1.4 * vein.at(u, v))))
        return mix((148, 150, 160), mix((226, 226, 230), (250, 249, 246), cloud.at(u, v)), step(0.0, 0.4, line))
    return value


def sky():
    cloud = Fractal(3, 3, 5, 231, 0.55)
    return lambda u, v: mix((116, 168, 222), (252, 253, 255), step(0.42, 0.72, cloud.at(u, v)))


def grass():
    blade, patch = Fractal(48, 12, 2, 241, 0.7), Fractal(4, 4, 3, 242)
    return lambda u, v: mix((46, 88, 34), (150, 186, 74), clamp(1.25 * blade.at(u, v) - 0.3 + 0.6 * (patch.at(u, v) - 0.4)))


def graph_paper():
    def value(u, v):
        x, y = int(u * SIZE + 0.5), int(v * SIZE + 0.5)
        if x % 64 == 0 or y % 64 == 0:
            return (120, 172, 206)
        if x % 16 == 0 or y % 16 == 0:
            return (190, 216, 232)
        return (252, 253, 250)
    return value


def denim():
    warp = Lattice(64, 6, 251)

    def value(u, v):
        x, y = int(u * SIZE + 0.5), int(v * SIZE + 0.5)
        twill = ((x + y) % 4) / 3
        return mix((34, 54, 94), (112, 142, 188), clamp(0.2 + 0.5 * twill + 0.5 * (warp.at(u, v) - 0.4)))
    return value


def honeycomb():
    def value(u, v):
        # The centres are two rectangular lattices, one in the middles of the other; a little squeezed, so that whole cells fit.
        x, y = u * 6, v * 4
        d = 1.0
        for o in (0.0, 0.5):
            dx, dy = abs((x + o) % 1 - 0.5), abs((y + o) % 1 - 0.5) * 3 ** 0.5
            d = min(d, max(dx, dx / 2 + dy * 3 ** 0.5 / 2))
        return mix((240, 186, 70), (122, 74, 20), step(0.40, 0.46, d))
    return value


def herringbone():
    def value(u, v):
        x, y = u * 8, v * 8
        up = int(x) % 2 == 0
        t = (y + (x % 1 if up else 1 - x % 1)) % 1
        seam = min(x % 1, 1 - x % 1)
        color = mix((132, 120, 108), (206, 196, 182), hash01(261, int(x), int(y + (x % 1 if up else 1 - x % 1)) % 8))
        return mix((84, 76, 70), color, step(0.02, 0.14, min(t, 1 - t)) * step(0.0, 0.06, seam))
    return value


def confetti():
    cells = Cells(8, 271, 0.8)
    colors = ((228, 90, 84), (246, 190, 70), (96, 176, 120), (84, 142, 212), (170, 112, 190))

    def value(u, v):
        near, _, i = cells.at(u, v)
        return mix(colors[int(hash01(272, i) * 5)], (253, 250, 246), step(0.24, 0.3, near))
    return value


def sand():
    dune, bend = Fractal(48, 48, 2, 281), Fractal(3, 3, 3, 282)

    def value(u, v):
        ripple = 0.5 + 0.5 * math.sin(TAU * (7 * v + 1.2 * bend.at(u, v)))
        return mix((190, 156, 106), (240, 218, 172), clamp(0.2 + 0.45 * ripple + 0.5 * (dune.at(u, v) - 0.3)))
    return value


PATTERNS = {
    "물결": waves, "체크": gingham, "물방울무늬": polka, "벽돌담": brick_wall, "마루": planks, "대리석": marble, "하늘": sky,
    "잔디": grass, "모눈": graph_paper, "청바지": denim, "벌집": honeycomb, "헤링본": herringbone, "색종이": confetti, "모래": sand,
}


def stretched(rows):
    """The same spread over the whole range, but for the outermost hundredths, so that every texture bites."""
    values = sorted(v for row in rows for v in row)
    low, high = values[len(values) // 100], values[-1 - len(values) // 100]
    return [[(v - low) / (high - low) for v in row] for row in rows]


def main():
    root = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parents[2] / "install"
    grid = [k / SIZE for k in range(SIZE)]
    (root / "BrushTexture").mkdir(parents=True, exist_ok=True)
    (root / "Textures").mkdir(parents=True, exist_ok=True)
    for name, make in BRUSH_TEXTURES.items():
        value = make()
        rows = stretched([[value(u, v) for u in grid] for v in grid])
        write_tiff(root / "BrushTexture" / f"{name}.tif", SIZE, SIZE, 1, [[byte(x) for x in row] for row in rows])
    for name, make in PATTERNS.items():
        value = make()
        rows = [[byte(c / 255) for u in grid for c in value(u, v)] for v in grid]
        write_tiff(root / "Textures" / f"{name}.tif", SIZE, SIZE, 3, rows)
    print(len(BRUSH_TEXTURES), "brush textures,", len(PATTERNS), "patterns")


if __name__ == "__main__":
    main()
