#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need (with "bench", also those of
# `make bench`; with "fuzz", those of `make fuzz`). Safe to run repeatedly: it does nothing when every package and the Spanish
# locale are already there.
set -euo pipefail
packages=(
  build-essential cmake ccache pkg-config
  libsqlite3-dev sqlite3 libutf8proc-dev libfmt-dev nlohmann-json3-dev libcli11-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  mdbtools mdbtools-dev libpq-dev postgresql postgresql-client
  qt6-base-dev qt6-base-dev-tools libgl-dev xvfb xauth fonts-dejavu-core
  qt6-tools-dev  # the Qt Designer plug-in's interfaces
  libzip-dev  # the support report's archive
  locales
  file dpkg-dev  # `make package`: CPack finds the .deb's dependencies with dpkg-shlibdeps
)
# `make bench` also draws a plot and writes its report with Debian's Python.
[ "${1:-}" = bench ] && packages+=(gnuplot-nox python3)
# `make fuzz` builds with clang and links libFuzzer and clang's sanitizer runtimes.
[ "${1:-}" = fuzz ] && packages+=(clang libclang-rt-14-dev)
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  $sudo apt-get update
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends "${missing[@]}"
fi

# The tests run a second time as on a Spanish desktop (see the Makefile's test target).
if ! locale -a 2>/dev/null | grep -x 'es_ES\.utf8' >/dev/null; then
  if grep -q '^# *es_ES\.UTF-8 UTF-8' /etc/locale.gen 2>/dev/null; then
    $sudo sed -i 's/^# *\(es_ES\.UTF-8 UTF-8\)/\1/' /etc/locale.gen
  elif ! grep -q '^es_ES\.UTF-8 UTF-8' /etc/locale.gen 2>/dev/null; then
    echo 'es_ES.UTF-8 UTF-8' | $sudo tee -a /etc/locale.gen >/dev/null
  fi
  $sudo locale-gen
fi
