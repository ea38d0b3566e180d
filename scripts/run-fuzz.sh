#!/usr/bin/env bash
# Runs libFuzzer targets of a fuzz tree, one after the other, each for a bounded time on a
# copy of its seed corpus (the committed corpus is never written) with its dictionary when it
# has one. Fails when any target stops on a crash, a sanitizer report, a leak or a timeout;
# the input that did it is kept in <tree>/fuzz-artifacts/<target>/, the run's log beside it.
#   scripts/run-fuzz.sh TREE SECONDS TARGET...
set -uo pipefail
cd "$(dirname "$0")/.."
tree=$1 seconds=$2
shift 2
scratch=$(mktemp -d "${TMPDIR:-/tmp}/cp-fuzz-run-XXXXXX")
trap 'rm -rf "$scratch"' EXIT
failed=()
for target in "$@"; do
  artifacts="$tree/fuzz-artifacts/$target"
  log="$tree/fuzz-artifacts/$target.log"
  mkdir -p "$scratch/$target" "$artifacts"
  cp -r "fuzz/corpus/$target/." "$scratch/$target/"
  dict=()
  [ -f "fuzz/$target.dict" ] && dict=(-dict="fuzz/$target.dict")
  echo "== $target: ${seconds} s"
  if "$tree/fuzz/$target" "${dict[@]}" -max_total_time="$seconds" -timeout=25 \
      -print_final_stats=1 -artifact_prefix="$artifacts/" "$scratch/$target" >"$log" 2>&1; then
    grep -E '^#[0-9]+[[:space:]]+DONE|^stat::(number_of_executed_units|average_exec_per_sec|new_units_added)' "$log"
  else
    failed+=("$target")
    tail -n 60 "$log"
  fi
done
if [ ${#failed[@]} -gt 0 ]; then
  echo "fuzzing found faults in: ${failed[*]} (inputs under $tree/fuzz-artifacts/)" >&2
  exit 1
fi
