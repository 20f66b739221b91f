#!/usr/bin/python3
"""Translating the log list: bench_translate against sqlglot (python3-sqlglot) in one run.

Usage: compare.py PATH/TO/bench_translate
"""

import json
import pathlib
import statistics
import subprocess
import sys
import time

import sqlglot


def peer_microseconds(text: str, rounds: int) -> float:
    times = []
    for _ in range(rounds):
        begin = time.process_time()
        sqlglot.transpile(text, read="tsql", write="sqlite")
        times.append(time.process_time() - begin)
    return statistics.median(times) * 1e6


def own_microseconds(program: str) -> float:
    command = [program, "--benchmark_filter=parseAndTranslateList", "--benchmark_format=json",
               "--benchmark_repetitions=5", "--benchmark_report_aggregates_only=true"]
    report = json.loads(subprocess.run(command, check=True, capture_output=True, text=True).stdout)
    median = next(row for row in report["benchmarks"] if row["name"].endswith("_median"))
    return median["cpu_time"] / 1000 if median["time_unit"] == "ns" else median["cpu_time"]


def main() -> int:
    if len(sys.argv) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    text = (pathlib.Path(__file__).parent / "log_list.sql").read_text()
    own = own_microseconds(sys.argv[1])
    peer = peer_microseconds(text, 30)
    print(f"own {own:.1f} us, sqlglot {peer:.1f} us of CPU: {peer / own:.0f} times as fast")
    return 0


if __name__ == "__main__":
    sys.exit(main())
