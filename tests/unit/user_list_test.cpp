#include "tarn_user_facade.h"

#include "protocol/user.h"
#include "unit/facade_test.h"

namespace {

using namespace testing_platform;
using norvane::tarn_user_facade;

constexpr unsigned int partition_failure = 0x04010403;

class user_list : public facade_test<tarn_user_facade> {
protected:
    user_list() : facade_test(&tarn_user_facade::tarn_user_get_instance)
    {
        facade();
        platform().events.clear();
    }

    unsigned int prepare(unsigned int result = 0)
    {
        unsigned int out1 = 0;
        unsigned int out2 = 0;
        platform().reply_next(record(24).u32(12, result));
        return facade().tarn_user_get_local_user_list_prepare(1, out1, out2);
    }

    unsigned int finish(unsigned int result = 0)
    {
        platform().reply_next(record(16).u32(12, result));
        return facade().tarn_user_get_local_user_list_finish(1);
    }

    /// Fetches page `page`, of which the service says that it has `count` records.
    unsigned int get(unsigned int page, unsigned int count = 1, unsigned int result = 0)
    {
        platform().reply_next(record(20).u32(12, result).u32(16, count));
        return facade().tarn_user_get_local_user_list(page, counted, list);
    }

    /// A block that is registered before the page is fetched.
    void register_block(int block_id, unsigned long size)
    {
        void* block = nullptr;
        ASSERT_EQ(emwOSWIpcAllocMemPart(facade().part_id_, &block, size), 0U);
        ASSERT_EQ(emwOSWIpcRegisterBlockIdMemPart(facade().part_id_, block, block_id), 0U);
        platform().events.clear();
    }

    /// How many blocks the partition has.
    std::size_t blocks() { return platform().partition_table.at(facade().part_id_).blocks.size(); }

    /// What happened since the last time, each `what` between the locking and the unlocking of the
    /// partition's mutex.
    std::vector<std::string> under_lock(const std::vector<std::string>& what)
    {
        const std::string mutex = std::to_string(semaphore_number(facade().part_mutex_));
        std::vector<std::string> all{"lock " + mutex};
        all.insert(all.end(), what.begin(), what.end());
        all.push_back("unlock " + mutex);
        return all;
    }

    static std::vector<std::string> sequence(std::initializer_list<std::vector<std::string>> parts)
    {
        std::vector<std::string> all;
        for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
        return all;
    }

    void expect_events(std::initializer_list<std::vector<std::string>> parts)
    {
        EXPECT_EQ(platform().events, sequence(parts));
        platform().events.clear();
    }

    /// Nothing is ever said of what fails.
    void TearDown() override
    {
        EXPECT_TRUE(platform().reports.empty());
        EXPECT_TRUE(platform().traces.empty());
        for (const auto& sent : platform().requests) EXPECT_EQ(sent.locks_held, 0);
    }

    const std::vector<std::string> create{"emwOSWIpcCreateMemPart(TARN_DATA_USER_PARTITION, 46900)"};
    unsigned int counted = 77;
    static inline TARN_USERINFO_RECORD list[50];
};

TEST_F(user_list, a_page_is_50_records_of_936_bytes)
{
    using page = norvane::protocol::user::local_user_list;
    EXPECT_EQ(page::capacity, 50U);
    EXPECT_EQ(page::element_size, 936U);
    EXPECT_EQ(page::element_type, "TARN_USERINFO_RECORD");
    EXPECT_EQ(tarn_user_facade::USER_PARTITION_SIZE, 46800U);
}

TEST_F(user_list, prepare)
{
    unsigned int out1 = 0;
    unsigned int out2 = 0;
    exercise(
        {3, 13, record(76).u32(72, 0xA1B2C3D4), record(24).u32(16, 0x01020304).u32(20, 0xF0F1F2F3), 12},
        [&] {
            out1 = out2 = 5;
            return facade().tarn_user_get_local_user_list_prepare(0xA1B2C3D4, out1, out2);
        },
        [&] {
            EXPECT_EQ(out1, 0x01020304U);
            EXPECT_EQ(out2, 0xF0F1F2F3U);
        },
        [&] {
            EXPECT_EQ(out1, 0U);
            EXPECT_EQ(out2, 0U);
        });
    EXPECT_EQ(facade().mem_flag_, 2U) << "the refusal does not count, the unanswered call does";
}

TEST_F(user_list, get)
{
    ASSERT_EQ(prepare(), 0U);
    exercise(
        {3, 14, record(76).u32(72, 0xFFFFFFF0), record(20).u32(16, 2), 12},
        [&] {
            counted = 77;
            return facade().tarn_user_get_local_user_list(0xFFFFFFF0, counted, list);
        },
        [&] { EXPECT_EQ(counted, 2U); }, [&] { EXPECT_EQ(counted, 0U); });
    EXPECT_EQ(blocks(), 0U);
}

TEST_F(user_list, finish)
{
    exercise({3, 15, record(76).u32(72, 0xA1B2C3D4), record(16), 12},
             [&] { return facade().tarn_user_get_local_user_list_finish(0xA1B2C3D4); });
}

TEST_F(user_list, holds_its_lock_around_the_partition_and_never_across_a_send)
{
    ASSERT_EQ(prepare(), 0U);
    expect_events({{"send 3/13"}, under_lock(create)});
    EXPECT_EQ(platform().partitions(),
              (std::vector<std::pair<std::string, unsigned long>>{{"TARN_DATA_USER_PARTITION", 46900UL}}));

    ASSERT_EQ(get(7), 0U);
    expect_events({under_lock({"emwOSWIpcGetBlockByIdMemPart(7)", "emwOSWIpcAllocMemPart(46800)",
                               "emwOSWIpcRegisterBlockIdMemPart(7)"}),
                   {"send 3/14"},
                   under_lock({"emwOSWIpcFreeMemPart"})});

    ASSERT_EQ(finish(), 0U);
    expect_events({{"send 3/15"}, under_lock({"emwOSWIpcDeleteMemPart"})});
    EXPECT_TRUE(platform().partitions().empty());
}

TEST_F(user_list, a_refused_prepare_creates_nothing)
{
    EXPECT_EQ(prepare(0x8badf00d), 0x8badf00dU);
    expect_events({{"send 3/13"}});
    EXPECT_EQ(facade().part_id_, nullptr);
    EXPECT_EQ(facade().mem_flag_, 0U);
}

TEST_F(user_list, a_failed_creation_replaces_the_result_and_does_not_count)
{
    unsigned int out1 = 5;
    unsigned int out2 = 5;
    platform().fail("emwOSWIpcCreateMemPart", 0x20020103, 1);
    platform().reply_next(record(24).u32(16, 8).u32(20, 9));
    EXPECT_EQ(facade().tarn_user_get_local_user_list_prepare(1, out1, out2), partition_failure);
    EXPECT_EQ(out1, 8U);
    EXPECT_EQ(out2, 9U);
    expect_events({{"send 3/13"}, under_lock(create)});
    EXPECT_EQ(facade().part_id_, nullptr);
    EXPECT_EQ(facade().mem_flag_, 0U);

    EXPECT_EQ(prepare(), 0U);
    EXPECT_EQ(facade().mem_flag_, 1U);
}

TEST_F(user_list, a_second_prepare_uses_the_partition_and_counts)
{
    ASSERT_EQ(prepare(), 0U);
    void* const made = facade().part_id_;
    platform().events.clear();
    ASSERT_EQ(prepare(), 0U);
    expect_events({{"send 3/13"}, under_lock({})});
    EXPECT_EQ(facade().part_id_, made);
    EXPECT_EQ(facade().mem_flag_, 2U);
}

TEST_F(user_list, the_count_restarts_at_one)
{
    ASSERT_EQ(prepare(), 0U);
    facade().mem_flag_ = 0x7FFFFFFD;
    ASSERT_EQ(prepare(), 0U);
    EXPECT_EQ(facade().mem_flag_, 0x7FFFFFFEU);
    ASSERT_EQ(prepare(), 0U);
    EXPECT_EQ(facade().mem_flag_, 1U);
    ASSERT_EQ(prepare(), 0U);
    EXPECT_EQ(facade().mem_flag_, 2U);
}

TEST_F(user_list, a_page_is_copied_from_a_cleared_block_whatever_the_result)
{
    ASSERT_EQ(prepare(), 0U);
    for (const unsigned int count : {0U, 1U, 2U, 49U, 50U}) {
        for (const unsigned int result : {0U, 0x8badf00dU}) {
            SCOPED_TRACE(std::to_string(count) + (result == 0 ? " success" : " refusal"));
            const std::string before = record(46800).pattern(0, 46800, 2).bytes();
            before.copy(reinterpret_cast<char*>(list), sizeof list);
            const std::string page = record(46800).pattern(0, 46800, 3).bytes();
            std::string found;
            platform().respond([&](const request&, char* reply, unsigned int& length) {
                found = platform().block(3);
                page.copy(platform().block(3).data(), page.size());
                record(20).u32(12, result).u32(16, count).bytes().copy(reply, length);
                return 0L;
            });
            EXPECT_EQ(facade().tarn_user_get_local_user_list(3, counted, list), result);
            EXPECT_EQ(counted, count);
            EXPECT_EQ(found, std::string(46800, '\0'));
            const std::size_t copied = std::size_t{count} * 936;
            EXPECT_EQ(bytes_of(list), page.substr(0, copied) + before.substr(copied));
            EXPECT_EQ(blocks(), 0U);
        }
    }
}

TEST_F(user_list, an_empty_page_needs_no_room_and_frees_its_block)
{
    ASSERT_EQ(prepare(), 0U);
    platform().reply_next(record(20));
    EXPECT_EQ(facade().tarn_user_get_local_user_list(1, counted, nullptr), 0U);
    EXPECT_EQ(counted, 0U);
    EXPECT_EQ(platform().events.at(platform().events.size() - 2), "emwOSWIpcFreeMemPart");
    EXPECT_EQ(blocks(), 0U);
}

TEST_F(user_list, the_page_number_is_the_block_id)
{
    ASSERT_EQ(prepare(), 0U);
    for (const auto& [page, block_id] :
         {std::pair{0U, "0"}, {2147483647U, "2147483647"}, {0x80000000U, "-2147483648"}, {0xFFFFFFFFU, "-1"}}) {
        platform().events.clear();
        ASSERT_EQ(get(page), 0U);
        EXPECT_EQ(platform().events.at(1), std::string("emwOSWIpcGetBlockByIdMemPart(") + block_id + ")");
        EXPECT_EQ(platform().events.at(3), std::string("emwOSWIpcRegisterBlockIdMemPart(") + block_id + ")");
        EXPECT_EQ(platform().requests.back().bytes, record(76).u32(72, page).bytes());
    }
}

TEST_F(user_list, a_registered_block_is_used_and_cleared_over_its_own_size)
{
    ASSERT_EQ(prepare(), 0U);
    for (const unsigned long size : {46800UL, 46900UL, 936UL}) {
        SCOPED_TRACE(size);
        register_block(4, size);
        std::string found;
        platform().respond([&](const request&, char* reply, unsigned int& length) {
            found = platform().block(4);
            record(20).u32(16, 1).bytes().copy(reply, length);
            return 0L;
        });
        EXPECT_EQ(facade().tarn_user_get_local_user_list(4, counted, list), 0U);
        EXPECT_EQ(found, std::string(size, '\0'));
        expect_events({under_lock({"emwOSWIpcGetBlockByIdMemPart(4)", "emwOSWIpcGetAllocSizeMemPart"}),
                       {"send 3/14"},
                       under_lock({"emwOSWIpcFreeMemPart"})});
    }
}

TEST_F(user_list, a_page_whose_block_was_not_freed_finds_it_again)
{
    ASSERT_EQ(prepare(), 0U);
    platform().fail("emwOSWIpcFreeMemPart", 0x20020105, 1);
    ASSERT_EQ(get(4), partition_failure);
    platform().events.clear();
    EXPECT_EQ(get(4), 0U);
    EXPECT_EQ(platform().events.at(2), "emwOSWIpcGetAllocSizeMemPart");
    EXPECT_EQ(blocks(), 0U);
}

/// The steps of taking a block, each failing once: nothing is sent, and the count is left alone.
TEST_F(user_list, a_page_without_a_block_sends_nothing)
{
    struct failing_step {
        const char* platform_call;
        unsigned int code;
        std::vector<std::string> steps;
    };
    const std::string find = "emwOSWIpcGetBlockByIdMemPart(4)";
    const std::string allocate = "emwOSWIpcAllocMemPart(46800)";
    const std::string name = "emwOSWIpcRegisterBlockIdMemPart(4)";
    ASSERT_EQ(prepare(), 0U);
    for (const auto& [platform_call, code, steps] : std::vector<failing_step>{
             {"emwOSWIpcGetBlockByIdMemPart", 0x20020105, {find}},
             {"emwOSWIpcGetBlockByIdMemPart", 0x20020107, {find}},
             {"emwOSWIpcGetBlockByIdMemPart", 1, {find}},
             {"emwOSWIpcAllocMemPart", 0x20020103, {find, allocate}},
             {"emwOSWIpcAllocMemPart", 0x20020106, {find, allocate}},
             {"emwOSWIpcRegisterBlockIdMemPart", 0x20020104, {find, allocate, name, "emwOSWIpcFreeMemPart"}}}) {
        SCOPED_TRACE(platform_call);
        platform().requests.clear();
        platform().events.clear();
        platform().fail(platform_call, code, 1);
        EXPECT_EQ(facade().tarn_user_get_local_user_list(4, counted, list), partition_failure);
        EXPECT_TRUE(platform().requests.empty());
        EXPECT_EQ(counted, 77U);
        expect_events({under_lock(steps)});
        EXPECT_EQ(blocks(), 0U);
    }
}

TEST_F(user_list, a_block_that_can_neither_be_registered_nor_freed_is_one_failure)
{
    ASSERT_EQ(prepare(), 0U);
    platform().fail("emwOSWIpcRegisterBlockIdMemPart", 0x20020104, 1);
    platform().fail("emwOSWIpcFreeMemPart", 0x20020105, 1);
    platform().requests.clear();
    EXPECT_EQ(facade().tarn_user_get_local_user_list(4, counted, list), partition_failure);
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_EQ(counted, 77U);
}

TEST_F(user_list, a_registered_block_of_unknown_size_is_not_used)
{
    ASSERT_EQ(prepare(), 0U);
    register_block(4, 46800);
    platform().fail("emwOSWIpcGetAllocSizeMemPart", 0x20020105, 1);
    platform().requests.clear();
    EXPECT_EQ(facade().tarn_user_get_local_user_list(4, counted, list), partition_failure);
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_EQ(counted, 77U);
    EXPECT_EQ(platform().block(4), std::string(46800, '\xee'));
    expect_events({under_lock({"emwOSWIpcGetBlockByIdMemPart(4)", "emwOSWIpcGetAllocSizeMemPart"})});
}

TEST_F(user_list, without_a_prepare_there_is_no_block)
{
    EXPECT_EQ(facade().tarn_user_get_local_user_list(4, counted, list), partition_failure);
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_EQ(counted, 77U);
}

TEST_F(user_list, records_without_a_block_are_a_failure_and_free_nothing)
{
    ASSERT_EQ(prepare(), 0U);
    // The platform finds the block, and leaves its address null.
    platform().fail("emwOSWIpcGetBlockByIdMemPart", 0);
    platform().fail("emwOSWIpcGetAllocSizeMemPart", 0);
    platform().events.clear();
    EXPECT_EQ(get(4, 3), partition_failure);
    EXPECT_EQ(counted, 3U);
    expect_events({under_lock({"emwOSWIpcGetBlockByIdMemPart(4)", "emwOSWIpcGetAllocSizeMemPart"}), {"send 3/14"}});

    EXPECT_EQ(get(4, 0, 0x8badf00d), 0x8badf00dU);
    EXPECT_EQ(counted, 0U);
    EXPECT_EQ(platform().events.at(platform().events.size() - 2), "emwOSWIpcFreeMemPart");
}

TEST_F(user_list, a_block_that_is_not_freed_replaces_the_result_after_the_copy)
{
    ASSERT_EQ(prepare(), 0U);
    for (const unsigned int result : {0U, 0x8badf00dU}) {
        list[0] = patterned<TARN_USERINFO_RECORD>(2);
        counted = 77;
        platform().fail("emwOSWIpcFreeMemPart", 0x20020105, 1);
        EXPECT_EQ(get(4, 1, result), partition_failure);
        EXPECT_EQ(counted, 1U);
        EXPECT_EQ(bytes_of(list[0]), std::string(936, '\0'));
    }
}

TEST_F(user_list, finish_deletes_whatever_the_service_says)
{
    ASSERT_EQ(prepare(), 0U);
    platform().events.clear();
    EXPECT_EQ(finish(0x8badf00d), 0x8badf00dU);
    expect_events({{"send 3/15"}, under_lock({"emwOSWIpcDeleteMemPart"})});
    EXPECT_EQ(facade().part_id_, nullptr);
    EXPECT_EQ(facade().mem_flag_, 0U);
    EXPECT_TRUE(platform().partitions().empty());
}

TEST_F(user_list, finish_without_a_prepare_deletes_nothing)
{
    for (const unsigned int result : {0U, 0x8badf00dU}) {
        EXPECT_EQ(finish(result), result);
        expect_events({{"send 3/15"}, under_lock({})});
        EXPECT_EQ(facade().mem_flag_, 0U);
    }
}

TEST_F(user_list, a_failed_deletion_replaces_the_result_and_changes_nothing)
{
    ASSERT_EQ(prepare(), 0U);
    void* const made = facade().part_id_;
    for (const unsigned int result : {0U, 0x8badf00dU}) {
        platform().fail("emwOSWIpcDeleteMemPart", 0x20020105, 1);
        EXPECT_EQ(finish(result), partition_failure);
        EXPECT_EQ(facade().part_id_, made);
        EXPECT_EQ(facade().mem_flag_, 1U);
    }
    EXPECT_EQ(finish(), 0U);
    EXPECT_EQ(facade().part_id_, nullptr);
    EXPECT_EQ(facade().mem_flag_, 0U);
}

TEST_F(user_list, the_first_finish_deletes_and_the_count_falls_by_one)
{
    ASSERT_EQ(prepare(), 0U);
    ASSERT_EQ(prepare(), 0U);
    EXPECT_EQ(finish(), 0U);
    EXPECT_EQ(facade().part_id_, nullptr);
    EXPECT_EQ(facade().mem_flag_, 1U);
    EXPECT_TRUE(platform().partitions().empty());

    platform().events.clear();
    EXPECT_EQ(finish(), 0x04010403U) << "the partition is gone, the count is not";
    expect_events({{"send 3/15"}, under_lock({"emwOSWIpcDeleteMemPart"})});
    EXPECT_EQ(facade().part_id_, nullptr);
    EXPECT_EQ(facade().mem_flag_, 1U);

    ASSERT_EQ(prepare(), 0U);
    expect_events({{"send 3/13"}, under_lock(create)});
    EXPECT_NE(facade().part_id_, nullptr);
    EXPECT_EQ(facade().mem_flag_, 2U);
}

TEST_F(user_list, partition_members_take_any_size)
{
    void* block = nullptr;
    EXPECT_EQ(facade().create_shared_memory(300), 0U);
    EXPECT_EQ(facade().alloc_shared_memory(-3, &block, 200), 0U);
    EXPECT_EQ(platform().block(-3), std::string(200, '\0'));
    EXPECT_EQ(block, platform().block(-3).data());
    EXPECT_EQ(facade().free_shared_memory(block), 0U);
    EXPECT_EQ(facade().delete_shared_memory(), 0U);
    expect_events({under_lock({"emwOSWIpcCreateMemPart(TARN_DATA_USER_PARTITION, 400)"}),
                   under_lock({"emwOSWIpcGetBlockByIdMemPart(-3)", "emwOSWIpcAllocMemPart(200)",
                               "emwOSWIpcRegisterBlockIdMemPart(-3)"}),
                   under_lock({"emwOSWIpcFreeMemPart"}), under_lock({"emwOSWIpcDeleteMemPart"})});
}

TEST_F(user_list, an_open_partition_outlives_the_facade)
{
    ASSERT_EQ(prepare(), 0U);
    platform().events.clear();
    delete tarn_user_facade::s_the_instance_;
    tarn_user_facade::s_the_instance_ = nullptr;
    EXPECT_TRUE(platform().events.empty());
    EXPECT_EQ(platform().partitions().size(), 1U);
}

}  // namespace
