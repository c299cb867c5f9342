// Interface 1: observers, service state and power, boxes and documents, paged lists, device events.
#pragma once

#include "frame/row.h"

namespace norvane::protocol::common {

using namespace frame;

inline constexpr long interface_id = 1;

template <long Id, fixed_text Name, typename Request, typename Reply = plain_reply>
using operation = frame::operation<interface_id, Id, Name, Request, Reply>;

template <long Id, fixed_text Name, typename Event, typename Reply = plain_reply>
using notification = frame::notification<interface_id, Id, Name, Event, Reply>;

/// The short text with which a box is accessed, and that of a retained job.
template <std::size_t Offset>
using box_text = secret<text<"text", Offset, 20, 17>>;
template <std::size_t Offset>
using retention_text = secret<text<"text", Offset, 8, 5>>;

using access_path = text<"access_path", 72, 1532, 1531>;

// Observers

using add_observer = operation<0, "tarn_common_add_observer", add_observer_request>;

using remove_observer = operation<1, "tarn_common_remove_observer", remove_observer_request>;

// Service state and activation

using service_state_changed = operation<2, "tarn_common_service_state_changed",
    request<76, word<"type", 72>>>;

using network_state_changed = operation<3, "tarn_common_network_state_changed",
    request<76, word<"type", 72>>>;

using request_activate = operation<4, "tarn_common_request_activate",
    request<80, word<"scenario", 72>, word<"application", 76>>>;

using check_eweb_cert_info = operation<9, "tarn_check_eweb_cert_info",
    request<108, secret<open_text<"certificate", 72, 36>>>>;

using request_all_resident_apps_to_change_state = operation<58, "tarn_request_all_resident_apps_to_change_state",
    request<76, word<"state", 72>>>;

using check_javavm_status = operation<85, "tarn_check_javavm_status",
    request<72>,
    reply<20, result<12>, word<"state", 16>>>;

// Power

using request_energy_saving_mode = operation<29, "tarn_request_energy_saving_mode",
    request<76, word<"state", 72>>>;

using request_save_mode_prohibition = operation<52, "tarn_request_save_mode_prohibition",
    request<76, word<"flag", 72>>>;

using suspend_deep_sleep = operation<53, "tarn_suspend_deep_sleep",
    request<76, word<"value", 72>>>;

using resume_deep_sleep = operation<54, "tarn_resume_deep_sleep",
    request<76, word<"value", 72>>>;

using set_wakeup_date = operation<55, "tarn_set_wakeup_date",
    request<80, word<"value", 72>, word<"date", 76>>>;

using get_wakeup_date = operation<56, "tarn_get_wakeup_date",
    request<72>>;

using check_allowed_to_be_deep_sleep_mode = operation<57, "tarn_check_allowed_to_be_deep_sleep_mode",
    request<72>,
    reply<20, result<12>, word<"allowed", 16>>>;

// Boxes and their documents

using box_info = record<"info", "TARN_BOX_DETAIL_INFO", 72, 764>;
using box_detail_reply = reply<780, result<12>, record<"info", "TARN_BOX_DETAIL_INFO", 16, 764>>;
using capacity_reply = reply<20, result<12>, word<"capacity", 16>>;

using add_box = operation<38, "tarn_add_box",
    request<836, box_info>>;

using update_box_info = operation<39, "tarn_update_box_info",
    request<860, word<"box_id", 72>, box_text<76>, record<"info", "TARN_BOX_DETAIL_INFO", 96, 764>>>;

using get_box_detail_info = operation<40, "tarn_get_box_detail_info",
    request<860, word<"box_id", 72>, box_text<76>>, box_detail_reply>;

using delete_box = operation<41, "tarn_delete_box",
    request<96, word<"box_id", 72>, box_text<76>>>;

using delete_document = operation<42, "tarn_delete_document",
    request<100, word<"box_id", 72>, box_text<76>, word<"document_id", 96>>>;

using delete_easy_document = operation<43, "tarn_delete_easy_document",
    request<1604, access_path>>;

using get_box_available_capacity = operation<44, "tarn_get_box_available_capacity",
    request<76, word<"box_id", 72>>, capacity_reply>;

using add_box_bkg = operation<77, "tarn_add_box_bkg",
    request<840, box_info, word<"cert_id", 836>>>;

using update_box_info_bkg = operation<78, "tarn_update_box_info_bkg",
    request<864, word<"box_id", 72>, box_text<76>, record<"info", "TARN_BOX_DETAIL_INFO", 96, 764>,
        word<"cert_id", 860>>>;

using delete_box_bkg = operation<79, "tarn_delete_box_bkg",
    request<100, word<"box_id", 72>, box_text<76>, word<"cert_id", 96>>>;

using delete_document_bkg = operation<82, "tarn_delete_document_bkg",
    request<104, word<"box_id", 72>, box_text<76>, word<"document_id", 96>, word<"cert_id", 100>>>;

using get_box_detail_info_bkg = operation<83, "tarn_get_box_detail_info_bkg",
    request<864, word<"box_id", 72>, box_text<76>, word<"cert_id", 860>>, box_detail_reply>;

using get_box_available_capacity_bkg = operation<84, "tarn_get_box_available_capacity_bkg",
    request<80, word<"box_id", 72>, word<"cert_id", 76>>, capacity_reply>;

// Fax boxes and their documents

using get_fax_box_detail_info = operation<64, "tarn_get_fax_box_detail_info",
    request<96, word<"fax_box_id", 72>, box_text<76>>,
    reply<780, result<12>, record<"info", "TARN_FAX_BOX_DETAIL_INFO", 16, 764>>>;

using add_fax_box = operation<65, "tarn_add_fax_box",
    request<836, record<"info", "TARN_FAX_BOX_DETAIL_INFO", 72, 764>>>;

using update_fax_box_info = operation<66, "tarn_update_fax_box_info",
    request<860, word<"fax_box_id", 72>, box_text<76>, record<"info", "TARN_FAX_BOX_DETAIL_INFO", 96, 764>>>;

using delete_fax_box = operation<67, "tarn_delete_fax_box",
    request<96, word<"fax_box_id", 72>, box_text<76>>>;

using delete_fax_document = operation<71, "tarn_delete_fax_document",
    request<100, word<"fax_box_id", 72>, box_text<76>, word<"document_id", 96>>>;

// Retained jobs

using get_job_retention_doc_info = operation<75, "tarn_get_job_retention_doc_info",
    request<84, word<"document_id", 72>, retention_text<76>>,
    reply<32, result<12>, record<"info", "TARN_JBRT_DOC_INFO", 16, 16>>>;

using delete_job_retention_doc = operation<76, "tarn_delete_job_retention_doc",
    request<88, word<"box_type", 72>, word<"document_id", 76>, retention_text<80>>>;

// Paged lists: each is prepared, fetched page by page, and finished. The two figures of a prepare are
// the service's.

template <long Id, fixed_text Name, typename Request>
using prepare = operation<Id, Name, Request, reply<24, result<12>, word<"first", 16>, word<"second", 20>>>;

using page_request = request<76, word<"block", 72>>;

template <long Id, fixed_text Name, fixed_text Type, std::size_t ElementSize, std::size_t Capacity,
    typename Request = page_request>
using page = frame::page<operation<Id, Name, Request, reply<20, result<12>, word<"count", 16>>>,
    Type, ElementSize, Capacity>;

template <long Id, fixed_text Name>
using finish = operation<Id, Name, request<76, word<"list", 72>>>;

// Lists of boxes and documents. The finishes of the box, document and easy-box lists are one to the
// service: they send one id.

using box_list_prepare = prepare<45, "tarn_get_box_info_prepare",
    request<84, word<"num", 72>>>;
using box_list_prepare_bkg = prepare<80, "tarn_get_box_info_prepare_bkg",
    request<80, word<"num", 72>, word<"cert_id", 76>>>;
using box_list_page = page<46, "tarn_get_box_list_info", "TARN_BOX_LIST_INFO", 748, 50>;
using box_list_finish = finish<47, "tarn_get_box_info_finish">;

using document_list_prepare = prepare<48, "tarn_get_document_info_prepare",
    request<108, word<"box_id", 72>, box_text<76>, word<"num", 96>>>;
using document_list_prepare_bkg = prepare<81, "tarn_get_document_info_prepare_bkg",
    request<104, word<"box_id", 72>, box_text<76>, word<"num", 96>, word<"cert_id", 100>>>;
using document_list_page = page<49, "tarn_get_document_info", "TARN_DOC_INFO", 292, 100>;
using document_list_finish = finish<47, "tarn_get_document_info_finish">;

using easy_box_list_prepare = prepare<50, "tarn_get_easy_box_info_prepare",
    request<1616, access_path, word<"num", 1604>>>;
using easy_box_list_page = page<51, "tarn_get_easy_box_info", "TARN_EASY_BOX_INFO", 3080, 50>;
using easy_box_list_finish = finish<47, "tarn_get_easy_box_info_finish">;

using fax_box_list_prepare = prepare<61, "tarn_get_fax_box_list_prepare",
    request<76, word<"num", 72>>>;
using fax_box_list_page = page<62, "tarn_get_fax_box_list", "TARN_FAX_BOX_LIST", 748, 50>;
using fax_box_list_finish = finish<63, "tarn_get_fax_box_list_finish">;

using fax_document_list_prepare = prepare<68, "tarn_get_fax_document_list_prepare",
    request<100, word<"fax_box_id", 72>, box_text<76>, word<"num", 96>>>;
using fax_document_list_page = page<69, "tarn_get_fax_document_list", "TARN_FAX_DOC_LIST", 292, 100>;
using fax_document_list_finish = finish<70, "tarn_get_fax_document_list_finish">;

using retention_list_prepare = prepare<72, "tarn_get_job_retention_doc_list_prepare",
    request<80, word<"box_type", 72>, word<"num", 76>>>;
using retention_list_page = page<73, "tarn_get_job_retention_doc_list", "TARN_JBRT_DOC_LIST", 408, 100>;
using retention_list_finish = finish<74, "tarn_get_job_retention_doc_list_finish">;

// Lists of addresses. The members of a group come as addresses or, shorter, as members.

using personal_address_list_prepare = prepare<10, "tarn_get_personal_address_list_prepare",
    request<76, word<"num", 72>>>;
using personal_address_list_page = page<11, "tarn_get_personal_address_list", "TARN_PERSONAL_ADDRESS", 2124, 20>;
using personal_address_list_finish = finish<12, "tarn_get_personal_address_list_finish">;

using group_address_list_prepare = prepare<13, "tarn_get_group_address_list_prepare",
    request<76, word<"num", 72>>>;
using group_address_list_page = page<14, "tarn_get_group_address_list", "TARN_GROUP_ADDRESS", 390, 20>;
using group_address_list_finish = finish<15, "tarn_get_group_address_list_finish">;

using group_member_list_request = request<80, half<"group", 72>, word<"num", 76>>;
using group_member_address_list_prepare = prepare<16, "tarn_get_group_member_address_list_prepare",
    group_member_list_request>;
using group_member_list_prepare = prepare<17, "tarn_get_group_member_address_list_grp_mem_str_prepare",
    group_member_list_request>;
using group_member_address_list_page = page<18, "tarn_get_group_member_address_list",
    "TARN_PERSONAL_ADDRESS", 2124, 20>;
using group_member_list_page = page<19, "tarn_get_group_member_address_list", "TARN_GROUP_MEMBER", 1068, 20>;
using group_member_address_list_finish = finish<20, "tarn_get_group_member_address_list_finish">;

// Searches of the address lists, by a name where the prepare carries one.

using search_name = text<"name", 76, 196, 193>;
using search_by_name_request = request<272, word<"num", 72>, search_name>;
using search_page_request = request<272, word<"block", 72>, search_name>;

using search_personal_prepare = prepare<21, "tarn_search_personal_address_list_prepare",
    request<76, word<"num", 72>>>;
using search_personal_by_name_prepare = prepare<22, "tarn_search_personal_address_list_prepare",
    search_by_name_request>;
using search_personal_page = page<23, "tarn_search_personal_address_list", "TARN_PERSONAL_ADDRESS", 2124, 20,
    search_page_request>;
using search_personal_finish = finish<24, "tarn_search_personal_address_list_finish">;

using search_group_prepare = prepare<25, "tarn_search_group_address_list_prepare",
    request<76, word<"num", 72>>>;
using search_group_by_name_prepare = prepare<26, "tarn_search_group_address_list_prepare",
    search_by_name_request>;
using search_group_page = page<27, "tarn_search_group_address_list", "TARN_GROUP_ADDRESS", 390, 20,
    search_page_request>;
using search_group_finish = finish<28, "tarn_search_group_address_list_finish">;

using operations = row_list<add_observer, remove_observer,
    service_state_changed, network_state_changed, request_activate, check_eweb_cert_info,
    request_all_resident_apps_to_change_state, check_javavm_status,
    request_energy_saving_mode, request_save_mode_prohibition, suspend_deep_sleep, resume_deep_sleep,
    set_wakeup_date, get_wakeup_date, check_allowed_to_be_deep_sleep_mode,
    add_box, update_box_info, get_box_detail_info, delete_box, delete_document, delete_easy_document,
    get_box_available_capacity,
    add_box_bkg, update_box_info_bkg, delete_box_bkg, delete_document_bkg, get_box_detail_info_bkg,
    get_box_available_capacity_bkg,
    get_fax_box_detail_info, add_fax_box, update_fax_box_info, delete_fax_box, delete_fax_document,
    get_job_retention_doc_info, delete_job_retention_doc,
    box_list_prepare, box_list_prepare_bkg, box_list_page, box_list_finish,
    document_list_prepare, document_list_prepare_bkg, document_list_page, document_list_finish,
    easy_box_list_prepare, easy_box_list_page, easy_box_list_finish,
    fax_box_list_prepare, fax_box_list_page, fax_box_list_finish,
    fax_document_list_prepare, fax_document_list_page, fax_document_list_finish,
    retention_list_prepare, retention_list_page, retention_list_finish,
    personal_address_list_prepare, personal_address_list_page, personal_address_list_finish,
    group_address_list_prepare, group_address_list_page, group_address_list_finish,
    group_member_address_list_prepare, group_member_list_prepare, group_member_address_list_page,
    group_member_list_page, group_member_address_list_finish,
    search_personal_prepare, search_personal_by_name_prepare, search_personal_page, search_personal_finish,
    search_group_prepare, search_group_by_name_prepare, search_group_page, search_group_finish>;
static_assert(operations::distinct({box_list_finish::id}));

// Notifications

using service_state = notification<2, "service_state_changed", event<word<"type", 72>>>;

using network_state = notification<3, "network_state_changed", event<word<"type", 72>>>;

using activation = notification<4, "request_activate", event<word<"scenario", 72>, word<"argument", 76>>>;

using logout = notification<5, "notify_logout", event<word<"login", 72>>>;

using connection_error = notification<6, "notify_pbp_connection_error", event<word<"error", 72>>>;

using sleep_state = notification<7, "notify_sleep", event<word<"state", 72>>>;

using usb_memory_status = notification<8, "notify_usb_memory_status", event<word<"status", 72>>>;

using toner_status = notification<30, "notify_toner_status", event<octet<"toner", 72>, octet<"level", 73>>>;

using waste_toner_bottle_status = notification<31, "notify_waste_toner_bottle_status", event<octet<"status", 72>>>;

using paper_rest_status = notification<32, "notify_paper_rest_status", event<half<"source", 72>, octet<"rest", 74>>>;

using cover_status = notification<33, "notify_cover_status", event<word<"status", 72>>>;

using dp_cover_status = notification<34, "notify_dp_cover_status", event<octet<"status", 72>>>;

using jam_status = notification<35, "notify_jam_status", event<word<"status", 72>>>;

/// The document feeder's jam. It is delivered as a jam like any other.
using dp_jam_status = notification<36, "notify_dp_jam_status", event<octet<"status", 72>>>;

using coin_vender_status = notification<37, "notify_coin_vender_status", event<word<"status", 72>>>;

using resident_app_state = notification<58, "notify_resident_app_state_changed", event<word<"state", 72>>>;

using key_card_status = notification<59, "notify_key_card_status", event<octet<"status", 72>>>;

using key_counter_status = notification<60, "notify_key_counter_status", event<word<"status", 72>>>;

using javavm_free_memory = notification<86, "notify_javavm_get_free_mem",
    event<>,
    reply<20, result<12>, word<"free_memory", 16>>>;

using notifications = row_list<service_state, network_state, activation, logout, connection_error, sleep_state,
    usb_memory_status, toner_status, waste_toner_bottle_status, paper_rest_status, cover_status, dp_cover_status,
    jam_status, dp_jam_status, coin_vender_status, resident_app_state, key_card_status, key_counter_status,
    javavm_free_memory>;
static_assert(notifications::distinct());

}  // namespace norvane::protocol::common
