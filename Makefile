# SPDX-License-Identifier: GPL-3.0-or-later
# The whole set-up on a fresh Debian machine, as root or as a user who may use
# sudo (only the installing of missing packages asks for it):
#   make run    installs what is missing, builds and starts the game
#   make test   installs what is missing, builds and runs every test headless
BUILD ?= build
JOBS ?= $(shell nproc)
PACCHETTI = cmake g++ make pkg-config qt6-base-dev libgl-dev \
	libfluidsynth-dev timgm6mb-soundfont libsndfile1-dev libsamplerate0-dev libpulse-dev \
	libsmf-dev libbenchmark-dev fonts-liberation fonts-dejavu-core pulseaudio pulseaudio-utils \
	qt6-wayland weston xvfb clang-format

# Root installs directly; anyone else through sudo.
SUDO = $(if $(filter 0,$(shell id -u)),,sudo)

.PHONY: deps build run test media clean format format-check

deps:
	@mancanti=$$(for p in $(PACCHETTI); do dpkg-query -W -f='$${Status}\n' $$p 2>/dev/null | grep -q 'ok installed' || echo $$p; done); \
	if [ -n "$$mancanti" ]; then \
	  echo "Installing: $$mancanti"; \
	  $(SUDO) apt-get update -qq && $(SUDO) env DEBIAN_FRONTEND=noninteractive \
	    apt-get install -y -qq --no-install-recommends $$mancanti; \
	fi

# Warnings stop the build that the tests (and CI) run; WERROR=OFF lets it go on.
WERROR ?= ON
build: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBUILD_TESTING=ON \
	  -DCMAKE_COMPILE_WARNING_AS_ERROR=$(WERROR) >/dev/null
	cmake --build $(BUILD) -j$(JOBS)

# Only the game is built to play it, without Qt Test; `make build` and
# `make test` build the rest.
run: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBUILD_TESTING=OFF >/dev/null
	cmake --build $(BUILD) -j$(JOBS) --target tavolata
	./$(BUILD)/tavolata

test: build format-check
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j$(JOBS)

# The house style is .clang-format's: `make format` writes every C++ file in
# it, `make format-check` (part of `make test`) fails on any file that strays.
SORGENTI_CPP = $(shell find bench computer human packaging platform rules tests tools ui \
	-name '*.cpp' -o -name '*.h' | sort)
format: deps
	clang-format -i $(SORGENTI_CPP)
format-check: deps
	clang-format --dry-run -Werror $(SORGENTI_CPP)
	@echo "format-check: $(words $(SORGENTI_CPP)) files in the house style"

# Regenerates the pictures, the sounds and the songs under media/.
media: build
	QT_QPA_PLATFORM=offscreen ./$(BUILD)/tools/art/genart media ui/risorse
	@if [ -x ./$(BUILD)/tools/sound/gensound ]; then ./$(BUILD)/tools/sound/gensound media; fi

clean:
	rm -rf $(BUILD)

# The Debian package, $(BUILD)/tavolata_<version>-<release>_<arch>.deb;
# dpkg-dev works out its library dependencies.
.PHONY: deb check-packaging
deb:
	@$(MAKE) --no-print-directory deps PACCHETTI="$(PACCHETTI) dpkg-dev"
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	cmake --build $(BUILD) -j$(JOBS) --target tavolata icone_applicazione documenti_installati
	rm -f $(BUILD)/tavolata_*.deb
	cd $(BUILD) && cpack -G DEB

# Builds the package and checks it as a distribution would: the version that
# the changelog, the AppStream data and the manual page name against the
# build's, lintian, then the desktop entry and the AppStream data as the
# package installs them. Any error or warning fails; lintian's informational
# tags are shown.
check-packaging:
	@$(MAKE) --no-print-directory deps PACCHETTI="$(PACCHETTI) dpkg-dev lintian desktop-file-utils appstream"
	@$(MAKE) --no-print-directory deb
	@echo "== versions"; packaging/controlla_versione.sh $(BUILD)
	@set -e; deb=$$(ls $(BUILD)/tavolata_*.deb); \
	echo "== lintian $$deb"; \
	lintian --fail-on error,warning --display-info "$$deb"; \
	echo "lintian: no error, no warning"; \
	contenuto=$$(mktemp -d); trap 'rm -rf "$$contenuto"' EXIT; \
	dpkg-deb -x "$$deb" "$$contenuto"; \
	echo "== desktop-file-validate"; \
	for f in "$$contenuto"/usr/share/applications/*.desktop; do \
	  rapporto=$$(desktop-file-validate "$$f" 2>&1) || { echo "$$rapporto"; exit 1; }; \
	  [ -z "$$rapporto" ] || echo "$$rapporto"; \
	  if echo "$$rapporto" | grep -qE ': (error|warning): '; then exit 1; fi; \
	  echo "$${f#$$contenuto}: valid"; \
	done; \
	echo "== appstreamcli validate"; \
	appstreamcli validate --no-net --explain "$$contenuto"/usr/share/metainfo/*.metainfo.xml; \
	appstreamcli validate-tree --no-net "$$contenuto"

# Longer checks, each in a build folder of its own where it says so:
#   make check-sanitize  every test and a bounded simulator run built with
#                        AddressSanitizer and UndefinedBehaviorSanitizer
#   make bench           the benchmarks behind the README's "Measured figures"
#                        (medians of 5)
#   make soak            100,000 simulated hands (SOAK_HANDS, SOAK_SEED, SOAK_TABLE)
SANITIZE_BUILD ?= build-sanitize
SANITIZE_HANDS ?= 200
SANITIZE_SIM_HANDS ?= 1000
BENCH_FLAGS ?= --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
SOAK_HANDS ?= 100000
SOAK_SEED ?= 1
SOAK_TABLE ?= 256x192

.PHONY: check-sanitize bench soak
check-sanitize: deps
	cmake -S . -B $(SANITIZE_BUILD) -DTAVOLATA_SANITIZE=ON -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	cmake --build $(SANITIZE_BUILD) -j$(JOBS)
	cd $(SANITIZE_BUILD) && QT_QPA_PLATFORM=offscreen TAVOLATA_MANI_SIMULATE=$(SANITIZE_HANDS) \
	  ASAN_OPTIONS=detect_leaks=0 ctest --output-on-failure -j$(JOBS)
	cd $(SANITIZE_BUILD) && QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=0 \
	  ./tools/sim/tavolata-sim --hands $(SANITIZE_SIM_HANDS) --seed 3 --quiet

bench: build
	@for b in $(BUILD)/bench_*; do \
	  [ -f "$$b" ] && [ -x "$$b" ] || continue; \
	  echo "== $$b"; QT_QPA_PLATFORM=offscreen "$$b" $(BENCH_FLAGS) || exit 1; \
	done

soak: build
	QT_QPA_PLATFORM=offscreen ./$(BUILD)/tools/sim/tavolata-sim --hands $(SOAK_HANDS) --seed $(SOAK_SEED) \
	  --table $(SOAK_TABLE)
