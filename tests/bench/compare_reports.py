#!/usr/bin/env python3
"""compare_reports.py BUILD-FOLDER: what the report tools cost beside a parser that does nothing else.

A report of 100 MB is made, and one of a tenth of it. Every tool reads both; its CPU time with the large one is divided by that of
"xmllint --stream --noout". Memory is to be the same for both: only rows are in it, never a report. All take turns; times
are medians.
"""

import os
import shutil
import sys
import tempfile

from runs import CPU, PEAK, WALL, Run, cell, line, run_in_turn

ROUNDS = 3
MEGABYTE = 1_000_000
LARGE, SMALL = 100 * MEGABYTE, 10 * MEGABYTE

BUILD = os.path.abspath(sys.argv[1])
PROGRAM = BUILD + "/bin/invhwctl"
MEASURE = BUILD + "/bin/measure"

# A report's rows: each stands in an element of its own.
HEAD = "\n<serviceDataList>\n"
ROW = """
\t<serviceData>
\t\t<name>{0}</name>
\t\t<value>
\t\t\t<{0} version="2">
{1}\t\t\t</{0}>
\t\t</value>
\t</serviceData>
"""
VALUE = "\t\t\t\t<{0}>{2}</{1}>\n"
TAIL = "\n</serviceDataList>"


def row(group, values):
    return ROW.format(group, "".join(VALUE.format(name, name.split()[0], text) for name, text in values))


PACKAGE = row("SoftwarePackages", [
    ('PackageID IsKey="1"', "library-{0}:amd64"),
    ("Name", "library-{0}"),
    ('Version IsKey="1"', "1.{0}.2"),
    ("Revision", "{1}"),
    ("Vendor", "Maintainers of Libraries &lt;libraries@example.org>"),
    ("Category", "libs"),
    ('Manager IsKey="1"', "dpkg"),
    ("Architecture", "amd64"),
    ("InstalledSize", "{2}"),
    ("Automatic", "Yes"),
])

# Words behind the program; REPORT and FOLDER are put in. The goal is a ratio to the parser's CPU time.
TOOLS = {
    "check": (["check", "REPORT"], "<= 3"),
    "convert --to xml": (["convert", "--to", "xml", "REPORT"], "<= 3"),
    "convert --to json": (["convert", "--to", "json", "REPORT"], "<= 3"),
    "convert --to csv": (["convert", "--to", "csv", "-o", "FOLDER/csv", "REPORT"], "<= 3"),
    "show": (["show", "REPORT"], ""),
    "show --group": (["show", "--group", "Software Packages", "REPORT"], ""),
    "diff (the same twice)": (["diff", "REPORT", "REPORT"], ""),
}


def make_report(path, size):
    written = len(HEAD) + len(TAIL)
    number = 0
    with open(path, "w", encoding="ascii") as report:
        report.write(HEAD)
        while written < size:
            written += report.write(PACKAGE.format(number, number % 7, number * 13 % 99991))
            number += 1
        report.write(TAIL)


def run_of(words, report, folder):
    put = {"REPORT": report}
    words = [put.get(word, word).replace("FOLDER", folder) for word in words]
    return Run(MEASURE, words, folder)


def main(folder):
    reports = {}
    for name, size in {"large": LARGE, "small": SMALL}.items():
        reports[name] = os.path.join(folder, name + ".xml")
        make_report(reports[name], size)
    commands = {"xmllint --stream": (["xmllint", "--stream", "--noout", "REPORT"], "")} if shutil.which("xmllint") else {}
    commands |= {name: ([PROGRAM, *words], goal) for name, (words, goal) in TOOLS.items()}
    large = {name: run_of(words, reports["large"], folder) for name, (words, _) in commands.items()}
    small = {name: run_of(words, reports["small"], folder) for name, (words, _) in commands.items()}
    run_in_turn(large.values(), ROUNDS)
    run_in_turn(small.values(), 1)

    print(f"report tools, a report of {LARGE // MEGABYTE} MB; medians of {ROUNDS} rounds in turn; ratio of CPU time to xmllint's")
    line("", "wall ms", "CPU ms", "ratio", "goal", "peak KiB", f"at {SMALL // MEGABYTE} MB")
    parser = large.get("xmllint --stream")
    for name, (_, goal) in commands.items():
        run, tenth = large[name], small[name]
        if run.fails or tenth.fails:
            line(name, "fails here")
            continue
        ratio = run.median(CPU) / parser.median(CPU) if parser and not parser.fails else None
        line(name, cell(run.median(WALL)), cell(run.median(CPU)), cell(ratio, 2), goal,
             cell(run.median(PEAK), 0), cell(tenth.median(PEAK), 0))


with tempfile.TemporaryDirectory() as scratch:
    main(scratch)
