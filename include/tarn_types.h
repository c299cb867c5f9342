// The TARN service's record and enumeration types, as the facades and observers exchange them.
//
// Enumerations travel as 32-bit words; their values are the service's. Records travel byte for byte.
#pragma once

#include <string>

#define TARN_PUBLIC __attribute__((visibility("default")))

/// Defines a record of the service's whose fields this library does not know: `size` bytes.
#define TARN_OPAQUE_RECORD(name, size) \
    struct name {                      \
        unsigned char bytes[size];     \
    }

// System information

/// Which system value, machine information or paper source is meant.
enum TARN_ENTKEY : unsigned int {};

/// Paper information.
TARN_OPAQUE_RECORD(TARN_PAPER_INFO, 4);

/// Which counter is meant.
struct TARN_COUNT_INFO {
    unsigned short kind;
    unsigned char detail;
};
