// The search of the manual: in the browser it takes the place of Doxygen's search/search.js, for the build and the
// tests it is a module. The index is made when the manual is built.
'use strict';

// Words as they are typed; of a name such as RunOneSampleT also its parts.
function searchable(text) {
    const parts = (text.match(/\b\w*[a-z][A-Z]\w*/g) || [])
        .map((name) => name.replace(/([a-z0-9])([A-Z])/g, '$1 $2'));
    return [text, ...parts].join(' ').replace(/[^\w.]+/g, ' ');
}

function makeIndex(lunr, documents) {
    return lunr(function () {
        this.ref('number');
        this.field('title', {boost: 8});
        this.field('page', {boost: 2});
        this.field('text');
        documents.forEach((section, number) => {
            // A page that tells of a subject comes before the single declarations.
            const {url} = section;
            const boost = /^(class|struct|group_.*#)/.test(url) ? 0.4 :
                /^(coming_from|performance|accuracy|limits)_page.html#/.test(url) ? 0.7 : 2;
            this.add({number, title: searchable(section.title), page: searchable(section.page),
                text: searchable(section.text)}, {boost});
        });
    });
}

// The numbers of the sections found, the best first: those with all words, else those with words that begin so, else
// those with any of the words, or one like them.
function find(lunr, index, query) {
    const words = searchable(query).toLowerCase().split(' ').filter((word) => word !== '');
    const attempts = [
        (q, word) => q.term(lunr.tokenizer(word), {presence: lunr.Query.presence.REQUIRED}),
        (q, word) => q.term(lunr.tokenizer(word),
            {presence: lunr.Query.presence.REQUIRED, wildcard: lunr.Query.wildcard.TRAILING, usePipeline: false}),
        (q, word) => q.term(lunr.tokenizer(word), {}),
        (q, word) => q.term(lunr.tokenizer(word), {editDistance: 1}),
    ];
    for (const attempt of attempts) {
        const found = index.query((q) => words.forEach((word) => attempt(q, word)));
        if (found.length > 0) return found.map((result) => Number(result.ref));
    }
    return [];
}

// The beginning of the text, or where the first of the words stands in it.
function excerpt(text, query) {
    const places = query.toLowerCase().split(/\s+/).map((word) => text.toLowerCase().indexOf(word)).filter((i) => i > 0);
    const start = Math.max(0, Math.min(...places, text.length) - 80);
    const from = places.length === 0 || start === 0 ? 0 : text.indexOf(' ', start) + 1;
    return (from > 0 ? '... ' : '') + text.slice(from, from + 240) + (from + 240 < text.length ? ' ...' : '');
}

// The page search.html?query=...
function showResults() {
    const query = new URLSearchParams(location.search).get('query') || '';
    const results = document.getElementById('searchresults');
    if (results === null || query === '') return;
    const numbers = find(lunr, lunr.Index.load(manual.index), query);
    const add = (parent, kind, text) => {
        const element = parent.appendChild(document.createElement(kind));
        element.textContent = text;
        return element;
    };
    const field = document.getElementById('MSearchField');
    if (field !== null) field.value = query;
    add(results, 'p', numbers.length === 0 ? `Nothing found for "${query}".` : `"${query}": ${numbers.length} found`);
    for (const section of numbers.slice(0, 50).map((number) => manual.documents[number])) {
        const entry = add(results, 'div', '');
        entry.className = 'found';
        add(entry, 'a', section.title).href = section.url;
        if (section.page !== '') add(entry, 'span', ' - ' + section.page);
        add(entry, 'div', excerpt(section.text, query));
    }
}

// What the pages of Doxygen call.
function SearchBox(name, path, label) {
    this.DOMSearchField = () => document.getElementById('MSearchField');
    this.DOMSearchBox = () => document.getElementById('MSearchBox');
    this.OnSearchFieldFocus = (isActive) => {
        this.DOMSearchBox().className = isActive ? 'MSearchBoxActive' : 'MSearchBoxInactive';
        if (isActive && this.DOMSearchField().value === label) this.DOMSearchField().value = '';
    };
}

if (typeof module === 'undefined') {
    window.addEventListener('load', showResults);
} else {
    module.exports = {makeIndex, find};
}
