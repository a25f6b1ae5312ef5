#ifndef ZANT_TESTS_VOCABULARY_ARGUMENTS_H
#define ZANT_TESTS_VOCABULARY_ARGUMENTS_H

#include <memory>
#include <string>
#include <vector>

#include "client/commands/commandbuffer.h"
#include "client/symbols/bitmapsymbol.h"
#include "client/symbols/mesh.h"
#include "client/symbols/symbol.h"
#include "client/symbols/vertexmap.h"
#include "tests/handmadeblock.h"

namespace Vocabulary {

/// One call on a command buffer, or the registration of a symbol ("registerSymbol").
struct Event {
    std::string operation;
    double number = 0;             // a number, or the number of a keyword
    std::string word = {};         // a keyword
    const void* object = nullptr;  // a text, or the address of any other argument

    bool operator==(const Event& other) const;
};
std::ostream& operator<<(std::ostream& out, const Event& event);

/// A command buffer that writes down what is called.
class Recorder : public Zant::CommandBuffer {
public:
    Recorder() : CommandBuffer(nullptr) {}
    std::vector<Event> events;

    void parse() override { events.push_back({"parse"}); }
    void addEnum(int number, const char* word) override;
    void addDouble(double value) override { events.push_back({"addDouble", value, {}, nullptr}); }
    void addString(const char* text) override { add("addString", text); }
    void addString(const wchar_t* text) override { add("addString wide", text); }
    void addVector(const Zant::Vector& vector) override { add("addVector", &vector); }
    void addAxes(const Zant::Axes& axes) override { add("addAxes", &axes); }
    void addCoordSys(const Zant::CoordSys& coordSys) override { add("addCoordSys", &coordSys); }
    void addSymbol(const Zant::Symbol& symbol) override { add("addSymbol", &symbol); }
    void addVarLenDouble(const Zant::VarLenDouble& list) override { add("addVarLenDouble", &list); }
    void addVarLenVector(const Zant::VarLenVector& list) override { add("addVarLenVector", &list); }
    void addVarLenAxes(const Zant::VarLenAxes& list) override { add("addVarLenAxes", &list); }
    void addVarLenCoordSys(const Zant::VarLenCoordSys& list) override { add("addVarLenCoordSys", &list); }
    void addVarLenSymbol(const Zant::VarLenSymbol& list) override { add("addVarLenSymbol", &list); }

private:
    void add(const char* operation, const void* object) { events.push_back({operation, 0, {}, object}); }
};

/// An argument of every kind for each place of a parameter list, no two alike: the value at a place follows from the
/// place.
class Arguments {
public:
    /// @param log where declared symbols note their registration
    explicit Arguments(std::vector<Event>& log);
    ~Arguments();

    template <typename Type>
    Type at(size_t place) const;

    /// What an argument must become: the call, its text, and its words in a block. Letters are those of the catalogue,
    /// W for a wide string.
    Event event(const std::string& letter, size_t place) const;
    std::string text(const std::string& letter, size_t place) const;
    HandmadeBlock& write(HandmadeBlock& block, const std::string& letter, size_t place) const;
    /// The registration of the declared symbol.
    Event registration(size_t place) const;

    /// Gives the plain symbol its registered word; the symbols at every other place have one from the start.
    void setRegistered(size_t place, uint64_t word);
    bool isRegistered(size_t place) const;

private:
    HandmadeBlock& writeSymbol(HandmadeBlock& block, size_t place) const;
    HandmadeBlock& writeList(HandmadeBlock& block, const std::string& letter, size_t place) const;

    struct Sample;
    std::unique_ptr<Recorder> owner;  // of the symbols: none of their own commands reaches the buffer under test
    std::vector<std::unique_ptr<Sample>> samples;
};

}  // namespace Vocabulary

#endif
