#!/usr/bin/env python3
"""compare_ctl.py BUILD-FOLDER: one table of invhwctl's scan beside other inventory tools, and one of what a row costs.

First this machine: the whole scan and the tools that are installed take turns; wall and CPU milliseconds are medians over
rounds. Memory is the sum of the proportional set sizes of a command's processes at its largest: other rounds, in which nobody
looks at the time, are sampled as fast as it goes. Then copies of machines that grow, at two sizes: what one more row costs
is to be the same.
"""

import os
import shutil
import subprocess
import sys
import tempfile

import trees
from runs import CHILDREN, CPU, PEAK, ROUNDS, WALL, Run, cell, line, run_in_turn

PEERS = {
    # name: words, how many times faster the scan is to be by wall time
    "lshw -xml": (["lshw", "-xml"], 3),
    "hwinfo --short": (["hwinfo", "--short"], 10),
    "inxi -F": (["inxi", "-F"], 10),
}
SAMPLED_RUNS = 20  # of a short command; a long one has many samples in one

BUILD = os.path.abspath(sys.argv[1])
PROGRAM = BUILD + "/bin/invhwctl"
MEASURE = BUILD + "/bin/measure"


def read(path):
    try:
        with open(path, encoding="ascii", errors="replace") as file:
            return file.read()
    except OSError:
        return ""  # it has ended


def processes_of(process):
    """A process and all that it has started."""
    found = [process]
    for one in found:
        found.extend(int(child) for child in read(f"/proc/{one}/task/{one}/children").split())
    return found


def proportional_set(process):
    """KiB of a process, of what it shares with others its part."""
    for text in read(f"/proc/{process}/smaps_rollup").splitlines():
        if text.startswith("Pss:"):
            return int(text.split()[1])
    return 0


def peak_of(words):
    """The largest sum that was seen while a command ran, and how often was looked."""
    peak, looks = 0, 0
    with subprocess.Popen(words, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as command:
        while command.poll() is None:
            peak = max(peak, sum(proportional_set(process) for process in processes_of(command.pid)))
            looks += 1
    return peak, looks


def largest_peak(words):
    peak, looks = peak_of(words)
    for _ in range(SAMPLED_RUNS if looks < 1000 else 1):
        again, more = peak_of(words)
        peak, looks = max(peak, again), looks + more
    return peak, looks


def this_machine(folder):
    scan = Run(MEASURE, [PROGRAM, "scan"], folder)
    installed = {name: words for name, (words, _) in PEERS.items() if shutil.which(words[0])}
    peers = {name: Run(MEASURE, words, folder) for name, words in installed.items()}
    run_in_turn([scan, *peers.values()])
    peak, looks = largest_peak([PROGRAM, "scan"])

    print(f"invhwctl scan on this machine; medians of {ROUNDS} rounds in turn; ratios are the tool's to invhwctl's")
    line("", "wall ms", "CPU ms", "PSS KiB", "looks", "processes", "wall ratio", "goal", "CPU ratio", "PSS ratio")
    line("invhwctl scan", cell(scan.median(WALL)), cell(scan.median(CPU)), peak, looks, cell(scan.least(CHILDREN) + 1, 0))
    for name, peer in peers.items():
        if peer.fails:
            line(name, "fails here")
            continue
        theirs, seen = largest_peak(installed[name])
        line(name, cell(peer.median(WALL)), cell(peer.median(CPU)), theirs, seen, cell(peer.least(CHILDREN) + 1, 0),
             cell(peer.median(WALL) / scan.median(WALL)), f">= {PEERS[name][1]}", cell(peer.median(CPU) / scan.median(CPU)),
             cell(theirs / peak))
    missing = [name for name in PEERS if name not in installed]
    if missing:
        print("not installed (./dev bench --install): " + ", ".join(missing))


def growing_trees(folder):
    print("\ncopies that grow: CPU milliseconds of a scan of the group, and what a row adds to those of a copy without any")
    line("", "rows", "CPU ms", "us a row", "largest KiB")
    for what, (make, counts, group) in trees.GROWING.items():
        runs = {}
        for count in [0, *counts]:
            tree = os.path.join(folder, f"tree-{what}-{count}".replace(" ", "-"))
            make(tree, count)
            runs[count] = Run(MEASURE, [PROGRAM, "scan", "--root", tree, "--group", group, "--deadline", "60"], folder)
        run_in_turn(runs.values())
        for count in counts:
            added = runs[count].median(CPU) - runs[0].median(CPU)
            line(what, count, cell(runs[count].median(CPU), 2), cell(1000 * added / count, 2), cell(runs[count].median(PEAK), 0))


def packages_beside_dpkg(folder):
    if not shutil.which("dpkg-query"):
        return
    count = 5000
    tree = os.path.join(folder, "packages")
    trees.packages(tree, count)
    scan = Run(MEASURE, [PROGRAM, "scan", "--root", tree, "--group", "Software Packages"], folder)
    query = Run(MEASURE, ["dpkg-query", "--admindir", tree + "/var/lib/dpkg", "-W"], folder)
    run_in_turn([scan, query])
    print(f"\n{count} packages of dpkg's; the ratio is dpkg-query's to invhwctl's")
    line("", "wall ms", "CPU ms", "wall ratio", "goal")
    line("invhwctl scan", cell(scan.median(WALL)), cell(scan.median(CPU)), cell(query.median(WALL) / scan.median(WALL)), "> 1")
    line("dpkg-query -W", cell(query.median(WALL)), cell(query.median(CPU)))


with tempfile.TemporaryDirectory() as scratch:
    this_machine(scratch)
    packages_beside_dpkg(scratch)
    growing_trees(scratch)
