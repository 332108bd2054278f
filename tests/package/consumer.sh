#!/usr/bin/env bash
# Builds and runs the consumer project against this project, with nothing else to find it by.
#
#   consumer.sh installed CMAKE COMPILER BINARY_DIR SCRATCH      installs BINARY_DIR into SCRATCH, moves it, uses that
#   consumer.sh subdirectory CMAKE COMPILER SOURCE_DIR SCRATCH   includes SOURCE_DIR with add_subdirectory
set -euo pipefail

how=$1 cmake=$2 compiler=$3 project=$4 scratch=$5
here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
options=(-G Ninja -S "$here/consumer" -B "$scratch/build" "-DCMAKE_CXX_COMPILER=$compiler" -DCMAKE_BUILD_TYPE=Release)

fail() {
    printf '%s\n' "$1" >&2
    exit 1
}

rm -rf -- "$scratch"
mkdir -p -- "$scratch"

if [ "$how" = installed ]; then
    # A package that has been moved shows whether anything still points to where it was built or installed.
    "$cmake" --install "$project" --prefix "$scratch/first" >"$scratch/install.log"
    mv -- "$scratch/first" "$scratch/prefix"
    options+=("-DCMAKE_PREFIX_PATH=$scratch/prefix")

    if "$cmake" "${options[@]}" -DTOUCHNAV_WANTED=9 -B "$scratch/newer" >/dev/null 2>&1; then
        fail "find_package accepted the installed version although a newer one was wanted"
    fi
else
    options+=("-DTOUCHNAV_SOURCE_DIR=$project" "-DCMAKE_CXX_COMPILER_LAUNCHER=$(command -v ccache || true)")
fi

"$cmake" "${options[@]}"
"$cmake" --build "$scratch/build" --target consumer
"$scratch/build/consumer" "$(<"$scratch/build/plugin-path.txt")"

if [ "$how" = installed ]; then
    program=$scratch/prefix/bin/touch-replay
    if [ -x "$program" ]; then
        cd / # so that nothing is found relative to the caller
        LD_DEBUG=files LD_DEBUG_OUTPUT=$scratch/loaded "$program" "$here/../../recordings/tap.evemu" >/dev/null ||
            fail "the installed program fails"
        grep -qE "calling init: $scratch/prefix/.*libtouchnav-touch" "$scratch"/loaded.* ||
            fail "the installed program does not load the installed plug-in"
    fi
elif [ -e "$scratch/build/touchnav/replay" ]; then
    fail "a project that includes this one gets the replay program without asking for it"
fi
