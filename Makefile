# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Thin wrapper over the CMake presets; `make test` and `make tour` are the README's two commands.
.PHONY: all build test tour sanitize fuzz bench clean

all: build

build:
	cmake --preset default >/dev/null
	cmake --build --preset default

test:
	cmake --workflow --preset default

tour: build
	./build/default/tools/velto/velto tour

sanitize:
	cmake --workflow --preset sanitize

fuzz:
	cmake --preset fuzz >/dev/null
	cmake --build --preset fuzz

bench: build
	for b in build/default/bench/*Bench; do "$$b"; done

clean:
	rm -rf build
