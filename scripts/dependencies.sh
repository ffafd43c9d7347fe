# The Debian packages that the program is built with and runs with; see docs/dependencies.md for
# what each is for. Sourced by ./run and ./test.
packages=(
  g++ cmake ninja-build ccache lld pkg-config ca-certificates
  qt6-base-dev qt6-declarative-dev qt6-image-formats-plugins libgl1-mesa-dev
  libplist-dev libexpected-dev libfontconfig-dev zlib1g-dev libpng-dev
  libavformat-dev libavcodec-dev libswscale-dev libavutil-dev
  libgtest-dev libgmock-dev libvalijson-dev libxtst-dev xvfb xauth
  fonts-inter fonts-noto-core fonts-noto-color-emoji
)

# Installs what is missing, asking through sudo where the person is not root.
install_dependencies() {
  local missing=() package
  for package in "${packages[@]}"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  if ! command -v apt-get >/dev/null; then
    echo "These Debian packages are needed: ${missing[*]}" >&2
    return 1
  fi
  local root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Run as root, or install first: ${missing[*]}" >&2; return 1; }
    root=(sudo)
  fi
  echo "Installing ${missing[*]}" >&2
  "${root[@]}" apt-get update -q >&2 &&
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" >&2
}

# Configures a preset and builds it, or only the targets named after it.
build_preset() {
  local preset=$1
  shift
  cmake --preset "$preset" >&2 && cmake --build --preset "$preset" ${1:+--target "$@"} >&2
}
