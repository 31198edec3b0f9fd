# shellcheck shell=bash
# What the scripts share: the list of packages, installing them, building. Sourced, never run.

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export ROOT

# Debian packages that building and testing need.
BUILD_PACKAGES=(
    g++ cmake ninja-build pkg-config ccache
    libcairo2-dev libpango1.0-dev libfontconfig-dev libfreetype-dev libharfbuzz-dev libgdk-pixbuf-2.0-dev libcups2-dev
    libcli11-dev libgtest-dev libgmock-dev libbenchmark-dev
    fonts-dejavu fonts-ipafont-gothic locales-all poppler-utils librsvg2-bin
    cups-daemon cups-client cups-filters
)
# What scripts/check needs on top.
CHECK_PACKAGES=(git clang-format clang binutils libglib2.0-dev libjpeg-dev libncurses-dev)
export BUILD_PACKAGES CHECK_PACKAGES

say() { printf '== %s\n' "$*"; }

die() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

is_installed() { [[ $(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]; }

# Runs a command as root, by sudo if need be. sudo must not ask: nobody may be there to answer.
as_root() {
    if [[ $(id -u) -eq 0 ]]; then
        "$@"
    else
        sudo -n "$@"
    fi
}

can_be_root() { [[ $(id -u) -eq 0 ]] || { command -v sudo >/dev/null && sudo -n true 2>/dev/null; }; }

apt_get() { as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300 "$@" </dev/null >&2; }

# install_packages NAME...: installs those that are missing.
install_packages() {
    local missing=() package
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    if [[ ${#missing[@]} -eq 0 ]]; then
        return
    fi
    command -v apt-get >/dev/null || die "these Debian packages are needed: ${missing[*]}"
    can_be_root || die "run as root or with sudo, or install: apt-get install ${missing[*]}"
    say "installing ${missing[*]}"
    # Package lists that are missing or too old are fetched once.
    apt_get install -y --no-install-recommends "${missing[@]}" 2>/dev/null && return
    apt_get update
    apt_get install -y --no-install-recommends "${missing[@]}"
}

# build PRESET [TARGET]: configures and builds; without a target everything.
build() {
    local preset=$1 target=${2:-all} output
    say "building $target ($preset)"
    cd "$ROOT" || exit
    output=$(cmake --preset "$preset" 2>&1) || die "configuring failed"$'\n'"$output"
    cmake --build --preset "$preset" --target "$target"
}
