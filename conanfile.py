# SPDX-License-Identifier: MIT
#
# How Conan 2 builds and packages the library, and the command when the option `tool` asks for it. The version
# is the one in CMakeLists.txt.
import os
import re

from conan import ConanFile
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load


class OrvidConan(ConanFile):
    name = "orvid"
    description = "JSON documents that keep exact numbers, member order and every element's place"
    license = "MIT"
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False], "tool": [True, False]}
    default_options = {"shared": True, "tool": False}
    exports_sources = ("CMakeLists.txt", "LICENSE", "CHANGELOG.md", "base/*", "cmake/*", "docs/*", "gdb/*",
                       "include/*", "src/*", "tool/*")

    def set_version(self):
        project = load(self, os.path.join(self.recipe_folder, "CMakeLists.txt"))
        self.version = re.search(r"project\(Orvid VERSION ([0-9.]+)", project)[1]

    def requirements(self):
        self.requires("yajl/2.1.0")
        self.requires("gmp/6.3.0")
        self.requires("re2/20220601")
        self.requires("utfcpp/4.0.8")
        if self.options.tool:
            self.requires("cli11/2.6.0")

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["ORVID_BUILD_TESTS"] = False
        toolchain.cache_variables["ORVID_BUILD_EXAMPLES"] = False
        toolchain.cache_variables["ORVID_BUILD_TOOL"] = bool(self.options.tool)
        toolchain.generate()
        CMakeDeps(self).generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        copy(self, "LICENSE", self.source_folder, os.path.join(self.package_folder, "licenses"))
        CMake(self).install()

    def package_info(self):
        self.cpp_info.libs = ["orvid"]
        self.cpp_info.set_property("cmake_file_name", "Orvid")
        self.cpp_info.set_property("cmake_target_name", "Orvid::Orvid")
        self.cpp_info.set_property("pkg_config_name", "orvid")
