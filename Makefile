# A thin front for the presets and scripts: the everyday commands.

PREFIX ?= /usr/local
JOBS ?= $(shell nproc)
export JOBS

.DEFAULT_GOAL := help
.PHONY: help setup setup-bench setup-dev demo test test-windows test-all bench bench-build bench-guard lint format install clean

help: ## Show this list
	@sed -n 's/^\([a-z-]*\):.*## \(.*\)/  make \1\t\2/p' Makefile | expand -t 20

setup: ## Install the packages that building and testing need
	@scripts/install-packages.sh packages.txt

setup-bench:
	@scripts/install-packages.sh packages.txt packages-bench.txt

setup-dev:
	@scripts/install-packages.sh packages.txt packages-dev.txt

demo: setup ## Build and run the guided tour
	@echo "Building the tool, which takes a few minutes the first time; the log is build/logs/release-build.log."
	@scripts/build.sh release morvane conversion_demo
	@build/release/bin/morvane demo
	@printf '\n----\nA client and a service. Every call is written as a message, run by the service, and answered by one.\n\n'
	@build/release/bin/conversion_demo examples/conversion_request.json

test: setup ## Build the native release and run its tests
	@scripts/test.sh release

test-windows: setup-dev ## Build for 32-bit Windows and run the tests with Wine, which takes root rights
	@scripts/test-windows.sh

test-all: setup-dev ## Test every preset, the Windows build and the installed package
	@scripts/test-all.sh

bench: setup-bench ## Measure ours beside what one would use instead
	@scripts/build.sh release benchmarks
	@scripts/bench.sh

bench-guard: setup-bench ## Check that nothing takes more instructions than it did
	@scripts/build.sh release guard_bench
	@scripts/bench-guard.sh

bench-build: setup-bench ## Measure how long building takes
	@scripts/measure-build.sh

lint: setup-dev ## Check layout and content of the source
	@scripts/lint.sh

format: setup-dev ## Lay out the source
	@scripts/format.sh

install: setup ## Install the release under PREFIX (default /usr/local)
	@scripts/build.sh release
	@cmake --install build/release --prefix "$(PREFIX)"

clean: ## Remove everything that was built
	@scripts/wine-root.sh remove
	@rm -rf build
