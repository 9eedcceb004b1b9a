# shellcheck shell=bash
# SPDX-License-Identifier: MIT
#
# Sourced by the other scripts: goes to the root of the project, shows each command before it runs,
# and lends ccache to the compiler where it is installed. It does nothing of its own.
set -euo pipefail
cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/.."

if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

run() {
    printf '+ %s\n' "$*"
    "$@"
}

# build_and_test PRESET [CTEST ARGUMENTS]: configures, builds and tests one preset.
build_and_test() {
    local preset=$1
    shift
    run cmake --preset "$preset" &&
        run cmake --build --preset "$preset" &&
        run ctest --preset "$preset" -j "$(nproc)" "$@"
}
