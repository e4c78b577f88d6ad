#!/usr/bin/env bash
# Builds the Debian package arborex_VERSION_ARCH.deb: installs what building needs, builds the
# programs, the data and everything else an installation holds (not the tests) in a Release
# tree, and packs it with CPack. Its dependencies are worked out by dpkg-shlibdeps.
#   scripts/build-deb.sh [BUILD_DIR]        (default build/package)
# The package lands in BUILD_DIR; install it with  sudo apt-get install ./arborex_*.deb
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build/package}
"$root/scripts/install-deps.sh"
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
# Installing must not wait for the tests to be built: only what is installed is built.
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DARBOREX_BENCH=OFF \
      -DCMAKE_SKIP_INSTALL_ALL_DEPENDENCY=ON "${launcher[@]}" >/dev/null
cmake --build "$build" --target arborex_installables
(cd "$build" && cpack -G DEB)
package=$(ls -t "$build"/arborex_*.deb | head -n 1)
dpkg-deb --field "$package" Package Version Depends
echo "$package"
