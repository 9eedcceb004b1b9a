#!/bin/sh
# SPDX-License-Identifier: MIT
#
# Builds and runs the consumer with what pkg-config says, as a Makefile would.
# usage: build.sh PROGRAM     with CXX, CXXFLAGS and PKG_CONFIG_PATH in the environment
set -eu
cd -- "$(dirname -- "$0")/.."
flags=$(pkg-config --cflags --libs "orvid >= 0.1")
# The flags are meant to be split into words.
# shellcheck disable=SC2086
"$CXX" -std=c++17 $CXXFLAGS -Wall -Wextra -Wpedantic -Werror consumer.cpp $flags -o "$1"
"$1"
