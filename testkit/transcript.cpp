#include "testkit/transcript.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace Zant::Testkit {
namespace {

[[noreturn]] void fail(const std::string& what, const std::string& file) {
    throw std::runtime_error("cannot " + what + " " + file + ": " + std::strerror(errno));
}

bool isBlank(const std::string& line) {
    return line.find_first_not_of(" \t\r") == std::string::npos;
}

size_t indentation(const std::string& line) {
    return line.find_first_not_of(" \t");
}

}  // namespace

void Transcript::addLines(const std::string& text) {
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lineList_.push_back({line, lineList_.size() + 1});
}

Transcript Transcript::fromText(const std::string& text, std::string source) {
    Transcript transcript;
    transcript.sourceName_ = std::move(source);
    transcript.addLines(text);
    std::vector<Line>& lines = transcript.lineList_;
    lines.erase(std::remove_if(lines.begin(), lines.end(), [](const Line& line) { return isBlank(line.text); }),
                lines.end());
    size_t common = std::string::npos;
    for (const Line& line : lines)
        common = std::min(common, indentation(line.text));
    for (Line& line : lines)
        line.text.erase(0, common);
    return transcript;
}

Transcript Transcript::fromFile(const std::string& file, size_t offset) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    stream.seekg(static_cast<std::streamoff>(offset));
    if (!stream) fail("read", file);
    if (stream.peek() != std::ifstream::traits_type::eof()) text << stream.rdbuf();
    Transcript transcript;
    transcript.sourceName_ = file;
    transcript.addLines(text.str());
    return transcript;
}

void Transcript::save(const std::string& file) const {
    std::ofstream stream(file, std::ios::binary);
    stream << text();
    stream.close();
    if (!stream) fail("write", file);
}

std::string Transcript::text() const {
    std::string all;
    for (const Line& line : lineList_)
        all += line.text + '\n';
    return all;
}

}  // namespace Zant::Testkit
