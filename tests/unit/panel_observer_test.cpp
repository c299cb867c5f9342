#include "tarn_panel_observer.h"

#include "unit/observer_test.h"

namespace {

using namespace testing_platform;
using norvane::tarn_panel_observer;

class panel_observer : public platform_test {};

const failure_row failures{"core_src/tarn_panel_observer",
                           "tarn_panel_observer",
                           {0xF696, 76},
                           {},
                           {0xF694, 162},
                           {0xF696, 169},
                           {0xF694, 204},
                           true};

class listener : public listening<tarn_panel_observer> {
public:
    using listening::listening;

    unsigned int notify_key_event(unsigned int key, TARN_PANEL_KEY_EVENT event) override
    {
        return note("key_event", key, event);
    }
    unsigned int notify_auto_panel_reset() override { return note("auto_panel_reset"); }
};

std::vector<notification_row> table()
{
    return {
        {4, record(88).u32(72, 0x01020304).u32(76, 0xF0000001).pattern(80, 8), "key_event(16909060, 4026531841)"},
        {5, record(88).pattern(72, 16), "auto_panel_reset()"},
    };
}

TEST_F(panel_observer, takes_a_name_from_the_platform) { exercise_default_constructor<tarn_panel_observer>(failures); }

TEST_F(panel_observer, keeps_the_name_that_it_is_given) { exercise_named_constructor<tarn_panel_observer>(failures); }

TEST_F(panel_observer, has_an_identity_until_it_is_destroyed) { exercise_identity<tarn_panel_observer>(); }

TEST_F(panel_observer, calls_the_override_of_each_notification)
{
    for (const auto& row : table()) exercise_notification<listener>(row);
}

TEST_F(panel_observer, answers_zero_where_nothing_is_overridden)
{
    for (const auto& row : table()) exercise_default<tarn_panel_observer>(row);
}

TEST_F(panel_observer, refuses_what_it_cannot_deliver) { exercise_refusals<listener>(failures, {4, 5}); }

TEST_F(panel_observer, a_reset_needs_no_more_than_a_header)
{
    char name[] = "TARN_OBS";
    char header_only[72] = {};
    listener observer(1, name);
    observer.dispatch(5, header_only, sizeof header_only, {});
    EXPECT_EQ(observer.calls, std::vector<std::string>{"auto_panel_reset()"});
    EXPECT_EQ(platform().answers.size(), 1U);
}

}  // namespace
