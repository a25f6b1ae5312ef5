// What holds a command, and the comparison of two.

#include "language/command.h"

#include <algorithm>
#include <cstring>

namespace Zant::Language {

const char* Command::word() const {
    return keywordTables()[0].words[form->command - 1];
}

const char* Command::keywordText(size_t place) const {
    const FormToken& token = form->tokens[place];
    return keywordTables()[token.table].words[token.number - 1];
}

VarLenDouble Command::numbers(const Value& value) const {
    return VarLenDouble(numberItems_.data() + value.first, value.count);
}

VarLenVector Command::vectors(const Value& value) const {
    return VarLenVector(vectorItems_.data() + value.first, value.count);
}

VarLenCoordSys Command::coordSystems(const Value& value) const {
    return VarLenCoordSys(coordSysItems_.data() + value.first, value.count);
}

void Command::clear() {
    form = nullptr;
    source = {};
    valueList_.clear();
    numberItems_.clear();
    vectorItems_.clear();
    axesItems_.clear();
    coordSysItems_.clear();
    textItems_.clear();
    textsEnd_ = 0;
    for (uint32_t& count : itemCounts_)
        count = 0;
}

void Command::extendText(std::string_view text) {
    --textsEnd_;  // the terminator
    appendText(text);
}

void Command::growTexts(size_t size) {
    texts_.resize(std::max<size_t>({64, 2 * texts_.size(), size}));
}

void Command::truncate(size_t valueCount) {
    while (valueList_.size() > valueCount) {
        const Value& last = valueList_.back();
        switch (last.kind) {
            case ValueKind::Keyword:
                break;
            case ValueKind::Number:
                numberItems_.resize(last.first);
                break;
            case ValueKind::Vector:
                vectorItems_.resize(last.first);
                break;
            case ValueKind::Axes:
                axesItems_.resize(last.first);
                break;
            case ValueKind::CoordSys:
                coordSysItems_.resize(last.first);
                break;
            case ValueKind::String:
            case ValueKind::Symbol:
                if (last.first < textItems_.size()) textsEnd_ = textItems_[last.first];
                textItems_.resize(last.first);
                itemCount(ValueKind::String) = itemCount(ValueKind::Symbol) = last.first;
                break;
        }
        itemCount(last.kind) = last.first;
        valueList_.pop_back();
    }
}

Position placeOf(const Command& command, size_t place) {
    Position position = command.position;
    if (place >= command.values().size()) return position;
    const size_t offset = command.values()[place].offset;
    position.offset += offset;
    for (const char letter : command.source.substr(0, offset)) {
        position.column = letter == '\n' ? 1 : position.column + 1;
        position.line += letter == '\n';
    }
    return position;
}

namespace {

bool sameNumbers(const double* a, const double* b, int count) {
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): a NaN is the same as itself
    return std::equal(a, a + count, b, [](double x, double y) { return x == y || std::memcmp(&x, &y, sizeof x) == 0; });
}

bool sameAxes(const ZantAxesCore& a, const ZantAxesCore& b) {
    return a.rows == b.rows && sameNumbers(a.m, b.m, 3 * a.rows);
}

bool sameItem(const Command& left, const Value& a, const Command& right, const Value& b, size_t item) {
    switch (a.kind) {
        case ValueKind::Keyword:
            return true;
        case ValueKind::Number: {
            const double x = left.number(a, item), y = right.number(b, item);
            return sameNumbers(&x, &y, 1);
        }
        case ValueKind::Vector: {
            const Vector &x = left.vector(a, item), &y = right.vector(b, item);
            return x.count == y.count && sameNumbers(x.values, y.values, x.count);
        }
        case ValueKind::Axes:
            return sameAxes(left.axes(a, item), right.axes(b, item));
        case ValueKind::CoordSys: {
            const CoordSys &x = left.coordSys(a, item), &y = right.coordSys(b, item);
            return sameNumbers(x.position, y.position, 3) && sameAxes(x.axes, y.axes);
        }
        default:
            return std::strcmp(left.text(a, item), right.text(b, item)) == 0;
    }
}

}  // namespace

bool sameCommand(const Command& left, const Command& right) {
    if (left.form != right.form || left.values().size() != right.values().size()) return false;
    for (size_t k = 0; k < left.values().size(); ++k) {
        const Value &a = left.values()[k], &b = right.values()[k];
        if (a.kind != b.kind || a.count != b.count) return false;
        for (size_t item = 0; item < a.count; ++item) {
            if (!sameItem(left, a, right, b, item)) return false;
        }
    }
    return true;
}

}  // namespace Zant::Language
