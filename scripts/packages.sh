# shellcheck shell=bash
# Shell functions that the scripts share.  Sourced with ".".

# need_packages PACKAGE:PROBE...
# Installs the packages whose probe is missing.  A probe is a command; with a "/", a
# header; with a "/" at its start, a pattern for absolute paths.
need_packages() {
    local absent=() pair
    if (($# == 0)); then
        echo "need_packages: no packages are listed" >&2
        return 1
    fi
    for pair in "$@"; do
        has_probe "${pair#*:}" || absent+=("${pair%%:*}")
    done
    if ((${#absent[@]} > 0)); then
        install_packages "${absent[@]}"
    fi
}

has_probe() {
    if [[ $1 == /* ]]; then
        compgen -G "$1" >/dev/null
    elif [[ $1 == */* ]]; then
        [[ -e /usr/include/$1 || -e /usr/local/include/$1 ]]
    else
        command -v "$1" >/dev/null
    fi
}

install_packages() {
    local as_root=()
    if ((EUID != 0)); then
        as_root=(sudo)
    fi
    if ! command -v apt-get >/dev/null || ! command -v "${as_root[0]:-true}" >/dev/null; then
        echo "These packages (names of Debian) are missing and cannot be installed by this script: $*" >&2
        echo "Install them, for instance with: apt-get install $*" >&2
        exit 1
    fi
    echo "Installing $*" >&2
    apt_get update
    apt_get install -y --no-install-recommends "$@"
}

# apt_get ARGUMENT...: as root, with the words in as_root.  Waits up to ten minutes while
# another apt runs: apt-get itself waits for the lock of dpkg, but not for those of the
# package lists and the archives.
apt_get() {
    local errors status deadline=$((SECONDS + 600))
    while true; do
        status=0
        errors=$("${as_root[@]}" env LC_ALL=C DEBIAN_FRONTEND=noninteractive \
            apt-get -qq -o DPkg::Lock::Timeout=600 "$@" 2>&1 >/dev/null) || status=$?
        if ((status == 0 || SECONDS >= deadline)) || [[ $errors != *"E: Could not get lock"* ]]; then
            break
        fi
        sleep 1
    done
    [[ -z $errors ]] || echo "$errors" >&2
    return "$status"
}

build_packages=(cmake:cmake ninja-build:ninja g++:g++ libcli11-dev:CLI/CLI.hpp
    nlohmann-json3-dev:nlohmann/json.hpp)
fortran_packages=(gfortran:gfortran)
share_packages=(pkgconf:pkg-config libfuse3-dev:fuse3/fuse.h fuse3:fusermount3)
test_packages=("${build_packages[@]}" "${fortran_packages[@]}" "${share_packages[@]}"
    libbenchmark-dev:benchmark/benchmark.h valgrind:valgrind strace:strace
    python3:/usr/bin/python3)
# shellcheck disable=SC2034
package_packages=("${test_packages[@]}" binutils:readelf)
# shellcheck disable=SC2034
windows_packages=("${test_packages[@]}" g++-mingw-w64-x86-64-posix:x86_64-w64-mingw32-g++-posix
    gfortran-mingw-w64-x86-64-posix:x86_64-w64-mingw32-gfortran-posix wine:wine)
# shellcheck disable=SC2034
fuzz_packages=("${build_packages[@]}" clang:clang++
    libclang-rt-dev:/usr/lib/clang/*/lib/linux/libclang_rt.fuzzer-*.a)
# shellcheck disable=SC2034
docs_packages=(doxygen:doxygen mandoc:mandoc)
# shellcheck disable=SC2034
lint_packages=("${test_packages[@]}" clang-format:clang-format clang-tidy:clang-tidy
    pyflakes3:pyflakes3 mypy:mypy)
# shellcheck disable=SC2034
coverage_packages=("${test_packages[@]}" gcovr:gcovr)
# shellcheck disable=SC2034
bench_packages=("${build_packages[@]}" libbenchmark-dev:benchmark/benchmark.h python3:/usr/bin/python3)
# shellcheck disable=SC2034
bench_peers=(strace:strace python3-matplotlib:/usr/lib/python3/dist-packages/matplotlib
    pkgconf:pkg-config libphysfs-dev:/usr/include/physfs.h
    libkpathsea-dev:kpathsea/kpathsea.h "qtbase5-dev:/usr/include/*/qt5/QtCore/QDir")
