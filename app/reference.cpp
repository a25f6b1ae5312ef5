// zant reference: the vocabulary as pages for Doxygen, a page for every command word.

#include <fmt/core.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "app/example.h"
#include "app/program.h"
#include "language/lookup.h"
#include "language/writer.h"

namespace Zant::App {
namespace {

/// What a reader has to know of each kind of argument, in the order of ArgumentKind.
struct KindRow {
    const char* letter;
    const char* name;
    const char* parameter;
    const char* text;
    const char* words;
};
const KindRow kinds[] = {
    {"", "keyword", "", "the word; in quick text its number: `[6]`", "its number"},
    {"d", "number", "double", "`0.5`, at most eight decimals", "0, then the double"},
    {"i", "integer", "int", "`2`", "as a number"},
    {"b", "truth value", "bool", "`1` or `0`", "as a number"},
    {"u", "unsigned", "unsigned long", "`2`", "as a number"},
    {"s", "text", "const char*, const wchar_t*", "`\"wood.png\"`, a quote inside doubled",
     "its length in bytes, then the bytes and a zero byte"},
    {"V", "vector", "const Vector&", "`(1,0.5,0.25)`, one to four components", "their count, then the components"},
    {"A", "axes", "const Axes&", "`<90,0,0>`: heading, pitch and bank in degrees, radians in memory",
     "the number of rows, then three doubles for each"},
    {"C", "coordinate system", "const CoordSys&", "`(0,1.5,-4)` and, unless it is the eye, the axes behind an at sign",
     "the three doubles of the position, then the axes"},
    {"S", "symbol", "const Symbol&", "its name",
     "0, then its registered word; its name as a text while it is not registered"},
    {"N", "declared symbol", "Symbol&", "its name; the function registers the symbol", "as a symbol"},
    {"B", "bitmap", "const BitmapSymbol&", "its name", "as a symbol"},
    {"M", "mesh", "const MeshSymbol&", "its name", "as a symbol"},
    {"X", "vertex map", "const VertexMapSymbol&", "its name", "as a symbol"},
    {"Ld", "list of numbers", "const VarLenDouble&", "`{0,1,2}`; one item stands without braces",
     "-2, the length of the items in bytes, the items, -3"},
    {"LV", "list of vectors", "const VarLenVector&", "`{(0,2,0),(1,0.5,0.25)}`", "the same"},
    {"LC", "list of coordinate systems", "const VarLenCoordSys&", "as the items, in braces", "the same"},
    {"LS", "list of symbols", "const VarLenSymbol&", "`{object,object2}`", "the same"},
};
static_assert(sizeof kinds / sizeof kinds[0] == static_cast<size_t>(ArgumentKind::SymbolList) + 1,
              "one row for each kind");

/// Forms that share the first keyword behind the command word; of all forms without one, the keyword is null.
struct Section {
    const char* keyword;
    std::vector<const Form*> forms;
};

/// The keyword that a form is looked up by. Words that are commands, as behind `help`, only name what it is about.
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
        text += (text.empty() ? "" : ", ") + std::string(kinds[static_cast<size_t>(form.tokens[place].kind)].name);
    }
    return text.empty() ? "none" : text;
}

/// One page, written to a file of its own.
class Page {
public:
    Page(const std::filesystem::path& directory, const std::string& id)
        : name((directory / (id + ".md")).string()), file(std::fopen(name.c_str(), "wb")) {
        if (!file) throw std::runtime_error(fmt::format("{}: {}", name, std::strerror(errno)));
    }
    ~Page() { std::fclose(file); }
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    template <class... Arguments>
    void add(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
        const std::string text = fmt::format(format, std::forward<Arguments>(arguments)...);
        std::fputs(text.c_str(), file);
    }

    void finish() {
        if (std::fflush(file) != 0 || std::ferror(file)) throw std::runtime_error(name + ": cannot be written");
    }

private:
    std::string name;
    std::FILE* file;
};

/// The page of one command word.
class CommandPage {
public:
    CommandPage(const std::filesystem::path& directory, int commandNumber)
        : number(commandNumber), word(commandWord(number)), page(directory, "command_" + word) {}

    void write() {
        const std::vector<Section> sections = sectionsOf(number);
        writeHead(sections);
        for (const Section& section : sections)
            if (!section.forms.empty()) writeSection(section);
        page.finish();
    }

private:
    std::string anchorOf(const Section& section) const { return fmt::format("command_{}_{}", word, section.keyword); }

    void writeHead(const std::vector<Section>& sections) {
        const size_t forms = formsOf(number).size(), functions = functionCount(number);
        page.add("# {0} {{#command_{0}}}\n\n", word);
        page.add("The command word `{}`, number {} in quick text and binary words, of the group [{}](@ref group_{}): ",
                 word, number, groupOf(number), groupOf(number));
        page.add("{} {}, {} typed {}. ", forms, forms == 1 ? "form" : "forms", functions,
                 functions == 1 ? "function" : "functions");
        page.add("What the letters stand for: [arguments](@ref command_arguments).\n\n");
        std::string links;
        for (const Section& section : sections) {
            if (!section.keyword) continue;
            links +=
                fmt::format("{}[{}](@ref {})", links.empty() ? "" : " &middot;\n", section.keyword, anchorOf(section));
        }
        if (!links.empty()) page.add("{}\n\n", links);
    }

    void writeSection(const Section& section) {
        if (section.keyword) {
            const std::string keyword = section.keyword, said = spoken(keyword);
            const std::string title = said == keyword ? "" : fmt::format(" ({})", said);
            page.add("## {} {}{} {{#{}}}\n\n", word, keyword, title, anchorOf(section));
        }
        page.add("| Form | Arguments | Function |\n|---|---|---|\n");
        for (const Form* form : section.forms) {
            page.add("| `{}` | {} | {}(){} |\n", form->notation, argumentsOf(*form), form->function,
                     form->wideFunction ? fmt::format(" {}()", form->wideFunction) : "");
        }
        writeExample(mostTelling(section.forms));
    }

    void writeExample(const Form& form) {
        makeExample(form, command);
        page.add("\nIn C++:\n\n```cpp\n{}```\n\n", statementsFor(command));
        page.add("As plain text, quick text and binary words:\n\n");
        page.add("```{{.unparsed}}\n{}\n```\n\n", plain.write(command));
        page.add("```{{.unparsed}}\n{}\n```\n\n", quick.write(command));
        page.add("```{{.unparsed}}\n{}```\n\n", blockWords(command));
    }

    int number;
    std::string word;
    Page page;
    Command command;
    TextWriter plain;
    TextWriter quick{TextWriter::Form::Quick};
};

void writeGroup(const std::filesystem::path& directory, const std::string& group, const std::vector<int>& commands) {
    Page page(directory, "group_" + group);
    page.add("# {} {{#group_{}}}\n\n| Command word | Forms | Functions |\n|---|---|---|\n", capitalised(group), group);
    for (const int command : commands)
        page.add("| @subpage command_{} | {} | {} |\n", commandWord(command), formsOf(command).size(),
                 functionCount(command));
    page.finish();
}

void writeOverview(const std::filesystem::path& directory, const std::vector<std::string>& groups, size_t words) {
    Page page(directory, "commands");
    size_t functions = 0;
    for (const int command : commandsInOrder())
        functions += functionCount(command);
    page.add("# Commands {{#commands}}\n\n");
    page.add("{} command words with {} forms, and {} typed functions for them. Each word has a page, ", words,
             allForms().size(), functions);
    page.add(
        "each keyword behind it a section with its forms and an example. To find one, type the keyword or the "
        "words that it is made of into the search: `imageSampler`, `image sampler`.\n\n");
    for (const std::string& group : groups)
        page.add("- @subpage group_{}\n", group);
    page.add(
        "\nThe examples in C++ are given a prototyper, for example `Prototyper proto(instance);`. A symbol of the "
        "name `object` stands for one that exists already.\n\n");
    page.add("## Arguments of commands {{#command_arguments}}\n\n");
    page.add("| Letter | Argument | C++ parameter | Text | Binary words |\n|---|---|---|---|---|\n");
    for (const KindRow& kind : kinds)
        page.add("| {} | {} | {} | {} | {} |\n", *kind.letter ? fmt::format("`{}`", kind.letter) : "", kind.name,
                 *kind.parameter ? fmt::format("`{}`", kind.parameter) : "", kind.text, kind.words);
    page.finish();
}

int writeReference(const std::filesystem::path& directory) {
    std::filesystem::create_directories(directory);
    const std::vector<int> commands = commandsInOrder();
    std::vector<std::string> groups;
    for (const int command : commands) {
        CommandPage(directory, command).write();
        if (groups.empty() || groups.back() != groupOf(command)) groups.emplace_back(groupOf(command));
    }
    for (const std::string& group : groups) {
        std::vector<int> members;
        std::copy_if(commands.begin(), commands.end(), std::back_inserter(members),
                     [&](int command) { return group == groupOf(command); });
        writeGroup(directory, group, members);
    }
    writeOverview(directory, groups, commands.size());
    fmt::print("{} command words\n", commands.size());
    return Fine;
}

}  // namespace

void addReference(CLI::App& program, int& exitCode) {
    auto* command = program.add_subcommand("reference", "Write the vocabulary as pages for Doxygen");
    auto directory = std::make_shared<std::string>();
    command->add_option("DIR", *directory, "Directory to write to, made when it is missing")->required();
    command->callback([directory, &exitCode] { exitCode = writeReference(*directory); });
}

}  // namespace Zant::App
