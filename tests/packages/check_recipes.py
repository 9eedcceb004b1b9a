#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
#
# Reads vcpkg.json and runs conanfile.py on stand-ins for Conan's modules: that both name the version and the
# libraries of the build, and that the recipe sets only options which CMakeLists.txt knows.
# usage: check_recipes.py SOURCE VERSION

import json
import re
import runpy
import sys
from pathlib import Path
from types import ModuleType, SimpleNamespace
from unittest.mock import MagicMock

SOURCE, VERSION = Path(sys.argv[1]), sys.argv[2]
CONAN_MODULES = ["conan", "conan.tools", "conan.tools.cmake", "conan.tools.files"]


def expect(what, expected, got):
    if expected != got:
        sys.exit(f"{what}: expected {expected}, not {got}")


def libraries():
    """The libraries that CMake looks for, by the names of their variables."""
    return {name.lower() for name in re.findall(r"find_(?:path|library)\((\w+?)_(?:INCLUDE_DIR|LIBRARY)",
                                                (SOURCE / "cmake/OrvidDependencies.cmake").read_text())}


def check_vcpkg():
    manifest = json.loads((SOURCE / "vcpkg.json").read_text())
    expect("name in vcpkg.json", "orvid", manifest["name"])
    expect("version in vcpkg.json", VERSION, manifest["version"])
    expect("libraries in vcpkg.json", libraries(), set(manifest["dependencies"]))
    expect("the tool in vcpkg.json", ["cli11"], manifest["features"]["tool"]["dependencies"])


def load_recipe():
    """The recipe's class, and the stand-ins that it uses."""
    modules = {name: ModuleType(name) for name in CONAN_MODULES}
    modules["conan"].ConanFile = type("ConanFile", (), {})
    for name in ("CMake", "CMakeDeps", "CMakeToolchain", "cmake_layout"):
        setattr(modules["conan.tools.cmake"], name, MagicMock(name=name))
    modules["conan.tools.files"].copy = MagicMock()
    modules["conan.tools.files"].load = lambda recipe, file: Path(file).read_text()
    sys.modules.update(modules)
    return runpy.run_path(str(SOURCE / "conanfile.py"))["OrvidConan"], modules["conan.tools.cmake"]


def check_conan(recipe_class, cmake, with_tool):
    recipe = recipe_class()
    recipe.recipe_folder = recipe.source_folder = str(SOURCE)
    recipe.package_folder = "/nowhere"
    recipe.options = SimpleNamespace(shared=True, tool=with_tool)
    recipe.cpp_info = MagicMock()
    required = []
    recipe.requires = required.append
    toolchain = cmake.CMakeToolchain.return_value
    toolchain.cache_variables = {}
    for step in ("set_version", "requirements", "layout", "generate", "build", "package", "package_info"):
        getattr(recipe, step)()
    expect("version in conanfile.py", VERSION, recipe.version)
    expect("libraries in conanfile.py", libraries() | ({"cli11"} if with_tool else set()),
           {reference.split("/")[0] for reference in required})
    known = set(re.findall(r"(ORVID_BUILD_\w+)", (SOURCE / "CMakeLists.txt").read_text()))
    expect("options in conanfile.py that CMakeLists.txt does not know", set(),
           set(toolchain.cache_variables) - known)
    expect("the tool in conanfile.py", with_tool, toolchain.cache_variables["ORVID_BUILD_TOOL"])
    expect("library in conanfile.py", ["orvid"], recipe.cpp_info.libs)
    for pattern in recipe.exports_sources:
        if not list(SOURCE.glob(pattern)):
            sys.exit(f"conanfile.py exports {pattern}, which is not there")


check_vcpkg()
conan_class, conan_cmake = load_recipe()
for tool in (False, True):
    check_conan(conan_class, conan_cmake, tool)
print("check_recipes: vcpkg.json and conanfile.py agree with the build")
