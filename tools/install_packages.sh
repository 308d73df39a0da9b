#!/usr/bin/env bash
# Installs the Debian packages that building, testing and playing need, and only those that are missing.
set -euo pipefail

packages=(
  g++ cmake ninja-build pkg-config python3 git ccache help2man  # building
  libsdl2-dev libcli11-dev libpng-dev liblzo2-dev libjpeg62-turbo-dev libsimpleini-dev libsndfile1-dev libfreetype-dev nlohmann-json3-dev
  libgtest-dev libgmock-dev xvfb                    # testing
  libbenchmark-dev liblua5.4-dev libinih-dev libpixman-1-dev libsdl2-ttf-dev  # measuring, all but the first as peers
  fonts-dejavu-core                                 # the letters of the demo, and of what is measured
  clang libclang-rt-14-dev                          # fuzzing
  clang-format clang-tidy                           # judging the sources
)

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
  echo "Packages: all there."
  exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "Packages missing, and neither root nor sudo at hand: ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo)
fi

echo "Packages: installing ${missing[*]}"
install() {
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -q --no-install-recommends "${missing[@]}" </dev/null
}
# The lists of a fresh machine are empty or old: then they are read first.
install || { "${as_root[@]}" apt-get update -q </dev/null && install; }
