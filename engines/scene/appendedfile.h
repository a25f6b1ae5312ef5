#ifndef ZANT_ENGINES_SCENE_APPENDEDFILE_H
#define ZANT_ENGINES_SCENE_APPENDEDFILE_H

#include <atomic>
#include <cstdio>
#include <mutex>
#include <string>

namespace Zant::Engine {

/// A text file that lines are appended to, each one flushed at once so that nothing is lost when the host dies.
/// May be used by several threads.
class AppendedFile {
public:
    /// @param errorPrefix before what is said on the standard error; it outlives the file.
    explicit AppendedFile(const char* errorPrefix) : errorPrefix_(errorPrefix) {}
    ~AppendedFile() { close(); }
    AppendedFile(const AppendedFile&) = delete;
    AppendedFile& operator=(const AppendedFile&) = delete;

    /// Opens the file, after closing the one before. An empty name opens nothing.
    /// A file that cannot be opened is named on the standard error, and lines are dropped.
    void open(const std::string& name);
    void close();
    /// Whether lines arrive somewhere.
    bool isOpen() const { return file_ != nullptr; }
    /// @return false when the line could not be written. The reason is said on the standard error, and the file closed.
    bool line(const std::string& text);

private:
    void complain();

    const char* const errorPrefix_;
    std::mutex mutex_;
    std::string name_;
    std::atomic<std::FILE*> file_{nullptr};  // isOpen() asks without the lock
};

}  // namespace Zant::Engine

#endif
