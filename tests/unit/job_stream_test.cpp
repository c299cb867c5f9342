// The data of jobs, in and out.

#include "unit/job_test.h"

#include <chrono>

namespace {

using namespace testing_platform;

constexpr unsigned int job = 0x11223344;

static_assert(sizeof(TARN_JOB_GET_SCAN_DATA) == 16392);
static_assert(sizeof(TARN_JOB_GET_OCR_DATA) == 24604);
static_assert(sizeof(TARN_JOB_WRITE_STREAM_DATA) == 16392);

class job_stream : public job_test {
protected:
    void generate(unsigned int kind)
    {
        platform().reply_next(record(20));
        unsigned int made = 0;
        ASSERT_EQ(facade().tarn_job_generate_jobinfo(category(kind), made), 0U);
        events();
        traced();
    }

    void prepare_stream(unsigned int for_job = job)
    {
        platform().reply_next(record(16));
        ASSERT_EQ(facade().tarn_job_direct_print_prepare(for_job, TARN_JOB_STREAM_WRITE_FILE{}), 0U);
    }

    void delete_jobinfo(unsigned int function)
    {
        platform().reply_next(record(24).u32(12, 1).u32(16, function));
        ASSERT_EQ(facade().tarn_job_delete_jobinfo(job), 0U);
    }

    /// A service that fills a block while it handles the request, with `seed`'s bytes.
    static void fill(int block_id, unsigned int seed, unsigned int result)
    {
        platform().respond([=](const request&, char* reply, unsigned int& length) {
            std::string& block = platform().block(block_id);
            block = record(block.size()).pattern(0, block.size(), seed).bytes();
            record(16).u32(12, result).bytes().copy(reply, length);
            return 0L;
        });
    }

    /// One request was sent, with the job alone, under the data lock and no other.
    void expect_sent(long func_id)
    {
        EXPECT_EQ(events(), (strings{event("lock", lock::data), "send 2/" + std::to_string(func_id),
                                     event("unlock", lock::data)}));
        ASSERT_FALSE(platform().requests.empty());
        expect_request(platform().requests.back(), {2, func_id, record(76).u32(72, 0x11223344), record(16), 12, 1});
    }
};

TEST_F(job_stream, direct_print_prepare_sends_whole_blocks)
{
    std::string a = record(300).pattern(0, 300, 2).u8(3, 0).bytes();
    std::string b = record(300).pattern(0, 300, 5).u8(1, 0).bytes();
    const record sent = record(588).u32(72, 0x11223344).text(76, a.substr(0, 256)).text(332, b.substr(0, 256));
    exercise_under(lock::none, {2, 45, sent, record(16), 12},
                   [&] { return facade().tarn_job_direct_print_prepare(job, a.data(), b.data()); });
    EXPECT_TRUE(platform().partitions().empty());
}

TEST_F(job_stream, direct_print_prepare_sends_zeros_for_null)
{
    std::string bytes = record(256).pattern(0, 256, 2).bytes();
    const auto sent = record(588).u32(72, 0x11223344);
    exercise_under(lock::none, {2, 45, sent, record(16), 12},
                   [&] { return facade().tarn_job_direct_print_prepare(job, nullptr, nullptr); });
    exercise_under(lock::none, {2, 45, record(sent).text(76, bytes), record(16), 12},
                   [&] { return facade().tarn_job_direct_print_prepare(job, bytes.data(), nullptr); });
    exercise_under(lock::none, {2, 45, record(sent).text(332, bytes), record(16), 12},
                   [&] { return facade().tarn_job_direct_print_prepare(job, nullptr, bytes.data()); });
}

TEST_F(job_stream, get_scan_data_copies_what_the_service_has_written)
{
    generate(8);
    for (const unsigned int result : {0U, 0x8badf00dU}) {
        fill(30001, result + 3, result);
        auto data = patterned<TARN_JOB_GET_SCAN_DATA>();
        EXPECT_EQ(facade().tarn_job_get_scan_data(job, data), result);
        expect_sent(49);
        EXPECT_EQ(bytes_of(data), record(16392).pattern(0, 16392, result + 3).bytes());
    }
    EXPECT_EQ(traced(), strings{});
}

TEST_F(job_stream, get_ocr_text_data_copies_what_the_service_has_written)
{
    generate(7);
    for (const unsigned int result : {0U, 0x8badf00dU}) {
        fill(40001, result + 3, result);
        auto data = patterned<TARN_JOB_GET_OCR_DATA>();
        EXPECT_EQ(facade().tarn_job_get_ocr_text_data(job, data), result);
        expect_sent(53);
        EXPECT_EQ(bytes_of(data), record(24604).pattern(0, 24604, result + 3).bytes());
    }
    EXPECT_EQ(traced(), strings{});
}

TEST_F(job_stream, get_scan_data_without_a_block_asks_and_fails)
{
    facade();
    events();
    platform().reply_with(record(16).u32(12, 0x8badf00d));
    auto data = patterned<TARN_JOB_GET_SCAN_DATA>();
    EXPECT_EQ(facade().tarn_job_get_scan_data(job, data), 0x04010001U);
    expect_sent(49);
    EXPECT_EQ(traced(), strings{"tarn_job_get_scan_data,[Error: shared_mem is null.]"});
    EXPECT_EQ(bytes_of(data), bytes_of(patterned<TARN_JOB_GET_SCAN_DATA>()));
}

TEST_F(job_stream, get_ocr_text_data_of_a_scan_without_ocr_asks_and_fails)
{
    generate(8);
    platform().reply_with(record(16));
    auto data = patterned<TARN_JOB_GET_OCR_DATA>();
    EXPECT_EQ(facade().tarn_job_get_ocr_text_data(job, data), 0x04010001U);
    expect_sent(53);
    EXPECT_EQ(traced(), strings{"tarn_job_get_ocr_text_data,[Error: shared_mem is null.]"});
    EXPECT_EQ(bytes_of(data), bytes_of(patterned<TARN_JOB_GET_OCR_DATA>()));
}

TEST_F(job_stream, write_stream_data_has_the_data_in_the_block_before_it_sends)
{
    prepare_stream();
    events();
    auto data = patterned<TARN_JOB_WRITE_STREAM_DATA>(4);
    std::string seen;
    for (const unsigned int result : {0U, 0x8badf00dU}) {
        platform().respond([&seen, result](const request&, char* reply, unsigned int& length) {
            seen = platform().block(50001);
            record(16).u32(12, result).bytes().copy(reply, length);
            return 0L;
        });
        seen.clear();
        EXPECT_EQ(facade().tarn_job_write_stream_data(job, data), result);
        expect_sent(52);
        EXPECT_EQ(seen, record(16392).pattern(0, 16392, 4).bytes());
    }
    EXPECT_EQ(bytes_of(data), bytes_of(patterned<TARN_JOB_WRITE_STREAM_DATA>(4)));
    EXPECT_EQ(traced(), strings{});
}

TEST_F(job_stream, write_stream_data_without_a_block_sends_all_the_same)
{
    facade();
    events();
    auto data = patterned<TARN_JOB_WRITE_STREAM_DATA>();
    for (const unsigned int result : {0U, 0x8badf00dU}) {
        platform().reply_with(record(16).u32(12, result));
        EXPECT_EQ(facade().tarn_job_write_stream_data(job, data), result);
        expect_sent(52);
        EXPECT_EQ(traced(), strings{"tarn_job_write_stream_data,[Error: shared_mem_stream_data_ is null.]"});
    }
}

TEST_F(job_stream, two_stream_jobs_share_one_block)
{
    prepare_stream(1);
    void* const block = facade().shared_mem_stream_data_;
    traced();
    prepare_stream(2);
    EXPECT_EQ(traced(), (strings{"create_shared_memory,[partition exist.]",
                                 "tarn_job_direct_print_prepare,[already allocated.]"}));
    EXPECT_EQ(facade().shared_mem_stream_data_, block);
}

TEST_F(job_stream, the_kinds_of_data_do_not_meet)
{
    generate(7);
    prepare_stream();
    platform().reply_with(record(16));
    auto written = patterned<TARN_JOB_WRITE_STREAM_DATA>(1);
    facade().tarn_job_write_stream_data(job, written);
    auto scanned = patterned<TARN_JOB_GET_SCAN_DATA>(2);
    facade().tarn_job_get_scan_data(job, scanned);
    auto text = patterned<TARN_JOB_GET_OCR_DATA>(3);
    facade().tarn_job_get_ocr_text_data(job, text);
    EXPECT_EQ(bytes_of(scanned), std::string(16392, '\0'));
    EXPECT_EQ(bytes_of(text), std::string(24604, '\0'));
}

TEST_F(job_stream, blocks_are_gone_with_their_job)
{
    generate(7);
    prepare_stream();
    delete_jobinfo(8);
    delete_jobinfo(4);
    traced();
    platform().reply_with(record(16));
    auto scanned = patterned<TARN_JOB_GET_SCAN_DATA>();
    auto text = patterned<TARN_JOB_GET_OCR_DATA>();
    auto written = patterned<TARN_JOB_WRITE_STREAM_DATA>();
    EXPECT_EQ(facade().tarn_job_get_scan_data(job, scanned), 0x04010001U);
    EXPECT_EQ(facade().tarn_job_get_ocr_text_data(job, text), 0x04010001U);
    EXPECT_EQ(facade().tarn_job_write_stream_data(job, written), 0U);
    EXPECT_EQ(traced(), (strings{"tarn_job_get_scan_data,[Error: shared_mem is null.]",
                                 "tarn_job_get_ocr_text_data,[Error: shared_mem is null.]",
                                 "tarn_job_write_stream_data,[Error: shared_mem_stream_data_ is null.]"}));
}

TEST_F(job_stream, an_unanswered_call_returns_the_block_as_it_is)
{
    generate(8);
    platform().block(30001)[0] = 'x';
    platform().reply_never();
    auto data = patterned<TARN_JOB_GET_SCAN_DATA>();
    EXPECT_EQ(facade().tarn_job_get_scan_data(job, data), 0U);
    EXPECT_EQ(data.bytes[0], 'x');
}

// Many threads

using namespace std::chrono_literals;

TEST_F(job_stream, a_partition_is_not_deleted_while_its_data_is_fetched)
{
    generate(8);
    slow_service service(49);
    auto data = patterned<TARN_JOB_GET_SCAN_DATA>();
    auto fetch = std::async(std::launch::async, [&] { return facade().tarn_job_get_scan_data(job, data); });
    service.wait_for_arrival();
    platform().reply_next(record(24).u32(12, 1).u32(16, 4));
    ASSERT_EQ(facade().tarn_job_delete_jobinfo(job), 0U) << "nothing is to be deleted, so nothing waits";

    platform().reply_next(record(24).u32(12, 1).u32(16, 8));
    auto deletion = std::async(std::launch::async, [&] { return facade().tarn_job_delete_jobinfo(job); });
    EXPECT_EQ(deletion.wait_for(50ms), std::future_status::timeout);
    EXPECT_EQ(facade().tarn_job_cancel(job, 0), 0U) << "a cancel waits for neither";

    service.let_go();
    deletion.get();
    fetch.get();
    EXPECT_TRUE(platform().partitions().empty());
}

TEST_F(job_stream, data_moves_while_jobs_are_deleted)
{
    std::atomic<unsigned int> kind = 0;
    for (int round = 0; round < 20; ++round) {
        generate(7);
        prepare_stream();
        platform().respond([&kind](const request& sent, char* reply, unsigned int& length) {
            if (sent.func_id == 7) record(24).u32(12, 1).u32(16, ++kind % 2 == 0 ? 4 : 8).bytes().copy(reply, length);
            return 0L;
        });
        {
            std::vector<std::jthread> threads;
            for (int i = 0; i < 2; ++i) {
                threads.emplace_back([this] {
                    auto data = patterned<TARN_JOB_GET_SCAN_DATA>();
                    const unsigned int result = facade().tarn_job_get_scan_data(job, data);
                    EXPECT_TRUE(result == 0x04010001 || (result == 0 && bytes_of(data) == std::string(16392, '\0')));
                });
                threads.emplace_back([this] {
                    auto data = patterned<TARN_JOB_GET_OCR_DATA>();
                    const unsigned int result = facade().tarn_job_get_ocr_text_data(job, data);
                    EXPECT_TRUE(result == 0x04010001 || (result == 0 && bytes_of(data) == std::string(24604, '\0')));
                });
                threads.emplace_back([this] {
                    auto data = patterned<TARN_JOB_WRITE_STREAM_DATA>();
                    EXPECT_EQ(facade().tarn_job_write_stream_data(job, data), 0U);
                });
                threads.emplace_back([this] { EXPECT_EQ(facade().tarn_job_delete_jobinfo(job), 0U); });
            }
        }
        EXPECT_TRUE(platform().partitions().empty());
    }
}

}  // namespace
