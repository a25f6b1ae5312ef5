// What a host reads and writes directly: handles, values and pixel memory.

#include <cstring>

#include "engines/scene/declarations.h"
#include "engines/scene/handles.h"
#include "engines/scene/scene.h"

namespace Zant::Engine {
namespace {

bool fits(const Object& object, int type) {
    switch (type) {
        case HandleVertexMap:
            return object.as<VertexMap>();
        case HandleBitmap:
            return object.as<Pixels>();
        case HandleMesh:
            return object.as<Mesh>();
        case HandleValue:
            return object.isValue();
        default:
            return type == HandleObject;
    }
}

// Fills the storage that the record names when the text fits, and says what it needs.
void deliverText(const std::string& text, ZantTextStorage& storage) {
    const bool fits = storage.text && !text.empty() && text.size() < storage.length;
    if (fits)
        std::memcpy(storage.text, text.c_str(), text.size() + 1);
    else
        storage.text = nullptr;
    storage.length = text.size();
}

template <class Target, class Source>
int deliver(Target& target, const Source& source, int code, ZantParserExchangeBuffer& record) {
    target = source;
    record.type = code;
    return 1;
}

struct Deliver {
    ZantParserExchangeBuffer& record;

    int operator()(double value) const { return deliver(record.value.number, value, ZantValueNumber, record); }
    int operator()(const std::string& value) const {
        return deliver(record.value.string, value.c_str(), ZantValueString, record);
    }
    int operator()(const Vector& value) const { return deliver(record.value.vector, value, ZantValueVector, record); }
    int operator()(const Axes& value) const { return deliver(record.value.axes, value, ZantValueAxes, record); }
    int operator()(const CoordSys& value) const {
        return deliver(record.value.coordSys, value, ZantValueCoordSys, record);
    }
    template <class Other>
    int operator()(const Other&) const {
        record.type = 0;
        return 0;
    }
};

bool isAxes(const ZantAxesCore& axes) {
    return axes.rows >= 0 && axes.rows <= 3;
}

struct Take {
    const ZantParserExchangeBuffer& record;

    int operator()(double& value) const {
        if (record.type != ZantValueNumber) return 0;
        value = record.value.number;
        return 1;
    }
    int operator()(std::string& value) const {
        if (record.type != ZantValueString) return 0;
        value = record.value.string ? record.value.string : "";
        return 1;
    }
    int operator()(Vector& value) const {
        const ZantVectorCore& vector = record.value.vector;
        if (record.type != ZantValueVector || vector.count < 1 || vector.count > 4) return 0;
        value = Vector(vector);
        return 1;
    }
    int operator()(Axes& value) const {
        if (record.type != ZantValueAxes || !isAxes(record.value.axes)) return 0;
        value = Axes(record.value.axes);
        return 1;
    }
    int operator()(CoordSys& value) const {
        if (record.type != ZantValueCoordSys || !isAxes(record.value.coordSys.axes)) return 0;
        value = CoordSys(record.value.coordSys);
        return 1;
    }
    template <class Other>
    int operator()(Other&) const {
        return 0;
    }
};

// A host that asks for a text gets a number, and the other way round.
int deliverWrongType(ZantParserExchangeBuffer& record) {
    const bool wantsString = record.type == ZantValueString;
    if (wantsString)
        record.value.number = 0;
    else
        record.value.string = "a value of the wrong type";
    record.type = wantsString ? ZantValueNumber : ZantValueString;
    return 1;
}

}  // namespace

ObjectPointer Scene::objectOf(const void* handle) const {
    const uint64_t number = handleNumber(HandleTag::Object, handle);
    if (number == 0) return objects_.findRecord(handle);
    return sceneOfObject(number) == number_ ? objects_.find(objectInScene(number)) : nullptr;
}

void* Scene::handleOf(const Object& object) const {
    return makeHandle(HandleTag::Object, objectNumber(number_, object.number));
}

void* Scene::findObject(const char* name, uint64_t* registered, int type) {
    const Lock lock = enter("findObject");
    if (registered) *registered = 0;
    if (!name || settings_.faults.lookupNothing) return nullptr;
    const ObjectPointer object = objects_.find(name);
    const ObjectPointer target = objects_.resolve(object);
    if (!target || !fits(*target, type)) return nullptr;
    if (registered) *registered = reinterpret_cast<uint64_t>(handleOf(*object));
    // Hosts read a vertex map's record in place, so its address is the handle. The record is never written by them.
    if (const auto* map = target->as<VertexMap>()) return const_cast<ZantVertexMapRecord*>(&map->record());
    return handleOf(*object);
}

int Scene::getValue(const void* handle, ZantParserExchangeBuffer& record) {
    const Lock lock = enter("getValue");
    const ObjectPointer object = objects_.resolve(objectOf(handle));
    if (!object) {
        record.type = 0;
        return 0;
    }
    if (settings_.faults.wrongType) return deliverWrongType(record);
    if (record.type != ZantValueText) return std::visit(Deliver{record}, object->content);
    deliverText(textOf(*object), record.value.text);
    return 1;
}

int Scene::setValue(const void* handle, const ZantParserExchangeBuffer& record) {
    const Lock lock = enter("setValue");
    const ObjectPointer object = objects_.resolve(objectOf(handle));
    return object ? std::visit(Take{record}, object->content) : 0;
}

void Scene::linkBitmap(uint32_t object, ZantBitmapCore& link) {
    const Lock lock = enter("linkBitmap");
    const ObjectPointer bitmap = objects_.resolve(objects_.find(object));
    const auto* pixels = bitmap ? bitmap->as<Pixels>() : nullptr;
    link = pixels ? pixels->bitmap() : Bitmap();
    if (settings_.faults.bitmapWithoutMemory) link.data = nullptr;
}

bool Scene::shareMemory(uint32_t object, void* memory, int width, int height) {
    const Lock lock = enter("setSharedMemory");
    const ObjectPointer bitmap = objects_.resolve(objects_.find(object));
    auto* pixels = bitmap ? bitmap->as<Pixels>() : nullptr;
    return pixels && pixels->share(memory, width, height);
}

}  // namespace Zant::Engine
