# What there is to do with Tessary, each with one command. What they need is installed first.
.PHONY: help build run test check bench endurance fuzz mutate screenshots package clean

help:
	@echo "make build   build Tessary: build/release/tessary"
	@echo "make run     build it and start it; without a desktop, show it on a virtual one"
	@echo "             (make run ARGS=--stay leaves the virtual one running until Ctrl-C,"
	@echo "             make run ARGS=--gnome shows it in a virtual GNOME session)"
	@echo "make test    build and run all tests, with the address and undefined-behaviour sanitizers"
	@echo "make check   formatting, static analysis, headers, includes, package"
	@echo "make bench   build and run the benchmarks"
	@echo "make endurance   use the program for some twenty minutes (ARGS: see Tools/endurance)"
	@echo "make fuzz    try inputs of all kinds for some ten minutes (ARGS: see Tools/fuzz)"
	@echo "make mutate  tell which of many faults the tests notice, in some twenty minutes"
	@echo "make screenshots   make the pictures of menu and preferences in docs/ again"
	@echo "make package make the Debian package in build/release (docs/packaging.md: PACKAGE_OPTIONS)"
	@echo "make clean   delete all that was built"

build:
	Tools/install-dependencies
	cmake --preset release
	cmake --build --preset release

run: build
	Tools/run $(ARGS)

test:
	Tools/install-dependencies
	cmake --preset debug
	cmake --build --preset debug
	ctest --preset debug -j "$$(nproc)"

check:
	Tools/install-dependencies --check --package
	Tools/check

bench:
	Tools/install-dependencies --bench
	Tools/bench $(ARGS)

endurance:
	Tools/install-dependencies
	Tools/endurance $(ARGS)

fuzz:
	Tools/install-dependencies --fuzz
	Tools/fuzz $(ARGS)

mutate:
	Tools/install-dependencies --mutate
	Tools/mutate $(ARGS)

screenshots: build
	Tools/install-dependencies --screenshots
	cmake --preset debug
	cmake --build --preset debug --target screenshots
	build/debug/screenshots build/release/tessary docs

# The options of an earlier package are forgotten, what was compiled for it is not.
package:
	Tools/install-dependencies --package
	rm -f build/release/CMakeCache.txt
	cmake --preset release $(PACKAGE_OPTIONS)
	cmake --build --preset release --target package

clean:
	rm -rf build
