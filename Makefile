# The whole set-up on a fresh Debian machine, as root:
#   make run    installs what is missing, builds and starts the game
#   make test   installs what is missing, builds and runs every test headless
BUILD ?= build
JOBS ?= $(shell nproc)
PACCHETTI = cmake g++ make pkg-config qt6-base-dev qt6-multimedia-dev libgl-dev \
	libfluidsynth-dev timgm6mb-soundfont libsndfile1-dev libsmf-dev libbenchmark-dev \
	fonts-liberation fonts-dejavu-core

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
