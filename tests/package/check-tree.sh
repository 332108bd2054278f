#!/usr/bin/env bash
# Gives scripts/check-tree a small sound tree and then that tree with one fault at a time.
#
#   check-tree.sh CHECK_TREE
set -euo pipefail

check_tree=$1
scratch=$(mktemp -d)
trap 'rm -rf -- "$scratch"' EXIT
failures=0

# A tree with nothing to find, among it lines that only look like faults.
make_tree() {
    rm -rf -- "${scratch:?}/tree"
    mkdir -p "$scratch"/tree/{host/{dg,platform},touch,viewer,replay,tests/component}
    cd "$scratch/tree"
    printf '#include <vector>\n' >host/dg/Vec.h
    printf '#include <windows.h>\n#include <dlfcn.h>\n' >host/platform/Load.cpp
    printf '    dg/Vec.h platform/Load.cpp\n' >host/CMakeLists.txt
    printf '// Pans; synchronous, on one thread. Test: tests/component/PanTest.cpp\n' >touch/Pan.cpp
    printf '#include "host/dg/Vec.h"\n' >>touch/Pan.cpp
    printf 'add_library(touch Pan.cpp)\n' >touch/CMakeLists.txt
    printf '#include "host/dg/Vec.h"\n' >viewer/Load.h
    printf '    Load.h\n' >viewer/CMakeLists.txt
    printf '#include "viewer/Load.h"\n#include <cairo/cairo.h>\n' >replay/main.cpp
    { printf '#include "viewer/Load.h"\n' && printf '//%.0s\n' {1..499}; } >replay/Long.h
    printf 'main.cpp Long.h\n' >replay/CMakeLists.txt
    printf '#include "replay/Long.h"\n#include <chrono>\n' >tests/component/PanTest.cpp
    printf '        component/PanTest.cpp\n' >tests/CMakeLists.txt
}

# expect NAME PATTERN: exactly one finding, which matches the pattern; with an empty pattern, none.
expect() {
    local name=$1 pattern=$2 output status=0
    output=$("$check_tree" "$scratch/tree" 2>/dev/null) || status=$?
    if [ -z "$pattern" ]; then
        [ "$status" -eq 0 ] && [ -z "$output" ] && return
    elif [ "$status" -ne 0 ] && [ "$(wc -l <<<"$output")" -eq 1 ] && grep -qE -- "$pattern" <<<"$output"; then
        return
    fi
    printf '%s: wanted "%s", got status %d and:\n%s\n' "$name" "$pattern" "$status" "$output" >&2
    failures=$((failures + 1))
}

make_tree
expect "a sound tree" ""

make_tree
echo '//' >>replay/Long.h
expect "one line more than allowed" '^replay/Long.h: 501 lines'

make_tree
sed -i '1s/.*/\/\/ Pans./' touch/Pan.cpp
echo '// tests/component/PanTest.cpp' >>touch/Pan.cpp
expect "a test named only later in the file" '^touch/Pan.cpp: its first comment names no test'

make_tree
sed -i 's/PanTest/PansTest/' touch/Pan.cpp
expect "a named test that does not exist" '^touch/Pan.cpp: .*PansTest.cpp.*does not stand'

for word in 'std::chrono::seconds s;' 'usleep(1);' 'std::thread t;' 'thread_local int i;'; do
    make_tree
    echo "$word" >>touch/Pan.cpp
    expect "the component says '$word'" '^touch/Pan.cpp:3:.*no clock'
done

make_tree
echo '#  include "viewer/Load.h"' >>touch/Pan.cpp
expect "the component includes the viewer" '^touch/Pan.cpp:3: touch/ must not include viewer/'

make_tree
echo '#include "touch/Pan.h"' >>host/dg/Vec.h
expect "the interface includes the component" '^host/dg/Vec.h:2: host/ must not include touch/'

make_tree
echo '#include "Load.h"' >>viewer/Load.h
expect "an include that is relative to its folder" '^viewer/Load.h:2: "Load.h" does not start'

make_tree
echo '#include "host/dg/Location.cpp"' >>touch/Pan.cpp
expect "a source that is included" '^touch/Pan.cpp:3: "host/dg/Location.cpp" is no header'

make_tree
echo '#include <nlohmann/json.hpp>' >>viewer/Load.h
expect "a third-party header outside the replay program" '^viewer/Load.h:2: viewer/ includes <nlohmann/json.hpp>'

make_tree
echo '#include <dlfcn.h>' >>touch/Pan.cpp
expect "a system header in the component" '^touch/Pan.cpp:3: touch/ includes <dlfcn.h>'

make_tree
mv host/platform/Load.{cpp,h}
sed -i 's/cpp/h/' host/CMakeLists.txt
sed -i 2d host/platform/Load.h
expect "a system header in a header" '^host/platform/Load.h:1: host/ includes <windows.h>'

make_tree
touch tests/component/TapTest.cpp
expect "a test that no list has" '^tests/component/TapTest.cpp: no CMakeLists.txt'

make_tree
touch host/dg/Box.h
expect "a header that no list has" '^host/dg/Box.h: no CMakeLists.txt'

exit $((failures > 0))
