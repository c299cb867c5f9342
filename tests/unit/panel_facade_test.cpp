#include "tarn_panel_facade.h"

#include "protocol/panel.h"
#include "tarn_panel_observer.h"
#include "unit/facade_test.h"

namespace {

using namespace testing_platform;
using norvane::tarn_panel_facade;

namespace wire = norvane::protocol::panel;

class panel_facade : public facade_test<tarn_panel_facade> {
protected:
    panel_facade() : facade_test(&tarn_panel_facade::tarn_panel_get_instance) {}

    /// An operation that returns no more than its result.
    static void exercise_plain(long func_id, const record& request, const std::function<unsigned int()>& call)
    {
        exercise({6, func_id, request, record(16), 12}, call);
    }
};

const creation_row creation{6, 0x04010705, 232, "core_src/tarn_panel_facade", false};

constexpr std::uint32_t first = 0xA1B2C3D4;
constexpr std::uint32_t second = 0xE5F60718;
constexpr std::uint32_t third = 0x293A4B5C;

record one_word() { return record(76).u32(72, first); }
record two_words() { return record(80).u32(72, first).u32(76, second); }

TEST_F(panel_facade, waits_for_its_service) { exercise_initialization(facade(), creation); }

TEST_F(panel_facade, is_published_when_the_service_never_comes)
{
    exercise_unreached<tarn_panel_facade>(
        &tarn_panel_facade::tarn_panel_get_instance, creation,
        [](tarn_panel_facade& facade) { return facade.tarn_panel_notify_auto_panel_reset(); });
}

TEST_F(panel_facade, is_made_once_by_many_threads)
{
    exercise_creation_race(&tarn_panel_facade::tarn_panel_get_instance);
}

TEST_F(panel_facade, makes_its_creation_lock_once_under_the_process_lock)
{
    facade();
    facade();
    EXPECT_EQ(platform().thread_guards, 1);
    EXPECT_EQ(platform().events.size(), 2U) << "one lock and one unlock: the second call takes no lock";
}

TEST_F(panel_facade, dispatch_does_nothing)
{
    char message[80] = {};
    facade().dispatch(0, message, sizeof message, {});
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().reports.empty());
}

TEST_F(panel_facade, registers_observers)
{
    exercise_registration(facade(), &tarn_panel_facade::tarn_panel_add_observer,
                          &tarn_panel_facade::tarn_panel_remove_observer,
                          {6, "core_src/tarn_panel_facade", "tarn_panel_add_observer", 712,
                           "tarn_panel_remove_observer", 820, 0x04010704});
}

TEST_F(panel_facade, notify_view_update)
{
    exercise_plain(2, two_words(), [&] {
        return facade().tarn_panel_notify_view_update(first, static_cast<TARN_PANEL_VIEW_UPDATE_TYPE>(second));
    });
}

TEST_F(panel_facade, notify_request_event)
{
    exercise_plain(3, two_words(), [&] { return facade().tarn_panel_notify_request_event(first, second); });
}

/// Identifiers shorter than their field, as long as it, and longer.
std::vector<std::string> apl_ids()
{
    std::vector<std::string> ids;
    for (const std::size_t length : {0U, 1U, 31U, 32U, 33U, 36U, 37U, 40U, 200U}) {
        ids.push_back(record(length).pattern(0, length).bytes());
    }
    return ids;
}

TEST_F(panel_facade, notify_key_event_holds_the_event_whatever_the_identifier)
{
    for (auto apl_id : apl_ids()) {
        SCOPED_TRACE(apl_id.size());
        exercise_plain(4, record(108).text(72, apl_id.substr(0, 32)).u32(104, first), [&] {
            return facade().tarn_panel_notify_key_event(apl_id.data(), static_cast<TARN_PANEL_KEY_EVENT>(first));
        });
    }
}

TEST_F(panel_facade, notify_key_event_needs_an_identifier_and_does_not_report)
{
    exercise_refused_argument(
        [&] { return facade().tarn_panel_notify_key_event(nullptr, static_cast<TARN_PANEL_KEY_EVENT>(first)); },
        0x04010704);
}

TEST_F(panel_facade, notify_auto_panel_reset)
{
    exercise_plain(5, record(72), [&] { return facade().tarn_panel_notify_auto_panel_reset(); });
}

TEST_F(panel_facade, request_buzzer)
{
    exercise_plain(6, two_words(),
                   [&] { return facade().tarn_panel_request_buzzer(first, static_cast<TARN_BUZZER_TYPE>(second)); });
}

TEST_F(panel_facade, request_start_led)
{
    exercise_plain(7, two_words(),
                   [&] { return facade().tarn_panel_request_start_led(first, static_cast<TARN_LED_STATE>(second)); });
}

TEST_F(panel_facade, change_id)
{
    for (auto apl_id : apl_ids()) {
        SCOPED_TRACE(apl_id.size());
        unsigned int id = 0;
        exercise(
            {6, 8, record(104).text(72, apl_id.substr(0, 32)), record(20).u32(12, 0xCAFEF00D), 16},
            [&] {
                id = 0x55;
                return facade().tarn_panel_change_id(apl_id.data(), id);
            },
            [&] { EXPECT_EQ(id, 0xCAFEF00DU); }, [&] { EXPECT_EQ(id, 0U); });
    }
}

TEST_F(panel_facade, change_id_needs_an_identifier)
{
    unsigned int id = 0x55;
    exercise_refused_argument([&] { return facade().tarn_panel_change_id(nullptr, id); }, 0x04010704,
                              {{0xF694, 0, 0, "core_src/tarn_panel_facade", "tarn_panel_change_id", 1204}});
    EXPECT_EQ(id, 0x55U);
}

TEST_F(panel_facade, extension_authentication_initialize)
{
    exercise_plain(9, record(76).u32(72, 0xFFFFFFFE),
                   [&] { return facade().tarn_panel_extension_authentication_initialize(-2); });
}

TEST_F(panel_facade, notify_j_foundation_started)
{
    exercise_plain(10, record(76).u32(72, 0xFFFFFFFD),
                   [&] { return facade().tarn_panel_notify_j_foundation_started(-3); });
}

TEST_F(panel_facade, notify_reset_end_sends_an_empty_word)
{
    exercise_plain(11, record(76), [&] { return facade().tarn_panel_notify_reset_end(); });
}

TEST_F(panel_facade, request_display_screen)
{
    exercise_plain(12, one_word(), [&] {
        return facade().tarn_panel_request_display_screen(static_cast<TARN_PANEL_DISPLAY_TYPE>(first));
    });
}

TEST_F(panel_facade, request_set_value)
{
    exercise_plain(13, two_words(), [&] {
        return facade().tarn_panel_request_set_value(static_cast<TARN_PANEL_FUNC_TYPE>(first),
                                                     static_cast<TARN_PANEL_SET_VALUE>(second));
    });
}

TEST_F(panel_facade, notify_login_complete)
{
    exercise_plain(14, record(72), [&] { return facade().tarn_panel_notify_login_complete(); });
}

TEST_F(panel_facade, notify_browser_complete)
{
    exercise_plain(15, record(72), [&] { return facade().tarn_panel_notify_browser_complete(); });
}

TEST_F(panel_facade, notify_browser_startup_complete)
{
    exercise_plain(16, one_word(), [&] {
        return facade().tarn_panel_notify_browser_startup_complete(static_cast<TARN_PANEL_APL_SCREEN>(first));
    });
}

TEST_F(panel_facade, notify_panel_resource_response)
{
    exercise_plain(17, one_word(), [&] {
        return facade().tarn_panel_notify_panel_resource_response(static_cast<TARN_PANEL_RESULT>(first));
    });
}

TEST_F(panel_facade, notify_casset_panel_info)
{
    exercise_plain(18, one_word(), [&] {
        return facade().tarn_panel_notify_casset_panel_info(static_cast<TARN_PANEL_MODE_10_VAL>(first));
    });
}

TEST_F(panel_facade, notify_settable_casset_info)
{
    exercise_plain(19, one_word(), [&] { return facade().tarn_panel_notify_settable_casset_info(first); });
}

TEST_F(panel_facade, notify_copy_service_login_finish)
{
    exercise_plain(20, record(72), [&] { return facade().tarn_panel_notify_copy_service_login_finish(); });
}

TEST_F(panel_facade, set_apl_available_start)
{
    exercise_plain(21, record(76).u32(72, 0xFFFFFFFC), [&] { return facade().tarn_panel_set_apl_available_start(-4); });
}

TEST_F(panel_facade, menu_application_initialized_sends_its_second_argument_first)
{
    exercise_plain(22, record(80).u32(72, 0xFFFFFFFF).u32(76, 5),
                   [&] { return facade().tarn_panel_menu_application_initialized(5, -1); });
}

TEST_F(panel_facade, menu_application_terminated_sends_its_second_argument_first)
{
    exercise_plain(23, record(80).u32(72, 0xFFFFFFFF).u32(76, 5),
                   [&] { return facade().tarn_panel_menu_application_terminated(5, -1); });
}

TEST_F(panel_facade, is_screen_available)
{
    int available = 0;
    exercise(
        {6, 24, one_word(), record(20).u32(16, 0xFFFFFFFB), 12},
        [&] {
            available = 0x55;
            return facade().tarn_panel_is_screen_available(static_cast<TARN_PANEL_DISPLAY_TYPE>(first), available);
        },
        [&] { EXPECT_EQ(available, -5); }, [&] { EXPECT_EQ(available, 0); });
}

TEST_F(panel_facade, reset_timer_ctrl)
{
    exercise_plain(25, two_words(),
                   [&] { return facade().tarn_panel_reset_timer_ctrl(first, static_cast<TARN_PNL_RST_TMR>(second)); });
}

TEST_F(panel_facade, notify_sleep)
{
    exercise_plain(26, one_word(),
                   [&] { return facade().tarn_panel_notify_sleep(static_cast<TARN_EVENT_SLEEP_STATE>(first)); });
}

TEST_F(panel_facade, notify_panel_resource_response_of_a_resource)
{
    exercise_plain(27, record(84).u32(72, first).u32(76, second).u32(80, third), [&] {
        return facade().tarn_panel_notify_panel_resource_response(static_cast<TARN_PANEL_RESULT>(first),
                                                                  static_cast<TARN_PANEL_RESOURCE_KIND>(second),
                                                                  static_cast<TARN_PANEL_RESOURCE_REQUEST>(third));
    });
}

constexpr auto text_type = static_cast<TARN_PANEL_DISPLAY_TEXT_TYPE>(second);

TEST_F(panel_facade, set_display_text)
{
    const auto number = static_cast<unsigned long>(0x12345678A1B2C3D4ULL);
    for (const std::size_t key_length : {0U, 1U, 30U, 31U, 32U, 33U, 100U}) {
        for (const std::size_t text_length : {0U, 1U, 383U, 384U, 385U, 388U, 1000U}) {
            SCOPED_TRACE(std::to_string(key_length) + "/" + std::to_string(text_length));
            const std::string key = record(key_length).pattern(0, key_length, 1).bytes();
            const std::string text = record(text_length).pattern(0, text_length, 2).bytes();
            exercise_plain(
                28,
                record(500).text(72, key.substr(0, 31)).u32(104, first).u32(108, second).text(112, text.substr(0, 384)),
                [&] { return facade().tarn_panel_set_display_text(key.c_str(), number, text.c_str(), text_type); });
        }
    }
}

TEST_F(panel_facade, get_display_text_does_not_hand_the_text_over)
{
    for (const std::size_t length : {0U, 1U, 30U, 31U, 32U, 33U, 100U}) {
        SCOPED_TRACE(length);
        const std::string key = record(length).pattern(0, length).bytes();
        std::string text = "as it was before";
        const auto expect_untouched = [&] { EXPECT_EQ(text, "as it was before"); };
        exercise(
            {6, 29, record(112).text(72, key.substr(0, 31)).u32(104, first).u32(108, second),
             record(404).text(16, "Toner low"), 12},
            [&] { return facade().tarn_panel_get_display_text(key.c_str(), first, text_type, text.data()); },
            expect_untouched, expect_untouched);
    }
    platform().reply_with(record(404).u32(12, 3).text(16, std::string(388, 'x')));
    EXPECT_EQ(facade().tarn_panel_get_display_text("key", first, text_type, nullptr), 3U);
}

TEST_F(panel_facade, delete_display_text_is_not_supported)
{
    exercise_refused_argument(
        [&] { return facade().tarn_panel_delete_display_text(static_cast<TARN_KIND_OF_APL>(first)); }, 0x04010706);
}

constexpr TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO display{0x81828384, 0x91929394, 0xA1A2A3A4, 0xB1B2, 0xC1C2};

TEST_F(panel_facade, initialize_soft_tenkey)
{
    exercise_plain(30,
                   record(92)
                       .u32(72, first)
                       .u32(76, 0x81828384)
                       .u32(80, 0x91929394)
                       .u32(84, 0xA1A2A3A4)
                       .u16(88, 0xB1B2)
                       .u16(90, 0xC1C2),
                   [&] { return facade().tarn_panel_initialize_soft_tenkey(first, display); });
}

TEST_F(panel_facade, display_soft_tenkey_of_kind_1_sets_the_display)
{
    auto info = display;
    const auto expect_unchanged = [&] { EXPECT_EQ(bytes_of(info), bytes_of(display)); };
    exercise(
        {6, 31,
         record(96)
             .u32(72, first)
             .u32(76, 1)
             .u32(80, 0x81828384)
             .u32(84, 0x91929394)
             .u32(88, 0xA1A2A3A4)
             .u16(92, 0xB1B2)
             .u16(94, 0xC1C2),
         record(16), 12},
        [&] { return facade().tarn_panel_display_soft_tenkey(first, TARN_PANEL_SOFT_TENKEY_SET, info); },
        expect_unchanged, expect_unchanged);
}

TEST_F(panel_facade, display_soft_tenkey_of_kind_0_reads_the_display)
{
    auto info = display;
    exercise(
        {6, 32, record(80).u32(72, first).u32(76, 0),
         record(32).u32(16, 0x01020304).u32(20, 0x11121314).u32(24, 0x21222324).u16(28, 0x3132).u16(30, 0x4142), 12},
        [&] {
            info = display;
            return facade().tarn_panel_display_soft_tenkey(first, TARN_PANEL_SOFT_TENKEY_READ, info);
        },
        [&] {
            EXPECT_EQ(info.display_mode, 0x01020304U);
            EXPECT_EQ(info.layout, 0x11121314U);
            EXPECT_EQ(info.position, 0x21222324U);
            EXPECT_EQ(info.x, 0x3132U);
            EXPECT_EQ(info.y, 0x4142U);
        },
        [&] { EXPECT_EQ(bytes_of(info), record(16).bytes()); });
}

TEST_F(panel_facade, display_soft_tenkey_of_any_other_kind_is_not_supported)
{
    for (const unsigned int kind : {2U, 3U, 0x80000000U, 0xFFFFFFFFU}) {
        auto info = display;
        exercise_refused_argument(
            [&] {
                return facade().tarn_panel_display_soft_tenkey(
                    first, static_cast<TARN_PANEL_SOFT_TENKEY_REQUEST_KIND>(kind), info);
            },
            0x04010706);
        EXPECT_EQ(bytes_of(info), bytes_of(display));
    }
}

TEST_F(panel_facade, rows_are_called_by_their_operations)
{
    EXPECT_EQ(numbers_and_names<wire::operations>(),
              (std::vector<std::pair<long, std::string>>{{0, "tarn_panel_add_observer"},
                                                         {1, "tarn_panel_remove_observer"},
                                                         {2, "tarn_panel_notify_view_update"},
                                                         {3, "tarn_panel_notify_request_event"},
                                                         {4, "tarn_panel_notify_key_event"},
                                                         {5, "tarn_panel_notify_auto_panel_reset"},
                                                         {6, "tarn_panel_request_buzzer"},
                                                         {7, "tarn_panel_request_start_led"},
                                                         {8, "tarn_panel_change_id"},
                                                         {9, "tarn_panel_extension_authentication_initialize"},
                                                         {10, "tarn_panel_notify_j_foundation_started"},
                                                         {11, "tarn_panel_notify_reset_end"},
                                                         {12, "tarn_panel_request_display_screen"},
                                                         {13, "tarn_panel_request_set_value"},
                                                         {14, "tarn_panel_notify_login_complete"},
                                                         {15, "tarn_panel_notify_browser_complete"},
                                                         {16, "tarn_panel_notify_browser_startup_complete"},
                                                         {17, "tarn_panel_notify_panel_resource_response"},
                                                         {18, "tarn_panel_notify_casset_panel_info"},
                                                         {19, "tarn_panel_notify_settable_casset_info"},
                                                         {20, "tarn_panel_notify_copy_service_login_finish"},
                                                         {21, "tarn_panel_set_apl_available_start"},
                                                         {22, "tarn_panel_menu_application_initialized"},
                                                         {23, "tarn_panel_menu_application_terminated"},
                                                         {24, "tarn_panel_is_screen_available"},
                                                         {25, "tarn_panel_reset_timer_ctrl"},
                                                         {26, "tarn_panel_notify_sleep"},
                                                         {27, "tarn_panel_notify_panel_resource_response"},
                                                         {28, "tarn_panel_set_display_text"},
                                                         {29, "tarn_panel_get_display_text"},
                                                         {30, "tarn_panel_initialize_soft_tenkey"},
                                                         {31, "tarn_panel_display_soft_tenkey"},
                                                         {32, "tarn_panel_display_soft_tenkey"}}));
    EXPECT_EQ(numbers_and_names<wire::notifications>(),
              (std::vector<std::pair<long, std::string>>{{4, "notify_key_event"}, {5, "notify_auto_panel_reset"}}));
}

TEST_F(panel_facade, fields_have_their_width_for_those_who_read_them)
{
    EXPECT_EQ((wire::notify_key_event::request::field<"apl_id">::width), 32U);
    EXPECT_EQ((wire::change_id::request::field<"apl_id">::width), 32U);
    EXPECT_EQ((wire::set_display_text::request::field<"key">::width), 32U);
    EXPECT_EQ((wire::set_display_text::request::field<"text">::width), 388U);
    EXPECT_EQ((wire::get_display_text::request::field<"key">::width), 32U);
    EXPECT_EQ((wire::get_display_text::reply::field<"text">::offset), 16U);
    EXPECT_EQ((wire::get_display_text::reply::field<"text">::width), 388U);
}

}  // namespace
