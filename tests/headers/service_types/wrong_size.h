// The service's definitions, one of them shorter than what travels.
#pragma once

#define TARN_DEPT_DEPTINFO right_size
#include "service_types.h"
#undef TARN_DEPT_DEPTINFO

struct TARN_DEPT_DEPTINFO {
    char code[12];
};
