#include "tarn_acc_observer.h"

#include "unit/observer_test.h"

#include <cstddef>

/// As an application has it from the service.
struct TARN_ACC_ICCARD_INFO {
    unsigned char bytes[20];
};

namespace {

using namespace testing_platform;
using norvane::tarn_acc_observer;

class acc_observer : public platform_test {};

const failure_row failures{"core_src/tarn_acc_observer",
                           "tarn_acc_observer",
                           {0xF696, 83},
                           {0xF694, 123},
                           {0xF694, 214},
                           {0xF696, 221},
                           {0xF694, 280},
                           true};

class listener : public listening<tarn_acc_observer> {
public:
    using listening::listening;

    unsigned int notify_iccard_detect(TARN_ACC_ICCARD_INFO& card) override
    {
        handed_over = &card;
        return note("detect", card.bytes[0], card.bytes[19]);
    }
    unsigned int notify_iccard_read_error(int error_kind) override { return note("read_error", error_kind); }
    unsigned int notify_iccard_state_change_info(TARN_ACC_ICCARD_STATE_CHANGE_INFO& state) override
    {
        handed_over = &state;
        return note("state", state.vendor_id, state.product_id, state.read_type, state.status);
    }

    void* handed_over = nullptr;
};

std::vector<notification_row> table()
{
    return {
        {4, record(92).u8(72, 200).u8(91, 100), "detect(200, 100)"},
        {5, record(88).u32(72, 0xFFFFFFFF).pattern(76, 12), "read_error(-1)"},
        {5, record(76).u32(72, 0x7FFFFFFF), "read_error(2147483647)"},
        {6, record(88).pattern(72, 16).u16(72, 0x0102).u16(74, 0x0304).u8(76, 0xE5).u8(83, 0xF6),
         "state(772, 258, 229, 246)"},
    };
}

TEST_F(acc_observer, takes_a_name_from_the_platform) { exercise_default_constructor<tarn_acc_observer>(failures); }

TEST_F(acc_observer, keeps_the_name_that_it_is_given) { exercise_named_constructor<tarn_acc_observer>(failures); }

TEST_F(acc_observer, has_an_identity_until_it_is_destroyed) { exercise_identity<tarn_acc_observer>(); }

TEST_F(acc_observer, calls_the_override_of_each_notification)
{
    for (const auto& row : table()) exercise_notification<listener>(row);
}

TEST_F(acc_observer, answers_zero_where_nothing_is_overridden)
{
    for (const auto& row : table()) exercise_default<tarn_acc_observer>(row);
}

TEST_F(acc_observer, refuses_what_it_cannot_deliver) { exercise_refusals<listener>(failures, {4, 5, 6}); }

TEST_F(acc_observer, hands_a_record_over_where_it_stands)
{
    char name[] = "TARN_OBS";
    listener observer(1, name);
    alignas(8) char message[128] = {};
    for (const long func_id : {4, 6}) {
        observer.handed_over = nullptr;
        observer.dispatch(func_id, message, sizeof message, {});
        EXPECT_EQ(observer.handed_over, message + 72);
    }
}

TEST_F(acc_observer, knows_where_the_fields_of_a_changed_state_stand)
{
    EXPECT_EQ(offsetof(TARN_ACC_ICCARD_STATE_CHANGE_INFO, product_id), 0U);
    EXPECT_EQ(offsetof(TARN_ACC_ICCARD_STATE_CHANGE_INFO, vendor_id), 2U);
    EXPECT_EQ(offsetof(TARN_ACC_ICCARD_STATE_CHANGE_INFO, read_type), 4U);
    EXPECT_EQ(offsetof(TARN_ACC_ICCARD_STATE_CHANGE_INFO, status), 11U);
    EXPECT_EQ(sizeof(TARN_ACC_ICCARD_STATE_CHANGE_INFO), 12U);
}

}  // namespace
