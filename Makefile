# Thin doors to the CMake presets and to tools/. `make` alone says what there is.
.DEFAULT_GOAL := help
SHELL := /bin/bash
JOBS ?= $(shell nproc)
WINDOWS_BIN := build/windows/bin
# Seconds that each fuzzer runs.
FUZZ_SECONDS ?= 60
# Seconds that processes fight over one settings file.
STRESS_SECONDS ?= 5

.PHONY: help packages run test test-native test-asan test-print-system test-peers dialogs pages lint dist bench fuzz format clean

help:
	@echo 'make run      install the driver in a print system of its own and show what it answers,'
	@echo '              its printing preferences and printed pages: on the display, or as pictures in build/run'
	@echo '              (REPORT=--json gives the same for a program)'
	@echo 'make test     prove everything: lint, native tests, sanitizer run, print-system tests,'
	@echo '              and one settings file between several processes (STRESS_SECONDS=$(STRESS_SECONDS))'
	@echo 'make dialogs  check that all texts of the dialogs fit, and leave pictures in build/run/dialogs'
	@echo 'make pages    print a document with each sample job, in the print system and in memory, and'
	@echo '              leave the pages as pictures in build/run/pages'
	@echo 'make dist     leave what is shipped in build/dist'
	@echo 'make bench    measure, natively and in the print system, as ratios in one run'
	@echo 'make fuzz     run each fuzzer for FUZZ_SECONDS ($(FUZZ_SECONDS)) seconds'
	@echo 'make format   lay out the sources by .clang-format'
	@echo 'make lint     check layout and clang-tidy; make test does it too'
	@echo 'make clean    remove build/'

packages:
	@tools/install-packages

# $(call build,PRESET[,BUILD PRESET]); what it says goes to standard error, so that a report can be
# piped on.
define build
	@cmake --preset $(1) --log-level=WARNING > build/$(1).configure.log 2>&1 || { cat build/$(1).configure.log >&2; exit 1; }
	@cmake --build --preset $(or $(2),$(1)) --parallel $(JOBS) >&2
endef

build:
	@mkdir -p build

run: packages | build
	$(call build,windows)
	@tools/print-system run $(WINDOWS_BIN)/driver_report.exe $(REPORT)
	@$(if $(REPORT),true,tools/show-preferences)
	@$(if $(REPORT),true,tools/print-pages)

test: packages lint test-native test-asan test-print-system test-peers

test-native: packages | build
	$(call build,native)
	@ctest --preset native --parallel $(JOBS)

test-asan: packages | build
	$(call build,native,asan)
	@ctest --preset asan --parallel $(JOBS)

test-print-system: packages | build
	$(call build,windows)
	@tools/test-print-system
	@tools/show-dialogs

dialogs: packages | build
	$(call build,windows)
	@tools/show-dialogs

pages: packages | build
	$(call build,native)
	$(call build,windows)
	@tools/print-pages
	@tools/draw-pages

test-peers: packages | build
	$(call build,native)
	$(call build,windows)
	@tools/test-peers $(STRESS_SECONDS)

lint: packages | build
	$(call build,native)
	$(call build,windows)
	@tools/lint

dist: packages | build
	$(call build,windows)
	@rm -rf build/dist
	@mkdir -p build/dist/neighbours
	@cp $(WINDOWS_BIN)/ostrelPCL6ui*.dll $(WINDOWS_BIN)/ostrelConfig.ini build/dist/
	@cp $(WINDOWS_BIN)/neighbours/* build/dist/neighbours/
	@ls -l build/dist build/dist/neighbours

bench: packages | build
	$(call build,native)
	$(call build,windows)
	@tools/bench-ratios.py build/native/bin/ostrel_bench --benchmark_min_time=0.05
	@tools/print-system run $(WINDOWS_BIN)/print_system_bench.exe

fuzz: packages | build
	$(call build,fuzz)
	@tools/fuzz $(FUZZ_SECONDS)

format: packages
	@tools/lint --fix-format

clean:
	@if [ -x tools/print-system ]; then tools/print-system down 2>/dev/null || true; fi
	@rm -rf build
