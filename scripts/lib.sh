# What the scripts share. Sourced, with the project's root as the working directory.

# Debian 12 packages that building, the program and the tests need. The one list of them.
packages="
  cmake g++ ninja-build pkg-config
  libassimp-dev libcli11-dev libepoxy-dev libexpat1-dev libexpected-dev libgdk-pixbuf-2.0-dev libpcre2-dev libpng-dev
  libseccomp-dev zlib1g-dev nlohmann-json3-dev libgtest-dev libgmock-dev
  libegl1 libegl-mesa0 libgl1-mesa-dri librsvg2-common
"

# What the checks before a landing need beyond these; llvm tells the leak checker the names of functions, python3 draws
# the architecture.
check_packages="clang clang-format libclang-rt-14-dev llvm-14 python3"

# What the benchmarks need beyond those of building.
benchmark_packages="libbenchmark-dev"

# What benchmarks/peers sets the program beside.
peer_packages="f3d libvips-tools python3 xvfb"

# install PACKAGE...: installs what is missing of them; silent and quick when nothing is.
install() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  if ! command -v apt-get >/dev/null; then
    echo "This machine has no apt-get. Needed, by their Debian names: ${missing[*]}" >&2
    return 1
  fi

  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
    if ! command -v sudo >/dev/null; then
      echo "Installing takes root or sudo. As root: apt-get install --no-install-recommends ${missing[*]}" >&2
      return 1
    fi
  fi
  echo "Installing ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# configure PRESET [CMAKE ARGUMENT...]: prepares build/PRESET; what CMake says is shown only when it fails.
configure() {
  local preset=$1 log=build/configure-$1.log
  shift
  mkdir -p build
  cmake --preset "$preset" "$@" >"$log" 2>&1 || { cat "$log" >&2; return 1; }
}

# build PRESET [CMAKE ARGUMENT...]: configures and builds everything in build/PRESET.
build() {
  configure "$@"
  cmake --build --preset "$1"
}

# run_tests PRESET: every test of a build, through ctest.
run_tests() {
  ctest --test-dir "build/$1" --output-on-failure --no-tests=error -j "$(nproc)"
}

# in_session ID: the numbers of the processes of a session that have not ended.
in_session() {
  # Processes may end meanwhile.
  { cat /proc/[0-9]*/stat 2>/dev/null || true; } | sed 's/(.*)/-/' | awk -v id="$1" '$6 == id && $3 != "Z" { print $1 }'
}
