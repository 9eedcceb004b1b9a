#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
#
# Prints the instructions for each value, of two runs of const_reads.cpp under callgrind.
# usage: const_reads.py OLD_DUMPS NEW_DUMPS, each the name of the dumps without their numbers

import re
import sys
from pathlib import Path

VALUES = 100_000


def dumps(base):
    base = Path(base)
    files = [file for file in base.parent.glob(base.name + ".*") if file.suffix[1:].isdigit()]
    for file in sorted(files, key=lambda file: int(file.suffix[1:])):
        text = file.read_text("latin-1")
        name = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.M)
        total = re.search(r"^(?:summary|totals): (\d+)", text, re.M)
        if name and name[1] != "none":
            yield name[1], int(total[1]) / VALUES


print("| Operation | before | now | now / before |\n|---|---:|---:|---:|")
for (name, before), (_, now) in zip(dumps(sys.argv[1]), dumps(sys.argv[2])):
    print(f"| {name} | {before:.0f} | {now:.0f} | {now / before:.2f} |")
