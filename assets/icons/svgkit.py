"""Drawing kit of the icon family.

Icons are drawn on a lattice of 16 x 16 cells, whose centres lie at 0.75 + 1.5 k of the 24 grid. A 1.5 stroke through cell
centres is then one whole pixel at 16, two at 32, three at 48, and has one sharp edge at 24. A drawing is a list of parts:

    s(path, ...)   ink line          f(path, ...)   ink surface         t(path, ...)   ink tint
    a(path, ...)   accent line       af(path, ...)  accent surface      at(path, ...)  accent tint
"""
import math
import re

INK, ACCENT = "#3a3a3a", "#1a73e8"
STROKE = 1.5
_ARGS = {"M": 2, "L": 2, "H": 1, "V": 1, "C": 6, "S": 4, "Q": 4, "T": 2, "A": 7, "Z": 0}
_TOKEN = re.compile(r"[MLHVCSQTAZmlhvcsqtaz]|-?\d*\.?\d+")


class Part:
    """One drawn thing: path in lattice cells, how it is inked."""

    def __init__(self, kind, colour, path, opacity=1.0, paint=None):
        self.kind, self.colour, self.path, self.opacity, self.paint = kind, colour, path, opacity, paint

    def moved(self, matrix):
        return Part(self.kind, self.colour, transform(self.path, matrix), self.opacity, self.paint)


def s(*paths):
    return [Part("line", INK, p) for p in paths]


def a(*paths):
    return [Part("line", ACCENT, p) for p in paths]


def f(*paths, opacity=1.0):
    return [Part("fill", INK, p, opacity) for p in paths]


def af(*paths, opacity=1.0):
    return [Part("fill", ACCENT, p, opacity) for p in paths]


def t(*paths, opacity=0.16):
    return [Part("fill", INK, p, opacity) for p in paths]


def at(*paths, opacity=0.24):
    return [Part("fill", ACCENT, p, opacity) for p in paths]


def num(v):
    v = round(v, 2)
    return str(int(v)) if v == int(v) else str(v)


def commands(path):
    """The path as (letter, numbers), everything absolute and without H and V."""
    tokens = _TOKEN.findall(path)
    out, i, x, y, sx, sy, letter = [], 0, 0.0, 0.0, 0.0, 0.0, "M"
    while i < len(tokens):
        if tokens[i].isalpha():
            letter, i = tokens[i], i + 1
        up = letter.upper()
        n = [float(v) for v in tokens[i:i + _ARGS[up]]]
        i += _ARGS[up]
        relative = letter.islower()
        if up == "Z":
            out.append(("Z", []))
            x, y = sx, sy
            continue
        if up == "H":
            n = [n[0] + (x if relative else 0), y]
        elif up == "V":
            n = [x, n[0] + (y if relative else 0)]
        elif up == "A":
            if relative:
                n[5] += x
                n[6] += y
        elif relative:
            n = [v + (x if k % 2 == 0 else y) for k, v in enumerate(n)]
        x, y = n[-2], n[-1]
        out.append(("L" if up in "HV" else up, n))
        if up == "M":
            sx, sy = x, y
            letter = "l" if relative else "L"
    return out


def emit(cmds):
    return "".join(c + " ".join(num(v) for v in n) for c, n in cmds)


def transform(path, m):
    """Applies (a, b, c, d, e, f): x' = a x + c y + e, y' = b x + d y + f. Arcs need a uniform scale."""
    out = []
    scale = math.sqrt(abs(m[0] * m[3] - m[1] * m[2]))
    for c, n in commands(path):
        if c == "A":
            flip = 1 - n[4] if m[0] * m[3] - m[1] * m[2] < 0 else n[4]
            x, y = n[5], n[6]
            n = [n[0] * scale, n[1] * scale, n[2] + math.degrees(math.atan2(m[1], m[0])), n[3], flip,
                 m[0] * x + m[2] * y + m[4], m[1] * x + m[3] * y + m[5]]
        else:
            n = [v for k in range(0, len(n), 2)
                 for v in (m[0] * n[k] + m[2] * n[k + 1] + m[4], m[1] * n[k] + m[3] * n[k + 1] + m[5])]
        out.append((c, n))
    return emit(out)


def moved(parts, dx, dy, scale=1.0):
    return [p.moved((scale, 0, 0, scale, dx, dy)) for p in parts]


def turned(parts, degrees, cx, cy):
    c, w = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    return [p.moved((c, w, -w, c, cx - c * cx + w * cy, cy - w * cx - c * cy)) for p in parts]


def mirrored(parts, axis):
    return [p.moved((-1, 0, 0, 1, 2 * axis, 0)) for p in parts]


# ---- shapes, as paths -------------------------------------------------------------------------------------------------

def circ(cx, cy, r):
    return f"M{cx - r} {cy}A{r} {r} 0 1 1 {cx + r} {cy}A{r} {r} 0 1 1 {cx - r} {cy}Z"


def rect(x0, y0, x1, y1):
    return f"M{x0} {y0}H{x1}V{y1}H{x0}Z"


def rrect(x0, y0, x1, y1, r=1):
    return (f"M{x0 + r} {y0}H{x1 - r}A{r} {r} 0 0 1 {x1} {y0 + r}V{y1 - r}A{r} {r} 0 0 1 {x1 - r} {y1}"
            f"H{x0 + r}A{r} {r} 0 0 1 {x0} {y1 - r}V{y0 + r}A{r} {r} 0 0 1 {x0 + r} {y0}Z")


def cell(x0, y0, x1, y1):
    """A surface over whole cells, from the outer edge of the first to that of the last."""
    return rect(x0 - .5, y0 - .5, x1 + .5, y1 + .5)


def dot(cx, cy, r=0.75):
    return circ(cx, cy, r)


def poly(*points, closed=True):
    return "M" + "L".join(f"{x} {y}" for x, y in points) + ("Z" if closed else "")


def head(x, y, direction, size=2.5):
    """An open arrow head with its tip at x, y; direction in degrees, 0 to the right, 90 down."""
    out = []
    for side in (140, -140):
        w = math.radians(direction + side)
        out.append((x + size * math.cos(w), y + size * math.sin(w)))
    return f"M{out[0][0]} {out[0][1]}L{x} {y}L{out[1][0]} {out[1][1]}"


def corners(x0, y0, x1, y1, leg=3):
    return [f"M{x0} {y0 + leg}V{y0}H{x0 + leg}", f"M{x1 - leg} {y0}H{x1}V{y0 + leg}",
            f"M{x1} {y1 - leg}V{y1}H{x1 - leg}", f"M{x0 + leg} {y1}H{x0}V{y1 - leg}"]


# Whole cells, so that every dash is sharp: side length in cells -> cells of a corner's leg, of a gap, of the middle dash.
_DASHES = {7: (2, 1, 1), 11: (2, 2, 3), 13: (3, 2, 3), 15: (4, 2, 3)}


def dashrect(x0, y0, x1, y1):
    """Dashed frame over the cells from x0, y0 to x1, y1."""
    out = []
    for lo, hi, near, far, horizontal in ((x0, x1, y0, y1, True), (y0, y1, x0, x1, False)):
        leg, gap, dash = _DASHES[hi - lo + 1]
        runs = [(lo, lo + leg - 1), (hi - leg + 1, hi)] + [(lo + leg + gap, lo + leg + gap + max(dash - 1, .02))]
        for q in (near, far):
            out += [f"M{a0} {q}H{a1}" if horizontal else f"M{q} {a0}V{a1}" for a0, a1 in runs]
    return out


def dashpoly(*points, gap=2.5):
    """A polygon with whole corners; the gaps lie inside its sides, two in a long one."""
    out, run = [], []
    for (x0, y0), (x1, y1) in zip(points, points[1:] + points[:1]):
        length = math.hypot(x1 - x0, y1 - y0)
        n = 2 if length > 7.5 else 1
        solid = (length - n * gap) / (n + 1)
        run.append((x0, y0))
        for k in range(1, n + 1):
            start = k * solid + (k - 1) * gap
            for at_ in (start, start + gap):
                run.append((x0 + at_ / length * (x1 - x0), y0 + at_ / length * (y1 - y0)))
            out.append(run[:-1])
            run = run[-1:]
    out[0] = run + out[0]
    return [poly(*piece, closed=False) for piece in out]


def _flatten(path, steps=24):
    pts = []
    for c, n in commands(path):
        if c in "ML":
            pts.append((n[0], n[1]))
        elif c == "C":
            x0, y0 = pts[-1]
            for k in range(1, steps + 1):
                u = k / steps
                v = 1 - u
                pts.append((v**3 * x0 + 3 * v * v * u * n[0] + 3 * v * u * u * n[2] + u**3 * n[4],
                            v**3 * y0 + 3 * v * v * u * n[1] + 3 * v * u * u * n[3] + u**3 * n[5]))
        elif c == "Z":
            pts.append(pts[0])
        else:
            raise ValueError(c)
    return pts


def _cut(pts, start, end):
    """The piece of a polyline between two lengths."""
    out, run = [], 0.0
    for (x0, y0), (x1, y1) in zip(pts, pts[1:]):
        length = math.hypot(x1 - x0, y1 - y0)
        if length == 0:
            continue
        lo, hi = max(start - run, 0) / length, min(end - run, length) / length
        if lo < hi:
            if not out:
                out.append((x0 + lo * (x1 - x0), y0 + lo * (y1 - y0)))
            out.append((x0 + hi * (x1 - x0), y0 + hi * (y1 - y0)))
        run += length
    return poly(*out, closed=False)


def dashed(path, n, share=0.5):
    """A closed path of lines and curves cut into n even dashes, the first one in the middle of its start."""
    pts = _flatten(path)
    total = sum(math.hypot(x1 - x0, y1 - y0) for (x0, y0), (x1, y1) in zip(pts, pts[1:]))
    period = total / n
    twice_round = pts + pts[1:]
    starts = [(k * period - period * share / 2) % total for k in range(n)]
    return [_cut(twice_round, start, start + period * share) for start in starts]


def ellipse(cx, cy, rx, ry):
    k = 0.5523
    return (f"M{cx + rx} {cy}C{cx + rx} {cy + k * ry} {cx + k * rx} {cy + ry} {cx} {cy + ry}"
            f"C{cx - k * rx} {cy + ry} {cx - rx} {cy + k * ry} {cx - rx} {cy}"
            f"C{cx - rx} {cy - k * ry} {cx - k * rx} {cy - ry} {cx} {cy - ry}"
            f"C{cx + k * rx} {cy - ry} {cx + rx} {cy - k * ry} {cx + rx} {cy}Z")


def gear(cx, cy, r_out, r_in, teeth=8):
    pts = []
    for k in range(teeth):
        mid = 360 / teeth * k - 90
        for offset, r in ((-13, r_in), (-9, r_out), (9, r_out), (13, r_in)):
            w = math.radians(mid + offset)
            pts.append((cx + r * math.cos(w), cy + r * math.sin(w)))
    return poly(*pts)


def star(cx, cy, r, waist=0.28):
    """The four-pointed sparkle that stands for an effect."""
    q = r * waist
    return (f"M{cx} {cy - r}L{cx + q} {cy - q}L{cx + r} {cy}L{cx + q} {cy + q}L{cx} {cy + r}"
            f"L{cx - q} {cy + q}L{cx - r} {cy}L{cx - q} {cy - q}Z")


# ---- badges, common marks ----------------------------------------------------------------------------------------------

def plus(cx=12, cy=12, r=2):
    return a(f"M{cx - r} {cy}H{cx + r}", f"M{cx} {cy - r}V{cy + r}")


def minus(cx=12, cy=12, r=2):
    return a(f"M{cx - r} {cy}H{cx + r}")


def sliders(x=9, y=11):
    """Two sliders: the settings of what they stand beside."""
    return a(f"M{x} {y}H{x + 6}", f"M{x} {y + 3}H{x + 6}") + af(circ(x + 4, y, 1.2), circ(x + 1.8, y + 3, 1.2))


def handles(*points):
    return f(*[cell(x - .5, y - .5, x + .5, y + .5) for x, y in points])


# ---- writing -----------------------------------------------------------------------------------------------------------

def scaled_path(path, scale=1.5, dx=0.75, dy=0.75):
    return transform(path, (scale, 0, 0, scale, dx, dy))


def element(part, scale=1.5, dx=0.75, dy=0.75, stroke=STROKE, colours=None):
    colour = (colours or {}).get(part.colour, part.colour)
    d = scaled_path(part.path, scale, dx, dy)
    if part.kind == "line":
        look = (f'fill="none" stroke="{colour}" stroke-width="{num(stroke)}" stroke-linecap="round" '
                'stroke-linejoin="round"')
        if part.opacity < 1:
            look += f' stroke-opacity="{num(part.opacity)}"'
    else:
        look = f'fill="{part.paint or colour}" fill-rule="evenodd"'
        if part.opacity < 1:
            look += f' fill-opacity="{num(part.opacity)}"'
    return f'<path {look} d="{d}"/>'


def _grouped(parts, **how):
    """Lines of one colour that follow each other share one path element."""
    out, run = [], []

    def flush():
        if run:
            p = run[0]
            out.append(element(Part(p.kind, p.colour, "".join(q.path for q in run), p.opacity, p.paint), **how))
            run.clear()

    for p in parts:
        if run and (p.kind != "line" or (p.kind, p.colour, p.opacity) != (run[0].kind, run[0].colour, run[0].opacity)):
            flush()
        run.append(p)
        if p.kind != "line":
            flush()
    flush()
    return out


def document(width, height, body):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" version="1.2" baseProfile="tiny" width="{width}" height="{height}" '
            f'viewBox="0 0 {width} {height}">\n' + "\n".join(body) + "\n</svg>\n")


def icon(parts, defs=()):
    return document(24, 24, list(defs) + _grouped(parts))


def small(parts, width, height, left, top, defs=()):
    """The drawing at 16 pixels inside a larger cell: one lattice cell is one pixel."""
    return document(width, height, list(defs) + _grouped(parts, scale=1, dx=left + .5, dy=top + .5, stroke=1))


def placed(parts, **how):
    return _grouped(parts, **how)
