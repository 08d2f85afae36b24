#!/usr/bin/env python3
"""Filters against GIMP's nearest operations: the same picture, the same machine, one table.

    bench/gimp/filters.py [BUILD_DIR]

BUILD_DIR (build) holds kestrune_bench. Each of ours must be at least 4 times faster. Ends with status 1 where one is not,
and with a word and status 0 where GIMP is not installed. Undo is switched off on GIMP's side, and ours writes into a fresh copy.
"""
import array
import os
import sys

import peer

WIDTH, HEIGHT = 3840, 2160
FACTOR = 4.0
RUNS = 3

# Our bar's name, and what GIMP is told: d is the layer, i the picture.
PAIRS = [
    ("invert", "(gimp-drawable-invert d FALSE)"),
    ("desaturate", "(gimp-drawable-desaturate d DESATURATE-LIGHTNESS)"),
    ("threshold", "(gimp-drawable-threshold d HISTOGRAM-VALUE 0.5 1.0)"),
    ("posterize", "(gimp-drawable-posterize d 5)"),
    ("gamma", "(gimp-drawable-levels d HISTOGRAM-VALUE 0 1 FALSE 1.4 0 1 FALSE)"),
    ("brightness and contrast", "(gimp-drawable-brightness-contrast d 0.2 0.3)"),
    ("levels", "(gimp-drawable-levels d HISTOGRAM-VALUE 0.1 0.9 FALSE 1.5 0 1 FALSE)"),
    ("curves", "(gimp-drawable-curves-spline d HISTOGRAM-VALUE 6 #(0 0 0.5 0.6 1 1))"),
    ("solarize", "(gimp-drawable-curves-spline d HISTOGRAM-VALUE 6 #(0 0 0.5 1 1 0))"),
    ("colour balance", "(gimp-drawable-color-balance d TRANSFER-MIDTONES FALSE 10 0 -40)"),
    ("colour balance, lightness kept", "(gimp-drawable-color-balance d TRANSFER-MIDTONES TRUE 10 0 -40)"),
    ("colourize", "(gimp-drawable-colorize-hsl d 180 50 0)"),
    ("old photo", "(gimp-drawable-colorize-hsl d 30 40 0)"),
    ("normalize", "(gimp-drawable-levels-stretch d)"),
    ("equalize", "(gimp-drawable-equalize d FALSE)"),
    ("hue and saturation", "(gimp-drawable-hue-saturation d HUE-RANGE-ALL 30 0 25 0)"),
    ("blur 3 x 3", "(plug-in-blur RUN-NONINTERACTIVE i d)"),
    ("sharpen", "(plug-in-unsharp-mask RUN-NONINTERACTIVE i d 1.0 0.5 0)"),
    ("matrix 5 x 5", "(plug-in-convmatrix RUN-NONINTERACTIVE i d 25 #(-8 -7 -6 -5 -4 -3 -2 -1 0 1 2 3 4 5 6 7 8 9 10 11 "
     "12 13 14 15 16) FALSE 100 0 5 #(1 1 1 1 0) 0)"),
    ("motion blur 100", "(plug-in-mblur RUN-NONINTERACTIVE i d 0 100 30 0 0)"),
    ("unsharp mask 5", "(plug-in-unsharp-mask RUN-NONINTERACTIVE i d 1.8 1.0 4)"),
    ("gaussian 5", "(plug-in-gauss RUN-NONINTERACTIVE i d 5 5 0)"),
    ("gaussian 50", "(plug-in-gauss RUN-NONINTERACTIVE i d 50 50 0)"),
    ("gaussian 250", "(plug-in-gauss RUN-NONINTERACTIVE i d 250 250 0)"),
    ("maximum 3", "(plug-in-dilate RUN-NONINTERACTIVE i d 0 7 1.0 15 0 255)"),
    ("minimum 3", "(plug-in-erode RUN-NONINTERACTIVE i d 0 7 1.0 15 0 255)"),
    ("median 3", "(plug-in-median-blur RUN-NONINTERACTIVE i d 1 50)"),
    ("median 9", "(plug-in-median-blur RUN-NONINTERACTIVE i d 4 50)"),
]


def write_picture(path):
    """Slopes with some noise on them."""
    noise = array.array("B", os.urandom(1 << 20))
    with open(path, "wb") as out:
        out.write(b"P6\n%d %d\n255\n" % (WIDTH, HEIGHT))
        slope = [(i // 9) & 0xFF for i in range(WIDTH * 3)]
        for y in range(HEIGHT):
            start = (y * 7919) % (len(noise) - WIDTH * 3)
            row = noise[start:start + WIDTH * 3]
            out.write(bytes((s + (n >> 4) + y // 5) & 0xFF for s, n in zip(slope, row)))


def work(gimp, bench, folder):
    picture = os.path.join(folder, "picture.ppm")
    write_picture(picture)
    bindings = '(i (car (gimp-file-load RUN-NONINTERACTIVE "%s" "p"))) (d (car (gimp-image-get-active-layer i)))' % picture
    peers = peer.gimp_times(gimp, folder, PAIRS, RUNS, bindings, "")
    own = peer.our_times(bench, ["filter", "median"], {"KESTRUNE_BENCH_PICTURE": picture})
    return peer.table("filter, 3840 x 2160", PAIRS, peers, own, FACTOR)


if __name__ == "__main__":
    sys.exit(peer.compare(work))
