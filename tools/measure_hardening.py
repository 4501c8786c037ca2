#!/usr/bin/env python3
"""Measures what hardening costs: builds the benchmarks as people get them (build/release) and at -O3
without any (build/plain), and runs both in turns. Prints each ratio's least value in both builds, and
by how much the measured time itself grew. Exit status 1 when a ratio is worse by more than a tenth.

measure_hardening.py [--turns N] [BENCHMARK OPTIONS]
"""

import argparse
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILDS = {
    "release": [],
    "plain": ["-DCMAKE_BUILD_TYPE=Release", "-DTUV_HARDEN=OFF"],
}
MOST_GROWTH = 1.1
ROW = re.compile(r"^\| (.+?) \| ([\d.]+) \| ([\d.]+) \| [\d.]+ \|")


def build(name: str, options: list[str]) -> None:
    folder = ROOT / "build" / name
    for command in (["cmake", "--preset", "release", "-B", folder, *options],
                    ["cmake", "--build", folder, "--target", "tuv_bench"]):
        subprocess.run(command, check=True, cwd=ROOT, stdout=sys.stderr)


def measure(name: str, options: list[str]) -> list[tuple[str, float, float]]:
    """What, its time, and its ratio, in the order of the table: a name may stand there twice."""
    command = [ROOT / "build" / name / "bench" / "tuv_bench", "--benchmark_repetitions=5",
               "--benchmark_min_time=0.1", *options]
    lines = subprocess.run(command, capture_output=True, text=True).stdout.splitlines()
    found = [match.groups() for line in lines if (match := ROW.match(line))]
    return [(what, float(time), float(time) / float(unit)) for what, time, unit in found]


def least(turns: list[list[tuple[str, float, float]]]) -> list[tuple[str, float, float]]:
    return [(rows[0][0], min(row[1] for row in rows), min(row[2] for row in rows))
            for rows in zip(*turns, strict=True)]


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--turns", type=int, default=3)
    arguments, options = parser.parse_known_args()
    turns = {name: [] for name in BUILDS}
    try:
        for name, flags in BUILDS.items():
            build(name, flags)
        for _ in range(arguments.turns):
            for name in BUILDS:
                turns[name].append(measure(name, options))
    except (OSError, subprocess.CalledProcessError) as error:
        print(error, file=sys.stderr)
        return 2
    worse = 0
    rows = list(zip(least(turns["plain"]), least(turns["release"]), strict=True))
    print("| what, in units of what | plain | hardened | ratio grew by | time grew by | |\n|---|--:|--:|--:|--:|---|")
    for (what, plain_time, plain), (_, time, ratio) in rows:
        is_worse = ratio > plain * MOST_GROWTH
        worse += is_worse
        print(f"| {what} | {plain:.2f} | {ratio:.2f} | {ratio / plain - 1:+.0%} | {time / plain_time - 1:+.0%} |"
              f" {'worse' if is_worse else ''} |")
    print(f"{len(rows)} ratios, {worse} worse by more than a tenth")
    return 1 if worse or not rows else 0


if __name__ == "__main__":
    sys.exit(main())
