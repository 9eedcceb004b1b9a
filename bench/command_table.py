#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
#
# Makes the table and the chart of what bench/command.sh measured: command.md and command.svg.
# usage: command_table.py FOLDER ORVID

import json
import os
import platform
import subprocess
import sys
from pathlib import Path

FOLDER, ORVID = Path(sys.argv[1]), sys.argv[2]
TOOLS = ["orvid", "jq", "gojq", "gron", "json.tool"]


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


def rows():
    for file in sorted((FOLDER / "command").glob("*.json"), key=lambda f: f.stat().st_mtime_ns):
        results = {r["command"]: r for r in json.loads(file.read_text())["results"]}
        yield file.stem.replace("_", " "), results


def cell(result, own):
    if result is None:
        return ""
    spread = 100 * (result["max"] - result["min"]) / result["median"]
    ratio = "" if result is own else f", {result['median'] / own['median']:.1f} x"
    return f"{1000 * result['median']:.1f} ms ± {spread / 2:.0f} %{ratio}"


measured = list(rows())
lines = ["| Job | " + " | ".join(TOOLS) + " |", "|---" * (len(TOOLS) + 1) + "|"]
for name, results in measured:
    lines.append(f"| {name} | " + " | ".join(cell(results.get(t), results["orvid"]) for t in TOOLS) + " |")
about = [f"Commit {os.environ.get('ORVID_BENCH_COMMIT', 'unknown')}, {os.cpu_count()} × {cpu()}, {platform.platform()}.",
         f"{version(ORVID, '--version')}; {version('jq', '--version')}; {version('gojq', '--version')}; "
         f"gron {version('gron', '--version')}; {version('python3', '--version')}; {version('hyperfine', '--version')}.",
         f"Load when the table was made: {os.getloadavg()[0]:.1f}.",
         "Medians, half of the range in per cent of them, and how many times orvid's median that is."]
(FOLDER / "command.md").write_text("\n".join(lines) + "\n\n" + "\n".join(about) + "\n")

data = "".join(f'"{name}" ' + " ".join(
    f"{results[t]['median'] / results['orvid']['median']:.3f}" if t in results else "NaN" for t in TOOLS[1:]) + "\n"
    for name, results in measured)
(FOLDER / "command.dat").write_text(data)
plot = f"""set terminal svg size 1000,560 font "sans,11" background "white"
set output "{FOLDER}/command.svg"
set title "Time in multiples of orvid's (1 is the same, more is slower), logarithmic"
set style data histogram
set style histogram clustered gap 1
set style fill solid 0.8 border -1
set logscale y
set yrange [0.5:*]
set grid ytics
set xtics rotate by -35
set key top left
plot """ + ", ".join(f"'{FOLDER}/command.dat' using {i}{':xtic(1)' if i == 2 else ''} title '{t}'"
                     for i, t in enumerate(TOOLS[1:], 2)) + ", 1 title 'orvid' with lines\n"
try:
    subprocess.run(["gnuplot"], input=plot, text=True, check=True)
except FileNotFoundError:
    print("SKIPPED: the chart: gnuplot is not installed")
print((FOLDER / "command.md").read_text())
