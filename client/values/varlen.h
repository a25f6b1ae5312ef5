#ifndef ZANT_CLIENT_VALUES_VARLEN_H
#define ZANT_CLIENT_VALUES_VARLEN_H

#include <cstddef>
#include <type_traits>
#include <utility>

#include "client/values/axes.h"
#include "client/values/coordsys.h"
#include "client/values/scalars.h"
#include "client/values/vector.h"

namespace Zant {

class Symbol;

/// A list argument: a number of consecutive items, which stay the caller's and must outlive the list.
///
/// Whole arrays, std::vectors and their kin convert to a list of their items, so that they can be passed as they are. A
/// class derived from the item type does not convert, even where its pointer would: it may have another size.
///
/// Threads: a plain record, used on the thread of the buffer that it is passed to; its items do not change meanwhile.
template <typename T>
class VarLenTemplate {
    template <typename Item>
    using IfItem = std::enable_if_t<std::is_convertible_v<const Item (*)[], const T (*)[]>>;

public:
    size_t count = 0;
    const T* items = nullptr;

    /// The empty list.
    constexpr VarLenTemplate() = default;
    constexpr VarLenTemplate(const T* first, size_t number) : count(number), items(first) {}

    template <typename Item, size_t Number, typename = IfItem<Item>>
    constexpr VarLenTemplate(const Item (&array)[Number]) : count(Number), items(array) {}

    template <typename Range, typename = IfItem<std::remove_pointer_t<decltype(std::declval<const Range&>().data())>>>
    VarLenTemplate(const Range& range) : count(range.size()), items(range.data()) {}
};

using VarLenDouble = VarLenTemplate<Double>;
using VarLenVector = VarLenTemplate<Vector>;
using VarLenAxes = VarLenTemplate<AxesHpb>;
using VarLenCoordSys = VarLenTemplate<CoordSys>;
using VarLenSymbol = VarLenTemplate<const Symbol*>;

static_assert(sizeof(VarLenDouble) == 16 && offsetof(VarLenDouble, items) == 8, "two words");
static_assert(sizeof(*VarLenSymbol::items) == 8, "the stride of symbols in lists");

}  // namespace Zant

#endif
