#!/usr/bin/env bash
# Builds and runs the example host against this project, with nothing else to find it by, and compares what it prints.
#
#   consumer.sh installed CMAKE COMPILER BINARY_DIR SCRATCH      installs BINARY_DIR into SCRATCH, moves it, uses that
#   consumer.sh subdirectory CMAKE COMPILER SOURCE_DIR SCRATCH   includes SOURCE_DIR with add_subdirectory
set -euo pipefail

how=$1 cmake=$2 compiler=$3 project=$4 scratch=$5
here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
options=(-G Ninja -S "$here/../../examples/minimal-host" -B "$scratch/build" "-DCMAKE_CXX_COMPILER=$compiler" -DCMAKE_BUILD_TYPE=Release)

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

    mkdir -p -- "$scratch/wanted"
    printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'project(wanted LANGUAGES CXX)' \
        'find_package(touchnav 9 REQUIRED)' >"$scratch/wanted/CMakeLists.txt"
    if "$cmake" "${options[@]}" -S "$scratch/wanted" -B "$scratch/newer" >/dev/null 2>&1; then
        fail "find_package accepted the installed version although a newer one was wanted"
    fi
else
    options+=("-DTOUCHNAV_SOURCE_DIR=$project" "-DCMAKE_CXX_COMPILER_LAUNCHER=$(command -v ccache || true)")
fi

"$cmake" "${options[@]}"
"$cmake" --build "$scratch/build" --target run | tee "$scratch/output"
for line in 'before: the eye is at (0.00, 0.00, 20.00)' 'after: the eye is at (-9.70, 0.00, 17.49)'; do
    grep -qF -- "$line" "$scratch/output" || fail "the example does not print: $line"
done

if [ "$how" = installed ]; then
    "$here/search-paths.sh" "$scratch/prefix"
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
