#!/usr/bin/env bash
# Runs fuzz targets two at a time, each from its seeds, and prints one line for each.
# Usage: run-all.sh FUZZ-BUILD SEEDS SECONDS [TARGET ...]
set -euo pipefail
build=$(realpath "$1") seeds=$2 seconds=$3
shift 3
[ $# -gt 0 ] || set -- $(cd "$build" && ls -- *Fuzz)
mkdir -p "$build/logs"

run_one() {
  local target=$1 corpus="$build/corpus/$1" format
  format=$(echo "${target%Fuzz}" | tr '[:upper:]' '[:lower:]')
  mkdir -p "$corpus"
  if [ -d "$seeds/$format" ]; then cp -n "$seeds/$format/"* "$corpus/"; fi
  if nice "$build/$target" "$corpus" -artifact_prefix="$build/logs/$target-" -rss_limit_mb=2048 -timeout=20 \
      -max_len=65536 -max_total_time="$seconds" > "$build/logs/$target.log" 2>&1; then
    echo "$target clean: $(grep '^Done' "$build/logs/$target.log" || true)"
  else
    echo "$target FAILED: $(grep -m1 -E 'ERROR|runtime error' "$build/logs/$target.log" || true)"
  fi
}
export -f run_one
export build seeds seconds
printf '%s\n' "$@" | xargs -P 2 -I{} bash -c 'run_one {}'
