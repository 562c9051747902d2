#!/usr/bin/python3
"""Runs the native benches and prints each measurement beside its peer of the same run, with the ratio.

A bench names its peer in its label. Arguments are passed on to the benches, such as
--benchmark_filter=Merge (which must let the peers through as well).
"""

import json
import subprocess
import sys


def main():
    program, *arguments = sys.argv[1:]
    command = [program, "--benchmark_format=json", "--benchmark_repetitions=3",
               "--benchmark_report_aggregates_only=true", *arguments]
    run = subprocess.run(command, stdout=subprocess.PIPE, check=True)
    medians = {
        bench["run_name"]: (bench["cpu_time"], bench.get("label", ""))
        for bench in json.loads(run.stdout)["benchmarks"]
        if bench.get("aggregate_name") == "median"
    }
    print(f"{'measured':40} {'ns':>12}  {'peer':30} {'ns':>12} {'ratio':>8}")
    for name, (time, peer) in medians.items():
        if peer in medians:
            peer_time = medians[peer][0]
            print(f"{name:40} {time:12.1f}  {peer:30} {peer_time:12.1f} {time / peer_time:8.2f}")


if __name__ == "__main__":
    main()
