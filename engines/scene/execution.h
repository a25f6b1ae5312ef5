#ifndef ZANT_ENGINES_SCENE_EXECUTION_H
#define ZANT_ENGINES_SCENE_EXECUTION_H

#include <cstring>
#include <functional>
#include <string>
#include <utility>

#include "engines/scene/codes.h"
#include "engines/scene/objects.h"
#include "engines/scene/pictures.h"
#include "engines/scene/profile.h"
#include "engines/scene/textoutput.h"
#include "engines/scene/world.h"
#include "language/command.h"
#include "language/writer.h"

namespace Zant::Engine {

/// What a command leads to.
enum class Nested { None, File, Text, Input };
/// How much of what is being read ends with a command: nothing, the text or file, or what included it as well.
enum class Ending { Nothing, Text, All };

/// Work that raises events, done once the instance's lock is free. Its failure is the command's.
using Afterwards = std::function<Outcome(TextOutput&)>;

/// One command being carried out: what it finds, and what it leaves.
///
/// Places are those of the command's form, from 0 after the command word. Bitmaps, vertex maps and meshes that the
/// form asks for have been found to exist before.
struct Execution {
    const Command& command;
    Objects& objects;
    World& world;
    const Profile& profile;
    const Settings& settings;
    TextWriter& writer;
    Pictures& pictures;  ///< under the lock only to be asked

    Lines lines{};                 ///< what the command says
    bool hasEffect = true;         ///< whether anything came of it, a line of text included
    bool isPictured = true;        ///< whether pictures show what it asks for
    Nested nested = Nested::None;  ///< commands to be read next, which are recorded instead of this one
    std::string nestedText{};      ///< their file's name, or the commands themselves
    std::string nestedSource{};    ///< of a text or of lines of input, its name in error lines
    Ending ending = Ending::Nothing;
    Afterwards afterwards{};

    size_t places() const { return command.values().size(); }
    bool has(size_t place) const { return place < places(); }
    bool isKeyword(size_t place, const char* word) const {
        return has(place) && command.values()[place].kind == ValueKind::Keyword &&
               std::strcmp(command.keywordText(place), word) == 0;
    }
    double number(size_t place) const { return command.number(command.values()[place]); }
    double number(size_t place, double otherwise) const { return has(place) ? number(place) : otherwise; }
    const char* text(size_t place) const { return command.text(command.values()[place]); }
    const Vector& vector(size_t place) const { return command.vector(command.values()[place]); }
    const Axes& axes(size_t place) const { return command.axes(command.values()[place]); }
    const CoordSys& coordSys(size_t place) const { return command.coordSys(command.values()[place]); }
    VarLenDouble numbers(size_t place) const { return command.numbers(command.values()[place]); }
    VarLenVector vectors(size_t place) const { return command.vectors(command.values()[place]); }

    /// The object that a symbol names, references followed; null when there is none.
    ObjectPointer object(size_t place) const { return objects.resolve(objects.find(text(place))); }
    Pixels& pixels(size_t place) const { return *object(place)->as<Pixels>(); }
    VertexMap& vertexMap(size_t place) const { return *object(place)->as<VertexMap>(); }
    Mesh& mesh(size_t place) const { return *object(place)->as<Mesh>(); }

    /// Declares the object that the first place names.
    template <class Kind, class... Arguments>
    void declare(Arguments&&... arguments) {
        objects.declare<Kind>(text(0), command.form->command, std::forward<Arguments>(arguments)...);
    }
};

/// Carries out one command word.
using Handler = Outcome (*)(Execution&);

/// A word with its handler; a table of them ends with a null word.
struct HandlerRow {
    const char* word;
    Handler handler;
};
extern const HandlerRow valueHandlers[];
extern const HandlerRow bitmapHandlers[];
extern const HandlerRow geometryHandlers[];
extern const HandlerRow shapeHandlers[];
extern const HandlerRow lookHandlers[];
extern const HandlerRow rayHandlers[];
extern const HandlerRow viewHandlers[];
extern const HandlerRow controlHandlers[];
extern const HandlerRow renderHandlers[];

/// `bitmapOp B show`.
Outcome showBitmap(Execution& execution);

/// Declares every object that the form declares. As a look, it has the first colour that the command names, or that of
/// the first look that it names.
/// @return the content of the first, null when there is none
Opaque* declareOpaque(Execution& execution);

/// Checks that the objects which the command acts on exist, then carries it out: by its handler, or, for a word
/// without one, by declaring what it declares.
Outcome carryOut(Execution& execution);

}  // namespace Zant::Engine

#endif
