// All areas of the protocol, for those who walk it at run time.
#pragma once

#include "frame/describe.h"
#include "protocol/acc.h"
#include "protocol/common.h"
#include "protocol/dept.h"
#include "protocol/job.h"
#include "protocol/jobinfo.h"
#include "protocol/panel.h"
#include "protocol/systeminfo.h"
#include "protocol/user.h"
#include "protocol/webservice.h"

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
    using frame::describe_rows;
    static const std::vector<area_description> areas = {
        {common::interface_id, "common", describe_rows<common::operations>(), describe_rows<common::notifications>()},
        {job::interface_id, "job", describe_rows<job::operations>(), describe_rows<job::notifications>()},
        {user::interface_id, "user", describe_rows<user::operations>(), describe_rows<user::notifications>()},
        {systeminfo::interface_id, "systeminfo", describe_rows<systeminfo::operations>(), describe_rows<systeminfo::notifications>()},
        {webservice::interface_id, "webservice", describe_rows<webservice::operations>(), describe_rows<webservice::notifications>()},
        {panel::interface_id, "panel", describe_rows<panel::operations>(), describe_rows<panel::notifications>()},
        {dept::interface_id, "dept", describe_rows<dept::operations>(), describe_rows<dept::notifications>()},
        {jobinfo::interface_id, "jobinfo", describe_rows<jobinfo::operations>(), describe_rows<jobinfo::notifications>()},
        {acc::interface_id, "acc", describe_rows<acc::operations>(), describe_rows<acc::notifications>()},
    };
    return areas;
}

}  // namespace norvane::protocol
