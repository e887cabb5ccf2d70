# Debian packages this project builds and runs with, and why each is here. Sourced by ./run, ./test,
# ./install and .ci/run, and part of the portable folder; this is the one place that names them.

# Runs the built program: the windows (Qt Widgets and D-Bus, whose packages bring the platform
# plugins for X11 and for no display); libusb for the bridge, libudev for its coming and going.
user_packages=(libqt6widgets6 libqt6dbus6 libusb-1.0-0 libudev1)

# Builds it too: compiler, CMake with Ninja; the same libraries for developers, of which pkg-config
# finds two; a font, which a bare machine lacks.
run_packages=(g++ cmake ninja-build qt6-base-dev fonts-dejavu-core libusb-1.0-0-dev libudev-dev
  pkg-config)

# Builds the tests and benchmarks: GoogleTest and Google Benchmark; libinih as the yardstick of the
# ini reader and Lua as that of the script engine; a session bus for the tests that need one, and
# Python's way to it for the example client; umockdev, which plays the kernel for the drivers of
# real ports; sigrok-cli, which reads what the wire monitor saves for logic analysers; the desktop's
# own checks of menu entries and of metadata, for what ./install puts there.
test_packages=("${run_packages[@]}" libgtest-dev libgmock-dev libbenchmark-dev libinih-dev
  liblua5.4-dev dbus python3-dbus umockdev libumockdev-dev sigrok-cli desktop-file-utils appstream)

# The checks: formatter, linter, and clang's runtime for the fuzz targets.
check_packages=("${test_packages[@]}" clang clang-format clang-tidy)

# missing_packages NAME...: those that aren't installed, on one line.
missing_packages() {
  local missing=() name
  for name in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] ||
      missing+=("$name")
  done
  echo "${missing[*]}"
}

# ensure_packages NAME...: installs what is missing, or, lacking the right, prints the one line that
# does and stops.
ensure_packages() {
  local missing
  missing=$(missing_packages "$@")
  [ -n "$missing" ] || return 0
  local line="apt-get install -y --no-install-recommends $missing"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if sudo -n true 2>/dev/null; then
      as_root=(sudo -n)
    else
      echo "Zentrel needs these packages first. Run this line, then start again:"
      echo "  sudo apt-get update && sudo $line"
      exit 1
    fi
  fi
  echo "Installing: $missing"
  "${as_root[@]}" apt-get update -qq || return 1
  # shellcheck disable=SC2086  # the line is words on purpose
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive $line >/dev/null
}

# configure_and_build PRESET TARGET...: configures when there is no build yet, then builds. Ninja
# shows its progress, and says "no work to do" when nothing changed.
configure_and_build() {
  local preset=$1
  shift
  # A folder that was configured without the tests' packages is configured again for them.
  if [ ! -f "build/$preset/build.ninja" ] ||
    { [ "${want_tests:-no}" = yes ] && ! grep -q '^build tests:' "build/$preset/build.ninja"; }; then
    echo "Configuring ($preset)"
    cmake --preset "$preset" >"build/$preset.configure.log" 2>&1 || {
      cat "build/$preset.configure.log"
      return 1
    }
  fi
  echo "Building ($preset)"
  cmake --build --preset "$preset" --target "$@"
}
