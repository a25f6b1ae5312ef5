#ifndef ZANT_TESTS_VOCABULARY_ARGUMENTS_H
#define ZANT_TESTS_VOCABULARY_ARGUMENTS_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "client/commands/commandbuffer.h"
#include "client/symbols/bitmapsymbol.h"
#include "client/symbols/mesh.h"
#include "client/symbols/symbol.h"
#include "client/symbols/vertexmap.h"

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

/// The bytes of a binary block, put together by hand. Padding is not compared.
class Block {
public:
    void word(uint64_t value);
    void number(double value);
    void rawNumbers(const std::vector<double>& values);
    void numbers(uint64_t count, const std::vector<double>& values);
    void text(const std::string& text);
    /// Begins a list; endList() fills its length in.
    void beginList();
    void endList();
    /// Ends the block and fills its length in.
    void end();

    /// @return the first byte that differs, or -1
    long difference(const std::string& other) const;

private:
    void put(const void* data, size_t size);
    void setWord(size_t offset, uint64_t value);

    std::vector<unsigned char> bytes = std::vector<unsigned char>(8);
    std::vector<bool> known = std::vector<bool>(8, true);
    size_t list = 0;  // offset of the items of the list that is open
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
    void write(Block& block, const std::string& letter, size_t place) const;
    /// The registration of the declared symbol.
    Event registration(size_t place) const;

    /// Gives the plain symbol its registered word; the symbols at every other place have one from the start.
    void setRegistered(size_t place, uint64_t word);
    bool isRegistered(size_t place) const;

private:
    void writeSymbol(Block& block, size_t place) const;
    void writeList(Block& block, const std::string& letter, size_t place) const;

    struct Sample;
    std::unique_ptr<Recorder> owner;  // of the symbols: none of their own commands reaches the buffer under test
    std::vector<std::unique_ptr<Sample>> samples;
};

}  // namespace Vocabulary

#endif
