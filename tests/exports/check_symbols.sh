#!/usr/bin/env bash
# check_symbols.sh LIBRARY LIST: the names that LIBRARY exports are those of LIST, no more and no fewer.
set -euo pipefail
export LC_ALL=C
diff <(grep -v '^#' "$2" | sort -u) <(nm --dynamic --defined-only --demangle --format=just-symbols "$1" | sort -u) ||
    { echo "exported symbols (>) differ from the list (<)" >&2; exit 1; }
