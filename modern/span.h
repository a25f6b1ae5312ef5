#ifndef ZANT_MODERN_SPAN_H
#define ZANT_MODERN_SPAN_H

#include <cstddef>
#include <string_view>  // std::data() and std::size(), for less than <iterator> costs to include
#include <type_traits>
#include <utility>

#include "own/cxx17.h"

namespace zant {

/// A view of items that stand one after the other, for compilers without std::span. The items stay the caller's.
/// Everything that has data() and size() converts to it, std::span among it, and so do arrays.
template <class Item>
class span {
    template <class Range>
    using item_of = std::remove_pointer_t<decltype(std::data(std::declval<Range&>()))>;
    template <class Range>
    using if_items = std::enable_if_t<!std::is_same_v<std::decay_t<Range>, span> &&
                                      std::is_convertible_v<item_of<Range> (*)[], Item (*)[]>>;

public:
    constexpr span() = default;
    constexpr span(Item* first, std::size_t count) : data_(first), size_(count) {}
    template <class Range, class = if_items<Range>>
    constexpr span(Range&& range) : data_(std::data(range)), size_(std::size(range)) {}

    constexpr Item* data() const { return data_; }
    constexpr std::size_t size() const { return size_; }
    constexpr bool empty() const { return size_ == 0; }
    constexpr Item& operator[](std::size_t index) const { return data_[index]; }
    constexpr Item* begin() const { return data_; }
    constexpr Item* end() const { return data_ + size_; }

private:
    Item* data_ = nullptr;
    std::size_t size_ = 0;
};

/// Rows of numbers in memory, such as the positions of vertices: `width` numbers each, `stride` bytes from one row to
/// the next. The numbers stay the caller's.
template <class Number>
class rows {
    using byte = std::conditional_t<std::is_const_v<Number>, const char, char>;

public:
    constexpr rows() = default;
    /// Rows of numbers that stand one after the other, unless a stride says more.
    rows(Number* first, std::size_t count, std::size_t width, std::size_t stride = 0)
        : first_(first), count_(count), width_(width), stride_(stride != 0 ? stride : width * sizeof(Number)) {}
    /// All numbers of a range, `width` to a row; what is left over at the end is not a row.
    template <class Range, class = decltype(span<Number>(std::declval<Range>()))>
    rows(Range&& range, std::size_t width) : rows(std::data(range), width ? std::size(range) / width : 0, width) {}

    std::size_t count() const { return count_; }
    std::size_t width() const { return width_; }
    std::size_t stride() const { return stride_; }
    bool is_dense() const { return stride_ == width_ * sizeof(Number); }
    Number* operator[](std::size_t row) const {
        return reinterpret_cast<Number*>(reinterpret_cast<byte*>(first_) + row * stride_);
    }

private:
    Number* first_ = nullptr;
    std::size_t count_ = 0;
    std::size_t width_ = 0;
    std::size_t stride_ = 0;
};
template <class Range>
rows(Range&&, std::size_t) -> rows<std::remove_pointer_t<decltype(std::data(std::declval<Range&>()))>>;

}  // namespace zant

#endif
