"""Commands that are run in turn and measured, and the lines of a table about them."""

import statistics
import subprocess

ROUNDS = 9

# The columns of what measure prints, and the one that is added to them.
WALL, CPU, OWN, PEAK, CHILDREN = 0, 1, 2, 3, -1


def forks_since_boot():
    with open("/proc/stat", encoding="ascii") as stat:
        for line in stat:
            if line.startswith("processes "):
                return int(line.split()[1])
    return 0


class Run:
    """A command, the folder that it runs in, and the figures of its rounds."""

    def __init__(self, measure, words, folder, environment=None):
        self.measure = measure  # the program that measures
        self.words = words
        self.folder = folder
        self.environment = environment
        self.figures = []
        self.fails = False

    def once(self, counts):
        forks = forks_since_boot()
        result = subprocess.run(
            [self.measure, self.folder, *self.words], env=self.environment, capture_output=True, text=True, check=False
        )
        if result.returncode != 0:
            self.fails = True
        elif counts:
            children = max(0, forks_since_boot() - forks - 2)  # less the command and the one that measures it
            self.figures.append([float(figure) for figure in result.stdout.split()] + [children])

    def median(self, column):
        return statistics.median(figures[column] for figures in self.figures)

    def least(self, column):
        return min(figures[column] for figures in self.figures)


def run_in_turn(runs, rounds=ROUNDS):
    for round_number in range(rounds + 1):
        for one in runs:
            if not one.fails:
                one.once(counts=round_number > 0)  # the first round warms the caches


def cell(value, decimals=1):
    return "-" if value is None else f"{value:.{decimals}f}"


def line(name, *cells):
    print(f"{name:<30}" + "".join(f"{text:>11}" for text in cells))
