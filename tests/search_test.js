// Asks the search of a reference that scripts/docs has built what people ask.
// usage: node search_test.js HTML_DIRECTORY QUESTIONS
//
// A line of QUESTIONS: what is typed -> the address that has to be among the first three results. An address without a
// place on its page stands for all of that page. An empty one: nothing may be found.

"use strict";

const fs = require("fs");
const path = require("path");

const [folder, questions] = process.argv.slice(2).map((name) => path.resolve(name));
const { prepare, search } = require(path.join(folder, "search.js"));
const index = new Function(fs.readFileSync(path.join(folder, "search_index.js"), "utf8") + "return searchIndex;")();
const prepared = prepare(index);

function answers(result, wanted) {
    return result.address === wanted || result.address.split("#")[0] === wanted;
}

let asked = 0, failed = 0, slowest = 0;
for (const line of fs.readFileSync(questions, "utf8").split("\n")) {
    if (!line || line.startsWith("#")) continue;
    const [question, wanted] = line.split("->").map((text) => text.trim());
    const start = process.hrtime.bigint();
    const results = search(prepared, question);
    slowest = Math.max(slowest, Number(process.hrtime.bigint() - start) / 1e6);
    const fine = wanted ? results.slice(0, 3).some((result) => answers(result, wanted)) : !results.length;
    ++asked;
    if (fine) continue;
    ++failed;
    console.log(`"${question}" should find ${wanted || "nothing"} but finds`);
    for (const result of results.slice(0, 6)) console.log(`    ${result.title}  ${result.address}`);
}

// A synonym that leads nowhere is a mistake in the list.
const addressed = (words) => search({ entries: prepared.entries, synonyms: [] }, words);
for (const [said, meant] of index.synonyms)
    for (const words of meant)
        if (!addressed(words).length) { console.log(`synonym of "${said}": nothing is called "${words}"`); ++failed; }

console.log(`search: ${asked} questions, ${failed} failed, the slowest took ${slowest.toFixed(1)} ms`);
process.exit(failed || !asked ? 1 : 0);
