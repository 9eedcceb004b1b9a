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

# Some tests want a locale with a decimal comma; one in the build folder needs no root.
make_locale() {
    export LOCPATH=$PWD/build/locales
    [ -d "$LOCPATH/de_DE.UTF-8" ] ||
        { mkdir -p "$LOCPATH" && run localedef -i de_DE -f UTF-8 "$LOCPATH/de_DE.UTF-8"; }
}

# build_and_test PRESET [CTEST ARGUMENTS]: configures, builds and tests one preset.
build_and_test() {
    local preset=$1
    shift
    make_locale && run cmake --preset "$preset" &&
        run cmake --build --preset "$preset" &&
        run ctest --preset "$preset" -j "$(nproc)" "$@"
}
