# Debian packages this project builds and runs with, and why each is here. Sourced by ./run, ./test
# and .ci/run; this is the one place that names them.

# Builds the program: compiler, CMake with Ninja; the windows (Qt Widgets and D-Bus, with the
# platform plugins that show them on X11 and without a display); a font for both; libusb for the
# bridge and libudev for its coming and going, which pkg-config finds.
run_packages=(g++ cmake ninja-build qt6-base-dev qt6-qpa-plugins fonts-dejavu-core
  libusb-1.0-0-dev libudev-dev pkg-config)

# Builds the tests and benchmarks: GoogleTest and Google Benchmark; libinih as the yardstick of the
# ini reader and Lua as that of the script engine; a session bus for the tests that need one;
# umockdev, which plays the kernel for the drivers of real ports; sigrok-cli, which reads what the
# wire monitor saves for logic analysers.
test_packages=("${run_packages[@]}" libgtest-dev libgmock-dev libbenchmark-dev libinih-dev
  liblua5.4-dev dbus umockdev libumockdev-dev sigrok-cli)

# The checks: formatter, linter, and clang's runtime for the fuzz targets.
check_packages=("${test_packages[@]}" clang clang-format clang-tidy)

# ensure_packages NAME...: installs what is missing, or, lacking the right, prints the one line that
# does and stops.
ensure_packages() {
  local missing=() name
  for name in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] ||
      missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local line="apt-get install -y --no-install-recommends ${missing[*]}"
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
  echo "Installing: ${missing[*]}"
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
