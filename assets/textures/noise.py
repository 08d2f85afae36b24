"""Periodic noise and a small TIFF writer: everything that the textures are made of. Whole numbers decide, so that the
files are the same wherever they are drawn."""
import math
import struct
import zlib


def hash01(*keys):
    """A number of [0, 1) that depends on the keys alone."""
    h = 2166136261
    for key in keys:
        h = ((h ^ (key & 0xFFFFFFFF)) * 16777619) & 0xFFFFFFFF
        h ^= h >> 13
        h = (h * 0x5BD1E995) & 0xFFFFFFFF
        h ^= h >> 15
    return h / 4294967296.0


class Lattice:
    """Smooth noise over a torus of cells x cells, one value a corner."""

    def __init__(self, nx, ny, seed):
        self.nx, self.ny = nx, ny
        self.values = [[hash01(seed, i, j) for i in range(nx)] for j in range(ny)]

    def at(self, u, v):
        """u, v in [0, 1): once around the tile. The result lies in 0..1."""
        x, y = u * self.nx, v * self.ny
        i, j = int(math.floor(x)), int(math.floor(y))
        fx, fy = x - i, y - j
        fx, fy = fx * fx * (3 - 2 * fx), fy * fy * (3 - 2 * fy)
        a, b = self.values[j % self.ny], self.values[(j + 1) % self.ny]
        top = a[i % self.nx] + (a[(i + 1) % self.nx] - a[i % self.nx]) * fx
        low = b[i % self.nx] + (b[(i + 1) % self.nx] - b[i % self.nx]) * fx
        return top + (low - top) * fy


class Fractal:
    """Layers of the above, each twice as fine and `gain` times as strong. Mean about 0.5."""

    def __init__(self, nx, ny, layers, seed, gain=0.5):
        self.layers = [(Lattice(nx << k, ny << k, seed + 101 * k), gain ** k) for k in range(layers)]
        self.total = sum(g for _, g in self.layers)

    def at(self, u, v):
        return sum(lattice.at(u, v) * g for lattice, g in self.layers) / self.total


class Cells:
    """Points scattered over a torus, one in each cell: distances to the nearest two and the number of the nearest."""

    def __init__(self, n, seed, jitter=1.0):
        self.n = n
        self.points = [[(i + 0.5 + (hash01(seed, i, j) - 0.5) * jitter, j + 0.5 + (hash01(seed, j, i, 7) - 0.5) * jitter)
                        for i in range(n)] for j in range(n)]

    def at(self, u, v):
        x, y = u * self.n, v * self.n
        i, j = int(x), int(y)
        best = []
        for dj in (-2, -1, 0, 1, 2):
            for di in (-2, -1, 0, 1, 2):
                ci, cj = (i + di) % self.n, (j + dj) % self.n
                px, py = self.points[cj][ci]
                dx, dy = px - ci + i + di - x, py - cj + j + dj - y
                best.append((dx * dx + dy * dy, cj * self.n + ci))
        best.sort()
        return math.sqrt(best[0][0]), math.sqrt(best[1][0]), best[0][1]


def clamp(v):
    return 0.0 if v < 0 else 1.0 if v > 1 else v


def step(a, b, v):
    """0 below a, 1 above b, smooth between."""
    t = clamp((v - a) / (b - a))
    return t * t * (3 - 2 * t)


def mix(a, b, t):
    return tuple(p + (q - p) * t for p, q in zip(a, b))


def byte(v):
    return int(clamp(v) * 255 + 0.5)


def write_tiff(path, width, height, samples, rows):
    """Grey (1 sample) or colour (3), deflated with differences along the rows, 72 dots an inch."""
    body = bytearray()
    for row in rows:
        body += bytes(row[:samples]) + bytes((row[i] - row[i - samples]) & 255 for i in range(samples, len(row)))
    data = zlib.compress(bytes(body), 9)
    entries = []
    extra = bytearray()
    tags = 12
    base = 8 + 2 + 12 * tags + 4

    def put(tag, kind, values):
        code = {3: "H", 4: "I", 5: "II"}[kind]
        raw = struct.pack("<" + code * (len(values) // len(code)), *values)
        count = len(values) // len(code)
        if len(raw) <= 4:
            entries.append(struct.pack("<HHI", tag, kind, count) + raw.ljust(4, b"\0"))
        else:
            entries.append(struct.pack("<HHII", tag, kind, count, base + len(extra)))
            extra.extend(raw)

    bits = (8,) * samples
    put(256, 4, (width,))
    put(257, 4, (height,))
    put(258, 3, bits)
    put(259, 3, (8,))
    put(262, 3, (2 if samples == 3 else 1,))
    mark = len(entries)
    entries.append(b"")
    put(277, 3, (samples,))
    put(278, 4, (height,))
    put(279, 4, (len(data),))
    put(282, 5, (72, 1))
    put(283, 5, (72, 1))
    put(317, 3, (2,))
    entries[mark] = struct.pack("<HHII", 273, 4, 1, base + len(extra))
    assert len(entries) == tags
    with open(path, "wb") as file:
        file.write(struct.pack("<2sHI", b"II", 42, 8) + struct.pack("<H", tags) + b"".join(entries) + struct.pack("<I", 0) + extra + data)
