// Finishes what Doxygen wrote, `node finish.js FOLDER`: typesets the formulas, and makes the index of the search. The
// manual then needs neither a network nor a server. KaTeX and lunr are those of Debian's libjs-katex and libjs-lunr.
'use strict';
const fs = require('fs');
const path = require('path');
const katexFolder = '/usr/share/javascript/katex';
const lunrFile = '/usr/share/javascript/lunr/lunr.min.js';
const katex = require(`${katexFolder}/katex.js`);
const {makeIndex} = require('./search.js');

const html = process.argv[2];
const characters = {'&lt;': '<', '&gt;': '>', '&quot;': '"', '&#39;': "'", '&#160;': ' ', '&nbsp;': ' ', '&amp;': '&'};

function plain(text) {
    return text.replace(/&(lt|gt|quot|#39|#160|nbsp|amp);/g, (entity) => characters[entity])
        .replace(/&\w+;|&#\d+;/g, ' ');
}

// Doxygen leaves \(formula\) and \[formula\] to a script of the reader, which is not needed then.
function typeset(text) {
    const render = (formula, displayMode) =>
        katex.renderToString('\\displaystyle ' + plain(formula), {displayMode, output: 'html', strict: 'error'});
    return text.replace(/\\\(([\s\S]*?)\\\)/g, (_, formula) => render(formula, false))
        .replace(/\\\[([\s\S]*?)\\\]/g, (_, formula) => render(formula, true));
}

function linked(text, isSearch) {
    const own = ['<link href="formulas/katex.min.css" rel="stylesheet" type="text/css"/>'];
    if (isSearch) own.push('<script src="search/lunr.min.js"></script>', '<script src="search/index.js"></script>');
    return text.replace(/<div id="main-nav"><\/div>\s*<input[\s\S]*?<\/ul>\s*<\/div>/, '<div id="main-nav"></div>')
        .replace(/<script type="text\/javascript">\s*window\.MathJax[\s\S]*?<\/script>\s*/, '')
        .replace(/<script[^>]*[Mm]ath[Jj]ax[^>]*><\/script>\s*/g, '')
        .replace(/<link rel="search"[^>]*>\s*/, '')
        .replace(/<dt>((?:Source|Method)[^<]*)<\/dt>/g, '<dt><a href="sources_page.html">$1</a></dt>')
        .replace('</head>', own.join('\n') + '\n</head>');
}

// What a reader sees, without formulas, code and the declarations.
function words(text) {
    return plain(text.replace(/<(script|style)[\s\S]*?<\/\1>/g, ' ').replace(/\\[([][\s\S]*?\\[)\]]/g, ' ')
        .replace(/<div class="fragment">[\s\S]*?<!-- fragment -->|<pre[\s\S]*?<\/pre>/g, ' ')
        .replace(/<(br|p|li|td|th|tr|div|dd|dt|h\d)\b[^>]*>/g, ' ').replace(/<[^>]*>/g, '')).replace(/\s+/g, ' ').trim();
}

// The sections of a page: one for the text before the first heading, one for each heading and each member.
function sections(file, text) {
    const heading1 = /<div class="title">(.*?)<(?:div|span|\/div)\b/.exec(text);
    const title = words(heading1 ? heading1[1] : '').replace(/ (Class|Struct|Namespace)?( Template)? ?Reference$/, '');
    const start = text.indexOf('<div class="contents">');
    const body = text.slice(start, text.indexOf('<!-- contents -->')).replace(/<div class="toc">[\s\S]*?<\/div>/, '')
        .replace(/<table class="memberdecls">[\s\S]*?<\/table>/g, '').replace(/<div class="memproto">[\s\S]*?<\/div>/g, '');
    const found = [{title, page: '', url: file, text: ''}];
    let heading = '';
    for (const piece of body.split(/((?:<a id="[^"]*"[^>]*><\/a>\s*)?<h[1-4][\s\S]*?<\/h[1-4]>)/)) {
        const anchor = /\bid="([^"]*)"/.exec(piece);
        if (/^(<a id|<h[1-4])/.test(piece)) {
            heading = words(piece.replace(/<span class="permalink">[\s\S]*?<\/span>/, '')).replace(/ \[\d+\/\d+\]$/, '');
            if (anchor && !/class="groupheader"/.test(piece))
                found.push({title: heading, page: title, url: `${file}#${anchor[1]}`, text: ''});
        } else {
            found[found.length - 1].text += ' ' + words(piece);
        }
    }
    return found.filter((section) => !/^ *Array form:/.test(section.text));
}

function isContent(file) {
    return file.endsWith('.html') &&
        !/^(annotated|classes|files|functions|globals|hierarchy|modules|namespace.*|pages|search)(_|\.)/
            .test(file) && !/(-members|_8h|^dir_.*)\.html$/.test(file);
}

function main() {
    const documents = [];
    for (const file of fs.readdirSync(html).filter((name) => name.endsWith('.html'))) {
        const text = fs.readFileSync(path.join(html, file), 'utf8');
        if (isContent(file)) documents.push(...sections(file, text));
        fs.writeFileSync(path.join(html, file), typeset(linked(text, file === 'search.html')));
    }
    fs.writeFileSync(path.join(html, 'search/index.js'),
        `var manual = ${JSON.stringify({documents, index: makeIndex(require(lunrFile), documents)})};\n`);
    fs.copyFileSync(lunrFile, path.join(html, 'search/lunr.min.js'));
    fs.copyFileSync(path.join(__dirname, 'search.js'), path.join(html, 'search/search.js'));
    const fonts = path.join(html, 'formulas/fonts');
    fs.mkdirSync(fonts, {recursive: true});
    fs.copyFileSync(`${katexFolder}/katex.min.css`, path.join(html, 'formulas/katex.min.css'));
    for (const font of fs.readdirSync(`${katexFolder}/fonts`).filter((name) => name.endsWith('.woff2')))
        fs.copyFileSync(`${katexFolder}/fonts/${font}`, path.join(fonts, font));
    // The licences of what stands in the manual beside the text.
    for (const [packageName, folder] of [['doxygen', '.'], ['libjs-katex', 'formulas'], ['libjs-lunr', 'search']])
        fs.copyFileSync(`/usr/share/doc/${packageName}/copyright`, path.join(html, folder, 'copyright'));
}

main();
