// The service's definitions, one of them of the right size but with a copy of its own making.
#pragma once

#define TARN_PAPER_INFO copied_by_bytes
#include "service_types.h"
#undef TARN_PAPER_INFO

struct TARN_PAPER_INFO {
    TARN_PAPER_INFO(const TARN_PAPER_INFO&) {}
    unsigned char content[4];
};
