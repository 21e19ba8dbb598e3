#!/usr/bin/env bash
# check_structure.sh SRC LIST: the files of SRC include what LIST allows to their folders and nothing else, none
# includes itself by way of others, none has more than 400 lines, and none calls the C library's elementary functions,
# whose last digits are the platform's: src/elementary has the library's own.
set -euo pipefail
export LC_ALL=C
list=$(realpath "$2")
cd "$1"

find . -name '*.h' -o -name '*.cpp' | sed 's|^\./||' | sort | xargs awk -v list="$list" -v longest=400 '
    function fault(text) { print text; faults++ }

    function folder(file) { sub(/\/?[^\/]*$/, "", file); return file }

    # The folder of the list whose rules hold in this one: itself or the nearest around it.
    function floor_of(path) {
        while (path != "" && !(path in floors)) path = folder(path)
        return path
    }

    function read_list(    line, owner, i, n, words) {
        while ((getline line < list) > 0) {
            if (line ~ /^(#|$)/) continue
            n = split(line, words)
            owner = words[1]
            sub(/:$/, "", owner)
            if (owner ~ /\.(h|cpp)$/) {
                for (i = 2; i <= n; i++) exceptions[owner, words[i]] = 0
                continue
            }
            floors[owner]
            allowed[owner, owner]
            for (i = 2; i <= n; i++) {
                if (words[i] !~ /^zul\// && !(words[i] in floors)) fault("floors: " owner " is below " words[i])
                allowed[owner, words[i]]
            }
        }
    }

    function check(from, to,    below) {
        if (to == "zul/export.h") return
        below = to ~ /^zul\// ? to : floor_of(folder(to))
        if ((floor_of(folder(from)), below) in allowed) return
        if ((from, to) in exceptions) exceptions[from, to] = 1
        else fault(from " includes " to)
    }

    function check_function(file, name) {
        if ((file, name) in exceptions) exceptions[file, name] = 1
        else fault(file " calls " name)
    }

    # Walks what a file includes; what is met on the way to itself is a circle.
    function walk(file, way,    i) {
        state[file] = "on the way"
        for (i = 1; i <= count[file]; i++) {
            if (state[includes[file, i]] == "on the way") fault("a circle: " way file " > " includes[file, i])
            else if (state[includes[file, i]] == "") walk(includes[file, i], way file " > ")
        }
        state[file] = "done"
    }

    BEGIN { read_list() }
    FNR == 1 { files[++fileCount] = FILENAME; known[FILENAME] }
    FNR == longest + 1 { fault(FILENAME " has more than " longest " lines") }
    /^[ \t]*#[ \t]*include[ \t]*"/ {
        split($0, parts, "\"")
        includes[FILENAME, ++count[FILENAME]] = parts[2]
    }
    {
        code = $0
        sub(/\/\/.*/, "", code)
        while (match(code, /std::(sqrt|exp2?|expm1|log(10|1p|2|b)?|pow|a?(sin|cos|tan)h?|atan2|erfc?|[lt]gamma|hypot|cbrt|fma)[^a-z0-9_]/)) {
            check_function(FILENAME, substr(code, RSTART, RLENGTH - 1))
            code = substr(code, RSTART + RLENGTH)
        }
    }
    END {
        if (fileCount == 0) fault("no files")
        for (f = 1; f <= fileCount; f++) {
            file = files[f]
            if (floor_of(folder(file)) == "") { fault(file " is in no folder of the list"); continue }
            for (i = 1; i <= count[file]; i++) {
                if (includes[file, i] ~ /^zul\// || includes[file, i] in known) check(file, includes[file, i])
                else fault(file " includes " includes[file, i] ", which is no file of src")
            }
            if (state[file] == "") walk(file, "")
        }
        for (pair in exceptions) {
            split(pair, names, SUBSEP)
            if (!exceptions[pair]) fault(names[1] " needs no exception for " names[2])
        }
        exit faults > 0
    }' >&2
