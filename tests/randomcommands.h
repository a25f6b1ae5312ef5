#ifndef ZANT_TESTS_RANDOMCOMMANDS_H
#define ZANT_TESTS_RANDOMCOMMANDS_H

#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>

#include "language/command.h"
#include "language/numbers.h"

namespace Zant::Language {

/// Makes a command of a form. Here each list has one item, and each value is the simplest that there is.
class SampleCommands {
public:
    virtual ~SampleCommands() = default;

    void make(const Form& form, Command& command) {
        command.clear();
        command.form = &form;
        for (size_t place = 0; place < form.tokenCount; ++place) {
            const ArgumentKind kind = form.tokens[place].kind;
            command.beginValue(kind, 0);
            for (unsigned items = isListPlace(kind) ? listLength() : 1; items > 0; --items)
                addItem(kind, place, command);
        }
    }

protected:
    virtual unsigned listLength() { return 1; }
    virtual double numberFor(ArgumentKind) { return 1; }
    virtual Vector vector() { return Vector(1, 1, 1); }
    virtual Axes axes() { return {}; }
    /// A text, or the name of a symbol.
    virtual std::string textFor(ArgumentKind, size_t /*place*/) { return "x"; }

private:
    void addItem(ArgumentKind kind, size_t place, Command& command) {
        switch (valueKindOf(kind)) {
            case ValueKind::Keyword:
                return;
            case ValueKind::Number:
                return command.addNumber(numberFor(kind));
            case ValueKind::Vector:
                return command.addVector(vector());
            case ValueKind::Axes:
                return command.addAxes(axes());
            case ValueKind::CoordSys:
                return command.addCoordSys(CoordSys(Vector(numberFor(kind), numberFor(kind), numberFor(kind)), axes()));
            default:
                return command.addText(textFor(kind, place));
        }
    }
};

/// Commands of a form with arguments by chance, the same ones for the same seed.
class RandomCommands : public SampleCommands {
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

private:
    unsigned listLength() override { return below(4); }

    double numberFor(ArgumentKind kind) override {
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

    std::string textFor(ArgumentKind kind, size_t) override {
        static const char* const texts[] = {"", "a", "say \"so\"", "two\nlines; {1,2}", "eight888", "\""};
        static const char* const names[] = {"sky", "has space", "a,b", "quote\"d", "x", "[46]", "<>", "7", "-.5e1"};
        return valueKindOf(kind) == ValueKind::String ? texts[below(6)] : names[below(9)];
    }

    Vector vector() override {
        Vector result(number(), number(), number(), number());
        result.count = static_cast<int>(1 + below(4));
        return result;
    }

    // Of some angles there are no degrees.
    double angle() { return below(2) == 0 ? number() / 1000 : radiansOf(below(360000) / 1000.0); }

    Axes axes() override {
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
