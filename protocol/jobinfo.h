// Interface 8: job logs, the lists of receive and send records, image logs, and their notifications.
#pragma once

#include "frame/row.h"

namespace norvane::protocol::jobinfo {

using namespace frame;

inline constexpr long interface_id = 8;

template <long Id, fixed_text Name, typename Request, typename Reply = plain_reply>
using operation = frame::operation<interface_id, Id, Name, Request, Reply>;

template <long Id, fixed_text Name, typename Event>
using notification = frame::notification<interface_id, Id, Name, Event>;

/// Names a job's log.
using log_request = request<80, word<"id", 72>, word<"type", 76>>;

using add_observer = operation<0, "tarn_jobinfo_add_observer", add_observer_request>;

using remove_observer = operation<1, "tarn_jobinfo_remove_observer", remove_observer_request>;

using retrieve_joblog = operation<2, "tarn_jobinfo_retrieve_joblog",
    log_request,
    reply<1256, record<"log", "TARN_JOBINFO_JOBLOG", 12, 1240>, result<1252>>>;

using create_receive_info_list = operation<3, "tarn_jobinfo_create_receive_info_list", log_request>;

using get_receive_info = operation<4, "tarn_jobinfo_get_receive_info",
    request<72>,
    reply<296, record<"info", "TARN_JOBINFO_RECEIVE_INFO", 12, 280>, result<292>>>;

using delete_receive_info_list = operation<5, "tarn_jobinfo_delete_receive_info_list", request<72>>;

using create_send_info_list = operation<6, "tarn_jobinfo_create_send_info_list", log_request>;

using get_send_info = operation<7, "tarn_jobinfo_get_send_info",
    request<72>,
    reply<420, record<"info", "TARN_JOBINFO_SEND_INFO", 12, 404>, result<416>>>;

using delete_send_info_list = operation<8, "tarn_jobinfo_delete_send_info_list", request<72>>;

using retrieve_imagelog = operation<9, "tarn_jobinfo_retrieve_imagelog",
    request<76, word<"id", 72>>,
    reply<276, text<"text", 12, 260>, result<272>>>;

using delete_imagelog = operation<10, "tarn_jobinfo_delete_imagelog",
    request<76, word<"id", 72>>>;

using job_update_log = notification<11, "notify_job_update_log",
    event<in_place<"log", "TARN_EVENT_JOB_UPDATE_LOG", 72>>>;

using print_page_info = notification<12, "notify_print_page_info",
    event<in_place<"page", "TARN_EVENT_PRINT_PAGE", 72>>>;

using scan_page_info = notification<13, "notify_scan_page_info",
    event<in_place<"page", "TARN_EVENT_SCAN_PAGE", 72>>>;

using fax_send_page_info = notification<14, "notify_fax_send_page_info",
    event<in_place<"page", "TARN_EVENT_SEND_PAGE", 72>>>;

using renint_start_info = notification<15, "notify_renint_start_info",
    event<in_place<"start", "TARN_EVENT_RENINT_START", 72, 16>, tail_text<"text", 88>>>;

using imagelog_create_status = notification<16, "notify_imagelog_create_status",
    event<word<"id", 72>, word<"imagelog", 76>, word<"status", 80>>>;

using operations = row_list<add_observer, remove_observer, retrieve_joblog, create_receive_info_list,
    get_receive_info, delete_receive_info_list, create_send_info_list, get_send_info,
    delete_send_info_list, retrieve_imagelog, delete_imagelog>;
static_assert(operations::distinct());

using notifications = row_list<job_update_log, print_page_info, scan_page_info, fax_send_page_info,
    renint_start_info, imagelog_create_status>;
static_assert(notifications::distinct());

}  // namespace norvane::protocol::jobinfo
