# Short names for the scripts, for those who have make; the scripts need nothing but a shell.

PRESET ?= release
BUILD := build/$(PRESET)

.PHONY: all packages demo workbench test check chaos sanitize fuzz core-only windows test-windows package test-packages bench install format tidy clean help

all: ## build into build/release (another preset: PRESET=debug)
	@sh scripts/build $(PRESET)

packages: ## install the Debian packages that are missing
	@sh scripts/bootstrap packages.txt packages-windows.txt packages-check.txt

demo: ## build the program, make a database with timber data, and show the working day
	@sh scripts/demo

workbench: ## build the desktop program and open it on a database with timber data
	@sh scripts/workbench

test: ## build and pass every test
	@sh scripts/test $(PRESET)

check: ## every gate: format, headers, clang-tidy, the core alone with g++ and clang, the sanitizers, fuzzing, scripts on Windows' DLLs, packages
	@sh scripts/check

chaos: ## kill processes and fill disks for a minute a run (CHAOS_SECONDS), and check that nothing is lost
	@sh scripts/chaos

sanitize: ## the tests under the address and undefined-behaviour sanitizers
	@sh scripts/test sanitize

fuzz: ## run every fuzz target for FUZZ_SECONDS (20) each, with the seed FUZZ_SEED (1)
	@sh scripts/fuzz

core-only: ## build and test the core with nothing but the standard library
	@sh scripts/test core-only

windows: ## build the DLLs for Windows, 32 and 64 bits, into build/windows
	@sh scripts/windows

test-windows: ## run the DLLs for Windows under Wine's script host, in chroots of their own
	@sh scripts/test-windows

package: ## build the Debian packages into build/package/packages
	@sh scripts/package

test-packages: ## build the Debian packages, and try them in a bare system
	@sh scripts/test-packages

bench: all ## run every benchmark
	@sh scripts/bench $(BUILD)

install: all ## install into PREFIX (default /usr/local)
	@cmake --install $(BUILD) $(if $(PREFIX),--prefix $(PREFIX))

format: ## check the format of every source file
	@sh scripts/check format

tidy: ## run clang-tidy over every source outside the tests
	@sh scripts/check tidy

clean: ## remove all that was built, the demo database and the chroots too
	@for chroot in build/*/chroot-*/; do [ ! -d "$$chroot" ] || sh scripts/chroot remove "$${chroot%/}"; done
	@rm -rf build

help: ## this list
	@sed -n 's/^\([a-z-]*\):.*## \(.*\)/  make \1	\2/p' $(MAKEFILE_LIST) | expand -t 24
