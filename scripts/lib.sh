# Sourced by every script here: goes to the project's folder, knows the Debian packages of each purpose.
set -euo pipefail
ROOT=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd -P)
cd -- "$ROOT"

say() { printf '%s\n' "$*"; }
fail() {
  printf '%s\n' "$*" >&2
  exit 1
}

# The Debian packages that a purpose needs, by name. A library that the program starts to use is added here.
packages_for() {
  case $1 in
    build) echo g++ cmake ninja-build ccache qt6-base-dev pkg-config libx11-dev libxtst-dev libxkbcommon-dev libsdl2-dev ;;
    show) echo libqt6gui6 fonts-dejavu-core fonts-noto-core ;;
    wayland) echo qt6-wayland ;;
    virtual-display) echo xvfb openbox imagemagick x11-utils xdotool ;;
    test) echo libgtest-dev fonts-dejavu-core xvfb x11-xkb-utils ;;
    format) echo clang-format ;;
    fuzz) echo clang libclang-rt-14-dev ;;
    bench) echo libbenchmark-dev ;;
    tidy) echo clang clang-tidy ;;
    mutate) echo python3 ;;
    windows-logic) echo g++-mingw-w64-x86-64-posix wine wine64 googletest python3 cmake ninja-build ccache ;;
    windows) echo nsis imagemagick librsvg2-bin zip dpkg-dev qt6-base-dev ;;
    package) echo dpkg-dev file ;;
    package-try) echo lintian ;;
    adapters) echo qemu-system-x86 seabios busybox-static cpio kmod udev python3 ;;
    *) fail "packages_for: no purpose named '$1'" ;;
  esac
}

# A person may be asked: stdin is a terminal and nobody said CI.
interactive() { [ -t 0 ] && [ "${CI:-}" != true ]; }

as_root() {
  if [ "$(id -u)" = 0 ]; then
    "$@"
  elif ! command -v sudo >/dev/null; then
    fail "There is no sudo here. Run this once as root:  apt-get install --no-install-recommends ${missing[*]}"
  elif interactive; then
    sudo "$@"
  else
    sudo -n "$@" || fail "sudo needs a password and nobody can be asked. Run this once as root:
  apt-get install --no-install-recommends ${missing[*]}"
  fi
}

# need_packages PURPOSE...: installs what is missing. Touches neither network nor disk when nothing is.
need_packages() {
  local purpose list names wanted=() missing=() installed name answer
  for purpose in "$@"; do
    list=$(packages_for "$purpose") || exit 1
    read -ra names <<<"$list"
    wanted+=("${names[@]}")
  done
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    say "This is no Debian system: make sure that it has what these packages bring: ${wanted[*]}"
    return 0
  fi
  # The second letter of the status is i where the package is installed, held or not. dpkg-query fails where it
  # does not know one of them, which is what is being found out.
  installed=" $({ dpkg-query -W -f='${db:Status-Abbrev} ${Package}\n' "${wanted[@]}" 2>/dev/null || true; } |
    awk '$1 ~ /^.i$/ {print $2}' | tr '\n' ' ')"
  for name in "${wanted[@]}"; do
    [[ $installed == *" $name "* || " ${missing[*]-} " == *" $name "* ]] || missing+=("$name")
  done
  [ ${#missing[@]} -gt 0 ] || return 0

  say "These Debian packages are missing: ${missing[*]}"
  say "Installing them needs administrator rights (apt-get install --no-install-recommends)."
  if interactive; then
    read -rp "Install them now? [Y/n] " answer
    case $answer in
      '' | [yYjJ]*) ;;
      *) fail "Nothing was installed." ;;
    esac
  fi
  local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 -qq)
  as_root "${apt[@]}" update || say "The package lists could not be brought up to date; trying with those at hand."
  as_root "${apt[@]}" install -y --no-install-recommends "${missing[@]}" ||
    fail "The packages could not be installed. Is there a connection to the Debian mirror?"
}

# build_preset PRESET [TARGET...]: configures and builds, into build/PRESET.
build_preset() {
  local preset=$1 cache="build/$1/CMakeCache.txt" fresh=()
  shift
  # A tree that was moved or copied brings a cache that names its old place.
  if [ -f "$cache" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$ROOT" "$cache"; then fresh=(--fresh); fi
  cmake --preset "$preset" "${fresh[@]}" --log-level=WARNING || return
  if [ $# -gt 0 ]; then cmake --build --preset "$preset" --target "$@"; else cmake --build --preset "$preset"; fi
}
