"""Cursors: 32 x 32, a dark line with a light rim, so that they show on any picture. They do not follow the theme.
Hot spots stand in the table of src/ui/Icons.cpp; a cross has its middle in the middle of pixel 10, 10."""
from svgkit import *
from tools import BRUSH, BRUSH_TUFT, DROP, ERASER, EYEDROPPER, HAND, PAIL, PENCIL, SMUDGE_HAND, TOOLS

DARK, RIM = "#202020", "#ffffff"
COLOURS = {INK: DARK, ACCENT: DARK}


def two_tone(parts, scale, dx, dy, stroke, body=()):
    """Rim below, then light bodies, then the dark drawing."""
    out = []
    d = "".join(scaled_path(p.path, scale, dx, dy) for p in parts if p.kind == "line")
    if d:
        out.append(f'<path fill="none" stroke="{RIM}" stroke-width="{num(stroke + 2)}" stroke-linecap="round" '
                   f'stroke-linejoin="round" d="{d}"/>')
    d = "".join(scaled_path(p.path, scale, dx, dy) for p in parts if p.kind == "fill")
    if d:
        out.append(f'<path fill="{RIM}" stroke="{RIM}" stroke-width="2" stroke-linejoin="round" d="{d}"/>')
    for path in body:
        out.append(f'<path fill="{RIM}" d="{scaled_path(path, scale, dx, dy)}"/>')
    solid = [Part(p.kind, p.colour, p.path, 1 if p.opacity > .5 or p.kind == "line" else p.opacity) for p in parts]
    return out + placed(solid, scale=scale, dx=dx, dy=dy, stroke=stroke, colours=COLOURS)


def cursor(*bodies):
    return document(32, 32, [line for body in bodies for line in body])


# Drawn in plain pixels: scale 1, so that a coordinate of .5 is the middle of a pixel.
def pixels(parts, stroke=1, body=()):
    return two_tone(parts, 1, 0, 0, stroke, body)


CROSS = pixels(s("M10.5 1.5V7.5", "M10.5 13.5V19.5", "M1.5 10.5H7.5", "M13.5 10.5H19.5") + f(circ(10.5, 10.5, .75)))


def cross_with(name, body=()):
    """A cross, and the tool at 16 pixels to its lower right."""
    return cursor(CROSS, two_tone(TOOLS[name], 1, 14.5, 14.5, 1.25, body))


def tip(parts, body=()):
    """The tool itself at 20 pixels; its tip at the lower left is the working point."""
    return cursor(two_tone(parts, 1.25, 1.5, 9.5, 1.25, body))


ARROW = "M3.5 2.5V19.5L7.5 15.8L10.2 22L13 20.8L10.3 14.8H15.8Z"


def pointer_with(parts):
    return cursor(pixels(s(ARROW), 1, [ARROW]), two_tone(parts, 1, 14.5, 14.5, 1))


def both_ways(angle):
    line = s("M4.5 16H27.5", head(4, 16, 180, 7), head(28, 16, 0, 7))
    return turned(line, angle, 16, 16)


ROTATE = s("M25.4 18.5A9.5 9.5 0 1 1 21.6 8.2", "M22.4 2.8V8.8H16.4")
FIST = ("M9.5 15V13A2 2 0 0 1 13.5 13V12A2 2 0 0 1 17.5 12A2 2 0 0 1 21.5 12.6A1.9 1.9 0 0 1 25.2 13.6V19"
        "C25.2 23.6 22.6 26.5 18.4 26.5"
        "C14.4 26.5 12.6 24.8 10.8 22.2L8 18.4C6.8 16.6 8.2 15 9.5 15Z")
FIST_LINES = ("M13.5 13V15.5", "M17.5 12V15.5", "M21.5 12.6V15.5")


def hand(path):
    return two_tone(s(path), 1.5, 4, 4, 1.25, [path + "Z"])


def lens(*inside):
    glass = "M20.5 12.5A8 8 0 1 1 4.5 12.5A8 8 0 1 1 20.5 12.5Z"
    return cursor(pixels(s(glass), 1.5, [glass]), pixels(s("M18.6 18.6L28 28"), 3), placed(s(*inside), scale=1, dx=0,
        dy=0, stroke=1.5, colours=COLOURS))


# The gradient as three bands: a cursor has no half tones to spare.
FADED = TOOLS["gradient"][:1] + f(rect(3, 4, 6, 12)) + t(rect(6, 4, 9.5, 12), opacity=.5)

BODY_PENCIL = ("M1.6 14.4L2.8 10.4L11 2.2L13.8 5L5.6 13.2Z",)
BODY_ERASER = ("M1.9 10.1L9.4 2.6L13.9 7.1L7.4 13.6H5.4Z",)
MOVE = s("M16 5V27", "M5 16H27", head(16, 4, -90, 6), head(16, 28, 90, 6), head(4, 16, 180, 6), head(28, 16, 0, 6))

CURSORS = {
    **{name: cross_with(name) for name in ("rect-select", "ellipse-select", "polygon-select", "free-select",
        "magic-wand", "crop",
                                           "stamp", "burn")},
    "blur": cross_with("blur", (DROP,)),
    "sharpen": cross_with("sharpen", ("M8 1.5L13 13.5H3Z",)),
    "dodge": cross_with("dodge", (circ(8, 8, 3),)),
    "smudge": cross_with("smudge", (SMUDGE_HAND[0].path + "Z",)),
    "bucket": cross_with("bucket", (PAIL,)),
    "gradient": cursor(CROSS, two_tone(FADED, 1, 14.5, 14.5, 1)),
    "cross": cursor(CROSS),
    "move": cursor(pixels(MOVE, 2)),
    "move-selection": pointer_with(TOOLS["move"]),
    "pencil": tip(PENCIL, BODY_PENCIL),
    "brush": tip(BRUSH + BRUSH_TUFT),
    "eraser": tip(ERASER, BODY_ERASER),
    "air-brush": tip(TOOLS["air-brush"]),
    "photo-brush": tip(TOOLS["photo-brush"]),
    "effect-brush": tip(TOOLS["brush"][:4] + BRUSH_TUFT + af(star(4.6, 3.6, 3.4))),
    "eyedropper": tip(EYEDROPPER, ("M8 5L3 10V13H6L11 8Z",)),
    "text": cursor(pixels(s("M13.5 4.5H15L16.5 6L18 4.5H19.5", "M16.5 6V26", "M13.5 27.5H15L16.5 26L18 27.5H19.5",
        "M14.5 20.5H18.5"))),
    "zoom-in": lens("M12.5 8.5V16.5", "M8.5 12.5H16.5"),
    "zoom-out": lens("M8.5 12.5H16.5"),
    "hand-open": cursor(hand(HAND)),
    "hand-closed": cursor(pixels(s(FIST, *FIST_LINES), 1.25, [FIST])),
    "size-horz": cursor(pixels(both_ways(0), 2)),
    "size-vert": cursor(pixels(both_ways(90), 2)),
    "size-nwse": cursor(pixels(both_ways(45), 2)),
    "size-nesw": cursor(pixels(both_ways(-45), 2)),
    "rotate": cursor(pixels(ROTATE, 2)),
    "skew-horz": cursor(pixels(s("M9 12H27", head(28, 12, 0, 6), "M23 20H5", head(4, 20, 180, 6)), 2)),
    "skew-vert": cursor(pixels(s("M12 23V5", head(12, 4, -90, 6), "M20 9V27", head(20, 28, 90, 6)), 2)),
    "drag-handle": cursor(pixels(s(ARROW), 1, [ARROW]), pixels(s("M20.5 20.5H28.5V28.5H20.5Z"))),
    "guide-horz": cursor(pixels(s("M16 11V5", "M16 21V27", head(16, 4, -90, 5), head(16, 28, 90, 5)), 2),
        pixels(s("M4 14.5H28", "M4 17.5H28"))),
    "guide-vert": cursor(pixels(s("M11 16H5", "M21 16H27", head(4, 16, 180, 5), head(28, 16, 0, 5)), 2),
        pixels(s("M14.5 4V28", "M17.5 4V28"))),
    "guide-drag": cursor(pixels(MOVE, 2), pixels(s(rect(12.5, 12.5, 19.5, 19.5)), 1, [rect(12.5, 12.5, 19.5, 19.5)])),
}
