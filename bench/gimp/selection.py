#!/usr/bin/env python3
"""The Select menu against GIMP's: the same soft-edged ellipse over half of 3840 x 2160, the same machine, one table.

    bench/gimp/selection.py [BUILD_DIR]

BUILD_DIR (build) holds kestrune_bench. Each of ours must be at least 5 times faster. Ends with status 1 where one is not,
and with a word and status 0 where GIMP is not installed. Undo is switched off on GIMP's side.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile

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


def script(result):
    lines = ['(define out (open-output-file "%s"))' % result,
             "(define (micros t) (+ (* 1000000 (car t)) (cadr t)))",
             "(define (bench name op)",
             "  (let* ((i (car (gimp-image-new 3840 2160 RGB))) (start 0))",
             "    (gimp-image-undo-disable i)",
             "    (gimp-context-set-antialias TRUE)",
             "    (gimp-image-select-ellipse i CHANNEL-OP-REPLACE 384 150 3072 1719)",
             "    (gimp-selection-feather i 15)",
             "    (set! start (gettimeofday))",
             "    (op i)",
             '    (display (string-append name "|" (number->string (/ (- (micros (gettimeofday)) (micros start)) 1000.0))) out)',
             "    (newline out)",
             "    (gimp-image-delete i)))"]
    for name, op in PAIRS:
        lines += ['(catch #f (bench "%s" (lambda (i) %s)))' % (name, op)] * RUNS
    lines += ["(close-output-port out)", "(gimp-quit 1)"]
    return "\n".join(lines)


def gimp_times(gimp, folder):
    path = os.path.join(folder, "selection.scm")
    result = os.path.join(folder, "times.txt")
    with open(path, "w") as out:
        out.write(script(result))
    environment = dict(os.environ, GIMP2_DIRECTORY=os.path.join(folder, "gimp"))
    subprocess.run([gimp, "-i", "-d", "-f", "-b", '(load "%s")' % path], env=environment, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, timeout=900, check=False)
    times = {}
    if os.path.exists(result):
        with open(result) as lines:
            for line in lines:
                name, value = line.rstrip().split("|")
                times.setdefault(name, []).append(float(value))
    return {name: sorted(values)[len(values) // 2] for name, values in times.items()}


def our_times(bench):
    times = {}
    run = subprocess.run([bench, "--filter", "selection", "--runs", "7"], text=True, stdout=subprocess.PIPE, check=False)
    for line in run.stdout.splitlines():
        match = re.match(r"selection: (.*?) / .*? ([0-9.]+) ms +[0-9.]+ ms", line)
        if match:
            times.setdefault(match.group(1), float(match.group(2)))
    return times


def main():
    build = sys.argv[1] if len(sys.argv) > 1 else "build"
    bench = os.path.join(build, "kestrune_bench")
    gimp = shutil.which("gimp-console") or shutil.which("gimp")
    if not gimp:
        print("skipped: GIMP is not installed")
        return 0
    if not os.path.exists(bench):
        print("%s is missing: configure with -DKESTRUNE_BENCH=ON and build it" % bench, file=sys.stderr)
        return 2
    with tempfile.TemporaryDirectory() as folder:
        peers = gimp_times(gimp, folder)
    own = our_times(bench)
    slow = 0
    compared = 0
    print("%-34s %12s %12s %8s" % ("selection, 3840 x 2160", "GIMP", "Kestrune", "factor"))
    for name, _ in PAIRS:
        if name not in peers or name not in own:
            print("%-34s %12s %12s" % (name, "-" if name not in peers else "%.1f ms" % peers[name],
                                       "-" if name not in own else "%.1f ms" % own[name]))
            continue
        compared += 1
        factor = peers[name] / own[name]
        slow += factor < FACTOR
        print("%-34s %9.1f ms %9.1f ms %8.1f%s" % (name, peers[name], own[name], factor, "" if factor >= FACTOR else "  UNDER"))
    if not compared:
        print("nothing could be compared", file=sys.stderr)
        return 2
    return 1 if slow else 0


if __name__ == "__main__":
    sys.exit(main())
