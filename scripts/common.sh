# shellcheck shell=bash
# SPDX-License-Identifier: MIT
#
# Sourced by the other scripts: goes to the root of the project, shows each command before it runs,
# and lends ccache to the compiler where it is installed. It does nothing of its own.
set -euo pipefail
cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/.."

if command -v ccache >/dev/null; then
    # With these it keeps what was compiled with a precompiled header too.
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_SLOPPINESS=pch_defines,time_macros
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

# print_skipped PRESET: which tests of the last run were skipped, and why.
print_skipped() {
    awk '/^[0-9]+\/[0-9]+ Test: / { test = $3 }
        /: Skipped$/ { getline; sub(/^[A-Z ]+: /, ""); print "SKIPPED: " test ": " $0 }
        /^SKIPPED: / { print "SKIPPED: " test ": " substr($0, 10) }' "build/$1/Testing/Temporary/LastTest.log"
}

# test_preset PRESET [CTEST ARGUMENTS]
test_preset() {
    local preset=$1 status=0
    shift
    run ctest --preset "$preset" -j "$(nproc)" "$@" || status=$?
    print_skipped "$preset"
    return $status
}

# build_and_test PRESET [CTEST ARGUMENTS]: configures, builds and tests one preset.
build_and_test() {
    make_locale && run cmake --preset "$1" && run cmake --build --preset "$1" && test_preset "$@"
}
