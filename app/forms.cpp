// zant forms: a command's forms with the function names.

#include <fmt/core.h>
#include <fmt/ranges.h>

#include "app/findings.h"
#include "app/program.h"
#include "app/text.h"
#include "language/lookup.h"

namespace Zant::App {
namespace {

int explainNothing(const std::string& asked) {
    const char* nearest = nearestCommandWord(asked);
    const std::string suggestion = nearest ? fmt::format(", did you mean '{}'?", nearest) : "";
    complain(fmt::format("zant forms: no command and no function has '{}'{}", asked, suggestion));
    return InputHasErrors;
}

}  // namespace

int forms(const FormsOptions& options) {
    const std::string asked = fmt::format("{}", fmt::join(options.words, " "));
    const auto found = findForms(asked);
    if (found.empty()) return explainNothing(asked);
    for (const Form* form : found) {
        if (options.json) {
            fmt::print("{}\n", formAsJson(*form));
            continue;
        }
        fmt::print("{:<60} {}", form->notation, form->function);
        if (form->wideFunction) fmt::print("  {}", form->wideFunction);
        fmt::print("\n");
    }
    if (options.json) return Fine;
    fmt::print("\n{}. {};\nwith the suffix u after the number, a function takes wide strings\n",
               counted(found.size(), "form"), letterLegend("\n"));
    return Fine;
}

}  // namespace Zant::App
