#!/usr/bin/env bash
# Reads where programs and libraries look for libraries of their own: only relative to themselves. An empty entry would be
# the current folder, where anybody's library may lie, and an absolute one a folder of the machine that built it.
#
#   search-paths.sh FOLDER...
set -euo pipefail

files=0
faults=0
while read -r file; do
    readelf -h "$file" >/dev/null 2>&1 || continue
    files=$((files + 1))
    paths=$(readelf -d "$file" | sed -n 's/.*\(RPATH\|RUNPATH\).*\[\(.*\)\]/\2/p')
    [ -n "$paths" ] || continue
    while read -r -d : path; do
        # shellcheck disable=SC2016  # the loader's own variable
        if [[ $path != '$ORIGIN' && $path != '$ORIGIN/'* ]]; then
            printf '%s looks for libraries in "%s"\n' "$file" "$path" >&2
            faults=$((faults + 1))
        fi
    done <<<"$paths:"
done < <(find "$@" -type f ! -name '*.o' ! -name '*.a')

[ "$files" -gt 0 ] || {
    printf 'no program and no library in %s\n' "$*" >&2
    exit 1
}
exit $((faults > 0))
