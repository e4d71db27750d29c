#!/usr/bin/env bash
# Fails when a source file is not as clang-format would write it.
cd "$(dirname "$0")/.." || exit 1
git ls-files --cached --others --exclude-standard '*.cpp' '*.h' | xargs clang-format --dry-run --Werror
