#!/usr/bin/env bash
# Runs clang-tidy by .clang-tidy over the sources that differ from a commit (default: main), changed files included.
#
#   tools/tidy.sh [COMMIT]      the sources that differ
#   tools/tidy.sh --all         every source
#
# Needs a build folder: build/release if it is there, else build/debug.
set -euo pipefail
cd "$(dirname "$0")/.."

build=build/release
[ -f $build/compile_commands.json ] || build=build/debug
[ -f $build/compile_commands.json ] || { echo "Tidy: build first: cmake --preset release" >&2; exit 1; }

if [ "${1:-}" = "--all" ]; then
  mapfile -t files < <(git ls-files 'src/*.cpp')
else
  mapfile -t files < <(git diff --name-only --diff-filter=d "${1:-main}" -- 'src/*.cpp')
fi
if [ ${#files[@]} -eq 0 ]; then
  echo "Tidy: nothing differs."
  exit 0
fi
echo "Tidy: ${#files[@]} sources."
# clang does not know every warning of the compiler in the compile commands.
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" \
  clang-tidy -quiet -p $build --extra-arg=-Wno-unknown-warning-option 2>/dev/null
