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

# refuses REGEX ARGUMENT...: status 2, no output, and one line of message that ends so, but for a pointer to the help.
refuses() {
    local regex=$1 message status
    shift
    message=$("$analyze" "$@" 2>&1 >"$scratch/out")
    status=$?
    [[ $status == 2 && ! -s $scratch/out && $message =~ ^analyze:\ [^$'\n']*$ && ${message%; see \'*} =~ $regex$ ]] ||
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

# reports ARGUMENT... -- REGEX...: success, and a line of the output matches each of them.
reports() {
    local command=() output regex
    while [[ $1 != -- ]]; do command+=("$1") && shift; done
    output=$("$analyze" "${command[@]}" 2>&1) || fail "${command[*]}" "$output"
    for regex in "${@:2}"; do grep -Eq -- "$regex" <<<"$output" || fail "$regex from ${command[*]}" "$output"; done
}

# Values of R 4.2: t.test, binom.test, prop.test, fisher.test, cor.test, chisq.test, qchisq, fitdistr for Weibull; the
# formulas of Bonett, of Agresti and Caffo, of the runs and of mid-p written out there. A^2 is the library's.
# Student's sleep data, the yields of plants, the cars of 1974.
sleep=$2/sleep.csv plants=$2/plantgrowth.csv cars=$2/mtcars.csv
one=(t "$plants" --column weight --mu 5)
reports "${one[@]}" -- ' t +0\.570225$' ' df +29$' ' p +0\.572917$' ' H1: mean not equal to 5$'
reports "${one[@]}" --alternative greater -- ' at least +4\.8554786$' ' p +0\.286458$' ' H1: mean > 5$'
reports "${one[@]}" --alternative less --confidence 0.9 -- '90 % confidence bound' ' at most +5\.2408891$' ' p +0\.713542$'
reports paired "$sleep" --column drug1 --with drug2 -- ' mean difference +-1\.5800000$' ' t +-4\.06213$' \
    ' from +-2\.4598858$' ' to +-0\.70011424$' ' p +0\.00283289$'
pooled=(two-sample "$plants" --column weight --by group --groups ctrl,trt1 --pooled)
reports "${pooled[@]}" -- ' ctrl +10 +5\.0320000' ' from +-0\.28330034$' ' t +1\.19126$' ' df +18$' ' p +0\.249023$'
reports "${pooled[@]}" --difference 1 -- ' H0: difference = 1$' ' t +-2\.01968$'
# Welch's df, 17.776 there, are rounded down.
reports two-sample "$sleep" --column drug1 --with drug2 -- ' t +-1\.86081$' ' df, rounded down +17$' ' p +0\.0801572$'
reports two-sample "$cars" --column mpg --by am -- '^  0 +19 +17\.147368' '^  1 +13 +24\.392308' ' t +-3\.76712$'
reports proportion "$cars" --column am --exact -- ' 13 of 32$' ' from +0\.23698410$' ' to +0\.59355075$' ' p +0\.377086$'
reports proportion "$cars" --column cyl --event 4.0 --proportion 0.4 -- ' 11 of 32$' ' from +0\.20410438$' ' p +0\.516003$'
reports proportion "$cars" --column cyl --event 4 --continuity --alternative less -- ' z +-1\.59099$' ' p +0\.0558059$'
reports proportion "$cars" --column am --mid-p --alternative less -- ' p +0\.148103$'
both=(two-proportions "$cars" --column vs --by am)
reports "${both[@]}" --pooled -- ' from +-0\.51714596$' ' to +0\.17706499$' ' p +0\.340943$' ' Fisher.s exact +0\.472697$'
reports "${both[@]}" --continuity -- ' from +-0\.58192329$' ' z +-0\.960150$'
reports "${both[@]}" --agresti-caffo -- ' from +-0\.48066475$'
reports variance "$cars" --column mpg --variance 36 -- ' from +23\.346529$' ' to +64\.203431$' \
    ' chi-square +31\.2791$' ' p +0\.904428$' ' from +22\.500949$' ' to +66\.540801$'
# var.test, bartlett.test, and the analysis of variance of the distances from the medians.
yields=(two-variances "$plants" --column weight --by group)
reports "${yields[@]}" --groups ctrl,trt1 -- ' ratio +0\.53974307$' ' from +0\.13406454$' ' to +2\.1730025$' \
    ' p +0\.371896$' ' F +0\.620263$' ' p +0\.441198$'
reports "${yields[@]}" --groups trt1,ctrl --ratio 2 --alternative greater -- ' H0: ratio = 2$' ' F +0\.926367$'
refuses 'needs two values or more' "${yields[@]:0:4}" --by weight --groups 4.17,5.58
sprays=(variances "$2/insectsprays.csv" --column count --by spray)
reports "${sprays[@]}" -- ' chi-square +25\.9598$' ' p +9\.08512e-05$' ' F +3\.82136$' ' p +0\.00422279$' \
    '^  E +12 +1\.7320508 ' '^  E +\(-+\+-+\) +$'
refuses 'all values of a sample are equal' variances "$cars" --column am --by am
refuses "column 'gear' has a single group" variances <(printf 'x,gear\n1,4\n2,4\n') --column x --by gear
reports runs "$light" --column x -- ' K, the mean +299\.8524$' ' runs +28$' ' expected runs +50\.500000$' ' p +4\.89922e-06$'
reports fit "$cars" --column mpg -- ' normal +0\.588867 +p = 0\.120737  mean 20\.0906 \(1\.05\), sd 5\.93203' ' p < 0\.0025 ' \
    ' Weibull +0\.627318 +p = 0\.0947927  shape 3\.57945 \(0\.470\), scale 22\.2875 \(1\.17\)$' \
    '^Percentiles of the largest extreme distribution, 95 %'
reports fit "$2/ball_bearings.csv" --column millions_of_revolutions --confidence 0.9 -- \
    ' gamma +0\.215296 +- +shape 4\.02471 \(1\.14\), scale 17\.9444 \(5\.42\)$' ' 50 % +63\.4583 +53\.0618 +75\.8918$' \
    ' exponential 2 +1\.34731 +- +scale 56\.8109 \(12\.1\), threshold 15\.4100 \(2\.53\)$'
reports fit "$sleep" --column drug2 -- 'exponential, .*gamma.* need positive values$' ' Weibull 3, gamma 3: .* no maximum$'
reports table "$2/mendel_peas.csv" --column count --proportions ratio --labels seed -- ' chi-square +0\.470024$' \
    ' df +3$' ' p +0\.925426$' 'round yellow +315 +312\.750 +0\.0161871$'
reports report "$cars" --column mpg --with wt -- ' p +1\.29396e-10$' ' p +1\.48759e-11$'

# Of chisq.test, prop.trend.test, cor, mantelhaen.test, fisher.test, mcnemar.test.
reports crosstab "$2/titanic.csv" --rows Class --columns Survived --counts Freq -- ', total 2201$' \
    '^  3rd +528 +178 +706$' '^    row % +74\.79 +25\.21 +$' ' Pearson chi-square +190\.401$' ' df +3$' ' p +4\.99993e-41$' \
    "trend of the share of 'No' " ' z +12\.7325$' ' tau-b +-0\.224474 \(' " Spearman's rho +-0\.242374$"
reports crosstab "$2/ucbadmissions.csv" --rows Admit --columns Gender --strata Dept --counts Freq -- \
    ' Pearson chi-square +92\.2053$' '^  A +0\.34921205$' ' Mantel-Haenszel +1\.52461$' ' with continuity +1\.42695$' \
    ' p +0\.232263$' ' common odds ratio +0\.90469683$' ' from +0\.77190736$' ' to +1\.0603298$'
reports crosstab "$2/tea_tasting.csv" --rows guess --columns truth --counts Freq -- ' p, odds ratio > 1 +0\.242857$' \
    ' p, two-sided +0\.485714$' ' expected < 5 +4$'
reports crosstab "$2/approval.csv" --rows first --columns second --counts Freq -- ' with correction +16\.8178$' \
    ' kappa +0\.699593 \(0\.0179792\)$' ' odds ratio +35\.083721$'
# Each line counts once; numbers ascend.
reports crosstab "$cars" --rows cyl --columns gear -- '^  cyl +3 +4 +5 +total$' '^  8 +12 +0 +2 +14$' ' df +4$'
refuses 'strata need two rows and two columns' crosstab "$cars" --rows cyl --columns gear --strata am
refuses 'a count is negative' crosstab "$sleep" --rows drug1 --columns drug2 --counts drug1
prints 'for one column against another: crosstab' table --help
# Values of R 4.2: binom.test, wilcox.test with exact = FALSE, kruskal.test, chisq.test, friedman.test. The exact p are
# 2 / 512, by counting, and the library's.
darwin=(wilcoxon "$2/darwin_maize.csv" --column difference)
reports sign "$2/darwin_maize.csv" --column difference -- '^Sign test .*, exact$' ' 2, 0, 13$' ' p +0\.00738525$' \
    ' next outer confidence +96\.4844 %$'
reports "${darwin[@]}" --normal -- '^Wilcoxon .*, normal approximation$' ' W +96$' ' p +0\.0437723$'
reports "${darwin[@]}" -- 'difference., exact$' ' from +4\.0000000$' ' achieved confidence +95\.2087 %$'
reports wilcoxon "$sleep" --column drug1 --with drug2 -- ' values used +9$' ' W +0$' ' p +0\.00390625$'
reports wilcoxon "$sleep" --column drug1 --with drug2 --normal -- ' p +0\.00909070$'
ozone=(mann-whitney "$2/airquality.csv" --column Ozone --by Month --groups 5,8)
reports "${ozone[@]}" --normal -- "^Mann-Whitney test of 'Ozone' by 'Month', normal" '^  5, n +26$' ' u +127\.5$' ' the ties +0\.000120808$'
reports "${ozone[@]}" --alternative less -- ', exact$' ' at most ' ' H1: shift < 0$' ' achieved confidence +95\.'
reports kruskal-wallis "$2/airquality.csv" --column Ozone --by Month -- ' ties +29\.2666$' ' p, .* 6\.90071e-06$'
reports kruskal-wallis "$2/insectsprays.csv" --column count --by spray -- ' ties +54\.6913$' ' p, .* 1\.51084e-10$'
reports mood "$2/insectsprays.csv" --column count --by spray -- ' chi-square +60\.9915$' ' p, .* 7\.58171e-12$'
orchard=(friedman "$2/orchardsprays.csv" --column decrease --by treatment)
reports "${orchard[@]}" --blocks rowpos -- ' ties +45\.8087$' ' p, .* 9\.52426e-08$' '^  H +58\.5 '
refuses "line 15, column 'treatment': block '2' has a second value of 'A'" "${orchard[@]}" --blocks decrease
printf 'x,g\n5,a\n5,b\n,b\n5,b\n' >"$scratch/equal.csv"
refuses 'values that differ' mann-whitney "$scratch/equal.csv" --column x --by g
refuses 'the Kruskal-Wallis test needs values that differ' kruskal-wallis "$scratch/equal.csv" --column x --by g
refuses "column 'x' has a single group" mood "$scratch/equal.csv" --column x --by x

# Exact p by counting: of the C(6, 3) = 20 orders of three values on each side 2 have two runs.
printf 'x,g,w\n1,a,0.5\n2,b,1\n3,a,\n7,b,2\n8,c,3\n9,a,4\n' >"$scratch/six.csv"
refuses "block '1' has no value of 'b'" friedman "$scratch/six.csv" --column x --by g --blocks x
reports runs "$scratch/six.csv" --column x --k 5 --exact -- ' p +0\.200000$'
reports fit "$scratch/six.csv" --column x -- 'Weibull .* p > 0\.25 '
printf 'x\n1\n2\n4\n' >"$scratch/three.csv"
reports fit "$scratch/three.csv" --column x -- ' lognormal 3, .* need four values$'
reports table "$scratch/six.csv" --column x --proportions x -- ' expected < 5 +3$'
reports two-sample "$scratch/six.csv" --column x --with w -- '^  x +6 ' '^  w +5 '
printf 'x,y\n5,\n5,0\n' >"$scratch/five.csv"
refuses '.x.: a t test needs two values or more that differ' t "$scratch/five.csv" --column x
refuses 'each sample needs two values or more' two-sample "$scratch/five.csv" --column x --with y
refuses 'the runs test needs values on both sides of 5' runs "$scratch/five.csv" --column x
refuses 'a fit needs two values or more that differ' fit "$scratch/five.csv" --column x
refuses 'the proportions must be positive' table "$cars" --column mpg --proportions am
refuses 'a count is negative' table "$sleep" --column drug1
refuses "column 'group' has 3 groups, 'ctrl', 'trt1', 'trt2'; .* --groups" two-sample "$plants" --column weight --by group
refuses "no group 'x'; the groups are 'ctrl', 'trt1', 'trt2'" "${pooled[@]:0:6}" --groups ctrl,x
refuses 'give two different groups .*' "${pooled[@]:0:6}" --groups ctrl,ctrl
refuses 'give the second column with --with, .* with --by' "${pooled[@]:0:4}"
refuses "--alternative: 'more' is none of less, two-sided, greater" "${one[@]}" --alternative more
refuses "--difference: '1' is not between -1 and 1" "${both[@]}" --difference 1

refuses 'none.csv: No such file or directory' report "$scratch/none.csv" --column x
refuses_file '' ': the file has no heading line'
refuses_file 'x\n\n' ": column 'x' is empty"
refuses_file 'y,z\n1,2\n' ": no column 'x'; the columns are y, z"
refuses_file 'x,y,x\n1,2,3\n' ": more than one column 'x'"
refuses_file 'x,y\n1,2\n\n3\n' ', line 4: too few cells, 1 for 2 columns'
refuses_file 'x\n1\n2,5\n' ', line 3: too many cells, 2 for 1 column; if commas are decimal, give --separator semicolon'
refuses_file 'x,y\n1,2\n"3,4\n5,6\n' ', line 3: a quotation mark is misplaced or missing'
refuses_file 'y,x\n"\n\n",1\r\n\r\n"\r\n",abc\r\n' ", line 7, column 'x': 'abc' is not a number"
for cell in inf 1e999 0x10 +-1 '1 2' 1.5m; do
    refuses_file "x\n1\n$cell\n" ", line 3, column 'x': '.*' is not a number"
done
refuses "--mu: 'inf' is not a number" "${z[@]:0:4}" --mu inf
for sigma in 0 -1 nan inf; do
    refuses "--sigma: '$sigma' is not a positive number" "${z[@]:0:4}" --sigma "$sigma"
done
for confidence in 0 1 95 nan; do
    refuses "--confidence: '$confidence' is not between 0 and 1" "${z[@]:0:4}" --confidence "$confidence"
done

gamma=(distribution Gamma --parameters 2,0.5,1)
prints '^Gamma\(shape 2, scale 0\.5, threshold 1\)$' "${gamma[@]}" --x 2
prints '^ +x +density +P\(X <= x\) +P\(X > x\)$' "${gamma[@]}" --x 2
prints '^ +2 +0\.541341133 +0\.593994150 +0\.406005850$' "${gamma[@]}" --x 1,2
prints '^ +0\.59399415029016 +2\.00000000$' "${gamma[@]}" --p 0.5,0.59399415029016
prints '^ +upper p +quantile$' "${gamma[@]}" --p 1e-20 --upper
prints '^ +1e-20 +25\.9915990' "${gamma[@]}" --p 1e-20 --upper
prints '^ +x +P\(X = x\) +P\(X <= x\) +P\(X >= x\)$' distribution Binomial --parameters 10,0.5 --x 3
prints '^ +3 +0\.117187500 +0\.171875000 +0\.945312500$' distribution Binomial --parameters 10,0.5 --x 3
prints '^ +-1 +0\.241970725 ' distribution Normal --parameters 0,1 --x -1
prints '^ +3 +not defined +0\.' distribution ChiSq --parameters 4,6 --x 3
refuses "no distribution 'Gama'; the distributions are Beta, .*, Weibull" distribution Gama --x 1
refuses 'Gamma has 3 parameters, not 2: shape, scale, threshold' distribution Gamma --parameters 2,0.5 --x 1
refuses "'one' is not a number" "${gamma[@]}" --x 1,one
refuses 'give either --x or --p' "${gamma[@]}"
refuses '--upper requires --p' "${gamma[@]}" --x 1 --upper
refuses 'give either --x or --p' "${gamma[@]}" --x 1 --p 0.5

# Parameters by name and domain, of both subcommands.
for command in distribution sample; do
    where=()
    [[ $command == sample ]] || where=(--x 1)
    refuses "Normal: sd must be positive, not -1" "$command" Normal --parameters 0,-1 "${where[@]}"
    refuses 'Exponential: scale must be positive, not -1' "$command" exponential --parameters -1,0 "${where[@]}"
    refuses 'Gamma: shape must be positive and at most 94906265, not 0' "$command" Gamma --parameters 0,1,1 "${where[@]}"
    refuses 'Binomial: n must be a whole number from 0 to 2147000000, not 2.5' "$command" Binomial --parameters 2.5,0.5 "${where[@]}"
    refuses 'Hypergeometric: M must not be above N, not 5 and 4' "$command" Hypergeometric --parameters=4,5,2 "${where[@]}"
    refuses 'Uniform: a must be below b, not 1 and 1' "$command" Uniform --parameters 1,1 "${where[@]}"
    refuses "no distribution 'Gama'; the distributions are Beta, .*, Weibull" "$command" Gama "${where[@]}"
done
refuses 'Geometric: prob must be between 0 and 1, not 1.5' distribution Geometric --parameters 1.5 --x 1
refuses 'Gamma has 3 parameters, not 1: shape, scale, threshold' sample Gamma --parameters 2
refuses 'ChiSq has 1 parameter, not 2: df' sample ChiSq --parameters 2,0
refuses "--p: '1.5' is not from 0 to 1" distribution Normal --parameters 0,1 --p 1.5
reports distribution largest-extreme_VALUE --parameters 0,1 --p 0 -- '^LargestExtremeValue\(' ' at 0: the support has no end there$'
reports distribution ChiSq --parameters 4,6 --x 3 -- ' density not defined at 3: the library has the density for noncentrality 0$'
reports distribution Beta --parameters 0.5,2 --x 0,2 -- 'infinite at the end of the support$' '^ +2 +0\.00000000 +1\.0+ +0\.00000000$'
reports distribution Normal --parameters 0,1 --x 40 -- '^ +40 +< 1e-280 +1\.00000000 +< 1e-280$'
reports distribution --help -- '^  Triangular +lower, mode, upper$'
reports sample --help -- '^  ChiSq +df$'

binomial=(sample Binomial --parameters 10,0.3 --seed 5)
reports "${binomial[@]}" -- '^Sample of Binomial\(n 10, prob 0\.3\)$' ' n +1000$' ' seed +5$' ' mean +3\.0480000$' ' sd +1\.5059761$' \
    '^ +from +up to +count +expected$' '^ +2 +2 +276 +233\.47  #{34}\|#####$' '^ +3 +3 +224 +266\.83  #{32} {7}\|$'
reports sample Cauchy --parameters 0,1 --n 1 --seed 0 -- ' seed +0$' ' sd +not defined: two values are needed$' ' 1 +1\.0000  '
# Every value is in a cell, however far out, and the deviates are a file.
for n in 3 1000; do
    cells=$("$analyze" sample cauchy --parameters 0,1 --n $n --seed 3 | awk '/expected/ { on = 1; next } on { n += $(NF > 4 && $2 ~ /\./ ? 3 : 2) } END { print n }')
    [[ $cells == "$n" ]] || fail "$cells of $n values in the histogram"
done
[[ $("$analyze" sample Normal --parameters 0,1 --n 50 --seed 7 --values | "$analyze" describe - | tail -1 | awk '{ print $2, $4 }') == \
    "50 $("$analyze" sample Normal --parameters 0,1 --n 50 --seed 7 | awk '$1 == "mean" { print $2 }')" ]] || fail "sample --values"
refuses 'Exponential\(.*\): Float exception: overflow.' sample Exponential --parameters 1e308,0
for n in 0 2.5 10000001 nan; do
    refuses "--n: '$n' is not a whole number from 1 to 10000000" sample Normal --parameters 0,1 --n "$n"
done

# Agrees with R: hclust(dist(x), "average") cut into 4, hclust(dist(x)^2, "ward.D") into 3, and
# hclust(dist(scale(x), "manhattan"), "complete") into 4.
arrests=(cluster "$2/usarrests.csv")
prints '^ +1 +15 +29 +2 +2\.2912878 +99\.219649$' "${arrests[@]}"
prints '^ +49 +1 +4 +50 +152\.31400 +48\.125955$' "${arrests[@]}"
prints '^ +33 -{17}\+ {51}\|$' "${arrests[@]}"
prints '^  9 33$' "${arrests[@]}" --clusters 4
prints '^Cluster 3, 20 objects$' "${arrests[@]}" --cut 74
prints '^Cluster 2, 64 objects$' cluster "$2/iris.csv" --linkage ward --clusters 3
prints '^  106 110 118 119 123 132 136$' cluster "$2/iris.csv" --linkage complete --measure manhattan --standardize --clusters 4
printf 'x,name,y\n1,a,2\n2,b,3\n' >"$scratch/mixed.csv"
printf 'name\na\n' >"$scratch/names.csv"
refuses 'names.csv: no column of numbers' cluster "$scratch/names.csv"
refuses "--linkage: 'x' is none of average, .*" "${arrests[@]}" --linkage x
refuses '--clusters excludes --cut' "${arrests[@]}" --clusters 2 --cut 50
for k in 0 51 1.5 1e300; do
    refuses '.* clusters cannot be made of 50 objects' "${arrests[@]}" --clusters "$k"
done

# The report goes by t, by z with a known sd; what there is not has its reason.
t=$("$analyze" t "$light" --mu 299.85)
reports report "$light" --mu 299.85 -- '^t interval and test' ' df +99$' "not equal to 299.85 +$(awk '$1 == "t" { print $2 }' <<<"$t") +$(awk '$1 == "p" { print $2 }' <<<"$t")\$"
reports report "$scratch/one.csv" -- ' sd +not defined: two values are needed$' ' kurtosis +not defined: four values' '^  not defined: two values or more that differ .* --sigma$'
reports report <(printf 'x\n7\n7\n7\n7\n') --with x -- ' mean +7\.0' ' sd +0\.0' 'skewness +not defined: all values are equal$' ' Pearson +not defined: a column is constant$' '^  not defined: two values'
reports report "$light" -- 'not equal to 0 +37950\.[0-9]+ +< 1e-287$'
# Of F with one degree of freedom the library's tails end early.
prints ' p +2\.00000e-144$' two-variances --sds 1e72,1 --ns 2,3
prints ' p +< 1e-138$' two-variances --sds 1,1e150 --ns 2,40
prints ' p +< 1e-287$' two-variances --sds 1e100,1 --ns 9,9
# All digits that the doubles have: their own sd is 0.10000000055879354.
printf 'x\n10000000.2\n' >"$scratch/close.csv"
for i in {1..500}; do printf '10000000.1\n10000000.3\n'; done >>"$scratch/close.csv"
prints ' sd +0\.1000000005588$' report "$scratch/close.csv"
prints ' sd +0\.10000000$' t "$scratch/close.csv"

# Counts and moments instead of a file give what the file gives: same ARGUMENT... as ARGUMENT...
same() {
    local file=() expected given
    local results='^ +(from|to|t|z|p|chi-square|F) '
    while [[ $1 != as ]]; do file+=("$1") && shift; done
    given=$("$analyze" "${@:2}" 2>&1 | grep -E "$results")
    expected=$("$analyze" "${file[@]}" | grep -E "$results" | head -"$(wc -l <<<"$given")")
    [[ -n $given && $given == "$expected" ]] || fail "${*:2}" "$given" "$expected"
}
same t "$plants" --column weight --mu 5 as t --mean 5.073 --sd 0.70119184 --n 30 --mu 5
same paired "$sleep" --column drug1 --with drug2 as paired --mean -1.58 --sd 1.229995483 --n 10
same two-sample "$cars" --column mpg --by am as two-sample --means 17.1473684211,24.3923076923 --sds 3.83396638,6.16650381 --ns 19,13
same proportion "$cars" --column am --exact as proportion --events 13 --trials 32 --exact
same two-proportions "$cars" --column vs --by am as two-proportions --events 7,7 --trials 19,13
same variance "$cars" --column mpg --variance 36 as variance --sd 6.026948052 --n 32 --variance 36
same two-variances "$plants" --column weight --by group --groups ctrl,trt1 as two-variances --sds 0.583091378,0.793675696 --ns 10,10
refuses 'give either FILE or all of --mean, --sd, --n' t --mean 5 --sd 1
refuses 'give either FILE or all of --events, --trials' proportion "$cars" --events 1 --trials 2
refuses '--column is a column of a file: give FILE' t --mean 5 --sd 1 --n 3 --column x
refuses '5 events of 3 trials are not possible' proportion --events 5 --trials 3
refuses '--means: give 2 numbers with commas between them' two-sample --means 5 --sds 1,1 --ns 3,3

# What a correction for continuity corrects is said; so are the method, the grouping and what has no value.
reports proportion "$cars" --column am --continuity -- 'interval corrected for continuity, z and p not$'
reports proportion --events 32 --trials 32 --continuity -- 'interval and test corrected for continuity$'
reports proportion "$cars" --column am --alternative less -- 'by the two-sided normal quantile, but for its factor'
reports "${both[@]}" --continuity -- "^  Wald's interval corrected for continuity, z and p not, by separate variances$"
reports two-proportions --events 0,0 --trials 5,6 -- ' z +not defined: the variance is 0$'
refuses "column 'am': no cell says 'yes'; the values are '0', '1', choose the event with --event" proportion "$cars" --column am --event yes
refuses "no cell says 'yes'; .*" two-proportions "$cars" --column vs --by am --event yes
reports "${pooled[@]}" -- "^Two-sample t test of 'weight' by 'group', equal variances, pooled$"
reports crosstab <(printf 'a,b\nx,y\nx,z\n') --rows a --columns b -- '^    p +not defined: all counts are in one' ' gamma +not defined: all pairs are tied$'

# Files as they come: separators, decimal commas, no heading, missing values, standard input.
reports describe <(printf '\xEF\xBB\xBFa;b\r\n1,5;2\r\n2,5;NA\r\n3,5;nan\r\n') -- '^  a +3 +0 +2\.5000000 ' '^  b +1 +2 +2\.0000000 +- '
reports describe <(printf 'a\tb c\n1\t2\n\t4\n') -- '^  b c +2 +0 +3\.0000000'
reports t - --column 2 -- "of '2'$" ' n +3$' ' heading +none, columns by number$' < <(printf '1,4\n2,5\n3,7\n')
reports t <(printf '1\n2\n4\n') --heading yes -- "of '1'$" ' n +2$'
reports t <(printf 'x\n1,5\n2,5\n') --separator SEMICOLON -- ' mean +2\.0000000$'
refuses "line 3, column 'b': '1.5' is not a number with a decimal comma; see --decimal" t <(printf 'a;b\n1,5;2\n2;1.5\n') --column b --decimal comma
refuses "choose a column with --column; the columns are x, y" t "$scratch/pairs.csv"
refuses "no column 'x'; there is no heading line, the columns are 1, 2" t <(printf '1,2\n3,4\n') --column x
reports report "$2/airquality.csv" --column Ozone --with Solar.R -- ' n +116$' ' missing +37$' ' pairs +111$' ' missing +42$'
refuses "airquality.csv, line 6, column 'Ozone': the value is missing; --missing omit .*" report "$2/airquality.csv" --column Ozone --missing fail
reports two-sample "$2/airquality.csv" --column Ozone --by Month --groups 5,8 -- '^  5 +26 ' ' missing +10$'
reports friedman <(printf 'x,g,b\n1,a,1\n2,b,1\n4,a,2\n,b,2\n5,a,3\n7,b,3\n') --column x --by g --blocks b -- ' blocks +2$' ' missing +1$' ' incomplete blocks +1, left out$'
printf 'x,g\n1,a\n2,a\n4,b\n7,b\n,c\n' >"$scratch/gap.csv"
reports variances "$scratch/gap.csv" --column x --by g -- "of 'x' by 'g', no values in 'c'$" ' n +4$' ' missing +1$'
reports describe "$scratch/gap.csv" --by g -- '^  x, c +0 +1 +- +- ' '-: not defined, two values are needed for an sd'
refuses 'the text is UTF-16; save it as UTF-8' t <(printf '\xFF\xFEx\0\n\0')
refuses "column 'y' is empty" t <(printf 'x,y\n1,\n2,NA\n') --column y

# Values of R 4.2: quantile(type = 7 and 6), cor.test.
reports quantiles "$2/airquality.csv" --column Ozone --type 7 --p 0.75,0.9 -- ', type 7 of Hyndman and Fan$' '^  0\.75 +63\.25' '^  0\.9 +87\.0'
reports quantiles "$2/airquality.csv" --column Ozone --p 0.75 -- ', type 6 of' '^  0\.75 +63\.75'
reports correlate "$cars" --columns mpg,wt,am -- '^  mpg +wt +32 +0 +-0\.867659 +1\.29396e-10 +-0\.886422 +1\.48759e-11$' '^  wt +am '
reports describe "$2/airquality.csv" --columns Ozone --by Month -- "^Description of 'Ozone' by 'Month', quartiles of type 6$" '^  Ozone, 6 +9 +21 +29\.444444 '

# Columns of a clustering are named, those left out with their reason; rows have names.
printf 'id,name,a,b,c,d\n11,x,1,2,3,\n12,y,2,4,3,\n13,z,7,NA,3,\n14,w,9,8,3,\n' >"$scratch/objects.csv"
objects=(cluster "$scratch/objects.csv")
reports "${objects[@]}" --labels name --clusters 2 -- '^Clusters of the rows by a, b, c$' '^  average linkage, euclidean distances$' ' n +3$' \
    ' missing +1$' "left out: 'id', it numbers the rows" "left out: 'd', it is empty" '^     w -+\+$' '^  x y$'
reports "${objects[@]}" --clusters 2 -- "left out: 'name', 'x' in line 2 is not a number" '^  4$'
reports "${objects[@]}" --columns id,a -- '^Clusters of the rows by id, a$' ' n +4$'
# 1 - cor of R.
reports cluster "$cars" --variables --clusters 3 -- '^Clusters of the columns mpg, ' ' distances 1 - r$' '^ +1 +cyl +disp +2 +0\.097967128 ' '^  qsec vs$'

# What is wrong is named, and the help pointed to.
[[ $("$analyze" report x --colum y 2>&1) == "analyze: report has no option '--colum'; see 'analyze report --help'" ]] || fail "unknown option"
[[ $("$analyze" repot x 2>&1) == "analyze: there is no subcommand 'repot'; see 'analyze --help'" ]] || fail "unknown subcommand"
[[ $("$analyze" t --mu one 2>&1) == "analyze: --mu: 'one' is not a number; see 'analyze t --help'" ]] || fail "wrong value"
refuses "unexpected 'two'" report one two
refuses 'A subcommand is required'
prints '^analyze \(zul\) [0-9]+\.[0-9]+\.[0-9]+$' --version
prints '^Usage: analyze .*SUBCOMMAND' --help
# The help of each subcommand that reads a file tells how.
for command in $("$analyze" --help | sed -n 's/^  \([a-z-]*\)  .*/\1/p' | grep -v 'help\|version\|distribution\|sample$') two-sample; do
    reports "$command" --help -- '--missing ' '--separator '
done

if [[ -e /dev/full ]]; then
    message=$("$analyze" report "$light" --column x 2>&1 >/dev/full)
    [[ $? == 1 && $message == 'analyze: the output could not be written' ]] || fail "full disk" "$message"
fi

exit $((failures > 0))
