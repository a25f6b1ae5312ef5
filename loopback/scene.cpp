#include "loopback/scene.h"

#include <chrono>
#include <memory>
#include <new>
#include <thread>

#include "loopback/execution.h"
#include "loopback/handles.h"

namespace Zant::Loopback {
namespace {

constexpr int deepest = 16;
constexpr int CannotRead = -1;  // beside the codes of the parser

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

// A file is looked for beside the file that includes it, then where it says.
OpenFile openBeside(const std::string& name, const char* source) {
    const std::string includer = source ? source : "";
    const size_t slash = includer.rfind('/');
    if (slash != std::string::npos && name[0] != '/') {
        OpenFile file(std::fopen((includer.substr(0, slash + 1) + name).c_str(), "rb"));
        if (file) return file;
    }
    return OpenFile(std::fopen(name.c_str(), "rb"));
}

// A directory opens like a file, and fails with the first byte.
bool isReadable(std::FILE* file) {
    const int first = std::fgetc(file);
    if (first != EOF) std::ungetc(first, file);
    return std::ferror(file) == 0;
}

// Where a value of the command stands.
Position positionOf(const Command& command, size_t place) {
    Position position = command.position;
    if (place >= command.values().size()) return position;
    const size_t offset = command.values()[place].offset;
    position.offset += offset;
    for (const char letter : command.source.substr(0, offset)) {
        position.column = letter == '\n' ? 1 : position.column + 1;
        position.line += letter == '\n';
    }
    return position;
}

}  // namespace

Scene::Scene(uint64_t number, Instance* instance, Surroundings& surroundings)
    : number_(number),
      library_(instance->library),
      surroundings_(surroundings),
      settings_(surroundings.settings),
      text_(instance, surroundings.settings.faults.foreignEvent) {}

int Scene::parse(const void* data, const char* source, int mode) {
    if (!data) return Fine;
    if (mode == ParseBinary) return runBlock(data);
    if (mode != ParseText && mode != ParseQuickText) return DeadContext;
    TextReader reader{std::string_view(static_cast<const char*>(data))};
    return runText(reader, source ? source : "text", 0);
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

int Scene::runText(TextReader& reader, const char* source, int depth) {
    int first = Fine;
    Command command;
    for (ReadResult result = reader.next(command); result != ReadResult::End; result = reader.next(command)) {
        const bool isRead = result == ReadResult::Command;
        const int code = isRead ? run(command, enter("parse"), source, depth) : fail(reader.diagnostic(), source);
        if (first == Fine) first = code;
    }
    return first;
}

int Scene::run(const Command& command, Lock lock, const char* source, int depth) {
    Execution execution{command, objects_, settings_, writer_};
    const Outcome outcome = execute(execution);
    lock.unlock();
    text_.say(execution.lines);
    if (outcome.code != Fine) return fail(outcome, command, source);
    return execution.isNested ? runNested(execution, source, depth) : Fine;
}

int Scene::runNested(const Execution& execution, const char* source, int depth) {
    const Command& command = execution.command;
    if (depth >= deepest) return fail({TooDeep, "commands are nested too deeply", 0}, command, source);
    if (execution.nestedFile.empty()) {
        TextReader reader{std::string_view(execution.nestedText)};
        return runText(reader, execution.nestedSource.c_str(), depth + 1);
    }
    const int code = runFile(execution.nestedFile, source, depth + 1);
    if (code != CannotRead) return code;
    return fail({NoFile, "cannot read the file '" + execution.nestedFile + "'", 0}, command, source);
}

int Scene::runFile(const std::string& name, const char* source, int depth) {
    const OpenFile file = openBeside(name, source);
    if (!file || !isReadable(file.get())) return CannotRead;
    FileSource input(file.get());
    TextReader reader(input);
    return runText(reader, name.c_str(), depth);
}

int Scene::runBlock(const void* block) {
    Command command;
    BinaryReader reader(this);
    Lock lock = enter("parse");  // before reading: names of registered symbols are looked up
    const ReadResult result = reader.read(block, command);
    if (result == ReadResult::Command) return run(command, std::move(lock), "block", 0);
    lock.unlock();
    return result == ReadResult::End ? Fine : fail(reader.diagnostic(), "block");
}

bool Scene::isToFail() {
    return ++commands_ == settings_.faults.failCommand;
}

Outcome Scene::execute(Execution& execution) {
    if (settings_.faults.slowCommand > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(settings_.faults.slowCommand));
    }
    if (isToFail()) return {Injected, "this command fails because ZANT_LOOPBACK_FAULT asks for it"};
    try {
        const Outcome outcome = carryOut(execution);
        if (outcome.code == Fine && !execution.isNested && surroundings_.transcript.isOpen()) {
            surroundings_.transcript.line(writer_.write(execution.command));
        }
        return outcome;
    } catch (const std::bad_alloc&) {
        return {OutOfMemory, "there is no memory for this command"};
    }
}

int Scene::fail(const Diagnostic& diagnostic, const char* source) {
    text_.say("Error: " + diagnostic.describe(source));
    return NotUnderstood;
}

int Scene::fail(const Outcome& outcome, const Command& command, const char* source) {
    fail(Diagnostic{positionOf(command, outcome.place), outcome.message, {}}, source);
    return outcome.code;
}

}  // namespace Zant::Loopback
