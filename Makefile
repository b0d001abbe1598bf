# Tavoline by hand: `make run` and `make test` are all that a newcomer needs. See README.md.

PRESET ?= release
PREFIX ?= /usr/local
BUILD := build/$(PRESET)
CONFIGURE := cmake --preset $(PRESET) --log-level=WARNING
SPEAKERS := test_shell value_test sql_test test_dataset test_store test_store_tool
SOURCES = $(shell git ls-files '*.h' '*.cpp')

.DEFAULT_GOAL := build
.PHONY: help deps build run test verbs accept measure bench lint check format torture install uninstall package clean

help:  ## This list
	@awk -F ':.*##' '/^[a-z]+:.*##/ { printf "make %-10s %s\n", $$1, $$2 }' Makefile

deps:  ## Install every Debian package that is missing
	@scripts/install-packages build run test lint bench package

build:  ## Compile the programs into build/release/bin
	@scripts/install-packages build
	@$(MAKE) -s $(BUILD)/build.ninja
	@cmake --build --preset $(PRESET) --target tavoline tavoline-store book

run:  ## Open the program on a demo store; SERVER=1: two workstations on a private PostgreSQL server
	@scripts/install-packages build run $(if $(SERVER),server)
	@$(MAKE) -s build
	@scripts/run $(BUILD)/bin $(if $(SERVER),server)

test:  ## Build and run all tests; PRESET=sanitize: under the sanitizers
	@scripts/install-packages build run test
	@$(MAKE) -s $(BUILD)/build.ninja
	@cmake --build --preset $(PRESET)
	@ctest --preset $(PRESET) -j$(shell nproc) --no-tests=error

verbs:  ## The language of the transcripts: every verb, its arguments and what it does
	@$(MAKE) -s $(BUILD)/build.ninja
	@cmake --build --preset $(PRESET) --target $(SPEAKERS) >/dev/null
	@for each in $(SPEAKERS); do $(BUILD)/bin/$$each --verbs; done

accept:  ## Write what transcripts say now into their files: CASE=part of a name; then look at `git diff tests`
	@cmake --build --preset $(PRESET)
	@TAVOLINE_ACCEPT=1 ctest --preset $(PRESET) -R '$(or $(CASE),$(error tell CASE=name))'
	@git diff --stat tests

measure:  ## How much of the code is tests, and how much may be
	@scripts/measure-tests

bench:  ## Measure against the raw engine, Qt's own table model, and small store against large
	@scripts/install-packages build bench server
	@$(CONFIGURE) -DTAVOLINE_BENCH=ON
	@cmake --build --preset $(PRESET) --target tavoline-bench tavoline-bench-purchases tavoline-store
	@bench/run $(BUILD)/bin build/bench-data
	@bench/purchases $(BUILD)/bin build/bench-data
	@bench/server $(BUILD)/bin build/bench-data

check:  ## The quick part of lint: formatting, walls between folders, forms, sizes
	@scripts/install-packages build lint
	@scripts/check-house

lint: check  ## All of lint: check, and clang-tidy over every source
	@scripts/install-packages bench
	@scripts/tidy

format:  ## Format every source in place
	@scripts/install-packages lint
	@clang-format -i $(SOURCES)

torture:  ## Kill workstations a thousand times (RUNS=...), servers 200, primaries 50, fail disks; look for lost writes
	@scripts/install-packages build test server
	@$(MAKE) -s $(BUILD)/build.ninja
	@cmake --build --preset $(PRESET) --target torture_test
	@TAVOLINE_TORTURE_RUNS=$(or $(RUNS),1000) $(BUILD)/bin/torture_test

install: build  ## Install under PREFIX (/usr/local), below DESTDIR if set
	@DESTDIR=$(DESTDIR) cmake --install $(BUILD) --prefix $(PREFIX) --component till

uninstall:  ## Remove what `make install` put there
	@sed "s|^|$(DESTDIR)|" $(BUILD)/install_manifest_till.txt | xargs -r -d "\n" rm -fv
	@find $(DESTDIR)$(PREFIX)/share/tavoline $(DESTDIR)$(PREFIX)/share/doc/tavoline* -depth -type d -empty -delete

package:  ## Make the Debian packages, of the program and of the tool alone
	@scripts/install-packages build run package
	@$(MAKE) -s build
	@cmake --build --preset $(PRESET) --target tavoline-store-alone
	@cd $(BUILD) && cpack -G DEB >cpack.log || { cat cpack.log; exit 1; }; ls $(PWD)/$(BUILD)/*.deb

clean:  ## Remove everything built; the demo store stays
	@rm -rf build

$(BUILD)/build.ninja: CMakeLists.txt CMakePresets.json
	@$(CONFIGURE)
