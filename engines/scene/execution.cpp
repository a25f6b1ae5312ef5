#include "engines/scene/execution.h"

#include "language/lookup.h"

namespace Zant::Engine {
namespace {

// By number of the command word. Without a destructor: hosts may still send commands while their process exits.
struct Handlers {
    static constexpr size_t room = 256;
    Handler byNumber[room] = {};

    Handlers() {
        for (const HandlerRow* table : {valueHandlers, bitmapHandlers, geometryHandlers, controlHandlers}) {
            for (const HandlerRow* row = table; row->word; ++row)
                byNumber[commandNumber(row->word)] = row->handler;
        }
    }
};

Outcome requireKind(const Execution& execution, size_t place, bool isKind, const char* kind) {
    const std::string name = std::string("'") + execution.text(place) + "'";
    if (!execution.object(place)) return {UnknownObject, "there is no " + std::string(kind) + " " + name, place};
    if (!isKind) return {WrongKind, name + " is not a " + kind, place};
    return {};
}

template <class Kind>
Outcome require(const Execution& execution, size_t place, const char* kind) {
    const ObjectPointer object = execution.object(place);
    return requireKind(execution, place, object && object->as<Kind>(), kind);
}

Outcome checkPlace(const Execution& execution, size_t place) {
    switch (execution.command.form->tokens[place].kind) {
        case ArgumentKind::BitmapSymbol:
            return require<Pixels>(execution, place, "bitmap");
        case ArgumentKind::MeshSymbol:
            return require<Mesh>(execution, place, "mesh");
        case ArgumentKind::VertexMapSymbol:
            return require<VertexMap>(execution, place, "vertex map");
        default:
            return {};
    }
}

void declareAll(Execution& execution) {
    const Form& form = *execution.command.form;
    execution.hasEffect = false;
    for (size_t place = 0; place < form.tokenCount; ++place) {
        if (form.tokens[place].kind != ArgumentKind::NewSymbol) continue;
        const Opaque content{execution.writer.write(execution.command)};
        execution.objects.declare<Opaque>(execution.text(place), form.command, content);
        execution.hasEffect = true;
    }
}

}  // namespace

Outcome carryOut(Execution& execution) {
    static const Handlers handlers;
    for (size_t place = 0; place < execution.places(); ++place) {
        Outcome outcome = checkPlace(execution, place);
        if (outcome.code != Fine) return outcome;
    }
    const Handler handler = handlers.byNumber[execution.command.form->command % Handlers::room];
    if (handler) return handler(execution);
    declareAll(execution);
    return {};
}

}  // namespace Zant::Engine
