#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
#
# Makes speed.md (tables) and speed.csv (all figures) of the results in a build folder.
# usage: report.py BUILD_FOLDER     reads results.json, and results-mimalloc.json and linked.json where they are

import csv
import json
import sys
from pathlib import Path


def load(file):
    return json.loads(file.read_text()) if file.exists() else {}


def time(seconds):
    for unit, factor in (("s", 1), ("ms", 1e3), ("µs", 1e6)):
        if seconds * factor >= 1:
            return f"{seconds * factor:.3g} {unit}"
    return f"{seconds * 1e9:.3g} ns"


def table(heads, rows):
    aligned = "|".join("---" if i == 0 or not right else "---:" for i, (_, right) in enumerate(heads))
    return ["| " + " | ".join(head for head, _ in heads) + " |", f"|{aligned}|",
            *("| " + " | ".join(map(str, row)) + " |" for row in rows), ""]


def bar_rows(results):
    return [[b["group"], b["what"], f"{b['measured']:.2f}", f"{b['limit']:.2f}", "yes" if b["met"] else "**no**"]
            for b in results.get("bars", [])]


def bars(results):
    return table([("Job", 0), ("What", 0), ("Measured", 1), ("At most", 1), ("Met", 0)], bar_rows(results))


def group_table(results):
    rows = []
    for group in results.get("groups", []):
        own, *others = group["subjects"]
        for other in others:
            ratio = other["ratio"]
            rows.append([group["job"], group["document"], time(own["seconds"]["median"]), other["subject"],
                         time(other["seconds"]["median"]), f"{ratio['median']:.2f}",
                         f"{ratio['p10']:.2f} – {ratio['p90']:.2f}"])
    return table([("Job", 0), ("Document", 0), ("Orvid", 1), ("Against", 0), ("Its time", 1), ("Ratio", 1),
                  ("p10 – p90", 1)], rows)


def memory_table(results):
    return table([("Document", 0), ("Library", 0), ("Values", 1), ("Peak", 1), ("Bytes a value", 1),
                  ("Page faults in 100 pages", 1)],
                 [[m["document"], m["subject"], f"{m['values']:,}", f"{m['peakBytes'] / 1e6:.1f} MB",
                   f"{m['bytesPerValue']:.0f}", f"{m['faults']:.1f}"] for m in results.get("memory", [])])


def growth_table(results):
    return table([("Job", 0), ("n", 1), ("Time", 1), ("Law", 0), ("ns a unit of it", 1)],
                 [[g["job"], f"{p['n']:,}", time(p["seconds"]), g["law"], f"{p['nanosecondsPerUnit']:.1f}"]
                  for g in results.get("growth", []) for p in g["points"]])


def linked_table(linked):
    if not linked:
        return ["Not measured in this run.", ""]

    def row(name, spread):
        return [name, time(spread["median"]), f"{time(spread['p10'])} – {time(spread['p90'])}"]

    def compile_rows(what, cost):
        ratio = cost["ratio"]
        return [row(f"compiling {what} with `<ko/Orvid.h>`", cost["orvid"]),
                row(f"compiling {what} with `<nlohmann/json.hpp>`", cost["nlohmann"]),
                ["ratio of the two, in pairs", f"{ratio['median']:.2f}", f"{ratio['p10']:.2f} – {ratio['p90']:.2f}"]]

    return table([("What", 0), ("Median", 1), ("p10 – p90", 1)], [
        row("start-up of an empty program", linked["start"]["empty"]),
        row("start-up of one that needs the C++ library", linked["start"]["stdlib"]),
        row("start-up of one linked with liborvid.so", linked["start"]["linked"]),
        row("that minus the empty one, in pairs", linked["start"]["difference"]),
        *compile_rows("an empty program", linked["compile"]["include"]),
        *compile_rows("one that reads and writes a struct", linked["compile"]["struct"]),
        ["size of liborvid.so, stripped", f"{linked['strippedBytes'] / 1e3:.0f} kB", ""]])


def markdown(results, mimalloc, linked):
    lines = ["# Speed", "",
             "Written by `scripts/bench`; [README.md](README.md) says what is measured and how.",
             "Times are medians. A ratio is Orvid's time divided by the other's, measured in pairs: below 1, Orvid",
             "is faster.", "",
             *table([("Run", 0), ("", 0)], [[f"{name}", value] for name, value in results["provenance"].items()]),
             "## Bars", "", *bars(results)]
    if mimalloc:
        lines += [f"With {mimalloc['provenance']['allocator']} preloaded:", "", *bars(mimalloc)]
    lines += ["## Ratios", "", *group_table(results)]
    if mimalloc:
        lines += [f"### With {mimalloc['provenance']['allocator']} preloaded", "", *group_table(mimalloc)]
    lines += ["## Memory for reading", "", *memory_table(results), "## Growth", "", *growth_table(results),
              "## Cost of being linked", "", *linked_table(linked)]
    return "\n".join(lines)


def write_csv(file, runs):
    with file.open("w", newline="") as out:
        rows = csv.writer(out)
        rows.writerow(["allocator", "job", "document", "subject", "seconds p10", "seconds median", "seconds p90",
                       "ratio p10", "ratio median", "ratio p90", "allocations"])
        for run in runs:
            for group in run.get("groups", []):
                for s in group["subjects"]:
                    rows.writerow([run["provenance"]["allocator"], group["job"], group["document"], s["subject"],
                                   *(s[k][q] for k in ("seconds", "ratio") for q in ("p10", "median", "p90")),
                                   s["allocations"]])


build = Path(sys.argv[1])
default, preloaded = load(build / "results.json"), load(build / "results-mimalloc.json")
if not default:
    sys.exit(f"report: there is no {build / 'results.json'}")
(build / "speed.md").write_text(markdown(default, preloaded, load(build / "linked.json")))
write_csv(build / "speed.csv", [default, preloaded])
missed = [row for run in (default, preloaded) for row in bar_rows(run) if row[-1] != "yes"]
print(f"report: {build / 'speed.md'}, {build / 'speed.csv'}; {len(missed)} bars missed",
      *(f"missed: {job}: {what}: {measured}, at most {limit}" for job, what, measured, limit, _ in missed), sep="\n")
