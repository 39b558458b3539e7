#!/usr/bin/env python3
"""table.py [--smoke | --markdown] RESULTS: the measured entries as a table of medians; fails for an entry that could
not be measured or that has no peer. --smoke checks alone."""
import json
import statistics
import sys


def read(path):
    """{capability: {who: nanoseconds of each repetition}}, and what went wrong."""
    entries, faults = {}, []
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    # Interleaved repetitions come in any order; the entries are to stand as they were registered.
    for run in sorted(runs, key=lambda run: run["family_index"]):
        if run["run_type"] != "iteration":
            continue
        capability, who = run["name"].rsplit("/", 1)
        times = entries.setdefault(capability, {}).setdefault(who, [])
        if run.get("error_occurred"):
            faults.append(f"{run['name']}: {run['error_message']}")
        else:
            times.append(1e9 / run["items_per_second"])
    for capability, sides in entries.items():
        if "zan" not in sides or len(sides) < 2:
            faults.append(f"{capability}: zan or its peer is missing")
    if not entries:
        faults.append("nothing was measured")
    return entries, list(dict.fromkeys(faults))


def rows(entries):
    for capability, sides in entries.items():
        zan = statistics.median(sides["zan"]) if sides.get("zan") else None
        first = True
        for who, times in sides.items():
            if who == "zan" or not times or zan is None:
                continue
            peer = statistics.median(times)
            yield (capability if first else "", f"{zan:.2f}" if first else "", who, f"{peer:.2f}", f"{peer / zan:.2f}")
            first = False


HEADING = ("capability", "zan ns", "peer", "peer ns", "peer/zan")


def print_table(table):
    widths = [max(len(row[column]) for row in table) for column in range(5)]
    for row in table:
        cells = [text.ljust(width) if column in (0, 2) else text.rjust(width)
                 for column, (text, width) in enumerate(zip(row, widths))]
        print("  ".join(cells).rstrip())


def print_markdown(table):
    for index, row in enumerate(table):
        print("| " + " | ".join(row) + " |")
        if index == 0:
            print("|---|---:|---|---:|---:|")


def main():
    entries, faults = read(sys.argv[-1])
    if "--smoke" in sys.argv:
        print(f"{sum(map(len, entries.values()))} benchmarks of {len(entries)} capabilities ran")
    else:
        table = [HEADING, *rows(entries)]
        (print_markdown if "--markdown" in sys.argv else print_table)(table)
    for fault in faults:
        print(f"fault: {fault}", file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
