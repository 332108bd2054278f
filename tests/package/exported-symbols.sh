#!/usr/bin/env bash
# Compares the names that the plug-in exports with the list of those it is meant to export.
#
#   exported-symbols.sh PLUGIN LIST            prints the difference and fails when there is one
#   exported-symbols.sh --accept PLUGIN LIST   writes the list
#
# A Windows library has to export the same names; there GetProcAddress finds the entry points by them.
#
# Weak copies of inline members of the component's own classes are left out: each compiler emits those that it did not
# inline. A weak name from anywhere else is a leak and counts.
set -euo pipefail

accept=false
if [ "${1:-}" = --accept ]; then
    accept=true
    shift
fi
plugin=$1 list=$2

exported_names() {
    case "$plugin" in
    *.dll) x86_64-w64-mingw32-objdump -p "$plugin" |
        sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/ s/^\t\[ *[0-9]*\] //p' | x86_64-w64-mingw32-c++filt ;;
    *) nm -DC --defined-only -- "$plugin" |
        awk '{ kind = $2; sub(/^[^ ]* [^ ]* /, ""); if (kind == "W" && /^touch::/) next; print }' ;;
    esac
}

actual=$(mktemp)
trap 'rm -f -- "$actual"' EXIT
exported_names | LC_ALL=C sort -u >"$actual"

if ! [ -s "$actual" ]; then
    printf '%s exports nothing at all\n' "$plugin" >&2
    exit 1
fi
if $accept; then
    cp -- "$actual" "$list"
    exit 0
fi
if ! diff -u --label "expected: $list" --label "exported by $plugin" "$list" "$actual"; then
    printf 'Lines with + are exported and not listed, lines with - are listed and not exported.\n' >&2
    printf 'Accept with: %s --accept %s %s\n' "$0" "$plugin" "$list" >&2
    exit 1
fi
