"""Tools: selection tools are dashed, painting tools lean at 45 degrees with the tip at the lower left, effect brushes
carry their effect's mark at the upper right, transforms show a square with handles."""
from svgkit import *

# A brush that leans over the whole icon, and the same one made small for the marks of the effect brushes.
BRUSH = (s("M13.6 2.4L8 8.9", "M13.6 2.4L7.1 8", "M6.2 7.4L8.6 9.8")
         + s("M6.2 7.4C3.6 7.2 3.2 9.6 3 11.4C2.9 12.4 2.4 13.2 1.5 13.6C4.6 14.6 8.6 13.8 8.6 9.8"))
BRUSH_SMALL = (s("M9.2 6.8L6 10.2", "M5 9.4L6.6 11")
               + s("M5 9.4C3 9.2 2.7 11 2.6 12.3C2.5 13.1 2.1 13.8 1.3 14.2C3.8 15 6.8 14.3 6.6 11"))
BRUSH_TUFT = f("M6.2 7.4C3.6 7.2 3.2 9.6 3 11.4C2.9 12.4 2.4 13.2 1.5 13.6C4.6 14.6 8.6 13.8 8.6 9.8Z")
SMALL_TUFT = f("M5 9.4C3 9.2 2.7 11 2.6 12.3C2.5 13.1 2.1 13.8 1.3 14.2C3.8 15 6.8 14.3 6.6 11Z")

BLOB = "M8 2C11.5 1 14.5 3.5 14 7C13.6 10 11.5 12 8 11.4C5.5 11 2 11.4 1.6 8C1.2 4.6 4.8 2.9 8 2Z"

PENCIL = s("M1.6 14.4L2.8 10.4L11 2.2L13.8 5L5.6 13.2Z", "M2.8 10.4L5.6 13.2",
    "M9 4.2L11.8 7") + f("M1.6 14.4L2.2 12.4L3.6 13.8Z")
ERASER = s("M1.9 10.1L9.4 2.6L13.9 7.1L7.4 13.6H5.4Z",
    "M5.2 6.8L9.7 11.3") + t("M1.9 10.1L5.2 6.8L9.7 11.3L7.4 13.6H5.4Z")
EYEDROPPER = (s("M8 5L3 10V13H6L11 8") + f("M9.6 3.6L11 2.2A2 2 0 0 1 13.8 5L12.4 6.4L13 7L11.6 8.4L7.6 4.4L9 3Z")
              + a("M1.5 14.5L2.2 13.8"))

STAMP = turned(s("M6.2 9L6.9 6.2A2.9 2.9 0 1 1 9.1 6.2L9.8 9",
    "M2.9 12V10.6A1.6 1.6 0 0 1 4.5 9H11.5A1.6 1.6 0 0 1 13.1 10.6V12Z")
               + f("M2.9 12V10.6A1.6 1.6 0 0 1 4.5 9H11.5A1.6 1.6 0 0 1 13.1 10.6V12Z") + s("M3.4 14.6H12.6"), 45,
               8.2, 7.6)
STAMP = moved(STAMP, 0.7, 0, .94)
AIRBRUSH = turned(s("M5 8L8 6.2H15.4V9.8H8Z", "M10 6.2V4H13.4V6.2", "M5 8H3.8"), -45, 8.4, 8)
SPRAY = f(dot(3.6, 9.8, .65), dot(2.2, 12, .65), dot(4, 12.6, .65), dot(6.2, 12.6, .65), dot(2, 14.2, .65), dot(4.6,
    14.8, .65), dot(1.2, 9.8, .65))

DROP = "M8 1.5C9.8 4.4 12.5 7 12.5 9.8A4.5 4.5 0 0 1 3.5 9.8C3.5 7 6.2 4.4 8 1.5Z"
RAYS = ("M8 1.2V2.6", "M8 13.4V14.8", "M1.2 8H2.6", "M13.4 8H14.8", "M3.2 3.2L4.2 4.2", "M11.8 11.8L12.8 12.8",
    "M12.8 3.2L11.8 4.2", "M4.2 11.8L3.2 12.8")
HAND = ("M5 9V3.6A1 1 0 0 1 7 3.6V7.4V2.4A1 1 0 0 1 9 2.4V7.4V3A1 1 0 0 1 11 3V8V5A1 1 0 0 1 13 5V10.2"
        "C13 13 11.2 14.6 9 14.6C6.6 14.6 5.6 13.6 4.6 12L2.2 8.8C1.6 7.8 3 6.8 3.9 7.8L5 9.2")

PAIL = "M7 3L13 9.5L7.6 14.4C6.8 15.1 6 15.1 5.2 14.3L1.9 11C1.1 10.2 1.1 9.4 1.9 8.6Z"
POINTING = ("M6 9V2.9A1.2 1.2 0 0 1 8.4 2.9V8V6.7A1.1 1.1 0 0 1 10.6 6.7V8.2V7.4A1.1 1.1 0 0 1 12.8 7.4V10.6C12.8 13 11.4 14.4 9.2 14.4"
            "C7.2 14.4 6.2 13.6 5.2 12.2L3.2 9.4C2.6 8.4 4 7.4 4.9 8.3L6 9.6")
SMUDGE_HAND = turned(s(POINTING), -135, 8.3, 8.2)

FRAME = (3, 3, 13, 13)


def _square_with_handles():
    x0, y0, x1, y1 = FRAME
    return (s(f"M{x0 + 2} {y0}H{x1 - 2}", f"M{x0 + 2} {y1}H{x1 - 2}", f"M{x0} {y0 + 2}V{y1 - 2}",
        f"M{x1} {y0 + 2}V{y1 - 2}")
            + handles((x0, y0), (x1, y0), (x0, y1), (x1, y1)))


def effect(*mark):
    return BRUSH_SMALL + SMALL_TUFT + [p for part in mark for p in part]


def dots(*points, r=.75):
    return af(*[dot(x, y, r) for x, y in points])


TOOLS = {
    "rect-select": s(*dashrect(2, 3, 14, 13)),
    "ellipse-select": s(*dashed(ellipse(8, 8, 6, 5), 8, .42)),
    "polygon-select": s(*dashpoly((2, 6), (8, 2), (14, 5), (11, 9), (13, 13), (4, 14))),
    "free-select": s(*dashed(BLOB, 8, .44)) + s("M4.4 11.4C3 12.4 5.6 12.6 4 14.8"),
    "magic-wand": s("M2 14L8.6 7.4", "M9.6 6.4L10.4 5.6")
        + a("M10.5 1.5V3", "M10.5 8V9.5", "M6.5 5.5H8", "M13 5.5H14.5", "M13.3 2.7L12.6 3.4", "M7.7 2.7L8.4 3.4",
        "M13.3 8.3L12.6 7.6"),
    "move": s("M8 2V14", "M2 8H14", "M6.5 3L8 1.5L9.5 3", "M6.5 13L8 14.5L9.5 13", "M3 6.5L1.5 8L3 9.5",
        "M13 6.5L14.5 8L13 9.5"),
    "crop": s("M4 1V12H15", "M1 4H12V15"),
    "pencil": PENCIL,
    "brush": BRUSH + BRUSH_TUFT,
    "eraser": ERASER,
    "air-brush": AIRBRUSH + SPRAY,
    "stamp": STAMP,
    "photo-brush": BRUSH_SMALL + SMALL_TUFT + a(rrect(8, 1, 15, 6, .8)) + a("M8.8 5.4L10.8 3.4L12.2 4.8L13 4L14.4 5.4"),
    "blur": s(DROP) + s("M6 9.6A2.2 2.2 0 0 0 7.8 12"),
    "sharpen": s("M8 1.5L13 13.5H3Z") + t("M8 1.5L13 13.5H8Z", opacity=.3),
    "smudge": SMUDGE_HAND + s("M1.4 11.4C1.6 13.4 2.8 14.6 5 14.8"),
    "dodge": s(circ(8, 8, 3), *RAYS),
    "burn": f("M8.6 .6C8.8 4.2 13 5.6 13 10A5 5 0 0 1 3 10C3 7.6 4.2 6 5.4 5C5.4 6.2 5.7 7 6.4 7.4C6.2 4.8 6.8 2.2 8.6 .6Z"
              "M8.2 8.8C8.4 10.2 9.8 10.6 9.8 12.1A1.8 1.8 0 0 1 6.2 12.1C6.2 10.6 7.6 10.2 8.2 8.8Z"),
    "gradient": s(rrect(2, 3, 14, 13)) + [Part("fill", INK, cell(3, 4, 13, 12), 1, "url(#fade)")],
    "bucket": s(PAIL, "M3.6 1.4L7.4 5.2")
        + t("M2 9.5H13L7.6 14.4C6.8 15.1 6 15.1 5.2 14.3L1.9 11Z")
        + af("M14 10.5C14.8 11.8 15.3 12.5 15.3 13.3A1.3 1.3 0 0 1 12.7 13.3C12.7 12.5 13.2 11.8 14 10.5Z"),
    "scale": _square_with_handles() + a("M5.8 10.2L10.2 5.8", "M7.6 5.8H10.2V8.4", "M5.8 7.6V10.2H8.4"),
    "rotate": _square_with_handles() + a("M5.9 8.4A2.4 2.4 0 1 1 8 10.4", "M9.6 8.9L8 10.4L9.5 12"),
    "skew-horz": s("M6.6 3H12.4", "M3.6 13H9.4", "M4.4 4.8L2.6 11.4", "M13.6 4.8L11.6 11.4")
        + handles((5, 3), (14, 3), (2, 13), (11, 13)) + a("M5.6 8H10.4", "M8.9 6.4L10.5 8L8.9 9.6"),
    "skew-vert": s("M3 6.6V12.4", "M13 3.6V9.4", "M4.8 4.4L11.4 2.4", "M4.8 13.6L11.4 11.6")
        + handles((3, 5), (3, 14), (13, 2), (13, 11)) + a("M8 5.6V10.4", "M6.4 7.1L8 5.5L9.6 7.1"),
    "free-transform": s("M4.9 4.3L11.1 2.7", "M12.9 4L12.1 8", "M10.4 10.4L3.8 13.2", "M2.2 12L2.8 6.4")
        + handles((3, 5), (13, 2), (12, 10), (2, 14)),
    "eyedropper": EYEDROPPER,
    "text": s("M3 4V2H13V4", "M8 2V14", "M5.5 14H10.5"),
    "zoom": s(circ(7, 7, 5), "M10.6 10.6L14.4 14.4"),
    "hand": s(HAND),
    "effect-grey": effect(a(circ(12, 4, 2.8)), af("M12 1.2A2.8 2.8 0 0 1 12 6.8Z")),
    "effect-tint": effect(af("M12 .8C13.4 2.8 14.6 4 14.6 5.2A2.6 2.6 0 0 1 9.4 5.2C9.4 4 10.6 2.8 12 .8Z")),
    "effect-old-photo": effect(a(circ(12, 4, 2.8), "M12 2.6V4.2L13.1 4.9")),
    "effect-noise": effect(dots((9.2, 2), (11.6, 1.2), (14, 2.2), (10.4, 4), (12.8, 4), (14.7, 4.8), (11.4, 6.4),
        (13.8, 6.8))),
    "effect-nl-filter": effect(a("M9 1.2H15L12.8 4.4V6.8L11.2 5.8V4.4Z")),
    "effect-scatter": effect(dots((12, 4), r=1.1), a("M12 1.6V.9", "M14 2L14.6 1.4", "M14.4 4H15.1", "M14 6L14.6 6.6",
        "M12 6.4V7.1", "M10 2L9.4 1.4", "M9.6 4H8.9")),
    "effect-shift": effect(a("M9 1.6H13.4", "M10.6 4H15", "M9.6 6.4H12.8")),
    "effect-canvas": effect(a("M10.2 1V7", "M13.2 1V7", "M8.8 2.5H14.8", "M8.8 5.5H14.8")),
    "effect-fibre": effect(a("M9.4 1.4C10.8 3 9.2 5 10.6 7", "M12 .8C13.4 2.6 11.6 4.8 13 6.8",
        "M14.6 1.4C15.6 3 14 5 15 7")),
    "effect-tile": effect(af(cell(9, 1, 11, 2.6), cell(13, 1, 14.6, 2.6), cell(9, 4.6, 10.2, 6.4), cell(12.2, 4.6,
        14.6, 6.4))),
    "effect-glass": effect(a("M9 1H15V7H9Z", "M12 1V7", "M9 4H15"), at("M12 1H15V4H12Z", "M9 4H12V7H9Z", opacity=.45)),
    "effect-pixelate": effect(af(rect(9, 1, 11, 3), rect(13, 1, 15, 3), rect(11, 3, 13, 5), rect(9, 5, 11, 7),
        rect(13, 5, 15, 7))),
}

FADE = ('<linearGradient id="fade" x1="0" y1="0" x2="1" y2="0">'
        f'<stop offset="0" stop-color="{INK}" stop-opacity="1"/><stop offset="1" stop-color="{INK}" stop-opacity="0"/></linearGradient>')

# History groups 0 to 23; 1 stands for everything that is a plain command.
HISTORY = ["@picture", "@command", "rect-select", "ellipse-select", "polygon-select", "free-select", "magic-wand",
    "move",
           "pencil", "brush", "eraser", "air-brush", "stamp", "@effect", "blur", "sharpen", "dodge", "burn", "smudge",
           "gradient", "bucket", "free-transform", "crop", "text"]
HISTORY_OWN = {
    "@picture": s("M2 3H14V13H2Z", "M2 11L6 7L9 10L11 8L14 11") + f(dot(11, 5.5, 1)),
    "@command": s(rrect(2, 3, 14, 13), "M2 6H14", "M5 9.5H11"),
    "@effect": effect(af(star(12, 4, 3.4))),
}
