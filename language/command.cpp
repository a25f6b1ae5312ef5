// The store behind a command, and the comparison of two.

#include "language/command.h"

#include <cmath>
#include <cstring>

#include "own/str2num.h"
#include "own/textbuffer.h"

namespace Zant {

ValueKind valueKindOf(ArgumentKind place) {
    switch (place) {
        case ArgumentKind::Keyword:
            return ValueKind::Keyword;
        case ArgumentKind::Double:
        case ArgumentKind::Int:
        case ArgumentKind::Bool:
        case ArgumentKind::Unsigned:
        case ArgumentKind::DoubleList:
            return ValueKind::Number;
        case ArgumentKind::String:
            return ValueKind::String;
        case ArgumentKind::Vector:
        case ArgumentKind::VectorList:
            return ValueKind::Vector;
        case ArgumentKind::Axes:
            return ValueKind::Axes;
        case ArgumentKind::CoordSys:
        case ArgumentKind::CoordSysList:
            return ValueKind::CoordSys;
        default:
            return ValueKind::Symbol;
    }
}

bool isListPlace(ArgumentKind place) {
    return place >= ArgumentKind::DoubleList;
}

const char* Command::word() const {
    return keywordTables()[0].words[form->command - 1];
}

const char* Command::keywordText(size_t place) const {
    const FormToken& token = form->tokens[place];
    return keywordTables()[token.table].words[token.number - 1];
}

VarLenDouble Command::numbers(const Value& value) const {
    return VarLenDouble(numberItems.data() + value.first, value.count);
}

VarLenVector Command::vectors(const Value& value) const {
    return VarLenVector(vectorItems.data() + value.first, value.count);
}

VarLenCoordSys Command::coordSystems(const Value& value) const {
    return VarLenCoordSys(coordSysItems.data() + value.first, value.count);
}

void Command::clear() {
    form = nullptr;
    source = {};
    valueList.clear();
    numberItems.clear();
    vectorItems.clear();
    axesItems.clear();
    coordSysItems.clear();
    textItems.clear();
    texts.clear();
}

void Command::beginValue(ArgumentKind place, size_t offset) {
    Value value;
    value.kind = valueKindOf(place);
    value.isList = isListPlace(place);
    value.first = static_cast<uint32_t>(itemCount(value.kind));
    value.count = 0;
    value.offset = static_cast<uint32_t>(offset);
    valueList.push_back(value);
}

size_t Command::itemCount(ValueKind kind) const {
    switch (kind) {
        case ValueKind::Keyword:
            return 0;
        case ValueKind::Number:
            return numberItems.size();
        case ValueKind::Vector:
            return vectorItems.size();
        case ValueKind::Axes:
            return axesItems.size();
        case ValueKind::CoordSys:
            return coordSysItems.size();
        default:
            return textItems.size();
    }
}

void Command::addNumber(double number) {
    numberItems.emplace_back(number);
    countItem();
}

void Command::addVector(const Vector& vector) {
    vectorItems.push_back(vector);
    countItem();
}

void Command::addAxes(const Axes& axes) {
    axesItems.push_back(axes);
    countItem();
}

void Command::addCoordSys(const CoordSys& coordSys) {
    coordSysItems.push_back(coordSys);
    countItem();
}

void Command::addText(std::string_view text) {
    textItems.push_back(texts.size());
    texts.append(text);
    texts.push_back('\0');
    countItem();
}

void Command::extendText(std::string_view text) {
    texts.pop_back();
    texts.append(text);
    texts.push_back('\0');
}

void Command::truncate(size_t valueCount) {
    while (valueList.size() > valueCount) {
        const Value& last = valueList.back();
        switch (last.kind) {
            case ValueKind::Keyword:
                break;
            case ValueKind::Number:
                numberItems.resize(last.first);
                break;
            case ValueKind::Vector:
                vectorItems.resize(last.first);
                break;
            case ValueKind::Axes:
                axesItems.resize(last.first);
                break;
            case ValueKind::CoordSys:
                coordSysItems.resize(last.first);
                break;
            case ValueKind::String:
            case ValueKind::Symbol:
                if (last.first < textItems.size()) texts.resize(textItems[last.first]);
                textItems.resize(last.first);
                break;
        }
        valueList.pop_back();
    }
}

namespace {

/// What becomes of a number that is written as text and read again.
double written(double number) {
    TextBuffer text;
    text.concat(number);
    const char* digits = text;
    return sdecimal_2_double(digits);
}

/// Compares values exactly, or the first command's as they are written.
class Comparison {
public:
    Comparison(const Command& one, const Command& other, bool firstIsWritten)
        : first(one), second(other), asWritten(firstIsWritten) {}

    bool sameValue(const Value& a, const Value& b) const {
        if (a.kind != b.kind || a.count != b.count) return false;
        for (size_t item = 0; item < a.count; ++item) {
            if (!sameItem(a, b, item)) return false;
        }
        return true;
    }

private:
    bool sameItem(const Value& a, const Value& b, size_t item) const {
        switch (a.kind) {
            case ValueKind::Keyword:
                return true;
            case ValueKind::Number:
                return same(first.number(a, item), second.number(b, item));
            case ValueKind::Vector:
                return sameVector(first.vector(a, item), second.vector(b, item));
            case ValueKind::Axes:
                return sameAxes(first.axes(a, item), second.axes(b, item));
            case ValueKind::CoordSys:
                return sameCoordSys(first.coordSys(a, item), second.coordSys(b, item));
            default:
                return std::strcmp(first.text(a, item), second.text(b, item)) == 0;
        }
    }

    bool same(double a, double b) const {
        return asWritten ? near(written(a), b) : std::memcmp(&a, &b, sizeof a) == 0 || a == b;
    }

    bool sameAngle(double a, double b) const {
        constexpr double pi = 3.141592653589793;
        return asWritten ? near(written((a * 180.0) / pi) * pi / 180.0, b) : same(a, b);
    }

    // Reading makes integers whole, which the text of large ones is only nearly.
    static bool near(double a, double b) { return a == b || std::abs(a - b) <= 1e-12 * std::abs(a); }

    bool sameRun(const double* a, const double* b, int count) const {
        for (int k = 0; k < count; ++k) {
            if (!same(a[k], b[k])) return false;
        }
        return true;
    }

    bool sameVector(const Vector& a, const Vector& b) const {
        return a.count == b.count && sameRun(a.values, b.values, a.count);
    }

    // The eye in the form of other axes: what is written may turn out to be the identity.
    static ZantAxesCore inFormOf(const ZantAxesCore& axes, const ZantAxesCore& other) {
        if (axes.rows != 0) return axes;
        if (other.rows == 2) return AxesHpb();
        return other.rows == 3 ? ZantAxesCore(Axes(Matrix3x3())) : axes;
    }

    bool sameAxes(const ZantAxesCore& left, const ZantAxesCore& right) const {
        if (!asWritten && left.rows != right.rows) return false;
        const ZantAxesCore a = inFormOf(left, right), b = inFormOf(right, left);
        if (a.rows != b.rows) return false;
        for (int k = 0; k < 3 * a.rows; ++k) {
            const bool isAngle = a.rows == 2 && k < 3;
            if (!(isAngle ? sameAngle(a.m[k], b.m[k]) : same(a.m[k], b.m[k]))) return false;
        }
        return true;
    }

    bool sameCoordSys(const CoordSys& a, const CoordSys& b) const {
        return sameRun(a.position, b.position, 3) && sameAxes(a.axes, b.axes);
    }

    const Command& first;
    const Command& second;
    bool asWritten;
};

bool compare(const Command& left, const Command& right, bool asWritten) {
    if (left.form != right.form || left.values().size() != right.values().size()) return false;
    const Comparison comparison(left, right, asWritten);
    for (size_t k = 0; k < left.values().size(); ++k) {
        if (!comparison.sameValue(left.values()[k], right.values()[k])) return false;
    }
    return true;
}

}  // namespace

bool sameCommand(const Command& left, const Command& right) {
    return compare(left, right, false);
}

bool sameAsWritten(const Command& original, const Command& read) {
    return compare(original, read, true);
}

}  // namespace Zant
