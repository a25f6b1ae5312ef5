#ifndef ZANT_APP_DECLARATIONS_H
#define ZANT_APP_DECLARATIONS_H

#include <map>
#include <string>

namespace Zant::App {

/// The declarations of the typed functions as their header writes them, by the names of the functions.
class Declarations {
public:
    /// Knows none.
    Declarations() = default;
    /// Reads them from client/protos/protos.h.
    /// @throws InputError when the file cannot be read, or declares nothing
    explicit Declarations(const std::string& header);

    bool empty() const { return byName_.empty(); }
    /// @return the declaration with its semicolon, on as many lines as it has in the header
    /// @throws InputError when the header does not declare the function
    const std::string& of(const std::string& function) const;

private:
    std::string file_;
    std::map<std::string, std::string> byName_;
};

}  // namespace Zant::App

#endif
