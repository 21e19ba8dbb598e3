#!/usr/bin/env bash
# Usage: analyze_test.sh BINARY DATADIR
set -u

analyze=$1
light=$2/nist_michelso.csv
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failures=0

fail() {
    printf 'FAILED: %s\n' "$@" >&2
    failures=$((failures + 1))
}

# prints REGEX ARGUMENT...: success, and a line of the output matches.
prints() {
    local regex=$1 output
    shift
    output=$("$analyze" "$@" 2>&1) && grep -Eq -- "$regex" <<<"$output" || fail "$regex from $*" "$output"
}

# refuses REGEX ARGUMENT...: status 2, no output, and one line of message, the whole of which matches.
refuses() {
    local regex=$1 message status
    shift
    message=$("$analyze" "$@" 2>&1 >"$scratch/out")
    status=$?
    [[ $status == 2 && ! -s $scratch/out && $message =~ ^analyze:\ [^$'\n']*$ && $message =~ $regex$ ]] ||
        fail "$regex from $*" "$message" "status $status"
}

# refuses_file CONTENT REGEX: the same for column x of a file.
refuses_file() {
    printf "$1" >"$scratch/x.csv"
    refuses "x.csv$2" report "$scratch/x.csv" --column x
}

# Certified: mean 299.8524, sd 0.0790105478190518, of which 13 digits outlast the reading of the data.
prints ' n +100$' report "$light" --column x
prints ' mean +299\.8524000000$' report "$light" --column x
prints ' sd +0\.07901054781905$' report "$light" --column x
prints ' first quartile +299\.8025000000$' report "$light" --column x
prints ' 95 % from +299\.84000$' report "$light" --column x
prints ' 80 % to +299\.86000$' report "$light" --column x --confidence 0.8
prints ' modes +299\.81, 299\.88 \(10 times\)$' report "$light" --column x
prints ' 5 % trimmed mean +299\.8528888889$' report "$light" --column x
prints '^  o    o +\|-+\[=+\(M\+=\)=+\]-+\| +o$' report "$light" --column x
prints 'sigma taken from the sample$' report "$light" --column x

# mean -+ 1.959964 * 0.008, and the normal tails of z = 0.3
z=(report "$light" --column x --mu 299.85 --sigma 0.08)
prints '95 % confidence interval for the mean$' "${z[@]}"
prints ' from +299\.8367203$' "${z[@]}"
prints ' to +299\.8680797$' "${z[@]}"
prints 'mean < 299\.85 +0\.300000 +0\.617911$' "${z[@]}"
prints 'mean not equal to 299\.85 +0\.300000 +0\.764177$' "${z[@]}"
prints 'mean > 299\.85 +0\.300000 +0\.382089$' "${z[@]}"
prints '99\.9 % confidence' "${z[@]}" --confidence 0.999

# What the reader accepts: byte order mark, CR LF, blank lines, quotes, blanks, signs, exponents, no last line end.
printf '\xEF\xBB\xBFx,"a ""b"", c"\r\n\r\n +1 ,"two\r\nlines"\r\n" -2e0",\r\n4,5' >"$scratch/good.csv"
prints ' mean +1\.000000000000$' report "$scratch/good.csv" --column x
refuses 'good.csv, line 3, column .*: .two\?\?lines. is not a number' report "$scratch/good.csv" --column 'a "b", c'

# One value has its place in the middle, an infinite mean has none; of two columns that rise together one is curved.
printf 'x\n3\n' >"$scratch/one.csv"
prints '^ +M +$' report "$scratch/one.csv" --column x --sigma 1
printf 'x\n1.7e308\n-1.7e308\n' >"$scratch/huge.csv"
prints ' mean +-inf$' report "$scratch/huge.csv" --column x --sigma 1
printf 'x,y\n1,1\n2,4\n3,9\n4,16\n' >"$scratch/pairs.csv"
prints ' Pearson +0\.9843740387$' report "$scratch/pairs.csv" --column x --with y
prints ' Spearman +1\.000000000$' report "$scratch/pairs.csv" --column x --with y
refuses "pairs.csv: no column 'z'; .*" report "$scratch/pairs.csv" --column x --with z

refuses 'none.csv: No such file or directory' report "$scratch/none.csv" --column x
refuses_file '' ': the file has no heading line'
refuses_file 'x\n\n' ": column 'x' is empty"
refuses_file 'y,z\n1,2\n' ": no column 'x'; the columns are y, z"
refuses_file 'x,y,x\n1,2,3\n' ": more than one column 'x'"
refuses_file 'x,y\n1,2\n\n3\n' ', line 4: too few cells, 1 for 2 columns'
refuses_file 'x\n1\n2,5\n' ', line 3: too many cells, 2 for 1 columns'
refuses_file 'x,y\n1,2\n"3,4\n5,6\n' ', line 3: a quotation mark is misplaced or missing'
refuses_file 'y,x\n"\n\n",1\r\n\r\n"\r\n",abc\r\n' ", line 7, column 'x': 'abc' is not a number"
for cell in '""' nan inf 1e999 0x10 +-1 '1 2' 1.5m; do
    refuses_file "x\n1\n$cell\n" ", line 3, column 'x': '.*' is not a number"
done
refuses_file 'x\n7\n7\n' ": column 'x' has no positive standard deviation; give one with --sigma"

refuses 'A subcommand is required'
refuses '--column is required' report "$light"
refuses "--mu: 'inf' is not a number" "${z[@]:0:4}" --mu inf
for sigma in 0 -1 nan inf; do
    refuses "--sigma: '$sigma' is not a positive number" "${z[@]:0:4}" --sigma "$sigma"
done
for confidence in 0 1 95 nan; do
    refuses "--confidence: '$confidence' is not between 0 and 1" "${z[@]:0:4}" --confidence "$confidence"
done
prints '^Usage: analyze .*SUBCOMMAND' --help
prints '^Usage: analyze report .*FILE' report --help

gamma=(distribution Gamma --parameters 2,0.5,1)
prints '^Gamma\(shape 2, scale 0\.5, threshold 1\)$' "${gamma[@]}" --x 2
prints '^ +x +density +P\(X <= x\) +P\(X > x\)$' "${gamma[@]}" --x 2
prints '^ +2 +0\.541341133 +0\.593994150 +0\.406005850$' "${gamma[@]}" --x 1,2
prints '^ +0\.59399415029016 +2\.00000000$' "${gamma[@]}" --p 0.5,0.59399415029016
prints '^ +x +P\(X = x\) +P\(X <= x\) +P\(X >= x\)$' distribution Binomial --parameters 10,0.5 --x 3
prints '^ +3 +0\.117187500 +0\.171875000 +0\.945312500$' distribution Binomial --parameters 10,0.5 --x 3
prints '^ +-1 +0\.241970725 ' distribution Normal --parameters 0,1 --x -1
prints '^ +3 +not defined +0\.' distribution ChiSq --parameters 4,6 --x 3
refuses "no distribution 'Gama'; the distributions are Beta, .*, Weibull" distribution Gama --x 1
refuses 'Gamma has 3 parameters, not 2: shape, scale, threshold' distribution Gamma --parameters 2,0.5 --x 1
refuses 'Binomial: n = 2.5 is not a whole number, or too large' distribution Binomial --parameters 2.5,0.5 --x 1
refuses "Normal\\(mean 0, sd 0\\) at 1: Float exception: divide by zero." distribution Normal --parameters 0,0 --x 1
refuses "'one' is not a number" "${gamma[@]}" --x 1,one
refuses 'give either --x or --p' "${gamma[@]}"
refuses 'give either --x or --p' "${gamma[@]}" --x 1 --p 0.5

if [[ -e /dev/full ]]; then
    message=$("$analyze" report "$light" --column x 2>&1 >/dev/full)
    [[ $? == 1 && $message == 'analyze: the output could not be written' ]] || fail "full disk" "$message"
fi

exit $((failures > 0))
