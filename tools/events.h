// The notifications that tarnctl can send, as it calls them: from the rows of the protocol.
#pragma once

#include "frame/describe.h"

#include <string>
#include <vector>

namespace norvane::tools {

struct event {
    /// As it is written on the command line: "toner-status" for notify_toner_status.
    std::string name;
    /// A shorter name, or empty.
    std::string alias;
    std::string area;
    const frame::row_description* row;
};

/// Every notification of every area.
const std::vector<event>& events();

/// What a field takes, in words: "8-bit number".
std::string describe(const frame::field_description& field);

}  // namespace norvane::tools
