# Debian packages that the project needs, and a function that installs what is
# missing. Sourced by ./run and ./test.

# To build and run the command.
BUILD_PACKAGES="g++ cmake ninja-build pkg-config libpcre2-dev libicu-dev libphonenumber-dev
  nlohmann-json3-dev libeigen3-dev libcli11-dev libyaml-cpp-dev libcurl4-openssl-dev
  libsodium-dev libzip-dev libpugixml-dev poppler-utils"
# To build and run the tests.
TEST_PACKAGES="libgtest-dev openssl python3-dev python3-docx python3-pytest pybind11-dev"
# For the further checks of ./test --all.
CHECK_PACKAGES="clang libclang-rt-14-dev clang-format clang-tidy ccache libbenchmark-dev git
  python3-pip python3-setuptools python3-venv python3-wheel"

say() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
}

# need_packages NAME...: installs those that are not installed.
need_packages() {
  local missing=() name sudo=()
  for name in "$@"; do
    if ! dpkg -s "$name" 2>/dev/null | grep -q '^Status: install ok installed'; then
      missing+=("$name")
    fi
  done
  [ ${#missing[@]} -gt 0 ] || return 0

  say "installing Debian packages: ${missing[*]}"
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      say "neither root nor sudo: install these packages by hand, then run this again"
      return 1
    fi
    sudo=(sudo)
  fi
  local log
  log=$(mktemp)
  if ! "${sudo[@]}" apt-get update >"$log" 2>&1 ||
    ! "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
      apt-get install -y --no-install-recommends "${missing[@]}" >>"$log" 2>&1; then
    tail -n 20 "$log" >&2
    rm -f "$log"
    say "the packages could not be installed"
    return 1
  fi
  rm -f "$log"
}

# Compiled objects are kept between builds where ccache is installed.
if command -v ccache >/dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi
