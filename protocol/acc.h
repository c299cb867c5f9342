// Interface 9: the IC card reader, FeliCa settings, the charging accessory, and the reader's
// notifications.
#pragma once

#include "frame/row.h"

namespace norvane::protocol::acc {

using namespace frame;

inline constexpr long interface_id = 9;

template <long Id, fixed_text Name, typename Request, typename Reply = plain_reply>
using operation = frame::operation<interface_id, Id, Name, Request, Reply>;

template <long Id, fixed_text Name, typename Event>
using notification = frame::notification<interface_id, Id, Name, Event>;

using add_observer = operation<0, "tarn_acc_add_observer", add_observer_request>;

using remove_observer = operation<1, "tarn_acc_remove_observer", remove_observer_request>;

using get_rw_status = operation<2, "tarn_acc_get_rw_status",
    request<72>,
    reply<20, word<"status", 12>, result<16>>>;

using get_iccard_device_info = operation<3, "tarn_acc_get_iccard_device_info",
    request<72>,
    reply<24, record<"info", "TARN_ACC_ICCARD_DEVICE_INFO", 12, 6>, result<20>>>;

using set_iccard_read_type = operation<7, "tarn_acc_set_iccard_read_type",
    request<76, octet<"type", 72>>>;

using set_felica_info = operation<8, "tarn_acc_set_felica_info",
    request<128, word<"site", 72>,
        text<"first_string", 76, 16>, text<"second_string", 92, 16>, text<"third_string", 108, 16>,
        octet<"first_byte", 124>, octet<"second_byte", 125>>>;

using get_felica_info = operation<9, "tarn_acc_get_felica_info",
    request<76, word<"site", 72>>,
    reply<68, text<"first_string", 12, 16>, text<"second_string", 28, 16>, text<"third_string", 44, 16>,
        octet<"first_byte", 60>, octet<"second_byte", 61>, result<64>>>;

using set_felica_read_type = operation<10, "tarn_acc_set_felica_read_type",
    request<76, word<"type", 72>>>;

using change_condition = operation<11, "tarn_acc_change_condition",
    request<332, text<"condition", 72, 256, 255>, word<"send_page_num", 328>>>;

using send_start = operation<12, "tarn_acc_send_start",
    request<72>>;

using send_end = operation<13, "tarn_acc_send_end",
    request<72>>;

using charge_price = operation<14, "tarn_acc_charge_price",
    request<72>>;

using get_price_limit = operation<15, "tarn_acc_get_price_limit",
    request<72>>;

using send_start_prepare = operation<16, "tarn_acc_send_start_prepare",
    request<72>>;

using send_end_finish = operation<17, "tarn_acc_send_end_finish",
    request<72>>;

using operations = row_list<add_observer, remove_observer, get_rw_status, get_iccard_device_info,
    set_iccard_read_type, set_felica_info, get_felica_info, set_felica_read_type, change_condition,
    send_start, send_end, charge_price, get_price_limit, send_start_prepare, send_end_finish>;
static_assert(operations::distinct());

using iccard_detect = notification<4, "notify_iccard_detect",
    event<in_place<"card", "TARN_ACC_ICCARD_INFO", 72>>>;

using iccard_read_error = notification<5, "notify_iccard_read_error",
    event<word<"error_kind", 72>>>;

using iccard_state_change_info = notification<6, "notify_iccard_state_change_info",
    event<in_place<"state", "TARN_ACC_ICCARD_STATE_CHANGE_INFO", 72, 12>>>;

using notifications = row_list<iccard_detect, iccard_read_error, iccard_state_change_info>;
static_assert(notifications::distinct());

}  // namespace norvane::protocol::acc
