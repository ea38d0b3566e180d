#!/usr/bin/env bash
# One long run of a libFuzzer target, as docs/reliability.md reports them: fork mode with two
# workers (one per core), from a copy of the seed corpus, until RUNS executions or SECONDS have
# passed. Its log, grown corpus and any faulty input stay in <tree>/fuzz-long/<target>/.
# Fails when a worker crashed, leaked, timed out or ran out of memory.
#   scripts/fuzz-long.sh TREE TARGET RUNS SECONDS [MAX_LEN]
set -uo pipefail
cd "$(dirname "$0")/.."
tree=$1 target=$2 runs=$3 seconds=$4 max_len=${5:-}
if [ -z "$target" ] || [ ! -f "$tree/fuzz/$target" ]; then
  echo "no fuzz target '$target' in $tree/fuzz (FUZZ_TARGET= one of fuzz/*.cpp but fuzz_support)" >&2
  exit 2
fi
work="$tree/fuzz-long/$target"
rm -rf "$work"
mkdir -p "$work/corpus" "$work/artifacts"
cp -r "fuzz/corpus/$target/." "$work/corpus/"
flags=(-fork=2 -runs="$runs" -max_total_time="$seconds" -timeout=25 -print_final_stats=1
       -artifact_prefix="$work/artifacts/")
[ -f "fuzz/$target.dict" ] && flags+=(-dict="fuzz/$target.dict")
[ -n "$max_len" ] && flags+=(-max_len="$max_len")
# Leak scans after every input, the entropic schedule's bookkeeping, and ASan's allocation
# stacks and fill took over half of a worker's time. Leaks are still caught (each worker checks
# when it ends, every few minutes), and a faulty input replays with the defaults for the
# allocation stacks.
flags+=(-detect_leaks=0 -entropic=0)
export ASAN_OPTIONS=max_malloc_fill_size=0:malloc_context_size=0
log="$work/log"
echo "$target at $(git rev-parse --short HEAD) from $(date -u +%FT%TZ): ${flags[*]}" >"$log"
start=$(date +%s)
"$tree/fuzz/$target" "${flags[@]}" "$work/corpus" >>"$log" 2>&1
rc=$?
# Fork mode goes on past a worker's timeout or memory limit; its last progress line counts them.
last=$(grep -E '^#[0-9]+: ' "$log" | tail -n 1)
executions=$(sed -n 's|^#\([0-9]*\):.*|\1|p' <<<"$last")
faults=$(sed -n 's|.*oom/timeout/crash: \([0-9]*/[0-9]*/[0-9]*\).*|\1|p' <<<"$last")
echo "$target: ${executions:-?} executions in $(( $(date +%s) - start )) s," \
     "oom/timeout/crash ${faults:-?}, $(ls "$work/corpus" | wc -l) corpus files, exit $rc" | tee -a "$log"
[ "$rc" -eq 0 ] && [ "${faults:-}" = 0/0/0 ]
