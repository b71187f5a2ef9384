# What the commands share. Sourced from the project's top folder.
export PATH=${PATH:-/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin}

say() { printf '%s\n' "$*" >&2; }
fail() {
  say "$*"
  exit 1
}

# configure PRESET [OPTION…]
configure() {
  local preset=$1 log
  shift
  mkdir -p build
  log=build/$preset-configure.log
  # A build folder that was made elsewhere (the project was moved or copied) starts over.
  local fresh=()
  [ ! -f "build/$preset/CMakeCache.txt" ] || configured_here "$preset" || fresh=(--fresh)
  cmake --preset "$preset" "${fresh[@]}" "$@" >"$log" 2>&1 || {
    cat "$log" >&2
    fail "Configuring build/$preset failed."
  }
}

configured_here() {
  [ -f "build/$1/build.ninja" ] && grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" "build/$1/CMakeCache.txt"
}

# build PRESET [TARGET…]: one short line per step on standard error, and none when nothing is to be done. Steps without a
# comment of their own, which ninja shows as "cd … && …", are looked at in every build and stay unsaid.
build() {
  local preset=$1
  shift
  local targets=()
  [ $# -eq 0 ] || targets=(--target "$@")
  cmake --build --preset "$preset" "${targets[@]}" 2>&1 | sed --unbuffered --regexp-extended \
    '/^ninja: no work to do|Re-checking globbed directories|^ninja: Entering directory|^\[[0-9/]+\] cd /d; s/Building CXX object .*\.dir\/(.*)\.o$/\1/; s/Linking CXX (executable|static library) .*\//linking /' >&2 ||
    fail "Building build/$preset failed."
}

# The programs and all that is installed with them. What ./test builds beside them stays as it is.
build_programs() {
  configured_here release || configure release -DBUILD_TESTING=OFF
  build release src/all resources/all po/all
}

# Only one command at a time builds in a folder.
locked() {
  mkdir -p build
  (
    flock 9
    "$@"
  ) 9>build/lock
}
