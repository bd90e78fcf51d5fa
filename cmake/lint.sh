#!/bin/sh
# Checks layout and code: clang-format, clang-tidy, and the shell scripts'
# syntax. Usage: lint.sh BUILD_DIR (with a compile_commands.json).
set -eu
build=$1
cd "$(dirname "$0")/.."

git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror
git ls-files '*.cpp' | xargs -P "$(nproc)" -n 4 clang-tidy -quiet -p "$build"
git ls-files '*.sh' packaging/install-packages .ci/run | while read -r script; do
  bash -n "$script"
done
echo "lint: clean"
