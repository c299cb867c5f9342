#include "tarn_panel_facade.h"

#include "frame/call.h"
#include "frame/facade.h"
#include "frame/observer_registration.h"
#include "protocol/panel.h"
#include "tarn_panel_observer.h"

namespace norvane {

using frame::call;
using frame::into;
using frame::with;

namespace wire = protocol::panel;

namespace {

constexpr frame::service service{
    .interface_id = wire::interface_id,
    .source = "core_src/tarn_panel_facade",
    .failure = 0x04010705,
    .failure_line = 232,
    .client = frame::unreached_client::kept,
};

constexpr unsigned int null_argument = 0x04010704;
constexpr unsigned int not_supported = 0x04010706;

}  // namespace

tarn_panel_facade* tarn_panel_facade::s_the_instance_ = nullptr;
OSW_Mutex_Semaphore* tarn_panel_facade::mtx_ = nullptr;
bmc_mc_client* tarn_panel_facade::s_the_client_ = nullptr;

tarn_panel_facade::tarn_panel_facade() = default;
tarn_panel_facade::~tarn_panel_facade() = default;

long tarn_panel_facade::dispatch(long, char*, unsigned int, gen_ipc_msghdr) { return 0; }

tarn_panel_facade* tarn_panel_facade::tarn_panel_get_instance()
{
    return frame::instance(s_the_instance_, mtx_, [] {
        auto* const facade = new tarn_panel_facade;
        facade->initialize_facade(facade);
        return facade;
    });
}

unsigned int tarn_panel_facade::initialize_facade(tarn_panel_facade*)
{
    return frame::initialize(service, s_the_client_);
}

unsigned int tarn_panel_facade::tarn_panel_add_observer(tarn_panel_observer* obs)
{
    return frame::add_observer<wire::add_observer>(s_the_client_, obs, &tarn_panel_observer::connection_name_,
                                                   {null_argument, service.source, 712});
}

unsigned int tarn_panel_facade::tarn_panel_remove_observer(tarn_panel_observer* obs)
{
    return frame::remove_observer<wire::remove_observer>(s_the_client_, obs, {null_argument, service.source, 820});
}

unsigned int tarn_panel_facade::tarn_panel_notify_view_update(unsigned int target, TARN_PANEL_VIEW_UPDATE_TYPE type)
{
    return call<wire::notify_view_update>(s_the_client_, with(target, type));
}

unsigned int tarn_panel_facade::tarn_panel_notify_request_event(unsigned int first, unsigned int second)
{
    return call<wire::notify_request_event>(s_the_client_, with(first, second));
}

unsigned int tarn_panel_facade::tarn_panel_notify_key_event(char* apl_id, TARN_PANEL_KEY_EVENT event)
{
    if (apl_id == nullptr) return null_argument;
    return call<wire::notify_key_event>(s_the_client_, with(apl_id, event));
}

unsigned int tarn_panel_facade::tarn_panel_notify_auto_panel_reset()
{
    return call<wire::notify_auto_panel_reset>(s_the_client_);
}

unsigned int tarn_panel_facade::tarn_panel_request_buzzer(unsigned int target, TARN_BUZZER_TYPE type)
{
    return call<wire::request_buzzer>(s_the_client_, with(target, type));
}

unsigned int tarn_panel_facade::tarn_panel_request_start_led(unsigned int target, TARN_LED_STATE state)
{
    return call<wire::request_start_led>(s_the_client_, with(target, state));
}

unsigned int tarn_panel_facade::tarn_panel_change_id(char* apl_id, unsigned int& id)
{
    if (apl_id == nullptr) return frame::refuse<wire::change_id>(null_argument, service.source, 1204);
    return call<wire::change_id>(s_the_client_, with(apl_id), into(id));
}

unsigned int tarn_panel_facade::tarn_panel_extension_authentication_initialize(int value)
{
    return call<wire::extension_authentication_initialize>(s_the_client_, with(value));
}

unsigned int tarn_panel_facade::tarn_panel_notify_j_foundation_started(int value)
{
    return call<wire::notify_j_foundation_started>(s_the_client_, with(value));
}

unsigned int tarn_panel_facade::tarn_panel_notify_reset_end() { return call<wire::notify_reset_end>(s_the_client_); }

unsigned int tarn_panel_facade::tarn_panel_request_display_screen(TARN_PANEL_DISPLAY_TYPE display)
{
    return call<wire::request_display_screen>(s_the_client_, with(display));
}

unsigned int tarn_panel_facade::tarn_panel_request_set_value(TARN_PANEL_FUNC_TYPE function, TARN_PANEL_SET_VALUE value)
{
    return call<wire::request_set_value>(s_the_client_, with(function, value));
}

unsigned int tarn_panel_facade::tarn_panel_notify_login_complete()
{
    return call<wire::notify_login_complete>(s_the_client_);
}

unsigned int tarn_panel_facade::tarn_panel_notify_browser_complete()
{
    return call<wire::notify_browser_complete>(s_the_client_);
}

unsigned int tarn_panel_facade::tarn_panel_notify_browser_startup_complete(TARN_PANEL_APL_SCREEN screen)
{
    return call<wire::notify_browser_startup_complete>(s_the_client_, with(screen));
}

unsigned int tarn_panel_facade::tarn_panel_notify_panel_resource_response(TARN_PANEL_RESULT outcome)
{
    return call<wire::notify_panel_resource_result>(s_the_client_, with(outcome));
}

unsigned int tarn_panel_facade::tarn_panel_notify_panel_resource_response(TARN_PANEL_RESULT outcome,
                                                                          TARN_PANEL_RESOURCE_KIND kind,
                                                                          TARN_PANEL_RESOURCE_REQUEST request)
{
    return call<wire::notify_panel_resource_response>(s_the_client_, with(outcome, kind, request));
}

unsigned int tarn_panel_facade::tarn_panel_notify_casset_panel_info(TARN_PANEL_MODE_10_VAL mode)
{
    return call<wire::notify_casset_panel_info>(s_the_client_, with(mode));
}

unsigned int tarn_panel_facade::tarn_panel_notify_settable_casset_info(unsigned int value)
{
    return call<wire::notify_settable_casset_info>(s_the_client_, with(value));
}

unsigned int tarn_panel_facade::tarn_panel_notify_copy_service_login_finish()
{
    return call<wire::notify_copy_service_login_finish>(s_the_client_);
}

unsigned int tarn_panel_facade::tarn_panel_set_apl_available_start(int value)
{
    return call<wire::set_apl_available_start>(s_the_client_, with(value));
}

unsigned int tarn_panel_facade::tarn_panel_menu_application_initialized(unsigned int first, int second)
{
    return call<wire::menu_application_initialized>(s_the_client_, with(second, first));
}

unsigned int tarn_panel_facade::tarn_panel_menu_application_terminated(unsigned int first, int second)
{
    return call<wire::menu_application_terminated>(s_the_client_, with(second, first));
}

unsigned int tarn_panel_facade::tarn_panel_is_screen_available(TARN_PANEL_DISPLAY_TYPE display, int& available)
{
    return call<wire::is_screen_available>(s_the_client_, with(display), into(available));
}

unsigned int tarn_panel_facade::tarn_panel_reset_timer_ctrl(unsigned int target, TARN_PNL_RST_TMR control)
{
    return call<wire::reset_timer_ctrl>(s_the_client_, with(target, control));
}

unsigned int tarn_panel_facade::tarn_panel_notify_sleep(TARN_EVENT_SLEEP_STATE state)
{
    return call<wire::notify_sleep>(s_the_client_, with(state));
}

unsigned int tarn_panel_facade::tarn_panel_set_display_text(const char* key, unsigned long number, const char* text,
                                                            TARN_PANEL_DISPLAY_TEXT_TYPE type)
{
    return call<wire::set_display_text>(s_the_client_, with(key, number, type, text));
}

/// The reply's text stays in the reply.
unsigned int tarn_panel_facade::tarn_panel_get_display_text(const char* key, unsigned int number,
                                                            TARN_PANEL_DISPLAY_TEXT_TYPE type, char* /*text*/)
{
    frame::exchange<wire::get_display_text> message;
    message.put(with(key, number, type));
    message.send(s_the_client_);
    return message.result();
}

unsigned int tarn_panel_facade::tarn_panel_delete_display_text(TARN_KIND_OF_APL) { return not_supported; }

unsigned int tarn_panel_facade::tarn_panel_initialize_soft_tenkey(unsigned int target,
                                                                  const TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO& info)
{
    return call<wire::initialize_soft_tenkey>(s_the_client_, with(target, info));
}

unsigned int tarn_panel_facade::tarn_panel_display_soft_tenkey(unsigned int target,
                                                               TARN_PANEL_SOFT_TENKEY_REQUEST_KIND kind,
                                                               TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO& info)
{
    switch (kind) {
        case TARN_PANEL_SOFT_TENKEY_READ:
            return call<wire::get_soft_tenkey>(s_the_client_, with(target, kind), into(info));
        case TARN_PANEL_SOFT_TENKEY_SET:
            return call<wire::set_soft_tenkey>(s_the_client_, with(target, kind, info));
        default:
            return not_supported;
    }
}

}  // namespace norvane
