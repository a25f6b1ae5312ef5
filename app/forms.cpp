// zant forms: a command's forms with the function names.

#include <fmt/core.h>

#include "app/findings.h"
#include "app/program.h"
#include "app/text.h"
#include "language/lookup.h"

namespace Zant::App {
namespace {

constexpr const char* letters =
    "d number, i integer, b truth value, u unsigned, s text, V vector, A axes, C coordinate system, S symbol, N symbol "
    "declared,\nB bitmap, M mesh, X vertex map, Ld LV LC LS lists; with the suffix u after the number, a function "
    "takes "
    "wide strings\n";

struct Options {
    bool json = false;
    std::vector<std::string> words;
};

int explainNothing(const std::string& asked) {
    const char* nearest = nearestCommandWord(asked);
    const std::string suggestion = nearest ? fmt::format(", did you mean '{}'?", nearest) : "";
    complain(fmt::format("zant forms: no command and no function has '{}'{}", asked, suggestion));
    return InputHasErrors;
}

int showForms(const Options& options) {
    const std::string asked = CLI::detail::join(options.words, " ");
    const auto forms = findForms(asked);
    if (forms.empty()) return explainNothing(asked);
    for (const Form* form : forms) {
        if (options.json) {
            fmt::print("{}\n", formAsJson(*form));
            continue;
        }
        fmt::print("{:<60} {}", form->notation, form->function);
        if (form->wideFunction) fmt::print("  {}", form->wideFunction);
        fmt::print("\n");
    }
    if (!options.json) fmt::print("\n{}. {}", counted(forms.size(), "form"), letters);
    return Fine;
}

}  // namespace

void addForms(CLI::App& program, int& exitCode) {
    auto* command = program.add_subcommand("forms", "Show a command's forms with the function names");
    auto options = std::make_shared<Options>();
    command->add_flag("--json", options->json, "Write each form as a JSON object on a line of its own, nothing else");
    command
        ->add_option("WORD", options->words,
                     "A command word or its number, with or without keywords; a keyword; a part of a function name")
        ->required();
    command->callback([options, &exitCode] { exitCode = showForms(*options); });
}

}  // namespace Zant::App
