# The front door. What each target does is written in tools/.
.PHONY: help demo test bench check format deps

help:
	@echo "make demo    run Sontaro against simulated players; without a display, a tour with pictures"
	@echo "make test    build, and run every test"
	@echo "make bench   measure, and compare with the goals"
	@echo "make check   format, clang-tidy, tests under the sanitizers, a minute for each fuzzer"
	@echo "make format  lay out the C++ sources as .clang-format says"
	@echo "make deps    install the Debian packages that are missing"

demo: deps
	@tools/demo.sh

test: deps
	@tools/test.sh

bench: deps
	@tools/bench.sh

check: deps
	@tools/check.sh

format: deps
	@tools/format.sh

deps:
	@tools/install_deps.sh
