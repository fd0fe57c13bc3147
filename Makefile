# make run   builds and starts the program
# make test  installs what is missing, builds and runs every test
# make test-asan  the same with AddressSanitizer and UBSan (build-asan/)
# make bench builds the benchmarks and runs them
# make package  builds and makes the Debian package (build/kolvane_<version>_<arch>.deb)

BUILD      ?= build
BUILD_ASAN ?= build-asan
JOBS       ?= $(shell nproc)

.PHONY: deps configure build run test test-asan bench package clean

deps:
	@bash .ci/deps.sh

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo

configure: deps $(BUILD)/build.ninja

build: configure
	cmake --build $(BUILD) -j $(JOBS)

run: build
	@bash tools/run.sh $(BUILD)

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS) --timeout 300

$(BUILD_ASAN)/build.ninja:
	cmake -S . -B $(BUILD_ASAN) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DKOLVANE_SANITIZE=ON -DKOLVANE_BENCH=OFF

test-asan: deps $(BUILD_ASAN)/build.ninja
	cmake --build $(BUILD_ASAN) -j $(JOBS)
	cd $(BUILD_ASAN) && ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 \
	  ctest --output-on-failure -j $(JOBS) --timeout 600

bench: build
	@for b in $(BUILD)/bin/bench_*; do echo "== $$b"; $$b --benchmark_repetitions=5 --benchmark_report_aggregates_only=true; done

package: build
	cd $(BUILD) && cpack -G DEB

clean:
	rm -rf $(BUILD) $(BUILD_ASAN)
