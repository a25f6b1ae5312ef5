#define NUMBER 2
#define LOADS_WITH_ITS_FIRST_INSTANCE
#include "goodplugin.h"
