// The tree of forms, and the two hash tables through which keywords are found in it.

#include "language/grammar.h"

#include "language/lookup.h"

namespace Zant::Language {

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

// In the first free slot of the run that starts at the hash.
template <class Key>
void Grammar::store(Index<Key>& index, const Slot<Key>& slot) const {
    size_t hash = hashOf(slot.from, slot.keyword);
    while (index[hash & indexMask_].to != none)
        ++hash;
    index[hash & indexMask_] = slot;
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
        store<Word>(wordIndex_, {word, step.from, step.to});
        store<uint64_t>(numberIndex_, {step.number, step.from, step.to});
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
