# The front door. What each target does is written in tools/.
.PHONY: help demo test bench check format deps windows test-windows windows-deps package \
    test-packages package-deps

help:
	@echo "make demo    run Sontaro against simulated players; without a display, a tour with pictures"
	@echo "make test    build, and run every test"
	@echo "make bench   measure, and compare with the goals"
	@echo "make check   format, clang-tidy, tests under the sanitizers, a minute for each fuzzer"
	@echo "make format  lay out the C++ sources as .clang-format says"
	@echo "make windows       build the Windows programs (docs/windows.md)"
	@echo "make test-windows  build them, and run their tests under Wine"
	@echo "make package        leave a .deb, and an installer and a zip for Windows, in build/packages/"
	@echo "make test-packages  make them, install each, run it from there, and remove it"
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

windows: windows-deps
	@tools/windows/build.sh

test-windows: windows-deps
	@tools/windows/test.sh

package: package-deps
	@tools/package.sh

test-packages: package
	@tools/test_packages.sh

deps:
	@tools/install_deps.sh

windows-deps:
	@tools/install_deps.sh windows

package-deps:
	@tools/install_deps.sh windows package
