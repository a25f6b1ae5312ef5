#include "engines/scene/execution.h"

#include "language/lookup.h"

namespace Zant::Engine {
namespace {

// By number of the command word; the same for all scenes of a process. Without a destructor: hosts may still send
// commands while their process exits.
struct Handlers {
    static constexpr size_t room = 256;
    Handler byNumber[room] = {};

    explicit Handlers(const Profile& profile) {
        for (const HandlerRow* table :
             {valueHandlers, bitmapHandlers, geometryHandlers, viewHandlers, controlHandlers, renderHandlers})
            add(table);
        // Scenes that nobody sees would only grow.
        if (!profile.createTracer) return;
        for (const HandlerRow* table : {shapeHandlers, lookHandlers, rayHandlers})
            add(table);
    }

    void add(const HandlerRow* table) {
        for (const HandlerRow* row = table; row->word; ++row)
            byNumber[commandNumber(row->word)] = row->handler;
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

Opaque lookOf(const Execution& execution) {
    Opaque look{execution.writer.write(execution.command)};
    for (size_t place = 1; place < execution.places(); ++place) {
        const Value& value = execution.command.values()[place];
        if (value.kind == ValueKind::Vector && value.count != 0 && !look.colour)
            look.colour = colourOf(execution.command.vector(value));
        for (uint32_t item = 0; value.kind == ValueKind::Symbol && item < value.count; ++item)
            look.sources.emplace_back(execution.command.text(value, item));
    }
    return look;
}

}  // namespace

Opaque* declareOpaque(Execution& execution) {
    const Form& form = *execution.command.form;
    Opaque* first = nullptr;
    for (size_t place = 0; place < form.tokenCount; ++place) {
        if (form.tokens[place].kind != ArgumentKind::NewSymbol) continue;
        Object& object = execution.objects.declare<Opaque>(execution.text(place), form.command, lookOf(execution));
        if (!first) first = object.as<Opaque>();
    }
    return first;
}

Outcome carryOut(Execution& execution) {
    static const Handlers handlers(execution.profile);
    for (size_t place = 0; place < execution.places(); ++place) {
        Outcome outcome = checkPlace(execution, place);
        if (outcome.code != Fine) return outcome;
    }
    const Handler handler = handlers.byNumber[execution.command.form->command % Handlers::room];
    if (handler) return handler(execution);
    execution.hasEffect = declareOpaque(execution) != nullptr;
    execution.isPictured = false;
    return {};
}

}  // namespace Zant::Engine
