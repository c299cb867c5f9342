// Interface 2: jobs, their settings, addresses and records, the data that goes in and out of them, and
// the job notifications.
#pragma once

#include "frame/row.h"

namespace norvane::protocol::job {

using namespace frame;

inline constexpr long interface_id = 2;

template <long Id, fixed_text Name, typename Request, typename Reply = plain_reply>
using operation = frame::operation<interface_id, Id, Name, Request, Reply>;

template <long Id, fixed_text Name, typename Event>
using notification = frame::notification<interface_id, Id, Name, Event>;

/// What most operations are about, and nothing else.
using job_only = request<76, word<"job", 72>>;

using add_observer = operation<0, "tarn_job_add_observer", add_observer_request>;

using remove_observer = operation<1, "tarn_job_remove_observer", remove_observer_request>;

using generate_jobinfo = operation<6, "tarn_job_generate_jobinfo",
    request<76, word<"category", 72>>,
    reply<20, word<"job", 12>, result<16>>>;

using delete_jobinfo = operation<7, "tarn_job_delete_jobinfo",
    job_only,
    reply<24, word<"del_mem_flg", 12>, word<"function", 16>, result<20>>>;

using start = operation<8, "tarn_job_start",
    request<80, word<"category", 72>, word<"arg", 76>>,
    reply<20, word<"job", 12>, result<16>>>;

using cancel = operation<9, "tarn_job_cancel",
    request<80, word<"job", 72>, word<"arg", 76>>>;

using continuous_read = operation<10, "tarn_job_continuous_read", job_only>;

using continuous_read_end = operation<11, "tarn_job_continuous_read_end", job_only>;

using get_number = operation<12, "tarn_job_get_value",
    request<80, word<"job", 72>, word<"setting", 76>>,
    reply<20, word<"value", 12>, result<16>>>;

using get_text = operation<13, "tarn_job_get_value",
    request<80, word<"job", 72>, word<"setting", 76>>,
    reply<1516, text<"text", 12, 1500>, result<1512>>>;

using get_phb_numbers = operation<14, "tarn_job_get_value",
    request<80, word<"job", 72>, word<"setting", 76>>,
    reply<28, word<"a", 12>, word<"b", 16>, word<"c", 20>, result<24>>>;

using set_number = operation<15, "tarn_job_set_value",
    request<84, word<"job", 72>, word<"setting", 76>, word<"value", 80>>>;

using set_text = operation<16, "tarn_job_set_value",
    request<1580, word<"job", 72>, word<"setting", 76>, text<"text", 80, 1500, 1499>>>;

using set_phb_numbers = operation<17, "tarn_job_set_value",
    request<92, word<"job", 72>, word<"setting", 76>, word<"a", 80>, word<"b", 84>, word<"c", 88>>>;

using set_state_of_prohibition = operation<18, "tarn_job_set_state_of_prohibition",
    request<76, word<"state", 72>>>;

using copy_jobinfo = operation<19, "tarn_job_copy_jobinfo", job_only>;

using rollback_jobinfo = operation<20, "tarn_job_rollback_jobinfo", job_only>;

using commit_jobinfo = operation<21, "tarn_job_commit_jobinfo", job_only>;

using get_disable_info = operation<22, "tarn_job_get_disable_info",
    request<80, word<"job", 72>, word<"item", 76>>,
    reply<20, half<"value", 12>, result<16>>>;

using get_start_phb = operation<23, "tarn_job_get_start_phb",
    job_only,
    reply<20, word<"value", 12>, result<16>>>;

using get_main_message = operation<24, "tarn_job_get_main_message",
    job_only,
    reply<304, record<"message", "TARN_PHB_GET_MESSAGE", 12, 288>, result<300>>>;

using check_state_of_prohibition = operation<25, "tarn_job_check_state_of_prohibition", request<72>>;

using kick = operation<31, "tarn_job_kick", job_only>;

using notify_energy_saving_mode = operation<32, "tarn_job_notify_energy_saving_mode",
    request<76, word<"state", 72>>,
    reply<20, word<"value", 12>, result<16>>>;

using add_address = operation<33, "tarn_job_add_address",
    request<536, word<"job", 72>, record<"info", "TARN_JOB_SEND_INFO", 76, 460>>,
    reply<20, word<"addr_id", 12>, result<16>>>;

using update_address = operation<34, "tarn_job_update_address",
    request<540, word<"job", 72>, word<"addr_id", 76>, record<"info", "TARN_JOB_SEND_INFO", 80, 460>>>;

using delete_address = operation<35, "tarn_job_delete_address",
    request<80, word<"job", 72>, word<"addr_id", 76>>>;

using delete_all_address = operation<36, "tarn_job_delete_all_address", job_only>;

using get_address = operation<37, "tarn_job_get_address",
    request<80, word<"job", 72>, word<"addr_id", 76>>,
    reply<536, record<"info", "TARN_JOB_SEND_INFO", 72, 460>, result<532>>>;

using get_address_id = operation<38, "tarn_job_get_address_id",
    job_only,
    reply<280, word<"count", 72>, halves<"ids", 76, 100>, result<276>>>;

using reset_jobinfo = operation<39, "tarn_job_reset_jobinfo", job_only>;

using get_job_list = operation<40, "tarn_job_get_job_list",
    request<76, word<"kind", 72>>,
    reply<920, words<"ids", 72, 210>, word<"count", 912>, result<916>>>;

using get_default_jobinfo_val = operation<41, "tarn_job_get_default_jobinfo_val",
    request<76, word<"setting", 72>>,
    reply<20, word<"value", 12>, result<16>>>;

using box_job_prepare = operation<42, "tarn_job_box_job_prepare",
    request<1644, word<"job", 72>, record<"setting", "TARN_BOX_JOB_INIT_SETTING", 76, 1568>>>;

using retrieve_document_prepare = operation<43, "tarn_job_retrieve_document_prepare",
    request<360, word<"job", 72>, block<"a", 76, 17>, word<"b", 96>, word<"c", 100>, block<"d", 104, 256>>>;

using combine_document = operation<44, "tarn_job_combine_document",
    request<368, word<"job", 72>, record<"info", "TARN_PHB_COMBINE_DOC_INFO", 76, 292>>>;

using direct_print_prepare = operation<45, "tarn_job_direct_print_prepare",
    request<588, word<"job", 72>, block<"a", 76, 256>, block<"b", 332, 256>>>;

using basic_func_set_value = operation<48, "tarn_job_basic_func_set_value",
    request<84, word<"function", 72>, word<"setting", 76>, word<"value", 80>>>;

using get_scan_data = operation<49, "tarn_job_get_scan_data", job_only>;

using notify_timeout = operation<50, "tarn_job_notify_timeout", job_only>;

using direct_print_prepare_stream = operation<51, "tarn_job_direct_print_prepare",
    request<80, word<"job", 72>, word<"file", 76>>>;

using write_stream_data = operation<52, "tarn_job_write_stream_data", job_only>;

using get_ocr_text_data = operation<53, "tarn_job_get_ocr_text_data", job_only>;

using generate_jobinfo_bkg = operation<54, "tarn_job_generate_jobinfo_bkg",
    request<80, word<"category", 72>, word<"arg", 76>>,
    generate_jobinfo::reply>;

using cancel_bkg = operation<55, "tarn_job_cancel_bkg", cancel::request>;

using notify_logout_bkg = operation<56, "tarn_job_notify_logout_bkg",
    request<76, word<"arg", 72>>>;

using check_app_stop_permission_to_change_state =
    operation<57, "tarn_job_check_app_stop_permission_to_change_state",
    request<104, text<"name", 72, 32, 31>>>;

using notify_finish_app_state_change_judgement =
    operation<58, "tarn_job_notify_finish_app_state_change_judgement",
    request<104, text<"name", 72, 32, 31>>>;

using operations = row_list<add_observer, remove_observer, generate_jobinfo, delete_jobinfo, start, cancel,
    continuous_read, continuous_read_end, get_number, get_text, get_phb_numbers, set_number, set_text,
    set_phb_numbers, set_state_of_prohibition, copy_jobinfo, rollback_jobinfo, commit_jobinfo, get_disable_info,
    get_start_phb, get_main_message, check_state_of_prohibition, kick, notify_energy_saving_mode, add_address,
    update_address, delete_address, delete_all_address, get_address, get_address_id, reset_jobinfo, get_job_list,
    get_default_jobinfo_val, box_job_prepare, retrieve_document_prepare, combine_document, direct_print_prepare,
    basic_func_set_value, get_scan_data, notify_timeout, direct_print_prepare_stream, write_stream_data,
    get_ocr_text_data, generate_jobinfo_bkg, cancel_bkg, notify_logout_bkg,
    check_app_stop_permission_to_change_state, notify_finish_app_state_change_judgement>;
static_assert(operations::distinct());

using job_state_changed = notification<26, "notify_job_state_changed",
    event<record<"state", "TARN_JOB_STATE", 72, 296>>>;

using scan_count = notification<27, "notify_scan_count",
    event<word<"a", 72>, word<"b", 76>>>;

using start_phb = notification<28, "notify_start_phb", event<word<"value", 72>>>;

using disable_info = notification<29, "notify_disable_info", event<word<"value", 72>>>;

using main_message = notification<30, "notify_main_message", event<word<"value", 72>>>;

using phb_info = notification<46, "notify_phb_info",
    event<word<"value", 72>, in_place<"info", "TARN_PHB_INFO", 76>>>;

using message_info = notification<47, "notify_message_info",
    event<word<"value", 72>, in_place<"message", "TARN_PHB_GET_MESSAGE", 76, 288>>>;

using notifications = row_list<job_state_changed, scan_count, start_phb, disable_info, main_message, phb_info,
    message_info>;
static_assert(notifications::distinct());

/// A partition through which a kind of job's data travels. It has room for one block, which the service
/// finds under a fixed number.
struct partition {
    const char* name;
    int block_id;
    unsigned long block_size;
};

inline constexpr partition scan_partition{"TARN_DATA_JOB_PARTITION", 30001, 16392};
inline constexpr partition ocr_partition{"TARN_DATA_JOB_OCR_PARTITION", 40001, 24604};
inline constexpr partition stream_partition{"TARN_DATA_JOB_STM_PARTITION", 50001, 16392};

/// The job categories whose data travels through partitions. The service answers the deletion of a
/// job's record with the job's category as its "function".
namespace category {

inline constexpr unsigned int stream = 4;
inline constexpr unsigned int scan_with_ocr = 7;
inline constexpr unsigned int scan = 8;

}  // namespace category

/// The value of "del_mem_flg" that says that the service no longer uses the job's partitions.
inline constexpr unsigned int memory_released = 1;

}  // namespace norvane::protocol::job
