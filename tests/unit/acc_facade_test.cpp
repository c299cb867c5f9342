#include "tarn_acc_facade.h"

#include "protocol/acc.h"
#include "tarn_acc_observer.h"
#include "unit/facade_test.h"

namespace {

using namespace testing_platform;
using norvane::tarn_acc_facade;

namespace wire = norvane::protocol::acc;

class acc_facade : public facade_test<tarn_acc_facade> {
protected:
    acc_facade() : facade_test(&tarn_acc_facade::tarn_acc_get_instance) {}
};

const creation_row creation{9, 0x04010a06, 233, "core_src/tarn_acc_facade", false};

constexpr std::uint32_t word = 0xA1B2C3D4;
constexpr auto site = static_cast<TARN_ACC_FELICA_SETTING_SITE>(word);

/// A request without fields.
table_row bare(long func_id) { return {9, func_id, record(72), record(16), 12}; }

TEST_F(acc_facade, waits_for_its_service) { exercise_initialization(facade(), creation); }

TEST_F(acc_facade, is_published_when_the_service_never_comes)
{
    exercise_unreached<tarn_acc_facade>(&tarn_acc_facade::tarn_acc_get_instance, creation,
                                        [](tarn_acc_facade& facade) { return facade.tarn_acc_charge_price(); });
}

TEST_F(acc_facade, is_made_once_by_many_threads) { exercise_creation_race(&tarn_acc_facade::tarn_acc_get_instance); }

TEST_F(acc_facade, makes_its_creation_lock_once_under_the_process_lock)
{
    facade();
    facade();
    EXPECT_EQ(platform().thread_guards, 1);
    EXPECT_EQ(platform().events.size(), 2U) << "one lock and one unlock: the second call takes no lock";
}

TEST_F(acc_facade, dispatch_does_nothing)
{
    char message[80] = {};
    facade().dispatch(0, message, sizeof message, {});
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().reports.empty());
}

TEST_F(acc_facade, registers_observers)
{
    exercise_registration(
        facade(), &tarn_acc_facade::tarn_acc_add_observer, &tarn_acc_facade::tarn_acc_remove_observer,
        {9, "core_src/tarn_acc_facade", "tarn_acc_add_observer", 533, "tarn_acc_remove_observer", 663, 0x04010a04});
}

TEST_F(acc_facade, get_rw_status)
{
    unsigned int status = 0;
    exercise(
        {9, 2, record(72), record(20).u32(12, 0xCAFEF00D), 16},
        [&] {
            status = 0x55;
            return facade().tarn_acc_get_rw_status(status);
        },
        [&] { EXPECT_EQ(status, 0xCAFEF00DU); }, [&] { EXPECT_EQ(status, 0U); });
}

TEST_F(acc_facade, get_iccard_device_info)
{
    static_assert(sizeof(TARN_ACC_ICCARD_DEVICE_INFO) == 6);
    TARN_ACC_ICCARD_DEVICE_INFO info{};
    exercise(
        {9, 3, record(72), record(24).u16(12, 0x0102).u16(14, 0xF304).u8(16, 0xE5).u8(17, 0x66).pattern(18, 2), 20},
        [&] {
            info = patterned<TARN_ACC_ICCARD_DEVICE_INFO>(2);
            return facade().tarn_acc_get_iccard_device_info(info);
        },
        [&] {
            EXPECT_EQ(info.product_id, 0x0102);
            EXPECT_EQ(info.vendor_id, 0xF304);
            EXPECT_EQ(info.card_device_type, 0xE5);
            EXPECT_EQ(bytes_of(info).back(), 0x66);
        },
        [&] { EXPECT_EQ(bytes_of(info), record(6).bytes()); });
}

TEST_F(acc_facade, set_iccard_read_type)
{
    exercise({9, 7, record(76).u8(72, 0xFF), record(16), 12},
             [&] { return facade().tarn_acc_set_iccard_read_type(0xFF); });
}

TEST_F(acc_facade, set_felica_info)
{
    TARN_ACC_FELICA_SETTING_INFO info{"system", "service", "block", 0xF1, 0x02};
    exercise({9, 8,
              record(128)
                  .u32(72, word)
                  .text(76, "system")
                  .text(92, "service")
                  .text(108, "block")
                  .u8(124, 0xF1)
                  .u8(125, 0x02),
              record(16), 12},
             [&] { return facade().tarn_acc_set_felica_info(site, info); });
    EXPECT_EQ(info.first_string, "system");
    EXPECT_EQ(info.second_byte, 0x02);
}

TEST_F(acc_facade, set_felica_info_cuts_each_string_at_16)
{
    for (const std::size_t length : {0U, 15U, 16U, 17U, 100U}) {
        for (const std::size_t other : {0U, 15U, 16U, 17U, 100U}) {
            SCOPED_TRACE(std::to_string(length) + "/" + std::to_string(other));
            TARN_ACC_FELICA_SETTING_INFO info{record(length).pattern(0, length, 1).bytes(),
                                              record(other).pattern(0, other, 2).bytes(),
                                              record(length).pattern(0, length, 3).bytes(), 1, 2};
            exercise({9, 8,
                      record(128)
                          .u32(72, word)
                          .text(76, info.first_string.substr(0, 16))
                          .text(92, info.second_string.substr(0, 16))
                          .text(108, info.third_string.substr(0, 16))
                          .u8(124, 1)
                          .u8(125, 2),
                      record(16), 12},
                     [&] { return facade().tarn_acc_set_felica_info(site, info); });
        }
    }
}

TEST_F(acc_facade, get_felica_info)
{
    TARN_ACC_FELICA_SETTING_INFO info;
    exercise(
        {9, 9, record(76).u32(72, word),
         record(68).text(12, "system").text(28, "service").text(44, "fifteen letters").u8(60, 0xF1).u8(61, 2), 64},
        [&] {
            info = {"a", "b", "c", 8, 9};
            return facade().tarn_acc_get_felica_info(site, info);
        },
        [&] {
            EXPECT_EQ(info.first_string, "system");
            EXPECT_EQ(info.second_string, "service");
            EXPECT_EQ(info.third_string, "fifteen letters");
            EXPECT_EQ(info.first_byte, 0xF1);
            EXPECT_EQ(info.second_byte, 2);
        },
        [&] {
            EXPECT_EQ(info.first_string, "");
            EXPECT_EQ(info.second_string, "");
            EXPECT_EQ(info.third_string, "");
            EXPECT_EQ(info.first_byte, 0);
            EXPECT_EQ(info.second_byte, 0);
        });
}

TEST_F(acc_facade, get_felica_info_reads_a_full_string_on_into_what_follows)
{
    TARN_ACC_FELICA_SETTING_INFO info;
    const std::string first(16, 'a');
    const std::string third(16, 'c');
    platform().reply_with(
        record(68).text(12, first).text(28, "service").text(44, third).u8(60, 'x').u8(61, 'y').u8(63, 'z'));
    EXPECT_EQ(facade().tarn_acc_get_felica_info(site, info), 0U);
    EXPECT_EQ(info.first_string, first + "service");
    EXPECT_EQ(info.second_string, "service");
    EXPECT_EQ(info.third_string, third + "xy");
    EXPECT_EQ(info.first_byte, 'x');
    EXPECT_EQ(info.second_byte, 'y');
}

TEST_F(acc_facade, get_felica_info_reads_no_further_than_the_record)
{
    TARN_ACC_FELICA_SETTING_INFO info;
    const std::string reply = record(68).pattern(12, 56).bytes();
    platform().reply_with(record(68).pattern(12, 56));
    facade().tarn_acc_get_felica_info(site, info);
    EXPECT_EQ(info.first_string, reply.substr(12));
    EXPECT_EQ(info.second_string, reply.substr(28));
    EXPECT_EQ(info.third_string, reply.substr(44));
}

TEST_F(acc_facade, set_felica_read_type)
{
    exercise({9, 10, record(76).u32(72, word), record(16), 12},
             [&] { return facade().tarn_acc_set_felica_read_type(static_cast<TARN_ACC_TYPE_C_READ_TYPE>(word)); });
}

TEST_F(acc_facade, change_condition_sends_up_to_255_bytes)
{
    for (const std::size_t length : {0U, 1U, 254U, 255U, 256U, 257U, 300U}) {
        SCOPED_TRACE(length);
        std::string condition = record(length).pattern(0, length).bytes();
        exercise({9, 11, record(332).text(72, condition.substr(0, 255)).u32(328, word), record(16), 12}, [&] {
            return facade().tarn_acc_change_condition(reinterpret_cast<unsigned char*>(condition.data()), word);
        });
    }
}

TEST_F(acc_facade, change_condition_ends_with_a_zero)
{
    unsigned char condition[300] = {0xC1, 0x02};
    std::memset(condition + 3, 0xEE, sizeof condition - 3);
    exercise({9, 11, record(332).u8(72, 0xC1).u8(73, 0x02).u32(328, 300), record(16), 12},
             [&] { return facade().tarn_acc_change_condition(condition, 300); });
}

/// An operation that tells nothing of how the service answered, or whether it did.
void exercise_untold(const table_row& row, const std::function<void()>& call)
{
    auto& recorder = platform();
    const auto run = [&] {
        recorder.requests.clear();
        call();
        ASSERT_EQ(recorder.requests.size(), 1U);
        expect_request(recorder.requests.front(), row);
        EXPECT_TRUE(recorder.reports.empty());
        EXPECT_TRUE(recorder.traces.empty());
    };
    recorder.reply_with(record(16).u32(12, 0x8badf00d));
    run();
    recorder.reply_never();
    run();
}

TEST_F(acc_facade, send_start)
{
    static_assert(std::is_void_v<decltype(facade().tarn_acc_send_start())>);
    exercise_untold(bare(12), [&] { facade().tarn_acc_send_start(); });
}

TEST_F(acc_facade, send_end)
{
    static_assert(std::is_void_v<decltype(facade().tarn_acc_send_end())>);
    exercise_untold(bare(13), [&] { facade().tarn_acc_send_end(); });
}

TEST_F(acc_facade, charge_price)
{
    exercise(bare(14), [&] { return facade().tarn_acc_charge_price(); });
}

TEST_F(acc_facade, get_price_limit)
{
    exercise(bare(15), [&] { return facade().tarn_acc_get_price_limit(); });
}

/// An operation that returns what became of its sending, not what the service answered.
void exercise_status(const table_row& row, const std::function<unsigned int()>& call)
{
    auto& recorder = platform();
    struct sending {
        long status;
        std::uint32_t answer;
        unsigned int returned;
    };
    for (const auto& [status, answer, returned] :
         std::vector<sending>{{0, 0, 0}, {0, 0x8badf00d, 0}, {0x70, 0, 0x70}, {5, 7, 5}, {-1, 7, 0xFFFFFFFF}}) {
        SCOPED_TRACE(returned);
        recorder.requests.clear();
        recorder.respond([status = status, answer = answer](const request&, char* reply, unsigned int& length) {
            record(16).u32(12, answer).bytes().copy(reply, length);
            return status;
        });
        EXPECT_EQ(call(), returned);
        ASSERT_EQ(recorder.requests.size(), 1U);
        expect_request(recorder.requests.front(), row);
        EXPECT_TRUE(recorder.reports.empty());
        EXPECT_TRUE(recorder.traces.empty());
    }
}

TEST_F(acc_facade, send_start_prepare)
{
    exercise_status(bare(16), [&] { return facade().tarn_acc_send_start_prepare(); });
}

TEST_F(acc_facade, send_end_finish)
{
    exercise_status(bare(17), [&] { return facade().tarn_acc_send_end_finish(); });
}

TEST_F(acc_facade, rows_are_called_by_their_operations)
{
    EXPECT_EQ(numbers_and_names<wire::operations>(),
              (std::vector<std::pair<long, std::string>>{{0, "tarn_acc_add_observer"},
                                                         {1, "tarn_acc_remove_observer"},
                                                         {2, "tarn_acc_get_rw_status"},
                                                         {3, "tarn_acc_get_iccard_device_info"},
                                                         {7, "tarn_acc_set_iccard_read_type"},
                                                         {8, "tarn_acc_set_felica_info"},
                                                         {9, "tarn_acc_get_felica_info"},
                                                         {10, "tarn_acc_set_felica_read_type"},
                                                         {11, "tarn_acc_change_condition"},
                                                         {12, "tarn_acc_send_start"},
                                                         {13, "tarn_acc_send_end"},
                                                         {14, "tarn_acc_charge_price"},
                                                         {15, "tarn_acc_get_price_limit"},
                                                         {16, "tarn_acc_send_start_prepare"},
                                                         {17, "tarn_acc_send_end_finish"}}));
    EXPECT_EQ(
        numbers_and_names<wire::notifications>(),
        (std::vector<std::pair<long, std::string>>{
            {4, "notify_iccard_detect"}, {5, "notify_iccard_read_error"}, {6, "notify_iccard_state_change_info"}}));
}

TEST_F(acc_facade, fields_have_their_width_for_those_who_read_them)
{
    EXPECT_EQ((wire::get_felica_info::reply::field<"first_string">::width), 16U);
    EXPECT_EQ((wire::get_felica_info::reply::field<"second_string">::width), 16U);
    EXPECT_EQ((wire::get_felica_info::reply::field<"third_string">::width), 16U);
    EXPECT_EQ((wire::set_felica_info::request::field<"first_string">::width), 16U);
    EXPECT_EQ((wire::set_felica_info::request::field<"second_string">::width), 16U);
    EXPECT_EQ((wire::set_felica_info::request::field<"third_string">::width), 16U);
    EXPECT_EQ((wire::change_condition::request::field<"condition">::width), 256U);
    EXPECT_EQ((wire::iccard_state_change_info::event::field<"state">::width), 12U);
}

}  // namespace
