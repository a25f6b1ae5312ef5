// The search of the reference. Plain JavaScript, no network: works on pages that are opened as files too.
//
// The index (search_index.js, made by search_index.py) is loaded when the search is used for the first time:
//   pages     [address, title] of each page
//   kinds     [label, weight, whether its words are anchors of functions] of each kind of entry
//   entries   [kind, page, anchor, title, words], by numbers; the words are found as well as the title's
//   synonyms  [what people say, [what the reference calls it, ...]]

"use strict";

const shownResults = 12, leastShare = 0.35;
const unimportant = new Set("a an and are can do does for from how i in is it my of on or the to what with".split(" "));
const scores = { title: 10, titleStart: 6, words: 3, wordsStart: 1.5, synonym: 1.3, covered: 6 };

/** "moves", "moved" and "moving" are searched as "move" is, all as "mov"; "string" stays. */
function stem(word) {
    const cut = word.replace(/(ing|ed|[^s]s)$/, (end) => (end.endsWith("s") ? end[0] : ""));
    const bare = cut.replace(/e$/, "");
    return bare.length >= 3 && /[aeiouy]/.test(bare) ? bare : word;
}

/** The parts of one word: "imageSampler" -> ["image", "sampler"]. */
function partsOf(word) {
    return word.match(/[A-Z]+(?![a-z])|[A-Z]?[^A-Z\d]+|\d+/g) || [word];
}

function wordsOf(text) {
    return text.match(/[\p{L}\d]+/gu) || [];
}

/** Everything that a text is found by, its words and the parts of those, each between blanks. */
function tokensOf(text) {
    const tokens = new Set();
    for (const word of wordsOf(text))
        for (const token of [word, ...partsOf(word)]) tokens.add(stem(token.toLowerCase()));
    return ` ${[...tokens].join(" ")} `;
}

/** What is asked for: a token for each word that matters. A word of several parts is looked for by its parts. */
function questionTokens(text) {
    const words = wordsOf(text).flatMap(partsOf).map((word) => word.toLowerCase());
    const important = words.filter((word) => !unimportant.has(word));
    return [...new Set((important.length ? important : words).map(stem))];
}

/** The index with the tokens of each entry; once for a page. */
function prepare(index) {
    const entries = index.entries.map(([kind, page, anchor, title, words]) => ({
        file: index.pages[page][0], anchor,
        functions: index.kinds[kind][2] ? words.split(" ") : [],
        page: index.pages[page][1], title, kind: index.kinds[kind][0], weight: index.kinds[kind][1],
        titleTokens: tokensOf(title), titleWords: questionTokens(title), otherTokens: tokensOf(words),
    }));
    const synonyms = index.synonyms.map(([said, meant]) => [questionTokens(said), meant.map(questionTokens)]);
    return { entries, synonyms };
}

function tokenScore(entry, token) {
    const whole = ` ${token} `, start = ` ${token}`;
    if (entry.titleTokens.includes(whole)) return scores.title;
    if (token.length > 1 && entry.titleTokens.includes(start)) return scores.titleStart;
    if (entry.otherTokens.includes(whole)) return scores.words;
    return token.length > 2 && entry.otherTokens.includes(start) ? scores.wordsStart : 0;
}

/** How well an entry answers: less for each token that it lacks, more when its title says little else. */
function entryScore(entry, tokens) {
    let sum = 0, found = 0;
    for (const token of tokens) {
        const score = tokenScore(entry, token);
        sum += score;
        if (score) ++found;
    }
    if (!found) return 0;
    const covered = entry.titleWords.filter((word) => tokens.includes(word)).length / entry.titleWords.length;
    return (sum / tokens.length + scores.covered * covered) * entry.weight * Math.pow(found / tokens.length, 1.5);
}

/** The question as it was asked, and with each synonym that it holds put in its place: [tokens, weight]. */
function readings(tokens, synonyms) {
    const result = [[tokens, 1]];
    for (const [said, meant] of synonyms) {
        if (!said.every((token) => tokens.includes(token))) continue;
        const rest = tokens.filter((token) => !said.includes(token));
        meant.forEach((words, place) =>
            result.push([[...new Set([...rest, ...words])], scores.synonym * Math.pow(0.97, place) * said.length]));
    }
    return result;
}

/** Where an entry leads: to the function that is asked for by its name, otherwise to the entry's own place. */
function addressOf(entry, text) {
    const asked = entry.functions.find((name) => name.toLowerCase() === text.trim().toLowerCase());
    const anchor = asked || entry.anchor;
    return entry.file + (anchor ? "#" + anchor : "");
}

/** The entries that answer a question, the best first, and none that is much worse than the best. */
function search(prepared, text) {
    const tokens = questionTokens(text), asked = text.trim().toLowerCase();
    if (!tokens.length) return [];
    const meant = readings(tokens, prepared.synonyms);
    const found = prepared.entries.map((entry) => ({
        entry,
        score: Math.max(...meant.map(([words, weight]) => weight * entryScore(entry, words))) +
            (entry.title.toLowerCase() === asked ? scores.title : 0),
    }));
    const best = Math.max(...found.map((one) => one.score));
    const shown = found.filter((one) => one.score > 0 && one.score >= best * leastShare);
    shown.sort((a, b) => b.score - a.score);
    return shown.slice(0, shownResults).map(({ entry }) => ({ ...entry, address: addressOf(entry, text) }));
}

function showResults(list, results, root) {
    list.replaceChildren(...results.map((result) => {
        const [item, link, kind] = ["li", "a", "span"].map((name) => document.createElement(name));
        link.href = root + result.address;
        link.textContent = result.title;
        kind.textContent = result.title === result.page ? result.kind : `${result.kind} · ${result.page}`;
        link.append(kind);
        item.append(link);
        return item;
    }));
    if (!results.length) list.innerHTML = "<li>Nothing found</li>";
}

/** Moves the focus between the box and the links of the results with the arrow keys. */
function moveFocus(form, event) {
    const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    if (!step) return;
    const places = [form.elements.q, ...form.querySelectorAll("ol a")];
    const next = places[places.indexOf(document.activeElement) + step];
    if (next) next.focus();
    event.preventDefault();
}

function connect(form) {
    const box = form.elements.q, list = form.querySelector("ol"), root = form.dataset.root;
    let prepared = null;
    const answer = () => {
        if (prepared && box.value.trim()) showResults(list, search(prepared, box.value), root);
        else list.replaceChildren();
    };
    const load = () => {
        if (form.classList.contains("asked")) return;
        form.classList.add("asked");
        const script = document.createElement("script");
        script.src = root + "search_index.js";
        script.onload = () => { prepared = prepare(searchIndex); answer(); };
        document.head.append(script);
    };
    box.addEventListener("focus", load);
    box.addEventListener("input", () => { load(); answer(); });
    form.addEventListener("keydown", (event) => {
        if (event.key === "Escape") { box.value = ""; answer(); } else moveFocus(form, event);
    });
    form.addEventListener("submit", (event) => {
        event.preventDefault();
        const first = list.querySelector("a");
        if (first) location.href = first.href;
    });
    document.addEventListener("keydown", (event) => {
        if (event.key === "/" && document.activeElement === document.body) { event.preventDefault(); box.focus(); }
    });
    const asked = new URLSearchParams(location.search).get("q");
    if (asked) { box.value = asked; load(); }
}

if (typeof module === "undefined") connect(document.getElementById("search"));
else module.exports = { prepare, search };
