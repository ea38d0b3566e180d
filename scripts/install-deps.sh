#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need. Safe to run repeatedly:
# it does nothing when every package is already there.
set -euo pipefail
packages=(
  build-essential cmake ccache pkg-config
  libsqlite3-dev sqlite3 libutf8proc-dev libfmt-dev nlohmann-json3-dev libcli11-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  mdbtools mdbtools-dev libpq-dev postgresql postgresql-client
  qt6-base-dev qt6-base-dev-tools libgl-dev xvfb xauth fonts-dejavu-core
)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends "${missing[@]}"
fi
