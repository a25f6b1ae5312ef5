#include <ostream>

#include "description/description.h"
#include "own/version.h"

namespace Zant::Description {
namespace {

// Every text that is written here is a name, a version or a C type: nothing in it needs escaping.
std::string quoted(const std::string& text) {
    return '"' + text + '"';
}

std::string members(const Type& type) {
    return "\"type\": " + quoted(type.kind) + (type.count ? ", \"count\": " + std::to_string(type.count) : "") +
           ", \"c\": " + quoted(type.c);
}

/// Writes the items one per line between brackets, each through `write`.
template <class Items, class Write>
void writeList(std::ostream& out, const std::string& indent, const char* brackets, const Items& items, Write write) {
    out << brackets[0];
    const char* separator = "\n";
    for (const auto& item : items) {
        out << separator << indent << "  ";
        write(item);
        separator = ",\n";
    }
    out << '\n' << indent << brackets[1];
}

void writeEnumeration(std::ostream& out, const std::string& indent, const Enumeration& enumeration) {
    out << "{\"name\": " << quoted(enumeration.name) << ", \"values\": ";
    writeList(out, indent, "{}", enumeration.values,
              [&](const EnumerationValue& item) { out << quoted(item.name) << ": " << item.value; });
    out << '}';
}

void writeRecord(std::ostream& out, const std::string& indent, const Record& record) {
    out << "{\"name\": " << quoted(record.name) << ", \"kind\": " << quoted(record.isUnion ? "union" : "struct")
        << ", \"size\": " << record.size << ", \"fields\": ";
    writeList(out, indent, "[]", record.fields, [&](const Field& field) {
        out << "{\"name\": " << quoted(field.name) << ", \"offset\": " << field.offset << ", \"size\": " << field.size
            << ", " << members(field.type) << '}';
    });
    out << '}';
}

std::string signature(const Function& function) {
    std::string list;
    for (const Argument& argument : function.arguments) {
        list +=
            (list.empty() ? "{" : ", {") + ("\"name\": " + quoted(argument.name)) + ", " + members(argument.type) + '}';
    }
    return "\"name\": " + quoted(function.name) + ", \"result\": {" + members(function.result) + "}, \"arguments\": [" +
           list + ']';
}

void writeTable(std::ostream& out, const std::string& indent, const Table& table) {
    out << "{\"name\": " << quoted(table.name) << ", \"slotCount\": " << table.slotCount << ", \"slots\": ";
    writeList(out, indent, "[]", table.slots, [&](const Slot& slot) {
        out << "{\"slot\": " << slot.number << ", " << signature(slot.function) << '}';
    });
    out << '}';
}

void writeEngine(std::ostream& out) {
    out << "{\n    \"entryPoint\": \"zant3_init\",\n    \"fileNames\": "
        << "[\"zant3" ZANT_ENGINE_SUFFIX "\", \"zant3d" ZANT_ENGINE_SUFFIX "\"],\n    \"enumerations\": ";
    writeList(out, "    ", "[]", engineEnumerations(),
              [&](const Enumeration& item) { writeEnumeration(out, "      ", item); });
    out << ",\n    \"records\": ";
    writeList(out, "    ", "[]", engineRecords(), [&](const Record& item) { writeRecord(out, "      ", item); });
    out << ",\n    \"tables\": ";
    writeList(out, "    ", "[]", engineTables(), [&](const Table& item) { writeTable(out, "      ", item); });
    out << "\n  }";
}

}  // namespace

void writeJson(std::ostream& out) {
    out << "{\n  \"format\": 1,\n  \"version\": \"" ZANT_VERSION "\",\n  \"byteOrder\": \"little\",\n"
        << "  \"pointerSize\": " << sizeof(void*) << ",\n  \"enumerations\": ";
    writeList(out, "  ", "[]", enumerations(), [&](const Enumeration& item) { writeEnumeration(out, "    ", item); });
    out << ",\n  \"records\": ";
    writeList(out, "  ", "[]", records(), [&](const Record& item) { writeRecord(out, "    ", item); });
    out << ",\n  \"functions\": ";
    writeList(out, "  ", "[]", functions(), [&](const Function& item) { out << '{' << signature(item) << '}'; });
    out << ",\n  \"engine\": ";
    writeEngine(out);
    out << "\n}\n";
}

}  // namespace Zant::Description
