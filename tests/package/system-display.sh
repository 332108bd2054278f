#!/usr/bin/env bash
# Sets the resolution of wine's screen and checks that the display query answers it: a number that only the system's own
# calls know.
#
#   system-display.sh UNIT_TESTS PREFIX RUN_WINE...
set -euo pipefail

unit_tests=$1
export TOUCHNAV_WINEPREFIX=$2
run=("${@:3}")

for resolution in 144 192; do
    export TOUCHNAV_SYSTEM_PIXELS_PER_INCH=$resolution
    "${run[@]}" 'C:\windows\system32\reg.exe' add 'HKCU\Control Panel\Desktop' \
        /v LogPixels /t REG_DWORD /d $resolution /f >/dev/null
    "${run[@]}" --wait
    if ! output=$("${run[@]}" "$unit_tests" --gtest_filter='Displays.*') ||
        ! grep -qF '[  PASSED  ] 1 test.' <<<"$output"; then
        printf 'With %d pixels per inch:\n%s\n' "$resolution" "$output" >&2
        exit 1
    fi
done
