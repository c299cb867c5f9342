#include "tarn_common_facade.h"

#include "unit/facade_test.h"

namespace {

using namespace testing_platform;
using norvane::tarn_common_facade;

constexpr unsigned int failed = 0x04010207;

class common_partition : public facade_test<tarn_common_facade> {
protected:
    common_partition() : facade_test(&tarn_common_facade::tarn_common_get_instance)
    {
        facade();
        platform().events.clear();
    }

    /// Creates a partition for a test of its blocks.
    void create()
    {
        ASSERT_EQ(facade().create_shared_memory(1000, part_id, users, "PARTITION"), 0U);
        platform().events.clear();
    }

    /// These calls of the platform, under the facade's lock, and nothing else.
    void expect_calls(std::vector<std::string> calls)
    {
        const std::string number = std::to_string(semaphore_number(facade().part_mutex_));
        calls.insert(calls.begin(), "lock " + number);
        calls.push_back("unlock " + number);
        EXPECT_EQ(platform().events, calls);
        EXPECT_TRUE(platform().traces.empty());
        EXPECT_TRUE(platform().reports.empty());
        platform().events.clear();
    }

    void* part_id = nullptr;
    unsigned int users = 0;
    void* block = nullptr;
};

TEST_F(common_partition, is_created_100_bytes_larger)
{
    EXPECT_EQ(facade().create_shared_memory(154000, part_id, users, "PARTITION"), 0U);
    expect_calls({"emwOSWIpcCreateMemPart(PARTITION, 154100)"});
    EXPECT_NE(part_id, nullptr);
    EXPECT_EQ(users, 1U);
}

TEST_F(common_partition, is_created_once_and_counted_each_time)
{
    create();
    void* const created = part_id;
    EXPECT_EQ(facade().create_shared_memory(1000, part_id, users, "ANOTHER"), 0U);
    expect_calls({});
    EXPECT_EQ(part_id, created);
    EXPECT_EQ(users, 2U);
}

TEST_F(common_partition, is_not_counted_when_it_cannot_be_created)
{
    platform().fail("emwOSWIpcCreateMemPart", 0x77);
    users = 5;
    EXPECT_EQ(facade().create_shared_memory(1000, part_id, users, "PARTITION"), failed);
    expect_calls({"emwOSWIpcCreateMemPart(PARTITION, 1100)"});
    EXPECT_EQ(part_id, nullptr);
    EXPECT_EQ(users, 5U);
}

TEST_F(common_partition, restarts_its_count_below_the_largest_int)
{
    create();
    const std::vector<std::pair<unsigned int, unsigned int>> counts{
        {0, 1},          {1, 2},          {0x7FFFFFFC, 0x7FFFFFFD}, {0x7FFFFFFD, 0x7FFFFFFE},
        {0x7FFFFFFE, 1}, {0x7FFFFFFF, 1}, {0xFFFFFFFE, 1},          {0xFFFFFFFF, 0}};
    for (const auto& [before, after] : counts) {
        users = before;
        EXPECT_EQ(facade().create_shared_memory(1000, part_id, users, "PARTITION"), 0U);
        EXPECT_EQ(users, after) << before;
    }
}

TEST_F(common_partition, allocates_registers_and_clears_a_block)
{
    create();
    EXPECT_EQ(facade().alloc_shared_memory(7, &block, 40, part_id), 0U);
    expect_calls(
        {"emwOSWIpcGetBlockByIdMemPart(7)", "emwOSWIpcAllocMemPart(40)", "emwOSWIpcRegisterBlockIdMemPart(7)"});
    EXPECT_EQ(block, platform().block(7).data());
    EXPECT_EQ(platform().block(7), std::string(40, '\0'));
}

TEST_F(common_partition, finds_a_block_and_clears_all_of_it)
{
    create();
    facade().alloc_shared_memory(7, &block, 40, part_id);
    for (const unsigned long size : {8UL, 40UL, 4000UL}) {
        SCOPED_TRACE(size);
        platform().events.clear();
        platform().block(7).assign(40, 'x');
        void* found = nullptr;
        EXPECT_EQ(facade().alloc_shared_memory(7, &found, size, part_id), 0U);
        expect_calls({"emwOSWIpcGetBlockByIdMemPart(7)", "emwOSWIpcGetAllocSizeMemPart"});
        EXPECT_EQ(found, block);
        EXPECT_EQ(platform().block(7), std::string(40, '\0'));
    }
}

TEST_F(common_partition, leaves_a_found_block_when_its_size_is_not_known)
{
    create();
    facade().alloc_shared_memory(7, &block, 40, part_id);
    platform().events.clear();
    platform().block(7).assign(40, 'x');
    platform().fail("emwOSWIpcGetAllocSizeMemPart", 0x77);
    EXPECT_EQ(facade().alloc_shared_memory(7, &block, 40, part_id), failed);
    expect_calls({"emwOSWIpcGetBlockByIdMemPart(7)", "emwOSWIpcGetAllocSizeMemPart"});
    EXPECT_EQ(platform().block(7), std::string(40, 'x'));
}

TEST_F(common_partition, allocates_nothing_when_blocks_cannot_be_looked_for)
{
    create();
    for (const unsigned int code : {1U, 0x20020101U, 0x20020105U, 0x20020107U, 0xFFFFFFFFU}) {
        platform().fail("emwOSWIpcGetBlockByIdMemPart", code);
        EXPECT_EQ(facade().alloc_shared_memory(7, &block, 40, part_id), failed);
        expect_calls({"emwOSWIpcGetBlockByIdMemPart(7)"});
    }
}

TEST_F(common_partition, registers_nothing_when_there_is_no_room)
{
    create();
    platform().fail("emwOSWIpcAllocMemPart", 0x77);
    EXPECT_EQ(facade().alloc_shared_memory(7, &block, 40, part_id), failed);
    expect_calls({"emwOSWIpcGetBlockByIdMemPart(7)", "emwOSWIpcAllocMemPart(40)"});
}

TEST_F(common_partition, frees_a_block_that_cannot_be_registered)
{
    create();
    platform().fail("emwOSWIpcRegisterBlockIdMemPart", 0x77);
    for (const bool free_fails : {false, true}) {
        if (free_fails) platform().fail("emwOSWIpcFreeMemPart", 0x78);
        EXPECT_EQ(facade().alloc_shared_memory(7, &block, 40, part_id), failed);
        expect_calls({"emwOSWIpcGetBlockByIdMemPart(7)", "emwOSWIpcAllocMemPart(40)",
                      "emwOSWIpcRegisterBlockIdMemPart(7)", "emwOSWIpcFreeMemPart"});
    }
    EXPECT_EQ(platform().partition_table.at(part_id).blocks.size(), 1U) << "the first was freed";
}

TEST_F(common_partition, clears_nothing_where_the_platform_gives_no_block)
{
    create();
    platform().blocks_are_null = true;
    block = &block;
    EXPECT_EQ(facade().alloc_shared_memory(7, &block, 40, part_id), 0U);
    EXPECT_EQ(block, nullptr);
    block = &block;
    EXPECT_EQ(facade().alloc_shared_memory(7, &block, 40, part_id), 0U) << "found this time";
    EXPECT_EQ(block, nullptr);
}

TEST_F(common_partition, frees_a_block)
{
    create();
    facade().alloc_shared_memory(7, &block, 40, part_id);
    platform().events.clear();
    EXPECT_EQ(facade().free_shared_memory(block, part_id), 0U);
    expect_calls({"emwOSWIpcFreeMemPart"});
    EXPECT_TRUE(platform().partition_table.at(part_id).blocks.empty());
}

TEST_F(common_partition, says_when_a_block_cannot_be_freed)
{
    create();
    platform().fail("emwOSWIpcFreeMemPart", 0x77);
    EXPECT_EQ(facade().free_shared_memory(block, part_id), failed);
    expect_calls({"emwOSWIpcFreeMemPart"});
}

TEST_F(common_partition, is_deleted_with_its_last_user)
{
    create();
    users = 2;
    void* const created = part_id;
    EXPECT_EQ(facade().delete_shared_memory(part_id, users), 0U);
    expect_calls({});
    EXPECT_EQ(users, 1U);
    EXPECT_EQ(part_id, created);

    EXPECT_EQ(facade().delete_shared_memory(part_id, users), 0U);
    expect_calls({"emwOSWIpcDeleteMemPart"});
    EXPECT_EQ(users, 0U);
    EXPECT_EQ(part_id, nullptr);
    EXPECT_TRUE(platform().partitions().empty());
}

TEST_F(common_partition, stays_when_it_cannot_be_deleted)
{
    create();
    void* const created = part_id;
    platform().fail("emwOSWIpcDeleteMemPart", 0x77);
    EXPECT_EQ(facade().delete_shared_memory(part_id, users), failed);
    expect_calls({"emwOSWIpcDeleteMemPart"});
    EXPECT_EQ(users, 0U);
    EXPECT_EQ(part_id, created);

    EXPECT_EQ(facade().create_shared_memory(1000, part_id, users, "PARTITION"), 0U);
    expect_calls({});
    EXPECT_EQ(users, 1U);
    EXPECT_EQ(part_id, created);
}

TEST_F(common_partition, stays_when_it_is_released_once_too_often)
{
    create();
    users = 0;
    EXPECT_EQ(facade().delete_shared_memory(part_id, users), 0U);
    expect_calls({});
    EXPECT_EQ(users, 0xFFFFFFFFU);
    EXPECT_NE(part_id, nullptr);
}

}  // namespace
