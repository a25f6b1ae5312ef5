#ifndef ZANT_DESCRIPTION_DESCRIPTION_H
#define ZANT_DESCRIPTION_DESCRIPTION_H

#include <iosfwd>

#include "description/types.h"

namespace Zant::Description {

/// What hosts in other languages need to know of the interface, taken from the compiler that builds the library:
/// sizes and offsets from sizeof and offsetof, signatures from the functions' own types. Only the names are written
/// down here, and each of them must exist.

struct Field {
    std::string name;
    size_t offset;  ///< bytes from the start of the record
    size_t size;    ///< bytes
    Type type;
};

struct Record {
    std::string name;
    bool isUnion;
    size_t size;
    std::vector<Field> fields;  ///< all of them, in their order
};

struct EnumerationValue {
    std::string name;
    long long value;
};

struct Enumeration {
    std::string name;
    std::vector<EnumerationValue> values;
};

struct Argument {
    std::string name;
    Type type;
};

struct Function {
    std::string name;
    Type result;
    std::vector<Argument> arguments;
};

struct Slot {
    size_t number;  ///< place in the table, from 0
    Function function;
};

/// A table of functions that the engine fills. The slots that are not listed are never called.
struct Table {
    std::string name;
    size_t slotCount;
    std::vector<Slot> slots;
};

/// What C hosts see: zant_records.h and zant_c.h.
std::vector<Enumeration> enumerations();
std::vector<Record> records();
std::vector<Function> functions();

/// What an engine sees besides.
std::vector<Enumeration> engineEnumerations();
std::vector<Record> engineRecords();
std::vector<Table> engineTables();

/// Writes all of it as JSON, a line for each field, value, function and slot.
void writeJson(std::ostream& out);

}  // namespace Zant::Description

#endif
