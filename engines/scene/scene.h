#ifndef ZANT_ENGINES_SCENE_SCENE_H
#define ZANT_ENGINES_SCENE_SCENE_H

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "client/engine/instance.h"
#include "engines/scene/appendedfile.h"
#include "engines/scene/codes.h"
#include "engines/scene/events.h"
#include "engines/scene/leftthreads.h"
#include "engines/scene/objects.h"
#include "engines/scene/pictures.h"
#include "engines/scene/profile.h"
#include "engines/scene/textoutput.h"
#include "engines/scene/world.h"
#include "language/reader.h"
#include "language/symbols.h"
#include "language/writer.h"

namespace Zant::Engine {

struct Execution;
struct Reading;

/// The engine's side of one instance: its objects, its parser and its text output.
///
/// Any thread may call any operation: a lock guards the objects, for one command at a time. Events are raised outside
/// of it. A second thread that has to wait for the lock is misuse by the host, and is noted as such.
class Scene : private SymbolResolver {
public:
    /// What the instances of an engine share; it outlives them.
    struct Surroundings {
        explicit Surroundings(const Profile& ofEngine) : profile(ofEngine) {}

        const Profile& profile;
        Settings settings{};
        AppendedFile transcript{profile.errorPrefix};
        AppendedFile watch{profile.errorPrefix};
        AppendedFile summary{profile.errorPrefix};
        LeftThreads leftThreads{};
    };

    Scene(uint64_t number, Instance* instance, Surroundings& surroundings);

    /// The library whose instance this is; not to be read, it may be gone.
    const Library* library() const { return library_; }
    TextOutput& text() { return text_; }
    Pictures& pictures() { return *pictures_; }

    /// The instance ends: what it has on the host's side is closed, and no event comes any more.
    void end();
    /// The engine ends before the instance: nothing is closed, the picture in the making apart.
    void abandon();

    /// Carries out every command of a text or block, those after a failed one included, and says each failure in
    /// one line of text.
    /// @return the code of the first failure, or 0.
    int parse(const void* data, const char* source, int mode);

    /// Remembers ray memory of the instance, for as long as its context is there.
    void addRays(const std::shared_ptr<RayContext>& rays) { world_.rays.add(rays); }

    /// Writes to the summary how often which form was taken without effect, the most frequent one first.
    void summarise();

    /// The handle of an object that can be used as the type asks for; null when there is none.
    /// @param registered null, or set to the word under which blocks name the object, 0 when there is none.
    void* findObject(const char* name, uint64_t* registered, int type);
    /// Delivers the value of an object, whatever code was asked for, and leaves there the code of what it delivered, 0
    /// for nothing. Texts belong to the object and are valid until its value changes.
    /// @return 1 when a value was delivered.
    int getValue(const void* handle, ZantParserExchangeBuffer& record);
    /// @return 1 when the object took the value; 0 when there is no such object or it is of another kind.
    int setValue(const void* handle, const ZantParserExchangeBuffer& record);

    /// Describes the pixel memory of a bitmap; without one, no memory.
    void linkBitmap(uint32_t object, ZantBitmapCore& link);
    /// @return whether the bitmap uses the memory now.
    bool shareMemory(uint32_t object, void* memory, int width, int height);

private:
    using Lock = std::unique_lock<std::mutex>;

    const char* nameOf(uint64_t registered) override;
    Lock enter(const char* call);
    ObjectPointer objectOf(const void* handle) const;
    void* handleOf(const Object& object) const;

    int runText(TextReader& reader, const Reading& reading);
    int runBlock(const void* block);
    int run(const Command& command, Lock lock, const Reading& reading);
    int refuse(const std::vector<SymbolTable::Finding>& findings, const Command& command, const Reading& reading,
               Lock lock);
    void note(const Execution& execution, const Reading& reading);
    int runNested(const Execution& execution, const Reading& reading);
    int runFile(const Execution& execution, const Reading& reading);
    int runInput(const Execution& execution, const Reading& reading);
    Outcome execute(Execution& execution);
    Outcome record(Execution& execution);
    bool isToFail();
    int fail(const Diagnostic& diagnostic, const Reading& reading);
    int fail(const Outcome& outcome, const Command& command, const Reading& reading);

    const uint64_t number_;
    const Library* const library_;
    Surroundings& surroundings_;
    const Settings& settings_;
    const std::shared_ptr<Events> events_;
    TextOutput text_{*events_};
    const std::shared_ptr<Pictures> pictures_;
    std::mutex mutex_;
    Objects objects_;
    World world_;
    SymbolTable symbols_;  // only when it is asked for
    std::map<const Form*, size_t> withoutEffect_;
    TextWriter writer_;
    TextWriter transcriptWriter_;
    long commands_ = 0;
};

}  // namespace Zant::Engine

#endif
