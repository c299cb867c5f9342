// The operation panel: events, buzzer and LED, screens, display texts, the soft ten-key.
#pragma once

#include "platform/bmc_mc.h"
#include "platform/emw_osw.h"
#include "tarn_types.h"

namespace norvane {

class tarn_panel_observer;

/// The application's handle on the service's operation-panel interface.
///
/// Every operation is one synchronous request: it blocks until the service has answered and returns
/// the service's result, 0 for success. Outputs are written from the reply whatever the result; when
/// no reply arrives the result is 0 and the outputs are 0. Arguments are checked only where it is said;
/// such a check sends nothing. No lock is held: any number of threads may call at the same time.
///
/// A `target` is the screen, application or timer that an operation is about, as the service numbers
/// it. An `apl_id` is an application's identifier. It must be shorter than 32 characters: what is longer
/// is not cut, but runs over what follows it in the request.
class TARN_PUBLIC tarn_panel_facade : public facade_template {
public:
    /// The one facade of this process. The first call creates it and waits for the service, asking up
    /// to 200 times with `emwOSWSleep(300)` after each refusal; the facade is returned even if the
    /// service never came up, and its requests then go unanswered. Later calls return at once.
    static tarn_panel_facade* tarn_panel_get_instance();

    ~tarn_panel_facade() override;

    /// Does nothing: this facade receives no messages.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// Creates the client and waits for the service. `tarn_panel_get_instance` calls it once on the new
    /// facade; applications have no use for it. Returns 0, or 0x04010705 when the service was not there
    /// after 200 checks.
    unsigned int initialize_facade(tarn_panel_facade* facade);

    /// Registers `obs`, under its address and connection name, for the panel's notifications. Remove it
    /// before it is destroyed. A null observer is reported and is 0x04010704.
    unsigned int tarn_panel_add_observer(tarn_panel_observer* obs);
    /// Removes `obs`. A null observer is reported and is 0x04010704.
    unsigned int tarn_panel_remove_observer(tarn_panel_observer* obs);

    /// Tells the service that a view was updated.
    unsigned int tarn_panel_notify_view_update(unsigned int target, TARN_PANEL_VIEW_UPDATE_TYPE type);
    /// Tells the service of a request that came from the screen.
    unsigned int tarn_panel_notify_request_event(unsigned int first, unsigned int second);
    /// Tells the service of a key event in an application. A null `apl_id` is 0x04010704, and is not
    /// reported.
    unsigned int tarn_panel_notify_key_event(char* apl_id, TARN_PANEL_KEY_EVENT event);
    /// Tells the service that the panel has reset itself.
    unsigned int tarn_panel_notify_auto_panel_reset();

    /// Asks for the buzzer to sound.
    unsigned int tarn_panel_request_buzzer(unsigned int target, TARN_BUZZER_TYPE type);
    /// Asks for a state of the start key's LED.
    unsigned int tarn_panel_request_start_led(unsigned int target, TARN_LED_STATE state);

    /// Reads the number under which the service knows an application. A null `apl_id` is reported and
    /// is 0x04010704; `id` is then not written.
    unsigned int tarn_panel_change_id(char* apl_id, unsigned int& id);

    /// Initialises the authentication by an extension.
    unsigned int tarn_panel_extension_authentication_initialize(int value);
    /// Tells the service that the Java foundation has started.
    unsigned int tarn_panel_notify_j_foundation_started(int value);
    /// Tells the service that the reset has ended.
    unsigned int tarn_panel_notify_reset_end();

    /// Asks for a screen.
    unsigned int tarn_panel_request_display_screen(TARN_PANEL_DISPLAY_TYPE display);
    /// Asks for `value` to be set for a panel function.
    unsigned int tarn_panel_request_set_value(TARN_PANEL_FUNC_TYPE function, TARN_PANEL_SET_VALUE value);

    /// Tells the service that a login is complete.
    unsigned int tarn_panel_notify_login_complete();
    /// Tells the service that the browser is done.
    unsigned int tarn_panel_notify_browser_complete();
    /// Tells the service that the browser has started up on `screen`.
    unsigned int tarn_panel_notify_browser_startup_complete(TARN_PANEL_APL_SCREEN screen);
    /// Answers a request for the panel.
    unsigned int tarn_panel_notify_panel_resource_response(TARN_PANEL_RESULT outcome);
    /// Answers a request for one of the panel's resources.
    unsigned int tarn_panel_notify_panel_resource_response(TARN_PANEL_RESULT outcome, TARN_PANEL_RESOURCE_KIND kind,
                                                           TARN_PANEL_RESOURCE_REQUEST request);
    /// Tells the service of the panel's cassette information.
    unsigned int tarn_panel_notify_casset_panel_info(TARN_PANEL_MODE_10_VAL mode);
    /// Tells the service which cassettes can be set.
    unsigned int tarn_panel_notify_settable_casset_info(unsigned int value);
    /// Tells the service that the login to the copy service is finished.
    unsigned int tarn_panel_notify_copy_service_login_finish();

    /// Tells the service whether applications may be started.
    unsigned int tarn_panel_set_apl_available_start(int value);
    /// Tells the service that a menu application is initialised.
    unsigned int tarn_panel_menu_application_initialized(unsigned int first, int second);
    /// Tells the service that a menu application has ended.
    unsigned int tarn_panel_menu_application_terminated(unsigned int first, int second);

    /// Reads whether a screen can be displayed.
    unsigned int tarn_panel_is_screen_available(TARN_PANEL_DISPLAY_TYPE display, int& available);
    /// Controls a reset timer.
    unsigned int tarn_panel_reset_timer_ctrl(unsigned int target, TARN_PNL_RST_TMR control);
    /// Tells the service of the panel's sleep state.
    unsigned int tarn_panel_notify_sleep(TARN_EVENT_SLEEP_STATE state);

    /// Sets the text that is displayed under `key` and `number`. Of the key at most 31 bytes are sent,
    /// of the text at most 384.
    unsigned int tarn_panel_set_display_text(const char* key, unsigned long number, const char* text,
                                             TARN_PANEL_DISPLAY_TEXT_TYPE type);
    /// Asks for the text that is displayed under `key`, of which at most 31 bytes are sent, and
    /// `number`, and returns the service's result. The text itself is not handed over: `text` is left as
    /// it is.
    unsigned int tarn_panel_get_display_text(const char* key, unsigned int number, TARN_PANEL_DISPLAY_TEXT_TYPE type,
                                             char* text);
    /// Not supported: sends nothing and returns 0x04010706.
    unsigned int tarn_panel_delete_display_text(TARN_KIND_OF_APL apl);

    /// Prepares the soft ten-key to be displayed as `info` says.
    unsigned int tarn_panel_initialize_soft_tenkey(unsigned int target,
                                                   const TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO& info);
    /// Displays the soft ten-key as `info` says, or reads into `info` how it is displayed. Any other
    /// kind sends nothing, leaves `info` as it is and is 0x04010706.
    unsigned int tarn_panel_display_soft_tenkey(unsigned int target, TARN_PANEL_SOFT_TENKEY_REQUEST_KIND kind,
                                                TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO& info);

private:
    tarn_panel_facade();

    static tarn_panel_facade* s_the_instance_;
    static OSW_Mutex_Semaphore* mtx_;
    static bmc_mc_client* s_the_client_;
};

}  // namespace norvane
