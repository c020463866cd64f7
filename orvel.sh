#!/usr/bin/env bash
# Orvel's one entry point for people and CI:
#   ./orvel.sh run    install what is missing, build, run the default script on the bundled data
#   ./orvel.sh test   install what is missing, build, run every test
set -euo pipefail
cd "$(dirname "$0")"

PACKAGES=(cmake g++ make pkg-config python3 qt6-base-dev qt6-translations-l10n libqcustomplot-dev
          libgtest-dev libbenchmark-dev fonts-wqy-microhei xvfb xauth python3-distributed)
BUILD_DIR=${ORVEL_BUILD_DIR:-build}

install_missing() {
    local missing=()
    for p in "${PACKAGES[@]}"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return
    echo "Installing: ${missing[*]}"
    local sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}"
}

build() {
    cmake -S . -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=Release >/dev/null
    cmake --build "$BUILD_DIR" -j"$(nproc)"
}

run_main_job() {
    if [ -n "${DISPLAY:-}" ] && [ -x "$BUILD_DIR/src/app/orvel" ]; then
        exec "$BUILD_DIR/src/app/orvel"
    fi
    "$BUILD_DIR/src/orvel-cli" backtest src/resources/default.script --data data --out output.csv
    echo "(trades written to output.csv)"
}

case "${1:-}" in
    run) install_missing; build; run_main_job ;;
    test) install_missing; build; ctest --test-dir "$BUILD_DIR" --output-on-failure -j"$(nproc)" ;;
    *) echo "usage: $0 run|test" >&2; exit 2 ;;
esac
