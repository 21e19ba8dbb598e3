// check_pages.js [write]: what docs/*.md show is what the tests run. A fence below `<!-- examples/ticks.cpp ticks -->`
// holds what stands between the marks `//! [ticks]` of that file, below `<!-- examples/ticks.txt 1-2 -->` these lines
// of the output, without a second word the whole file; `write` puts it there. Every line of the outputs is shown.
// Local links of the pages and of README.md lead to files and headings that exist, and nothing in them is a command of
// Doxygen, which a web forge would show as it stands.
'use strict';
const fs = require('fs');
const path = require('path');

const faults = [];
const shown = new Map();  // file: the numbers of its lines

function lines(file) {
    return fs.readFileSync(file, 'utf8').replace(/\n$/, '').split('\n');
}

function part(file, which) {
    const all = lines(file);
    const range = /^(\d+)(?:-(\d+))?$/.exec(which || `1-${all.length}`);
    if (range) {
        const [first, last] = [Number(range[1]), Number(range[2] || range[1])];
        for (let i = first; i <= last; ++i) shown.set(file, (shown.get(file) || new Set()).add(i));
        return all.slice(first - 1, last);
    }
    const mark = `//! [${which}]`;
    const first = all.findIndex((line) => line.trim() === mark);
    const last = all.findIndex((line, i) => i > first && line.trim() === mark);
    if (first < 0 || last < 0) return [`no ${mark} in ${file}`];
    const found = all.slice(first + 1, last);
    const indent = Math.min(...found.filter((line) => line.trim() !== '').map((line) => line.search(/\S/)));
    return found.map((line) => line.slice(indent));
}

function withParts(page, text) {
    return text.replace(/(^<!-- (\S+)(?: (\S+))? -->\n+```(\w*)\n)([\s\S]*?)(^```$)/gm,
        (_, opening, file, which, _language, _old, closing) =>
            opening + part(path.join(path.dirname(page), file), which).join('\n') + '\n' + closing);
}

// As forges form them of headings, and what is named by itself.
function labels(file) {
    const text = fs.readFileSync(file, 'utf8').replace(/^```[\s\S]*?^```$/gm, '');
    const headings = [...text.matchAll(/^#+ (.*)$/gm)].map((match) =>
        match[1].toLowerCase().replace(/[^\w\- ]/g, '').replace(/ /g, '-'));
    return new Set([...headings, ...[...text.matchAll(/<a id="(\w+)">/g)].map((match) => match[1])]);
}

function checkLinks(page, text) {
    for (const [, target] of text.matchAll(/\]\(([^)\s]+)\)/g)) {
        if (/^\w+:/.test(target)) continue;
        const [name, label] = target.split('#');
        const file = name === '' ? page : path.join(path.dirname(page), name);
        if (!fs.existsSync(file)) faults.push(`${page}: ${target} leads nowhere`);
        else if (label && file.endsWith('.md') && !labels(file).has(label)) faults.push(`${page}: no heading ${target}`);
    }
}

const pages = fs.readdirSync('docs').filter((name) => name.endsWith('.md')).map((name) => `docs/${name}`);
for (const page of [...pages, 'README.md', 'CONTRIBUTING.md', 'CHANGELOG.md', 'examples/data/README.md', 'fuzz/README.md',
    'tests/data/README.md']) {
    const text = fs.readFileSync(page, 'utf8');
    const expected = withParts(page, text);
    if (expected !== text && process.argv[2] === 'write') fs.writeFileSync(page, expected);
    else if (expected !== text) faults.push(`${page} does not show its examples: node ${process.argv[1]} write`);
    const prose = text.replace(/^```[\s\S]*?^```$/gm, '').replace(/`[^`\n]*`/g, '');
    for (const [command] of prose.matchAll(/[\\@](?:ref|include|snippet|verbinclude|subpage|link|par)\b.*|\{#\w+\}/g))
        faults.push(`${page}: a forge shows "${command}"`);
    checkLinks(page, prose);
}
for (const file of fs.readdirSync('docs/examples').filter((name) => name.endsWith('.txt') && name !== 'CMakeLists.txt')) {
    const missing = lines(`docs/examples/${file}`).findIndex((_, i) => !shown.get(`docs/examples/${file}`)?.has(i + 1));
    if (missing >= 0) faults.push(`docs/examples/${file}: no page shows line ${missing + 1}`);
}
// Who is named in a header as a source, with initials, stands on the page of the sources; an ISBN has its check digit.
const sources = fs.readFileSync('docs/sources.md', 'utf8');
for (const header of fs.readdirSync('include/zul').map((name) => `include/zul/${name}`)) {
    const comments = lines(header).map((line) => (/\/\/\/<?(.*)/.exec(line) || ['', ''])[1]).join(' ');
    for (const [, name] of comments.matchAll(/(?:[A-Z]\. )+((?:Van )?[A-Z][\w'-]{2,})(?=,? and\b|, [A-Z])/g))
        if (!sources.includes(` ${name}`)) faults.push(`${header}: no ${name} among the sources`);
}
for (const [, isbn] of sources.matchAll(/ISBN ([\dX-]+)/g)) {
    const digits = isbn.replace(/-/g, '').split('').map((digit) => (digit === 'X' ? 10 : Number(digit)));
    const weights = digits.length === 10 ? [10, 9, 8, 7, 6, 5, 4, 3, 2, 1] : [1, 3, 1, 3, 1, 3, 1, 3, 1, 3, 1, 3, 1];
    const sum = digits.reduce((total, digit, i) => total + digit * weights[i], 0);
    if (sum % (digits.length === 10 ? 11 : 10) !== 0) faults.push(`docs/sources.md: ISBN ${isbn}`);
}
for (const fault of faults) console.error(fault);
process.exit(faults.length === 0 ? 0 : 1);
