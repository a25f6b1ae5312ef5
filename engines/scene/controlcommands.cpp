// Commands that say something, and those that read further commands.

#include <cstring>

#include "engines/scene/declarations.h"
#include "engines/scene/execution.h"
#include "language/lookup.h"

namespace Zant::Engine {
namespace {

Outcome echo(Execution& execution) {
    execution.lines.add(execution.has(0) ? execution.text(0) : "");
    return {};
}

Outcome about(Execution& execution) {
    execution.lines.add(std::string(execution.profile.name) + " " + execution.profile.version);
    execution.lines.add(execution.profile.purpose);
    return {};
}

void listWords(Lines& lines) {
    const KeywordTable& table = keywordTables()[0];
    for (int number = 1; number <= table.slots; ++number) {
        if (table.words[number - 1]) lines.add(table.words[number - 1]);
    }
}

void listForms(Lines& lines, int command) {
    const FormRange<Form> forms = formsOf(command);
    for (const Form& form : forms)
        lines.add(form.notation);
    if (forms.size() == 0) lines.add("no form of this command is known");
}

Outcome help(Execution& execution) {
    if (execution.has(0))
        listForms(execution.lines, execution.command.keywordNumber(0));
    else
        listWords(execution.lines);
    return {};
}

// Whether `showInfo` with this word is about the object.
bool concerns(const char* word, const Object& object) {
    if (std::strcmp(word, "bitmaps") == 0 || std::strcmp(word, "bitmapsExt") == 0) return object.as<Pixels>();
    if (std::strcmp(word, "vertexMaps") == 0) return object.as<VertexMap>();
    return std::strcmp(word, "symbols") == 0 || std::strcmp(word, "all") == 0;
}

Outcome showInfo(Execution& execution) {
    const char* word = execution.has(0) ? execution.command.keywordText(0) : "all";
    size_t count = 0;
    for (const auto& [name, object] : execution.objects.all()) {
        if (!concerns(word, *object)) continue;
        execution.lines.add(name + ": " + summaryOf(*object));
        ++count;
    }
    execution.lines.add(std::string(word) + ": " + std::to_string(count));
    return {};
}

Outcome include(Execution& execution) {
    execution.nested = Nested::File;
    execution.nestedText = execution.text(0);
    return {};
}

Outcome parse(Execution& execution) {
    execution.nested = Nested::Text;
    execution.nestedText = execution.text(0);
    execution.nestedSource = execution.has(1) ? execution.text(1) : "parse";
    return {};
}

}  // namespace

const HandlerRow controlHandlers[] = {
    {"echo", echo},       {"about", about}, {"help", help},     {"showInfo", showInfo},
    {"include", include}, {"parse", parse}, {nullptr, nullptr},
};

}  // namespace Zant::Engine
