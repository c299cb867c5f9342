// Interface 6: panel events, actions asked of the panel, display texts, the soft ten-key, and the
// panel's notifications.
#pragma once

#include "frame/row.h"

namespace norvane::protocol::panel {

using namespace frame;

inline constexpr long interface_id = 6;

template <long Id, fixed_text Name, typename Request, typename Reply = plain_reply>
using operation = frame::operation<interface_id, Id, Name, Request, Reply>;

template <long Id, fixed_text Name, typename Event>
using notification = frame::notification<interface_id, Id, Name, Event>;

/// An application's identifier, which is to be shorter than its field.
using apl_id = open_text<"apl_id", 72, 32>;

/// The key of a display text.
using text_key = text<"key", 72, 32, 31>;

using add_observer = operation<0, "tarn_panel_add_observer", add_observer_request>;

using remove_observer = operation<1, "tarn_panel_remove_observer", remove_observer_request>;

using notify_view_update = operation<2, "tarn_panel_notify_view_update",
    request<80, word<"target", 72>, word<"type", 76>>>;

using notify_request_event = operation<3, "tarn_panel_notify_request_event",
    request<80, word<"first", 72>, word<"second", 76>>>;

/// The event follows the identifier into the record, so that it holds whatever the identifier's length.
using notify_key_event = operation<4, "tarn_panel_notify_key_event",
    request<108, apl_id, word<"event", 104>>>;

using notify_auto_panel_reset = operation<5, "tarn_panel_notify_auto_panel_reset",
    request<72>>;

using request_buzzer = operation<6, "tarn_panel_request_buzzer",
    request<80, word<"target", 72>, word<"type", 76>>>;

using request_start_led = operation<7, "tarn_panel_request_start_led",
    request<80, word<"target", 72>, word<"state", 76>>>;

using change_id = operation<8, "tarn_panel_change_id",
    request<104, apl_id>,
    reply<20, word<"id", 12>, result<16>>>;

using extension_authentication_initialize = operation<9, "tarn_panel_extension_authentication_initialize",
    request<76, word<"value", 72>>>;

using notify_j_foundation_started = operation<10, "tarn_panel_notify_j_foundation_started",
    request<76, word<"value", 72>>>;

/// A record with room for a word that no one sends.
using notify_reset_end = operation<11, "tarn_panel_notify_reset_end",
    request<76>>;

using request_display_screen = operation<12, "tarn_panel_request_display_screen",
    request<76, word<"display", 72>>>;

using request_set_value = operation<13, "tarn_panel_request_set_value",
    request<80, word<"function", 72>, word<"value", 76>>>;

using notify_login_complete = operation<14, "tarn_panel_notify_login_complete",
    request<72>>;

using notify_browser_complete = operation<15, "tarn_panel_notify_browser_complete",
    request<72>>;

using notify_browser_startup_complete = operation<16, "tarn_panel_notify_browser_startup_complete",
    request<76, word<"screen", 72>>>;

using notify_panel_resource_result = operation<17, "tarn_panel_notify_panel_resource_response",
    request<76, word<"outcome", 72>>>;

using notify_casset_panel_info = operation<18, "tarn_panel_notify_casset_panel_info",
    request<76, word<"mode", 72>>>;

using notify_settable_casset_info = operation<19, "tarn_panel_notify_settable_casset_info",
    request<76, word<"value", 72>>>;

using notify_copy_service_login_finish = operation<20, "tarn_panel_notify_copy_service_login_finish",
    request<72>>;

using set_apl_available_start = operation<21, "tarn_panel_set_apl_available_start",
    request<76, word<"value", 72>>>;

/// The operation's second argument comes first, here and in the next row.
using menu_application_initialized = operation<22, "tarn_panel_menu_application_initialized",
    request<80, word<"second", 72>, word<"first", 76>>>;

using menu_application_terminated = operation<23, "tarn_panel_menu_application_terminated",
    menu_application_initialized::request>;

using is_screen_available = operation<24, "tarn_panel_is_screen_available",
    request<76, word<"display", 72>>,
    reply<20, result<12>, word<"available", 16>>>;

using reset_timer_ctrl = operation<25, "tarn_panel_reset_timer_ctrl",
    request<80, word<"target", 72>, word<"control", 76>>>;

using notify_sleep = operation<26, "tarn_panel_notify_sleep",
    request<76, word<"state", 72>>>;

using notify_panel_resource_response = operation<27, "tarn_panel_notify_panel_resource_response",
    request<84, word<"outcome", 72>, word<"kind", 76>, word<"request", 80>>>;

using set_display_text = operation<28, "tarn_panel_set_display_text",
    request<500, text_key, word<"number", 104>, word<"type", 108>, text<"text", 112, 388, 384>>>;

using get_display_text = operation<29, "tarn_panel_get_display_text",
    request<112, text_key, word<"number", 104>, word<"type", 108>>,
    reply<404, result<12>, text<"text", 16, 388>>>;

using initialize_soft_tenkey = operation<30, "tarn_panel_initialize_soft_tenkey",
    request<92, word<"target", 72>, record<"info", "TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO", 76, 16>>>;

using set_soft_tenkey = operation<31, "tarn_panel_display_soft_tenkey",
    request<96, word<"target", 72>, word<"kind", 76>,
        record<"info", "TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO", 80, 16>>>;

using get_soft_tenkey = operation<32, "tarn_panel_display_soft_tenkey",
    request<80, word<"target", 72>, word<"kind", 76>>,
    reply<32, result<12>, record<"info", "TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO", 16, 16>>>;

using operations = row_list<add_observer, remove_observer, notify_view_update, notify_request_event,
    notify_key_event, notify_auto_panel_reset, request_buzzer, request_start_led, change_id,
    extension_authentication_initialize, notify_j_foundation_started, notify_reset_end,
    request_display_screen, request_set_value, notify_login_complete, notify_browser_complete,
    notify_browser_startup_complete, notify_panel_resource_result, notify_casset_panel_info,
    notify_settable_casset_info, notify_copy_service_login_finish, set_apl_available_start,
    menu_application_initialized, menu_application_terminated, is_screen_available, reset_timer_ctrl,
    notify_sleep, notify_panel_resource_response, set_display_text, get_display_text,
    initialize_soft_tenkey, set_soft_tenkey, get_soft_tenkey>;
static_assert(operations::distinct());

using key_event = notification<4, "notify_key_event", event<word<"key", 72>, word<"event", 76>>>;

using auto_panel_reset = notification<5, "notify_auto_panel_reset", event<>>;

using notifications = row_list<key_event, auto_panel_reset>;
static_assert(notifications::distinct());

}  // namespace norvane::protocol::panel
