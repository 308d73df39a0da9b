#!/usr/bin/env bash
# Runs clang-tidy by .clang-tidy over sources of src/.
#
#   tools/tidy.sh               those that differ from main, committed or not
#   tools/tidy.sh --recent N    the N that changed last, without the checks that take long
#   tools/tidy.sh --all         every one
#
# First of all tools/check_gate.py looks whether anything writes files or loads code beside the gates.
#
# Needs a build folder: build/release if it is there, else build/debug.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/check_gate.py
build=build/release
[ -f $build/compile_commands.json ] || build=build/debug
[ -f $build/compile_commands.json ] || { echo "Tidy: build first: cmake --preset release" >&2; exit 1; }

checks=()
case "${1:-}" in
  --all) mapfile -t files < <(git ls-files 'src/*.cpp') ;;
  --recent)
    checks=(--checks=-clang-analyzer-*)
    mapfile -t files < <(git log --format= --name-only -- 'src/*.cpp' | awk '!seen[$0]++' |
      while read -r file; do [ -f "$file" ] && echo "$file"; done | head -n "$2") ;;
  *) mapfile -t files < <(git diff --name-only --diff-filter=d main -- 'src/*.cpp') ;;
esac
if [ ${#files[@]} -eq 0 ]; then
  echo "Tidy: nothing to look at."
  exit 0
fi
# What it says on standard error is a count only.
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" \
  clang-tidy -quiet -p $build "${checks[@]}" 2>/dev/null
echo "Tidy: ${#files[@]} sources, nothing found."
