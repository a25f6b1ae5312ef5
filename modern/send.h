#ifndef ZANT_MODERN_SEND_H
#define ZANT_MODERN_SEND_H

#include "modern/arguments.h"

/// How a command of a scene becomes a call of its typed function.

namespace zant::detail {

template <class Argument>
constexpr bool is_plain = std::is_arithmetic_v<Argument> || std::is_base_of_v<ZantVectorCore, Argument> ||
                          std::is_base_of_v<ZantAxesCore, Argument> || std::is_base_of_v<ZantCoordSysCore, Argument>;

template <class Argument>
const char* argument_fault(const Argument& argument, const scene_state& state) {
    if constexpr (is_plain<Argument>) {
        return nullptr;
    } else if constexpr (std::is_base_of_v<symbol, Argument>) {
        return fault_of(access::of(argument), state);
    } else {
        return argument.fault(state);
    }
}

template <class Argument>
std::size_t argument_room(const Argument& argument) {
    if constexpr (is_plain<Argument> || std::is_base_of_v<symbol, Argument>) {
        return 0;
    } else {
        return argument.room();
    }
}

/// What the typed function gets.
template <class Parameter, class Argument>
decltype(auto) argument_value(const Argument& argument, scratch& memory) {
    if constexpr (is_plain<Argument>) {
        return (argument);
    } else if constexpr (std::is_base_of_v<symbol, Argument>) {
        return static_cast<Parameter>(*access::of(argument)->symbol);
    } else {
        return argument.get(memory);
    }
}

template <class... Parameters, class... Arguments>
bool send(scene_state* state, const char* command, void (*function)(void*, Parameters...),
          const Arguments&... arguments) {
    if (!state) return false;
    const char* fault = nullptr;
    static_cast<void>(((fault = argument_fault(arguments, *state)) || ...));
    if (fault) return state->refuse(command, fault);
    return state->perform(command, [&] {
        const std::size_t room = (std::size_t{0} + ... + argument_room(arguments));
        if (room != 0) state->scratch.fit(room);
        scratch memory(state->scratch.buffer);
        function(&state->protos, argument_value<Parameters>(arguments, memory)...);
    });
}

}  // namespace zant::detail

#endif
