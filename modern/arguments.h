#ifndef ZANT_MODERN_ARGUMENTS_H
#define ZANT_MODERN_ARGUMENTS_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

#include "client/values/varlen.h"
#include "modern/angles.h"
#include "modern/span.h"
#include "modern/symbol.h"
#include "own/unsigned64.h"

/// What the commands of a scene take. Each kind of argument says what is wrong with it, how many bytes of scratch
/// memory it needs, and what the typed function gets. Nothing is copied that is laid out as the typed function wants
/// it.

namespace zant {

namespace detail {

/// The scratch memory of one command: as much as its arguments have asked for.
class scratch {
public:
    explicit scratch(char* room) : room_(room) {}

    template <class Item>
    Item* take(std::size_t count) {
        Item* const items = reinterpret_cast<Item*>(room_);
        room_ += bytes<Item>(count);
        return items;
    }

    template <class Item>
    static std::size_t bytes(std::size_t count) {
        return (count * sizeof(Item) + 7) / 8 * 8;
    }

private:
    char* room_;
};

inline const char* fault_of(const object* of, const scene_state& scene) {
    if (of && of->scene == &scene) return nullptr;
    return of ? "a symbol of another scene" : "an empty symbol";
}

}  // namespace detail

/// A truth value, and nothing that merely converts to one.
class flag {
public:
    template <class Bool, class = std::enable_if_t<std::is_same_v<Bool, bool>>>
    constexpr flag(Bool value) : value_(value) {}

    static constexpr const char* fault(const detail::scene_state&) { return nullptr; }
    static constexpr std::size_t room() { return 0; }
    bool get(detail::scratch&) const { return value_; }

private:
    bool value_;
};

/// An integer of 0 or more. A command refuses a negative one.
class index {
public:
    template <class Integer, class = std::enable_if_t<std::is_integral_v<Integer> && !std::is_same_v<Integer, bool>>>
    constexpr index(Integer value) : value_(static_cast<std::uint64_t>(value)), is_negative_(value < Integer{}) {}

    const char* fault(const detail::scene_state&) const { return is_negative_ ? "a negative number" : nullptr; }
    static constexpr std::size_t room() { return 0; }
    Zant::Unsigned64 get(detail::scratch&) const { return value_; }

private:
    std::uint64_t value_;
    bool is_negative_;
};

/// Text. With a terminator, as in literals and in std::string, it is sent from where it stands; a std::string_view is
/// copied first. A command refuses text with a zero byte inside, where the engine would end it.
template <class Unit>
class basic_text {
public:
    basic_text(const Unit* text) : first_(text) {}
    basic_text(const std::basic_string<Unit>& text) : first_(text.c_str()), size_(text.size()), is_view_(false) {}
    basic_text(std::basic_string_view<Unit> text) : first_(text.data()), size_(text.size()), is_view_(true) {}
    basic_text(std::nullptr_t) = delete;

    const char* fault(const detail::scene_state&) const {
        const bool has_zero = size_ != 0 && std::char_traits<Unit>::find(first_, size_, Unit()) != nullptr;
        return has_zero ? "a text with a zero byte" : nullptr;
    }

    std::size_t room() const { return is_view_ ? detail::scratch::bytes<Unit>(size_ + 1) : 0; }

    const Unit* get(detail::scratch& memory) const {
        if (!is_view_) return first_;
        Unit* const copy = memory.take<Unit>(size_ + 1);
        std::char_traits<Unit>::copy(copy, first_, size_);
        copy[size_] = Unit();
        return copy;
    }

private:
    const Unit* first_;
    std::size_t size_ = 0;
    bool is_view_ = false;
};

using text = basic_text<char>;
using wide_text = basic_text<wchar_t>;

/// A list of numbers: anything contiguous of doubles, floats or 32-bit integers. Doubles are sent from where they
/// stand.
class numbers {
    enum class kind { doubles, floats, integers, unsigned_integers };
    template <class Number>
    static constexpr kind kind_of() {
        if (std::is_same_v<Number, double> || std::is_same_v<Number, Zant::Double>) return kind::doubles;
        if (std::is_same_v<Number, float>) return kind::floats;
        return std::is_same_v<Number, std::int32_t> ? kind::integers : kind::unsigned_integers;
    }
    template <class Number>
    static constexpr bool is_number =
        std::is_same_v<Number, double> || std::is_same_v<Number, Zant::Double> || std::is_same_v<Number, float> ||
        std::is_same_v<Number, std::int32_t> || std::is_same_v<Number, std::uint32_t>;
    template <class Range>
    using number_of = std::remove_cv_t<std::remove_pointer_t<decltype(std::data(std::declval<const Range&>()))>>;

public:
    numbers() = default;
    template <class Number, class = std::enable_if_t<is_number<Number>>>
    numbers(const Number* first, std::size_t count) : first_(first), count_(count), kind_(kind_of<Number>()) {}
    template <class Range, class = std::enable_if_t<is_number<number_of<Range>>>>
    numbers(const Range& range) : numbers(std::data(range), std::size(range)) {}
    numbers(std::initializer_list<double> list) : numbers(list.begin(), list.size()) {}
    template <class Number, class = std::enable_if_t<is_number<Number>>>
    numbers(std::initializer_list<Number> list) : numbers(list.begin(), list.size()) {}

    static constexpr const char* fault(const detail::scene_state&) { return nullptr; }
    std::size_t room() const { return kind_ == kind::doubles ? 0 : count_ * sizeof(double); }

    Zant::VarLenDouble get(detail::scratch& memory) const {
        if (kind_ == kind::doubles) return {static_cast<const Zant::Double*>(first_), count_};
        auto* const copy = memory.take<Zant::Double>(count_);
        if (kind_ == kind::floats) convert<float>(copy);
        if (kind_ == kind::integers) convert<std::int32_t>(copy);
        if (kind_ == kind::unsigned_integers) convert<std::uint32_t>(copy);
        return {copy, count_};
    }

private:
    template <class Number>
    void convert(Zant::Double* copy) const {
        for (std::size_t item = 0; item < count_; ++item)
            copy[item].value = static_cast<double>(static_cast<const Number*>(first_)[item]);
    }

    const void* first_ = nullptr;
    std::size_t count_ = 0;
    kind kind_ = kind::doubles;
};

/// A list of items that are sent from where they stand.
template <class Item, class Base>
class items {
public:
    items() = default;
    items(span<const Item> list) : list_(list) {}
    template <class Range, class = std::enable_if_t<std::is_convertible_v<const Range&, span<const Item>>>>
    items(const Range& range) : list_(range) {}
    items(std::initializer_list<Item> list) : list_(list.begin(), list.size()) {}

    static constexpr const char* fault(const detail::scene_state&) { return nullptr; }
    static constexpr std::size_t room() { return 0; }
    Zant::VarLenTemplate<Base> get(detail::scratch&) const { return {list_.data(), list_.size()}; }

private:
    span<const Item> list_;
};

using vectors = items<vector, vector>;
using coord_systems = items<coord_sys, Zant::CoordSys>;

/// A list of symbols, of any kinds: `{red, green}`, or anything contiguous of one kind.
class symbols {
    /// A reference to a symbol, laid out as symbols are.
    class reference {
    public:
        reference(const symbol& to) : object_(detail::access::of(to)) {}

    private:
        detail::object* object_;
    };
    static_assert(sizeof(reference) == sizeof(symbol), "both are read as addresses of objects");
    template <class Range>
    using symbol_of = std::remove_pointer_t<decltype(std::data(std::declval<const Range&>()))>;

public:
    symbols() = default;
    symbols(std::initializer_list<reference> list) : symbols(list.begin(), list.size(), sizeof(reference)) {}
    template <class Range, class = std::enable_if_t<std::is_base_of_v<symbol, symbol_of<Range>>>>
    symbols(const Range& range)
        : symbols(static_cast<const symbol*>(std::data(range)), std::size(range), sizeof(symbol_of<Range>)) {}

    const char* fault(const detail::scene_state& scene) const {
        const char* first = nullptr;
        for (std::size_t item = 0; item < count_ && !first; ++item)
            first = detail::fault_of(at(item), scene);
        return first;
    }

    std::size_t room() const { return detail::scratch::bytes<const Zant::Symbol*>(count_); }

    Zant::VarLenSymbol get(detail::scratch& memory) const {
        const auto list = memory.take<const Zant::Symbol*>(count_);
        for (std::size_t item = 0; item < count_; ++item)
            list[item] = at(item)->symbol;
        return {list, count_};
    }

private:
    symbols(const void* first, std::size_t count, std::size_t stride)
        : first_(static_cast<const char*>(first)), count_(count), stride_(stride) {}

    const detail::object* at(std::size_t item) const {
        return *reinterpret_cast<detail::object* const*>(first_ + item * stride_);
    }

    const char* first_ = nullptr;
    std::size_t count_ = 0;
    std::size_t stride_ = 0;
};

}  // namespace zant

#endif
