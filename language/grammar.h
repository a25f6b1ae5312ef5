#ifndef ZANT_LANGUAGE_GRAMMAR_H
#define ZANT_LANGUAGE_GRAMMAR_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "client/protos/forms.h"
#include "language/placekind.h"

namespace Zant::Language {

class NearestWord;

/// The forms of a vocabulary as one tree, in which a command is followed item by item.
///
/// A node is what has been read so far; the root is the empty command, and its keywords are the command words. From a
/// node lead keywords, found by word or by number, and arguments, by kind. Where a word or number could be two
/// keywords of two tables, and where two forms are the same sequence, the first one in the order of the forms holds.
/// Since it is a tree, a reader that tries every way visits each node at most once.
class Grammar {
public:
    using Node = uint32_t;
    static constexpr Node root = 0;
    static constexpr Node none = UINT32_MAX;

    /// A word, with its last eight letters, or all that it has, as one number: what a reader gathers on its way.
    struct Word {
        std::string_view text;
        uint64_t tail = 0;

        Word() = default;
        Word(std::string_view word);
        Word(std::string_view word, uint64_t itsTail) : text(word), tail(itsTail) {}

        static uint64_t tailWith(uint64_t tail, char next) { return tail << 8 | static_cast<unsigned char>(next); }
        bool operator==(const Word& other) const {
            if (tail != other.tail || text.size() != other.text.size()) return false;
            for (size_t k = 0; k + sizeof tail < text.size(); ++k)
                if (text[k] != other.text[k]) return false;
            return true;
        }
    };

    /// Both ranges must outlive the grammar. The table of command words is at index 0.
    Grammar(FormRange<Form> forms, FormRange<KeywordTable> tables);

    /// The vocabulary of the engine, made on first use.
    static const Grammar& vocabulary();

    /// @return the node after a keyword, or none
    Node byWord(Node node, const Word& word) const { return find(wordIndex_, node, word); }
    Node byNumber(Node node, uint64_t number) const { return find(numberIndex_, node, number); }

    /// @return the form that ends here, or null
    const Form* formAt(Node node) const { return nodes_[node].form; }
    /// @return the form with the fewest places that goes through here
    const Form* shortestForm(Node node) const { return nodes_[node].shortest; }

    bool hasKeywords(Node node) const { return nodes_[node].firstKeyword != none; }
    /// The arguments that may follow: for (step = firstArgument(node); step != none; step = nextArgument(step))
    uint32_t firstArgument(Node node) const { return nodes_[node].firstArgument; }
    uint32_t nextArgument(uint32_t step) const { return steps_[step].next; }
    const PlaceKind& placeOf(uint32_t step) const { return steps_[step].place; }
    Node target(uint32_t step) const { return steps_[step].to; }

    /// Offers every keyword that may follow.
    void offerKeywords(Node node, NearestWord& search) const;
    /// @return the command word and the keywords up to here: "fg gradients"
    std::string keywordPath(Node node) const;
    /// @return the number of arguments up to here
    int argumentCount(Node node) const;

    /// What a reader could take for something else: pairs of forms with the same sequence, keywords that stand beside
    /// an argument, words and numbers that two tables share at one place, and arguments of two kinds at one place.
    struct Ambiguities {
        std::vector<const Form*> sameSequence;       // forms that an earlier form hides
        std::vector<const Form*> sameKeyword;        // shortest forms after a keyword that an earlier one hides
        std::vector<const Form*> keywordOrArgument;  // shortest forms through such a node
        std::vector<const Form*> severalKinds;       // the same
    };
    const Ambiguities& ambiguities() const { return found_; }

private:
    struct NodeData {
        const Form* form = nullptr;
        const Form* shortest = nullptr;
        uint32_t firstKeyword = none;
        uint32_t firstArgument = none;
        uint32_t parentStep = none;
    };
    struct Step {
        PlaceKind place;
        uint8_t table;
        uint16_t number;
        Node from;
        Node to;
        uint32_t next;
    };

    template <class Key>
    struct Slot {
        Key keyword;
        Node from = none;
        Node to = none;  // none: the slot is free
    };
    template <class Key>
    using Index = std::vector<Slot<Key>>;

    void insert(const Form& form);
    Node follow(Node node, const FormToken& token, const Form& form);
    Node addStep(Node node, const FormToken& token, uint32_t& link);
    void buildIndex();
    void findAmbiguities();
    const char* wordOf(const Step& step) const;

    static size_t hashOf(Node node, uint64_t number) {
        return ((node * size_t{0x9E3779B97F4A7C15}) ^ number) * size_t{0xC2B2AE3D27D4EB4F} >> 32;
    }
    static size_t hashOf(Node node, const Word& word) { return hashOf(node, word.tail); }

    template <class Key>
    Node find(const Index<Key>& index, Node node, const Key& keyword) const {
        for (size_t hash = hashOf(node, keyword);; ++hash) {
            const Slot<Key>& slot = index[hash & indexMask_];
            if (slot.to == none || (slot.from == node && slot.keyword == keyword)) return slot.to;
        }
    }
    template <class Key>
    void store(Index<Key>& index, const Slot<Key>& slot) const;

    FormRange<KeywordTable> keywordTables_;
    std::vector<NodeData> nodes_;
    std::vector<Step> steps_;
    size_t indexMask_ = 0;         // of both: open addressing, a power of two of slots
    Index<Word> wordIndex_;        // keywords by node and word
    Index<uint64_t> numberIndex_;  // the same by node and number
    Ambiguities found_;
};

}  // namespace Zant::Language

#endif
