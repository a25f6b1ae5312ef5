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
        if (node == Grammar::none) {
            note(Problem::UnknownCommand, Grammar::root, 0, start);
            return false;
        }
        if (walkOn(node, 0)) return true;
        command->truncate(0);
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
    bool readItem(const PlaceKind& place) {
        switch (place.value) {
            case ValueKind::Number:
                return addNumber(place.kind);
            case ValueKind::String:
                return encoding().readString();
            case ValueKind::Vector:
                return addVector();
            case ValueKind::Axes:
                return addAxes();
            case ValueKind::CoordSys:
                return addCoordSys();
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

    bool addNumber(ArgumentKind kind) {
        double number = 0;
        if (!encoding().readNumber(number) || !fitNumber(kind, number)) return false;
        command->addNumber(number);
        return true;
    }

    // Read in place: where that fails, the value does not stay.
    bool addVector() { return encoding().readVector(command->newVector()); }

    // Rare and large: inline, these two would burden the others.
    ZANT_NOINLINE bool addAxes() {
        ZantAxesCore axes{};
        if (!encoding().readAxes(axes)) return false;
        command->addAxes(Axes::isEye(axes) ? Axes() : Axes(axes));
        return true;
    }

    ZANT_NOINLINE bool addCoordSys() {
        ZantCoordSysCore coordSys{};
        if (!encoding().readCoordSys(coordSys)) return false;
        if (Axes::isEye(coordSys.axes)) coordSys.axes = Axes();
        command->addCoordSys(coordSys);
        return true;
    }

    // Goes on after an item, for as long as there is one way to go.
    bool walkOn(Grammar::Node node, int depth) {
        for (;; ++depth) {
            encoding().skipSpace();
            if (here == end) return finishAt(node, depth);
            if (!encoding().readSeparator(node, depth)) return false;
            const uint32_t step = grammar.firstArgument(node);
            if (step == Grammar::none && grammar.hasKeywords(node)) {
                node = takeKeyword(node, depth);
            } else if (step != Grammar::none && isOnlyWay(node, step)) {
                node = takeArgument(node, depth, step, 0);
            } else {
                return walkEveryWay(node, depth);
            }
            if (node == Grammar::none) return false;
        }
    }

    bool finishAt(Grammar::Node node, int depth) {
        command->form = grammar.formAt(node);
        if (!command->form) note(Problem::TooFew, node, depth + 1, here);
        return command->form != nullptr;
    }

    bool isOnlyWay(Grammar::Node node, uint32_t step) {
        return !grammar.hasKeywords(node) && grammar.nextArgument(step) == Grammar::none &&
               encoding().readings(grammar.placeOf(step)) == 1;
    }

    // Tries one way after the other, each from the same place. Not inline: the vocabulary of the engine has no forks.
    ZANT_NOINLINE bool walkEveryWay(Grammar::Node node, int depth) {
        const char* const item = here;
        const auto leadsOn = [&](Grammar::Node target) {
            if (target != Grammar::none && walkOn(target, depth + 1)) return true;
            command->truncate(static_cast<size_t>(depth));
            here = item;
            return false;
        };
        uint32_t step = grammar.firstArgument(node);
        if (step == Grammar::none && !grammar.hasKeywords(node)) note(Problem::TooMany, node, depth + 1, here);
        if (grammar.hasKeywords(node) && leadsOn(takeKeyword(node, depth))) return true;
        for (; step != Grammar::none; step = grammar.nextArgument(step)) {
            for (int k = 0; k < encoding().readings(grammar.placeOf(step)); ++k)
                if (leadsOn(takeArgument(node, depth, step, k))) return true;
        }
        return false;
    }

    // These two are the whole way where there is one, so that calls of them would cost: hence "inline".
    // @return the node after the keyword that stands here, or none
    inline Grammar::Node takeKeyword(Grammar::Node node, int depth) {
        const char* const item = here;
        const Grammar::Node target = encoding().readKeyword(node);
        if (target != Grammar::none) {
            command->beginValue(PlaceKind::keyword(), static_cast<size_t>(item - start));
        } else if (grammar.firstArgument(node) == Grammar::none) {
            note(Problem::UnknownKeyword, node, depth + 1, item);
        }
        return target;
    }

    // @return the node after the argument that stands here, or none
    inline Grammar::Node takeArgument(Grammar::Node node, int depth, uint32_t step, int whichReading) {
        const char* const item = here;
        const PlaceKind& place = grammar.placeOf(step);
        command->beginValue(place, static_cast<size_t>(item - start));
        complaint = nullptr;
        reading = whichReading;
        if (place.isList ? encoding().readList(place) : readItem(place)) return grammar.target(step);
        if (complaint) {
            note(Problem::BadArgument, node, depth + 1, encoding().damageIn(item), place.kind);
        } else {
            note(Problem::WrongArgument, node, depth + 1, item, place.kind);
        }
        return Grammar::none;
    }
};

}  // namespace Zant::Language

#endif
