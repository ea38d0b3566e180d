# Set-up and everyday commands. `make test` and `make demo` work on a fresh Debian machine.
BUILD ?= build
SANITIZE_BUILD ?= build-sanitize
TSAN_BUILD ?= build-tsan
FUZZ_BUILD ?= build-fuzz
FUZZ_SECONDS ?= 300
FUZZ_TARGETS := fuzz_translate fuzz_conversions fuzz_restore fuzz_list_answer
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?= -DCMAKE_BUILD_TYPE=RelWithDebInfo
LAUNCHER := $(shell command -v ccache >/dev/null 2>&1 && echo -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
C_LAUNCHER := $(shell command -v ccache >/dev/null 2>&1 && echo -DCMAKE_C_COMPILER_LAUNCHER=ccache)

.PHONY: deps build test test-sanitize test-thread demo bench fuzz fuzz-tree fuzz-long clean

deps:
	./scripts/install-deps.sh

build: deps
	cmake -S . -B $(BUILD) $(CMAKE_FLAGS) $(LAUNCHER)
	cmake --build $(BUILD) -j $(JOBS)

# Runs every test in the normal build, again there as on a Spanish desktop (numbers must not
# follow the locale), then again under address and undefined-behaviour sanitizers, then the
# tests of the component's own threads under the thread sanitizer.
SPANISH := es_ES.UTF-8
test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)
	cd $(BUILD) && LANG=$(SPANISH) LC_ALL=$(SPANISH) CP_TEST_LOCALE=$(SPANISH) \
	  ctest --output-on-failure -j $(JOBS)
	$(MAKE) test-sanitize
	$(MAKE) test-thread

test-sanitize: deps
	cmake -S . -B $(SANITIZE_BUILD) -DCMAKE_BUILD_TYPE=Debug -DCP_SANITIZE=ON -DCP_BENCHMARKS=OFF $(LAUNCHER)
	cmake --build $(SANITIZE_BUILD) -j $(JOBS)
	cd $(SANITIZE_BUILD) && ctest --output-on-failure -j $(JOBS)

# The running count's worker and the mail client's reaper are the component's threads; their
# tests run in a tree of their own (the thread sanitizer excludes the others, and Qt is not
# built with it, so the tree has no Qt).
test-thread: deps
	cmake -S . -B $(TSAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DCP_SANITIZE_THREAD=ON -DCP_QT=OFF -DCP_BENCHMARKS=OFF $(LAUNCHER)
	cmake --build $(TSAN_BUILD) -j $(JOBS) --target test_selection test_common
	cd $(TSAN_BUILD) && ctest --output-on-failure -R '^test_(selection|common)$$'

# The demo host window when $$DISPLAY or $$WAYLAND_DISPLAY is set, else the command-line walkthrough.
demo: build
	./scripts/demo.sh $(BUILD)

# The benchmarks (ratios against references measured in the same run), the dialog's first
# paint, and the growth of match and of a selection at 10k, 100k and 1M properties, with and
# without indexes: writes docs/performance.md and docs/performance-growth.png. Takes minutes
# (the 1M demo database is made once, in $(BUILD)/bench-data).
bench: deps
	./scripts/install-deps.sh bench
	cmake -S . -B $(BUILD) $(CMAKE_FLAGS) -DCP_BENCHMARKS=ON $(LAUNCHER)
	cmake --build $(BUILD) -j $(JOBS)
	/usr/bin/python3 scripts/bench-report.py $(BUILD) docs

# A .deb of the tool, the demo host, the headers, the static libraries and the CMake and
# pkg-config files: $(BUILD)/criteriopredios_<version>_<arch>.deb.
.PHONY: package
package: build
	cd $(BUILD) && cpack -G DEB

# The libFuzzer targets under fuzz/, built with clang in a tree of their own (every library
# with libFuzzer's coverage and the address and undefined-behaviour sanitizers), each run for
# FUZZ_SECONDS on a scratch copy of its seed corpus. Fails when any target finds a fault.
# Then HOSTILE_CASES random cases of hostile user text (make test runs 2,000 of them).
HOSTILE_CASES ?= 100000
fuzz: build fuzz-tree
	./scripts/run-fuzz.sh $(FUZZ_BUILD) $(FUZZ_SECONDS) $(FUZZ_TARGETS)
	CP_HOSTILE_CASES=$(HOSTILE_CASES) $(BUILD)/tests/test_hostile --gtest_filter='*Random*'

fuzz-tree:
	./scripts/install-deps.sh fuzz
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_BUILD) -DCP_FUZZ=ON $(LAUNCHER) $(C_LAUNCHER)
	cmake --build $(FUZZ_BUILD) -j $(JOBS)

# One long run of one target, as docs/reliability.md's table reports them, e.g.
# `make fuzz-long FUZZ_TARGET=fuzz_list_answer FUZZ_MAX_LEN=64`: two workers, FUZZ_RUNS
# executions or FUZZ_LONG_SECONDS, whichever comes first (see scripts/fuzz-long.sh).
FUZZ_RUNS ?= 10000000
FUZZ_LONG_SECONDS ?= 30000
FUZZ_MAX_LEN ?=
fuzz-long: fuzz-tree
	./scripts/fuzz-long.sh $(FUZZ_BUILD) '$(FUZZ_TARGET)' $(FUZZ_RUNS) $(FUZZ_LONG_SECONDS) $(FUZZ_MAX_LEN)

clean:
	rm -rf $(BUILD) $(SANITIZE_BUILD) $(TSAN_BUILD) $(FUZZ_BUILD)
