# Zelkova2: `make test` builds and tests both lanes; `make run` starts the program under Wine.
.PHONY: test deps build-linux build-windows run bench format clean

test: deps
	@status=0; passed=0; failed=0; \
	for lane in linux windows; do \
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

bench: deps build-linux build-windows
	@build/linux/bench/zk_bench
	@cmake/wine-run build/windows/bench/zk_bench.exe

run: deps
	@scripts/run-zelkova

format:
	@find src tests bench companions -name '*.cpp' -o -name '*.h' 2>/dev/null | xargs clang-format -i

clean:
	rm -rf build stage
