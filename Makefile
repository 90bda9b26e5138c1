# Zelkova2: `make test` builds and tests every lane; `make run` starts the program under Wine.
.PHONY: test deps build-linux build-windows build-fuzz run bench fuzz dist format clean

test: deps
	@status=0; passed=0; failed=0; \
	for lane in linux windows fuzz; do \
	  rm -f build/$$lane/test-counts; \
	  if ! $(MAKE) --no-print-directory build-$$lane; then \
	    echo "$$lane lane: the build failed, its tests were not run"; status=1; failed=$$((failed + 1)); \
	    continue; \
	  fi; \
	  scripts/run-lane $$lane || status=1; \
	  if [ -f build/$$lane/test-counts ]; then \
	    read p f < build/$$lane/test-counts; passed=$$((passed + p)); failed=$$((failed + f)); \
	  else failed=$$((failed + 1)); fi; \
	done; \
	if [ $$status -ne 0 ] && [ $$failed -eq 0 ]; then failed=1; fi; \
	echo "$$passed passed, $$failed failed"; \
	exit $$status

deps:
	@scripts/install-deps

build-linux:
	cmake --preset linux >/dev/null
	cmake --build --preset linux

build-windows:
	cmake --preset windows >/dev/null
	cmake --build --preset windows

build-fuzz:
	cmake --preset fuzz >/dev/null
	cmake --build --preset fuzz

# Each fuzz target for FUZZ_SECONDS (60), from its committed corpus, in a copy under build/.
FUZZ_SECONDS ?= 60
fuzz: deps build-fuzz
	@for t in copydata registry ctl args; do \
	  mkdir -p build/fuzz/corpus/$$t && cp -n fuzz/corpus/$$t/* build/fuzz/corpus/$$t/ ; \
	  build/fuzz/fuzz/$${t}_fuzz -max_total_time=$(FUZZ_SECONDS) -print_final_stats=1 \
	    -artifact_prefix=build/fuzz/$$t- build/fuzz/corpus/$$t 2>&1 | \
	    awk -v t=$$t '/number_of_executed_units/ {print t ": " $$2 " runs"} /ERROR|SUMMARY/'; \
	done

# The release zip and installer (build/windows/dist), with their sizes.
dist: deps build-windows
	@ls -l build/windows/dist/*.zip build/windows/dist/*.exe

# Ratios of one run: the dispatcher in-process on both backends, then the whole system from
# outside (scripts/bench-system). SOAK=1 adds the long run of commands and hotkey chains.
bench: deps build-linux build-windows
	@build/linux/bench/zk_bench
	@cmake/wine-run build/windows/bench/zk_bench.exe
	@scripts/bench-system
	@if [ -n "$(SOAK)" ]; then scripts/bench-system soak; fi

run: deps
	@scripts/run-zelkova

format:
	@find src tests bench companions -name '*.cpp' -o -name '*.h' 2>/dev/null | xargs clang-format -i

clean:
	rm -rf build stage
