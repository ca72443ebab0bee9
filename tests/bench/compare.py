#!/usr/bin/env python3
"""compare.py PROGRAM: times whole scans of this machine beside other inventory tools, those that are installed.

The commands take turns, so that a change of the machine's speed meets all of them. Every figure is the median over the
rounds; the ratio is that of the tool's wall time to ours.
"""

import os
import shutil
import statistics
import subprocess
import sys
import tempfile

ROUNDS = 9

PEERS = {
    "lshw -xml": ["lshw", "-xml"],
    "hwinfo": ["hwinfo"],
    "inxi -F": ["inxi", "-F"],
    "dmidecode": ["dmidecode"],
    "facter": ["facter"],
}


def forks_since_boot():
    with open("/proc/stat", encoding="ascii") as stat:
        for line in stat:
            if line.startswith("processes "):
                return int(line.split()[1])
    return 0


def run(command, folder):
    """Runs command once; returns wall ms, CPU ms with its children, peak KiB of its largest process, children.

    None when the command does not end by itself on this machine."""
    measure = os.path.join(os.path.dirname(os.path.abspath(sys.argv[1])), "measure")
    forks = forks_since_boot()
    result = subprocess.run([measure, folder, *command], capture_output=True, text=True, check=False)
    if result.returncode != 0:
        return None
    children = max(0, forks_since_boot() - forks - 2)  # less the command itself and the one that measures it
    wall, cpu, peak = (float(figure) for figure in result.stdout.split())
    return wall, cpu, peak, children


def main():
    program = os.path.abspath(sys.argv[1])
    commands = {"invhw": [program]}
    commands.update({name: words for name, words in PEERS.items() if shutil.which(words[0])})
    missing = [name for name, words in PEERS.items() if not shutil.which(words[0])]
    runs = {name: [] for name in commands}
    with tempfile.TemporaryDirectory() as folder:
        for round_number in range(ROUNDS + 1):
            for name, words in list(commands.items()):
                figures = run(words, folder)
                if figures is None:
                    print(f"{name} fails on this machine")
                    del commands[name], runs[name]
                elif round_number > 0:  # the first round warms the caches
                    runs[name].append(figures)

    print(f"whole scans of this machine, medians of {ROUNDS} rounds in turn")
    print(f"{'program':<12} {'wall ms':>10} {'cpu ms':>10} {'peak KiB':>10} {'children':>9} {'wall ratio':>11}")
    ours = statistics.median(figures[0] for figures in runs["invhw"])
    for name, figures in runs.items():
        wall, cpu, peak = (statistics.median(column) for column in list(zip(*figures))[:3])
        children = min(figure[3] for figure in figures)  # other programs' processes only add to the count
        print(f"{name:<12} {wall:>10.1f} {cpu:>10.1f} {peak:>10.0f} {children:>9} {wall / ours:>11.1f}")
    if missing:
        print("not installed (./dev bench --install): " + ", ".join(missing))


main()
