#!/usr/bin/env python3
"""compare.py BUILD-FOLDER: one table of whole programs' times.

First this machine: a scan beside other inventory tools, those that are installed, and beside the commands alone that the
scan has to start. Then recorded machines, whose commands are answered by the recorded-machine library, so that what is left
is the scan's own work (and the library's, which reads the record). Then machines that grow: what one more row costs.

The commands take turns, so that a change of the machine's speed meets all of them. Every figure is a median over rounds.
"""

import os
import shutil
import subprocess
import sys
import tempfile

import machines
from runs import CHILDREN, CPU, OWN, PEAK, ROUNDS, WALL, Run, cell, line, run_in_turn

PEERS = {
    "lshw -xml": ["lshw", "-xml"],
    "hwinfo": ["hwinfo"],
    "inxi -F": ["inxi", "-F"],
    "dmidecode": ["dmidecode"],
    "facter": ["facter"],
}

RECORDED = ["nothing-readable", "redhat9-kernel24", "scsi-server", "modern-server"]

BUILD = os.path.abspath(sys.argv[1])
PROGRAM = BUILD + "/bin/invhw"
MEASURE = BUILD + "/bin/measure"
COMMAND_LOG = BUILD + "/lib/libcommandlog.so"
FAKE_MACHINE = BUILD + "/lib/libfakemachine.so"
RECORDS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "machines")


def scan_of(machine, folder):
    """A scan of a recorded machine, in an empty environment."""
    environment = {"FAKEMACHINE": machine, "FAKEMACHINE_PASS": BUILD, "MEASURE_PRELOAD": FAKE_MACHINE, "TZ": "UTC0"}
    return Run(MEASURE, [PROGRAM], folder, environment)


def commands_of_a_scan(folder):
    log = folder + "/commands"
    environment = dict(os.environ, LD_PRELOAD=COMMAND_LOG, COMMANDLOG=log)
    subprocess.run([PROGRAM], cwd=folder, env=environment, stdout=subprocess.DEVNULL, check=True)
    return log


def own_peak(folder):
    result = subprocess.run([MEASURE, folder, "--own-peak", PROGRAM], capture_output=True, text=True, check=True)
    return int(result.stdout)


def this_machine(folder):
    invhw = Run(MEASURE, [PROGRAM], folder)
    log = commands_of_a_scan(folder)
    alone = Run(MEASURE, ["--commands", log], folder)
    peers = {name: Run(MEASURE, words, folder) for name, words in PEERS.items() if shutil.which(words[0])}
    run_in_turn([invhw, alone, *peers.values()])

    print(f"this machine; medians of {ROUNDS} rounds in turn; ratios are the tool's to invhw's")
    line("", "wall ms", "CPU ms", "own ms", "peak KiB", "children", "wall ratio", "CPU ratio", "own ratio")
    line("invhw", cell(invhw.median(WALL)), cell(invhw.median(CPU)), cell(invhw.median(OWN)), cell(invhw.median(PEAK), 0),
         cell(invhw.least(CHILDREN), 0))
    with open(log, encoding="utf-8", errors="replace") as commands:
        count = len(commands.readlines())
    line(f"its {count} commands alone", cell(alone.median(WALL)), cell(alone.median(CPU)), "-", "-", cell(alone.least(CHILDREN), 0),
         cell(alone.median(WALL) / invhw.median(WALL), 2), cell(alone.median(CPU) / invhw.median(CPU), 2))
    for name, peer in peers.items():
        if peer.fails:
            line(name, "fails here")
            continue
        line(name, cell(peer.median(WALL)), cell(peer.median(CPU)), cell(peer.median(OWN)), cell(peer.median(PEAK), 0),
             cell(peer.least(CHILDREN), 0), *(cell(peer.median(column) / invhw.median(column)) for column in (WALL, CPU, OWN)))
    print(f"the peak is that of a command's largest process; invhw's own process peaks at {own_peak(folder)} KiB")
    missing = [name for name, words in PEERS.items() if not shutil.which(words[0])]
    if missing:
        print("not installed (./dev bench --install): " + ", ".join(missing))


def recorded_machines(folder):
    runs = {name: scan_of(os.path.join(RECORDS, name), folder) for name in RECORDED}
    run_in_turn(runs.values())
    print("\nrecorded machines: the scan without its children, the library that plays the machine included")
    line("", "wall ms", "own ms", "peak KiB")
    for name, run in runs.items():
        line(name, cell(run.median(WALL)), cell(run.median(OWN)), cell(run.median(PEAK), 0))


def growing_machines(folder):
    print("\nmachines that grow: own milliseconds of a scan, and what a row adds to those of the machine without any")
    line("", "rows", "own ms", "us a row", "peak KiB")
    for what, (make, counts) in machines.GROWING.items():
        runs = {}
        for count in [0, *counts]:
            machine = os.path.join(folder, f"machine-{what}-{count}".replace(" ", "-").replace("/", "-"))
            make(machine, count)
            runs[count] = scan_of(machine, folder)
        run_in_turn(runs.values())
        for count in counts:
            added = runs[count].median(OWN) - runs[0].median(OWN)
            line(what, count, cell(runs[count].median(OWN), 2), cell(1000 * added / count, 2), cell(runs[count].median(PEAK), 0))


with tempfile.TemporaryDirectory() as scratch:
    this_machine(scratch)
    recorded_machines(scratch)
    growing_machines(scratch)
