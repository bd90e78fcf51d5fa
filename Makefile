# Thin names over the CMake presets; everything is built in build/<preset>.

PACKAGES := packaging/packages.txt
DEV_PACKAGES := $(PACKAGES) packaging/packages-dev.txt
INSTALL := packaging/install-packages
FUZZ_SECONDS ?= 60

.PHONY: demo test packages dev-packages release debug asan tsan clang coverage bench fuzz lint \
  format docs clean

# Starts the agent on loopback and drives it with the client.
demo: release
	@agent/demo.sh build/release/bin

# Builds and runs every test.
test: release
	@ctest --test-dir build/release --output-on-failure -j2

packages:
	@$(INSTALL) $(PACKAGES)

dev-packages:
	@$(INSTALL) $(DEV_PACKAGES)

release debug: packages
	@cmake --preset $@
	@cmake --build build/$@

asan tsan clang coverage: dev-packages
	@cmake --preset $@
	@cmake --build build/$@
	@ctest --test-dir build/$@ --output-on-failure -j2

bench: dev-packages
	@cmake --preset bench
	@cmake --build build/bench
	@bench/run.sh build/bench/bin

fuzz: dev-packages
	@cmake --preset fuzz
	@cmake --build build/fuzz --target fuzz_targets
	@fuzz/run.sh $(FUZZ_SECONDS) build/fuzz

lint: dev-packages
	@cmake --preset clang
	@cmake --build build/clang
	@cmake/lint.sh build/clang

format: dev-packages
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

docs: dev-packages
	@mkdir -p build
	@doxygen docs/Doxyfile

clean:
	@rm -rf build
