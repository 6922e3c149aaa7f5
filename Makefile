# The whole set-up on a fresh Debian machine, as root:
#   make run    installs what is missing, builds and starts the game
#   make test   installs what is missing, builds and runs every test headless
BUILD ?= build
JOBS ?= $(shell nproc)
PACCHETTI = cmake g++ make pkg-config qt6-base-dev qt6-multimedia-dev libgl-dev \
	libfluidsynth-dev timgm6mb-soundfont libsndfile1-dev libsmf-dev libbenchmark-dev \
	fonts-liberation fonts-dejavu-core pulseaudio pulseaudio-utils

.PHONY: deps build run test media clean

deps:
	@mancanti=$$(for p in $(PACCHETTI); do dpkg-query -W -f='$${Status}\n' $$p 2>/dev/null | grep -q 'ok installed' || echo $$p; done); \
	if [ -n "$$mancanti" ]; then \
	  echo "Installing: $$mancanti"; \
	  apt-get update -qq && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $$mancanti; \
	fi

build: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	cmake --build $(BUILD) -j$(JOBS)

run: build
	./$(BUILD)/tavolata

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j$(JOBS)

# Regenerates the pictures, the sounds and the songs under media/.
media: build
	QT_QPA_PLATFORM=offscreen ./$(BUILD)/tools/art/genart media ui/risorse
	@if [ -x ./$(BUILD)/tools/sound/gensound ]; then ./$(BUILD)/tools/sound/gensound media; fi

clean:
	rm -rf $(BUILD)

# The Debian package, $(BUILD)/tavolata_<version>_<arch>.deb; dpkg-dev works out
# its library dependencies.
.PHONY: deb check-packaging
deb:
	@$(MAKE) --no-print-directory deps PACCHETTI="$(PACCHETTI) dpkg-dev"
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	cmake --build $(BUILD) -j$(JOBS) --target tavolata icone_applicazione
	cd $(BUILD) && cpack -G DEB

# Checks the desktop entry and the AppStream data with whichever of the two
# validators is installed (desktop-file-utils, appstream).
check-packaging:
	@if command -v desktop-file-validate >/dev/null; then \
	  desktop-file-validate packaging/*.desktop && echo "desktop entry: valid"; \
	else echo "desktop-file-validate not installed: desktop entry not checked"; fi
	@if command -v appstreamcli >/dev/null; then \
	  appstreamcli validate --no-net packaging/*.metainfo.xml; \
	else echo "appstreamcli not installed: AppStream data not checked"; fi

# Longer checks, each in a build folder of its own where it says so:
#   make check-sanitize  every test and a bounded simulator run built with
#                        AddressSanitizer and UndefinedBehaviorSanitizer
#   make bench           the benchmarks of docs/prestazioni.md (medians of 5)
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
