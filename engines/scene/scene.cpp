#include "engines/scene/scene.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

#include "engines/scene/execution.h"
#include "engines/scene/handles.h"
#include "engines/scene/includedfile.h"

namespace Zant::Engine {
namespace {

namespace files = std::filesystem;

// Of nested texts and files, and of files in all. Files that include several others would otherwise be read without an
// end that anybody sees.
constexpr int deepest = 16;
constexpr int mostFiles = 10000;

// A file is looked for beside the file that includes it, then where it says.
files::path locate(const std::string& name, const char* source) {
    const files::path beside = files::u8path(source).parent_path() / files::u8path(name);
    std::error_code ignored;
    return files::is_regular_file(beside, ignored) ? beside : files::u8path(name);
}

// A command by its word and its first keyword.
std::string kindOf(const Command& command) {
    for (size_t place = 0; place < command.values().size(); ++place) {
        if (command.values()[place].kind == ValueKind::Keyword)
            return std::string(command.word()) + " " + command.keywordText(place);
    }
    return command.word();
}

}  // namespace

// A text being read, and what led to it.
struct Reading {
    const char* source;
    bool isFile = false;
    const Reading* outer = nullptr;
    int depth = 0;
    mutable int files = 0;  // that were read, of the outermost one
    mutable bool hasEnded = false;

    bool takeFile() const { return outer ? outer->takeFile() : ++files <= mostFiles; }
    void end(Ending ending) const {
        if (ending == Ending::Nothing) return;
        hasEnded = true;
        if (ending == Ending::All && outer) outer->end(ending);
    }
    bool includes(const files::path& file) const {
        std::error_code ignored;
        if (isFile && files::equivalent(files::u8path(source), file, ignored)) return true;
        return outer && outer->includes(file);
    }
};

Scene::Scene(uint64_t number, Instance* instance, Surroundings& surroundings)
    : number_(number),
      library_(instance->library),
      surroundings_(surroundings),
      settings_(surroundings.settings),
      events_(std::make_shared<Events>(instance, surroundings.settings.faults.foreignEvent)),
      pictures_(std::make_shared<Pictures>(events_, surroundings.profile, surroundings.settings.picture,
                                           surroundings.leftThreads)),
      transcriptWriter_(TextWriter::Form::Plain, settings_.numbers) {}

void Scene::end() {
    pictures_->closeWindow();
    pictures_->end();
    text_.close();
    events_->close();
}

void Scene::abandon() {
    pictures_->end();
    events_->close();
}

int Scene::parse(const void* data, const char* source, int mode) {
    if (!data) return Fine;
    if (mode == ParseBinary) return runBlock(data);
    if (mode != ParseText && mode != ParseQuickText) return DeadContext;
    TextReader reader{std::string_view(static_cast<const char*>(data))};
    return runText(reader, {source ? source : "text"});
}

Scene::Lock Scene::enter(const char* call) {
    Lock lock(mutex_, std::try_to_lock);
    if (lock.owns_lock()) return lock;
    surroundings_.watch.line(std::string(call) + ": another thread is inside the same parser context");
    lock.lock();
    return lock;
}

const char* Scene::nameOf(uint64_t registered) {
    const ObjectPointer object = objectOf(reinterpret_cast<const void*>(registered));
    return object ? object->name.c_str() : nullptr;
}

int Scene::runText(TextReader& reader, const Reading& reading) {
    int first = Fine;
    Command command;
    while (!reading.hasEnded) {
        const ReadResult result = reader.next(command);
        if (result == ReadResult::End) break;
        const bool isRead = result == ReadResult::Command;
        const int code = isRead ? run(command, enter("parse"), reading) : fail(reader.diagnostic(), reading);
        if (first == Fine) first = code;
    }
    return first;
}

int Scene::runBlock(const void* block) {
    Command command;
    BinaryReader reader(this);
    Lock lock = enter("parse");  // before reading: names of registered symbols are looked up
    const ReadResult result = reader.read(block, command);
    if (result == ReadResult::Command) return run(command, std::move(lock), {"block"});
    lock.unlock();
    return result == ReadResult::End ? Fine : fail(reader.diagnostic(), {"block"});
}

int Scene::run(const Command& command, Lock lock, const Reading& reading) {
    Execution execution{command, objects_, world_, surroundings_.profile, settings_, writer_, *pictures_};
    if (settings_.symbols) {
        const std::vector<SymbolTable::Finding> findings = symbols_.check(command);
        if (!findings.empty()) return refuse(findings, command, reading, std::move(lock));
    }
    const Outcome outcome = execute(execution);
    if (outcome.code == Fine || outcome.code == NotRecorded) note(execution, reading);
    lock.unlock();
    text_.say(execution.lines);
    if (outcome.code != Fine) return fail(outcome, command, reading);
    reading.end(execution.ending);
    if (execution.afterwards) {
        const Outcome later = execution.afterwards(text_);
        if (later.code != Fine) return fail(later, command, reading);
    }
    return execution.nested == Nested::None ? Fine : runNested(execution, reading);
}

// Says all of them.
int Scene::refuse(const std::vector<SymbolTable::Finding>& findings, const Command& command, const Reading& reading,
                  Lock lock) {
    using Problem = SymbolTable::Problem;
    lock.unlock();
    for (const SymbolTable::Finding& finding : findings)
        fail(finding.in(command), reading);
    const Problem first = findings.front().problem;
    return first == Problem::Undeclared || first == Problem::Deleted ? UnknownObject : WrongKind;
}

// What is kept of a command that was carried out.
void Scene::note(const Execution& execution, const Reading& reading) {
    if (!execution.hasEffect && surroundings_.summary.isOpen()) ++withoutEffect_[execution.command.form];
    if (!execution.isPictured) ++world_.omissions[kindOf(execution.command)];
    if (!settings_.symbols) return;
    const size_t line = execution.command.position.line;
    symbols_.follow(execution.command, reading.source + (line ? ", line " + std::to_string(line) : std::string()));
}

void Scene::summarise() {
    const Lock lock = enter("summary");
    if (!surroundings_.summary.isOpen()) return;
    std::vector<std::pair<size_t, const Form*>> forms;
    size_t total = 0;
    for (const auto& [form, count] : withoutEffect_) {
        forms.emplace_back(count, form);
        total += count;
    }
    std::stable_sort(forms.begin(), forms.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    surroundings_.summary.line("instance " + std::to_string(number_) +
                               ": taken without effect: " + std::to_string(total));
    for (const auto& [count, form] : forms)
        surroundings_.summary.line("  " + std::to_string(count) + "  " + form->notation);
}

int Scene::runNested(const Execution& execution, const Reading& reading) {
    if (reading.depth >= deepest) {
        return fail({TooDeep, "commands are nested too deeply", 0}, execution.command, reading);
    }
    if (execution.nested == Nested::File) return runFile(execution, reading);
    if (execution.nested == Nested::Input) return runInput(execution, reading);
    TextReader reader{std::string_view(execution.nestedText)};
    return runText(reader, {execution.nestedSource.c_str(), false, &reading, reading.depth + 1});
}

int Scene::runFile(const Execution& execution, const Reading& reading) {
    const std::string quoted = "'" + execution.nestedText + "'";
    const auto failed = [&](Code code, const std::string& message) {
        return fail({code, message, 0}, execution.command, reading);
    };
    try {  // also where the text cannot be the name of a file
        const files::path path = locate(execution.nestedText, reading.source);
        if (reading.includes(path)) return failed(TooDeep, "the file " + quoted + " includes itself");
        if (!reading.takeFile())
            return failed(TooDeep, "more than " + std::to_string(mostFiles) + " files are included");
        const std::string name = path.generic_u8string();
        IncludedFile file(name);
        TextReader reader(file);
        return runText(reader, {name.c_str(), true, &reading, reading.depth + 1});
    } catch (const std::system_error& error) {
        return failed(NoFile, "cannot read the file " + quoted + ": " + error.code().message());
    }
}

// Up to an empty line, or until there is none.
int Scene::runInput(const Execution& execution, const Reading& reading) {
    int first = Fine;
    const Reading input{execution.nestedSource.c_str(), false, &reading, reading.depth + 1};
    std::string line;
    while (!input.hasEnded && text_.ask(execution.nestedText.c_str(), line) && !line.empty()) {
        TextReader reader{std::string_view(line)};
        const int code = runText(reader, input);
        if (first == Fine) first = code;
    }
    return first;
}

bool Scene::isToFail() {
    return ++commands_ == settings_.faults.failCommand;
}

Outcome Scene::execute(Execution& execution) {
    if (settings_.faults.slowCommand > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(settings_.faults.slowCommand));
    }
    if (isToFail()) {
        return {Injected,
                std::string("this command fails because ") + surroundings_.profile.faultSource + " asks for it"};
    }
    try {
        const Outcome outcome = carryOut(execution);
        return outcome.code == Fine && execution.nested == Nested::None ? record(execution) : outcome;
    } catch (const std::bad_alloc&) {
        return {OutOfMemory, "there is no memory for this command"};
    }
}

Outcome Scene::record(Execution& execution) {
    if (!surroundings_.transcript.isOpen()) return {};
    const char* const text = transcriptWriter_.write(execution.command);
    if (!surroundings_.transcript.line(text)) {
        return {NotRecorded, "the transcript '" + settings_.transcript + "' cannot be written and ends here"};
    }
    const size_t changed = transcriptWriter_.changedNumbers();
    if (changed != 0) {
        execution.lines.add("Warning: the transcript cannot hold " + std::to_string(changed) + " of the numbers of " +
                            text);
    }
    return {};
}

int Scene::fail(const Diagnostic& diagnostic, const Reading& reading) {
    text_.say("Error: " + diagnostic.describe(reading.source));
    return NotUnderstood;
}

int Scene::fail(const Outcome& outcome, const Command& command, const Reading& reading) {
    fail(Diagnostic{placeOf(command, outcome.place), outcome.message, {}}, reading);
    return outcome.code;
}

}  // namespace Zant::Engine
