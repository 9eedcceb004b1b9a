#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
#
# Makes the page and the chart of what bench/command.sh measured: command-speed.md and command-speed.svg.
# usage: command_table.py FOLDER ORVID

import json
import os
import platform
import statistics
import subprocess
import sys
from pathlib import Path

FOLDER, ORVID = Path(sys.argv[1]), sys.argv[2]
PEERS = ["jq", "gojq", "gron", "json.tool"]


def version(*words):
    try:
        shown = subprocess.run(words, capture_output=True, text=True, check=False)
        return (shown.stdout + shown.stderr).strip().splitlines()[0]
    except (OSError, IndexError):
        return "not installed"


def cpu():
    for line in Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.processor()


class Times:
    """The median and the quartiles of a command's runs, in seconds."""

    def __init__(self, result):
        times = result["times"]
        self.low, self.median, self.high = statistics.quantiles(times, n=4, method="inclusive") if len(times) > 1 else times * 3

    def cell(self, own=None):
        text = f"{1000 * self.median:.1f} ms ± {50 * (self.high - self.low) / self.median:.0f} %"
        return text if own is None else f"{text}, **{self.median / own.median:.1f}**"


def rows():
    """(job, times of orvid, times of the others by name); a job that orvid does in two ways gives two rows."""
    for file in sorted((FOLDER / "command").glob("*.json")):
        job = file.stem.split(" ", 1)[1]
        times = {r["command"]: Times(r) for r in json.loads(file.read_text())["results"]}
        for name in [n for n in times if n.startswith("orvid")]:
            yield job + name.removeprefix("orvid").replace(" -j", ", -j"), times[name], {p: times[p] for p in PEERS if p in times}


def below_the_aims(measured):
    """At least 5 times jq, 8 times in checks, 10 times with two threads, and ahead of gojq, 2.5 times in queries; and
    2.5 ms to start."""
    for job, own, peers in measured:
        if job == "start" and own.median > 0.0025:
            yield f"{job}: {1000 * own.median:.1f} ms, 2.5 is the aim"
        for peer, aim in (("jq", 10 if job.endswith("-j 2") else 8 if job.startswith("check") else 5), ("gojq", 2.5 if job.startswith("query") else 1)):
            if peer in peers and peers[peer].median < aim * own.median:
                yield f"{job}: {peers[peer].median / own.median:.1f} times {peer}, {aim} is the aim"


measured = list(rows())
versions = "; ".join([version(ORVID, "--version"), version("jq", "--version"), version("gojq", "--version"),
                      version("gron", "--version"), version("python3", "--version"), version("hyperfine", "--version")])
where = f"Commit {os.environ.get('ORVID_BENCH_COMMIT', 'unknown')}, {os.cpu_count()} × {cpu()}, {platform.platform()}"
below = list(below_the_aims(measured))
page = ["# Speed of the command", "",
        "`bench/command.sh --publish` made this page. Medians, half of the distance of the quartiles in per cent of them, and in",
        "bold how many times orvid's median that is. Start-up, reading the file and writing to nowhere count.", "",
        "![The same times as bars](command-speed.svg)", "",
        "| Job | orvid | " + " | ".join(PEERS) + " |", "|---" * (len(PEERS) + 2) + "|"]
for job, own, peers in measured:
    page.append(f"| {job} | {own.cell()} | " + " | ".join(peers[p].cell(own) if p in peers else "" for p in PEERS) + " |")
page += ["", "The aims are 5 times jq's speed, 8 times in checks, 10 times with two threads, to be ahead of gojq, 2.5 times in queries, "
         "and 2.5 ms to start: " +
         ("all rows meet them." if not below else "not met by"), *[f"- {line}" for line in below],
         "", where + ".", versions + ".",
         f"The load was {os.environ.get('ORVID_BENCH_LOAD', 'unknown')} before the measurement, {os.getloadavg()[0]:.2f} at its end,",
         "which counts the programs that were measured."]
(FOLDER / "command-speed.md").write_text("\n".join(page) + "\n")


def bar(times, own):
    return f"{times.median / own.median:.3f} {times.low / own.median:.3f} {times.high / own.median:.3f}" if times else "NaN NaN NaN"


(FOLDER / "command.dat").write_text("".join(
    f'"{job}" ' + " ".join(bar(peers.get(p), own) for p in PEERS) + "\n" for job, own, peers in measured))
plot = f"""set terminal svg size 1100,640 font "sans,11" background "white" noenhanced
set output "{FOLDER}/command-speed.svg"
set title "Time in multiples of orvid's, medians and quartiles; more is slower, the scale is logarithmic\\n{where}\\n{versions}" font "sans,9"
set style data histogram
set style histogram errorbars gap 1 lw 1
set style fill solid 0.8 border -1
set logscale y
set yrange [0.5:*]
set grid ytics
set xtics rotate by -35
set key outside right top
plot """ + ", ".join(f"'{FOLDER}/command.dat' using {3 * i + 2}:{3 * i + 3}:{3 * i + 4}{':xtic(1)' if i == 0 else ''} title '{p}'"
                     for i, p in enumerate(PEERS)) + ", 1 title 'orvid' with lines, 5 title '5 times' with lines dashtype 2\n"
try:
    subprocess.run(["gnuplot"], input=plot, text=True, check=True)
except FileNotFoundError:
    print("SKIPPED: the chart: gnuplot is not installed")
print((FOLDER / "command-speed.md").read_text())
