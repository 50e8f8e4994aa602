#!/usr/bin/env bash
# Installs a build into a folder of its own and uses it as clients do: by pkg-config, by
# find_package(), header by header. A client of another pointer size must be turned away.
# Usage: install_test.sh <cmake> <build folder> <generator> <C compiler> <C++ compiler> [flags]
set -euo pipefail

cmake=$1 build=$2 generator=$3 cc=$4 cxx=$5 flags=${6:-}
here=$(cd "$(dirname "$0")" && pwd)/client
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

say() { echo "== $*"; }
fail() {
  echo "FAILED: $*" >&2
  exit 1
}
# Says what it printed only if it fails.
quietly() {
  "$@" >"$work/log" 2>&1 || {
    cat "$work/log"
    fail "$*"
  }
}

command -v pkg-config >/dev/null || fail "pkg-config is missing (Debian: apt-get install pkg-config)"

say "installs into a prefix given at install time, from where it may be moved"
quietly "$cmake" --install "$build" --prefix "$work/first"
mv "$work/first" "$work/prefix"

say "every header compiles on its own, without a warning"
cd "$work/prefix/include"
for header in bkoq/*.h rw/*.h; do
  for standard in c++11 c++17 c++20; do
    quietly "$cxx" $flags -std=$standard -Wall -Wextra -Wpedantic -Werror -I. -x c++ -fsyntax-only \
      -include "$header" /dev/null
  done
done
echo 'extern int used;' >"$work/used.c" # a header of macros alone is no C program
for header in bkoq/records.h bkoq/records_old.h bkoq/kit.h bkoq/bktime.h bkoq/version.h; do
  quietly "$cc" $flags -std=c11 -Wall -Wextra -Wpedantic -Werror -I. -fsyntax-only \
    -include "$header" "$work/used.c"
done
cd "$work"

say "the headers and the package have one version"
in_headers=$(echo BKOQ_VERSION_TEXT |
  "$cc" $flags -I"$work/prefix/include" -include bkoq/version.h -x c -E -P - | tr -d '" \n')
PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name bkoq.pc)")
export PKG_CONFIG_PATH
in_package=$(pkg-config --modversion bkoq)
[ "$in_headers" = "$in_package" ] || fail "version $in_headers in the headers, $in_package in the package"

say "a client is built through pkg-config and runs"
libraries=$(dirname "$PKG_CONFIG_PATH")
! grep -l rpath "$PKG_CONFIG_PATH"/*.pc || fail "a pkg-config file names a folder for the loader"
quietly "$cxx" $flags -std=c++11 "$here/client.cpp" $(pkg-config --cflags --libs bkoq) -o client
quietly env LD_LIBRARY_PATH="$libraries" ./client
quietly "$cxx" $flags -std=c++11 "$here/rw_client.cpp" $(pkg-config --cflags --libs bkrw) -o rw_client
quietly env LD_LIBRARY_PATH="$libraries" ./rw_client

say "a C program with the kit alone"
quietly "$cc" $flags -std=c11 "$here/kit_client.c" $(pkg-config --cflags --libs bkoqkit) -o kit_client
quietly env LD_LIBRARY_PATH="$libraries" ./kit_client

if [ -e "$work/prefix/bin/bkoq" ]; then
  say "the command, its manual page and its completions"
  quietly "$work/prefix/bin/bkoq" new backup
  grep -q '^.TH BKOQ 1' "$work/prefix/share/man/man1/bkoq.1" || fail "no manual page"
  for section in NAME SYNOPSIS OPTIONS COMMANDS 'EXIT STATUS' FILES ENVIRONMENT EXAMPLES 'SEE ALSO'; do
    grep -qx ".SH $section" "$work/prefix/share/man/man1/bkoq.1" || fail "no $section in the manual page"
  done
  for file in $(sed -nE 's/^\.I (share.*)/\1/p' "$work/prefix/share/man/man1/bkoq.1" | tr -d '\\'); do
    [ -e "$work/prefix/$file" ] || fail "the manual page names $file, which is not installed"
  done
  grep -q '^complete ' "$work/prefix/share/bash-completion/completions/bkoq" || fail "no completion"
  grep -q '^#compdef bkoq' "$work/prefix/share/zsh/site-functions/_bkoq" || fail "no completion"
  "$work/prefix/bin/bkoq" layout --magic | cmp - "$work/prefix/share/bkoq/bkoq.magic" ||
    fail "no entry for file(1)"
  "$work/prefix/bin/bkoq" layout --kaitai | cmp - "$work/prefix/share/bkoq/bkoq_image.ksy" ||
    fail "no description for Kaitai Struct"
fi

if [ -d "$work/prefix/share/bkoq/gdb" ]; then
  say "gdb loads its extension with the library"
  # Below the folder that gdb searches is the library's own, so this prefix stays where it is.
  quietly "$cmake" --install "$build" --prefix "$work/loaded"
  pc=$(find "$work/loaded" -name bkoq.pc)
  quietly "$cxx" $flags -std=c++11 "$here/client.cpp" \
    $(PKG_CONFIG_PATH=$(dirname "$pc") pkg-config --cflags --libs bkoq) -o loaded-client
  quietly gdb -nx -q -batch \
    -iex "add-auto-load-scripts-directory $work/loaded/share/gdb/auto-load" \
    -iex "add-auto-load-safe-path $work/loaded" -ex 'break main' \
    -ex "set environment LD_LIBRARY_PATH $(dirname "$(dirname "$pc")")" -ex run \
    -ex 'show bkoq secrets' ./loaded-client
  grep -q 'Passwords and keys are masked' log || {
    cat log
    fail "gdb did not load it"
  }
fi

say "a client is built through find_package() and runs"
quietly "$cmake" -S "$here" -B cmake-client -G "$generator" -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_PREFIX_PATH="$work/prefix"
quietly "$cmake" --build cmake-client
quietly cmake-client/client
quietly cmake-client/rw_client

say "the build folder is found as an installation is"
quietly "$cmake" -S "$here" -B build-tree-client -G "$generator" -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_CXX_FLAGS="$flags" -Dbkoq_DIR="$build"
quietly "$cmake" --build build-tree-client
quietly build-tree-client/client

say "the documents and examples are there that help texts and headers name"
named=$(cat "$work"/prefix/include/*/*.h)
[ ! -e "$work/prefix/bin/bkoq" ] ||
  named+=$(for command in '' flatten show diff check new layout schema; do
    "$work/prefix/bin/bkoq" $command --help
  done)
for file in $(grep -oE '(docs|examples)/[a-zA-Z0-9_-]+\.[a-z]+' <<<"$named" | sort -u); do
  [ -e "$work/prefix/share/doc/bkoq/${file#docs/}" ] || fail "$file is named, but not installed"
done

if [ "$flags" = -m32 ]; then
  say "a 64-bit client is turned away, and told why"
  refused() {  # what it must say, options
    local text=$1
    shift
    rm -rf cmake-client-64
    if "$cmake" -S "$here" -B cmake-client-64 -G "$generator" -DCMAKE_CXX_COMPILER="$cxx" \
      -DCMAKE_CXX_FLAGS= -DCMAKE_PREFIX_PATH="$work/prefix" "$@" >log 2>&1; then
      fail "find_package() took the 32-bit package for a 64-bit client"
    fi
    # CMake breaks lines.
    tr -s ' \n' '  ' <log | grep -qF "$text" || {
      cat log
      fail "refused without saying: $text"
    }
  }
  refused "libbkoq is 32-bit: compile with -m32. Give it before project():"
  for late in 'add_compile_options(-m32)' 'string(APPEND CMAKE_CXX_FLAGS " -m32")'; do
    echo "$late" >late.cmake
    refused "libbkoq is 32-bit: compile with -m32. It was added after project()," \
      -DCMAKE_PROJECT_bkoq_client_INCLUDE="$PWD/late.cmake"
  done
fi
