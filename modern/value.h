#ifndef ZANT_MODERN_VALUE_H
#define ZANT_MODERN_VALUE_H

#include <optional>
#include <string>

#include "client/symbols/valuesymbols.h"
#include "modern/angles.h"
#include "modern/symbol.h"

namespace zant {

namespace detail {

/// The client's handle for each type of value.
template <class Type>
struct value_handle;
template <>
struct value_handle<double> {
    using type = Zant::DoubleSymbol;
    using record = Zant::Double;
    static double from(const record& read) { return read.value; }
    static record to(double value) { return value; }
};
template <>
struct value_handle<std::string> {
    using type = Zant::StringSymbol;
    using record = Zant::String;
    static std::string from(const record& read) { return read.value ? read.value : ""; }
    static record to(const std::string& value) { return value.c_str(); }
};
template <>
struct value_handle<vector> {
    using type = Zant::VectorSymbol;
    using record = vector;
    static vector from(const record& read) { return read; }
    static const record& to(const vector& value) { return value; }
};
template <>
struct value_handle<axes> {
    using type = Zant::AxesSymbol;
    using record = Zant::Axes;
    static axes from(const record& read) { return axes(read); }
    static const record& to(const axes& value) { return value; }
};
template <>
struct value_handle<coord_sys> {
    using type = Zant::CoordSysSymbol;
    using record = Zant::CoordSys;
    static coord_sys from(const record& read) { return coord_sys(read); }
    static const record& to(const coord_sys& value) { return value; }
};

}  // namespace detail

/// A value of the engine, read and written past the command language: a double, a std::string, a vector, axes or a
/// coord_sys.
template <class Type>
class value : public symbol {
    using kind = detail::value_handle<Type>;

public:
    value() = default;
    value(const basic_scene& scene, const zant::name& called) {
        this->template make<typename kind::type>(state_of(scene), called);
    }

    /// Sends the command that declares the value. Coordinate systems have none: link() them.
    bool declare() {
        static_assert(!std::is_same_v<Type, coord_sys>, "a command of the scene declares it; then link() it");
        return this->declare_by("value::declare", [this] { here().registerSymbol(); });
    }

    /// @return whether the engine has taken the value
    bool set(const Type& content) {
        if (!require_declared("value::set")) return false;
        int answer = 0;
        const auto write = [&] { answer = here().directSet(kind::to(content)); };
        if (!state()->perform("value::set", write)) return false;
        return answer != 0 || state()->refuse("value::set", "the engine has not taken the value");
    }

    /// @return the value, or none, and then the failure is one of the scene's
    std::optional<Type> get() const {
        if (!require_declared("value::get")) return {};
        typename kind::record record;
        if (!state()->perform("value::get", [&] { here().directGet(record); })) return {};
        return kind::from(record);
    }

private:
    typename kind::type& here() const { return this->template handle<typename kind::type>(); }
};

}  // namespace zant

#endif
