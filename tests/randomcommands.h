#ifndef ZANT_TESTS_RANDOMCOMMANDS_H
#define ZANT_TESTS_RANDOMCOMMANDS_H

#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <random>
#include <string>

#include "language/command.h"
#include "language/numbers.h"

namespace Zant::Language {

/// Commands of a form with arguments by chance, the same ones for the same seed.
class RandomCommands {
public:
    explicit RandomCommands(unsigned seed) : engine(seed) {}

    unsigned below(unsigned limit) { return static_cast<unsigned>(engine() % limit); }

    /// Any finite double: eighths, numbers with eight decimals, large integers, any bits.
    double number() {
        switch (below(4)) {
            case 0:
                return (static_cast<int>(below(20001)) - 10000) / 8.0;
            case 1:
                return (static_cast<double>(engine()) - 2147483648.0) / 1e8;
            case 2:
                return static_cast<double>(engine()) * static_cast<double>(engine());
            default:
                return anyBits();
        }
    }
    double anyBits() {
        double number = 0;
        do {
            const uint64_t bits = static_cast<uint64_t>(engine()) << 32 | engine();
            std::memcpy(&number, &bits, sizeof number);
        } while (!std::isfinite(number));
        return number;
    }

    void make(const Form& form, Command& command) {
        command.clear();
        command.form = &form;
        for (uint16_t place = 0; place < form.tokenCount; ++place) {
            const ArgumentKind kind = form.tokens[place].kind;
            command.beginValue(kind, 0);
            unsigned items = isListPlace(kind) ? below(4) : 1;
            if (kind == ArgumentKind::Keyword) items = 0;
            while (items-- > 0)
                addItem(kind, command);
        }
    }

private:
    void addItem(ArgumentKind kind, Command& command) {
        switch (valueKindOf(kind)) {
            case ValueKind::Keyword:
                break;
            case ValueKind::Number:
                return command.addNumber(numberFor(kind));
            case ValueKind::String:
                return command.addText(text({"", "a", "say \"so\"", "two\nlines; {1,2}", "eight888", "\""}));
            case ValueKind::Vector:
                return command.addVector(vector());
            case ValueKind::Axes:
                return command.addAxes(axes());
            case ValueKind::CoordSys: {
                CoordSys coordSys(Vector(number(), number(), number()), axes());
                return command.addCoordSys(coordSys);
            }
            case ValueKind::Symbol:
                return command.addText(text({"sky", "has space", "a,b", "quote\"d", "x", "[46]", "<>", "7", "-.5e1"}));
        }
    }

    double numberFor(ArgumentKind kind) {
        switch (kind) {
            case ArgumentKind::Int:
                return static_cast<int32_t>(engine());
            case ArgumentKind::Bool:
                return below(2);
            case ArgumentKind::Unsigned:
                return static_cast<double>(static_cast<uint64_t>(engine()) << below(33));
            default:
                return number();
        }
    }

    std::string text(std::initializer_list<const char*> choices) {
        return choices.begin()[below(static_cast<unsigned>(choices.size()))];
    }

    Vector vector() {
        Vector result(number(), number(), number(), number());
        result.count = static_cast<int>(1 + below(4));
        return result;
    }

    // Of some angles there are no degrees.
    double angle() { return below(2) == 0 ? number() / 1000 : radiansOf(below(360000) / 1000.0); }

    Axes axes() {
        switch (below(4)) {
            case 0:
                return {};
            case 1:
                return AxesHpb(0, 0, 0, 2, 2, 2);
            case 2:
                return AxesHpb(angle(), angle(), 1, 1 + below(2), number(), 1);
            default:
                return Matrix3x3(1, 0, 0, 0, 0, number(), 0, -1, 0);
        }
    }

    std::mt19937 engine;
};

}  // namespace Zant::Language

#endif
