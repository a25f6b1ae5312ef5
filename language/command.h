#ifndef ZANT_LANGUAGE_COMMAND_H
#define ZANT_LANGUAGE_COMMAND_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "client/values/axes.h"
#include "client/values/coordsys.h"
#include "client/values/varlen.h"
#include "client/values/vector.h"
#include "language/placekind.h"

namespace Zant::Language {

/// Where something stands in its input.
///
/// Offsets count bytes from the start of the input, from 0. Lines and columns count from 1, columns in bytes. In a
/// binary block there are no lines: both are 0.
struct Position {
    size_t offset = 0;
    size_t line = 0;
    size_t column = 0;
};

/// One value of a command: which of the command's stored items it is. Read it with the accessors of Command.
struct Value {
    ValueKind kind = ValueKind::Keyword;
    bool isList = false;
    uint32_t first = 0;   ///< index of its first item among the command's items of this kind; for Command itself
    uint32_t count = 1;   ///< items: 1, or the length of the list
    uint32_t offset = 0;  ///< bytes from the start of the command to where it stands

    Value() = default;
    /// One without an item yet.
    Value(const PlaceKind& place, uint32_t firstItem, uint32_t itsOffset)
        : kind(place.value), isList(place.isList), first(firstItem), count(0), offset(itsOffset) {}
};

/// One command, the same whichever encoding it was read from.
///
/// A command has one value for each place of its form, keywords included: values()[k] stands for form->tokens[k].
/// Numbers are as the places want them: integral where the form says so, 0 or 1 for a truth value. Angles are in
/// radians. Axes that are the identity have form 0, whatever they were written as. The null text and the empty text
/// are the same. Registered symbols of a block carry their name.
///
/// A command is meant to be used again for the next one: clearing keeps its memory. Texts and items belong to it and
/// are valid until it is changed.
class Command {
public:
    const Form* form = nullptr;  ///< the form that the command fits; null while it is empty
    Position position;           ///< where its command word stands
    std::string_view source;     ///< its text without the ";", valid until the next read; empty for a binary block

    /// @return the spelling of the command word
    const char* word() const;

    const std::vector<Value>& values() const { return valueList_; }

    /// @return the keyword's number in its table, and its spelling
    int keywordNumber(size_t place) const { return form->tokens[place].number; }
    const char* keywordText(size_t place) const;

    /// One item of a value, or of a list.
    double number(const Value& value, size_t item = 0) const { return numberItems_[value.first + item].value; }
    const Vector& vector(const Value& value, size_t item = 0) const { return vectorItems_[value.first + item]; }
    const Axes& axes(const Value& value, size_t item = 0) const { return axesItems_[value.first + item]; }
    const CoordSys& coordSys(const Value& value, size_t item = 0) const { return coordSysItems_[value.first + item]; }
    /// The bytes of a string or the name of a symbol, terminated.
    const char* text(const Value& value, size_t item = 0) const {
        return texts_.data() + textItems_[value.first + item];
    }

    /// Items of a list next to each other, as the command buffers take them.
    VarLenDouble numbers(const Value& value) const;
    VarLenVector vectors(const Value& value) const;
    VarLenCoordSys coordSystems(const Value& value) const;

    /// Empties the command and keeps its memory.
    void clear();

    /// Building: begins the value of the next place, then adds its items, exactly one unless it is a list.
    void beginValue(const PlaceKind& place, size_t offset) {
        valueList_.emplace_back(place, itemCount(place.value), static_cast<uint32_t>(offset));
    }
    void addNumber(double number) { addItem(ValueKind::Number, numberItems_, number); }
    void addVector(const Vector& vector) { addItem(ValueKind::Vector, vectorItems_, vector); }
    /// @return a vector to be filled in: the origin
    Vector& newVector() { return addItem(ValueKind::Vector, vectorItems_, Vector()); }
    void addAxes(const Axes& axes) { addItem(ValueKind::Axes, axesItems_, axes); }
    void addCoordSys(const CoordSys& coordSys) { addItem(ValueKind::CoordSys, coordSysItems_, coordSys); }
    /// @param text copied; it holds no zero byte
    void addText(std::string_view text) {
        addItem(ValueKind::String, textItems_, textsEnd_);
        ++itemCount(ValueKind::Symbol);  // names are stored with the texts
        appendText(text);
    }
    /// Adds a piece to the text that was added last.
    void extendText(std::string_view text);
    /// Drops the values from the given one on, with their items.
    void truncate(size_t valueCount);

private:
    template <class Items, class Item>
    typename Items::reference addItem(ValueKind kind, Items& items, const Item& item) {
        ++itemCount(kind);
        ++valueList_.back().count;
        return items.emplace_back(item);
    }
    uint32_t& itemCount(ValueKind kind) { return itemCounts_[static_cast<size_t>(kind)]; }
    void appendText(std::string_view text) {
        const size_t end = textsEnd_ + text.size();
        if (end >= texts_.size()) growTexts(end + 1);
        text.copy(texts_.data() + textsEnd_, text.size());
        texts_[end] = '\0';
        textsEnd_ = end + 1;
    }
    void growTexts(size_t size);

    std::vector<Value> valueList_;
    uint32_t itemCounts_[static_cast<size_t>(ValueKind::Symbol) + 1] = {};  // by kind
    std::vector<Double> numberItems_;
    std::vector<Vector> vectorItems_;
    std::vector<Axes> axesItems_;
    std::vector<CoordSys> coordSysItems_;
    std::vector<size_t> textItems_;  // offsets into texts
    std::vector<char> texts_;        // each with its terminator; room for more after them
    size_t textsEnd_ = 0;
};

/// @return where a value of a command that was read stands in the input; the command itself for a place that it has not
Position placeOf(const Command& command, size_t place);

/// @return whether two commands have the same form and exactly the same values
bool sameCommand(const Command& left, const Command& right);

}  // namespace Zant::Language

#endif
