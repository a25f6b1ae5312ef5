#include "tests/vocabulary/arguments.h"

#include <ostream>

namespace Vocabulary {
namespace {

constexpr size_t places = 16;

class DeclaredSymbol : public Zant::Symbol {
public:
    DeclaredSymbol(Zant::CommandBuffer& commands, std::vector<Event>& log) : Symbol(commands, "declared"), log_(log) {}
    void updateSymbol() override { log_.push_back({"registerSymbol", 0, {}, static_cast<Symbol*>(this)}); }

private:
    std::vector<Event>& log_;
};

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

/// What the arguments of one place refer to.
struct Arguments::Sample {
    Sample(Zant::CommandBuffer& buffer, size_t place, std::vector<Event>& log)
        : symbol(buffer, "symbol"),
          declared(buffer, log),
          bitmap(buffer, "bitmap"),
          mesh(buffer, "mesh"),
          vertexMap(buffer, "map"),
          values(static_cast<double>(place) + 1.5, 2 + static_cast<int>(place), place % 2 == 0, 1000 + place, text,
                 wideText, vector, axes, coordSys, symbol, declared, bitmap, mesh, vertexMap, numbers, vectors,
                 coordSystems, symbols) {}

    const char text[1] = "";
    const wchar_t wideText[1] = L"";
    const Zant::Vector vector;
    const Zant::Axes axes;
    const Zant::CoordSys coordSys;
    const Zant::Symbol symbol;
    DeclaredSymbol declared;
    const Zant::BitmapSymbol bitmap;
    const Zant::MeshSymbol mesh;
    const Zant::VertexMapSymbol vertexMap;
    const Zant::VarLenDouble numbers;
    const Zant::VarLenVector vectors;
    const Zant::VarLenCoordSys coordSystems;
    const Zant::VarLenSymbol symbols;
    const Values values;
};

Arguments::Arguments(std::vector<Event>& log) : owner(std::make_unique<Recorder>()) {
    for (size_t place = 0; place < places; ++place)
        samples.push_back(std::make_unique<Sample>(*owner, place, log));
}

Arguments::~Arguments() = default;

const Values& Arguments::values(size_t place) const {
    return samples[place]->values;
}

Event Arguments::event(const std::string& letter, size_t place) const {
    const Sample& sample = *samples[place];
    const auto symbol = [](const Zant::Symbol& object) { return Event{"addSymbol", 0, {}, &object}; };
    const auto number = [](double value) { return Event{"addDouble", value, {}, nullptr}; };
    if (letter == "d") return number(at<double>(place));
    if (letter == "i") return number(at<int>(place));
    if (letter == "b") return number(at<bool>(place) ? 1 : 0);
    if (letter == "u") return number(static_cast<double>(at<Zant::Unsigned64>(place)));
    if (letter == "s") return {"addString", 0, {}, sample.text};
    if (letter == "W") return {"addString wide", 0, {}, sample.wideText};
    if (letter == "V") return {"addVector", 0, {}, &sample.vector};
    if (letter == "A") return {"addAxes", 0, {}, &sample.axes};
    if (letter == "C") return {"addCoordSys", 0, {}, &sample.coordSys};
    if (letter == "S") return symbol(sample.symbol);
    if (letter == "N") return symbol(sample.declared);
    if (letter == "B") return symbol(sample.bitmap);
    if (letter == "M") return symbol(sample.mesh);
    if (letter == "X") return symbol(sample.vertexMap);
    if (letter == "Ld") return {"addVarLenDouble", 0, {}, &sample.numbers};
    if (letter == "LV") return {"addVarLenVector", 0, {}, &sample.vectors};
    if (letter == "LC") return {"addVarLenCoordSys", 0, {}, &sample.coordSystems};
    if (letter == "LS") return {"addVarLenSymbol", 0, {}, &sample.symbols};
    return {"no such letter: " + letter};
}

Event Arguments::registration(size_t place) const {
    return {"registerSymbol", 0, {}, static_cast<const Zant::Symbol*>(&samples[place]->declared)};
}

}  // namespace Vocabulary
