# Thin wrapper around CMake. `make test` and `make demo` work on a fresh
# machine: they install what is missing first (scripts/install-deps.sh).
BUILD ?= build
ASAN_BUILD ?= build-asan
JOBS ?= 2
MAKEFLAGS += --no-print-directory
CMAKE_FLAGS ?=
FUZZ_SECONDS ?= 30
# With FUZZ_RUNS, each harness stops after that many runs (or FUZZ_SECONDS).
FUZZ_RUNS ?= 0
# The build folder of `make fuzz`, and the harnesses it builds and runs (by
# name, e.g. FUZZ_HARNESSES=datafile_fuzz; empty for all of fuzz/).
FUZZ_BUILD ?= build-fuzz
FUZZ_HARNESSES ?=
# The build folder of `make windows`.
WINDOWS_BUILD ?= build-windows

.PHONY: all deps configure build test demo desktop bench bench-peer asan fuzz windows windows-test windows-package windows-package-test windows-monkey font font-check doc-check package package-test docs format clean monkey

all: build

deps:
	@scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build $(BUILD) -j$(JOBS)

test: build
	@cd $(BUILD) && ctest --output-on-failure -j$(JOBS)

# One session of a calculation program, then a tour of the tool's commands.
demo: build
	@$(BUILD)/zelkora demo
	@echo; echo "---- The zelkora tool, command by command ----"
	@scripts/demo.sh $(BUILD)/zelkora

# The suite's desktop program (needs a display; QT_QPA_PLATFORM=offscreen
# runs it without one, for scripts).
desktop: build
	@$(BUILD)/zelkora-desk

bench: build
	@for b in $(BUILD)/*_bench; do echo "== $$b"; $$b --benchmark_min_time=0.2; done

# The Qt grid beside wxPropertyGrid, both on one Xvfb display in one run
# (wxWidgets and Xvfb are installed for it; nothing else needs them).
bench-peer:
	@scripts/install-deps.sh peer
	@cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZELKORA_PEER_BENCH=ON $(CMAKE_FLAGS) >/dev/null
	@cmake --build $(BUILD) -j$(JOBS) --target desk_bench grid_peer_bench
	@xvfb-run -a -s "-screen 0 1280x1024x24" scripts/peer-bench.sh $(BUILD)

# The tests once more, built with AddressSanitizer and UndefinedBehaviorSanitizer.
asan: deps
	@cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DZELKORA_SANITIZE=ON \
	  -DZELKORA_BENCH=OFF >/dev/null
	@cmake --build $(ASAN_BUILD) -j$(JOBS)
	@cd $(ASAN_BUILD) && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
	  ctest --output-on-failure -j$(JOBS)

# The desktop program under a random user checked against a model of its
# form (docs/reliability.md, "The desktop program under a random user"),
# built with the sanitizers: MONKEY_SECONDS from seed MONKEY_SEED, MONKEY_HOST
# qt or both.
MONKEY_SECONDS ?= 60
MONKEY_SEED ?= 1
MONKEY_HOST ?= qt
monkey: deps
	@cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DZELKORA_SANITIZE=ON \
	  -DZELKORA_BENCH=OFF >/dev/null
	@cmake --build $(ASAN_BUILD) -j$(JOBS) --target zelkora_desk_app
	@QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='*.warning=false' \
	  ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	  $(ASAN_BUILD)/zelkora-desk --monkey $(MONKEY_SEED) --steps 500 \
	  --seconds $(MONKEY_SECONDS) --host $(MONKEY_HOST)

fuzz:
	@scripts/install-deps.sh fuzz
	@cmake -S . -B $(FUZZ_BUILD) -DCMAKE_CXX_COMPILER=clang++ -DZELKORA_FUZZ=ON \
	  -DZELKORA_TESTS=OFF -DZELKORA_BENCH=OFF >/dev/null
	@cmake --build $(FUZZ_BUILD) -j$(JOBS) $(if $(FUZZ_HARNESSES),--target $(FUZZ_HARNESSES))
	@scripts/fuzz.sh $(FUZZ_BUILD) $(FUZZ_SECONDS) $(FUZZ_RUNS) $(FUZZ_HARNESSES)

# The library, zelkora.exe and the test suite zelkora_tests.exe for 64-bit
# Windows, cross-compiled with MinGW-w64 and linked statically.
windows:
	@scripts/install-deps.sh windows
	@cmake -S . -B $(WINDOWS_BUILD) -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake \
	  -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" -DZELKORA_BENCH=OFF >/dev/null
	@cmake --build $(WINDOWS_BUILD) -j$(JOBS)

# The Windows test suite under Wine, in a Western and a Chinese system code
# page; then the tool's examples, whose output must be the same as on Linux.
windows-test: windows build
	@scripts/windows-test.sh $(WINDOWS_BUILD) $(BUILD)

# The random tester on zelkora-desk.exe under Wine (the null driver):
# MONKEY_SECONDS from seed MONKEY_SEED, MONKEY_HOST win32 or both.
windows-monkey: windows
	@WINEPREFIX=$$(realpath $(WINDOWS_BUILD))/wine WINEDEBUG=-all scripts/wine-prefix.sh \
	  $$(realpath $(WINDOWS_BUILD))/wine null
	@cd $$(mktemp -d) && cp $$OLDPWD/$(WINDOWS_BUILD)/zelkora-desk.exe . && \
	  WINEPREFIX=$$OLDPWD/$(WINDOWS_BUILD)/wine WINEDEBUG=-all /usr/lib/wine/wine64 ./zelkora-desk.exe \
	  --monkey $(MONKEY_SEED) --steps 500 --seconds $(MONKEY_SECONDS) \
	  --host $(if $(filter both,$(MONKEY_HOST)),both,win32)

# zelkora.exe and zelkora-desk.exe for Windows as a zip and an installer
# (NSIS), in $(WINDOWS_BUILD)/package/; windows-package-test installs,
# runs and uninstalls the installer under Wine (scripts/windows-package-test.sh).
windows-package: windows
	@scripts/install-deps.sh windows-package
	@cmake --build $(WINDOWS_BUILD) --target windows_package

windows-package-test: windows-package
	@scripts/windows-package-test.sh $(WINDOWS_BUILD)

# The font of the steel-grade symbols, resources/fonts/zelkora-grade.ttf, made
# again from its description (tools/font/make_grade_font.py, on FontForge's
# Python module; no display needed). `make font-check` fails when the
# checked-in file is not what the script makes.
font:
	@scripts/install-deps.sh font
	@tools/font/make_grade_font.py

font-check:
	@scripts/install-deps.sh font
	@tools/font/check_grade_font.py

# The sample reports written by the tool as DOCX, RTF and HTML and opened by
# readers that are not ours: python-docx, and LibreOffice converting each to
# PDF whose text (pdftotext) must hold every line (about a minute).
doc-check: build
	@scripts/install-deps.sh documents
	@/usr/bin/python3 scripts/check_documents.py $(BUILD)

# The Debian packages zelkora and libzelkora-dev in $(BUILD)/deb, made by
# CPack from the build with its prefix /usr (docs/install.md).
package:
	@scripts/install-deps.sh package
	@cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_INSTALL_PREFIX=/usr $(CMAKE_FLAGS) >/dev/null
	@cmake --build $(BUILD) -j$(JOBS)
	@rm -rf $(BUILD)/deb
	@cd $(BUILD) && cpack -G DEB >/dev/null
	@ls -l $(BUILD)/deb/*.deb

# The packages checked: their files, lintian, and the programs run from a
# scratch root they are unpacked into (scripts/package-test.sh).
package-test: package
	@scripts/package-test.sh $(BUILD)

# The API reference of the public headers (docs/api.md): Doxygen's HTML in
# $(BUILD)/docs/api/html. Fails on any Doxygen warning (an undocumented public
# name, a broken doc comment); the warnings are in $(BUILD)/docs/api/warnings.log.
docs:
	@scripts/install-deps.sh docs
	@cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS) >/dev/null
	@cmake --build $(BUILD) --target docs || { cat $(BUILD)/docs/api/warnings.log; exit 1; }

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	@rm -rf $(BUILD) $(ASAN_BUILD) $(FUZZ_BUILD) $(WINDOWS_BUILD)
