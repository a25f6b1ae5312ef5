#ifndef ZANT_ZANT_H
#define ZANT_ZANT_H

/// The short name of the chief header: #include <zant/zant.h>. It is installed above client/.

#include "client/zant.h"

#endif
