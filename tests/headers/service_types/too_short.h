// The service's definitions, one of them without what the library reads of it.
#pragma once

#define TARN_COUNT_INFO long_enough
#include "service_types.h"
#undef TARN_COUNT_INFO

struct TARN_COUNT_INFO {
    unsigned short counter;
};
