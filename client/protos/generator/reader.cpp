// Reads the notation of the catalogue, line by line; catalogue/shared.txt explains it.

#include <algorithm>
#include <charconv>

#include "client/protos/generator/catalogue.h"

namespace Generator {
namespace {

constexpr size_t longestForm = 64;  // words

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '\'';
}

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

/// Splits a line into words and single punctuation characters.
Words split(const Place& place, const std::string& line) {
    Words words;
    for (size_t at = 0; at < line.size();) {
        if (isSpace(line[at])) {
            ++at;
            continue;
        }
        size_t end = at;
        while (end < line.size() && isWordCharacter(line[end]))
            ++end;
        if (end == at && std::string("[]()=:;").find(line[at]) == std::string::npos)
            throw Fault(place, "unexpected character");
        end = std::max(end, at + 1);
        words.push_back(line.substr(at, end - at));
        at = end;
    }
    return words;
}

bool isWord(const std::string& text) {
    return isWordCharacter(text[0]);
}

size_t readCount(const Place& place, const std::string& text) {
    size_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc() || end != text.data() + text.size() || count == 0 || count > 1000000)
        throw Fault(place, "'" + text + "' is not a count");
    return count;
}

/// Reads the words of one form line, from first to last.
class PatternReader {
public:
    PatternReader(const Place& place, Words::const_iterator first, Words::const_iterator last)
        : place_(place), at_(first), last_(last) {}

    Pattern read() {
        Pattern pattern{place_, {}, {}};
        if (last_ - at_ == 3 && at_[0] == "(" && at_[1] == "bare" && at_[2] == ")") {
            pattern.ends = {0};
            return pattern;
        }
        readOpening(pattern);
        readClosing();
        pattern.ends.push_back(pattern.words.size());
        return pattern;
    }

private:
    void readOpening(Pattern& pattern) {
        for (; at_ != last_ && *at_ != "]"; ++at_) {
            if (*at_ == "[") {
                open(pattern);
            } else if (isWord(*at_)) {
                pattern.words.push_back(*at_);
            } else {
                throw Fault(place_, "'" + *at_ + "' has no place in a form");
            }
        }
        if (pattern.words.empty() || (!pattern.ends.empty() && pattern.ends.back() == pattern.words.size()))
            throw Fault(place_, "nothing stands where a form was expected");
        if (pattern.words.size() > longestForm) throw Fault(place_, "a form of more than 64 words");
    }

    void open(Pattern& pattern) {
        if (!pattern.ends.empty() && pattern.ends.back() == pattern.words.size())
            throw Fault(place_, "nothing stands between two '['");
        pattern.ends.push_back(pattern.words.size());
        ++open_;
    }

    void readClosing() {
        for (; at_ != last_ && *at_ == "]"; ++at_)
            --open_;
        if (at_ != last_) throw Fault(place_, "'" + *at_ + "' after ']': a bracket ends the form");
        if (open_ != 0) throw Fault(place_, "'[' and ']' do not match");
    }

    const Place& place_;
    Words::const_iterator at_;
    Words::const_iterator last_;
    int open_ = 0;
};

Pattern readPattern(const Place& place, Words::const_iterator first, Words::const_iterator last) {
    return PatternReader(place, first, last).read();
}

std::string join(Words::const_iterator first, Words::const_iterator last) {
    std::string text;
    for (; first != last; ++first)
        text += (text.empty() ? "" : " ") + *first;
    return text;
}

class CatalogueReader {
public:
    CatalogueReader(const std::string& file, Catalogue& catalogue) : place_{file, 0}, catalogue_(catalogue) {}

    void read(std::istream& text) {
        for (std::string line; std::getline(text, line);) {
            ++place_.line;
            line.erase(std::min(line.find('#'), line.size()));
            const Words words = split(place_, line);
            if (words.empty()) continue;
            if (isSpace(line[0])) {
                readDetail(words);
            } else {
                readStatement(words);
            }
        }
    }

private:
    void readStatement(const Words& words) {
        const std::string& kind = words[0];
        if (kind == "tail") return readTail(words);
        requireLength(words, kind == "total" || kind == "reserved" ? 2 : 3);
        if (kind == "total") return readTotal(words);
        if (kind == "reserved") return catalogue_.reserved.push_back({place_, words[1]});
        if (kind == "group") return readGroup(words);
        if (kind == "command") return readCommand(words);
        throw Fault(place_, "'" + kind + "' is not a statement");
    }

    void requireLength(const Words& words, size_t length) const {
        if (words.size() != length || !std::all_of(words.begin(), words.end(), isWord))
            throw Fault(place_, "expected " + std::to_string(length) + " words");
    }

    void readTotal(const Words& words) {
        if (catalogue_.functions != 0) throw Fault(place_, "the total stands twice");
        catalogue_.totalPlace = place_;
        catalogue_.functions = readCount(place_, words[1]);
    }

    void readGroup(const Words& words) {
        for (const Group& group : catalogue_.groups) {
            if (group.name == words[1] || group.place.file == place_.file)
                throw Fault(place_, "a second group in this file, or of this name");
        }
        catalogue_.groups.push_back({place_, words[1], readCount(place_, words[2]), {}});
    }

    void readCommand(const Words& words) {
        if (!inGroup()) throw Fault(place_, "a command outside a group");
        for (const Group& group : catalogue_.groups) {
            for (const Command& command : group.commands) {
                if (command.word == words[1]) throw Fault(place_, "command " + words[1] + " stands twice");
            }
        }
        Command command{place_, words[1], readCount(place_, words[2]), {}, {}};
        catalogue_.groups.back().commands.push_back(std::move(command));
    }

    bool inGroup() const { return !catalogue_.groups.empty() && catalogue_.groups.back().place.file == place_.file; }

    void readDetail(const Words& words) {
        if (!inGroup() || catalogue_.groups.back().commands.empty()) throw Fault(place_, "a form outside a command");
        Command& command = catalogue_.groups.back().commands.back();
        if (words[0] == "after" && std::find(words.begin(), words.end(), ":") != words.end()) {
            command.paths.push_back(readPath(words));
        } else {
            command.patterns.push_back(readPattern(place_, words.begin(), words.end()));
        }
    }

    KeywordPath readPath(const Words& words) const {
        const auto colon = words.end() - 2;
        if (words.size() < 4 || *colon != ":" || !isWord(words.back()) || !std::all_of(words.begin(), colon, isWord))
            throw Fault(place_, "expected 'after PATH: TABLE'");
        return {place_, join(words.begin() + 1, colon), words.back()};
    }

    void readTail(const Words& words) {
        if (words.size() < 4 || !isWord(words[1]) || words[2] != "=") throw Fault(place_, "expected 'tail NAME = ...'");
        Tail tail{place_, {}, {}, {}};
        const bool refers = words.size() == 6 && words[4] == "of" && isWord(words[5]);
        if (refers && words[3] == "keywords") {
            tail.table = words[5];
        } else if (refers && words[3] == "forms") {
            tail.command = words[5];
        } else {
            readAlternatives(words, tail);
        }
        if (!catalogue_.tails.emplace(words[1], std::move(tail)).second)
            throw Fault(place_, "tail " + words[1] + " stands twice");
    }

    void readAlternatives(const Words& words, Tail& tail) const {
        for (auto first = words.begin() + 3;;) {
            const auto last = std::find(first, words.end(), ";");
            tail.patterns.push_back(readPattern(place_, first, last));
            if (last == words.end()) return;
            first = last + 1;
        }
    }

    Place place_;
    Catalogue& catalogue_;
};

}  // namespace

void readCatalogue(const std::string& file, std::istream& text, Catalogue& catalogue) {
    CatalogueReader(file, catalogue).read(text);
}

}  // namespace Generator
