# Thin names over the CMake presets; everything is built in build/<preset>.

PACKAGES := packaging/packages.txt
DEV_PACKAGES := $(PACKAGES) packaging/packages-dev.txt
INSTALL := packaging/install-packages
FUZZ_SECONDS ?= 60

# How long and from which numbers `make reliability` runs.
SEED ?= 814
MESSAGES ?= 1000000
ROUNDS ?= 100
FAULT_SECONDS ?= 5
SOAK_SECONDS ?= 3600
SOAK_RATE ?= 2000

.DEFAULT_GOAL := help
.PHONY: help demo test release debug asan tsan clang coverage bench reliability fuzz lint format docs \
  packages dev-packages clean

help: ## Print these targets
	@awk -F ':.*## ' '/^[a-z-]+:.*## /{printf "  make %-13s %s\n", $$1, $$2}' $(MAKEFILE_LIST)

demo: packages ## Start the agent on loopback and drive it with the client
	@cmake --preset release >/dev/null
	@cmake --build build/release --target zk-agent zk-nms
	@agent/demo.sh build/release/bin

test: release ## Build everything and run every test
	@ctest --test-dir build/release --output-on-failure -j2

release: packages ## Build everything, optimised
debug: packages ## Build everything, for a debugger
release debug:
	@cmake --preset $@
	@cmake --build build/$@

asan: dev-packages ## Run every test under the address and undefined-behaviour sanitizers
tsan: dev-packages ## Run every test under the thread sanitizer
clang: dev-packages ## Build with clang and its thread-safety analysis, and run every test
coverage: dev-packages ## Run every test and count the lines that they reach
tsan: export TSAN_OPTIONS := suppressions=$(CURDIR)/tests/tsan-suppressions.txt
asan tsan clang coverage:
	@cmake --preset $@
	@cmake --build build/$@
	@ctest --test-dir build/$@ --output-on-failure -j2

bench: dev-packages ## Measure, beside what bounds each figure
	@cmake --preset bench
	@cmake --build build/bench
	@bench/run.sh build/bench/bin

RELIABILITY := build/release/bin/reliability
reliability: packages ## Attack, kill, starve and soak the agent: docs/reliability.md
	@cmake --preset release >/dev/null
	@cmake --build build/release --target reliability_mutations reliability_kill \
	  reliability_faults reliability_soak
	@$(RELIABILITY)_mutations --seed $(SEED) --messages $(MESSAGES)
	@$(RELIABILITY)_kill --seed $(SEED) --rounds $(ROUNDS)
	@$(RELIABILITY)_faults --seed $(SEED) --seconds $(FAULT_SECONDS)
	@$(RELIABILITY)_soak --seed $(SEED) --seconds $(SOAK_SECONDS) --rate $(SOAK_RATE)

fuzz: dev-packages ## Fuzz every target for FUZZ_SECONDS (60)
	@cmake --preset fuzz
	@cmake --build build/fuzz --target fuzz_targets
	@fuzz/run.sh $(FUZZ_SECONDS) build/fuzz

lint: dev-packages ## Check layout, naming and code
	@cmake --preset clang
	@cmake --build build/clang
	@cmake/lint.sh build/clang

format: dev-packages ## Lay the code out
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

docs: dev-packages ## Build the library's reference in build/docs
	@mkdir -p build
	@doxygen docs/Doxyfile

packages: ## Install the missing packages for building and testing
	@$(INSTALL) $(PACKAGES)

dev-packages: ## Install the missing packages for everything else
	@$(INSTALL) $(DEV_PACKAGES)

clean: ## Remove everything built
	@rm -rf build
