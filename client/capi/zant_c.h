/* The C interface of the client library: sixteen functions that load the engine, create and release instances, hand
 * them command text, read values, and pass events.
 *
 * Every pointer to an instance is opaque. Instances are not checked: pass live ones of a loaded engine. Truth values
 * are 0 or 1.
 *
 * Order of calls: optionally ZantLibraryLoad(); then instances; then any number of calls on them; then
 * ZantLibraryReleaseInstance() for each of them; optionally ZantLibraryUnload(). Without ZantLibraryLoad() the first
 * instance loads the engine from "./" and the release of the last one unloads it.
 *
 * None of these functions says why an engine does not load or refuses an instance: `zant probe DIRECTORY` does, step by
 * step, and in C++ Library::getLoadError().
 *
 * Threads: the library functions (ZantGet..., ZantLibrary...) are for one thread at a time; calls on different
 * instances may overlap as far as the engine allows.
 */
#ifndef ZANT_C_H
#define ZANT_C_H

#include "client/records/zant_records.h"
#include "own/compiler.h"

#if !defined(ZANT_STATIC) && (!defined(_MSC_VER) || defined(zant_EXPORTS))
#define ZANT_API ZANT_EXPORTED
#else
#define ZANT_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- The engine ------------------------------------------------------------------------------------------------ */

/* An information text of the engine, which owns it; null when no engine is loaded. Never loads the engine. */
ZANT_API const char* ZantGetInfoString(int id);

/* An information number of the engine; 0 when no engine is loaded. Never loads the engine. */
ZANT_API int ZantGetInfoInt(int id);

/* The version of this library: 3000. */
ZANT_API int ZantGetHostVersion(void);

/* The API version of the engine; 0 when no engine is loaded. */
ZANT_API int ZantGetLibApiVersion(void);

/* Loads the engine from a directory and keeps it loaded until ZantLibraryUnload(). The directory must end with its
 * separator; null keeps the one that is set, "./" at first. A loaded engine stays, whatever the directory.
 * Returns 1 when an engine is loaded, else 0. */
ZANT_API int ZantLibraryLoad(const char* directory);

/* Releases every instance, newest first, and unloads the engine. Pointers to instances are dangling afterwards. */
ZANT_API void ZantLibraryUnload(void);

/* ---- Instances ------------------------------------------------------------------------------------------------- */

/* Creates an instance whose events the engine serves itself. Loads the engine when none is loaded.
 * Returns null when the engine cannot be loaded or refuses the instance. */
ZANT_API ZantInstance* ZantLibraryCreateInstance(void);

/* The same with a function of the host that serves the events, perhaps on threads of the engine. It must not be null.
 * The engine may read `user_data` from the instance; this library does not touch it. */
ZANT_API ZantInstance* ZantLibraryCreateInstanceWithEventHandler(ZantEventFunction function, void* user_data);

/* Releases an instance; null does nothing. */
ZANT_API void ZantLibraryReleaseInstance(ZantInstance* instance);

/* Hands command text to the parser of an instance. `source_name` is for the engine's messages and may be null.
 * Returns the parser's error code, 0 for success. */
ZANT_API int ZantInstanceParse(ZantInstance* instance, const char* text, const char* source_name);

/* Gives an event that the host does not serve back to the engine, which serves it itself and leaves its answer in the
 * record. The record's `instance` must be set. Returns the engine's answer. */
ZANT_API int ZantInstanceSendBackEvent(ZantEventData* event);

/* ---- Objects and values ---------------------------------------------------------------------------------------- */

/* Looks up an object by its name; `handle_type` is a _ZantHandleType. Returns the engine's handle, or null. */
ZANT_API void* ZantInstanceGetObjectByName(ZantInstance* instance, const char* name, int handle_type);

/* Reads the value of an object into `value`, whose `type` says what is expected. Returns the engine's answer. */
ZANT_API int ZantInstanceGetSymbolValue(ZantInstance* instance, void* handle, ZantParserExchangeBuffer* value);

/* Reads a text value. The text belongs to the engine: copy it before the next call that may change the value.
 * Returns null when there is none. */
ZANT_API const char* ZantInstanceGetStringSymbolValue(ZantInstance* instance, void* handle);

/* ---- Prototypers ----------------------------------------------------------------------------------------------- */

/* Creates a prototyper that sends commands to the instance in the binary encoding; release it before the instance.
 * Returns null for a null instance. */
ZANT_API ZantDirectPrototyper* ZantCreateDirectProto(ZantInstance* instance);

/* Releases a prototyper; null does nothing. */
ZANT_API void ZantReleaseProto(ZantDirectPrototyper* prototyper);

#ifdef __cplusplus
}
#endif

#endif
