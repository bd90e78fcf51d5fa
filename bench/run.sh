#!/bin/sh
# Runs the benchmarks: bench/run.sh BIN_DIR
set -eu

bin=${1:?usage: bench/run.sh BIN_DIR}

"$bin/bench_event_cache"
echo
"$bin/bench_event_cache_latency"
echo
echo "event cache: memory (growth of resident memory)"
"$bin/bench_event_cache_memory" idle
"$bin/bench_event_cache_memory" queued
