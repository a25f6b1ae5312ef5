#include "tests/vocabulary/arguments.h"

#include <cstring>
#include <ostream>

namespace Vocabulary {
namespace {

constexpr size_t places = 16;
constexpr double quarterTurn = 1.5707963267948966;

class DeclaredSymbol : public Zant::Symbol {
public:
    DeclaredSymbol(Zant::CommandBuffer& commands, const char* symbolName, std::vector<Event>& log)
        : Symbol(commands, symbolName), log_(log) {}
    void updateSymbol() override { log_.push_back({"registerSymbol", 0, {}, static_cast<Symbol*>(this)}); }

private:
    std::vector<Event>& log_;
};

std::string numbered(const char* prefix, size_t place) {
    return prefix + std::to_string(place + 1);
}

double valueAt(size_t place) {
    return static_cast<double>(place + 1);
}

}  // namespace

bool Event::operator==(const Event& other) const {
    return operation == other.operation && number == other.number && word == other.word && object == other.object;
}

std::ostream& operator<<(std::ostream& out, const Event& event) {
    return out << event.operation << "(" << event.number << " " << event.word << " " << event.object << ")";
}

void Recorder::addEnum(int number, const char* word) {
    events.push_back({"addEnum", static_cast<double>(number), word, nullptr});
}

/// The arguments of one place, v being the place counted from 1.
struct Arguments::Sample {
    Sample(Recorder& buffer, size_t place, std::vector<Event>& log)
        : text(numbered("\xC3\xA9", place)),
          wideText(L"\u00E9" + std::to_wstring(place + 1)),
          vector(valueAt(place), 0.25, -valueAt(place)),
          axes(Zant::AxesHpb(quarterTurn, 0, 0, valueAt(place) + 1, valueAt(place) + 1, valueAt(place) + 1)),
          coordSys(Zant::Vector(valueAt(place), 0, -1), Zant::AxesHpb(quarterTurn, 0, 0)),
          symbol(buffer, numbered("S", place).c_str()),
          declared(buffer, numbered("N", place).c_str(), log),
          bitmap(buffer, numbered("B", place).c_str()),
          mesh(buffer, numbered("M", place).c_str()),
          vertexMap(buffer, numbered("X", place).c_str()),
          numberItems{valueAt(place), 0.5},
          vectorItems{vector, Zant::Vector(0, 1, 2)},
          coordSysItems{coordSys},
          symbolItems{&symbol, &mesh},
          numbers(numberItems),
          vectors(vectorItems),
          coordSystems(coordSysItems),
          symbols(symbolItems) {
        if (place % 2 == 1) symbol.registered = 9000 + place;
    }

    std::string text;
    std::wstring wideText;
    Zant::Vector vector;
    Zant::Axes axes;
    Zant::CoordSys coordSys;
    Zant::Symbol symbol;
    DeclaredSymbol declared;
    Zant::BitmapSymbol bitmap;
    Zant::MeshSymbol mesh;
    Zant::VertexMapSymbol vertexMap;
    std::vector<Zant::Double> numberItems;
    std::vector<Zant::Vector> vectorItems;
    std::vector<Zant::CoordSys> coordSysItems;
    std::vector<const Zant::Symbol*> symbolItems;
    Zant::VarLenDouble numbers;
    Zant::VarLenVector vectors;
    Zant::VarLenCoordSys coordSystems;
    Zant::VarLenSymbol symbols;
};

Arguments::Arguments(std::vector<Event>& log) : owner(std::make_unique<Recorder>()) {
    for (size_t place = 0; place < places; ++place)
        samples.push_back(std::make_unique<Sample>(*owner, place, log));
}

Arguments::~Arguments() = default;

template <>
double Arguments::at(size_t place) const {
    return valueAt(place) + 0.5;
}
template <>
int Arguments::at(size_t place) const {
    return 2 + static_cast<int>(place);
}
template <>
bool Arguments::at(size_t place) const {
    return place % 2 == 0;
}
template <>
unsigned long Arguments::at(size_t place) const {
    return 1000 + place;
}
template <>
const char* Arguments::at(size_t place) const {
    return samples[place]->text.c_str();
}
template <>
const wchar_t* Arguments::at(size_t place) const {
    return samples[place]->wideText.c_str();
}
template <>
const Zant::Vector& Arguments::at(size_t place) const {
    return samples[place]->vector;
}
template <>
const Zant::Axes& Arguments::at(size_t place) const {
    return samples[place]->axes;
}
template <>
const Zant::CoordSys& Arguments::at(size_t place) const {
    return samples[place]->coordSys;
}
template <>
const Zant::Symbol& Arguments::at(size_t place) const {
    return samples[place]->symbol;
}
template <>
Zant::Symbol& Arguments::at(size_t place) const {
    return samples[place]->declared;
}
template <>
const Zant::BitmapSymbol& Arguments::at(size_t place) const {
    return samples[place]->bitmap;
}
template <>
const Zant::MeshSymbol& Arguments::at(size_t place) const {
    return samples[place]->mesh;
}
template <>
const Zant::VertexMapSymbol& Arguments::at(size_t place) const {
    return samples[place]->vertexMap;
}
template <>
const Zant::VarLenDouble& Arguments::at(size_t place) const {
    return samples[place]->numbers;
}
template <>
const Zant::VarLenVector& Arguments::at(size_t place) const {
    return samples[place]->vectors;
}
template <>
const Zant::VarLenCoordSys& Arguments::at(size_t place) const {
    return samples[place]->coordSystems;
}
template <>
const Zant::VarLenSymbol& Arguments::at(size_t place) const {
    return samples[place]->symbols;
}

Event Arguments::event(const std::string& letter, size_t place) const {
    const Sample& sample = *samples[place];
    if (letter == "d") return {"addDouble", at<double>(place), {}, nullptr};
    if (letter == "i") return {"addDouble", 2.0 + static_cast<double>(place), {}, nullptr};
    if (letter == "b") return {"addDouble", place % 2 == 0 ? 1.0 : 0.0, {}, nullptr};
    if (letter == "u") return {"addDouble", 1000.0 + static_cast<double>(place), {}, nullptr};
    if (letter == "s") return {"addString", 0, {}, sample.text.c_str()};
    if (letter == "W") return {"addString wide", 0, {}, sample.wideText.c_str()};
    if (letter == "V") return {"addVector", 0, {}, &sample.vector};
    if (letter == "A") return {"addAxes", 0, {}, &sample.axes};
    if (letter == "C") return {"addCoordSys", 0, {}, &sample.coordSys};
    if (letter == "S") return {"addSymbol", 0, {}, &sample.symbol};
    if (letter == "N") return {"addSymbol", 0, {}, static_cast<const Zant::Symbol*>(&sample.declared)};
    if (letter == "B") return {"addSymbol", 0, {}, static_cast<const Zant::Symbol*>(&sample.bitmap)};
    if (letter == "M") return {"addSymbol", 0, {}, static_cast<const Zant::Symbol*>(&sample.mesh)};
    if (letter == "X") return {"addSymbol", 0, {}, static_cast<const Zant::Symbol*>(&sample.vertexMap)};
    if (letter == "Ld") return {"addVarLenDouble", 0, {}, &sample.numbers};
    if (letter == "LV") return {"addVarLenVector", 0, {}, &sample.vectors};
    if (letter == "LC") return {"addVarLenCoordSys", 0, {}, &sample.coordSystems};
    if (letter == "LS") return {"addVarLenSymbol", 0, {}, &sample.symbols};
    return {"no such letter: " + letter};
}

Event Arguments::registration(size_t place) const {
    return {"registerSymbol", 0, {}, static_cast<const Zant::Symbol*>(&samples[place]->declared)};
}

void Arguments::setRegistered(size_t place, uint64_t word) {
    samples[place]->symbol.registered = word;
}

bool Arguments::isRegistered(size_t place) const {
    return samples[place]->symbol.registered != 0;
}

std::string Arguments::text(const std::string& letter, size_t place) const {
    const std::string v = std::to_string(place + 1);
    const std::string vector = "(" + v + ",0.25,-" + v + ")";
    if (letter == "d") return v + ".5";
    if (letter == "i") return std::to_string(2 + place);
    if (letter == "b") return place % 2 == 0 ? "1" : "0";
    if (letter == "u") return std::to_string(1000 + place);
    if (letter == "s" || letter == "W") return "\"\xC3\xA9" + v + "\"";
    if (letter == "V") return vector;
    if (letter == "A") return "<90,0,0>*(" + std::to_string(place + 2) + ")";
    if (letter == "C" || letter == "LC") return "(" + v + ",0,-1)@<90,0,0>";
    if (letter == "Ld") return "{" + v + ",0.5}";
    if (letter == "LV") return "{" + vector + ",(0,1,2)}";
    if (letter == "LS") return "{S" + v + ",M" + v + "}";
    return letter + v;
}

HandmadeBlock& Arguments::writeSymbol(HandmadeBlock& block, size_t place) const {
    if (!isRegistered(place)) return block.text(numbered("S", place));
    return block.word(0).word(samples[place]->symbol.registered);
}

HandmadeBlock& Arguments::writeList(HandmadeBlock& block, const std::string& letter, size_t place) const {
    block.list();
    if (letter == "Ld")
        block.number(valueAt(place)).number(0.5);
    else if (letter == "LV")
        write(block, "V", place).word(3).reals({0, 1, 2});
    else if (letter == "LC")
        write(block, "C", place);
    else
        write(writeSymbol(block, place), "M", place);
    return block.endList();
}

HandmadeBlock& Arguments::write(HandmadeBlock& block, const std::string& letter, size_t place) const {
    const double v = valueAt(place);
    if (letter == "d") return block.number(v + 0.5);
    if (letter == "i") return block.number(v + 1);
    if (letter == "b") return block.number(place % 2 == 0 ? 1 : 0);
    if (letter == "u") return block.number(v + 999);
    if (letter == "s" || letter == "W") return block.text(numbered("\xC3\xA9", place));
    if (letter == "V") return block.word(3).reals({v, 0.25, -v});
    if (letter == "A") return block.word(2).reals({quarterTurn, 0, 0, v + 1, v + 1, v + 1});
    if (letter == "S") return writeSymbol(block, place);
    if (letter[0] == 'L') return writeList(block, letter, place);
    if (letter != "C") return block.text(numbered(letter.c_str(), place));
    return block.reals({v, 0, -1}).word(2).reals({quarterTurn, 0, 0, 1, 1, 1});
}

}  // namespace Vocabulary
