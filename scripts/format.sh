#!/usr/bin/env bash
# Every C++ source is as .clang-format would write it.
set -u
cd "$(dirname "${BASH_SOURCE[0]}")/.."
git ls-files '*.h' '*.cpp' | xargs -r clang-format --dry-run -Werror 2>&1 | grep 'error:' | head -20
exit "${PIPESTATUS[1]}"
