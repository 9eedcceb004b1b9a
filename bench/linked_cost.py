#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
#
# What being linked with the library costs a program: start-up time, size, compile time. Prints JSON.
# usage: linked_cost.py BUILD_FOLDER

import json
import os
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
INCLUDES = [f"-I{ROOT / 'include'}", f"-I{ROOT / 'base/include'}"]
COMPILER = os.environ.get("CXX", "c++")


def seconds(arguments):
    """The processor time of a process and its children."""
    child = os.posix_spawnp(str(arguments[0]), [str(a) for a in arguments], os.environ)
    _, status, usage = os.wait4(child, 0)
    if status != 0:
        sys.exit(f"linked_cost: failed: {arguments}")
    return usage.ru_utime + usage.ru_stime


def in_turns(commands, count):
    """For each command its times; the n-th times of all belong together."""
    for command in commands:
        seconds(command)
    rounds = [[seconds(command) for command in commands] for _ in range(count)]
    return list(zip(*rounds))


def spread(values):
    tenths = statistics.quantiles(values, n=10)
    return {"p10": tenths[0], "median": statistics.median(values), "p90": tenths[-1]}


def compile_command(folder, source):
    return [COMPILER, "-std=c++17", "-O3", "-DNDEBUG", *INCLUDES, "-c", source, "-o", f"{folder}/program.o"]


def include_only(folder, header):
    source = Path(folder) / (header.replace("/", "_") + ".cpp")
    source.write_text(f"#include <{header}>\nint main() {{}}\n")
    return source


def compile_cost(folder, orvid_source, nlohmann_source):
    orvid, nlohmann = in_turns([compile_command(folder, s) for s in (orvid_source, nlohmann_source)], 7)
    return {"orvid": spread(orvid), "nlohmann": spread(nlohmann),
            "ratio": spread([a / b for a, b in zip(orvid, nlohmann)])}


def stripped_size(library):
    with tempfile.NamedTemporaryFile() as out:
        subprocess.run(["strip", "-o", out.name, library], check=True)
        return os.path.getsize(out.name)


build = Path(sys.argv[1])
starts = [[build / f"bench/orvid_bench_start_{program}"] for program in ("empty", "stdlib", "linked")]
empty, stdlib, linked = in_turns(starts, 300)
with tempfile.TemporaryDirectory() as folder:
    include = compile_cost(folder, *(include_only(folder, h) for h in ("ko/Orvid.h", "nlohmann/json.hpp")))
    convert = compile_cost(folder, *(ROOT / f"bench/start/struct_{library}.cpp" for library in ("orvid", "nlohmann")))
print(json.dumps({
    "start": {"empty": spread(empty), "stdlib": spread(stdlib), "linked": spread(linked),
              "difference": spread([a - b for a, b in zip(linked, empty)])},
    "compile": {"include": include, "struct": convert},
    "strippedBytes": stripped_size((build / "src/liborvid.so").resolve())}, indent=4))
