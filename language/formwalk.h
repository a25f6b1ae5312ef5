#ifndef ZANT_LANGUAGE_FORMWALK_H
#define ZANT_LANGUAGE_FORMWALK_H

#include "language/command.h"
#include "language/grammar.h"
#include "language/mismatch.h"

namespace Zant::Language {

/// The way of one command through the forms, the same for every encoding. The class derived from it reads the items:
/// it moves `here` and says whether there was one, or calls fail() where one is damaged.
///
/// The forms are a tree, so that each of its nodes is visited at most once for each reading of its argument, whatever
/// the input.
template <class Encoding>
class FormWalk {
public:
    explicit FormWalk(const Grammar& vocabulary) : grammar(vocabulary) {}

    /// Why the input is not a command, with the way that led furthest.
    const Mismatch& mismatch() const { return deepest; }

protected:
    /// @param first the command word
    /// @param last after the last item
    bool walk(const char* first, const char* last, Command& target) {
        command = &target;
        command->clear();
        deepest = Mismatch();
        complaint = nullptr;
        start = here = first;
        end = last;
        const Grammar::Node node = encoding().readKeyword(Grammar::root);
        if (node != Grammar::none) return walkOn(node, 0);
        note(Problem::UnknownCommand, Grammar::root, 0, start);
        return false;
    }

    bool fail(const char* why) {
        complaint = why;
        return false;
    }

    void note(Problem problem, Grammar::Node node, int depth, const char* at,
              ArgumentKind expected = ArgumentKind::Keyword) {
        deepest.keepDeeper({problem, depth, node, expected, static_cast<size_t>(at - start), complaint});
    }

    /// One item of a list, or an argument that is not one.
    bool readItem(ArgumentKind kind) {
        switch (valueKindOf(kind)) {
            case ValueKind::Number: {
                double number = 0;
                if (!encoding().readNumber(number) || !fitNumber(kind, number)) return false;
                command->addNumber(number);
                return true;
            }
            case ValueKind::String:
                return encoding().readString();
            case ValueKind::Vector: {
                ZantVectorCore vector{};
                if (!encoding().readVector(vector)) return false;
                command->addVector(vector);
                return true;
            }
            case ValueKind::Axes: {
                ZantAxesCore axes{};
                if (!encoding().readAxes(axes)) return false;
                command->addAxes(Axes::isEye(axes) ? Axes() : Axes(axes));
                return true;
            }
            case ValueKind::CoordSys: {
                ZantCoordSysCore coordSys{};
                if (!encoding().readCoordSys(coordSys)) return false;
                if (Axes::isEye(coordSys.axes)) coordSys.axes = Axes();
                command->addCoordSys(coordSys);
                return true;
            }
            default:
                return encoding().readSymbol();
        }
    }

    const Grammar& grammar;
    Command* command = nullptr;
    const char* start = nullptr;      // the command word; places count from here
    const char* here = nullptr;       // what is read next
    const char* end = nullptr;        // after the last item, of the command or of the list that is being read
    const char* complaint = nullptr;  // why the argument is damaged; null when it is none at all
    int reading = 0;                  // of an argument that can be read in several ways
    Mismatch deepest;

private:
    Encoding& encoding() { return static_cast<Encoding&>(*this); }

    // Goes on after an item.
    bool walkOn(Grammar::Node node, int depth) {
        encoding().skipSpace();
        if (here == end) {
            command->form = grammar.formAt(node);
            if (!command->form) note(Problem::TooFew, node, depth + 1, here);
            return command->form != nullptr;
        }
        if (!encoding().readSeparator(node, depth)) return false;
        if (grammar.hasKeywords(node) && walkKeyword(node, depth)) return true;
        uint32_t step = grammar.firstArgument(node);
        if (step == Grammar::none && !grammar.hasKeywords(node)) note(Problem::TooMany, node, depth + 1, here);
        for (; step != Grammar::none; step = grammar.nextArgument(step)) {
            for (int k = 0; k < encoding().readings(grammar.kindOf(step)); ++k)
                if (walkArgument(node, depth, step, k)) return true;
        }
        return false;
    }

    bool walkKeyword(Grammar::Node node, int depth) {
        const char* const item = here;
        const Grammar::Node target = encoding().readKeyword(node);
        if (target != Grammar::none) {
            command->beginValue(ArgumentKind::Keyword, static_cast<size_t>(item - start));
            if (walkOn(target, depth + 1)) return true;
            command->truncate(static_cast<size_t>(depth));
        } else if (grammar.firstArgument(node) == Grammar::none) {
            note(Problem::UnknownKeyword, node, depth + 1, item);
        }
        here = item;
        return false;
    }

    bool walkArgument(Grammar::Node node, int depth, uint32_t step, int whichReading) {
        const char* const item = here;
        const ArgumentKind kind = grammar.kindOf(step);
        command->beginValue(kind, static_cast<size_t>(item - start));
        complaint = nullptr;
        reading = whichReading;
        if (isListPlace(kind) ? encoding().readList(kind) : readItem(kind)) {
            if (walkOn(grammar.target(step), depth + 1)) return true;
        } else if (complaint) {
            note(Problem::BadArgument, node, depth + 1, encoding().damageIn(item), kind);
        } else {
            note(Problem::WrongArgument, node, depth + 1, item, kind);
        }
        command->truncate(static_cast<size_t>(depth));
        here = item;
        return false;
    }
};

}  // namespace Zant::Language

#endif
