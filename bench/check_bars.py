#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
#
# Compares the bars that the benchmark program has with the table in README.md, both ways; those of documents that
# are not here cannot be compared.
# usage: check_bars.py PROGRAM

import os
import re
import subprocess
import sys
from pathlib import Path


def of_program(program):
    """(job, what, limit) -> the documents it is for"""
    listed = subprocess.run([program, "--list"], check=True, capture_output=True, text=True).stdout
    bars, job, document = {}, "", ""
    for line in listed.splitlines():
        if bar := re.fullmatch(r"  (.+), at most ([0-9.]+)", line):
            bars.setdefault((job, bar[1], bar[2]), set()).add(document)
        else:
            job, document = line.split(" / ", 1)
    return bars


def of_table(text):
    """(job, what, limit) -> the documents in the parentheses after the job, or none"""
    rows = re.findall(r"^\| ([a-z, ]+?)(?: \((?:[^:)]*: )?([^)]+)\))? \| (.+?) \| ([0-9.]+) \|$", text, re.M)
    return {(job, what, limit): set(documents.split(", ")) - {""} for job, documents, what, limit in rows}


program, table = of_program(sys.argv[1]), of_table((Path(__file__).parent / "README.md").read_text())
absent = set() if os.environ.get("ORVID_CORPUS") else {"twitter", "citm_catalog", "canada"}
errors = [f"not in the table: {bar}" for bar in program.keys() - table.keys()]
for bar, named in table.items():
    if bar not in program:
        errors += [f"not in the program: {bar}"] if not named or named - absent else []
    elif named and program[bar] != named - absent:
        errors.append(f"for other documents: {bar}: {sorted(program[bar])}, not {sorted(named)}")
if not table or errors:
    sys.exit("\n".join(["check_bars: the bars differ", *errors]))
print(f"check_bars: {len(program)} bars")
