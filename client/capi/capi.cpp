#include "client/records/zant_records.h"
