// Parsing of one binary block: the way through the forms, and the items of every kind of argument.

#include "language/blockparser.h"

#include <cstring>

#include "language/numbers.h"

namespace Zant {

using namespace BlockLayout;

bool BlockParser::parse(const void* block, size_t size, Command& target) {
    bytes = static_cast<const unsigned char*>(block);
    here = firstItem;
    end = size - endWords * wordSize;
    command = &target;
    command->clear();
    deepest = Mismatch();
    complaint = nullptr;
    const Grammar::Node node = grammar.byNumber(Grammar::root, takeWord());
    if (node != Grammar::none) return walk(node, 0);
    note(Problem::UnknownCommand, Grammar::root, 0, firstItem);
    return false;
}

// Goes on behind an item. The forms are a tree, and a text can be empty in two ways: a form with n texts is tried
// at most 2^n times, and no form has more than a few.
bool BlockParser::walk(Grammar::Node node, int depth) {
    if (here == end) {
        command->form = grammar.formAt(node);
        if (!command->form) note(Problem::TooFew, node, depth + 1, here);
        return command->form != nullptr;
    }
    if (grammar.hasKeywords(node) && walkKeyword(node, depth)) return true;
    uint32_t step = grammar.firstArgument(node);
    if (step == Grammar::none && !grammar.hasKeywords(node)) note(Problem::TooMany, node, depth + 1, here);
    for (; step != Grammar::none; step = grammar.nextArgument(step)) {
        if (walkArgument(node, depth, step, EmptyText::Terminated)) return true;
        const bool isEmptyText = grammar.kindOf(step) == ArgumentKind::String && wordAt(bytes + here) == 0;
        if (isEmptyText && walkArgument(node, depth, step, EmptyText::Null)) return true;
    }
    return false;
}

bool BlockParser::walkKeyword(Grammar::Node node, int depth) {
    const size_t item = here;
    const Grammar::Node target = grammar.byNumber(node, takeWord());
    if (target != Grammar::none) {
        command->beginValue(ArgumentKind::Keyword, item - firstItem);
        if (walk(target, depth + 1)) return true;
        command->truncate(static_cast<size_t>(depth));
    } else if (grammar.firstArgument(node) == Grammar::none) {
        note(Problem::UnknownKeyword, node, depth + 1, item);
    }
    here = item;
    return false;
}

bool BlockParser::walkArgument(Grammar::Node node, int depth, uint32_t step, EmptyText emptyText) {
    const size_t item = here;
    const ArgumentKind kind = grammar.kindOf(step);
    command->beginValue(kind, item - firstItem);
    complaint = nullptr;
    empty = emptyText;
    if (readArgument(kind)) {
        if (walk(grammar.target(step), depth + 1)) return true;
    } else {
        note(complaint ? Problem::BadArgument : Problem::WrongArgument, node, depth + 1, item, kind);
    }
    command->truncate(static_cast<size_t>(depth));
    here = item;
    return false;
}

bool BlockParser::readArgument(ArgumentKind kind) {
    return isListPlace(kind) ? readList(kind) : readItem(kind);
}

bool BlockParser::readList(ArgumentKind kind) {
    // One item may stand without the marks of a list, as it does in text: vertex maps send their rows like that.
    if (has(1) && wordAt(bytes + here) != listMarker) return readItem(kind);
    if (!has(listWords + endWords) || takeWord() != listMarker) return false;
    const uint64_t length = takeWord();
    if (length < wordSize || length % wordSize != 0 || length > end - here)
        return fail("the list does not fit into the block");
    const size_t behind = here + length;
    const size_t outerEnd = end;
    if (wordAt(bytes + behind - wordSize) != endMarker) return fail("the list has no end");
    end = behind - wordSize;
    bool good = true;
    while (good && here != end)
        good = readItem(kind);
    end = outerEnd;
    if (!good) return fail(complaint ? complaint : "the list holds something else");
    here = behind;
    return true;
}

bool BlockParser::readItem(ArgumentKind kind) {
    switch (valueKindOf(kind)) {
        case ValueKind::Number:
            return readNumber(kind);
        case ValueKind::String:
            return readString();
        case ValueKind::Vector:
            return readVector();
        case ValueKind::Axes: {
            ZantAxesCore axes{};
            if (!readAxes(axes)) return false;
            command->addAxes(axes);
            return true;
        }
        case ValueKind::CoordSys:
            return readCoordSys();
        default:
            return readSymbol();
    }
}

bool BlockParser::readNumber(ArgumentKind kind) {
    if (!has(numberWords) || takeWord() != 0) return false;
    double number = 0;
    takeDoubles(&number, 1);
    if (!fitNumber(kind, number)) return false;
    command->addNumber(number);
    return true;
}

bool BlockParser::readString() {
    if (!has(1)) return false;
    const uint64_t length = takeWord();
    if (length != 0 || empty == EmptyText::Terminated) return readText(length);
    command->addText({});
    return true;
}

bool BlockParser::readText(uint64_t length) {
    if (length >= end - here) return fail("the text does not fit into the block");
    const auto* text = reinterpret_cast<const char*>(bytes + here);
    if (std::memchr(text, '\0', length + 1) != text + length) return fail("the text does not end where it should");
    command->addText({text, length});
    here += textWords(length) * wordSize;
    return true;
}

bool BlockParser::readVector() {
    if (!has(1)) return false;
    const uint64_t count = takeWord();
    if (count < 1 || count > 4 || !has(count)) return false;
    ZantVectorCore vector{};
    vector.count = static_cast<int32_t>(count);
    takeDoubles(vector.values, count);
    command->addVector(vector);
    return true;
}

bool BlockParser::readAxes(ZantAxesCore& axes) {
    if (!has(1)) return false;
    const uint64_t rows = takeWord();
    if (rows > 3 || !has(3 * rows)) return false;
    axes.rows = static_cast<int32_t>(rows);
    takeDoubles(axes.m, 3 * rows);
    if (Axes::isEye(axes)) axes = Axes();
    return true;
}

bool BlockParser::readCoordSys() {
    if (!has(coordSysWords(0))) return false;
    ZantCoordSysCore coordSys{};
    takeDoubles(coordSys.position, 3);
    if (!readAxes(coordSys.axes)) return false;
    command->addCoordSys(coordSys);
    return true;
}

bool BlockParser::readSymbol() {
    if (!has(registeredWords)) return false;
    const uint64_t length = takeWord();
    if (length == 0) return readRegistered();
    if (length > longestName) return fail("the name is longer than 127 bytes");
    return readText(length);
}

bool BlockParser::readRegistered() {
    const char* const name = symbols ? symbols->nameOf(takeWord()) : nullptr;
    if (!name) return fail("no object has this registered word");
    command->addText(name);
    return true;
}

bool BlockParser::fail(const char* why) {
    complaint = why;
    return false;
}

void BlockParser::note(Problem problem, Grammar::Node node, int depth, size_t at, ArgumentKind expected) {
    Mismatch mismatch;
    mismatch.problem = problem;
    mismatch.depth = depth;
    mismatch.node = node;
    mismatch.expected = expected;
    mismatch.offset = at;
    mismatch.detail = complaint;
    deepest.keepDeeper(mismatch);
}

uint64_t BlockParser::takeWord() {
    const uint64_t word = wordAt(bytes + here);
    here += wordSize;
    return word;
}

void BlockParser::takeDoubles(double* values, size_t count) {
    std::memcpy(values, bytes + here, count * sizeof *values);
    here += count * sizeof *values;
}

std::string BlockParser::found() const {
    if (deepest.offset == end) return "the end of the command";
    const uint64_t word = wordAt(bytes + deepest.offset);
    if (word == listMarker) return "a list";
    if (word == 0 && deepest.problem != Problem::UnknownKeyword && deepest.offset + wordSize < end) {
        double number = 0;
        std::memcpy(&number, bytes + deepest.offset + wordSize, sizeof number);
        return "the word 0 and " + numberText(number);
    }
    return "the word " + std::to_string(static_cast<int64_t>(word));
}

}  // namespace Zant
