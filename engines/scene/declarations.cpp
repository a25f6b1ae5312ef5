#include "engines/scene/declarations.h"

#include <cstring>

#include "language/lookup.h"
#include "language/writer.h"

namespace Zant::Engine {

using namespace Language;

namespace {

// Builds commands from the names of their typed functions and writes them; keywords come from the form.
class Sentences {
public:
    Sentences& begin(const char* word, const std::string& function) {
        command_.clear();
        for (const Form& form : formsOf(commandNumber(word))) {
            if (function == form.function) command_.form = &form;
        }
        return *this;
    }
    Sentences& symbol(const std::string& name) {
        next();
        command_.addText(name);
        return *this;
    }
    Sentences& number(double value) {
        next();
        command_.addNumber(value);
        return *this;
    }
    Sentences& numbers(const std::vector<double>& values) {
        next();
        for (const double value : values)
            command_.addNumber(value);
        return *this;
    }
    Sentences& text(const std::string& value) { return symbol(value); }
    Sentences& vector(const Vector& value) {
        next();
        command_.addVector(value);
        return *this;
    }
    Sentences& vectors(const std::vector<Vector>& values) {
        next();
        for (const Vector& value : values)
            command_.addVector(value);
        return *this;
    }
    Sentences& axes(const Axes& value) {
        next();
        command_.addAxes(value);
        return *this;
    }
    Sentences& coordSys(const CoordSys& value) {
        next();
        command_.addCoordSys(value);
        return *this;
    }
    void end() {
        skipKeywords();
        if (!text_.empty()) text_ += '\n';
        text_ += writer_.write(command_);
    }
    std::string take() { return std::move(text_); }

private:
    void skipKeywords() {
        const Form& form = *command_.form;
        while (command_.values().size() < form.tokenCount &&
               form.tokens[command_.values().size()].kind == ArgumentKind::Keyword) {
            command_.beginValue(ArgumentKind::Keyword, 0);
        }
    }
    void next() {
        skipKeywords();
        command_.beginValue(command_.form->tokens[command_.values().size()].kind, 0);
    }

    Command command_;
    TextWriter writer_;
    std::string text_;
};

const char* wordOf(const Object& object) {
    return commandWord(object.command);
}

std::string functionOf(const Object& object, const char* ending) {
    return std::string(wordOf(object)) + ending;
}

// One call for each kind of content.
class Teller {
public:
    Teller(const Object& object, Sentences& out) : object_(object), out_(out) {}

    void operator()(const Opaque&) const {}
    void operator()(double value) const { begin().number(value).end(); }
    void operator()(const std::string& value) const { begin().text(value).end(); }
    void operator()(const Vector& value) const { begin().vector(value).end(); }
    void operator()(const Axes& value) const { begin().axes(value).end(); }
    void operator()(const CoordSys& value) const { begin().coordSys(value).end(); }
    void operator()(const Reference& value) const { begin().symbol(value.target).end(); }

    void operator()(const Pixels& pixels) const {
        const Bitmap& bitmap = pixels.bitmap();
        const Vector size(bitmap.width, bitmap.height);
        const std::string function = std::string("bitmap2_") + formatWord(pixels.format());
        out_.begin("bitmap", function).symbol(object_.name).vector(size).end();
        if (!pixels.hasAccess()) return;
        std::vector<Vector> row(static_cast<size_t>(bitmap.width));
        for (int y = 0; y < bitmap.height; ++y) {
            for (int x = 0; x < bitmap.width; ++x)
                bitmap.getPixel(x, y, row[static_cast<size_t>(x)]);
            out_.begin("bitmapData", "bitmapData3").symbol(object_.name).vector(Vector(0, y)).vectors(row).end();
        }
    }

    void operator()(const VertexMap& map) const {
        const ZantVertexMapRecord& record = map.record();
        out_.begin("vertexMap", "vertexMap4_fixedSize").symbol(object_.name).number(record.dimension);
        out_.number(static_cast<double>(record.size)).number(record.samples).end();
        std::vector<double> row(map.rowLength());
        for (size_t index = 0; index < record.size; ++index) {
            for (size_t place = 0; place < row.size(); ++place)
                row[place] = map.get(index, place);
            out_.begin("vertexData", "vertexData3").symbol(object_.name);
            out_.number(static_cast<double>(index)).numbers(row).end();
        }
    }

    void operator()(const Mesh& mesh) const {
        out_.begin("mesh", "mesh1").symbol(object_.name).end();
        if (mesh.points) {
            out_.begin("meshOp", "meshOp2_points").symbol(object_.name).symbol(mesh.points->name).end();
        }
        for (const Polygon& polygon : mesh.polygons) {
            out_.begin("meshAddPoly", "meshAddPoly" + std::to_string(3 + polygon.more.size())).symbol(object_.name);
            out_.number(polygon.tag).numbers(polygon.points);
            for (const double value : polygon.more)
                out_.number(value);
            out_.end();
        }
    }

private:
    Sentences& begin() const { return out_.begin(wordOf(object_), functionOf(object_, "2")).symbol(object_.name); }

    const Object& object_;
    Sentences& out_;
};

std::string sizeText(const ZantBitmapCore& bitmap) {
    return std::to_string(bitmap.width) + " x " + std::to_string(bitmap.height);
}

std::string counted(uint64_t count, const char* what) {
    return std::to_string(count) + " " + what;
}

}  // namespace

std::string textOf(const Object& object) {
    if (const auto* opaque = object.as<Opaque>()) return opaque->declaration;
    Sentences sentences;
    std::visit(Teller(object, sentences), object.content);
    return sentences.take();
}

std::string summaryOf(const Object& object) {
    if (const auto* pixels = object.as<Pixels>()) {
        return std::string("bitmap ") + formatWord(pixels->format()) + " " + sizeText(pixels->bitmap());
    }
    if (const auto* map = object.as<VertexMap>()) {
        const ZantVertexMapRecord& record = map->record();
        return "vertexMap " + counted(record.size, "rows, dimension ") + std::to_string(record.dimension) + ", " +
               counted(static_cast<uint64_t>(record.samples), "samples");
    }
    if (const auto* mesh = object.as<Mesh>()) {
        return "mesh " + counted(mesh->polygons.size(), "polygons") +
               (mesh->points ? ", points " + mesh->points->name : "");
    }
    return object.isValue() || object.as<Reference>() ? textOf(object) : wordOf(object);
}

}  // namespace Zant::Engine
