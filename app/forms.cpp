// zant forms: a command's forms with the function names.

#include <fmt/core.h>

#include "app/program.h"
#include "app/text.h"
#include "language/lookup.h"

namespace Zant::App {
namespace {

constexpr const char* letters =
    "d number, i integer, b truth value, u unsigned, s text, V vector, A axes, C coordinate system, S symbol, N symbol "
    "declared,\nB bitmap, M mesh, X vertex map, Ld LV LC LS lists; with the suffix u behind the number, a function "
    "takes "
    "wide strings\n";

int showForms(const std::string& word) {
    const auto forms = findForms(word);
    if (forms.empty()) {
        const char* nearest = nearestCommandWord(word);
        const std::string suggestion = nearest ? fmt::format(", did you mean '{}'?", nearest) : "";
        complain(fmt::format("zant forms: no command and no function has '{}'{}", word, suggestion));
        return InputHasErrors;
    }
    for (const Form* form : forms) {
        fmt::print("{:<60} {}", form->notation, form->function);
        if (form->wideFunction) fmt::print("  {}", form->wideFunction);
        fmt::print("\n");
    }
    fmt::print("\n{}. {}", counted(forms.size(), "form"), letters);
    return Fine;
}

}  // namespace

void addForms(CLI::App& program, int& exitCode) {
    auto* command = program.add_subcommand("forms", "Show a command's forms with the function names");
    auto word = std::make_shared<std::string>();
    command->add_option("WORD", *word, "A command word, or a part of a function name")->required();
    command->callback([word, &exitCode] { exitCode = showForms(*word); });
}

}  // namespace Zant::App
