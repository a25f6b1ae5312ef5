/* The public C header alone, as strict C99. */
#include "client/capi/zant_c.h"
