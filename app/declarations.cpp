#include "app/declarations.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

#include "app/inputfile.h"

namespace Zant::App {
namespace {

constexpr char start[] = "void ";
constexpr char attribute[] = " ZANT_NEEDS_FIRST;";  // for compilers

/// "void fg2_gradients(void* protos, ..." -> "fg2_gradients"; empty for a line that begins no declaration.
std::string declaredBy(const std::string& line) {
    const size_t bracket = line.find('(');
    if (line.rfind(start, 0) != 0 || bracket == std::string::npos) return {};
    return line.substr(strlen(start), bracket - strlen(start));
}

}  // namespace

Declarations::Declarations(const std::string& header) : file_(header) {
    std::ifstream input(header);
    if (!input) throw InputError(header + ": " + std::strerror(errno));
    std::string line, name, text;
    while (std::getline(input, line)) {
        if (name.empty()) name = declaredBy(line);
        if (name.empty()) continue;
        text += (text.empty() ? "" : "\n") + line;
        if (line.back() != ';') continue;
        const size_t end = text.size() - std::min(text.size(), strlen(attribute));
        if (text.compare(end, std::string::npos, attribute) == 0) text.replace(end, std::string::npos, ";");
        byName_.emplace(std::move(name), std::move(text));
        name.clear();
        text.clear();
    }
    if (byName_.empty()) throw InputError(header + ": declares no typed function");
}

const std::string& Declarations::of(const std::string& function) const {
    const auto place = byName_.find(function);
    if (place == byName_.end()) throw InputError(file_ + ": does not declare " + function);
    return place->second;
}

}  // namespace Zant::App
