// zant reference: the vocabulary as pages for Doxygen, a page for every command word.

#include <fmt/core.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "app/declarations.h"
#include "app/example.h"
#include "app/outputfile.h"
#include "app/program.h"
#include "app/text.h"
#include "language/lookup.h"
#include "language/writer.h"

namespace Zant::App {
namespace {

/// Forms that share the first keyword after the command word; of all forms without one, the keyword is null.
struct Section {
    const char* keyword;
    std::vector<const Form*> forms;
};

/// The keyword that a form is looked up by. Words that are commands, as after `help`, only name what it is about.
const char* keywordOf(const Form& form) {
    for (uint16_t place = 0; place < form.tokenCount; ++place) {
        const FormToken& token = form.tokens[place];
        if (token.kind != ArgumentKind::Keyword) continue;
        return token.table == 0 ? nullptr : keywordTables()[token.table].words[token.number - 1];
    }
    return nullptr;
}

std::vector<Section> sectionsOf(int command) {
    std::vector<Section> sections = {{nullptr, {}}};
    for (const Form& form : formsOf(command)) {
        const char* keyword = keywordOf(form);
        const auto present = std::find_if(sections.begin(), sections.end(), [&](const Section& section) {
            return section.keyword == keyword || (keyword && section.keyword && !strcmp(keyword, section.keyword));
        });
        if (present == sections.end())
            sections.push_back({keyword, {&form}});
        else
            present->forms.push_back(&form);
    }
    return sections;
}

/// The command words of the vocabulary, those of a group next to each other.
std::vector<int> commandsInOrder() {
    std::vector<int> commands;
    for (const Form& form : allForms())
        if (commands.empty() || commands.back() != form.command) commands.push_back(form.command);
    return commands;
}

std::string capitalised(std::string word) {
    word[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(word[0])));
    return word;
}

bool isCapital(const std::string& word, size_t at) {
    return at < word.size() && std::isupper(static_cast<unsigned char>(word[at]));
}

/// "imageSampler" as people say it: "image sampler".
std::string spoken(const std::string& word) {
    std::string result;
    for (size_t at = 0; at < word.size(); ++at) {
        const bool endsCapitals = isCapital(word, at) && at + 1 < word.size() && !isCapital(word, at + 1);
        if (at > 0 && isCapital(word, at) && (!isCapital(word, at - 1) || endsCapitals)) result += ' ';
        result += static_cast<char>(std::tolower(static_cast<unsigned char>(word[at])));
    }
    return result;
}

size_t functionCount(int command) {
    size_t count = 0;
    for (const Form& form : formsOf(command))
        count += form.wideFunction ? 2 : 1;
    return count;
}

std::string argumentsOf(const Form& form) {
    std::string text;
    for (uint16_t place = 0; place < form.tokenCount; ++place) {
        if (form.tokens[place].kind == ArgumentKind::Keyword) continue;
        text += (text.empty() ? "" : ", ") + std::string(kindRow(form.tokens[place].kind).name);
    }
    return text.empty() ? "none" : text;
}

std::string pageFile(const std::filesystem::path& directory, const std::string& id) {
    return (directory / (id + ".md")).string();
}

/// The functions of a form: one, and its twin with wide strings when there is one.
std::vector<std::string> functionsOf(const Form& form) {
    if (!form.wideFunction) return {form.function};
    return {form.function, form.wideFunction};
}

/// The page of one command word. Each typed function has its anchor there, and its declaration when that is known.
class CommandPage {
public:
    CommandPage(const std::filesystem::path& directory, int commandNumber, const Declarations& functionDeclarations)
        : number_(commandNumber),
          word_(commandWord(number_)),
          page_(pageFile(directory, "command_" + word_)),
          declarations_(functionDeclarations) {}

    void write() {
        const std::vector<Section> sections = sectionsOf(number_);
        writeHead(sections);
        for (const Section& section : sections)
            if (!section.forms.empty()) writeSection(section);
        page_.finish();
    }

private:
    std::string anchorOf(const Section& section) const { return fmt::format("command_{}_{}", word_, section.keyword); }

    void writeHead(const std::vector<Section>& sections) {
        const size_t forms = formsOf(number_).size(), functions = functionCount(number_);
        page_.print("# {0} {{#command_{0}}}\n\n", word_);
        page_.print(
            "The command word `{}`, number {} in quick text and binary words, of the group [{}](@ref group_{}): ",
            word_, number_, groupOf(number_), groupOf(number_));
        page_.print("{}, {}. ", counted(forms, "form"), counted(functions, "typed function"));
        page_.print("What the letters stand for: [arguments](@ref command_arguments).\n\n");
        std::string links;
        for (const Section& section : sections) {
            if (!section.keyword) continue;
            links +=
                fmt::format("{}[{}](@ref {})", links.empty() ? "" : " &middot;\n", section.keyword, anchorOf(section));
        }
        if (!links.empty()) page_.print("{}\n\n", links);
    }

    void writeSection(const Section& section) {
        if (section.keyword) {
            const std::string keyword = section.keyword, said = spoken(keyword);
            const std::string title = said == keyword ? "" : fmt::format(" ({})", said);
            page_.print("## {} {}{} {{#{}}}\n\n", word_, keyword, title, anchorOf(section));
        }
        page_.print("| Form | Arguments | Function |\n|---|---|---|\n");
        for (const Form* form : section.forms) {
            page_.print("| `{}` | {} |", form->notation, argumentsOf(*form));
            for (const std::string& function : functionsOf(*form))
                page_.print(" @anchor {0} {0}()", function);
            page_.print(" |\n");
        }
        if (!declarations_.empty()) writeDeclarations(section);
        writeExample(mostTelling(section.forms));
    }

    void writeDeclarations(const Section& section) {
        page_.print("\n```{{.cpp}}\n");
        for (const Form* form : section.forms)
            for (const std::string& function : functionsOf(*form))
                page_.print("{}\n", declarations_.of(function));
        page_.print("```\n");
    }

    void writeExample(const Form& form) {
        makeExample(form, command_);
        page_.print("\nIn C++:\n\n```cpp\n{}```\n\n", statementsFor(command_));
        page_.print("As plain text, quick text and binary words:\n\n");
        page_.print("```{{.unparsed}}\n{}\n```\n\n", plain_.write(command_));
        page_.print("```{{.unparsed}}\n{}\n```\n\n", quick_.write(command_));
        page_.print("```{{.unparsed}}\n{}```\n\n", blockWords(command_));
    }

    int number_;
    std::string word_;
    OutputFile page_;
    const Declarations& declarations_;
    Command command_;
    TextWriter plain_;
    TextWriter quick_{TextWriter::Form::Quick};
};

void writeGroup(const std::filesystem::path& directory, const std::string& group, const std::vector<int>& commands) {
    OutputFile page(pageFile(directory, "group_" + group));
    page.print("# {} {{#group_{}}}\n\n| Command word | Forms | Functions |\n|---|---|---|\n", capitalised(group),
               group);
    for (const int command : commands)
        page.print("| @subpage command_{} | {} | {} |\n", commandWord(command), formsOf(command).size(),
                   functionCount(command));
    page.finish();
}

std::string parameterOf(const KindRow& kind) {
    std::string type = kind.type;
    if (const size_t prefix = type.find("Zant::"); prefix != type.npos) type.erase(prefix, std::strlen("Zant::"));
    return kind.kind == ArgumentKind::String ? type + ", const wchar_t*" : type;
}

void writeOverview(const std::filesystem::path& directory, const std::vector<std::string>& groups, size_t words) {
    OutputFile page(pageFile(directory, "commands"));
    size_t functions = 0;
    for (const int command : commandsInOrder())
        functions += functionCount(command);
    page.print("# Commands {{#commands}}\n\n");
    page.print("{} command words with {} forms, and {} typed functions for them. Each word has a page, ", words,
               allForms().size(), functions);
    page.print(
        "each keyword after it a section with its forms and an example. To find one, type any words of it into "
        "the search, in any order: `imageSampler`, `sampler image`, `move camera`.\n\n");
    for (const std::string& group : groups)
        page.print("- @subpage group_{}\n", group);
    page.print(
        "\nThe examples in C++ are given a prototyper, for example `Prototyper proto(instance);`. A symbol of the "
        "name `object` stands for one that exists already.\n\n");
    page.print("## Arguments of commands {{#command_arguments}}\n\n");
    page.print("| Letter | Argument | C++ parameter | Text | Binary words |\n|---|---|---|---|---|\n");
    for (size_t number = 0; number < kindCount; ++number) {
        const KindRow& kind = kindRow(static_cast<ArgumentKind>(number));
        page.print("| {} | {} | {} | {} | {} |\n", *kind.letter ? fmt::format("`{}`", kind.letter) : "", kind.name,
                   *kind.type ? fmt::format("`{}`", parameterOf(kind)) : "", kind.text, kind.block);
    }
    page.finish();
}

}  // namespace

int reference(const ReferenceOptions& options) {
    const std::filesystem::path directory = std::filesystem::u8path(options.directory);
    const Declarations declarations = options.header.empty() ? Declarations() : Declarations(options.header);
    std::error_code failure;
    std::filesystem::create_directories(directory, failure);
    if (failure) throw OutputError(directory.string() + ": cannot be made: " + failure.message());
    const std::vector<int> commands = commandsInOrder();
    std::vector<std::string> groups;
    for (const int command : commands) {
        CommandPage(directory, command, declarations).write();
        if (groups.empty() || groups.back() != groupOf(command)) groups.emplace_back(groupOf(command));
    }
    for (const std::string& group : groups) {
        std::vector<int> members;
        std::copy_if(commands.begin(), commands.end(), std::back_inserter(members),
                     [&](int command) { return group == groupOf(command); });
        writeGroup(directory, group, members);
    }
    writeOverview(directory, groups, commands.size());
    fmt::print("{}\n", counted(commands.size(), "command word"));
    return Fine;
}

}  // namespace Zant::App
