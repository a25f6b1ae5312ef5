// What programs are told: one JSON object on a line for each finding.

#include "app/findings.h"

#include <nlohmann/json.hpp>

#include "language/lookup.h"

namespace Zant::App {
namespace {

using Json = nlohmann::ordered_json;

/// Input may hold any bytes, JSON only UTF-8.
std::string lineOf(const Json& object) {
    return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json itemOf(const FormToken& token) {
    if (token.kind != ArgumentKind::Keyword) return {{"kind", kindRow(token.kind).name}};
    return {
        {"kind", "keyword"}, {"word", keywordTables()[token.table].words[token.number - 1]}, {"number", token.number}};
}

}  // namespace

std::string findingAsJson(const std::string& file, const Diagnostic& diagnostic) {
    Json object = {{"file", file}, {"offset", diagnostic.position.offset}};
    if (diagnostic.position.line != 0) {
        object["line"] = diagnostic.position.line;
        object["column"] = diagnostic.position.column;
    }
    object["message"] = diagnostic.message;
    if (!diagnostic.suggestion.empty()) object["suggestion"] = diagnostic.suggestion;
    return lineOf(object);
}

std::string findingAsJson(const std::string& file, const std::string& message) {
    return lineOf({{"file", file}, {"message", message}});
}

std::string formAsJson(const Form& form) {
    Json object = {{"command", commandWord(form.command)},
                   {"number", form.command},
                   {"group", groupOf(form.command)},
                   {"notation", form.notation},
                   {"function", form.function}};
    if (form.wideFunction) object["wideFunction"] = form.wideFunction;
    object["items"] = Json::array();
    for (uint16_t place = 0; place < form.tokenCount; ++place)
        object["items"].push_back(itemOf(form.tokens[place]));
    return lineOf(object);
}

}  // namespace Zant::App
