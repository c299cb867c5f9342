#include "tarn_common_observer.h"

#include "unit/observer_test.h"

namespace {

using namespace testing_platform;
using norvane::tarn_common_observer;

class common_observer : public platform_test {};

const failure_row failures{
    "core_src/tarn_common_observer", "tarn_common_observer", {0xF696, 82}, {}, {}, {0xF696, 179}, {0xF694, 414}, true};

class listener : public listening<tarn_common_observer> {
public:
    using listening::listening;

    unsigned int service_state_changed(TARN_ACCEPTANCE_TYPE type) override { return note("service_state", type); }
    unsigned int network_state_changed(TARN_NETWORK_TYPE type) override { return note("network_state", type); }
    unsigned int request_activate(TARN_KIND_OF_SCENARIO scenario, unsigned int argument) override
    {
        return note("activate", scenario, argument);
    }
    unsigned int notify_logout(unsigned long login) override { return note("logout", login); }
    unsigned int notify_pbp_connection_error(TARN_EVENT_CONNECTION_ERROR error) override
    {
        return note("connection_error", error);
    }
    unsigned int notify_sleep(TARN_EVENT_SLEEP_STATE state) override { return note("sleep", state); }
    unsigned int notify_usb_memory_status(unsigned int status) override { return note("usb", status); }
    unsigned int notify_toner_status(unsigned char toner, unsigned char level) override
    {
        return note("toner", toner, level);
    }
    unsigned int notify_waste_toner_bottle_status(unsigned char status) override { return note("bottle", status); }
    unsigned int notify_paper_rest_status(unsigned short source, unsigned char rest) override
    {
        return note("paper", source, rest);
    }
    unsigned int notify_cover_status(unsigned int status) override { return note("cover", status); }
    unsigned int notify_dp_cover_status(unsigned char status) override { return note("dp_cover", status); }
    unsigned int notify_jam_status(unsigned int status) override { return note("jam", status); }
    unsigned int notify_dp_jam_status(unsigned char status) override { return note("dp_jam", status); }
    unsigned int notify_coin_vender_status(unsigned int status) override { return note("coin", status); }
    unsigned int notify_key_card_status(unsigned char status) override { return note("key_card", status); }
    unsigned int notify_key_counter_status(unsigned int status) override { return note("key_counter", status); }
    unsigned int notify_resident_app_state_changed(TARN_REQ_APP_STATE state) override
    {
        return note("app_state", state);
    }
    unsigned int notify_javavm_get_free_mem(unsigned long& free_memory) override
    {
        const unsigned int answer = note("free_memory", free_memory);
        free_memory = 1234;
        return answer;
    }
};

/// A record with a word at offset 72. The bytes behind it are no field's.
record word_event() { return record(88).u32(72, 0xA1B2C3D4).pattern(76, 12); }
constexpr const char* word_value = "(2712847316)";

/// A record with an octet at offset 72.
record octet_event() { return record(88).u8(72, 0xE5).pattern(73, 15); }
constexpr const char* octet_value = "(229)";

std::vector<notification_row> table()
{
    return {
        {2, word_event(), std::string("service_state") + word_value},
        {3, word_event(), std::string("network_state") + word_value},
        {4, record(88).u32(72, 0x01020304).u32(76, 0xF0000001).pattern(80, 8), "activate(16909060, 4026531841)"},
        {5, word_event(), std::string("logout") + word_value},
        {6, word_event(), std::string("connection_error") + word_value},
        {7, word_event(), std::string("sleep") + word_value},
        {8, word_event(), std::string("usb") + word_value},
        {30, record(88).u8(72, 200).u8(73, 100).pattern(74, 14), "toner(200, 100)"},
        {31, octet_event(), std::string("bottle") + octet_value},
        {32, record(88).u16(72, 0xFEDC).u8(74, 0x98).pattern(75, 13), "paper(65244, 152)"},
        {33, word_event(), std::string("cover") + word_value},
        {34, octet_event(), std::string("dp_cover") + octet_value},
        {35, word_event(), std::string("jam") + word_value},
        {36, octet_event(), std::string("jam") + octet_value},
        {37, word_event(), std::string("coin") + word_value},
        {58, word_event(), std::string("app_state") + word_value},
        {59, octet_event(), std::string("key_card") + octet_value},
        {60, word_event(), std::string("key_counter") + word_value},
        {86, record(88).pattern(72, 16), "free_memory(0)", record(20).u32(16, 1234)},
    };
}

TEST_F(common_observer, takes_a_name_from_the_platform)
{
    exercise_default_constructor<tarn_common_observer>(failures);
}

TEST_F(common_observer, keeps_the_name_that_it_is_given) { exercise_named_constructor<tarn_common_observer>(failures); }

TEST_F(common_observer, has_an_identity_until_it_is_destroyed) { exercise_identity<tarn_common_observer>(); }

TEST_F(common_observer, calls_the_override_of_each_notification)
{
    for (const auto& row : table()) exercise_notification<listener>(row);
}

TEST_F(common_observer, answers_zero_where_nothing_is_overridden)
{
    for (const auto& row : table()) exercise_default<tarn_common_observer>(row);
}

TEST_F(common_observer, refuses_what_it_cannot_deliver)
{
    exercise_refusals<listener>(failures, {2, 3, 4, 5, 6, 7, 8, 30, 31, 32, 33, 34, 35, 36, 37, 58, 59, 60, 86});
}

TEST_F(common_observer, a_feeder_jam_is_a_jam)
{
    char name[] = "TARN_OBS";
    listener observer(1, name);
    deliver(observer, 36, record(76).u8(72, 5), {});
    EXPECT_EQ(observer.calls, std::vector<std::string>{"jam(5)"});
}

TEST_F(common_observer, a_default_operation_leaves_its_output_alone)
{
    tarn_common_observer observer;
    unsigned long free_memory = 99;
    EXPECT_EQ(observer.notify_javavm_get_free_mem(free_memory), 0U);
    EXPECT_EQ(free_memory, 99U);
    EXPECT_EQ(observer.notify_dp_jam_status(1), 0U);
}

/// Stores more than fits the answer's word, and refuses.
class full_memory : public tarn_common_observer {
    unsigned int notify_javavm_get_free_mem(unsigned long& free_memory) override
    {
        free_memory = static_cast<unsigned long>(0x7FEDCBA987654321ULL);
        return 3;
    }
};

TEST_F(common_observer, sends_the_low_word_of_the_free_memory)
{
    full_memory observer;
    deliver(observer, 86, record(72), {});
    ASSERT_EQ(platform().answers.size(), 1U);
    EXPECT_EQ(platform().answers.front().bytes, record(20).u32(12, 3).u32(16, 0x87654321).bytes());
}

TEST_F(common_observer, is_looked_up_under_all_of_a_name_of_16_characters)
{
    char name[] = "SIXTEEN_LONG_OBSERVER";
    listener observer(1, name);
    deliver(observer, 33, word_event(), {});
    EXPECT_EQ(platform().server_lookups, std::vector<std::string>{"SIXTEEN_LONG_OBS"});
}

/// Calls what stands in a slot of the object's virtual table, as programs that are built already do.
unsigned int call_slot(tarn_common_observer& observer, std::size_t slot, unsigned int value)
{
    using operation = unsigned int (*)(tarn_common_observer*, unsigned int);
    return (*reinterpret_cast<operation**>(&observer))[slot](&observer, value);
}

TEST_F(common_observer, keeps_the_order_of_its_virtual_operations)
{
    char name[] = "TARN_OBS";
    listener observer(1, name);
    // Two slots of the destructor and one of dispatch come first. The operations that take a single
    // number by value show the order; the others stand between them.
    const std::vector<std::pair<std::size_t, std::string>> order{
        {3, "service_state"}, {4, "network_state"}, {6, "logout"},    {7, "connection_error"}, {8, "sleep"},
        {9, "usb"},           {11, "bottle"},       {13, "cover"},    {14, "dp_cover"},        {15, "jam"},
        {16, "dp_jam"},       {17, "coin"},         {18, "key_card"}, {19, "key_counter"},     {20, "app_state"}};
    for (const auto& [slot, operation] : order) {
        observer.calls.clear();
        call_slot(observer, slot, 7);
        EXPECT_EQ(observer.calls, std::vector<std::string>{operation + "(7)"}) << slot;
    }
}

}  // namespace
