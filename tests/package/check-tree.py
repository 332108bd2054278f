"""Gives scripts/check-tree a small sound tree, and then that tree with one fault at a time.

    check-tree.py CHECK_TREE
"""
import pathlib
import re
import subprocess
import sys
import tempfile

# A tree with nothing to find, among it lines that only look like faults.
SOUND = {
    "host/dg/Vec.h": "// Vectors.\n#include <vector>\n",
    "host/platform/Load.cpp": "\n// Loads.\n#include <windows.h>\n#include <dlfcn.h>\n",
    "host/CMakeLists.txt": "    dg/Vec.h platform/Load.cpp\n",
    "touch/moves/Pan.cpp": "// Pans; synchronous, on one thread. Test: tests/component/PanTest.cpp\n"
                           '#include "host/dg/Vec.h"\nvoid TouchWorkflow::Pan(int x) {}\n',
    "touch/TouchWorkflow.h": "    // moves/Pan.cpp: moves.\n    void Pan(int x);\n    // State record ===\n    int m_x = f(1);\n",
    "touch/GestureTypes.h": "// Kinds.\nenum GestureType : int {\n    GestureSpin = 1,\n};\n"
                            "enum GestureState {\n    GestureIdle = 0,\n};\n",
    "touch/CMakeLists.txt": "add_library(touch moves/Pan.cpp GestureTypes.h TouchWorkflow.h)\n",
    "docs/GESTURES.md": "```mermaid\nstateDiagram-v2\n    [*] --> GestureIdle\n```\n| `GestureSpin` | 1 |\n",
    "viewer/Load.h": '// Loads.\n#include "host/dg/Vec.h"\n',
    "viewer/CMakeLists.txt": "\n",
    "replay/program/main.cpp": '// Starts.\n#include "viewer/Load.h"\n#include <cairo/cairo.h>\n',
    "replay/play/Long.h": '// Long.\n#include "replay/session/Session.h"\n' + "//\n" * 498,
    "replay/session/Session.h": "// Events.\n",
    "replay/CMakeLists.txt": "program/main.cpp\n",
    "tests/component/PanTest.cpp": '#include "replay/play/Long.h"\n#include <chrono>\n',
    "tests/CMakeLists.txt": "        component/PanTest.cpp\n",
}

# What is wrong, the file it is in, the text that is replaced (at the end where there is none) and by what, and the finding.
PAN = "touch/moves/Pan.cpp"
FAULTS = [
    ("one line more than allowed", "replay/play/Long.h", None, "//\n", "^replay/play/Long.h: 501 lines"),
    ("a test named only later in the file", PAN, "// Pans;", "// Pans.\nint i;\n//", f"^{PAN}: its first comment names no test"),
    ("a source that opens without a comment", "viewer/Load.h", "// ", "", "^viewer/Load.h: opens without a comment"),
    ("a named test that does not exist", PAN, "PanTest", "PansTest", f"^{PAN}: .*PansTest.cpp.*does not stand"),
    ("a clock", PAN, None, "std::chrono::seconds s;\n", f"^{PAN}:4:.*no clock"),
    ("a sleep", PAN, None, "usleep(1);\n", f"^{PAN}:4:.*no clock"),
    ("a thread", PAN, None, "std::thread t;\n", f"^{PAN}:4:.*no clock"),
    ("a thread's variable", PAN, None, "thread_local int i;\n", f"^{PAN}:4:.*no clock"),
    ("the component includes the viewer", PAN, None, '#  include "viewer/Load.h"\n', "touch/ must not include viewer/"),
    ("the interface includes the component", "host/dg/Vec.h", None, '#include "touch/Pan.h"\n', "^host/dg/Vec.h:3: host/ must"),
    ("a folder inside includes a later one", "replay/session/Session.h", None, '#include "replay/play/Long.h"\n',
     "^replay/session/Session.h:2: replay/session/ must not include replay/play/"),
    ("an include that is relative to its folder", "viewer/Load.h", None, '#include "Load.h"\n', '^viewer/Load.h:3: "Load.h" does not'),
    ("a source that is included", PAN, None, '#include "host/dg/Location.cpp"\n', "Location.cpp\" is no header"),
    ("a foreign header", "viewer/Load.h", None, "#include <nlohmann/json.hpp>\n", "^viewer/Load.h:3: viewer/ includes <nlohmann/json"),
    ("a system header in the component", PAN, None, "#include <dlfcn.h>\n", f"^{PAN}:4: touch/ includes <dlfcn.h>"),
    ("a system header in a header", "host/dg/Vec.h", None, "#include <windows.h>\n", "^host/dg/Vec.h:3: host/ includes <windows.h>"),
    ("a test that no list has", "tests/component/TapTest.cpp", None, "\n", "^tests/component/TapTest.cpp: no CMakeLists.txt"),
    ("a header that no list has", "host/dg/Box.h", None, "//\n", "^host/dg/Box.h: no CMakeLists.txt"),
    ("an operation under a wrong heading", "touch/TouchWorkflow.h", "Pan(int x)", "Zoom(int x)", "Workflow.h:2: moves/Pan.cpp does not define Zoom"),
    ("a state that the diagram leaves out", "docs/GESTURES.md", "GestureIdle", "", "leaves out GestureIdle, a GestureState"),
    ("a row of a kind that is none", "docs/GESTURES.md", None, "| `GestureFly` | 1 |\n", "has GestureFly, which is no GestureType"),
    ("a heading without a source", "touch/TouchWorkflow.h", "Pan.cpp", "Zoom.cpp", "Workflow.h:1: there is no moves/Zoom.cpp"),
]


def findings(check_tree, files):
    with tempfile.TemporaryDirectory() as root:
        for name, text in files.items():
            path = pathlib.Path(root, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        done = subprocess.run([sys.executable, check_tree, root], capture_output=True, text=True)
        lines = done.stdout.splitlines()
        return lines if (done.returncode != 0) == bool(lines) else [*lines, f"exit status {done.returncode}", done.stderr]


def main():
    failures = 0
    for name, file, old, new, pattern in [("a sound tree", None, None, None, None), *FAULTS]:
        files = dict(SOUND)
        if file:
            text = files.get(file, "")
            files[file] = text + new if old is None else text.replace(old, new, 1)
        lines = findings(sys.argv[1], files)
        as_wanted = not lines if pattern is None else len(lines) == 1 and re.search(pattern, lines[0])
        if not as_wanted:
            print(f"{name}: wanted {pattern!r}, got {lines}")
            failures += 1
    return failures


if __name__ == "__main__":
    sys.exit(main())
