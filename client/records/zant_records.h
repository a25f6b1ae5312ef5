/* The records of fixed layout that cross the boundary to the engine.
 *
 * Plain C99, usable from C and C++ alike. All records are little-endian with pointers of 8 bytes; each layout is
 * asserted once, right beside its definition. Angles are in radians.
 *
 * Threads: plain records; several threads may read one, or one thread at a time changes it.
 */
#ifndef ZANT_RECORDS_H
#define ZANT_RECORDS_H

#include <stddef.h>
#include <stdint.h>

#include "own/version.h"

/* Some names start with an underscore and a capital: they are the engine's own, and hosts that warn of such names are
 * spared. */
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wunknown-warning-option"
#pragma clang diagnostic ignored "-Wreserved-identifier"
#endif

#ifdef __cplusplus
namespace Zant {
class Instance;
class DirectPrototyper;
}  // namespace Zant
/* One engine instance, opaque to C. */
typedef Zant::Instance ZantInstance;
/* A prototyper in the binary encoding, opaque to C. */
typedef Zant::DirectPrototyper ZantDirectPrototyper;
#define ZANT_ASSERT_LAYOUT(name, condition) static_assert(condition, #name ": layout shared with the engine")
extern "C" {
#else
typedef struct ZantInstance ZantInstance;
typedef struct ZantDirectPrototyper ZantDirectPrototyper;
/* C99 has no static assertion: an array of negative size does the same. */
#define ZANT_ASSERT_LAYOUT(name, condition) typedef char ZantLayoutOf_##name[(condition) ? 1 : -1]
#endif

/* The engine's own handle of an instance. */
typedef struct ZantLibraryInstance ZantLibraryInstance;

/* ---- Values ---------------------------------------------------------------------------------------------------- */

/* A vector of up to four components; only the first `count` are meaningful. */
typedef struct ZantVectorCore {
    double values[4];
    int32_t count; /* 2: pixel position or size, 3: point, direction or colour, 4: colour with alpha */
} ZantVectorCore;
ZANT_ASSERT_LAYOUT(ZantVectorCore, sizeof(ZantVectorCore) == 40 && offsetof(ZantVectorCore, count) == 32);

/* An orientation in one of three forms, told apart by `rows`, the number of rows of `m` in use. */
typedef struct ZantAxesCore {
    double m[9];  /* three rows of three */
    int32_t rows; /* 0: identity; 2: (heading, pitch, bank), (scale x, y, z); 3: matrix; -1: a failed read */
} ZantAxesCore;
ZANT_ASSERT_LAYOUT(ZantAxesCore, sizeof(ZantAxesCore) == 80 && offsetof(ZantAxesCore, rows) == 72);

/* A position and an orientation. */
typedef struct ZantCoordSysCore {
    double position[3];
    ZantAxesCore axes;
} ZantCoordSysCore;
ZANT_ASSERT_LAYOUT(ZantCoordSysCore, sizeof(ZantCoordSysCore) == 104 && offsetof(ZantCoordSysCore, axes) == 24);

/* The kind of engine object that a name is looked up as. */
typedef enum _ZantHandleType {
    HandleVertexMap = 3,
    HandleBitmap = 5,
    HandleMesh = 6,
    HandleValue = 8, /* number, string, vector, axes */
    HandleObject = 9 /* any object that a command defines */
} _ZantHandleType;

/* The value codes of ZantParserExchangeBuffer. */
enum {
    ZantValueString = 1,
    ZantValueNumber = 2,
    ZantValueVector = 3,
    ZantValueCoordSys = 3, /* coordinate systems travel under the code of vectors */
    ZantValueAxes = 4,
    ZantValueText = 6
};

/* A caller's text storage, and what was delivered into it. */
typedef struct ZantTextStorage {
    char* text;    /* in: the storage; out: the delivered text, or null when it did not fit or there is none */
    size_t length; /* in: the capacity in bytes; out: the length that the text needs, without its terminator */
} ZantTextStorage;
ZANT_ASSERT_LAYOUT(ZantTextStorage, offsetof(ZantTextStorage, length) == 8);

/* The value in an exchange record; its code says which member it is. */
typedef union ZantExchangeValue {
    const char* string;        /* code 1 */
    double number;             /* code 2 */
    ZantVectorCore vector;     /* code 3 */
    ZantCoordSysCore coordSys; /* code 3 */
    ZantAxesCore axes;         /* code 4 */
    ZantTextStorage text;      /* code 6 */
    unsigned char bytes[104];
} ZantExchangeValue;

/* The value exchange record: on a read, the caller sets `type` to the code that it expects, and the engine leaves
 * there the code of what it delivered. Strings that the engine delivers belong to the engine. */
typedef struct ZantParserExchangeBuffer {
    ZantExchangeValue value;
    int32_t type;
} ZantParserExchangeBuffer;
ZANT_ASSERT_LAYOUT(ZantParserExchangeBuffer,
                   sizeof(ZantParserExchangeBuffer) == 112 && offsetof(ZantParserExchangeBuffer, type) == 104);

/* ---- Bitmaps and vertex maps ----------------------------------------------------------------------------------- */

/* Pixel layouts; components in the order red, green, blue, alpha. */
typedef enum _ZantPixelFormat {
    PixelFloatGray = 1, /* one float */
    PixelFloatRgb = 2,  /* three floats */
    PixelFloatRgbx = 3, /* four floats, the fourth unused */
    PixelFloatRgba = 4, /* four floats */
    PixelCharGray = 5,  /* one byte */
    PixelCharRgba = 6,  /* four bytes */
    PixelBitPlane = 8   /* no pixel access */
} _ZantPixelFormat;

/* Pixel memory as the engine describes it when it links a bitmap. */
typedef struct ZantBitmapCore {
    void* data;    /* first pixel, or null when there is no pixel memory */
    int32_t width; /* pixels per row; the pixel index is y * width + x */
    int32_t height;
    int32_t format;       /* a _ZantPixelFormat */
    int32_t reserved[11]; /* the engine may fill more than the fields that are named */
} ZantBitmapCore;
ZANT_ASSERT_LAYOUT(ZantBitmapCore, sizeof(ZantBitmapCore) == 64 && offsetof(ZantBitmapCore, width) == 8 &&
                                       offsetof(ZantBitmapCore, height) == 12 &&
                                       offsetof(ZantBitmapCore, format) == 16);

/* The engine's vertex map, read in place; the client never writes this header. */
typedef struct ZantVertexMapRecord {
    uint64_t size;     /* rows */
    void* values;      /* floats or doubles, row after row */
    int32_t dimension; /* components per sample */
    int32_t samples;   /* samples per row */
} ZantVertexMapRecord;
ZANT_ASSERT_LAYOUT(ZantVertexMapRecord,
                   sizeof(ZantVertexMapRecord) == 24 && offsetof(ZantVertexMapRecord, values) == 8 &&
                       offsetof(ZantVertexMapRecord, dimension) == 16 && offsetof(ZantVertexMapRecord, samples) == 20);

/* ---- Events ---------------------------------------------------------------------------------------------------- */

/* The kinds of event that the engine raises. */
typedef enum _ZantEventKind {
    EventSetPixels = 0,
    EventCopyPixels = 1,
    EventCreateTextStream = 2,
    EventDestroyTextStream = 3,
    EventTextLine = 4,
    EventTextNewLine = 5,
    EventGetTextLine = 6,
    EventGetTextFlags = 7,
    EventCreateWindow = 8,
    EventDestroyWindow = 9,
    EventSetWindowSize = 10,
    EventSetWindowTitle = 11,
    EventSetWindowFlags = 12,
    EventGetWindowFlags = 13, /* selector 0: flags; selector 1: mouse resolution */
    EventGetMousePosition = 14,
    EventGetMouseRawPosition = 15,
    EventGetKey = 16,
    EventAllocTextBuffer = 17,
    EventFreeTextBuffer = 18
} _ZantEventKind;

/* One event. The engine fills it before it calls an instance's event function, and reads the answer from it. */
typedef struct ZantEventData {
    int32_t kind; /* a _ZantEventKind; numbers beyond the last one are ignored */
    int32_t padding;
    ZantInstance* instance; /* the instance that the event concerns */
    void* reserved;         /* the engine's */
    void* handle;           /* the text stream or window; receives the new one on the create events */
    int64_t value;          /* pointer to a detail record, integer argument, or integer answer */
    const char* text; /* text; for kinds 12 and 13 no pointer: the first four bytes of the field itself are a signed
                       * 32-bit selector, and no more than those are set */
} ZantEventData;
ZANT_ASSERT_LAYOUT(ZantEventData, sizeof(ZantEventData) == 48 && offsetof(ZantEventData, instance) == 8 &&
                                      offsetof(ZantEventData, reserved) == 16 &&
                                      offsetof(ZantEventData, handle) == 24 && offsetof(ZantEventData, value) == 32 &&
                                      offsetof(ZantEventData, text) == 40);

/* A function that serves an instance's events. It may be called on an engine thread. */
typedef void (*ZantEventFunction)(ZantEventData* event);

/* The answer to a request for a line of text. */
typedef struct _ZantEventTextBufferData {
    char* text;    /* the answer, or null for none */
    uint64_t size; /* bytes wanted */
    char* buffer;  /* storage allocated by the listener and owned by it until the free event */
} _ZantEventTextBufferData;
ZANT_ASSERT_LAYOUT(EventTextBufferData, sizeof(_ZantEventTextBufferData) == 24 &&
                                            offsetof(_ZantEventTextBufferData, size) == 8 &&
                                            offsetof(_ZantEventTextBufferData, buffer) == 16);

/* A mouse position. Only the size of the position is known to the client; what it means is the engine's. A listener
 * answers by writing `position` and nothing else: the engine's own record may end there. */
typedef struct _ZantEventMousePosition {
    int32_t position[2];
    int32_t reserved[6]; /* room for an engine that fills more than the position */
} _ZantEventMousePosition;
ZANT_ASSERT_LAYOUT(EventMousePosition, sizeof(_ZantEventMousePosition) == 32);

/* A key event. */
typedef struct _ZantEventKey {
    unsigned char key[8];  /* the engine's */
    unsigned char present; /* whether a key event is being reported */
    unsigned char reserved[7];
} _ZantEventKey;
ZANT_ASSERT_LAYOUT(EventKey, sizeof(_ZantEventKey) == 16 && offsetof(_ZantEventKey, present) == 8);

/* Passed through by reference, laid out by the engine: a window's size, pixels to show, a rectangle to copy. */
typedef struct _ZantEventWindow _ZantEventWindow;
typedef struct _ZantEventPixelTable _ZantEventPixelTable;
typedef struct _ZantEventPixelRectangle _ZantEventPixelRectangle;

/* ---- Rays ------------------------------------------------------------------------------------------------------ */

/* Ray records, laid out by the engine. */
typedef struct zl_ray_input zl_ray_input;
typedef struct zl_ray_output zl_ray_output;

#ifdef __cplusplus
}
#endif

#if defined(__clang__)
#pragma clang diagnostic pop
#endif

#endif
