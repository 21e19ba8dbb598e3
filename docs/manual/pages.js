// What Doxygen reads of a page, `node pages.js FILE`. The pages are plain Markdown, which a web forge shows as it
// stands; its links become references here, so that Doxygen checks them and those into headers lead to the reference.
'use strict';
const fs = require('fs');
const path = require('path');

// A page has the label <name>_page; a heading below `<a id="label"></a>` has that label.
function labelled(text, page) {
    return text.replace(/^# (.*)$/m, `# $1 {#${page}_page}`)
        .replace(/^<a id="(\w+)"><\/a>\n+(#+ .*)$/gm, '$2 {#$1}');
}

// [text](page.md), [text](page.md#label), [text](#label), [text](../include/zul/header.h#group)
function reference(whole, text, target) {
    const [file, label] = target.split('#');
    if (/^[\w]+\.md$/.test(file)) return `\\ref ${label || path.parse(file).name + '_page'} "${text}"`;
    if (file === '' || /\.h$/.test(file)) return `\\ref ${label || path.basename(file)} "${text}"`;
    return /^\w+:/.test(target) ? whole : text;  // files beside the manual are not in it
}

function forDoxygen(text, page) {
    const pieces = labelled(text, page).split(/(^```[\s\S]*?^```$)/m);
    return pieces.map((piece, i) => {
        if (i % 2 === 1) return piece;
        // The list of pages makes them the parts of the manual, in its order.
        if (page === 'index') piece = piece.replace(/^(\d+\. )\[[^\]]*\]\((\w+)\.md\)$/gm, '$1\\subpage $2_page');
        return piece.replace(/\[([^\]]+)\]\(([^)\s]+)\)/g, reference);
    }).join('');
}

const file = process.argv[2];
process.stdout.write(forDoxygen(fs.readFileSync(file, 'utf8'), path.parse(file).name));
