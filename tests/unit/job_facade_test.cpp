#include "unit/job_test.h"

#include "tarn_job_observer.h"

#include <chrono>
#include <limits>
#include <numeric>

namespace {

using namespace testing_platform;
using norvane::tarn_job_facade;

class job_facade : public job_test {};

const creation_row creation{2, 0x04010007, 256, "core_src/tarn_job_facade", false};

constexpr unsigned int job = 0x11223344;
constexpr unsigned long wide_arg = 0xA0B0C0D0;
constexpr auto setting = static_cast<TARN_JOB_SETTING>(0x01020304);
constexpr auto phb_setting = static_cast<TARN_PHB_SETTING_ID>(0x05060708);

/// A request of 76 bytes that names a job and nothing else.
record names_job() { return record(76).u32(72, 0x11223344); }

TEST_F(job_facade, waits_for_its_service) { exercise_initialization(facade(), creation); }

TEST_F(job_facade, is_published_when_the_service_never_comes)
{
    exercise_unreached<tarn_job_facade>(&tarn_job_facade::tarn_job_get_instance, creation,
                                        [](tarn_job_facade& facade) { return facade.tarn_job_kick(job); });
}

TEST_F(job_facade, is_made_once_by_many_threads) { exercise_creation_race(&tarn_job_facade::tarn_job_get_instance); }

TEST_F(job_facade, makes_its_creation_lock_once_under_the_process_lock)
{
    facade();
    facade();
    EXPECT_EQ(platform().thread_guards, 1);
    EXPECT_EQ(platform().events.size(), 2U) << "one lock and one unlock: the second call takes no lock";
}

TEST_F(job_facade, begins_with_no_partition_and_no_block)
{
    EXPECT_EQ(facade().job_part_id_, nullptr);
    EXPECT_EQ(facade().job_ocr_part_id_, nullptr);
    EXPECT_EQ(facade().job_stm_part_id_, nullptr);
    EXPECT_EQ(facade().shared_mem_stream_data_, nullptr);
    EXPECT_EQ(facade().shared_mem_scan_data_, nullptr);
    EXPECT_EQ(facade().shared_mem_ocr_data_, nullptr);
}

TEST_F(job_facade, keeps_its_members_in_order)
{
    const auto at = [this](const void* member) {
        return static_cast<const char*>(member) - reinterpret_cast<const char*>(&facade());
    };
    const std::vector<std::ptrdiff_t> members{at(&facade().job_mutex_),
                                              at(&facade().shm_mutex_),
                                              at(&facade().job_part_id_),
                                              at(&facade().job_ocr_part_id_),
                                              at(&facade().job_stm_part_id_),
                                              at(&facade().shared_mem_stream_data_),
                                              at(&facade().shared_mem_scan_data_),
                                              at(&facade().shared_mem_ocr_data_)};
    EXPECT_TRUE(std::is_sorted(members.begin(), members.end()));
}

TEST_F(job_facade, dispatch_does_nothing)
{
    char message[80] = {};
    facade().dispatch(26, message, sizeof message, {});
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().reports.empty());
    EXPECT_TRUE(platform().traces.empty());
}

// Observers

TEST_F(job_facade, add_observer)
{
    platform().next_connection_name = "TARN_OBS0000042";
    norvane::tarn_job_observer observer;
    exercise_under(lock::none,
                   {2, 0, record(92).u32(72, address_word(&observer)).text(76, "TARN_OBS0000042"), record(16), 12},
                   [&] { return facade().tarn_job_add_observer(&observer); });
}

TEST_F(job_facade, add_observer_sends_15_bytes_of_a_name_of_16)
{
    char name[] = "0123456789abcdefgh";
    norvane::tarn_job_observer observer(7, name);
    exercise_under(lock::none,
                   {2, 0, record(92).u32(72, address_word(&observer)).text(76, "0123456789abcde"), record(16), 12},
                   [&] { return facade().tarn_job_add_observer(&observer); });
}

TEST_F(job_facade, remove_observer)
{
    norvane::tarn_job_observer observer;
    exercise_under(lock::none, {2, 1, record(92).u32(72, address_word(&observer)), record(16), 12},
                   [&] { return facade().tarn_job_remove_observer(&observer); });
}

TEST_F(job_facade, refuses_a_null_observer)
{
    EXPECT_EQ(facade().tarn_job_add_observer(nullptr), 0x04010008U);
    EXPECT_EQ(facade().tarn_job_remove_observer(nullptr), 0x04010008U);

    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().traces.empty());
    const char* const operations[] = {"tarn_job_add_observer", "tarn_job_remove_observer"};
    ASSERT_EQ(platform().reports.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        const report& made = platform().reports[i];
        EXPECT_GT(made.line, 0);
        EXPECT_EQ(made, (report{63124, 0, 0, "core_src/tarn_job_facade", operations[i], made.line}));
    }
}

// The life of a job

TEST_F(job_facade, start)
{
    unsigned int started = 0;
    exercise_under(
        lock::job, {2, 8, record(80).u32(72, 0x0C0D0E0F).u32(76, 0x51525354), record(20).u32(12, 0xCAFEF00D), 16},
        [&] {
            started = 0x55;
            return facade().tarn_job_start(static_cast<TARN_JOB_CATEGORY>(0x0C0D0E0F), 0x51525354, started);
        },
        [&] { EXPECT_EQ(started, 0xCAFEF00DU); }, [&] { EXPECT_EQ(started, 0U); });
}

TEST_F(job_facade, cancel)
{
    exercise_under(lock::none, {2, 9, record(80).u32(72, 0x11223344).u32(76, 0xA0B0C0D0), record(16), 12},
                   [&] { return facade().tarn_job_cancel(job, wide_arg); });
}

TEST_F(job_facade, cancel_bkg)
{
    exercise_under(lock::none, {2, 55, record(80).u32(72, 0x11223344).u32(76, 0xA0B0C0D0), record(16), 12},
                   [&] { return facade().tarn_job_cancel_bkg(job, wide_arg); });
}

/// An operation that sends a job and gets a result.
struct job_operation {
    const char* name;
    long func_id;
    bool locked;
    unsigned int (tarn_job_facade::*call)(unsigned int);
};

class job_only_operation : public job_test, public ::testing::WithParamInterface<job_operation> {};

TEST_P(job_only_operation, sends_the_job)
{
    exercise_under(GetParam().locked ? lock::job : lock::none, {2, GetParam().func_id, names_job(), record(16), 12},
                   [&] { return (facade().*GetParam().call)(job); });
}

INSTANTIATE_TEST_SUITE_P(
    all, job_only_operation,
    ::testing::Values(job_operation{"continuous_read", 10, false, &tarn_job_facade::tarn_job_continuous_read},
                      job_operation{"continuous_read_end", 11, false, &tarn_job_facade::tarn_job_continuous_read_end},
                      job_operation{"copy_jobinfo", 19, false, &tarn_job_facade::tarn_job_copy_jobinfo},
                      job_operation{"rollback_jobinfo", 20, false, &tarn_job_facade::tarn_job_rollback_jobinfo},
                      job_operation{"commit_jobinfo", 21, false, &tarn_job_facade::tarn_job_commit_jobinfo},
                      job_operation{"kick", 31, true, &tarn_job_facade::tarn_job_kick},
                      job_operation{"delete_all_address", 36, true, &tarn_job_facade::tarn_job_delete_all_address},
                      job_operation{"reset_jobinfo", 39, true, &tarn_job_facade::tarn_job_reset_jobinfo},
                      job_operation{"notify_timeout", 50, false, &tarn_job_facade::tarn_job_notify_timeout}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(job_facade, get_job_list)
{
    std::vector<unsigned int> ids;
    record reply(920);
    reply.u32(72, 0x80000001).u32(76, 2).u32(80, 0xFFFFFFFF).u32(84, 99).u32(912, 3);
    exercise_under(
        lock::none, {2, 40, record(76).u32(72, 0x0B0A0908), reply, 916},
        [&] {
            ids = {5};
            return facade().tarn_job_get_job_list(static_cast<TARN_JOB_KIND>(0x0B0A0908), ids);
        },
        [&] {
            EXPECT_EQ(ids, (std::vector<unsigned int>{5, 0x80000001, 2, 0xFFFFFFFF}));
        },
        [&] { EXPECT_EQ(ids, std::vector<unsigned int>{5}); });
}

TEST_F(job_facade, get_job_list_twice_yields_both_lists)
{
    platform().reply_next(record(920).u32(72, 11).u32(76, 12).u32(912, 2));
    platform().reply_next(record(920).u32(72, 21).u32(912, 1));
    std::vector<unsigned int> ids;
    facade().tarn_job_get_job_list({}, ids);
    facade().tarn_job_get_job_list({}, ids);
    EXPECT_EQ(ids, (std::vector<unsigned int>{11, 12, 21}));
}

TEST_F(job_facade, get_job_list_is_limited_to_210)
{
    record reply(920);
    for (unsigned int i = 0; i < 210; ++i) reply.u32(72 + 4 * i, 1000 + i);
    for (const unsigned int count : {209U, 210U, 211U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(count);
        platform().reply_with(reply.u32(912, count));
        std::vector<unsigned int> expected(count == 209 ? 209 : 210);
        std::iota(expected.begin(), expected.end(), 1000U);
        std::vector<unsigned int> ids;
        facade().tarn_job_get_job_list({}, ids);
        EXPECT_EQ(ids, expected);
    }
}

// Settings

TEST_F(job_facade, get_value_number)
{
    unsigned int value = 0;
    exercise_under(
        lock::none, {2, 12, record(80).u32(72, 0x11223344).u32(76, 0x01020304), record(20).u32(12, 0xCAFEF00D), 16},
        [&] {
            value = 0x55;
            return facade().tarn_job_get_value(job, setting, value);
        },
        [&] { EXPECT_EQ(value, 0xCAFEF00DU); }, [&] { EXPECT_EQ(value, 0U); });
}

TEST_F(job_facade, get_value_text)
{
    std::string text;
    exercise_under(
        lock::none,
        {2, 13, record(80).u32(72, 0x11223344).u32(76, 0x01020304), record(1516).text(12, {"scan.pdf\0rest", 13}),
         1512},
        [&] {
            text = "before";
            return facade().tarn_job_get_value(job, setting, text);
        },
        [&] { EXPECT_EQ(text, "scan.pdf"); }, [&] { EXPECT_EQ(text, ""); });
}

TEST_F(job_facade, get_value_text_of_full_length)
{
    const std::string longest(1499, 'x');
    platform().reply_with(record(1516).text(12, longest));
    std::string text;
    EXPECT_EQ(facade().tarn_job_get_value(job, setting, text), 0U);
    EXPECT_EQ(text, longest);
}

TEST_F(job_facade, get_value_phb)
{
    unsigned int a = 0;
    unsigned int b = 0;
    unsigned int c = 0;
    exercise_under(
        lock::none,
        {2, 14, record(80).u32(72, 0x11223344).u32(76, 0x05060708), record(28).u32(12, 101).u32(16, 202).u32(20, 303),
         24},
        [&] {
            a = b = c = 0x55;
            return facade().tarn_job_get_value(job, phb_setting, a, b, c);
        },
        [&] {
            EXPECT_EQ((std::vector{a, b, c}), (std::vector{101U, 202U, 303U}));
        },
        [&] {
            EXPECT_EQ((std::vector{a, b, c}), (std::vector{0U, 0U, 0U}));
        });
}

TEST_F(job_facade, set_value_number)
{
    exercise_under(lock::job,
                   {2, 15, record(84).u32(72, 0x11223344).u32(76, 0x01020304).u32(80, 0x0A0B0C0D), record(16), 12},
                   [&] { return facade().tarn_job_set_value(job, setting, 0x0A0B0C0DU); });
}

TEST_F(job_facade, set_value_text)
{
    exercise_under(lock::job,
                   {2, 16, record(1580).u32(72, 0x11223344).u32(76, 0x01020304).text(80, "mailroom"), record(16), 12},
                   [&] { return facade().tarn_job_set_value(job, setting, std::string("mailroom")); });
}

TEST_F(job_facade, set_value_text_is_cut_at_1499)
{
    for (const std::size_t length : {0U, 1U, 1498U, 1499U, 1500U, 1501U, 9000U}) {
        SCOPED_TRACE(length);
        const std::string text = record(length).pattern(0, length).bytes();
        const auto sent = record(1580).u32(72, 0x11223344).u32(76, 0x01020304).text(80, text.substr(0, 1499));
        exercise_under(lock::job, {2, 16, sent, record(16), 12},
                       [&] { return facade().tarn_job_set_value(job, setting, text); });
    }
}

TEST_F(job_facade, set_value_text_sends_what_stands_behind_a_nul)
{
    const std::string text("left\0right", 10);
    exercise_under(lock::job,
                   {2, 16, record(1580).u32(72, 0x11223344).u32(76, 0x01020304).text(80, text), record(16), 12},
                   [&] { return facade().tarn_job_set_value(job, setting, text); });
}

TEST_F(job_facade, set_value_phb)
{
    exercise_under(lock::job,
                   {2, 17, record(92).u32(72, 0x11223344).u32(76, 0x05060708).u32(80, 111).u32(84, 222).u32(88, 333),
                    record(16), 12},
                   [&] { return facade().tarn_job_set_value(job, phb_setting, 111, 222, 333); });
}

TEST_F(job_facade, get_default_jobinfo_val)
{
    unsigned int value = 0;
    exercise_under(
        lock::none, {2, 41, record(76).u32(72, 0x01020304), record(20).u32(12, 0xCAFEF00D), 16},
        [&] {
            value = 0x55;
            return facade().tarn_job_get_default_jobinfo_val(setting, value);
        },
        [&] { EXPECT_EQ(value, 0xCAFEF00DU); }, [&] { EXPECT_EQ(value, 0U); });
}

TEST_F(job_facade, basic_func_set_value)
{
    exercise_under(lock::none,
                   {2, 48, record(84).u32(72, 0x31323334).u32(76, 0x01020304).u32(80, 0x0A0B0C0D), record(16), 12},
                   [&] {
                       return facade().tarn_job_basic_func_set_value(static_cast<TARN_JOB_FUNC_TYPE>(0x31323334),
                                                                     setting, 0x0A0B0C0D);
                   });
}

TEST_F(job_facade, get_disable_info_takes_the_first_two_bytes)
{
    unsigned short value = 0;
    exercise_under(
        lock::none,
        {2, 22, record(80).u32(72, 0x11223344).u32(76, 0x21222324), record(20).u16(12, 0xFEDC).u16(14, 0x7777), 16},
        [&] {
            value = 0x55;
            return facade().tarn_job_get_disable_info(job, static_cast<TARN_PHB_DISABLE_ITEM>(0x21222324), value);
        },
        [&] { EXPECT_EQ(value, 0xFEDC); }, [&] { EXPECT_EQ(value, 0); });
}

TEST_F(job_facade, get_start_phb)
{
    int value = 0;
    exercise_under(
        lock::none, {2, 23, names_job(), record(20).u32(12, 0xFFFFFFFE), 16},
        [&] {
            value = 0x55;
            return facade().tarn_job_get_start_phb(job, value);
        },
        [&] { EXPECT_EQ(value, -2); }, [&] { EXPECT_EQ(value, 0); });
}

TEST_F(job_facade, get_main_message)
{
    static_assert(sizeof(TARN_PHB_GET_MESSAGE) == 288);
    auto message = patterned<TARN_PHB_GET_MESSAGE>();
    exercise_under(
        lock::none, {2, 24, names_job(), record(304).pattern(12, 288, 3), 300},
        [&] {
            message = patterned<TARN_PHB_GET_MESSAGE>(2);
            return facade().tarn_job_get_main_message(job, message);
        },
        [&] { EXPECT_EQ(bytes_of(message), record(288).pattern(0, 288, 3).bytes()); },
        [&] { EXPECT_EQ(bytes_of(message), record(288).bytes()); });
}

// Destinations

TEST_F(job_facade, add_address)
{
    static_assert(sizeof(TARN_JOB_SEND_INFO) == 460);
    const auto info = patterned<TARN_JOB_SEND_INFO>(4);
    unsigned int addr_id = 0;
    exercise_under(
        lock::job, {2, 33, record(536).u32(72, 0x11223344).pattern(76, 460, 4), record(20).u32(12, 0xCAFEF00D), 16},
        [&] {
            addr_id = 0x55;
            return facade().tarn_job_add_address(job, addr_id, info);
        },
        [&] { EXPECT_EQ(addr_id, 0xCAFEF00DU); }, [&] { EXPECT_EQ(addr_id, 0U); });
}

TEST_F(job_facade, update_address)
{
    const auto info = patterned<TARN_JOB_SEND_INFO>(4);
    exercise_under(lock::job,
                   {2, 34, record(540).u32(72, 0x11223344).u32(76, 0x61626364).pattern(80, 460, 4), record(16), 12},
                   [&] { return facade().tarn_job_update_address(job, 0x61626364, info); });
}

TEST_F(job_facade, delete_address)
{
    exercise_under(lock::job, {2, 35, record(80).u32(72, 0x11223344).u32(76, 0x61626364), record(16), 12},
                   [&] { return facade().tarn_job_delete_address(job, 0x61626364); });
}

TEST_F(job_facade, get_address)
{
    auto info = patterned<TARN_JOB_SEND_INFO>();
    exercise_under(
        lock::job,
        {2, 37, record(80).u32(72, 0x11223344).u32(76, 0x61626364), record(536).pattern(12, 60, 8).pattern(72, 460, 3),
         532},
        [&] {
            info = patterned<TARN_JOB_SEND_INFO>(2);
            return facade().tarn_job_get_address(job, 0x61626364, info);
        },
        [&] { EXPECT_EQ(bytes_of(info), record(460).pattern(0, 460, 3).bytes()); },
        [&] { EXPECT_EQ(bytes_of(info), record(460).bytes()); });
}

TEST_F(job_facade, get_address_id)
{
    unsigned int count = 0;
    std::vector<unsigned int> ids;
    record reply(280);
    reply.pattern(12, 60, 8).u32(72, 3).u16(76, 0xFFFE).u16(78, 7).u16(80, 0x8000).u16(82, 99);
    exercise_under(
        lock::job, {2, 38, names_job(), reply, 276},
        [&] {
            count = 0x55;
            ids = {5};
            return facade().tarn_job_get_address_id(job, count, ids);
        },
        [&] {
            EXPECT_EQ(count, 3U);
            EXPECT_EQ(ids, (std::vector<unsigned int>{5, 0xFFFE, 7, 0x8000}));
        },
        [&] {
            EXPECT_EQ(count, 0U);
            EXPECT_EQ(ids, std::vector<unsigned int>{5});
        });
}

TEST_F(job_facade, get_address_id_of_none)
{
    platform().reply_with(record(280).u16(76, 4).u32(276, 0x1234));
    unsigned int count = 9;
    std::vector<unsigned int> ids{1, 2};
    EXPECT_EQ(facade().tarn_job_get_address_id(job, count, ids), 0x1234U);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(ids, (std::vector<unsigned int>{1, 2}));
}

TEST_F(job_facade, get_address_id_is_limited_to_100)
{
    record reply(280);
    for (std::uint16_t i = 0; i < 100; ++i) reply.u16(76 + 2U * i, static_cast<std::uint16_t>(1000 + i));
    for (const unsigned int counted : {99U, 100U, 101U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(counted);
        platform().reply_with(reply.u32(72, counted));
        std::vector<unsigned int> expected(counted == 99 ? 99 : 100);
        std::iota(expected.begin(), expected.end(), 1000U);
        unsigned int count = 0;
        std::vector<unsigned int> ids;
        facade().tarn_job_get_address_id(job, count, ids);
        EXPECT_EQ(count, expected.size());
        EXPECT_EQ(ids, expected);
    }
}

// Documents

TEST_F(job_facade, box_job_prepare)
{
    static_assert(sizeof(TARN_BOX_JOB_INIT_SETTING) == 1568);
    auto init = patterned<TARN_BOX_JOB_INIT_SETTING>(6);
    exercise_under(lock::job, {2, 42, record(1644).u32(72, 0x11223344).pattern(76, 1568, 6), record(16), 12},
                   [&] { return facade().tarn_job_box_job_prepare(job, init); });
    EXPECT_EQ(bytes_of(init), record(1568).pattern(0, 1568, 6).bytes());
}

TEST_F(job_facade, retrieve_document_prepare_sends_whole_blocks)
{
    // Short strings, with something behind them.
    std::string a = record(32).pattern(0, 32, 2).u8(3, 0).bytes();
    std::string d = record(300).pattern(0, 300, 5).u8(1, 0).bytes();
    const auto sent = record(360)
                          .u32(72, 0x11223344)
                          .text(76, a.substr(0, 17))
                          .u32(96, 0xA0B0C0D0)
                          .u32(100, 0x0A0B0C0D)
                          .text(104, d.substr(0, 256));
    exercise_under(lock::none, {2, 43, sent, record(16), 12}, [&] {
        return facade().tarn_job_retrieve_document_prepare(job, a.data(), wide_arg, 0x0A0B0C0D, d.data());
    });
}

TEST_F(job_facade, retrieve_document_prepare_sends_zeros_for_null)
{
    std::string a = record(17).pattern(0, 17, 2).bytes();
    std::string d = record(256).pattern(0, 256, 5).bytes();
    const auto numbers = record(360).u32(72, 0x11223344).u32(96, 1).u32(100, 2);
    exercise_under(lock::none, {2, 43, record(numbers).text(104, d), record(16), 12},
                   [&] { return facade().tarn_job_retrieve_document_prepare(job, nullptr, 1, 2, d.data()); });
    exercise_under(lock::none, {2, 43, record(numbers).text(76, a), record(16), 12},
                   [&] { return facade().tarn_job_retrieve_document_prepare(job, a.data(), 1, 2, nullptr); });
    exercise_under(lock::none, {2, 43, numbers, record(16), 12},
                   [&] { return facade().tarn_job_retrieve_document_prepare(job, nullptr, 1, 2, nullptr); });
}

TEST_F(job_facade, combine_document)
{
    static_assert(sizeof(TARN_PHB_COMBINE_DOC_INFO) == 292);
    auto info = patterned<TARN_PHB_COMBINE_DOC_INFO>(6);
    exercise_under(lock::none, {2, 44, record(368).u32(72, 0x11223344).pattern(76, 292, 6), record(16), 12},
                   [&] { return facade().tarn_job_combine_document(job, info); });
    EXPECT_EQ(bytes_of(info), record(292).pattern(0, 292, 6).bytes());
}

// The state of machine and application

TEST_F(job_facade, set_state_of_prohibition)
{
    exercise_under(lock::none, {2, 18, record(76).u32(72, 0x41424344), record(16), 12}, [&] {
        return facade().tarn_job_set_state_of_prohibition(static_cast<TARN_STATE_OF_PROHIBITION>(0x41424344));
    });
}

TEST_F(job_facade, check_state_of_prohibition)
{
    exercise_under(lock::none, {2, 25, record(72), record(16), 12},
                   [&] { return facade().tarn_job_check_state_of_prohibition(); });
}

TEST_F(job_facade, notify_energy_saving_mode)
{
    int value = 0;
    exercise_under(
        lock::none, {2, 32, record(76).u32(72, 0x41424344), record(20).u32(12, 0x80000000), 16},
        [&] {
            value = 0x55;
            return facade().tarn_job_notify_energy_saving_mode(static_cast<TARN_JOB_ENERGY_SAVING_STATE>(0x41424344),
                                                               value);
        },
        [&] { EXPECT_EQ(value, std::numeric_limits<int>::min()); }, [&] { EXPECT_EQ(value, 0); });
}

TEST_F(job_facade, notify_logout_bkg)
{
    exercise_under(lock::job, {2, 56, record(76).u32(72, 0xA0B0C0D0), record(16), 12},
                   [&] { return facade().tarn_job_notify_logout_bkg(wide_arg); });
}

/// An operation that sends an application's name and gets a result.
struct name_operation {
    const char* name;
    long func_id;
    unsigned int (tarn_job_facade::*call)(const char*);
};

class name_only_operation : public job_test, public ::testing::WithParamInterface<name_operation> {};

TEST_P(name_only_operation, sends_31_bytes_of_the_name)
{
    for (const std::size_t length : {0U, 5U, 30U, 31U, 32U, 33U, 200U}) {
        SCOPED_TRACE(length);
        const std::string name = record(length).pattern(0, length).bytes();
        exercise_under(lock::none, {2, GetParam().func_id, record(104).text(72, name.substr(0, 31)), record(16), 12},
                       [&] { return (facade().*GetParam().call)(name.c_str()); });
    }
}

INSTANTIATE_TEST_SUITE_P(
    all, name_only_operation,
    ::testing::Values(name_operation{"check_app_stop_permission_to_change_state", 57,
                                     &tarn_job_facade::tarn_job_check_app_stop_permission_to_change_state},
                      name_operation{"notify_finish_app_state_change_judgement", 58,
                                     &tarn_job_facade::tarn_job_notify_finish_app_state_change_judgement}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(job_facade, panel_resource_response_does_nothing)
{
    facade();
    events();
    EXPECT_EQ(facade().tarn_job_panel_resource_response({}, {}, {}), 0U);
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_EQ(events(), strings{});
    EXPECT_TRUE(platform().traces.empty());
    EXPECT_TRUE(platform().reports.empty());
}

// Many threads

using namespace std::chrono_literals;

TEST_F(job_facade, nothing_unlocked_waits_for_a_start)
{
    slow_service service(8);
    facade();
    unsigned int started = 0;
    auto start = std::async(std::launch::async, [&] { return facade().tarn_job_start({}, 0, started); });
    service.wait_for_arrival();

    unsigned int value = 0;
    unsigned int generated = 0;
    TARN_JOB_GET_SCAN_DATA data;
    facade().tarn_job_cancel(job, 0);
    facade().tarn_job_cancel_bkg(job, 0);
    facade().tarn_job_get_value(job, setting, value);
    facade().tarn_job_continuous_read(job);
    facade().tarn_job_generate_jobinfo(category(8), generated);
    facade().tarn_job_get_scan_data(job, data);
    EXPECT_EQ(start.wait_for(0s), std::future_status::timeout) << "the start is still under way";

    service.let_go();
    EXPECT_EQ(start.get(), 0U);
}

TEST_F(job_facade, what_is_locked_waits_for_a_start)
{
    slow_service service(8);
    facade();
    unsigned int started = 0;
    auto start = std::async(std::launch::async, [&] { return facade().tarn_job_start({}, 0, started); });
    service.wait_for_arrival();

    auto kick = std::async(std::launch::async, [&] { return facade().tarn_job_kick(job); });
    EXPECT_EQ(kick.wait_for(50ms), std::future_status::timeout);

    service.let_go();
    EXPECT_EQ(start.get(), 0U);
    EXPECT_EQ(kick.get(), 0U);
    ASSERT_EQ(platform().requests.size(), 2U);
    EXPECT_EQ(platform().requests[1].func_id, 31);
}

TEST_F(job_facade, setters_of_many_threads_are_sent_one_at_a_time)
{
    std::atomic<int> under_way = 0;
    std::atomic<int> most = 0;
    platform().respond([&](const request&, char*, unsigned int&) {
        most = std::max<int>(most, ++under_way);
        std::this_thread::yield();
        --under_way;
        return 0L;
    });
    facade();
    constexpr unsigned int threads = 8;
    constexpr unsigned int calls = 40;
    {
        std::vector<std::jthread> setters;
        for (unsigned int i = 0; i < threads; ++i) {
            setters.emplace_back([this, i] {
                for (unsigned int call = 0; call < calls; ++call) {
                    if (call % 3 == 0) facade().tarn_job_set_value(i, setting, call);
                    if (call % 3 == 1) facade().tarn_job_set_value(i, setting, std::string(call, 'x'));
                    if (call % 3 == 2) facade().tarn_job_set_value(i, phb_setting, call, call, call);
                }
            });
        }
    }
    EXPECT_EQ(platform().requests.size(), threads * calls);
    EXPECT_EQ(most, 1);
}

}  // namespace
