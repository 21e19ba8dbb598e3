#!/usr/bin/env bash
# check_packages.sh FOLDER/linux|windows: the packages there hold the files of contents_<system>.txt, no more and no
# fewer, the Debian ones say of themselves what stands there, and the consumer builds against each kind, unpacked,
# and runs; the Windows one under wine. On Linux the consumer also builds with the sources in its own build, to the same
# library.
set -euo pipefail
export LC_ALL=C
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
system=$(basename "$1")
cd "$1"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

compiler=g++ cmake_options=() link_options=() run=()
if [[ $system == windows ]]; then
    compiler=x86_64-w64-mingw32-g++-posix
    cmake_options=(-DCMAKE_SYSTEM_NAME=Windows -DCMAKE_EXE_LINKER_FLAGS=-static)
    link_options=(-static-libgcc -static-libstdc++)
    run=(wine)
    export WINEPREFIX=${WINEPREFIX:-$(realpath "$here/../../build")/wine} WINEDEBUG=${WINEDEBUG:--all}
    threads=$($compiler -print-file-name=libwinpthread-1.dll)
    export WINEPATH="$work/archive/bin;${threads%/*}"
fi

# Of the manual, whose files are Doxygen's affair, those that are ours; ./dev docs looks at the rest.
without_manual() { awk '!/\/html\// || /\/html\/(index\.html|search\/index\.js|(formulas\/|search\/)?copyright)$/'; }

# Mode, path and target of each file and link of a tar archive.
files() {
    tar --list --verbose | awk '!/^d/ { $2 = $3 = $4 = $5 = ""; print }' | tr --squeeze-repeats ' ' | sort --key=2 |
        without_manual
}

# Of the packages of the system the names alone: their versions are those of the machine that built.
control() {
    dpkg-deb --field "$1" Package Version Architecture Section Depends | sed -E 's/ \(>= [^)]*\)//g'
}

contents_linux() {
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

contents_windows() { unzip -Z1 ./*.zip | grep -v '/$' | sort | without_manual; }

# Local links of the documents under a folder lead to files there.
check_links() {
    local document target dead=""
    while IFS= read -r document; do
        while IFS= read -r target; do
            [[ $target == *:* || -e $(dirname "$document")/${target%%#*} ]] || dead+="$document: $target"$'\n'
        done < <(grep -o ']([^)]*)' "$document" | sed 's/^](//; s/)$//')
    done < <(find "$1" -name '*.md')
    [[ -z $dead ]] || { printf 'dead links:\n%s' "$dead" && exit 1; }
}

# Through a file: what wine leaves running would hold a pipe open.
show() {
    "$@" >"$work/output" 2>&1 </dev/null || { cat "$work/output" && exit 1; }
    cat "$work/output"
}

# consume NAME PREFIX: programs built by find_package and by pkg-config with the library under PREFIX run.
consume() {
    local build=$work/$1-consumer flags
    {
        cmake -S "$here/../consumer" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" "${cmake_options[@]}" \
            -DCMAKE_PREFIX_PATH="$2" && cmake --build "$build"
    } >"$work/log" || { cat "$work/log" && exit 1; }
    echo "$1, by find_package:"
    show "${run[@]}" "$build"/consumer*
    PKG_CONFIG_PATH=$(dirname "$(find "$2" -name zul.pc)")
    export PKG_CONFIG_PATH
    read -ra flags <<<"$(pkg-config --cflags --libs zul)"
    $compiler -std=c++17 "$here/../consumer/main.cpp" "${flags[@]}" "${link_options[@]}" -o "$work/by-pkg-config.exe"
    echo "$1, by pkg-config:"
    LD_LIBRARY_PATH=$(pkg-config --variable=libdir zul) show "${run[@]}" "$work/by-pkg-config.exe"
}

# The library in the build of a host, from another folder and without the compilers' cache, is that of the archive, byte
# for byte. Program and library go to the host's folder, and neither installation nor packages of the library come with
# them.
consume_sources() {
    local sources=$work/sources build=$work/from-sources found
    echo "sources, by add_subdirectory: silent, a minute or two"
    mkdir "$sources"
    (cd "$here/../.." &&
        git ls-files -z -- CMakeLists.txt cmake include src | xargs -0 cp --parents --target-directory="$sources")
    {
        cmake -S "$here/../consumer" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_COMPILER_LAUNCHER= \
            -DCMAKE_BUILD_TYPE=Release -DFROM_SOURCES="$sources" && cmake --build "$build"
    } >"$work/log" || { cat "$work/log" && exit 1; }
    show "$build/programs/consumer"
    strip -o "$work/libzul.so" "$build/programs/libzul.so"
    cmp "$work/libzul.so" "$work/archive/lib/libzul.so"
    cmake --install "$build" --prefix "$work/host" >/dev/null
    found=$(ls "$work/host" "$build"/CPack*.cmake 2>/dev/null || true)
    [[ -z $found ]] || { echo "left with the host:" "$found" && exit 1; }
}

diff "$here/contents_$system.txt" <("contents_$system") ||
    { echo "contents of packages (>) differ from the list (<)" && exit 1; }
mkdir "$work/archive" "$work/debian"
if [[ $system == windows ]]; then
    unzip -q ./*.zip -d "$work"
    mv "$work"/zul-* -T "$work/archive"
else
    tar --extract --file ./*.tar.gz --directory "$work/archive" --strip-components 1
    for package in *.deb; do dpkg-deb --extract "$package" "$work/debian"; done
    consume debian "$work/debian/usr"
    consume_sources
fi
check_links "$work"
consume archive "$work/archive"
