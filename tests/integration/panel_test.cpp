// The operation panel against the stand-in service: keys and the reset reach observers, what
// applications show is stored, comes back and is drawn by tarnctl.
#include "tarn_panel_facade.h"
#include "tarn_panel_observer.h"

#include "integration/processes.h"

#include <csignal>
#include <cstring>
#include <mutex>
#include <utility>
#include <vector>

namespace {

using namespace testing_processes;
using norvane::tarn_panel_facade;

constexpr unsigned int unknown_key = 0x02000003;
constexpr unsigned int not_found = 0x02000005;
constexpr unsigned int wrong_state = 0x0200000A;
constexpr unsigned int unknown_text = 0x0200000E;

tarn_panel_facade& facade() { return *tarn_panel_facade::tarn_panel_get_instance(); }

char card_login[] = "card-login";
char stranger[] = "stranger";

class key_recorder : public norvane::tarn_panel_observer {
public:
    using key = std::pair<unsigned int, unsigned int>;

    unsigned int notify_key_event(unsigned int number, TARN_PANEL_KEY_EVENT event) override
    {
        const std::lock_guard lock(mutex_);
        keys_.emplace_back(number, event);
        return 21;
    }
    unsigned int notify_auto_panel_reset() override
    {
        const std::lock_guard lock(mutex_);
        ++resets_;
        return 0;
    }
    std::vector<key> keys() const
    {
        const std::lock_guard lock(mutex_);
        return keys_;
    }
    int resets() const
    {
        const std::lock_guard lock(mutex_);
        return resets_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<key> keys_;
    int resets_ = 0;
};

std::string drawn()
{
    std::string output;
    EXPECT_EQ(run("tarnctl", {"panel"}, output), 0);
    return output;
}

class panel_service : public process_test {};

TEST_F(panel_service, keys_and_resets_told_by_an_application_reach_the_observers)
{
    const process service = start_service();
    key_recorder observer;
    ASSERT_EQ(facade().tarn_panel_add_observer(&observer), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_key_event(card_login, static_cast<TARN_PANEL_KEY_EVENT>(3)), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_key_event(card_login, static_cast<TARN_PANEL_KEY_EVENT>(4)), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_auto_panel_reset(), 0U);
    EXPECT_TRUE(eventually([&] { return observer.resets() == 1; }));
    EXPECT_EQ(observer.keys(), (std::vector<key_recorder::key>{{17, 3}, {17, 4}}));
    EXPECT_EQ(facade().tarn_panel_notify_key_event(stranger, static_cast<TARN_PANEL_KEY_EVENT>(3)), not_found);
    EXPECT_EQ(facade().tarn_panel_remove_observer(&observer), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_key_event(card_login, static_cast<TARN_PANEL_KEY_EVENT>(5)), 0U);
    EXPECT_EQ(observer.keys().size(), 2U);
}

TEST_F(panel_service, keys_pressed_with_tarnctl_reach_the_override)
{
    const process service = start_service();
    key_recorder observer;
    ASSERT_EQ(facade().tarn_panel_add_observer(&observer), 0U);
    std::string output;
    EXPECT_EQ(run("tarnctl", {"notify", "key", "0x10203", "4294967295"}, output), 0);
    EXPECT_NE(output.find("answered, result 21"), std::string::npos) << output;
    EXPECT_EQ(observer.keys(), (std::vector<key_recorder::key>{{0x10203, 0xFFFFFFFF}}));
    EXPECT_EQ(run("tarnctl", {"notify", "auto-panel-reset"}, output), 0);
    EXPECT_EQ(observer.resets(), 1);
    EXPECT_EQ(run("tarnctl", {"notify", "key", "many", "1"}, output), 1);
    EXPECT_EQ(facade().tarn_panel_remove_observer(&observer), 0U);
}

TEST_F(panel_service, texts_and_lights_are_drawn)
{
    const process service = start_service();
    EXPECT_EQ(drawn().find("┌─ Screens"), 0U) << drawn();
    EXPECT_NE(drawn().find("▶   0  Menu"), std::string::npos);
    EXPECT_NE(drawn().find("✗   2  Fax"), std::string::npos);
    EXPECT_EQ(drawn().find("Please wait"), std::string::npos);

    const auto type = static_cast<TARN_PANEL_DISPLAY_TEXT_TYPE>(2);
    EXPECT_EQ(facade().tarn_panel_set_display_text("status", 7, "Please wait", type), 0U);
    EXPECT_EQ(facade().tarn_panel_request_start_led(5, static_cast<TARN_LED_STATE>(1)), 0U);
    EXPECT_EQ(facade().tarn_panel_request_buzzer(6, static_cast<TARN_BUZZER_TYPE>(3)), 0U);
    EXPECT_EQ(facade().tarn_panel_reset_timer_ctrl(8, static_cast<TARN_PNL_RST_TMR>(9)), 0U);
    EXPECT_EQ(facade().tarn_panel_request_display_screen(static_cast<TARN_PANEL_DISPLAY_TYPE>(1)), 0U);
    EXPECT_EQ(facade().tarn_panel_initialize_soft_tenkey(2, {11, 12, 13, 14, 15}), 0U);
    const std::string picture = drawn();
    for (const char* const part :
         {"│ status 7/2: Please wait", "│ target 5  state 1", "│ target 6  type 3", "│ target 8  control 9",
          "▶   1  Copy", "│ target 2  display_mode 11  layout 12  position 13  x 14  y 15"}) {
        EXPECT_NE(picture.find(part), std::string::npos) << part << " in\n" << picture;
    }
}

TEST_F(panel_service, texts_are_stored_by_key_number_and_type)
{
    const process service = start_service();
    const auto first = static_cast<TARN_PANEL_DISPLAY_TEXT_TYPE>(1);
    const auto second = static_cast<TARN_PANEL_DISPLAY_TEXT_TYPE>(2);
    char text[400] = "untouched";
    EXPECT_EQ(facade().tarn_panel_get_display_text("greeting", 1, static_cast<TARN_PANEL_DISPLAY_TEXT_TYPE>(0), text),
              0U);
    EXPECT_EQ(facade().tarn_panel_get_display_text("status", 7, first, text), unknown_text);
    EXPECT_EQ(facade().tarn_panel_set_display_text("status", 7, "one", first), 0U);
    EXPECT_EQ(facade().tarn_panel_get_display_text("status", 7, first, text), 0U);
    EXPECT_EQ(facade().tarn_panel_get_display_text("status", 7, second, text), unknown_text);
    EXPECT_EQ(facade().tarn_panel_get_display_text("status", 8, first, text), unknown_text);
    EXPECT_EQ(facade().tarn_panel_get_display_text("state", 7, first, text), unknown_text);
    EXPECT_STREQ(text, "untouched");
    // The text itself is in the reply, which a watcher sees.
    const auto watched = directory() / "watched.log";
    process watcher("tarnctl", {"watch"}, watched);
    EXPECT_TRUE(eventually([&] {
        facade().tarn_panel_get_display_text("status", 7, first, text);
        return read_file(watched).find("{\"result\":0,\"text\":\"one\"}") != std::string::npos;
    })) << read_file(watched);
    watcher.stop(SIGTERM);
}

TEST_F(panel_service, screens_and_applications_are_those_of_the_device)
{
    const process service = start_service();
    int available = 7;
    EXPECT_EQ(facade().tarn_panel_is_screen_available(static_cast<TARN_PANEL_DISPLAY_TYPE>(1), available), 0U);
    EXPECT_EQ(available, 1);
    EXPECT_EQ(facade().tarn_panel_is_screen_available(static_cast<TARN_PANEL_DISPLAY_TYPE>(2), available), 0U);
    EXPECT_EQ(available, 0);
    EXPECT_EQ(facade().tarn_panel_is_screen_available(static_cast<TARN_PANEL_DISPLAY_TYPE>(9), available), unknown_key);
    EXPECT_EQ(facade().tarn_panel_request_display_screen(static_cast<TARN_PANEL_DISPLAY_TYPE>(2)), wrong_state);
    EXPECT_EQ(facade().tarn_panel_request_display_screen(static_cast<TARN_PANEL_DISPLAY_TYPE>(9)), unknown_key);
    unsigned int id = 0;
    EXPECT_EQ(facade().tarn_panel_change_id(card_login, id), 0U);
    EXPECT_EQ(id, 17U);
    EXPECT_EQ(facade().tarn_panel_change_id(stranger, id), not_found);
    EXPECT_EQ(id, 0U);
    EXPECT_EQ(facade().tarn_panel_menu_application_terminated(5, 1), not_found);
    EXPECT_EQ(facade().tarn_panel_menu_application_initialized(5, 1), 0U);
    EXPECT_EQ(facade().tarn_panel_menu_application_terminated(5, 1), 0U);
}

TEST_F(panel_service, the_soft_tenkey_comes_back_as_it_was_set)
{
    const process service = start_service();
    const auto read = static_cast<TARN_PANEL_SOFT_TENKEY_REQUEST_KIND>(0);
    const auto show = static_cast<TARN_PANEL_SOFT_TENKEY_REQUEST_KIND>(1);
    TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO info{1, 2, 3, 4, 5};
    EXPECT_EQ(facade().tarn_panel_display_soft_tenkey(1, show, info), wrong_state) << "not initialized";
    EXPECT_EQ(facade().tarn_panel_initialize_soft_tenkey(1, info), 0U);
    TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO other{0x12345678, 7, 8, 0x9ABC, 0xDEF0};
    EXPECT_EQ(facade().tarn_panel_display_soft_tenkey(1, show, other), 0U);
    EXPECT_EQ(facade().tarn_panel_display_soft_tenkey(1, read, info), 0U);
    EXPECT_EQ(std::memcmp(&info, &other, sizeof info), 0);
    EXPECT_EQ(facade().tarn_panel_display_soft_tenkey(2, read, info), wrong_state);
}

TEST_F(panel_service, whatever_it_is_told_is_taken)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_panel_notify_view_update(1, static_cast<TARN_PANEL_VIEW_UPDATE_TYPE>(2)), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_request_event(1, 2), 0U);
    EXPECT_EQ(facade().tarn_panel_extension_authentication_initialize(-1), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_j_foundation_started(1), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_reset_end(), 0U);
    EXPECT_EQ(facade().tarn_panel_request_set_value(static_cast<TARN_PANEL_FUNC_TYPE>(1),
                                                    static_cast<TARN_PANEL_SET_VALUE>(2)),
              0U);
    EXPECT_EQ(facade().tarn_panel_notify_login_complete(), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_browser_complete(), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_browser_startup_complete(static_cast<TARN_PANEL_APL_SCREEN>(1)), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_panel_resource_response(static_cast<TARN_PANEL_RESULT>(1)), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_panel_resource_response(static_cast<TARN_PANEL_RESULT>(1),
                                                                 static_cast<TARN_PANEL_RESOURCE_KIND>(2),
                                                                 static_cast<TARN_PANEL_RESOURCE_REQUEST>(3)),
              0U);
    EXPECT_EQ(facade().tarn_panel_notify_casset_panel_info(static_cast<TARN_PANEL_MODE_10_VAL>(1)), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_settable_casset_info(1), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_copy_service_login_finish(), 0U);
    EXPECT_EQ(facade().tarn_panel_set_apl_available_start(1), 0U);
    EXPECT_EQ(facade().tarn_panel_notify_sleep(static_cast<TARN_EVENT_SLEEP_STATE>(1)), 0U);
}

TEST_F(panel_service, texts_are_saved)
{
    const auto saved = directory() / "saved.json";
    const auto type = static_cast<TARN_PANEL_DISPLAY_TEXT_TYPE>(1);
    {
        process service = start_service({}, {"--save", saved});
        facade().tarn_panel_set_display_text("status", 7, "kept", type);
        EXPECT_EQ(service.stop(SIGTERM), 0);
    }
    const process service = start_service(saved);
    EXPECT_NE(drawn().find("status 7/1: kept"), std::string::npos) << drawn();
}

}  // namespace
