# The two commands of the README. Each installs what is missing, configures and builds first.
PRESET ?= debug
BUILD_DIR := build/$(PRESET)

.PHONY: all deps test-deps configure build run test test-asan test-agents coverage bench package fuzz clean

all: build

deps:
	@./scripts/install-deps

test-deps:
	@./scripts/install-deps --test

configure: deps test-deps
	@cmake --preset $(PRESET) >/dev/null

build: configure
	@cmake --build --preset $(PRESET)

# The tray application where there is a display (X11, or XWayland on a Wayland desktop); the
# terminal view of the sessions otherwise.
run: build
	@if [ -n "$$DISPLAY" ] || [ -n "$$WAYLAND_DISPLAY" ]; then \
		exec $(BUILD_DIR)/bin/tovrin; \
	else \
		echo "No display: showing the sessions in the terminal (Ctrl-C ends)."; \
		exec $(BUILD_DIR)/bin/tovrin status --follow; \
	fi

test: build
	@ctest --preset $(PRESET)

# The same suite under the address and undefined-behaviour sanitizers.
test-asan:
	@$(MAKE) --no-print-directory test PRESET=asan

# The real agents from npm, offline against a mock model API, with our hooks installed.
test-agents: build
	@tests/agents/run-real-agents.sh

# Line and branch coverage of src/ by the whole suite: a summary here, the annotated sources in
# build/coverage/html/index.html. Counters are zeroed first so a rerun measures only itself.
coverage:
	@./scripts/install-deps --coverage
	@$(MAKE) --no-print-directory build PRESET=coverage
	@find build/coverage -name '*.gcda' -delete
	@ctest --preset coverage
	@mkdir -p build/coverage/html
	@gcovr --root . --object-directory build/coverage --filter 'src/' \
		--exclude-unreachable-branches --exclude-throw-branches \
		--html-details build/coverage/html/index.html --print-summary

bench:
	@$(MAKE) --no-print-directory build PRESET=release
	@build/release/bench/tovrin_refresh_bench
	@build/release/bench/tovrin_alert_latency_bench
	@build/release/bench/tovrin_remote_hosts_bench
	@bench/watch-memory.sh build/release
	@bench/writer-payloads.sh
	@bench/desktop.sh build/release

# The Debian package and the self-contained archive, made from the optimised build, in
# build/release/packages.
PACKAGE_PRESET ?= release
package:
	@$(MAKE) --no-print-directory build PRESET=$(PACKAGE_PRESET)
	@cpack --config build/$(PACKAGE_PRESET)/CPackConfig.cmake -B build/$(PACKAGE_PRESET)/packages

# The libFuzzer targets (clang), one after another for FUZZ_SECONDS each on their seeds; the
# corpus they grow and any crashing input stay in build/fuzz.
FUZZ_SECONDS ?= 600
FUZZ_TARGETS ?= session_file foreign_json hook_merger update_choice appcast
fuzz:
	@./scripts/install-deps --fuzz
	@cmake --preset fuzz >/dev/null
	@cmake --build build/fuzz --target fuzz_targets
	@fuzz/run.sh build/fuzz $(FUZZ_SECONDS) $(FUZZ_TARGETS)

clean:
	@rm -rf build
