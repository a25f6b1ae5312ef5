// The tree of forms, and the two hash tables through which keywords are found in it.

#include "language/grammar.h"

#include "language/lookup.h"

namespace Zant::Language {

namespace {

size_t hashWord(uint32_t node, const Grammar::Word& word) {
    return ((node * size_t{0x9E3779B97F4A7C15}) ^ word.tail) * size_t{0xC2B2AE3D27D4EB4F} >> 32;
}

size_t hashNumber(uint32_t node, uint64_t number) {
    const size_t hash = (node * size_t{0x9E3779B97F4A7C15}) ^ (number * size_t{0xC2B2AE3D27D4EB4F});
    return hash ^ (hash >> 31);
}

}  // namespace

Grammar::Grammar(FormRange<Form> forms, FormRange<KeywordTable> tables) : keywordTables_(tables) {
    nodes_.emplace_back();
    for (const Form& form : forms)
        insert(form);
    buildIndex();
    findAmbiguities();
}

const Grammar& Grammar::vocabulary() {
    static const Grammar grammar(allForms(), Zant::keywordTables());
    return grammar;
}

void Grammar::insert(const Form& form) {
    Node node = follow(root, {ArgumentKind::Keyword, 0, form.command}, form);
    for (uint16_t k = 0; k < form.tokenCount; ++k)
        node = follow(node, form.tokens[k], form);
    if (nodes_[node].form) {
        found_.sameSequence.push_back(&form);
    } else {
        nodes_[node].form = &form;
    }
}

Grammar::Node Grammar::follow(Node node, const FormToken& token, const Form& form) {
    const bool isKeyword = token.kind == ArgumentKind::Keyword;
    uint32_t* link = isKeyword ? &nodes_[node].firstKeyword : &nodes_[node].firstArgument;
    while (*link != none) {
        const Step& step = steps_[*link];
        if (step.place.kind == token.kind && step.table == token.table && step.number == token.number) break;
        link = &steps_[*link].next;
    }
    const Node to = *link != none ? steps_[*link].to : addStep(node, token, *link);
    const Form*& shortest = nodes_[to].shortest;
    if (!shortest || form.tokenCount < shortest->tokenCount) shortest = &form;
    return to;
}

Grammar::Node Grammar::addStep(Node node, const FormToken& token, uint32_t& link) {
    const Node to = static_cast<Node>(nodes_.size());
    link = static_cast<uint32_t>(steps_.size());  // before the vectors grow: the link lies in one of them
    const uint32_t step = link;
    steps_.push_back({token.kind, token.table, token.number, node, to, none});
    nodes_.emplace_back();
    nodes_[to].parentStep = step;
    return to;
}

const char* Grammar::wordOf(const Step& step) const {
    return keywordTables_[step.table].words[step.number - 1];
}

// The first free slot of the run that starts at the hash.
template <class Slot>
Slot& Grammar::freeSlot(std::vector<Slot>& index, size_t hash) const {
    size_t slot = hash & indexMask_;
    while (index[slot].to != none)
        slot = (slot + 1) & indexMask_;
    return index[slot];
}

void Grammar::buildIndex() {
    size_t size = 16;
    while (size < steps_.size() * 2)
        size *= 2;
    indexMask_ = size - 1;
    wordIndex_.assign(size, {});
    numberIndex_.assign(size, {});
    for (const Step& step : steps_) {
        if (step.place.kind != ArgumentKind::Keyword) continue;
        const bool hidden =
            byWord(step.from, std::string_view(wordOf(step))) != none || byNumber(step.from, step.number) != none;
        if (hidden) found_.sameKeyword.push_back(nodes_[step.to].shortest);
        const Word word = std::string_view(wordOf(step));
        freeSlot(wordIndex_, hashWord(step.from, word)) = {word, step.from, step.to};
        freeSlot(numberIndex_, hashNumber(step.from, step.number)) = {step.number, step.from, step.to};
    }
}

void Grammar::findAmbiguities() {
    for (const NodeData& node : nodes_) {
        if (node.firstArgument == none) continue;
        if (node.firstKeyword != none) found_.keywordOrArgument.push_back(node.shortest);
        if (steps_[node.firstArgument].next != none) found_.severalKinds.push_back(node.shortest);
    }
}

Grammar::Word::Word(std::string_view word) : text(word) {
    for (const char letter : word)
        tail = tailWith(tail, letter);
}

Grammar::Node Grammar::byWord(Node node, const Word& word) const {
    for (size_t slot = hashWord(node, word) & indexMask_; wordIndex_[slot].to != none; slot = (slot + 1) & indexMask_) {
        const WordSlot& found = wordIndex_[slot];
        if (found.from == node && found.word == word) return found.to;
    }
    return none;
}

Grammar::Node Grammar::byNumber(Node node, uint64_t number) const {
    for (size_t slot = hashNumber(node, number) & indexMask_; numberIndex_[slot].to != none;
         slot = (slot + 1) & indexMask_) {
        const NumberSlot& found = numberIndex_[slot];
        if (found.from == node && found.number == number) return found.to;
    }
    return none;
}

void Grammar::offerKeywords(Node node, NearestWord& search) const {
    for (uint32_t k = nodes_[node].firstKeyword; k != none; k = steps_[k].next)
        search.offer(wordOf(steps_[k]));
}

std::string Grammar::keywordPath(Node node) const {
    std::string path;
    while (node != root) {
        const Step& step = steps_[nodes_[node].parentStep];
        if (step.place.kind == ArgumentKind::Keyword)
            path.insert(0, std::string(wordOf(step)) + (path.empty() ? "" : " "));
        node = step.from;
    }
    return path;
}

int Grammar::argumentCount(Node node) const {
    int count = 0;
    while (node != root) {
        const Step& step = steps_[nodes_[node].parentStep];
        if (step.place.kind != ArgumentKind::Keyword) ++count;
        node = step.from;
    }
    return count;
}

}  // namespace Zant::Language
