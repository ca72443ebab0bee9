#!/usr/bin/env python3
"""mutate.py N: makes N random one-line changes of the shipped code, each alone in a copy of the sources, and shows those that
no test notices. A survivor is a missing test, or a change that means the same."""

import argparse
import difflib
import os
import random
import resource
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

import mutations

TOP = Path(__file__).resolve().parents[2]
SOURCES = TOP / "build" / "mutate"
BUILD = SOURCES / "build" / "mutate"
FOLDERS = ["com", "SMBIOS", "linux", "scanner", "codeset"]

LINES_PER_FILE = 25         # more count for no more, or tables of constants would be most of all mutants
MUTANTS_AT_ONCE = 50        # sorted by file, so that a file is not compiled twice as often as need be
CPU_SECONDS = 60            # of one process: an endless loop
WALL_SECONDS = 300          # of one stage: an endless wait
ADDRESS_SPACE = 4 << 30


def copy_sources():
    """Brings the copy up to date; what is the same keeps its time, so that little is built anew."""
    listed = subprocess.run(["git", "-C", TOP, "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                            check=True, capture_output=True, text=True).stdout
    names = {name for name in listed.split("\0") if name and (TOP / name).is_file()}
    for name in names:
        source, target = TOP / name, SOURCES / name
        if target.is_file() and target.read_bytes() == source.read_bytes():
            continue
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(source, target)
        shutil.copymode(source, target)
    for target in SOURCES.rglob("*"):
        name = target.relative_to(SOURCES)
        if target.is_file() and str(name) not in names and name.parts[0] != "build":
            target.unlink()


def limited():
    os.setsid()
    resource.setrlimit(resource.RLIMIT_CPU, (CPU_SECONDS, CPU_SECONDS))
    resource.setrlimit(resource.RLIMIT_AS, (ADDRESS_SPACE, ADDRESS_SPACE))


def succeeds(command, log, limits=None, seconds=None):
    """Whether the command ends with status 0 within the time; its output goes to the log."""
    process = subprocess.Popen(command, cwd=SOURCES, stdin=subprocess.DEVNULL, stdout=log, stderr=log, preexec_fn=limits,
                               env={**os.environ, "GTEST_FAIL_FAST": "1"})
    try:
        return process.wait(seconds) == 0
    except subprocess.TimeoutExpired:
        return False
    finally:
        if limits:
            try:
                os.killpg(process.pid, signal.SIGKILL)  # whatever is left of its session
            except ProcessLookupError:
                pass
        process.wait()


def configure(settings, log):
    command = ["cmake", "-G", "Ninja", "-S", SOURCES, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0",
               "-DINVHW_STATIC_RUNTIME=OFF", "-DINVHW_CTL=OFF",
               f"-DCMAKE_PROJECT_INCLUDE={SOURCES / 'tests' / 'mutate' / 'quick.cmake'}"]
    if shutil.which("ld.lld"):
        command += ["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld", "-DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=lld"]
    return succeeds(command + [f"-D{setting}" for setting in settings], log)


class Stage:
    """One step of a mutant's way: what is built and which tests are run."""

    def __init__(self, name, targets, tests):
        self.name, self.targets, self.tests = name, targets, tests

    def builds(self, jobs, log):
        return succeeds(["ninja", "-C", BUILD, "-j", str(jobs), *self.targets], log)

    def passes(self, log):
        return succeeds(["ctest", "--test-dir", BUILD, "-LE", "single", "--stop-on-failure", "--timeout", str(WALL_SECONDS),
                         "--no-tests=error", *self.tests], log, limited, 4 * WALL_SECONDS)


def stages_for(path):
    """First what is quick and likely to notice, at last everything else. A program that the mutant is no part of is left
    out: codeset and the other folders know nothing of each other, but for the scanner."""
    folder = path.split("/")[0]
    unit = f"{folder.lower()}_test"
    apart = ["com_test", "smbios_test", "linux_test"] if folder == "codeset" else ["codeset_test"]
    machines = r"whole\.machines_test|docs\.generated"
    units = "|".join(rf"whole\.{program}" for program in [unit, *apart])
    first = [
        Stage("machines_test", ["machines_test", "invhw_docs"], ["-R", rf"^({machines})$"]),
        Stage(unit, [unit], ["-R", rf"^whole\.{unit}$"]),
    ]
    if folder == "SMBIOS":  # included nearly everywhere, and known best by its own tests
        first.reverse()
    return first + [
        Stage("scan_test", ["scan_test"], ["-R", r"^whole\.scan_test$"]),
        Stage("the rest", [], ["-E", rf"^({units}|whole\.scan_test|{machines})$"]),
    ]


def all_lines():
    """For every source file, the mutations of each of its lines."""
    files = {}
    for folder in FOLDERS:
        for path in sorted((SOURCES / folder).rglob("*")):
            if path.suffix in (".cpp", ".h"):
                name = str(path.relative_to(SOURCES))
                found = mutations.of_file(name, path.read_text())
                if found:
                    files[name] = found
    return files


def chosen(files, count, seen):
    """So many mutations of lines that were not chosen before."""
    names = list(files)
    weights = [min(len(files[name]), LINES_PER_FILE) for name in names]
    picked = []
    for _ in range(100 * count):
        if len(picked) == count:
            break
        line = random.choice(files[random.choices(names, weights)[0]])
        if (line[0].path, line[0].line) not in seen:
            seen.add((line[0].path, line[0].line))
            picked.append(random.choice(line))
    return sorted(picked, key=lambda mutation: (mutation.path, mutation.line))


def judged(mutation, jobs, log):
    """The name of the stage that noticed the mutant; "compiler" for none that compiles, "" for a survivor."""
    file = SOURCES / mutation.path
    original = file.read_text()
    try:
        file.write_text(mutations.applied(original, mutation))
        for stage in stages_for(mutation.path):
            if not stage.builds(jobs, log):
                return "compiler"
            if not stage.passes(log):
                return stage.name
        return ""
    finally:
        file.write_text(original)


def shown(mutation):
    text = (SOURCES / mutation.path).read_text()
    return "".join(difflib.unified_diff(text.splitlines(True), mutations.applied(text, mutation).splitlines(True),
                                        mutation.path, mutation.path, n=2))


def run(options, log):
    files = all_lines()
    end = time.monotonic() + 60 * options.minutes
    seen, survivors, count, skipped = set(), [], 0, 0
    while count + skipped < options.count and time.monotonic() < end:
        batch = chosen(files, min(MUTANTS_AT_ONCE, options.count - count - skipped), seen)
        if not batch:
            break
        for mutation in batch:
            if time.monotonic() >= end:
                break
            if skipped < options.skip:
                skipped += 1
                continue
            start = time.monotonic()
            killer = judged(mutation, options.jobs, log)
            if killer != "compiler":
                count += 1
            verdict = f"noticed by {killer}" if killer else "SURVIVED"
            print(f"{count:4} {mutation.path}:{mutation.line + 1} {verdict} ({time.monotonic() - start:.1f} s)", flush=True)
            if not killer:
                survivors.append(mutation)
                print(shown(mutation), flush=True)
    return count, survivors


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("count", type=int, help="mutants that compile")
    parser.add_argument("--seed", type=int, default=int(time.time()), help="the same seed chooses the same mutants")
    parser.add_argument("--skip", type=int, default=0, help="so many of the N were tried by an earlier run with this seed")
    parser.add_argument("--minutes", type=float, default=60, help="time limit")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="compilers at a time")
    parser.add_argument("--set", action="append", default=[], metavar="NAME=VALUE", help="a setting of the build")
    options = parser.parse_args()
    random.seed(options.seed)
    os.nice(5)
    BUILD.mkdir(parents=True, exist_ok=True)
    with open(BUILD / "mutate.log", "w") as log:
        copy_sources()
        everything = Stage("everything", [], [])
        if not (configure(options.set, log) and everything.builds(options.jobs, log) and everything.passes(log)):
            sys.exit(f"the sources as they are do not pass: see {log.name}")
        count, survivors = run(options, log)
    print(f"{count} mutants (seed {options.seed}), {count - len(survivors)} noticed, {len(survivors)} survived")
    for mutation in survivors:
        print(shown(mutation))


main()
