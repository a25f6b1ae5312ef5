#define NUMBER 2
#include "goodplugin.h"
