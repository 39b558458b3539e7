#!/usr/bin/env python3
"""table.py [--smoke | --markdown | --readme] RESULTS...: prints the results of the benchmarks as a table of medians.

RESULTS are Google Benchmark's files results.BUILT.ROUND.json. BUILT is portable (zan and its peers, built for any
processor), native (the peers, built for this processor) or plain (zan, linked with its plain kernels). Peers are the
alternatives that a host would use.

Fails if an entry could not be measured, if results differ, or if an entry lacks zan or a peer.
--smoke     only checks, and also that README.md shows the figures of docs/speed.md
--markdown  writes the table into docs/speed.md, and some of its rows into README.md, instead of printing it
--readme    only copies those rows from docs/speed.md to README.md"""
import json
import os
import re
import statistics
import sys

HEADING = ("operation", "zan", "plain form", "alternative", "portable", "native", "ratio", "native ratio")
ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
SPEED = os.path.join(ROOT, "docs", "speed.md")
README = os.path.join(ROOT, "README.md")
# Rows that README.md shows, and their titles there.
README_ROWS = {
    "layer in space, a fifth cut, tolerance 2": "layer in space, corners to hit test, a fifth cut, tolerance 2",
    "hit test, 256 vertices, tolerance 2": "hit test, 256 vertices, tolerance 2",
    "hull of 10,000 points, on a circle": "convex hull of 10,000 points on a circle, per point",
}


def processor():
    try:
        with open("/proc/cpuinfo", encoding="utf-8") as file:
            values = dict(re.findall(r"^(vendor_id|model name|cpu family|model)\s*: (.*)$", file.read(), re.M))
        return f"{values['model name']} (family {values['cpu family']}, model {values['model']})"
    except (OSError, KeyError):
        return "an unknown processor"


def in_single_precision(peer):
    """Such a peer computes something else: the table shows it, but no ratio counts it."""
    return "single precision" in peer


def read(paths):
    """{operation: {(side, built): nanoseconds of each repetition}}, the list of faults, and the compiler."""
    entries, digests, faults, compiler = {}, {}, [], ""
    # The portable results first: they have every entry, in the order of the table.
    for path in sorted(paths, key=lambda path: (".portable." not in path, path)):
        if not os.path.exists(path) or os.path.getsize(path) == 0:
            continue
        with open(path, encoding="utf-8") as file:
            results = json.load(file)
        compiler = results["context"].get("compiler", compiler)
        # Interleaved repetitions are in random order; family_index is the order of registration.
        for run in sorted(results["benchmarks"], key=lambda run: run["family_index"]):
            if run["run_type"] != "iteration":
                continue
            operation, side = run["name"].rsplit("/", 1)
            built = "native" if ".native." in path else "portable"
            times = entries.setdefault(operation, {}).setdefault((side, built), [])
            if run.get("error_occurred"):
                faults.append(f"{run['name']}: {run['error_message']}")
                continue
            times.append(1e9 / run["items_per_second"])
            # The label is a hash of zan's results, with its kernels or with the plain ones.
            if run.get("label") and digests.setdefault(operation, run["label"]) != run["label"]:
                faults.append(f"{operation}: the kernels and the plain kernels give different bits")
    for operation, sides in entries.items():
        if ("zan", "portable") not in sides or not any(side not in ("zan", "plain") for side, _ in sides):
            faults.append(f"{operation}: zan or its peer is missing")
    if not entries:
        faults.append("nothing was measured")
    return entries, list(dict.fromkeys(faults)), compiler


def figure(value):
    return "" if value is None else f"{value:.2f}" if value < 99.95 else f"{value:.0f}"


def rows(entries):
    for operation, sides in entries.items():
        medians = {side: statistics.median(times) for side, times in sides.items() if times}
        zan = medians.get(("zan", "portable"))
        if not zan:  # not measured, or shorter than the clock's resolution
            continue
        peers = list(dict.fromkeys(side for side, _ in medians if side not in ("zan", "plain")))

        def ratio(builds):
            times = [medians[peer, built] for peer in peers for built in builds
                     if (peer, built) in medians and not in_single_precision(peer)]
            return min(times) / zan if times else None

        native = any(built == "native" for _, built in medians)
        first = (operation, figure(zan), figure(medians.get(("plain", "portable"))))
        ratios = (figure(ratio(["portable"])), figure(ratio(["portable", "native"])) if native else "")
        for peer in peers:
            times = (figure(medians.get((peer, "portable"))), figure(medians.get((peer, "native"))))
            yield (*first, peer, *times, *ratios)
            first, ratios = ("", "", ""), ("", "")


def print_table(table):
    widths = [max(len(row[column]) for row in table) for column in range(len(HEADING))]
    for row in table:
        cells = [text.ljust(width) if column in (0, 3) else text.rjust(width)
                 for column, (text, width) in enumerate(zip(row, widths))]
        print("  ".join(cells).rstrip())


def markdown(table, alignment):
    lines = ["| " + " | ".join(row) + " |" for row in table]
    return "\n".join([lines[0], alignment, *lines[1:]])


def between_markers(path, text=None):
    """The part of a page between its two markers; replaces it with the text if one is given."""
    with open(path, encoding="utf-8") as file:
        page = file.read()
    pattern = r"(.*<!-- begin: figures.*?-->\n)(.*)(\n<!-- end: figures -->.*)"
    before, old, after = re.fullmatch(pattern, page, re.S).groups()
    if text is not None:
        with open(path, "w", encoding="utf-8") as file:
            file.write(before + text + after)
    return old


def readme_rows():
    """README.md's table, made from the one in docs/speed.md."""
    peers, operation = {}, ""
    for line in between_markers(SPEED).splitlines():
        cells = [cell.strip() for cell in line.strip("|").split("|")]
        if len(cells) != len(HEADING):
            continue
        operation = cells[0] or operation
        peers.setdefault(operation, []).append(cells)
    table = [("", "zan", "alternative, built for any x86-64", "alternative, built for this processor")]
    for operation, title in README_ROWS.items():
        def fastest(column):
            times = [(float(cells[column]), cells[column], cells[3]) for cells in peers[operation]
                     if not in_single_precision(cells[3])]
            return "{1} ({2})".format(*min(times))

        table.append((title, peers[operation][0][1], fastest(4), fastest(5)))
    return markdown(table, "|---|---:|---:|---:|")


def main():
    if "--readme" in sys.argv:
        between_markers(README, readme_rows())
        return 0
    entries, faults, compiler = read([path for path in sys.argv[1:] if not path.startswith("--")])
    repetitions = max((len(times) for sides in entries.values() for times in sides.values()), default=0)
    caption = f"{processor()}, {compiler}; nanoseconds per element, medians of {repetitions} repetitions."
    if "--smoke" in sys.argv:
        if readme_rows() != between_markers(README):
            faults.append("README.md does not show the figures of docs/speed.md; bench/table.py --readme copies them")
        print(f"{sum(map(len, entries.values()))} benchmarks of {len(entries)} operations ran, and their results agree"
              if not faults else "the benchmarks failed")
    elif "--markdown" in sys.argv and not faults:
        table = markdown([HEADING, *rows(entries)], "|---|---:|---:|---|---:|---:|---:|---:|")
        between_markers(SPEED, f"{caption}\n\n{table}")
        between_markers(README, readme_rows())
        print("wrote the figures to docs/speed.md and README.md")
    else:
        print(caption)
        print("ratio: time of the fastest alternative divided by zan's, above 1 where zan is faster")
        print()
        print_table([HEADING, *rows(entries)])
    for fault in faults:
        print(f"fault: {fault}", file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
