#!/usr/bin/env bash
# The main job: build output in $1. Creates the demo database when missing and shows the tool.
set -euo pipefail
build=${1:-build}
tool="$build/cli/criteriopredios"
"$tool" --help
