#ifndef ZANT_MODERN_CALLBACK_H
#define ZANT_MODERN_CALLBACK_H

#include <type_traits>
#include <utility>

#include "own/cxx17.h"

namespace zant {

template <class Signature>
class callback;

/// Owns a function object, which need not be copyable; empty by default. It can be moved.
///
/// Beside std::function it leaves out what nobody needs here: its header would be a quarter of what the face costs.
template <class Result, class... Arguments>
class callback<Result(Arguments...)> {
    template <class Function>
    using if_function = std::enable_if_t<!std::is_same_v<std::decay_t<Function>, callback> &&
                                         std::is_invocable_r_v<Result, Function&, Arguments...>>;

public:
    callback() = default;
    template <class Function, class = if_function<Function>>
    callback(Function&& function) : target_(new target_of<std::decay_t<Function>>(std::forward<Function>(function))) {}
    callback(callback&& other) noexcept : target_(std::exchange(other.target_, nullptr)) {}
    callback& operator=(callback&& other) noexcept {
        std::swap(target_, other.target_);
        return *this;
    }
    ~callback() { delete target_; }

    explicit operator bool() const noexcept { return target_ != nullptr; }

    /// Calls the function; there must be one.
    Result operator()(Arguments... arguments) const { return target_->call(std::forward<Arguments>(arguments)...); }

private:
    class target {
    public:
        virtual ~target() = default;
        virtual Result call(Arguments... arguments) = 0;
    };

    template <class Function>
    class target_of final : public target {
    public:
        explicit target_of(Function function) : function_(std::move(function)) {}
        Result call(Arguments... arguments) override { return function_(std::forward<Arguments>(arguments)...); }

    private:
        Function function_;
    };

    target* target_ = nullptr;
};

}  // namespace zant

#endif
