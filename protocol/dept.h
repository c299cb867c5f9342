// Interface 7: hidden departments by department code, and the department-wide modes.
#pragma once

#include "frame/row.h"

namespace norvane::protocol::dept {

using namespace frame;

inline constexpr long interface_id = 7;

template <long Id, fixed_text Name, typename Request, typename Reply = plain_reply>
using operation = frame::operation<interface_id, Id, Name, Request, Reply>;

/// A request that names a department, one that carries a department whole, one that sets a mode, and
/// the reply that tells a mode.
using code_request = request<84, text<"code", 72, 12, 9>>;
using department_request = request<552, record<"department", "TARN_DEPT_DEPTINFO", 72, 480>>;
using mode_request = request<76, word<"mode", 72>>;
using mode_reply = reply<20, word<"mode", 12>, result<16>>;

using create_hide_dept = operation<0, "tarn_dept_create_hide_dept", code_request>;

using add_hide_dept = operation<1, "tarn_dept_add_hide_dept", department_request>;

using update_hide_dept = operation<2, "tarn_dept_update_hide_dept", department_request>;

using delete_hide_dept = operation<3, "tarn_dept_delete_hide_dept", code_request>;

using delete_all_hide_dept = operation<4, "tarn_dept_delete_all_hide_dept", request<72>>;

using retrieve_hide_dept = operation<5, "tarn_dept_retrieve_hide_dept",
    code_request,
    reply<496, record<"department", "TARN_DEPT_DEPTINFO", 12, 480>, result<492>>>;

using reset_hide_dept_counter = operation<6, "tarn_dept_reset_hide_dept_counter", code_request>;

using set_dept_mode = operation<7, "tarn_dept_set_dept_mode", mode_request>;

using get_dept_mode = operation<8, "tarn_dept_get_dept_mode", request<72>, mode_reply>;

using set_mix_mode = operation<9, "tarn_dept_set_mix_mode", mode_request>;

using get_mix_mode = operation<10, "tarn_dept_get_mix_mode", request<72>, mode_reply>;

using set_invalid_dept_mode = operation<11, "tarn_dept_set_invalid_dept_mode", mode_request>;

using get_invalid_dept_mode = operation<12, "tarn_dept_get_invalid_dept_mode", request<72>, mode_reply>;

using set_limit_action_mode = operation<13, "tarn_dept_set_limit_action_mode",
    request<76, word<"action", 72>>>;

using get_limit_action_mode = operation<14, "tarn_dept_get_limit_action_mode",
    request<72>,
    reply<20, word<"action", 12>, result<16>>>;

using operations = row_list<create_hide_dept, add_hide_dept, update_hide_dept, delete_hide_dept,
    delete_all_hide_dept, retrieve_hide_dept, reset_hide_dept_counter, set_dept_mode, get_dept_mode,
    set_mix_mode, get_mix_mode, set_invalid_dept_mode, get_invalid_dept_mode, set_limit_action_mode,
    get_limit_action_mode>;
static_assert(operations::distinct());

using notifications = row_list<>;

}  // namespace norvane::protocol::dept
