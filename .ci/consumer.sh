#!/usr/bin/env bash
# Installs the library into a temporary prefix, then builds and runs the
# example consumer against it: once through the CMake package, once through
# pkg-config. Also runs the installed tool. Exits non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")/.."

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
prefix="$work/prefix"

echo "-- building and installing into $prefix"
cmake -S . -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DZELVO_UNICODE_BUILD_TESTS=OFF -DZELVO_UNICODE_BUILD_BENCHMARKS=OFF \
  -DCMAKE_INSTALL_PREFIX=/nowhere
cmake --build "$work/build" -j2
# Installed elsewhere than configured: the package must not care.
cmake --install "$work/build" --prefix "$prefix"

echo "-- what was installed"
(cd "$prefix" && find . -type f -o -type l | sort)
for header in Unicode.h string/String.h codepage/CodePage.h \
  codepage/CodePageTranslator.h transform/UnicodeOperations.h \
  transform/UnicodeTransformationTables.h; do
  test -f "$prefix/include/zelvo-unicode/$header" ||
    { echo "missing header $header"; exit 1; }
done
if [ -e "$prefix/include/string" ] || [ -e "$prefix/include/Unicode.h" ]; then
  echo "headers were installed loose in include/"; exit 1
fi
for notice in LICENSE LICENSE-UNICODE; do
  test -f "$prefix/share/doc/zelvo-unicode/$notice" ||
    { echo "missing share/doc/zelvo-unicode/$notice"; exit 1; }
done
test -f "$prefix/share/man/man1/zelvo-unicode.1" ||
  { echo "the manual page of the tool was not installed"; exit 1; }
libdir="$(dirname "$(find "$prefix" -name 'libzelvo_unicode.so.0' | head -1)")"
test -n "$libdir" || { echo "no libzelvo_unicode.so.0 installed"; exit 1; }

echo "-- consumer through find_package(ZelvoUnicode)"
cmake -S examples/consumer -B "$work/consumer" -G Ninja \
  -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH="$prefix"
cmake --build "$work/consumer"
"$work/consumer/consumer"

echo "-- consumer through pkg-config"
export PKG_CONFIG_PATH="$libdir/pkgconfig"
pkg-config --modversion zelvo-unicode
# shellcheck disable=SC2046
c++ -std=c++17 examples/consumer/main.cpp -o "$work/consumer-pc" \
  $(pkg-config --cflags --libs zelvo-unicode)
LD_LIBRARY_PATH="$libdir" "$work/consumer-pc"

echo "-- the installed tool"
"$prefix/bin/zelvo-unicode" --version
status=0
printf 'cafe\xcc\x81\n' | "$prefix/bin/zelvo-unicode" check nfc || status=$?
[ "$status" -eq 1 ] || { echo "check nfc should say no (1), gave $status"; exit 1; }
printf 'cafe\xcc\x81\n' | "$prefix/bin/zelvo-unicode" nfc |
  "$prefix/bin/zelvo-unicode" check nfc
echo "-- consumer: all good"
