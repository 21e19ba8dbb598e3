#!/usr/bin/env bash
# check_symbols.sh LIBRARY LIST: the names that LIBRARY, an ELF library or a DLL, exports are those of LIST, no more
# and no fewer.
set -euo pipefail
export LC_ALL=C

case $1 in
    *.dll)
        # A std::size_t is another type there, and names of types are not exported.
        listed() { sed -e '/^typeinfo name/d' -e 's/unsigned long/& long/g' "$1"; }
        exported() { objdump -p "$1" | sed -n '/Name Pointer. Table/,/^$/s/^\s*\[ *[0-9]*\] //p' | c++filt; }
        ;;
    *)
        listed() { cat "$1"; }
        exported() { nm --dynamic --defined-only --demangle --format=just-symbols "$1"; }
        ;;
esac
diff <(listed "$2" | grep -v '^#' | sort -u) <(exported "$1" | sort -u) ||
    { echo "exported symbols (>) differ from the list (<)" >&2; exit 1; }
