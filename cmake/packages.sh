# The Debian packages that the project needs, and a function that installs those that are missing.
# Sourced by ./run, ./test and the other scripts.
#
#   need_packages PACKAGE...   prints the missing ones and installs them, as root or through sudo

# To build the program, and to show its screens.
build_packages=(g++ cmake ninja-build qt6-base-dev libsqlite3-dev fonts-liberation)
# To drive the program on a virtual display, as a user does and as a screen reader does.
desktop_packages=(xvfb openbox xfwm4 mutter xdotool x11-utils imagemagick python3 python3-gi dbus
  at-spi2-core)
# To build and run the tests and benchmarks.
test_packages=(libgtest-dev libgmock-dev libxcb1-dev mdbtools ccache fonts-dejavu-core fonts-urw-base35)
# To check the sources.
lint_packages=(clang clang-format clang-tidy cppcheck libclang-rt-14-dev)

need_packages() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
      missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  local root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "Missing packages, and neither root nor sudo to install them: ${missing[*]}" >&2
      return 1
    }
    root=(sudo)
  fi
  echo "Installing: ${missing[*]}"
  "${root[@]}" apt-get update -qq &&
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
      -o Dpkg::Use-Pty=0 "${missing[@]}" >/dev/null
}

# Compile through ccache where it is installed, unless the caller has chosen a launcher.
if [ -z "${CMAKE_CXX_COMPILER_LAUNCHER+x}" ] && command -v ccache >/dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache
  export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros}
fi
