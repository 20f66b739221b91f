# A thin front for CMake: `make demo` and `make test` are all that a newcomer needs.

PRESET ?= release
BUILD := build/$(PRESET)
DEMO_DB ?= build/demo.db
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

.PHONY: all packages configure demo test sanitize core-only bench install clean format help

all: configure ## build into build/release
	@cmake --build $(BUILD) --parallel $(JOBS)

packages: ## install the Debian packages that are missing
	@scripts/bootstrap

configure: packages
	@cmake --preset $(PRESET) --log-level=WARNING

demo: configure ## build the program, make a database with timber data, and show the working day
	@cmake --build $(BUILD) --parallel $(JOBS) --target tamarok
	@test -f $(DEMO_DB) || $(BUILD)/bin/tamarok init $(DEMO_DB) --logs 20000 --seed 1
	@$(BUILD)/bin/tamarok day --db $(DEMO_DB)

test: all ## build and pass every test
	@ctest --preset $(PRESET) --parallel $(JOBS)

sanitize: ## the tests under the address and undefined-behaviour sanitizers
	@$(MAKE) --no-print-directory test PRESET=sanitize

core-only: ## build and test the core with nothing but the standard library
	@$(MAKE) --no-print-directory test PRESET=core-only

bench: all ## run every benchmark
	@scripts/bench $(BUILD)

install: all ## install into PREFIX (default /usr/local)
	@cmake --install $(BUILD) $(if $(PREFIX),--prefix $(PREFIX))

format: ## check the format of every source file
	@git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror

clean: ## remove all that was built, the demo database too
	@rm -rf build

help: ## this list
	@sed -n 's/^\([a-z-]*\):.*## \(.*\)/  make \1	\2/p' $(MAKEFILE_LIST) | expand -t 20
