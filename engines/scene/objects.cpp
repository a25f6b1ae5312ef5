#include "engines/scene/objects.h"

namespace Zant::Engine {
namespace {

constexpr int longestChain = 64;

template <class Map, class Key>
ObjectPointer lookUp(const Map& map, const Key& key) {
    const auto found = map.find(key);
    return found == map.end() ? nullptr : found->second;
}

}  // namespace

ObjectPointer Objects::find(std::string_view name) const {
    return lookUp(names_, name);
}
ObjectPointer Objects::find(uint32_t number) const {
    return lookUp(numbers_, number);
}
ObjectPointer Objects::findRecord(const void* record) const {
    return lookUp(records_, record);
}

ObjectPointer Objects::resolve(const ObjectPointer& object) const {
    ObjectPointer target = object;
    for (int step = 0; target && step < longestChain; ++step) {
        const auto* reference = target->as<Reference>();
        if (!reference) return target;
        target = find(reference->target);
    }
    return nullptr;
}

Object& Objects::place(std::string_view name, int command, bool keep) {
    if (!keep) {
        remove(name);
        const auto object = std::make_shared<Object>();
        object->name = name;
        object->number = ++lastNumber_;
        names_.emplace(object->name, object);
        numbers_.emplace(object->number, object);
    }
    Object& object = *names_.find(name)->second;
    object.command = command;
    return object;
}

void Objects::remember(Object& object) {
    if (const auto* map = object.as<VertexMap>()) records_.emplace(&map->record(), numbers_[object.number]);
}

void Objects::forget(const Object& object) {
    if (const auto* map = object.as<VertexMap>()) records_.erase(&map->record());
    numbers_.erase(object.number);
}

bool Objects::remove(std::string_view name) {
    const auto found = names_.find(name);
    if (found == names_.end()) return false;
    forget(*found->second);
    names_.erase(found);
    return true;
}

void Objects::removeAll() {
    records_.clear();
    numbers_.clear();
    names_.clear();
}

}  // namespace Zant::Engine
