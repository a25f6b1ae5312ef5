#include "own/childprocess.h"

#include <windows.h>

#include <cstdio>
#include <stdexcept>
#include <utility>

#include "own/dl.h"
#include "own/dlplatform.h"
#include "own/wide.h"

namespace Zant {
namespace Platform {
namespace {

constexpr DWORD pieceSize = 65536;
constexpr DWORD glanceMilliseconds = 2;  // a pipe cannot be waited for
constexpr const wchar_t* channelVariable = L"ZANT_CHILD_CHANNEL";

[[noreturn]] void fail() {
    throw std::runtime_error(std::string("cannot start a process: ") + lastReason());
}

class Handle {
public:
    explicit Handle(void* handle = nullptr) : handle_(handle) {}
    ~Handle() { close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    void* get() const { return handle_; }
    void** place() { return &handle_; }
    void close() {
        if (void* const old = std::exchange(handle_, nullptr)) CloseHandle(old);
    }

private:
    void* handle_;
};

void makeInheritable(const Handle& handle) {
    SetHandleInformation(handle.get(), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
}

struct Pipe {
    Pipe() {
        if (!CreatePipe(from.place(), to.place(), nullptr, pieceSize)) fail();
        makeInheritable(to);
    }

    /// Gives on what is there. @return whether there was something
    bool read(const TakePiece& take) {
        DWORD there = 0, count = 0;
        if (!PeekNamedPipe(from.get(), nullptr, 0, nullptr, &there, nullptr) || there == 0) return false;
        std::vector<char> piece(there);
        if (!ReadFile(from.get(), piece.data(), there, &count, nullptr)) return false;
        take({piece.data(), count});
        return true;
    }

    Handle from, to;
};

/// As every program's run-time library takes it apart again: quotes around it, backslashes doubled in front of a quote.
std::wstring quoted(const std::string& argument) {
    std::wstring text = L"\"";
    size_t backslashes = 0;
    for (const wchar_t c : wide(argument)) {
        if (c == L'"') text.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        text += c;
    }
    return text.append(backslashes, L'\\') + L'"';
}

struct ExceptionName {
    DWORD code;
    const char* name;
};
constexpr ExceptionName exceptionNames[] = {
    {0x80000003, "breakpoint"},          {0xC0000005, "access violation"},
    {0xC0000006, "in-page error"},       {0xC000001D, "illegal instruction"},
    {0xC0000094, "division by zero"},    {0xC00000FD, "stack overflow"},
    {0xC0000139, "missing entry point"}, {0xC000013A, "interrupted"},
    {0xC0000374, "heap corruption"},     {0xC0000409, "aborted"},
};

/// An exception that nobody handles is the exit code.
ChildStatus statusOf(DWORD code) {
    if (code < 0xC0000000 && code != 0x80000003) return {static_cast<int>(code), "", false};
    char number[32];
    std::snprintf(number, sizeof number, "exception %08lX", code);
    for (const ExceptionName& known : exceptionNames)
        if (known.code == code) return {0, std::string(known.name) + " (" + number + ")", code == 0xC0000006};
    return {0, number, false};
}

/// A job, whose processes end with its last handle, and so with this process.
void* createJob() {
    void* const job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

/// The handles that a child inherits, and no others.
class Inheritance {
public:
    Inheritance(std::vector<void*> handles) : handles_(std::move(handles)) {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        storage_.resize(size);
        if (!InitializeProcThreadAttributeList(list(), 1, 0, &size)) fail();
        UpdateProcThreadAttribute(list(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles_.data(),
                                  handles_.size() * sizeof(void*), nullptr, nullptr);
    }
    ~Inheritance() { DeleteProcThreadAttributeList(list()); }
    Inheritance(const Inheritance&) = delete;
    Inheritance& operator=(const Inheritance&) = delete;

    LPPROC_THREAD_ATTRIBUTE_LIST list() { return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(storage_.data()); }

private:
    std::vector<void*> handles_;
    std::vector<char> storage_;
};

void* wordsChannel = nullptr;

}  // namespace

struct Child::State {
    Pipe text, words;
    Handle nothing{
        CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr)};
    Handle job{createJob()}, process;
};

Child::Child(const std::vector<std::string>& command, const std::string& folder) : state_(new State) {
    State& state = *state_;
    makeInheritable(state.nothing);
    Inheritance inherited({state.nothing.get(), state.text.to.get(), state.words.to.get()});
    STARTUPINFOEXW start{};
    start.StartupInfo.cb = sizeof start;
    start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    start.StartupInfo.hStdInput = state.nothing.get();
    start.StartupInfo.hStdOutput = start.StartupInfo.hStdError = state.text.to.get();
    start.lpAttributeList = inherited.list();
    std::wstring line;
    for (const std::string& argument : command)
        line += (line.empty() ? L"" : L" ") + quoted(argument);
    const std::wstring place = wide(folder);
    std::fflush(nullptr);
    SetEnvironmentVariableW(channelVariable, std::to_wstring(reinterpret_cast<intptr_t>(state.words.to.get())).c_str());
    PROCESS_INFORMATION started{};
    constexpr DWORD flags = CREATE_SUSPENDED | EXTENDED_STARTUPINFO_PRESENT | CREATE_NEW_PROCESS_GROUP;
    const BOOL fine = CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, flags, nullptr,
                                     folder.empty() ? nullptr : place.c_str(), &start.StartupInfo, &started);
    SetEnvironmentVariableW(channelVariable, nullptr);
    if (!fine) fail();
    *state.process.place() = started.hProcess;
    AssignProcessToJobObject(state.job.get(), started.hProcess);
    ResumeThread(started.hThread);
    CloseHandle(started.hThread);
    state.text.to.close();
    state.words.to.close();
}

Child::~Child() {
    end();
}

void Child::listen(int milliseconds, const TakePiece& text, const TakePiece& words) {
    const ULONGLONG until = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    for (;;) {
        const bool ended = hasEnded();
        const bool heard = state_->text.read(text), told = state_->words.read(words);
        if (heard || told || ended || GetTickCount64() >= until) return;
        WaitForSingleObject(state_->process.get(), glanceMilliseconds);
    }
}

bool Child::hasEnded() const {
    return WaitForSingleObject(state_->process.get(), 0) == WAIT_OBJECT_0;
}

ChildStatus Child::end() {
    TerminateJobObject(state_->job.get(), 1);
    WaitForSingleObject(state_->process.get(), INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(state_->process.get(), &code);
    return statusOf(code);
}

std::vector<std::string> thisProgram() {
    return {DllFileOf(reinterpret_cast<const void*>(&thisProgram))};
}

// The run-time library has no output by lines; what is not buffered is said when the process is ended.
void joinParent() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    wchar_t number[32];
    const DWORD length = GetEnvironmentVariableW(channelVariable, number, sizeof number / sizeof *number);
    if (length != 0) wordsChannel = reinterpret_cast<void*>(static_cast<intptr_t>(std::wcstoll(number, nullptr, 10)));
    if (wordsChannel) SetHandleInformation(wordsChannel, HANDLE_FLAG_INHERIT, 0);
    SetEnvironmentVariableW(channelVariable, nullptr);
    std::setvbuf(stdout, nullptr, _IONBF, 0);
}

void writeToParent(std::string_view text) {
    DWORD written = 0;
    if (wordsChannel) WriteFile(wordsChannel, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

void leaveAtOnce(int code) {
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    std::abort();  // not reached
}

}  // namespace Platform
}  // namespace Zant
