// Examples of forms: their values, and the C++ statements that send them.

#include "app/example.h"

#include <fmt/core.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <set>
#include <stdexcept>

#include "language/reader.h"

namespace Zant::App {
namespace {

/// Examples whose values should mean something, as command text.
struct WrittenExample {
    const char* function;
    const char* text;
};
const WrittenExample writtenExamples[] = {
    {"bitmap2_charRgba", "bitmap myBitmap,charRgba,(640,480);"},
    {"bitmap2_load", "bitmap myBitmap,load,\"wood.png\";"},
    {"bitmapData3", "bitmapData bitmap,(2,1),{(1,0.5,0.25),(0,0,1)};"},
    {"bitmapOp2_resize", "bitmapOp bitmap,resize,(320,240);"},
    {"bitmapOp3_plot", "bitmapOp bitmap,plot,(2,1),(1,0.5,0.25);"},
    {"bitmapOp4_circle", "bitmapOp bitmap,circle,(4,4),3,(1,0.5,0.25);"},
    {"bitmapOp4_line", "bitmapOp bitmap,line,(0,0),(7,3),(1,0.5,0.25);"},
    {"camera2_fishEye", "camera fishEye,(640,480),(0,1.5,-4)@<90,0,0>;"},
    {"camera2_sphere", "camera sphere,(640,480),(0,1.5,-4)@<90,0,0>;"},
    {"camera3_parallel", "camera parallel,(640,480),2,(0,1.5,-4)@<90,0,0>;"},
    {"camera3_perspective", "camera perspective,(640,480),45,(0,1.5,-4)@<90,0,0>;"},
    {"echo1", "echo \"hello\";"},
    {"fg2_gradients", "fg gradients,0.5,2;"},
    {"include1", "include \"room.zant\";"},
    {"meshAddPoly3", "meshAddPoly mesh,1,{0,1,2};"},
    {"parse2", "parse \"fg reset;\",\"my plug-in\";"},
    {"sett1_previewSize", "sett previewSize,(320,240);"},
    {"sett3_imageSampler_qmcAdaptive", "sett imageSampler,qmcAdaptive,2,16,0.05;"},
    {"surface2_diffuse", "surface mySurface,diffuse,object;"},
    {"vertex2d3", "vertex2d points,0,(0.5,0.25);"},
    {"vertex3d3", "vertex3d points,0,(1,0.5,0.25);"},
    {"vertexData3", "vertexData points,0,{1,0.5,0.25};"},
    {"view1_size", "view size,(640,480);"},
};

const char* writtenFor(const Form& form) {
    for (const WrittenExample& example : writtenExamples)
        if (std::strcmp(example.function, form.function) == 0) return example.text;
    return nullptr;
}

void readExample(const char* text, const Form& form, Command& example) {
    TextReader reader{std::string_view(text)};
    if (reader.next(example) != ReadResult::Command || example.form != &form)
        throw std::runtime_error(fmt::format("{} is not an example of '{}'", text, form.notation));
    example.source = {};  // it ends with the reader
}

/// Values by kind and place: the first number of a command is always the same, and so is the second.
class Values {
public:
    Values(const Form& form, Command& example) : command_(example), word_(commandWord(form)) {}

    void add(const FormToken& token) {
        command_.beginValue(token.kind, 0);
        if (token.kind == ArgumentKind::Keyword) return;
        const int items = token.kind == ArgumentKind::DoubleList ? 3 : isListPlace(token.kind) ? 2 : 1;
        for (int item = 0; item < items; ++item)
            addItem(token.kind);
    }

private:
    static std::string commandWord(const Form& form) {
        std::string name = keywordTables()[0].words[form.command - 1];
        name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
        return name;
    }

    void addItem(ArgumentKind kind) {
        switch (valueKindOf(kind)) {
            case ValueKind::Number:
                return command_.addNumber(number(kind));
            case ValueKind::String:
                return command_.addText(named("text"));
            case ValueKind::Vector:
                return command_.addVector(vector());
            case ValueKind::Axes:
                return command_.addAxes(quarterTurn_);
            case ValueKind::CoordSys:
                return command_.addCoordSys(CoordSys(vector(), quarterTurn_));
            default:
                return command_.addText(symbolName(kind));
        }
    }

    double number(ArgumentKind kind) {
        static constexpr double fractions[] = {0.5, 2, 0.25, 1.5, 4, 0.75, 3, 0.1};
        static constexpr double integers[] = {2, 4, 1, 8, 3, 16, 5, 32};
        if (kind == ArgumentKind::Bool) return 1;
        if (kind == ArgumentKind::DoubleList) return numbers_++;
        const bool fraction = kind == ArgumentKind::Double;
        return fraction ? fractions[numbers_++ % 8] : integers[numbers_++ % 8];
    }

    Vector vector() {
        static const Vector samples[] = {{1, 0.5, 0.25}, {0, 2, 0}, {0.5, 0.5, 1}, {3, 0, -1}};
        return samples[vectors_++ % 4];
    }

    std::string symbolName(ArgumentKind kind) {
        switch (kind) {
            case ArgumentKind::NewSymbol:
                return named("my" + word_);
            case ArgumentKind::BitmapSymbol:
                return named("bitmap");
            case ArgumentKind::MeshSymbol:
                return named("mesh");
            case ArgumentKind::VertexMapSymbol:
                return named("points");
            default:
                return named("object");
        }
    }

    std::string named(const std::string& name) {
        const auto uses = static_cast<size_t>(std::count(names_.begin(), names_.end(), name));
        names_.push_back(name);
        return uses == 0 ? name : name + std::to_string(uses + 1);
    }

    Command& command_;
    std::string word_;
    int numbers_ = 0;
    int vectors_ = 0;
    std::vector<std::string> names_;
    const AxesHpb quarterTurn_{1.5707963267948966, 0, 0};
};

/// Writes a command in C++, piece by piece.
class Statements {
public:
    explicit Statements(const Command& described) : command_(described) {}

    std::string write() {
        for (size_t place = 0; place < command_.values().size(); ++place) {
            const ArgumentKind kind = command_.form->tokens[place].kind;
            if (kind == ArgumentKind::Keyword) continue;
            const Value& value = command_.values()[place];
            arguments_.push_back(value.isList ? list(kind, value) : item(kind, value, 0));
        }
        return declarations_ + call();
    }

private:
    static constexpr size_t longestLine = 100;

    std::string item(ArgumentKind kind, const Value& value, size_t index) {
        switch (value.kind) {
            case ValueKind::Number:
                return number(kind, command_.number(value, index));
            case ValueKind::String:
                return quoted(command_.text(value, index));
            case ValueKind::Vector:
                return vector(command_.vector(value, index));
            case ValueKind::Axes:
                return axes(command_.axes(value, index));
            case ValueKind::CoordSys:
                return coordSys(command_.coordSys(value, index));
            default:
                return symbol(kind, command_.text(value, index));
        }
    }

    static std::string number(ArgumentKind kind, double value) {
        if (kind == ArgumentKind::Bool) return value != 0 ? "true" : "false";
        return fmt::format("{}", value);
    }

    static std::string quoted(const std::string& text) {
        std::string result = "\"";
        for (const char character : text) {
            if (character == '"' || character == '\\') result += '\\';
            result += character;
        }
        return result + "\"";
    }

    static std::string vector(const Vector& value) {
        return fmt::format("Vector({})", fmt::join(value.values, value.values + value.count, ", "));
    }

    static std::string axes(const ZantAxesCore& value) {
        if (value.rows == 0) return "Axes()";
        AxesHpb angles;
        if (!Axes(value).isAxesHpb(angles)) throw std::runtime_error("examples show axes as angles");
        const double* all = angles.m;
        const bool scaled = all[3] != 1 || all[4] != 1 || all[5] != 1;
        return fmt::format("AxesHpb({})", fmt::join(all, all + (scaled ? 6 : 3), ", "));
    }

    static std::string coordSys(const CoordSys& value) {
        return fmt::format("CoordSys({}, {})", vector(value.getVector()), axes(value.getAxes()));
    }

    std::string symbol(ArgumentKind kind, const std::string& name) {
        if (!declared_.insert(name).second) return name;
        switch (kind) {
            case ArgumentKind::BitmapSymbol:
                declarations_ += fmt::format("BitmapSymbol {0}(*proto.buffer, 8, 8, PixelCharRgba, \"{0}\");\n", name);
                break;
            case ArgumentKind::MeshSymbol:
                declarations_ += fmt::format("MeshSymbol {0}(*proto.buffer, \"{0}\");\n{0}.registerSymbol();\n", name);
                break;
            case ArgumentKind::VertexMapSymbol:
                declarations_ +=
                    fmt::format("VertexMapSymbol {0}(*proto.buffer, \"{0}\");\n{0}.registerSymbol({1}, 16, 1);\n", name,
                                dimension());
                break;
            default:
                declarations_ += fmt::format("Symbol {0}(*proto.buffer, \"{0}\");\n", name);
        }
        return name;
    }

    // Rows of a vertex map are as long as the vectors that the command sends.
    int dimension() const {
        for (const Value& value : command_.values())
            if (value.kind == ValueKind::Vector) return command_.vector(value).count;
        return 3;
    }

    struct ListWords {
        const char* item;
        const char* name;
    };

    static ListWords wordsFor(ArgumentKind list) {
        switch (list) {
            case ArgumentKind::DoubleList:
                return {"Double", "numbers"};
            case ArgumentKind::VectorList:
                return {"Vector", "vectors"};
            case ArgumentKind::CoordSysList:
                return {"CoordSys", "systems"};
            default:
                return {"Symbol* const", "objects"};
        }
    }

    std::string list(ArgumentKind kind, const Value& value) {
        std::vector<std::string> items;
        for (size_t index = 0; index < value.count; ++index)
            items.push_back((kind == ArgumentKind::SymbolList ? "&" : "") + item(kind, value, index));
        const ListWords words = wordsFor(kind);
        std::string name = words.name;
        for (int number = 2; !declared_.insert(name).second; ++number)
            name = words.name + std::to_string(number);
        append(fmt::format("const {} {}[] = {{", words.item, name), items, "};\n", declarations_);
        return name;
    }

    std::string call() const {
        std::vector<std::string> all = {"proto.protos()"};
        all.insert(all.end(), arguments_.begin(), arguments_.end());
        std::string text;
        append(std::string(command_.form->function) + "(", all, ");\n", text);
        return text;
    }

    /// Appends the items with commas, on further lines where the first one is full.
    static void append(const std::string& before, const std::vector<std::string>& items, const char* after,
                       std::string& text) {
        text += before;
        size_t column = before.size();
        for (size_t index = 0; index < items.size(); ++index) {
            const bool first = index == 0;
            const bool fits = first || column + items[index].size() + 4 <= longestLine;
            text += first ? "" : fits ? ", " : ",\n    ";
            column = (fits ? column + 2 : 4) + items[index].size();
            text += items[index];
        }
        text += after;
    }

    const Command& command_;
    std::string declarations_;
    std::vector<std::string> arguments_;
    std::set<std::string> declared_;
};

}  // namespace

const Form& mostTelling(const std::vector<const Form*>& forms) {
    constexpr int atAGlance = 4;
    const auto worth = [](const Form* form) {
        if (writtenFor(*form)) return 1000;
        const int count = form->parameterCount;
        return count <= atAGlance ? count : -count;
    };
    return **std::max_element(forms.begin(), forms.end(),
                              [&](const Form* left, const Form* right) { return worth(left) < worth(right); });
}

void makeExample(const Form& form, Command& example) {
    example.clear();
    if (const char* text = writtenFor(form)) return readExample(text, form, example);
    example.form = &form;
    Values values(form, example);
    for (uint16_t place = 0; place < form.tokenCount; ++place)
        values.add(form.tokens[place]);
}

std::string statementsFor(const Command& command) {
    return Statements(command).write();
}

}  // namespace Zant::App
