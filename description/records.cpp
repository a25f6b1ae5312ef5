#include "description/description.h"

namespace Zant::Description {
namespace {

template <class T>
Record record(std::vector<Field> fields) {
    return {NameOf<T>::c, std::is_union_v<T>, sizeof(T), std::move(fields)};
}

}  // namespace

#define FIELD(record, field)                                                                              \
    Field {                                                                                               \
#field, offsetof(record, field), sizeof(record::field), describeType < decltype(record::field)>() \
    }

std::vector<Record> records() {
    return {
        record<ZantVectorCore>({FIELD(ZantVectorCore, values), FIELD(ZantVectorCore, count)}),
        record<ZantAxesCore>({FIELD(ZantAxesCore, m), FIELD(ZantAxesCore, rows)}),
        record<ZantCoordSysCore>({FIELD(ZantCoordSysCore, position), FIELD(ZantCoordSysCore, axes)}),
        record<ZantTextStorage>({FIELD(ZantTextStorage, text), FIELD(ZantTextStorage, length)}),
        record<ZantExchangeValue>({FIELD(ZantExchangeValue, string), FIELD(ZantExchangeValue, number),
                                   FIELD(ZantExchangeValue, vector), FIELD(ZantExchangeValue, coordSys),
                                   FIELD(ZantExchangeValue, axes), FIELD(ZantExchangeValue, text),
                                   FIELD(ZantExchangeValue, bytes)}),
        record<ZantParserExchangeBuffer>(
            {FIELD(ZantParserExchangeBuffer, value), FIELD(ZantParserExchangeBuffer, type)}),
        record<ZantBitmapCore>({FIELD(ZantBitmapCore, data), FIELD(ZantBitmapCore, width),
                                FIELD(ZantBitmapCore, height), FIELD(ZantBitmapCore, format),
                                FIELD(ZantBitmapCore, reserved)}),
        record<ZantVertexMapRecord>({FIELD(ZantVertexMapRecord, size), FIELD(ZantVertexMapRecord, values),
                                     FIELD(ZantVertexMapRecord, dimension), FIELD(ZantVertexMapRecord, samples)}),
        record<ZantEventData>({FIELD(ZantEventData, kind), FIELD(ZantEventData, padding),
                               FIELD(ZantEventData, instance), FIELD(ZantEventData, reserved),
                               FIELD(ZantEventData, handle), FIELD(ZantEventData, value), FIELD(ZantEventData, text)}),
        record<_ZantEventTextBufferData>({FIELD(_ZantEventTextBufferData, text), FIELD(_ZantEventTextBufferData, size),
                                          FIELD(_ZantEventTextBufferData, buffer)}),
        record<_ZantEventMousePosition>(
            {FIELD(_ZantEventMousePosition, position), FIELD(_ZantEventMousePosition, reserved)}),
        record<_ZantEventKey>(
            {FIELD(_ZantEventKey, key), FIELD(_ZantEventKey, present), FIELD(_ZantEventKey, reserved)}),
    };
}

std::vector<Record> engineRecords() {
    return {
        record<Mutex>({FIELD(Mutex, vt), FIELD(Mutex, handle)}),
        record<Vtables>({FIELD(Vtables, library), FIELD(Vtables, mt), FIELD(Vtables, bitmap), FIELD(Vtables, raytrace),
                         FIELD(Vtables, parser)}),
        record<Library>({FIELD(Library, reserved0), FIELD(Library, reserved1), FIELD(Library, libraryDir),
                         FIELD(Library, vtables), FIELD(Library, moduleHandle), FIELD(Library, instanceList),
                         FIELD(Library, instanceMutex), FIELD(Library, hostVersion), FIELD(Library, flags)}),
        record<ZantInstance>({FIELD(ZantInstance, library), FIELD(ZantInstance, next),
                              FIELD(ZantInstance, libraryTable), FIELD(ZantInstance, engineInstance),
                              FIELD(ZantInstance, parserContext), FIELD(ZantInstance, ownedListener),
                              FIELD(ZantInstance, eventFunction), FIELD(ZantInstance, listener),
                              FIELD(ZantInstance, userData)}),
    };
}

}  // namespace Zant::Description
