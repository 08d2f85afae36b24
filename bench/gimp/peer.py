"""What the comparisons with GIMP share: its batch run, our bars' times, and the table of both."""
import os
import re
import shutil
import subprocess
import sys
import tempfile

BEGIN = """(define out (open-output-file "%s"))
(define (micros t) (+ (* 1000000 (car t)) (cadr t)))
(define (bench name op)
  (let* (%s (start 0))
    (gimp-image-undo-disable i)
    %s
    (set! start (gettimeofday))
    (op i d)
    (display (string-append name "|" (number->string (/ (- (micros (gettimeofday)) (micros start)) 1000.0))) out)
    (newline out)
    (gimp-image-delete i)))
"""


def median(values):
    return sorted(values)[len(values) // 2]


def gimp_times(gimp, folder, pairs, runs, bindings, setup):
    """The median milliseconds of each pair's operation. `bindings` make the picture i and the layer d, `setup` what is not timed."""
    path = os.path.join(folder, "batch.scm")
    result = os.path.join(folder, "times.txt")
    # An operation that this GIMP does not have ends its own line alone.
    lines = ['(catch #f (bench "%s" (lambda (i d) %s)))\n' % pair for pair in pairs for _ in range(runs)]
    with open(path, "w") as out:
        out.write(BEGIN % (result, bindings, setup) + "".join(lines) + "(close-output-port out)\n(gimp-quit 1)\n")
    environment = dict(os.environ, GIMP2_DIRECTORY=os.path.join(folder, "gimp"))
    try:  # the second batch ends GIMP where the first one failed
        subprocess.run([gimp, "-i", "-d", "-f", "-b", '(load "%s")' % path, "-b", "(gimp-quit 1)"], env=environment,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=900, check=False)
    except subprocess.TimeoutExpired:
        print("GIMP did not end", file=sys.stderr)
    times = {}
    if os.path.exists(result):
        with open(result) as written:
            for line in written:
                name, value = line.rstrip().split("|")
                times.setdefault(name, []).append(float(value))
    return {name: median(values) for name, values in times.items()}


def our_times(bench, groups, environment=None):
    """The milliseconds of the bars of these groups, by name without the group's and without what it is measured against."""
    times = {}
    for group in groups:
        run = subprocess.run([bench, "--filter", group, "--runs", "7"], env=dict(os.environ, **(environment or {})), text=True,
                             stdout=subprocess.PIPE, check=False)
        for line in run.stdout.splitlines():
            match = re.match(r"(?:%s: )?(.*?) / .*? ([0-9.]+) ms +[0-9.]+ ms" % group, line)
            if match:
                times.setdefault(match.group(1), float(match.group(2)))
    return times


def table(title, pairs, peers, own, factor):
    """Prints both; the program's status: 1 where one is not `factor` times faster, 2 where nothing could be compared."""
    def shown(times, name):
        return "%.1f ms" % times[name] if name in times else "-"

    slow, compared = 0, 0
    print("%-34s %12s %12s %8s" % (title, "GIMP", "Kestrune", "factor"))
    for name, _ in pairs:
        line = "%-34s %12s %12s" % (name, shown(peers, name), shown(own, name))
        if name in peers and name in own:
            compared += 1
            faster = peers[name] / own[name]
            slow += faster < factor
            line += " %8.1f%s" % (faster, "" if faster >= factor else "  UNDER")
        print(line)
    if not compared:
        print("nothing could be compared", file=sys.stderr)
        return 2
    return 1 if slow else 0


def compare(work):
    """Calls work(gimp, bench, folder) with both programs and a folder for its files; its result is the status."""
    bench = os.path.join(sys.argv[1] if len(sys.argv) > 1 else "build", "kestrune_bench")
    gimp = shutil.which("gimp-console") or shutil.which("gimp")
    if not gimp:
        print("skipped: GIMP is not installed")
        return 0
    if not os.path.exists(bench):
        print("%s is missing: configure with -DKESTRUNE_BENCH=ON and build it" % bench, file=sys.stderr)
        return 2
    with tempfile.TemporaryDirectory() as folder:
        return work(gimp, bench, folder)
