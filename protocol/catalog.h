// All areas of the protocol, for those who walk it at run time.
#pragma once

#include "frame/describe.h"
#include "protocol/systeminfo.h"

#include <string_view>
#include <vector>

namespace norvane::protocol {

struct area_description {
    long interface_id;
    std::string_view name;
    std::vector<frame::row_description> operations;
    std::vector<frame::row_description> notifications;
};

/// Every area, by interface id.
inline const std::vector<area_description>& catalog()
{
    static const std::vector<area_description> areas = {
        {systeminfo::interface_id, "systeminfo", frame::describe_rows<systeminfo::operations>(), frame::describe_rows<systeminfo::notifications>()},
    };
    return areas;
}

}  // namespace norvane::protocol
