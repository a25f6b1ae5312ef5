#ifndef ZANT_CLIENT_ZANT_H
#define ZANT_CLIENT_ZANT_H

/// The public class interface of the library, and the typed command functions.

#include "client/commands/commandbuffer.h"
#include "client/commands/utf8.h"
#include "client/encoding/commandbinarybuffer.h"
#include "client/encoding/commandtextbuffer.h"
#include "client/encoding/prototyper.h"
#include "client/engine/instance.h"
#include "client/engine/jobsplit.h"
#include "client/engine/library.h"
#include "client/engine/mutex.h"
#include "client/engine/raytrace.h"
#include "client/engine/tables.h"
#include "client/events/eventlistener.h"
#include "client/listeners/dispatch.h"
#include "client/listeners/linkedlisteners.h"
#include "client/protos/enums.h"
#include "client/protos/protos.h"
#include "client/records/zant_records.h"
#include "client/symbols/bitmap.h"
#include "client/symbols/bitmapsymbol.h"
#include "client/symbols/mesh.h"
#include "client/symbols/symbol.h"
#include "client/symbols/valuesymbols.h"
#include "client/symbols/vertexmap.h"
#include "client/values/axes.h"
#include "client/values/coordsys.h"
#include "client/values/matrix.h"
#include "client/values/varlen.h"
#include "client/values/vector.h"
#include "own/dl.h"
#include "own/str2num.h"
#include "own/textbuffer.h"

#endif
