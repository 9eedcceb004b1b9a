#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
#
# Draws the read and write times of all libraries on three documents as an SVG chart of bars.
# usage: chart.py RESULTS.json CHART.svg

import json
import sys
from html import escape
from pathlib import Path

BAR, GAP, LABEL, WIDTH = 16, 44, 150, 760
DOCUMENTS = ["twitter", "citm_catalog", "canada"]
STYLE = """text { font: 12px sans-serif; fill: #24292f } .head { font-weight: bold }
.other { fill: #9aa7b4 } .own { fill: #d9480f }
@media (prefers-color-scheme: dark) { text { fill: #d0d7de } .other { fill: #57606a } }"""


def panel(group, top):
    """The bars of one group below `top`, and the height that they take."""
    subjects = sorted(group["subjects"], key=lambda s: s["seconds"]["median"])
    longest = subjects[-1]["seconds"]["median"]
    lines = [f'<text class="head" x="0" y="{top}">{escape(group["job"])}, {escape(group["document"])}</text>']
    for i, subject in enumerate(subjects):
        y, seconds = top + 8 + i * BAR, subject["seconds"]["median"]
        length = max(1, seconds / longest * (WIDTH - LABEL - 80))
        kind = "own" if subject["subject"].startswith("orvid") else "other"
        lines += [f'<text x="{LABEL - 8}" y="{y + 12}" text-anchor="end">{escape(subject["subject"])}</text>',
                  f'<rect class="{kind}" x="{LABEL}" y="{y + 2}" width="{length:.1f}" height="{BAR - 4}"/>',
                  f'<text x="{LABEL + length + 6:.1f}" y="{y + 12}">{seconds * 1e3:.2f} ms</text>']
    return lines, len(subjects) * BAR + GAP


results = json.loads(Path(sys.argv[1]).read_text())
groups = [g for g in results.get("groups", []) if g["job"] in ("read", "write")]
corpus = [g for g in groups if g["document"] in DOCUMENTS] or groups
if not corpus:
    sys.exit("chart: the results have no group to draw")
top, body = 20, []
for group in corpus:
    lines, height = panel(group, top)
    body += lines
    top += height
run = results["provenance"]
note = f'{run["CPU"]}, {run["compiler"]} {run["flags"]}, {run["allocator"]}, commit {run["commit"]}'
body.append(f'<text x="0" y="{top - 16}">{escape(note)}</text>')
Path(sys.argv[2]).write_text(
    f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {top}" role="img">'
    f"<title>Times of reading and writing, shorter is faster</title><style>{STYLE}</style>\n"
    + "\n".join(body) + "\n</svg>\n")
