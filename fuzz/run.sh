#!/bin/sh
# Runs every fuzz target of a fuzz build for a while and prints what each
# reached. Corpora, logs and findings stay in the build folder, so that the next
# run goes on from there.
#
# usage: fuzz/run.sh SECONDS_PER_TARGET BUILD_FOLDER
# Exit status: 0 nothing found, 1 a target failed, 3 usage.
set -u

if [ $# -ne 2 ] || ! [ "$1" -gt 0 ] 2>/dev/null || [ ! -d "$2/bin" ]; then
  echo "usage: $0 SECONDS_PER_TARGET BUILD_FOLDER" >&2
  exit 3
fi
seconds=$1
build=$2
here=$(dirname "$0")
failed=0
found=0

# run TARGET: one target; its log is kept.
run() {
  corpus=$build/fuzz-run/$1/corpus
  findings=$build/fuzz-run/$1/findings
  log=$build/fuzz-run/$1/log
  mkdir -p "$corpus" "$findings"
  dictionary=$here/names.dict
  [ "$1" != fuzz_constraint ] || dictionary=$here/constraint.dict
  "$build/bin/$1" -max_total_time="$seconds" -timeout=60 -max_len=2048 -print_final_stats=1 \
    -dict="$dictionary" -artifact_prefix="$findings/" "$corpus" "$here/seeds/$1" \
    >"$log" 2>&1
}

# stat NAME: a figure of libFuzzer's final statistics.
stat() {
  sed -n "s/^stat::$1: *//p" "$log"
}

for target in "$build"/bin/fuzz_*; do
  [ -x "$target" ] || continue
  found=1
  name=$(basename "$target")
  if run "$name"; then
    reached=$(grep -o 'cov: [0-9]* ft: [0-9]* corp: [0-9]*' "$log" | tail -n 1)
    printf '%-18s %11s runs %8s/s  %s\n' "$name" "$(stat number_of_executed_units)" \
      "$(stat average_exec_per_sec)" "$reached"
  else
    failed=1
    printf '%-18s FAILED, see %s\n' "$name" "$log"
    tail -n 30 "$log"
  fi
done

if [ $found -eq 0 ]; then
  echo "$0: no fuzz targets in $build/bin" >&2
  exit 3
fi
exit $failed
