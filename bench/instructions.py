#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
#
# Prints how many instructions each job took, from the dumps that callgrind wrote one a job, and the library's
# count divided by each other subject's. The first dump is that of an empty job and is taken off all others. Then
# the bars: instructions a byte of reading the documents in the folder of ORVID_CORPUS.

import os
import re
import sys
from pathlib import Path


def dump(file):
    """The job's name and its instructions."""
    text = file.read_text("latin-1")
    name = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.M)
    total = re.search(r"^(?:summary|totals): (\d+)", text, re.M)
    return (name[1], int(total[1])) if name and total else None


def number(file):
    return int(file.suffix[1:])


MOST = {"twitter": 16, "citm_catalog": 16, "canada": 28}

files = [Path(name) for name in sys.argv[1:] if re.search(r"[.]\d+$", name)]
jobs = [job for job in map(dump, sorted(files, key=number)) if job]
if len(jobs) < 2:
    sys.exit("instructions: callgrind has written no dump of a job")
(_, overhead), *jobs = jobs
print("| Job | Document | Subject | Instructions | Orvid / subject |\n|---|---|---|---:|---:|")
first = {}
for name, count in jobs:
    job, document, subject = name.split(" / ", 2)
    count -= overhead
    own = first.setdefault((job, document), count)
    print(f"| {job} | {document} | {subject} | {count:,} | {own / count:.2f} |")
read = {document: first["read", document] for document in MOST if ("read", document) in first}
if read:
    print("\n| Read | Instructions a byte | At most | Met |\n|---|---:|---:|---|")
for document, count in read.items():
    a_byte = count / (Path(os.environ["ORVID_CORPUS"]) / f"{document}.json").stat().st_size
    print(f"| {document} | {a_byte:.2f} | {MOST[document]} | {'yes' if a_byte <= MOST[document] else '**no**'} |")
