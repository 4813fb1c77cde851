# SPDX-License-Identifier: MIT
# Sourced by ./run, ./test and the tools: installs the Debian packages that a step needs and are not there yet.

packages_build="g++ cmake ninja-build libcli11-dev nlohmann-json3-dev qt6-base-dev fonts-dejavu-core fonts-liberation pkg-config libfontconfig-dev libfreetype-dev libharfbuzz-dev libgdal-dev libboost-dev"
packages_test="fonts-droid-fallback libgtest-dev libgmock-dev strace valgrind locales gmt-common e2fsprogs hicolor-icon-theme poppler-utils python3 python3-ezdxf xvfb abigail-tools xz-utils git mandoc man-db bash-completion zsh fish"
packages_bench="libbenchmark-dev libsimpleini-dev libinih-dev libglib2.0-dev libboost-dev libsigc++-2.0-dev zlib1g-dev libdeflate-dev libeigen3-dev libglm-dev libpango1.0-dev git gmt"
packages_fuzz="clang libclang-rt-14-dev llvm"
packages_windows="g++-mingw-w64-x86-64-posix googletest wine wine64"
packages_lint="clang-format clang-tidy"
packages_manual="doxygen mkdocs mkdocs-material python3-pymdownx"
packages_packages="dpkg-dev file fakeroot lintian mmdebstrap"

prepare() { # PACKAGE...
    local missing=() package
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "Installing packages: ${missing[*]}"
    local as_root=()
    [ "$(id -u)" = 0 ] || as_root=(sudo)
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

step() { printf '\n== %s\n' "$*"; }
