#!/usr/bin/env bash
# Installs what is missing, builds and runs all tests: natively, on emulated PowerPC, and with the
# sanitizers. With --quick, natively only. The last line counts them.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$root"
. packaging/install-packages.sh

presets=(native powerpc tsan asan)
case "${1:-}" in
    "") ;;
    --quick) presets=(native) ;;
    *) printf 'usage: %s [--quick]\n' "$0" >&2; exit 2 ;;
esac
install_packages packaging/packages.txt

# A figure of the whole run of the preset.
total() {
    sed -n "s/^[[:space:]]*$1=\"\([0-9]*\)\".*/\1/p" "build/$preset-tests.xml" | head -n 1
}

passed=0 failed=0 skipped=0
for preset in "${presets[@]}"; do
    printf '== %s\n' "$preset"
    log=build/$preset-tests.log
    mkdir -p build
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset"; } >"$log" 2>&1; then
        tail -n 60 "$log"
        printf '%s does not build\n' "$preset"
        failed=$((failed + 1))
        continue
    fi
    rm -f "build/$preset-tests.xml"
    ctest --preset "$preset" --parallel "$(nproc)" --output-junit "$root/build/$preset-tests.xml" >"$log" 2>&1 || true
    if [ ! -e "build/$preset-tests.xml" ]; then
        tail -n 20 "$log"
        printf '%s ran no test\n' "$preset"
        failed=$((failed + 1))
        continue
    fi
    tests=$(total tests) failures=$(total failures) skips=$(total skipped)
    [ "$failures" -eq 0 ] || sed -n '/^ *[0-9]*\/[0-9]* Test.*\(Failed\|Timeout\|Exception\|Not Run\)/,/^ *Start/p' "$log" | tail -n 200
    tail -n 3 "$log" | grep 'Total Test time' || true
    printf '%d tests, %d failed, %d skipped\n' "$tests" "$failures" "$skips"
    passed=$((passed + tests - failures - skips)) failed=$((failed + failures)) skipped=$((skipped + skips))
done

printf '%d passed, %d failed, %d skipped\n' "$passed" "$failed" "$skipped"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
