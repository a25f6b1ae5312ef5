#include "client/symbols/symbol.h"

#include <algorithm>
#include <cstring>

#include "client/commands/commandbuffer.h"
#include "client/engine/instance.h"
#include "client/keywords/enums.h"
#include "client/keywords/numbers.h"

namespace Zant {

namespace {

constexpr int wrongType = 2;

void* asPointer(uint64_t handle) {
    return reinterpret_cast<void*>(handle);
}

void offerStorage(ZantParserExchangeBuffer& record, const ResizableBuffer& storage) {
    record.type = ZantValueText;
    record.value.text = {storage.buffer, storage.bufferSize};
}

}  // namespace

void Symbol::updateSymbol() {}

Symbol::~Symbol() {
    try {
        freeSymbol();
    } catch (...) {
        // The buffer could not take the command; the object stays with the engine.
    }
}

Symbol::Symbol(CommandBuffer& commands, const char* symbolName) : ZantSymbolCore{} {
    initSymbol(commands, symbolName);
}

void Symbol::initSymbol(CommandBuffer& commands, const char* symbolName) {
    buffer = &commands;
    handle = 0;
    registered = 0;
    symbolName ? setName(symbolName) : generateAutoname();
}

void Symbol::setName(const char* symbolName) {
    // The new name may be a part of the old one.
    const size_t length = std::min(std::strlen(symbolName), sizeof name - 1);
    std::memmove(name, symbolName, length);
    name[length] = 0;
}

void Symbol::generateAutoname() {
    buffer->generateAutoname(*this, name);
}

void Symbol::registerSymbol() {
    registerSymbol(HandleObject, nullptr);
}

void Symbol::registerSymbol(_ZantHandleType type, const char* argument) {
    // The old link goes first: an engine that knows no such object leaves both words alone.
    handle = 0;
    if (const Instance* instance = buffer->instance) {
        handle = reinterpret_cast<uint64_t>(instance->findObject(name, &registered, type, argument));
    }
    updateSymbol();
}

bool Symbol::isRegistered() const {
    return !buffer->instance || registered != 0;
}

const char* Symbol::toString(DynamicBuffer& out) {
    if (!buffer->instance) return nullptr;
    ZantParserExchangeBuffer record{};
    offerStorage(record, out.buffer);
    getValue(record);
    if (record.value.text.text) return record.value.text.text;
    if (record.value.text.length == 0) return nullptr;
    out.buffer.fit(record.value.text.length + 1);
    offerStorage(record, out.buffer);
    getValue(record);
    return record.value.text.text;
}

int Symbol::getValue(ZantParserExchangeBuffer& record) const {
    if (const Instance* instance = buffer->instance) return instance->getValue(asPointer(handle), &record);
    record.type = 0;
    return 0;
}

int Symbol::setValue(const ZantParserExchangeBuffer& record) const {
    const Instance* instance = buffer->instance;
    return instance ? instance->setValue(asPointer(handle), &record) : 0;
}

void Symbol::freeSymbol() {
    if (isRegistered()) define(Enums::cmd_delete);
}

bool Symbol::readValue(ZantParserExchangeBuffer& record, int32_t code) const {
    record.type = code;
    getValue(record);
    if (record.type == code) return true;
    buffer->error(wrongType);
    return false;
}

void Symbol::define(int command) {
    buffer->addKeyword(Enums::cmd_strings, command);
    buffer->addSymbol(*this);
    buffer->parse();
}

}  // namespace Zant
