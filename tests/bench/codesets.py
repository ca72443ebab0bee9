#!/usr/bin/env python3
"""codesets.py BUILD-FOLDER: how fast the code-set conversions are, as a table of ratios to iconv(3).

Both sides of every pair run in short turns, in random order; the quickest turn of each counts, which is the one that the
rest of the machine disturbed least. 2.00 is twice iconv's speed.
"""

import json
import subprocess
import sys

TURNS = 7
SECONDS_A_TURN = 0.01
DIRECTIONS = ["to_utf8", "from_utf8", "to_ucs2", "from_ucs2"]

command = [
    sys.argv[1] + "/bin/invhw_bench",
    "--benchmark_filter=^codeset/",
    "--benchmark_format=json",
    f"--benchmark_repetitions={TURNS}",
    f"--benchmark_min_time={SECONDS_A_TURN}",
    "--benchmark_enable_random_interleaving=true",
]
output = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=True).stdout

best = {}  # "<family>/<table>/<text>", direction, who -> nanoseconds
for turn in json.loads(output)["benchmarks"]:
    if turn["run_type"] == "iteration":
        _, family, table, text, direction, who = turn["run_name"].split("/")[:6]
        key = (f"{family}/{table}/{text}", direction, who)
        best[key] = min(best.get(key, turn["cpu_time"]), turn["cpu_time"])

print("code sets: iconv's time for the same text, divided by ours")
print(f"{'':<30}" + "".join(f"{direction:>11}" for direction in DIRECTIONS))
for name in dict.fromkeys(key[0] for key in best):
    ratios = [best[name, direction, "iconv"] / best[name, direction, "kst"] for direction in DIRECTIONS]
    print(f"{name:<30}" + "".join(f"{ratio:>11.2f}" for ratio in ratios))
