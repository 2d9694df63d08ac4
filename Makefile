# The two set-up commands: `make demo` and `make test`. Each installs what is missing, builds, and
# runs the main job or all tests.

BUILD ?= build
JOBS ?= $(shell nproc)
PREFIX ?= $(HOME)/.local
# ccache, when the machine has it, makes rebuilds in fresh checkouts quick.
LAUNCHER := $(if $(shell command -v ccache),-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)

.PHONY: all deps configure build test demo bench sanitize fuzz release install package clean

all: build

deps:
	@scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(LAUNCHER) >/dev/null

build: configure
	@cmake --build $(BUILD) -j $(JOBS) -- --no-print-directory

test: build
	@cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

demo: build
	@scripts/demo.sh $(BUILD)/app/tsaw

bench: deps
	@cmake -S . -B $(BUILD)-bench -DCMAKE_BUILD_TYPE=Release -DTSAW_BUILD_TESTS=OFF -DTSAW_BUILD_BENCHMARKS=ON >/dev/null
	@cmake --build $(BUILD)-bench -j $(JOBS) -- --no-print-directory
	@scripts/bench.sh $(BUILD)-bench
	@scripts/bench_create.py $(BUILD)-bench/app/tsaw --rows
	@scripts/bench_update.sh $(BUILD)-bench/app/tsaw

# The whole test suite built with AddressSanitizer and UndefinedBehaviorSanitizer. The one leak
# suppressed lies in the system's font library, which Qt reaches (scripts/lsan.supp).
SANITIZE_ENV := ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	LSAN_OPTIONS=suppressions=$(CURDIR)/scripts/lsan.supp:print_suppressions=0
sanitize: deps
	@cmake -S . -B $(BUILD)-asan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTSAW_SANITIZE=ON $(LAUNCHER) >/dev/null
	@cmake --build $(BUILD)-asan -j $(JOBS) -- --no-print-directory
	@cd $(BUILD)-asan && $(SANITIZE_ENV) ctest --output-on-failure -j $(JOBS)

# Each fuzz harness for FUZZ_SECONDS seconds, FUZZ_JOBS side by side (clang, libFuzzer); fails on
# any finding.
FUZZ_SECONDS ?= 60
FUZZ_JOBS ?= 1
fuzz:
	@scripts/install-deps.sh fuzz
	@CXX=clang++-14 cmake -S . -B $(BUILD)-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTSAW_FUZZ=ON \
		-DTSAW_BUILD_TESTS=OFF $(LAUNCHER) >/dev/null
	@cmake --build $(BUILD)-fuzz -j $(JOBS) --target fuzz_all -- --no-print-directory
	@FUZZ_SECONDS=$(FUZZ_SECONDS) FUZZ_JOBS=$(FUZZ_JOBS) scripts/fuzz.sh $(BUILD)-fuzz

# A Release build of its own, stripped when installed; `make install` puts it under $(PREFIX).
release: deps
	@cmake -S . -B $(BUILD)-release -DCMAKE_BUILD_TYPE=Release -DTSAW_BUILD_TESTS=OFF $(LAUNCHER) >/dev/null
	@cmake --build $(BUILD)-release -j $(JOBS) -- --no-print-directory

install: release
	@cmake --install $(BUILD)-release --prefix $(PREFIX) --strip

package: release
	@cd $(BUILD)-release && cpack

clean:
	rm -rf $(BUILD) $(BUILD)-bench $(BUILD)-asan $(BUILD)-fuzz $(BUILD)-release
