# shellcheck shell=bash
# What the scripts share: the list of packages, installing them, building. Sourced, never run.

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export ROOT

# Debian packages that the library, the command and their pictures need.
DRAW_PACKAGES=(
    g++ cmake ninja-build pkg-config
    libcairo2-dev libpango1.0-dev libfontconfig-dev libfreetype-dev libharfbuzz-dev libgdk-pixbuf-2.0-dev libcups2-dev
    libdeflate-dev libwebp-dev libcli11-dev libsimdjson-dev fonts-inter fonts-dejavu fonts-ipafont-gothic poppler-utils
    python3
)
# What building everything and testing it need.
BUILD_PACKAGES=(
    "${DRAW_PACKAGES[@]}" ccache libgtest-dev libgmock-dev libbenchmark-dev
    locales-all librsvg2-bin cups-daemon cups-client cups-filters
)
# What scripts/check needs on top.
CHECK_PACKAGES=(git clang-format clang clang-tidy binutils libglib2.0-dev libjpeg-dev libncurses-dev libx11-dev
    unixodbc-dev doxygen)
# What scripts/docs makes pages with.
DOCS_PACKAGES=(doxygen python3-markdown python3-pygments)
# What scripts/check-pages reads pages with.
PAGE_PACKAGES=(librsvg2-bin imagemagick libxml2-utils qpdf poppler-utils)
# What scripts/check-widgets builds and drives.
WIDGET_PACKAGES=(libgtkmm-4.0-dev qt6-base-dev libgl-dev xvfb xauth xdotool xclip openbox imagemagick at-spi2-core python3-pyatspi
    gir1.2-atspi-2.0 dbus adwaita-icon-theme)
# What scripts/fuzz needs on top.
FUZZ_PACKAGES=(clang libclang-rt-14-dev)
export DRAW_PACKAGES BUILD_PACKAGES CHECK_PACKAGES DOCS_PACKAGES PAGE_PACKAGES WIDGET_PACKAGES FUZZ_PACKAGES

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

apt_get() { as_root env DEBIAN_FRONTEND=noninteractive apt-get -y -o DPkg::Lock::Timeout=300 "$@" </dev/null; }

# read_line: the next line into `line`; while there is none, a word every 8 seconds, so that who waits sees that it goes on.
read_line() {
    local code part began=$SECONDS
    line=
    while true; do
        code=0
        IFS= read -r -t 8 part || code=$?
        line+=$part
        [[ $code -gt 128 ]] || return "$code"
        show_step "still at it ($((SECONDS - began)) s)"
    done
}

# A line that the next one takes the place of on a terminal.
show_step() { if [[ -t 2 ]]; then printf '\r\e[K   %.70s' "$1" >&2; else printf '   %s\n' "$1" >&2; fi; }
end_steps() { [[ ! -t 2 ]] || printf '\r\e[K' >&2; }

# What apt-get is about to do, and a line for each package that is fetched or set up.
show_progress() {
    local line all='?' ready=0
    while read_line; do
        case $line in
        *" newly installed,"*) all=${line#*, } all=${all%% *} ;;
        "Need to get "* | "After this operation,"*) printf '   %s\n' "$line" >&2 ;;
        "Setting up "*) show_step "${line%% (*} ($((++ready)) of $all)" ;;
        Get:* | Unpacking* | "Processing triggers"*) show_step "${line%% (*}" ;;
        esac
    done
    end_steps
}

# What a build does, and what its compiler says.
show_build() {
    local line
    while read_line; do
        case $line in
        "["*/*"]"* | "-- "*) show_step "$line" ;;
        "" | "Preset CMake variables:" | "  "[A-Z]*=\"*) ;;
        *) end_steps && printf '%s\n' "$line" ;;
        esac
    done
    end_steps
}

# missing_packages NAME...: prints those that aren't installed.
missing_packages() {
    local package
    for package in "$@"; do
        is_installed "$package" || echo "$package"
    done
}

# install_packages NAME...: installs those that are missing.
install_packages() {
    local missing errors
    mapfile -t missing < <(missing_packages "$@")
    if [[ ${#missing[@]} -eq 0 ]]; then
        return
    fi
    command -v apt-get >/dev/null || die "these Debian packages are needed: ${missing[*]}"
    can_be_root || die "run as root or with sudo, or install: apt-get install ${missing[*]}"
    say "installing ${missing[*]}"
    # Package lists that are missing or too old are fetched once.
    apt_get install --no-install-recommends "${missing[@]}" 2>/dev/null | show_progress && return
    apt_get update | show_progress
    errors=$(mktemp)
    apt_get install --no-install-recommends "${missing[@]}" 2>"$errors" | show_progress ||
        die "installing failed"$'\n'"$(cat "$errors")"
    rm -f "$errors"
}

# build PRESET [TARGET...]: configures and builds; without a target everything.
build() {
    local preset=$1 options=()
    shift
    # A single target, such as the command, can be built where the packages of the tests are missing.
    [[ $# -eq 0 ]] || is_installed libgtest-dev || options+=(-DMELKAR_BUILD_TESTS=OFF)
    [[ $# -eq 0 ]] || is_installed libbenchmark-dev || options+=(-DMELKAR_BUILD_BENCH=OFF)
    [[ $# -gt 0 ]] || set -- all
    say "building $* ($preset)"
    cd "$ROOT" || exit
    cmake --preset "$preset" "${options[@]}" 2>&1 | show_build || die "configuring failed"
    cmake --build --preset "$preset" --target "$@" 2>&1 | show_build || die "building failed"
}

public_headers() { grep -v '^#' "$ROOT/cmake/public_headers.txt"; }

# interface_pages OUTPUT XML: doxygen's pages on the headers for hosts, in OUTPUT/api, and what scripts/docs makes of them.
interface_pages() {
    local output xml layout
    mkdir -p "$1" "$2"
    output=$(realpath "$1") xml=$(realpath "$2") layout=$xml/layout.xml
    doxygen -l "$layout"
    # The way back to the other pages.
    sed -i 's|<tab type="mainpage".*|<tab type="user" url="../index.html" title="All pages"/>\n&|' "$layout"
    cd "$ROOT" || return
    {
        cat docs/Doxyfile && public_headers | sed 's/^/INPUT += /'
        printf '%s = %s\n' OUTPUT_DIRECTORY "$xml" XML_OUTPUT "$xml" HTML_OUTPUT "$output/api" LAYOUT_FILE "$layout"
    } | doxygen -
}

# block LANGUAGE NAME [FILE]: the file of that name as README.md has it; of another document the blocks without a name.
block() { awk -v head="\`\`\`$1${2:+ $2}" '/^```/ { inside = $0 == head; next } inside' "${3:-$ROOT/README.md}"; }
