#!/usr/bin/env python3
"""Compares the virtual tables that compilers make with the lists beside this file.

    check-virtual-tables.py SOURCE_DIR [COMPILER...]      (compilers: g++ and clang++ unless given)

A host calls the component's classes by places in their virtual tables, so the order of their operations must not
change, nor which of them a class implements itself. Each source file that defines one of the classes is compiled, and
the tables are read from what the compiler says: clang from its dump of table layouts, any other compiler from the
table in the assembler code it writes. Both must be as listed; the first difference of a table is printed.

A list has one section for each table of the class: [primary], then one for each base that has a table of its own, in
the order of the compilers. A line is "own" or "inherited" and an operation; an operation of several forms is followed
by its first argument's type in parentheses. A destructor has two places, which are read as one. In a section that is
marked "destructor aside" it is left out.

Ends with 0, with 1 for a difference, and with 77 when none of the compilers is there.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

CLASSES = {
    "touch::TouchWorkflow": "touch/TouchWorkflow.cpp",
    "touch::TouchGetBoundsEvent": "touch/navigation/TouchGetBoundsEvent.cpp",
    "touch::SpinCenterMarkup": "touch/markup/SpinCenterMarkup.cpp",
    "touch::SpinCenterAxis": "touch/markup/SpinCenterAxis.cpp",
    "animation::CameraSpinTransition": "touch/navigation/CameraSpinTransition.cpp",
}
LISTS = pathlib.Path(__file__).parent


def run(*command):
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    if result.returncode != 0:
        sys.exit(f"{' '.join(command)}\nfailed:\n{result.stderr}")
    return result.stdout


def compile_source(source_dir, compiler, source, *options):
    with tempfile.TemporaryDirectory() as folder:
        assembler = pathlib.Path(folder, "out.s")
        printed = run(compiler, "-std=c++20", f"-I{source_dir}", "-S", "-o", str(assembler), *options,
                      str(pathlib.Path(source_dir, source)))
        return printed, assembler.read_text()


def clang_entries(source_dir, compiler, class_name, source):
    """The lines of clang's dump; "RTTI" stands before the operations of each table."""
    dump, _ = compile_source(source_dir, compiler, source, "-Xclang", "-fdump-vtable-layouts")
    block = re.search(rf"^Vtable for '{class_name}' .*?\n\n", dump, re.M | re.S)
    if not block:
        sys.exit(f"{compiler} prints no table of {class_name}")
    for entry in re.findall(r"^ *\d+ \| (.*)$", block.group(), re.M):
        yield "RTTI" if entry.endswith(" RTTI") else entry


def assembler_entries(source_dir, compiler, class_name, source):
    """The demangled words of the table in the assembler code, like the lines above."""
    _, code = compile_source(source_dir, compiler, source)
    mangled = "N" + "".join(f"{len(part)}{part}" for part in class_name.split("::")) + "E"
    table = re.search(rf"^_ZTV{mangled}:\n((?:\t\.quad\t.*\n)+)", code, re.M)
    if not table:
        sys.exit(f"{compiler} writes no table of {class_name}")
    words = re.findall(r"\.quad\t(\S+)", table.group(1))
    for word in run("c++filt", *("_" if re.fullmatch(r"-?\d+", word) else word for word in words)).splitlines():
        yield "RTTI" if word.startswith("typeinfo for ") else word


def read_entry(entry, class_name):
    """("own" or "inherited", name, type of the first argument) of an operation; None for any other entry."""
    found = re.search(r"((?:\w+::)+)(~?\w+)(?:\[abi:\w+\])?\((.*?)[,)]", entry)
    if not found:
        return None
    owner, name, argument = found.groups()
    kind = "own" if owner == class_name + "::" else "inherited"
    return (kind, "destructor", "") if name.startswith("~") else (kind, name, argument)


def read_tables(entries, class_name):
    tables = []
    for entry in entries:
        if entry == "RTTI":
            tables.append([])
            continue
        operation = read_entry(entry, class_name)
        if operation and tables and not (operation[1] == "destructor" and tables[-1][-1:] == [operation]):
            tables[-1].append(operation)
    return tables


def read_list(path):
    """[(heading, [(kind, name, first argument)])]; the argument is empty where the list names none."""
    sections = []
    for line in path.read_text().splitlines():
        if line.startswith("["):
            sections.append((line.strip("[]"), []))
        elif line and not line.startswith("#"):
            sections[-1][1].append(re.fullmatch(r"(own|inherited) +(\w+)(?:\((.*)\))?", line).groups(""))
    return sections


def describe(operation):
    if operation is None:
        return "nothing"
    kind, name, argument = operation
    return f"{kind} {name}" + (f"({argument})" if argument else "")


def first_difference(expected, actual):
    for place in range(max(len(expected), len(actual))):
        want = expected[place] if place < len(expected) else None
        have = actual[place] if place < len(actual) else None
        if want and have and not want[2]:
            have = (have[0], have[1], "")
        if want != have:
            return f"place {place + 1}: expected {describe(want)}, found {describe(have)}"
    return None


def check(class_name, compiler, tables):
    sections = read_list(LISTS / (class_name.split("::")[-1] + ".txt"))
    if len(tables) != len(sections):
        return [f"{class_name}, {compiler}: expected {len(sections)} tables, found {len(tables)}"]
    faults = []
    for (heading, expected), actual in zip(sections, tables):
        if "destructor aside" in heading:
            actual = [operation for operation in actual if operation[1] != "destructor"]
        difference = first_difference(expected, actual)
        if difference:
            faults.append(f"{class_name}, {compiler}, [{heading}], {difference}")
    return faults


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    source_dir = sys.argv[1]
    compilers = [name for name in sys.argv[2:] or ["g++", "clang++"] if shutil.which(name)]
    if not compilers:
        print("no compiler to ask")
        sys.exit(77)
    faults = []
    for compiler in compilers:
        read = clang_entries if "clang" in run(compiler, "--version") else assembler_entries
        for class_name, source in CLASSES.items():
            tables = read_tables(read(source_dir, compiler, class_name, source), class_name)
            faults += check(class_name, compiler, tables)
    for fault in faults:
        print(fault)
    print(f"{len(CLASSES)} classes, compilers: {', '.join(compilers)}, differences: {len(faults)}")
    sys.exit(1 if faults else 0)


main()
