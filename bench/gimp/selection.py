#!/usr/bin/env python3
"""The Select menu against GIMP's: the same soft-edged ellipse over half of 3840 x 2160, the same machine, one table.

    bench/gimp/selection.py [BUILD_DIR]

BUILD_DIR (build) holds kestrune_bench. Each of ours must be at least 5 times faster. Ends with status 1 where one is not,
and with a word and status 0 where GIMP is not installed. Undo is switched off on GIMP's side.
"""
import sys

import peer

FACTOR = 5.0
RUNS = 5

# Our bar's name, and what GIMP is told; i is the picture.
PAIRS = [
    ("feather 20", "(gimp-selection-feather i 20)"),
    ("feather 250", "(gimp-selection-feather i 250)"),
    ("grow 10", "(gimp-selection-grow i 10)"),
    ("grow 50", "(gimp-selection-grow i 50)"),
    ("shrink 10", "(gimp-selection-shrink i 10)"),
    ("shrink 50", "(gimp-selection-shrink i 50)"),
    ("border 10", "(gimp-selection-border i 10)"),
    ("border 50", "(gimp-selection-border i 50)"),
]


SETUP = """(gimp-context-set-antialias TRUE)
    (gimp-image-select-ellipse i CHANNEL-OP-REPLACE 384 150 3072 1719)
    (gimp-selection-feather i 15)"""


def work(gimp, bench, folder):
    peers = peer.gimp_times(gimp, folder, PAIRS, RUNS, "(i (car (gimp-image-new 3840 2160 RGB))) (d 0)", SETUP)
    return peer.table("selection, 3840 x 2160", PAIRS, peers, peer.our_times(bench, ["selection"]), FACTOR)


if __name__ == "__main__":
    sys.exit(peer.compare(work))
