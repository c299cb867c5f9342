#!/usr/bin/env bash
# Installs the build, as files or as Debian packages, into an empty folder, builds an outside project
# against what is there and runs it with the installed stand-in service.
# usage: check.sh cmake|pkg-config|deb BUILD-FOLDER COMPILER
set -euo pipefail
way=$1 build=$2 compiler=$3
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d)
service=
finish() {
    [ -z "$service" ] || kill "$service" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT

prefix=$work/stage/usr
if [ "$way" = deb ]; then
    (cd "$build" && cpack -G DEB -B "$work/packages" >/dev/null)
    for name in libtarnipc1 libtarnipc-dev tarnipc-tools; do
        package=$(echo "$work"/packages/"${name}"_*.deb)
        dpkg-deb --info "$package" >/dev/null
        dpkg-deb --extract "$package" "$work/stage"
    done
    test -e "$prefix/share/man/man1/tarnsim.1" && test -e "$prefix/share/man/man1/tarnctl.1"
else
    cmake --install "$build" --prefix "$prefix" >/dev/null
fi
libraries=$(dirname "$(find "$prefix" -name libtarnipc.so.1)")
export LD_LIBRARY_PATH=$libraries

if [ "$way" = pkg-config ]; then
    flags=$(PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config --cflags --libs tarnhost)
    # shellcheck disable=SC2086  # flags are words
    "$compiler" -std=c++11 "$here/outside/main.cpp" -o "$work/outside" $flags
else
    cmake -S "$here/outside" -B "$work/build" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" \
        -DCMAKE_CXX_STANDARD=11 >/dev/null
    cmake --build "$work/build" >/dev/null
    cp "$work/build/outside" "$work/outside"
fi

mkdir -m 700 "$work/run"
export TARN_RUNTIME_DIR=$work/run
"$prefix/bin/tarnsim" "$prefix/share/tarnipc/device.json" >/dev/null &
service=$!
"$work/outside"
"$prefix/bin/tarnctl" observers
