#!/usr/bin/env bash
# Runs each fuzz target for so many seconds, from its seeds and from what earlier runs found. Needs the build folder
# build/fuzz. What is found goes to out/fuzz; inputs that fail are out/fuzz/crash-..., timeout-... and the like.
#
#   fuzz/run.sh SECONDS [TARGET [FLAG...]]     the flags are those of libFuzzer
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:?"fuzz/run.sh SECONDS [TARGET [FLAG...]]"}
targets=(${2:-$(basename -s .cpp fuzz/fuzz_*.cpp)})
mkdir -p out/fuzz
fuzz/game_seeds.py out/fuzz/games
for target in "${targets[@]}"; do
  mkdir -p "out/fuzz/$target" "fuzz/corpus/$target"
  seeds=("fuzz/corpus/$target")
  [ "$target" = fuzz_script ] && seeds+=(out/fuzz/games)
  # Files of the form that a target reads, from other targets and from the tree.
  case "$target" in
    fuzz_binary | fuzz_definition | fuzz_check | fuzz_text_coder) seeds+=(out/fuzz/games) ;;
    fuzz_image_tool) seeds+=(fuzz/corpus/fuzz_img) ;;
    fuzz_anim_tool) seeds+=(fuzz/corpus/fuzz_ann) ;;
  esac
  log=out/fuzz/$target.log
  if ! build/fuzz/fuzz/"$target" -max_total_time="$seconds" -artifact_prefix=out/fuzz/ "${@:3}" \
    "out/fuzz/$target" "${seeds[@]}" >"$log" 2>&1; then
    echo "$target: failed; more in $log"
    grep -E -m 1 -A 30 'ERROR|runtime error|leaves another state|contradicts itself' "$log" | cut -c 1-300 || true
    grep 'Test unit written' "$log" || true
    exit 1
  fi
  echo "$target: $(grep $'\tDONE ' "$log" | cut -f 2-)"
done
