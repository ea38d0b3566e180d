#!/usr/bin/env bash
# Installs a build into a scratch prefix and uses it as a host developer would: builds the
# example hosts with find_package and again with pkg-config, compiles every installed header on
# its own, and runs the examples on a demo database made by the installed tool.
# Usage: check-example.sh BUILD_DIR SOURCE_DIR WORK_DIR CXX [COMPILER_LAUNCHER]
set -euo pipefail
build=$1 source=$2 work=$3 cxx=$4 launcher=${5:-}
prefix=$work/prefix
rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$prefix" >"$work/install.log"

# Third-party headers stay out of the installed ones.
if grep -rnE '#include [<"](sqlite3|libpq-fe|mdbtools|mdbsql|zip\.h|fmt/|nlohmann/|CLI/)' "$prefix/include"; then
  echo "An installed header includes a third-party header (above)." >&2
  exit 1
fi

configure_and_build() {  # SOURCE BINARY
  cmake -S "$1" -B "$2" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_CXX_COMPILER="$cxx" ${launcher:+-DCMAKE_CXX_COMPILER_LAUNCHER="$launcher"} \
    >"$2.log" || { cat "$2.log"; return 1; }
  cmake --build "$2" -j 2 >>"$2.log" || { cat "$2.log"; return 1; }
}
configure_and_build "$source/packaging/header-check" "$work/header-check"
configure_and_build "$source/examples" "$work/example"

export PKG_CONFIG_PATH="$prefix/lib/pkgconfig"
# shellcheck disable=SC2046  # pkg-config's flags are separate words
$launcher "$cxx" -std=c++20 -o "$work/selection_host_pc" "$source/examples/selection_host.cpp" \
  $(pkg-config --cflags --libs criteriopredios)

"$prefix/bin/criteriopredios" init-db --db "$work/demo.db" --demo --size 200 >/dev/null
"$work/example/selection_host" "$work/demo.db"
"$work/selection_host_pc" "$work/demo.db" >/dev/null
# The property control on a form of the host's own, typed into without a display.
QT_QPA_PLATFORM=offscreen "$work/example/criteria_form" "$work/demo.db" --type 12
