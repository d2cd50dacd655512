#!/bin/bash
# scripts/pictures.sh   takes the pictures in docs from the built program anew
. "$(dirname "$0")/common.sh"
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"
. "$root/scripts/wine.sh"

install_packages
# shellcheck disable=SC2086 # one word for each target
build_preset mingw $shipping window_report
lay_out
start_session screen
PYTHONPATH=$root/tests/end_to_end python3 -B "$root/scripts/pictures.py" 9>&-
