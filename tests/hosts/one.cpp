#define NUMBER 1
#include "goodplugin.h"
