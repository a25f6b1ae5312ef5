#ifndef ZANT_TESTS_VOCABULARY_ARGUMENTS_H
#define ZANT_TESTS_VOCABULARY_ARGUMENTS_H

#include <memory>
#include <string>
#include <tuple>
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

/// An argument of every type. References are told apart by what they refer to, so their content does not matter.
using Values =
    std::tuple<double, int, bool, Zant::Unsigned64, const char*, const wchar_t*, const Zant::Vector&, const Zant::Axes&,
               const Zant::CoordSys&, const Zant::Symbol&, Zant::Symbol&, const Zant::BitmapSymbol&,
               const Zant::MeshSymbol&, const Zant::VertexMapSymbol&, const Zant::VarLenDouble&,
               const Zant::VarLenVector&, const Zant::VarLenCoordSys&, const Zant::VarLenSymbol&>;

/// An argument of every kind for each place of a parameter list, no two alike.
class Arguments {
public:
    /// @param log where declared symbols note their registration
    explicit Arguments(std::vector<Event>& log);
    ~Arguments();

    template <typename Type>
    Type at(size_t place) const {
        return std::get<Type>(values(place));
    }

    /// The call that an argument must become. Letters are those of the catalogue, W for a wide string.
    Event event(const std::string& letter, size_t place) const;
    /// The registration of the declared symbol.
    Event registration(size_t place) const;

private:
    const Values& values(size_t place) const;

    struct Sample;
    std::unique_ptr<Recorder> owner;  // of the symbols: none of their own commands reaches the buffer under test
    std::vector<std::unique_ptr<Sample>> samples;
};

}  // namespace Vocabulary

#endif
