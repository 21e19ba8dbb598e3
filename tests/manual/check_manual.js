// check_manual.js FOLDER: the built manual needs nothing but itself, its local links lead somewhere, its formulas are
// set, each group tells what it is, and a search for plain words finds first what a reader would want.
'use strict';
const fs = require('fs');
const path = require('path');
const {find} = require('../../docs/manual/search.js');
const folder = process.argv[2];
const lunr = require(path.resolve(folder, 'search/lunr.min.js'));
const manual = new Function(`${fs.readFileSync(path.join(folder, 'search/index.js'), 'utf8')}; return manual;`)();
const faults = [];

const ids = new Map();
function idsOf(file) {
    const text = fs.readFileSync(path.join(folder, file), 'utf8');
    if (!ids.has(file)) ids.set(file, new Set([...text.matchAll(/\b(?:id|name)="([^"]+)"/g)].map((match) => match[1])));
    return ids.get(file);
}

for (const file of fs.readdirSync(folder).filter((name) => name.endsWith('.html'))) {
    const text = fs.readFileSync(path.join(folder, file), 'utf8').replace(/<script[^>]*>[\s\S]*?<\/script>/g,
        (script) => script.slice(0, script.indexOf('>') + 1));
    if (/\\\(|\\\[/.test(text)) faults.push(`${file}: a formula is not set`);
    for (const [, kind, target] of text.matchAll(/<(link|script|img|a)\b[^>]*?\s(?:href|src)="([^"]*)"/g)) {
        const [name, id] = target.split('#');
        if (/^(https?|mailto|javascript):/.test(target)) {
            if (kind !== 'a') faults.push(`${file} loads ${target}`);
        } else if (name !== '' && !fs.existsSync(path.join(folder, name.split('?')[0]))) {
            faults.push(`${file}: ${target} leads nowhere`);
        } else if (id && !idsOf(name || file).has(id)) {
            faults.push(`${file}: nothing is called ${target}`);
        }
    }
}
for (const section of manual.documents)
    if (/^group__[^#]*$/.test(section.url) && section.text.trim() === '') faults.push(`${section.title} is not described`);

// What is typed, and what the first hit has in its address.
const words = {
    't test': 'hypothesis_page|sample__t|paired__t', 'paired': 'paired__t', 'welch': 'hypothesis_page|two__sample__t',
    'z test': 'one__sample__z', 'confidence interval': 'alternatives|hypothesis', 'p-value': 'p_values|p__values',
    'critical value': 'critical__values', 'quantile': 'upper_quantiles|order|descriptive', 'percentile': 'order|fitting',
    'quartile': 'order|summaries|descriptive', 'median': 'median|sign__test|summaries', 'mean': 'moments|descriptive',
    'standard deviation': 'moments|descriptive', 'variance': 'variance', 'equal variances': 'variances',
    'levene': 'variances', 'bartlett': 'variances', 'f test': 'variances|group__f', 'correlation': 'correlation|descriptive',
    'spearman': 'correlation|descriptive', 'covariance': 'correlation', 'skewness': 'moments|descriptive',
    'outlier': 'mood__median|summaries', 'trimmed mean': 'summaries', 'boxplot': 'summaries|descriptive', 'rank': 'rank|order',
    'wilcoxon': 'wilcoxon', 'mann whitney': 'mann__whitney', 'u test': 'mann__whitney', 'kruskal': 'kruskal',
    'friedman': 'friedman', 'sign test': 'sign__test', 'proportion': 'proportion|hypothesis', 'wilson': 'proportion|hypothesis',
    'chi-square test': 'contingency|hypothesis|chi__square', 'goodness of fit': 'hypothesis_page|anderson|fitting',
    'normality': 'anderson|normal', 'anderson darling': 'anderson', 'contingency': 'contingency', 'fisher exact': 'GetFisher|contingency|two__proportions',
    'odds ratio': 'contingency|Contingency', 'kappa': 'contingency|Contingency', 'tukey': 'multiple__comparison|lambda|variances',
    'bonferroni': 'critical__values|p_values|variances', 'maximum likelihood': 'fitting', 'weibull': 'weibull', 'gumbel': 'extreme__value',
    'random numbers': 'sampler', 'seed': 'sampler', 'bootstrap': 'sampler', 'shuffle': 'sampler|ties', 'dendrogram': 'clustering',
    'ward': 'clustering', 'ties': 'clustering|rank', 'nan': 'nan_arguments|missing', 'missing values': 'missing|containers',
    'exception': 'traps|frame|windows', 'sigfpe': 'frame|traps', 'thread safe': 'threads', 'memory': 'memory', 'status': 'statuses',
    'error code': 'statuses', 'upper tail': 'tails', 'cdf': 'distributions', 'install': 'getting_started', 'cmake': 'getting_started|windows',
    'dll': 'windows', 'fast-math': 'fast_math', 'accuracy': 'accuracy', 'speed': 'performance|coming_from|limits', 'scipy': 'coming_from',
    'pnorm': 'coming_from', 'doi': 'sources',
};
const index = lunr.Index.load(manual.index);
for (const [query, wanted] of Object.entries(words)) {
    const [first] = find(lunr, index, query).map((number) => manual.documents[number].url);
    if (first === undefined || !new RegExp(wanted).test(first)) faults.push(`"${query}" finds ${first} first`);
}
for (const fault of faults) console.error(fault);
console.log(`manual: ${Object.keys(words).length} searches, ${manual.documents.length} sections, ${faults.length} faults`);
process.exit(faults.length === 0 ? 0 : 1);
