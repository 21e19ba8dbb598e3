#!/usr/bin/env bash
# check_packages.sh FOLDER: the packages in FOLDER hold the files of contents_linux.txt, no more and no fewer, the
# Debian packages say of themselves what stands there, and the consumer builds against each kind, unpacked, and runs.
set -euo pipefail
export LC_ALL=C
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
cd "$1"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Mode, path and target of each file and link of a tar archive.
files() {
    tar --list --verbose | awk '!/^d/ { $2 = $3 = $4 = $5 = ""; print }' | tr --squeeze-repeats ' ' | sort --key=2
}

# Of the packages of the system the names alone: their versions are those of the machine that built.
control() {
    dpkg-deb --field "$1" Package Version Architecture Section Depends | sed -E 's/ \(>= [^)]*\)//g'
}

contents() {
    local package
    for package in *.tar.gz *.deb; do
        printf '\n%s\n' "$package"
        case $package in
            *.deb)
                control "$package"
                dpkg-deb --fsys-tarfile "$package" | files
                ;;
            *) gunzip --stdout "$package" | files ;;
        esac
    done
}

# consume NAME PREFIX: programs built by find_package and by pkg-config with the library under PREFIX run.
consume() {
    local build=$work/$1-consumer flags
    cmake -S "$here/../consumer" -B "$build" -G Ninja -DCMAKE_PREFIX_PATH="$2" >"$work/log" &&
        cmake --build "$build" >>"$work/log" || { cat "$work/log" && exit 1; }
    echo "$1, by find_package:"
    "$build/consumer"
    PKG_CONFIG_PATH=$(dirname "$(find "$2" -name zul.pc)")
    export PKG_CONFIG_PATH
    read -ra flags <<<"$(pkg-config --cflags --libs zul)"
    g++ -std=c++17 "$here/../consumer/main.cpp" "${flags[@]}" -o "$work/by-pkg-config"
    echo "$1, by pkg-config:"
    LD_LIBRARY_PATH=$(pkg-config --variable=libdir zul) "$work/by-pkg-config"
}

diff "$here/contents_linux.txt" <(contents) || { echo "contents of packages (>) differ from the list (<)" && exit 1; }
mkdir "$work/archive" "$work/debian"
tar --extract --file ./*.tar.gz --directory "$work/archive" --strip-components 1
consume archive "$work/archive"
for package in *.deb; do dpkg-deb --extract "$package" "$work/debian"; done
consume debian "$work/debian/usr"
