#!/usr/bin/env python3
"""table.py [--smoke | --markdown] RESULTS...: the measured entries as a table of medians, from the files
results.KIND.ROUND.json: KIND is any (zan and all others, built for any processor), native (the others, built for this
one) or plain (zan with its plain kernels). Fails for an entry that could not be measured, whose answers differ or that
lacks a side. --smoke checks alone."""
import json
import os
import re
import statistics
import sys

HEADING = ("work", "zan", "plain form", "alternative", "its time", "native", "ratio", "native")


def processor():
    try:
        with open("/proc/cpuinfo", encoding="utf-8") as file:
            values = dict(re.findall(r"^(vendor_id|model name|cpu family|model)\s*: (.*)$", file.read(), re.M))
        return f"{values['model name']} (family {values['cpu family']}, model {values['model']})"
    except (OSError, KeyError):
        return "an unknown processor"


def read(paths):
    """{work: {(who, kind): nanoseconds of each repetition}}, what went wrong, and the compiler."""
    entries, labels, faults, compiler = {}, {}, [], ""
    # Those with zan first: they have every entry, in the order of the table.
    for path in sorted(paths, key=lambda path: (".any." not in path, path)):
        if not os.path.exists(path) or os.path.getsize(path) == 0:
            continue
        with open(path, encoding="utf-8") as file:
            results = json.load(file)
        compiler = results["context"].get("compiler", compiler)
        # Interleaved repetitions come in any order; the entries are to stand as they were registered.
        for run in sorted(results["benchmarks"], key=lambda run: run["family_index"]):
            if run["run_type"] != "iteration":
                continue
            work, who = run["name"].rsplit("/", 1)
            kind = "native" if ".native." in path else "any"
            times = entries.setdefault(work, {}).setdefault((who, kind), [])
            if run.get("error_occurred"):
                faults.append(f"{run['name']}: {run['error_message']}")
                continue
            times.append(1e9 / run["items_per_second"])
            # The answers of zan with its kernels and without them, as numbers.
            if run.get("label") and labels.setdefault(work, run["label"]) != run["label"]:
                faults.append(f"{work}: the plain kernels give other bits")
    for work, sides in entries.items():
        if ("zan", "any") not in sides or not any(who not in ("zan", "plain") for who, _ in sides):
            faults.append(f"{work}: zan or its peer is missing")
    if not entries:
        faults.append("nothing was measured")
    return entries, list(dict.fromkeys(faults)), compiler


def figure(value):
    return "" if value is None else f"{value:.2f}" if value < 99.95 else f"{value:.0f}"


def rows(entries):
    for work, sides in entries.items():
        medians = {side: statistics.median(times) for side, times in sides.items() if times}
        zan = medians.get(("zan", "any"))
        if not zan:  # or it took less than the system's clock tells
            continue
        peers = list(dict.fromkeys(who for who, _ in medians if who not in ("zan", "plain")))

        def best(kind):
            # A peer that computes in single precision answers another question. A plain build is also an alternative
            # on the machine at hand.
            times = [medians[who, k] for who in peers for k in {kind, "any"}
                     if (who, k) in medians and "single precision" not in who]
            return min(times) / zan if times else None

        native = any(kind == "native" for _, kind in medians)
        first = (work, figure(zan), figure(medians.get(("plain", "any"))))
        ratios = (figure(best("any")), figure(best("native")) if native else "")
        for who in peers:
            times = (figure(medians.get((who, "any"))), figure(medians.get((who, "native"))))
            yield (*first, who, *times, *ratios)
            first, ratios = ("", "", ""), ("", "")


def print_table(table):
    widths = [max(len(row[column]) for row in table) for column in range(len(HEADING))]
    for row in table:
        cells = [text.ljust(width) if column in (0, 3) else text.rjust(width)
                 for column, (text, width) in enumerate(zip(row, widths))]
        print("  ".join(cells).rstrip())


def print_markdown(table):
    for index, row in enumerate(table):
        print("| " + " | ".join(row) + " |")
        if index == 0:
            print("|---|---:|---:|---|---:|---:|---:|---:|")


def main():
    entries, faults, compiler = read([path for path in sys.argv[1:] if not path.startswith("--")])
    if "--smoke" in sys.argv:
        print(f"{sum(map(len, entries.values()))} benchmarks of {len(entries)} works ran, and their answers agree"
              if not faults else "the benchmarks failed")
    else:
        repetitions = max((len(times) for sides in entries.values() for times in sides.values()), default=0)
        print(f"{processor()}, {compiler}; nanoseconds per element, medians of {repetitions} repetitions;")
        print("ratio: the best alternative to zan, above 1 where zan is faster; native: built for this processor")
        print()
        table = [HEADING, *rows(entries)]
        (print_markdown if "--markdown" in sys.argv else print_table)(table)
    for fault in faults:
        print(f"fault: {fault}", file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
