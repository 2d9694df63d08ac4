# The two set-up commands: `make demo` and `make test`. Each installs what is missing, builds, and
# runs the main job or all tests.

BUILD ?= build
JOBS ?= $(shell nproc)
# ccache, when the machine has it, makes rebuilds in fresh checkouts quick.
LAUNCHER := $(if $(shell command -v ccache),-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)

.PHONY: all deps configure build test demo bench clean

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

clean:
	rm -rf $(BUILD) $(BUILD)-bench
