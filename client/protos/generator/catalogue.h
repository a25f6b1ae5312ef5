#ifndef ZANT_CLIENT_PROTOS_GENERATOR_CATALOGUE_H
#define ZANT_CLIENT_PROTOS_GENERATOR_CATALOGUE_H

#include <cstddef>
#include <istream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace Generator {

/// Where something stands in the catalogue.
struct Place {
    std::string file;
    int line = 0;
};

/// A mistake in the catalogue; what() reads "file:line: what is wrong".
class Fault : public std::runtime_error {
public:
    Fault(const Place& place, const std::string& message)
        : std::runtime_error(place.file + ":" + std::to_string(place.line) + ": " + message) {}
};

/// The words of one form.
using Words = std::vector<std::string>;

/// One line of forms: brackets only end a form, so the line is its longest form and the lengths at which forms end.
struct Pattern {
    Place place;
    Words words;
    std::vector<size_t> ends;  // ascending
};

/// What forms may end in. Exactly one of the three sources is set.
struct Tail {
    Place place;
    std::vector<Pattern> patterns;
    std::string table;    // every keyword of this table
    std::string command;  // every form of this command
};

struct KeywordPath {
    Place place;
    std::string path;  // command word, keywords and argument letters, one space between them
    std::string table;
};

struct Command {
    Place place;
    std::string word;
    size_t functions = 0;
    std::vector<KeywordPath> paths;
    std::vector<Pattern> patterns;
};

struct Group {
    Place place;
    std::string name;
    size_t functions = 0;
    std::vector<Command> commands;
};

/// A table name, and where it is said.
struct TableName {
    Place place;
    std::string table;
};

/// The catalogue as it is written, nothing looked up yet.
struct Catalogue {
    Place totalPlace;
    size_t functions = 0;
    std::vector<TableName> reserved;
    std::map<std::string, Tail> tails;
    std::vector<Group> groups;
};

/// Reads one file of the catalogue and adds it.
/// @param file its name in messages
/// @throws Fault for what is not in the notation
void readCatalogue(const std::string& file, std::istream& text, Catalogue& catalogue);

}  // namespace Generator

#endif
