"""Commands and widget glyphs. What a command brings, takes away or turns is in the accent; plus makes, minus
removes."""
from svgkit import *
from tools import DROP, RAYS

PAGE = s("M3 1H9L13 5V14H3Z", "M9 1V5H13")
PAGE_CUT = s("M8 14H3V1H9L13 5V7", "M9 1V5H13")          # room for a badge at the lower right
FLOPPY = s("M2 2H11L14 5V14H2Z", "M5 14V9H11V14", "M5 2V5H10V2")
CLIP = s("M5 3H3V14H13V3H11", rrect(5, 1, 11, 4, .8))
CLIP_CUT = s("M5 3H3V14H8", "M11 3H13V8", rrect(5, 1, 11, 4, .8))
PRINTER = s("M4 6V2H12V6", "M4 12H2V6H14V12H12", "M4 10H12V14H4Z")
PRINTER_CUT = s("M4 6V2H12V6", "M4 12H2V6H14V8", "M7 14H4V10H7")
WINDOW = s(rrect(2, 2, 14, 14), "M2 5H14")
PICTURE_CUT = s("M7 13H3A1 1 0 0 1 2 12V4A1 1 0 0 1 3 3H8", "M14 9V12A1 1 0 0 1 13 13H11", "M2.3 12L5.5 8.5L9.5 13")
VIEWFINDER = s(*corners(1, 1, 15, 15, 3))
LENS = s(circ(7, 7, 5), "M10.6 10.6L14.4 14.4")
DASHED = s(*dashrect(2, 2, 14, 14))
POINTER = "M5 3.4V12L7.1 10L8.5 13L10 12.3L8.6 9.4H11.4Z"
VENN = (circ(8, 5.8, 3.8), circ(5.6, 9.8, 3.8), circ(10.4, 9.8, 3.8))


def stripes(x0, x1, *ys):
    return s(*[f"M{x0} {y}H{x1}" for y in ys])


def quarter_turn():
    """A page and an arrow that turns it to the left."""
    return s("M6 8H14V14H6Z") + a("M12.4 4.6C10.6 1.6 3.6 1.4 2.6 8", head(2.5, 8.6, 100, 3))


def flip_halves():
    return (t("M6 3V13H1.4Z", opacity=.3) + s("M6 3V13H1.4Z") + a("M10 3V13H14.6Z")
            + s("M8 1V2.6", "M8 5.4V7", "M8 9V10.6", "M8 13.4V15"))


def upright(parts):
    """Turns a drawing about two halves side by side into one about two halves on top of each other."""
    return [p.moved((0, 1, 1, 0, 0, 0)) for p in parts]


def mode(*inside):
    return s(rrect(2, 2, 14, 14)) + [p for part in inside for p in part]


def filters(*mark):
    """A picture with the mark of what is done to it at the upper right."""
    return PICTURE_CUT + [p for part in mark for p in part]


def fly(parts):
    return moved(parts, 7, -.2, .62)


def graph(curve):
    return s("M2 2V14H14") + a(curve)


COMMANDS = {
    # files
    "new": PAGE_CUT + plus(),
    "open": s("M2 13V3H6L8 5H13V7", "M2 13L4.6 7H15L12.6 13Z"),
    "save": FLOPPY,
    "save-as": s("M7 14H2V2H11L14 5V6.5", "M5 14V9H8", "M5 2V5H10V2") + a("M9 15L9.6 12.4L13 9L15 11L11.6 14.4Z"),
    "save-all": s("M4 2H11.5L14 4.5V11", "M2 5H9L11 7V14H2Z", "M4 14V11H9V14"),
    "export": s("M7 3H2V14H13V9") + a("M7 9L14 2", "M9.6 2H14V6.4"),
    "print": PRINTER + f(dot(11.5, 8, .75)),
    "print-preview": PAGE_CUT + a(circ(11, 11, 2.6), "M13 13L15 15"),
    "printer-setup": PRINTER_CUT + sliders(),
    "close": WINDOW + a("M6 7.5L10 11.5", "M10 7.5L6 11.5"),
    "close-all": s("M5 2H13A1 1 0 0 1 14 3V10", rrect(2, 5, 11, 14)) + a("M5 8L8 11", "M8 8L5 11"),
    "exit": s("M8 2H3V14H8") + a("M6.5 8H14", head(14, 8, 0, 4)),
    "recent": s(circ(8, 8, 6), "M8 4.5V8H11"),
    "info": PAGE + stripes(6, 10, 8, 11),
    "browser": s(rrect(2, 2, 14, 14), "M6 2V14") + f(cell(8, 4, 9, 5), cell(11, 4, 12, 5), cell(8, 7, 9, 8), cell(11,
        7, 12, 8),
                                                    cell(8, 10, 9, 11), cell(11, 10, 12, 11)),
    "refresh": s("M13.4 6.4A5.8 5.8 0 0 0 2.6 6.2", "M2.6 9.6A5.8 5.8 0 0 0 13.4 9.8", "M13.6 2.8V6.4H10",
        "M2.4 13.2V9.6H6"),
    "slide-show": s("M1 3H15", "M3 3V11H13V3", "M8 11V13", "M5 15L8 13L11 15") + a("M6.8 5V9L10 7Z"),
    # editing
    "undo": s("M2.5 6H9.5A4 4 0 0 1 9.5 14H6", "M6 2.5L2.5 6L6 9.5"),
    "redo": s("M13.5 6H6.5A4 4 0 0 0 6.5 14H10", "M10 2.5L13.5 6L10 9.5"),
    "cut": s(circ(4.5, 12.3, 2), circ(11.5, 12.3, 2), "M5.5 10.6L11 1.5", "M10.5 10.6L5 1.5"),
    "copy": s(rrect(6, 6, 14, 14), "M3 10A1 1 0 0 1 2 9V3A1 1 0 0 1 3 2H9A1 1 0 0 1 10 3"),
    "paste": CLIP + stripes(6, 10, 8, 11),
    "paste-new": CLIP_CUT + plus(),
    "copy-to-clipboard": CLIP + a("M8 6V11.5", head(8, 11.5, 90, 3)),
    "clear-clipboard": CLIP_CUT + minus(),
    "clear": s("M2 4H14", "M6 4V2H10V4", "M3.5 4L4.3 14H11.7L12.5 4", "M6.7 7V11", "M9.3 7V11"),
    "fill": s(rrect(2, 2, 14, 14)) + at(cell(4, 4, 12, 12), opacity=1),
    "stroke-outline": s(*dashrect(5, 5, 11, 11)) + a(rrect(2, 2, 14, 14)),
    # view
    "zoom-in": LENS + a("M7 5V9", "M5 7H9"),
    "zoom-out": LENS + a("M5 7H9"),
    "fit": s(*corners(2, 2, 14, 14)) + a("M6 6H10V10H6Z"),
    "actual-size": s(rrect(1, 3, 15, 13), "M4 6.6L5 6V10", "M11 6.6L12 6V10") + f(dot(8, 6.6, .8), dot(8, 9.6, .8)),
    "full-screen": s(*corners(2, 2, 14, 14)) + a("M4.5 4.5L6.5 6.5", "M11.5 4.5L9.5 6.5", "M4.5 11.5L6.5 9.5",
        "M11.5 11.5L9.5 9.5"),
    "rulers": s("M2 2H14V6H6V14H2Z", "M8 2V3.6", "M10 2V4.2", "M12 2V3.6", "M2 8H3.6", "M2 10H4.2", "M2 12H3.6"),
    "grid": s(rrect(2, 2, 14, 14), "M6 2V14", "M10 2V14", "M2 6H14", "M2 10H14"),
    "guides": s(rrect(3, 3, 13, 13)) + a("M6 1V15", "M1 9H15"),
    "toolbox": s(rrect(4, 1, 12, 15), "M8 1V15", "M4 8H12", "M4 4.5H12", "M4 11.5H12"),
    "colour-box": s(circ(8, 8, 6)) + f(dot(5, 7, 1), dot(8, 4.8, 1), dot(11, 7, 1)) + af(dot(9.6, 10.6, 1.6)),
    "brush-box": f(rrect(1.5, 2.5, 14.5, 3.5, .5), rrect(1.5, 5.5, 14.5, 7.5, 1), rrect(1.5, 9.5, 14.5, 13.5, 2)),
    "history-box": s("M2.7 8A5.8 5.8 0 1 1 4.4 12.2", "M8.4 5V8.4L10.8 10", "M1 6.2L2.7 8.4L5 6.8"),
    "assistant-box": s(rrect(2, 2, 14, 14), "M10 2V14") + stripes(4, 7, 5, 8, 11),
    # selections
    "select-all": DASHED + at(cell(4, 4, 12, 12), opacity=.55),
    "select-none": DASHED + a("M6 6L10 10", "M10 6L6 10"),
    "select-invert": at(rect(3.2, 3.2, 12.8, 12.8) + circ(8, 8, 2.6), opacity=.55) + DASHED + s(circ(8, 8, 2.6)),
    "select-feather": s(*dashed(ellipse(8, 8, 6, 6), 9, .42)) + at(circ(8, 8, 4.4), opacity=.25) + at(circ(8, 8, 3),
        opacity=.4) + af(circ(8, 8, 1.6)),
    "select-border": s(*dashrect(1, 1, 15, 15), *dashrect(5, 5, 11, 11)) + at(rect(2, 2, 14, 14) + rect(4, 4, 12, 12),
        opacity=.55),
    "select-grow": DASHED + a("M4 8H12", head(4, 8, 180), head(12, 8, 0)),
    "select-shrink": DASHED + a("M4 8H6.8", head(7, 8, 0, 2.4), "M12 8H9.2", head(9, 8, 180, 2.4)),
    "select-crop": s("M4 1V12H15", "M1 4H12V15") + at(cell(6, 6, 10, 10), opacity=.55),
    "selection-flip-horz": DASHED + a("M7 5V11H4Z", "M9 5V11H12Z"),
    "selection-flip-vert": DASHED + a("M5 7H11V4Z", "M5 9H11V12Z"),
    # the picture
    "rotate-left": quarter_turn(),
    "rotate-right": mirrored(quarter_turn(), 8),
    "rotate-half": s("M5 6H11V10H5Z") + a("M3 5.4C4.4 1.8 10.6 1.2 13 5", head(13.3, 5.4, 62, 2.8),
        "M13 10.6C11.6 14.2 5.4 14.8 3 11", head(2.7, 10.6, 242, 2.8)),
    "flip-horz": flip_halves(),
    "flip-vert": upright(flip_halves()),
    "resize": s("M2 8H8V14H2Z", "M2 5V2H5", "M8 2H9", "M14 8V7", "M11 14H14V11") + a("M9.5 6.5L14 2", "M10.5 2H14V5.5"),
    "canvas-size": s(*corners(1, 1, 15, 15, 2)) + s("M5 5H11V11H5Z") + t("M5 5H11V11H5Z") + a("M8 3.4V1",
        "M8 12.6V15", "M3.4 8H1", "M12.6 8H15"),
    "crop": s("M4 1V12H15", "M1 4H12V15"),
    "merge": s(rrect(2, 2, 10, 10), "M12 6H13A1 1 0 0 1 14 7V13A1 1 0 0 1 13 14H7A1 1 0 0 1 6 13V12") + at(rect(6, 6,
        10, 10), opacity=.55) + a("M6 10V6H10"),
    "variations": s(rrect(6, 6, 10, 10, .6)) + s(*[rrect(x, y, x + 3, y + 3, .6) for x, y in ((1, 1), (12, 1), (1,
        12), (12, 12))]) + a("M6 6L5 5", "M10 6L11 5", "M6 10L5 11", "M10 10L11 11"),
    "mode-bitmap": mode(f("M14 2.5V13A1 1 0 0 1 13 14H2.5Z")),
    "mode-16": mode(f(cell(4, 4, 7, 7), cell(9, 9, 12, 12)), t(cell(9, 4, 12, 7), cell(4, 9, 7, 12), opacity=.35)),
    "mode-256": mode(f(*[rect(3.5 + 3 * x, 3.5 + 3 * y, 6.5 + 3 * x, 6.5
        + 3 * y) for x in range(3) for y in range(3) if (x + y) % 2 == 0]),
                     t(*[rect(3.5 + 3 * x, 3.5 + 3 * y, 6.5 + 3 * x, 6.5
                     + 3 * y) for x in range(3) for y in range(3) if (x + y) % 2], opacity=.3)),
    "mode-grey": mode(*[f(rect(3.5 + k * 2.25, 3.5, 5.75 + k * 2.25, 12.5), opacity=o) for k, o in enumerate((1, .65,
        .35, .12))]),
    "mode-rgb": s(VENN[1], VENN[2]) + at(VENN[0], opacity=.35) + a(VENN[0]),
    "colour-management": s(rrect(2, 2, 14, 11), "M8 11V14", "M5 14H11") + at("M8 4.4L11 8.8H5Z")
        + a("M8 4.4L11 8.8H5Z"),
    # capture: what is caught stands in a viewfinder
    "capture-screen": VIEWFINDER + a("M4 4H12V9H4Z", "M8 9V12", "M6 12H10"),
    "capture-window": VIEWFINDER + a("M4 4H12V12H4Z") + af(cell(4, 4, 12, 6)),
    "capture-client": VIEWFINDER + s("M4 7V4H12V7") + a("M4 7H12V12H4Z") + at(rect(4, 7, 12, 12), opacity=.3),
    "capture-object": VIEWFINDER + a(rrect(4, 5, 12, 9, 1)) + s("M8 8V13L9.4 11.8L10.4 13.6"),
    "capture-area": VIEWFINDER + a(*dashrect(5, 5, 11, 11)),
    "capture-cursor": VIEWFINDER + a(POINTER),
    "capture-menu": VIEWFINDER + s("M4 4H12V12H4Z") + af(rect(4.5, 6.5, 11.5, 9.5)),
    "capture-settings": s("M1 4V1H4", "M12 1H15V4", "M4 15H1V12", circ(7.5, 6.5, 2.5)) + sliders(),
    "scanner": s("M2 8.5L13 4", rrect(2, 9, 14, 13)) + a("M5 11H9"),
    "scanner-select": s("M2 8.5L13 4", "M7 13H3A1 1 0 0 1 2 12V10A1 1 0 0 1 3 9H14") + sliders(),
    # settings, windows, help
    "preferences": s(gear(8, 8, 6.6, 5), circ(8, 8, 2)),
    "help": s(circ(8, 8, 6), "M6.2 6.3A1.9 1.9 0 1 1 9 8C8.3 8.4 8 8.7 8 9.3") + f(dot(8, 11.4, .85)),
    "about": s(circ(8, 8, 6), "M8 7.6V11.4") + f(dot(8, 5, .9)),
    "window-new": s("M8 14H3A1 1 0 0 1 2 13V3A1 1 0 0 1 3 2H13A1 1 0 0 1 14 3V8", "M2 5H14") + plus(),
    "window-cascade": s(rrect(2, 2, 10, 9), "M2 4H10")
        + s("M12 6H13A1 1 0 0 1 14 7V13A1 1 0 0 1 13 14H7A1 1 0 0 1 6 13V11"),
    "window-tile-horz": s(rrect(2, 2, 14, 7), rrect(2, 9, 14, 14)) + f(rect(2.5, 2.5, 13.5, 3.5), rect(2.5, 9.5, 13.5,
        10.5)),
    "window-tile-vert": s(rrect(2, 2, 7, 14), rrect(9, 2, 14, 14)) + f(rect(2.5, 2.5, 6.5, 3.5), rect(9.5, 2.5, 13.5,
        3.5)),
    "window-arrange": s(rrect(2, 2, 14, 14)) + f(cell(4, 10, 5, 12), cell(7, 10, 8, 12), cell(10, 10, 11, 12)),
    # filters
    "filter": filters(af(star(11.8, 4.6, 3.6))),
    "filter-blur": filters(fly(a(DROP))),
    "filter-sharpen": filters(a("M12 1.5L15 7.5H9Z")),
    "filter-noise": filters(af(dot(9.4, 2.2), dot(12, 1.4), dot(14.4, 2.8), dot(10.4, 4.8), dot(13, 4.8), dot(14.7,
        6.4), dot(11.6, 7.2))),
    "filter-relief": filters(a("M9 7.5V2H15"), at("M9 7.5V2H15L13 4H11V5.5Z", opacity=.5)),
    "filter-distort": filters(a("M9 2.6C10 1 11.2 1 12 2.6C12.8 4.2 14 4.2 15 2.6",
        "M9 6.2C10 4.6 11.2 4.6 12 6.2C12.8 7.8 14 7.8 15 6.2")),
    "filter-colour": filters(a(circ(12, 4.5, 3)), af("M12 1.5A3 3 0 0 1 12 7.5Z")),
    "filter-custom": filters(af(*[rect(9 + 2.2 * x, 1.2 + 2.2 * y, 10.6 + 2.2 * x, 2.8
        + 2.2 * y) for x in range(3) for y in range(3)])),
    "levels": s("M2 12H14") + t("M2 12C4 11 5 4 7 4C9 4 9.5 8.5 11 9C12 9.3 13 11 14 12Z", opacity=.35)
        + s("M2 12C4 11 5 4 7 4C9 4 9.5 8.5 11 9C12 9.3 13 11 14 12") + af("M4 12.4L5.4 15H2.6Z",
        "M8 12.4L9.4 15H6.6Z", "M12 12.4L13.4 15H10.6Z"),
    "curves": graph("M2 14C7 13 8 4 14 3"),
    "brightness": s(circ(8, 8, 3)) + f("M8 5A3 3 0 0 1 8 11Z") + s(*RAYS),
    "hue": s(*VENN),
    "balance": s("M8 2V14", "M5 14H11", "M3 4H13", "M3 4L1.2 9H4.8Z", "M13 4L11.2 9H14.8Z"),
    "gamma": graph("M2 14C3 6 8 3 14 3"),
    "invert": s(rrect(2, 2, 14, 14)) + f("M8 2.5H13.5V13.5H8Z" + "M8 5A3 3 0 0 1 8 11Z") + f("M8 5A3 3 0 0 0 8 11Z"),
    "desaturate": s(DROP) + f("M8 1.5V14.3A4.5 4.5 0 0 1 3.5 9.8C3.5 7 6.2 4.4 8 1.5Z", opacity=.45),
    "equalize": s("M2 14H14") + f(cell(3, 8, 4, 12), cell(6, 8, 7, 12), cell(9, 8, 10, 12), cell(12, 8, 13, 12))
        + a("M5 2H11", "M5 5H11"),
    "threshold": graph("M2 11H8V4H14"),
    "posterize": graph("M2 12H5V9H8V6H11V3H14"),
    "histogram": s("M2 14H14") + f(cell(3, 10, 4, 12), cell(6, 5, 7, 12), cell(9, 3, 10, 12), cell(12, 8, 13, 12)),
}

ANCHORS = ("e", "se", "s", "sw", "w", "nw", "n", "ne")

WIDGETS = {
    "close": s("M4 4L12 12", "M12 4L4 12"),
    "menu": s("M3.5 4.5H12.5", "M3.5 8H12.5", "M3.5 11.5H12.5"),
    "minimize": s("M4 11H12"),
    "maximize": s("M4 4H12V12H4Z"),
    "restore": s("M3 6H10V13H3Z", "M6 6V3H13V10H10"),
    "pin": s("M6 2H10", "M6.6 2V7L4.4 9.5H11.6L9.4 7V2", "M8 9.5V14"),
    "pinned": s("M6 2H10", "M6.6 2V7L4.4 9.5H11.6L9.4 7V2Z", "M8 9.5V14") + f("M6.6 2V7L4.4 9.5H11.6L9.4 7V2Z"),
    "arrow-down": s("M4 6L8 10L12 6"),
    "arrow-up": s("M4 10L8 6L12 10"),
    "to-bar": s("M2.5 2.5H13.5") + a("M8 13.5V6", head(8, 5.6, 270, 4)),
    "arrow-left": s("M10 4L6 8L10 12"),
    "arrow-right": s("M6 4L10 8L6 12"),
    "spin-up": f("M8 5L12 10.5H4Z"),
    "spin-down": f("M8 11L12 5.5H4Z"),
    "popup-corner": f("M14.5 9.5V14.5H9.5Z"),
    "swap-colours": s("M4 11V7A3 3 0 0 1 7 4H11", head(4, 12, 90, 3.4), head(12, 4, 0, 3.4)),
    "default-colours": f(rrect(2.5, 2.5, 9.5, 9.5, .6)) + s("M12 6.5H13.5V13.5H6.5V12"),
    "link": s("M6.5 4H5A4 4 0 0 0 5 12H6.5", "M9.5 4H11A4 4 0 0 1 11 12H9.5", "M5.5 8H10.5"),
    "unlink": s("M6.5 4H5A4 4 0 0 0 5 12H6.5", "M9.5 4H11A4 4 0 0 1 11 12H9.5"),
    "add": a("M8 3V13", "M3 8H13"),
    "remove": a("M3 8H13"),
    "reset": s("M3.2 5.5A5.6 5.6 0 1 1 2.6 9.6", "M3 2.4V5.8H6.4"),
    "eye": s("M1.4 8C4 3.6 12 3.6 14.6 8C12 12.4 4 12.4 1.4 8Z", circ(8, 8, 2)),
    "check": s("M3 8.5L6.5 12L13 4.5"),
    "folder": s("M2 13V3H6L8 5H14V13Z"),
    "drive": s(rrect(2, 5, 14, 11)) + f(dot(11.5, 8, .8)),
    "home": s("M2 8L8 2.5L14 8", "M4 6.6V13.5H12V6.6"),
    "desktop": s(rrect(2, 3, 14, 11), "M8 11V14", "M5 14H11"),
    "loading": s("M8 2A6 6 0 0 1 14 8") + t(circ(8, 8, 6.5) + circ(8, 8, 5.5), opacity=.3),
    "anchor-centre": f(circ(8, 8, 2.2)),
    # how a new selection meets the old one: the accent is what is selected afterwards
    "select-new": at("M3 3H13V13H3Z") + s("M3 3H13V13H3Z"),
    "select-add": at("M2 2H10V6H14V14H6V10H2Z") + s("M2 2H10V6H14V14H6V10H2Z"),
    "select-subtract": at("M2 2H10V6H6V10H2Z") + s("M2 2H10V6H6V10H2Z", "M12 6H14V8", "M14 12V14H12", "M8 14H6V12"),
    "select-intersect": at("M6 6H10V10H6Z", opacity=.6) + s("M2 2H10V10H2Z", "M6 6H14V14H6Z"),
}
for k, name in enumerate(ANCHORS):
    WIDGETS[f"anchor-{name}"] = turned(s("M3 8H12.6", head(13, 8, 0, 4)), 45 * k, 8, 8)
