// The records of jobs, and the partitions that come and go with them.

#include "unit/job_test.h"

#include <functional>

namespace {

using namespace testing_platform;

constexpr unsigned int job = 0x11223344;
constexpr unsigned int refused = 0x20020199;

strings operator+(strings first, const strings& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class job_partition : public job_test {
protected:
    /// What creating a partition does, where there is none.
    strings creates(const std::string& name_and_size)
    {
        return {event("lock", lock::data), "emwOSWIpcCreateMemPart(" + name_and_size + ")",
                event("unlock", lock::data)};
    }
    /// What it does where there is one.
    strings finds() { return {event("lock", lock::data), event("unlock", lock::data)}; }

    static strings allocates(const std::string& block_id, const std::string& size)
    {
        return {"emwOSWIpcGetBlockByIdMemPart(" + block_id + ")", "emwOSWIpcAllocMemPart(" + size + ")",
                "emwOSWIpcRegisterBlockIdMemPart(" + block_id + ")"};
    }

    strings deletes() { return {event("lock", lock::data), "emwOSWIpcDeleteMemPart", event("unlock", lock::data)}; }

    /// Deletes the record of a job, and has the service answer with this flag, function and result.
    unsigned int delete_jobinfo(unsigned int flag, unsigned int function, unsigned int result = 0)
    {
        platform().reply_next(record(24).u32(12, flag).u32(16, function).u32(20, result));
        return facade().tarn_job_delete_jobinfo(job);
    }

    /// Makes all partitions and blocks, and forgets how.
    void make_everything()
    {
        platform().reply_next(record(20));
        platform().reply_next(record(16));
        unsigned int made = 0;
        ASSERT_EQ(facade().tarn_job_generate_jobinfo(category(7), made), 0U);
        ASSERT_EQ(facade().tarn_job_direct_print_prepare(job, TARN_JOB_STREAM_WRITE_FILE{}), 0U);
        ASSERT_EQ(platform().partitions().size(), 3U);
        events();
        traced();
    }
};

// What is sent

TEST_F(job_partition, generate_jobinfo_sends_the_category)
{
    unsigned int made = 0;
    exercise_under(
        lock::none, {2, 6, record(76).u32(72, 0x41424344), record(20).u32(12, 0xCAFEF00D), 16},
        [&] {
            made = 0x55;
            return facade().tarn_job_generate_jobinfo(category(0x41424344), made);
        },
        [&] { EXPECT_EQ(made, 0xCAFEF00DU); }, [&] { EXPECT_EQ(made, 0U); });
    EXPECT_TRUE(platform().partitions().empty());
}

TEST_F(job_partition, generate_jobinfo_bkg_sends_the_category_and_the_argument)
{
    unsigned int made = 0;
    exercise_under(
        lock::none, {2, 54, record(80).u32(72, 0x41424344).u32(76, 0xA0B0C0D0), record(20).u32(12, 0xCAFEF00D), 16},
        [&] {
            made = 0x55;
            return facade().tarn_job_generate_jobinfo_bkg(category(0x41424344), 0xA0B0C0D0, made);
        },
        [&] { EXPECT_EQ(made, 0xCAFEF00DU); }, [&] { EXPECT_EQ(made, 0U); });
    EXPECT_TRUE(platform().partitions().empty());
}

TEST_F(job_partition, delete_jobinfo_sends_the_job)
{
    exercise_under(lock::job, {2, 7, record(76).u32(72, 0x11223344), record(24), 20},
                   [&] { return facade().tarn_job_delete_jobinfo(job); });
}

TEST_F(job_partition, direct_print_prepare_sends_the_file)
{
    platform().fail("emwOSWIpcCreateMemPart", refused);
    const record sent = record(80).u32(72, 0x11223344).u32(76, 0x51525354);
    platform().reply_with(record(16).u32(12, 0x1234));
    EXPECT_EQ(facade().tarn_job_direct_print_prepare(job, static_cast<TARN_JOB_STREAM_WRITE_FILE>(0x51525354)),
              0x1234U);
    ASSERT_EQ(platform().requests.size(), 1U);
    expect_request(platform().requests.front(), {2, 51, sent, record(16), 12});
}

// The three operations that make partitions

/// An operation that makes partitions ready, and what it makes ready.
struct maker {
    const char* name;
    const char* operation;
    const char* send;
    /// The partition that the operation makes ready, for a category that makes two the second.
    const char* partition;
    unsigned long partition_size;
    unsigned long block_size;
    void* norvane::tarn_job_facade::*part_id;
    void* norvane::tarn_job_facade::*block;
    /// The operation with a service that agrees.
    unsigned int (*call)(norvane::tarn_job_facade&);
    int block_id;
    /// A failed creation is traced by the operation itself.
    bool traces_failed_creation;
    /// The scan partition comes first.
    bool after_scan;
};

template <unsigned int Category>
unsigned int generate(norvane::tarn_job_facade& facade)
{
    platform().reply_next(record(20).u32(12, 0xCAFEF00D));
    unsigned int made = 0x55;
    const unsigned int result = facade.tarn_job_generate_jobinfo(category(Category), made);
    EXPECT_EQ(made, 0xCAFEF00DU);
    return result;
}

template <unsigned int Category>
unsigned int generate_bkg(norvane::tarn_job_facade& facade)
{
    platform().reply_next(record(20).u32(12, 0xCAFEF00D));
    unsigned int made = 0x55;
    const unsigned int result = facade.tarn_job_generate_jobinfo_bkg(category(Category), 0, made);
    EXPECT_EQ(made, 0xCAFEF00DU);
    return result;
}

unsigned int prepare_stream(norvane::tarn_job_facade& facade)
{
    platform().reply_next(record(16));
    return facade.tarn_job_direct_print_prepare(job, TARN_JOB_STREAM_WRITE_FILE{});
}

using norvane::tarn_job_facade;

const maker makers[] = {
    {"generate_scan", "tarn_job_generate_jobinfo", "send 2/6", "TARN_DATA_JOB_PARTITION", 16492, 16392,
     &tarn_job_facade::job_part_id_, &tarn_job_facade::shared_mem_scan_data_, &generate<8>, 30001, false, false},
    {"generate_scan_with_ocr", "tarn_job_generate_jobinfo", "send 2/6", "TARN_DATA_JOB_OCR_PARTITION", 24704, 24604,
     &tarn_job_facade::job_ocr_part_id_, &tarn_job_facade::shared_mem_ocr_data_, &generate<7>, 40001, true, true},
    {"generate_bkg_scan", "tarn_job_generate_jobinfo_bkg", "send 2/54", "TARN_DATA_JOB_PARTITION", 16492, 16392,
     &tarn_job_facade::job_part_id_, &tarn_job_facade::shared_mem_scan_data_, &generate_bkg<8>, 30001, false, false},
    {"generate_bkg_scan_with_ocr", "tarn_job_generate_jobinfo_bkg", "send 2/54", "TARN_DATA_JOB_OCR_PARTITION", 24704,
     24604, &tarn_job_facade::job_ocr_part_id_, &tarn_job_facade::shared_mem_ocr_data_, &generate_bkg<7>, 40001, true,
     true},
    {"prepare_stream", "tarn_job_direct_print_prepare", "send 2/51", "TARN_DATA_JOB_STM_PARTITION", 16492, 16392,
     &tarn_job_facade::job_stm_part_id_, &tarn_job_facade::shared_mem_stream_data_, &prepare_stream, 50001, true,
     false},
};

/// Each test runs for each operation. Where an operation makes two partitions ready, the first of them is
/// there already, so that what the test sees is the second.
class job_maker : public job_partition, public ::testing::WithParamInterface<maker> {
protected:
    job_maker()
    {
        if (tested().after_scan) generate<8>(facade());
        facade();
        events();
        traced();
    }

    static const maker& tested() { return GetParam(); }
    unsigned int call() { return tested().call(facade()); }
    void*& part_id() { return facade().*tested().part_id; }
    void*& block() { return facade().*tested().block; }

    /// What an operation does and traces before it comes to its last partition.
    strings events_before()
    {
        const strings sends{tested().send};
        return tested().after_scan ? sends + finds() : sends;
    }
    static strings traces_before()
    {
        if (!tested().after_scan) return {};
        return {"create_shared_memory,[partition exist.]", says("[already allocated.]")};
    }
    static std::string says(const std::string& text) { return std::string(tested().operation) + "," + text; }
    static strings allocates()
    {
        return job_partition::allocates(std::to_string(tested().block_id), std::to_string(tested().block_size));
    }
    strings creates()
    {
        return job_partition::creates(std::string(tested().partition) + ", " + std::to_string(tested().partition_size));
    }
    static std::string looks_up() { return allocates().front(); }

    /// The call fails for want of a block.
    void expect_no_block(const strings& happened, const strings& said)
    {
        EXPECT_EQ(call(), 0x04010001U);
        EXPECT_EQ(events(), events_before() + happened);
        EXPECT_EQ(traced(), traces_before() + said + strings{says("[Error: alloc_shared_memory(),rc=0x04010001]")});
        EXPECT_EQ(block(), nullptr);
        EXPECT_NE(part_id(), nullptr) << "the partition stays";
    }
};

INSTANTIATE_TEST_SUITE_P(all, job_maker, ::testing::ValuesIn(makers),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(job_maker, makes_the_partition_and_its_block)
{
    const auto before = platform().partitions();
    EXPECT_EQ(call(), 0U);
    EXPECT_EQ(events(), events_before() + creates() + allocates());
    EXPECT_EQ(traced(), traces_before());

    auto after = before;
    after.emplace_back(tested().partition, tested().partition_size);
    EXPECT_EQ(platform().partitions(), after);
    EXPECT_NE(part_id(), nullptr);
    ASSERT_NE(block(), nullptr);
    const std::string& made = platform().block(tested().block_id);
    EXPECT_EQ(block(), made.data());
    EXPECT_EQ(made, std::string(tested().block_size, '\0'));
}

TEST_P(job_maker, uses_again_what_is_there)
{
    call();
    void* const first = block();
    events();
    traced();

    EXPECT_EQ(call(), 0U);
    EXPECT_EQ(events(), events_before() + finds());
    EXPECT_EQ(traced(),
              (traces_before() + strings{"create_shared_memory,[partition exist.]", says("[already allocated.]")}));
    EXPECT_EQ(block(), first);
}

TEST_P(job_maker, keeps_the_contents_of_a_block_that_is_registered)
{
    call();
    void* const first = block();
    const std::string contents = record(tested().block_size).pattern(0, tested().block_size).bytes();
    platform().block(tested().block_id) = contents;
    block() = nullptr;
    events();
    traced();

    EXPECT_EQ(call(), 0U);
    EXPECT_EQ(events(), (events_before() + finds() + strings{looks_up(), "emwOSWIpcGetAllocSizeMemPart"}));
    EXPECT_EQ(traced(), traces_before() + strings{"create_shared_memory,[partition exist.]"});
    EXPECT_EQ(block(), first);
    EXPECT_EQ(platform().block(tested().block_id), contents);
}

TEST_P(job_maker, fails_without_a_partition)
{
    platform().fail("emwOSWIpcCreateMemPart", refused);
    EXPECT_EQ(call(), 0x04010001U);
    EXPECT_EQ(events(), events_before() + creates());
    strings said = traces_before() + strings{"create_shared_memory,[Error: emwOSWIpcCreateMemPart(),ret=0x20020199]"};
    if (tested().traces_failed_creation) said.push_back(says("[Error:ret=0x04010001]"));
    EXPECT_EQ(traced(), said);
    EXPECT_EQ(part_id(), nullptr);
    EXPECT_EQ(block(), nullptr);
}

TEST_P(job_maker, fails_when_the_block_cannot_be_looked_up)
{
    platform().fail("emwOSWIpcGetBlockByIdMemPart", refused);
    expect_no_block(creates() + strings{looks_up()},
                    {"alloc_shared_memory,[Error: emwOSWIpcGetBlockByIdMemPart(),ret=0x20020199]"});
}

TEST_P(job_maker, fails_when_the_block_cannot_be_allocated)
{
    platform().fail("emwOSWIpcAllocMemPart", refused);
    strings allocation = allocates();
    allocation.pop_back();
    expect_no_block(creates() + allocation, {"alloc_shared_memory,[Error: emwOSWIpcAllocMemPart(),ret=0x20020199]"});
}

TEST_P(job_maker, gives_back_a_block_that_cannot_be_registered)
{
    platform().fail("emwOSWIpcRegisterBlockIdMemPart", refused);
    expect_no_block(creates() + allocates() + strings{"emwOSWIpcFreeMemPart"},
                    {"alloc_shared_memory,[Error: emwOSWIpcRegisterBlockIdMemPart(),ret=0x20020199]"});
    EXPECT_TRUE(platform().partition_table.at(part_id()).blocks.empty());
}

TEST_P(job_maker, traces_that_a_block_could_not_be_given_back)
{
    platform().fail("emwOSWIpcRegisterBlockIdMemPart", refused);
    platform().fail("emwOSWIpcFreeMemPart", 0x2002019A);
    expect_no_block(creates() + allocates() + strings{"emwOSWIpcFreeMemPart"},
                    {"alloc_shared_memory,[Error: emwOSWIpcRegisterBlockIdMemPart(),ret=0x20020199]",
                     "alloc_shared_memory,[Error: emwOSWIpcFreeMemPart(),ret=0x2002019a]"});
}

TEST_P(job_maker, fails_when_a_registered_block_has_no_size)
{
    call();
    block() = nullptr;
    events();
    traced();
    platform().fail("emwOSWIpcGetAllocSizeMemPart", refused);
    expect_no_block(finds() + strings{looks_up(), "emwOSWIpcGetAllocSizeMemPart"},
                    {"create_shared_memory,[partition exist.]",
                     "alloc_shared_memory,[Error: emwOSWIpcGetAllocSizeMemPart(),ret=0x20020199]"});
}

TEST_P(job_maker, tries_again_for_the_block_of_a_partition_that_is_there)
{
    platform().fail("emwOSWIpcAllocMemPart", refused, 1);
    EXPECT_EQ(call(), 0x04010001U);
    events();
    traced();

    EXPECT_EQ(call(), 0U);
    EXPECT_EQ(events(), events_before() + finds() + allocates());
    EXPECT_EQ(traced(), traces_before() + strings{"create_shared_memory,[partition exist.]"});
    EXPECT_EQ(block(), platform().block(tested().block_id).data());
}

// Categories

TEST_F(job_partition, generate_of_another_category_makes_no_partition)
{
    for (const unsigned int other : {0U, 1U, 4U, 5U, 6U, 9U, 0x107U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(other);
        platform().reply_with(record(20).u32(12, 77));
        unsigned int made = 0;
        EXPECT_EQ(facade().tarn_job_generate_jobinfo(category(other), made), 0U);
        EXPECT_EQ(made, 77U);
        EXPECT_EQ(facade().tarn_job_generate_jobinfo_bkg(category(other), 0, made), 0U);
    }
    EXPECT_TRUE(platform().partitions().empty());
    EXPECT_EQ(facade().shared_mem_scan_data_, nullptr);
    EXPECT_EQ(traced(), strings{});
}

TEST_F(job_partition, generate_that_the_service_refuses_makes_no_partition)
{
    for (const unsigned int wanted : {7U, 8U}) {
        SCOPED_TRACE(wanted);
        platform().reply_with(record(20).u32(12, 77).u32(16, 0x8badf00d));
        unsigned int made = 0;
        EXPECT_EQ(facade().tarn_job_generate_jobinfo(category(wanted), made), 0x8badf00dU);
        EXPECT_EQ(made, 77U);
        made = 0;
        EXPECT_EQ(facade().tarn_job_generate_jobinfo_bkg(category(wanted), 0, made), 0x8badf00dU);
        EXPECT_EQ(made, 77U);
    }
    platform().reply_with(record(16).u32(12, 0x8badf00d));
    EXPECT_EQ(facade().tarn_job_direct_print_prepare(job, TARN_JOB_STREAM_WRITE_FILE{}), 0x8badf00dU);
    EXPECT_TRUE(platform().partitions().empty());
    EXPECT_EQ(traced(), strings{});
}

TEST_F(job_partition, generate_of_a_scan_makes_one_partition)
{
    EXPECT_EQ(generate<8>(facade()), 0U);
    EXPECT_EQ(platform().partitions(),
              (std::vector<std::pair<std::string, unsigned long>>{{"TARN_DATA_JOB_PARTITION", 16492}}));
    EXPECT_EQ(facade().job_ocr_part_id_, nullptr);
    EXPECT_EQ(facade().shared_mem_ocr_data_, nullptr);
}

TEST_F(job_partition, generate_of_a_scan_with_ocr_makes_two)
{
    facade();
    for (unsigned int (*const operation)(tarn_job_facade&) : {&generate<7>, &generate_bkg<7>}) {
        events();
        EXPECT_EQ(operation(facade()), 0U);
        const std::string send = operation == &generate<7> ? "send 2/6" : "send 2/54";
        EXPECT_EQ(events(), strings{send} + creates("TARN_DATA_JOB_PARTITION, 16492") + allocates("30001", "16392") +
                                creates("TARN_DATA_JOB_OCR_PARTITION, 24704") + allocates("40001", "24604"));
        EXPECT_EQ(platform().partitions(),
                  (std::vector<std::pair<std::string, unsigned long>>{{"TARN_DATA_JOB_PARTITION", 16492},
                                                                      {"TARN_DATA_JOB_OCR_PARTITION", 24704}}));
        delete_jobinfo(1, 7);
    }
    EXPECT_EQ(traced(), strings{});
}

TEST_F(job_partition, generate_goes_on_to_the_text_without_a_scan_partition)
{
    platform().fail("emwOSWIpcCreateMemPart", refused, 1);
    facade();
    events();
    EXPECT_EQ(generate<7>(facade()), 0U) << "the result is that of the last partition";
    EXPECT_EQ(events(), strings{"send 2/6"} + creates("TARN_DATA_JOB_PARTITION, 16492") +
                            creates("TARN_DATA_JOB_OCR_PARTITION, 24704") + allocates("40001", "24604"));
    EXPECT_EQ(traced(), strings{"create_shared_memory,[Error: emwOSWIpcCreateMemPart(),ret=0x20020199]"});
    EXPECT_EQ(facade().job_part_id_, nullptr);
    EXPECT_EQ(facade().shared_mem_scan_data_, nullptr);
    EXPECT_NE(facade().shared_mem_ocr_data_, nullptr);
}

TEST_F(job_partition, generate_without_either_partition_traces_the_second)
{
    for (const std::string operation : {"tarn_job_generate_jobinfo", "tarn_job_generate_jobinfo_bkg"}) {
        platform().fail("emwOSWIpcCreateMemPart", refused);
        const bool background = operation.ends_with("_bkg");
        EXPECT_EQ(background ? generate_bkg<7>(facade()) : generate<7>(facade()), 0x04010001U);
        EXPECT_EQ(traced(), (strings{"create_shared_memory,[Error: emwOSWIpcCreateMemPart(),ret=0x20020199]",
                                     "create_shared_memory,[Error: emwOSWIpcCreateMemPart(),ret=0x20020199]",
                                     operation + ",[Error:ret=0x04010001]"}));
    }
}

TEST_F(job_partition, generate_stops_without_a_scan_block)
{
    platform().fail("emwOSWIpcAllocMemPart", refused, 1);
    facade();
    events();
    EXPECT_EQ(generate<7>(facade()), 0x04010001U);
    EXPECT_EQ(events(), (strings{"send 2/6"} + creates("TARN_DATA_JOB_PARTITION, 16492") +
                         strings{"emwOSWIpcGetBlockByIdMemPart(30001)", "emwOSWIpcAllocMemPart(16392)"}));
    EXPECT_EQ(traced(), (strings{"alloc_shared_memory,[Error: emwOSWIpcAllocMemPart(),ret=0x20020199]",
                                 "tarn_job_generate_jobinfo,[Error: alloc_shared_memory(),rc=0x04010001]"}));
    EXPECT_EQ(facade().job_ocr_part_id_, nullptr);
    EXPECT_EQ(facade().shared_mem_ocr_data_, nullptr);
}

// Deleting

TEST_F(job_partition, delete_of_memory_that_is_not_released_changes_nothing)
{
    make_everything();
    for (const unsigned int flag : {0U, 2U, 0x101U, 0xFFFFFFFFU}) {
        for (const unsigned int function : {4U, 7U, 8U}) {
            EXPECT_EQ(delete_jobinfo(flag, function), 0U);
            EXPECT_EQ(delete_jobinfo(flag, function, 0x8badf00d), 0x8badf00dU);
        }
    }
    EXPECT_EQ(platform().partitions().size(), 3U);
    EXPECT_NE(facade().shared_mem_scan_data_, nullptr);
    EXPECT_NE(facade().shared_mem_ocr_data_, nullptr);
    EXPECT_NE(facade().shared_mem_stream_data_, nullptr);
    EXPECT_EQ(traced(), strings{});
}

TEST_F(job_partition, delete_of_a_scan_deletes_both_scan_partitions)
{
    for (const unsigned int function : {7U, 8U}) {
        SCOPED_TRACE(function);
        make_everything();
        EXPECT_EQ(delete_jobinfo(1, function), 0U);
        EXPECT_EQ(events(), strings({event("lock", lock::job), "send 2/7"}) + deletes() + deletes() +
                                strings{event("unlock", lock::job)});
        EXPECT_EQ(platform().partitions(),
                  (std::vector<std::pair<std::string, unsigned long>>{{"TARN_DATA_JOB_STM_PARTITION", 16492}}));
        EXPECT_EQ(facade().job_part_id_, nullptr);
        EXPECT_EQ(facade().job_ocr_part_id_, nullptr);
        EXPECT_EQ(facade().shared_mem_scan_data_, nullptr);
        EXPECT_EQ(facade().shared_mem_ocr_data_, nullptr);
        EXPECT_NE(facade().job_stm_part_id_, nullptr);
        EXPECT_NE(facade().shared_mem_stream_data_, nullptr);
        EXPECT_EQ(traced(), strings{});
        delete_jobinfo(1, 4);
    }
}

TEST_F(job_partition, delete_of_a_stream_deletes_the_stream_partition)
{
    make_everything();
    EXPECT_EQ(delete_jobinfo(1, 4), 0U);
    EXPECT_EQ(events(),
              strings({event("lock", lock::job), "send 2/7"}) + deletes() + strings{event("unlock", lock::job)});
    EXPECT_EQ(platform().partitions(),
              (std::vector<std::pair<std::string, unsigned long>>{{"TARN_DATA_JOB_PARTITION", 16492},
                                                                  {"TARN_DATA_JOB_OCR_PARTITION", 24704}}));
    EXPECT_EQ(facade().job_stm_part_id_, nullptr);
    EXPECT_EQ(facade().shared_mem_stream_data_, nullptr);
    EXPECT_NE(facade().shared_mem_scan_data_, nullptr);
    EXPECT_NE(facade().shared_mem_ocr_data_, nullptr);
    EXPECT_EQ(traced(), strings{});
}

TEST_F(job_partition, delete_of_any_other_job_deletes_nothing)
{
    make_everything();
    for (const unsigned int function : {0U, 1U, 3U, 5U, 6U, 9U, 0x104U, 0xFFFFFFFFU}) {
        EXPECT_EQ(delete_jobinfo(1, function), 0U);
        EXPECT_EQ(delete_jobinfo(1, function, 0x8badf00d), 0x8badf00dU);
    }
    EXPECT_EQ(platform().partitions().size(), 3U);
    EXPECT_NE(facade().shared_mem_scan_data_, nullptr);
    EXPECT_NE(facade().shared_mem_ocr_data_, nullptr);
    EXPECT_NE(facade().shared_mem_stream_data_, nullptr);
    EXPECT_EQ(traced(), strings{});
}

TEST_F(job_partition, delete_of_a_scan_without_ocr_deletes_the_one_partition_there_is)
{
    for (const unsigned int function : {7U, 8U}) {
        generate<8>(facade());
        events();
        EXPECT_EQ(delete_jobinfo(1, function), 0U);
        EXPECT_EQ(events(),
                  strings({event("lock", lock::job), "send 2/7"}) + deletes() + strings{event("unlock", lock::job)});
        EXPECT_TRUE(platform().partitions().empty());
    }
}

TEST_F(job_partition, delete_of_a_text_partition_that_is_alone)
{
    platform().fail("emwOSWIpcCreateMemPart", refused, 1);
    generate<7>(facade());
    EXPECT_EQ(delete_jobinfo(1, 7, 0x8badf00d), 0U);
    EXPECT_TRUE(platform().partitions().empty());
    EXPECT_EQ(facade().job_ocr_part_id_, nullptr);
}

TEST_F(job_partition, delete_returns_the_deletion_s_result_in_place_of_the_service_s)
{
    for (const unsigned int function : {4U, 7U, 8U}) {
        SCOPED_TRACE(function);
        make_everything();
        EXPECT_EQ(delete_jobinfo(1, function, 0x8badf00d), 0U);
        EXPECT_EQ(delete_jobinfo(1, function, 0x8badf00d), 0x8badf00dU) << "nothing is left to delete";
        delete_jobinfo(1, 4);
        delete_jobinfo(1, 8);
    }
}

TEST_F(job_partition, delete_forgets_a_block_whose_partition_is_not_there)
{
    int block = 0;
    facade().shared_mem_scan_data_ = facade().shared_mem_ocr_data_ = facade().shared_mem_stream_data_ = &block;
    EXPECT_EQ(delete_jobinfo(1, 8, 5), 5U);
    EXPECT_EQ(facade().shared_mem_scan_data_, nullptr);
    EXPECT_EQ(facade().shared_mem_ocr_data_, nullptr);
    EXPECT_EQ(facade().shared_mem_stream_data_, &block);
    EXPECT_EQ(delete_jobinfo(1, 4, 5), 5U);
    EXPECT_EQ(facade().shared_mem_stream_data_, nullptr);
}

TEST_F(job_partition, delete_that_the_platform_refuses_succeeds)
{
    make_everything();
    platform().fail("emwOSWIpcDeleteMemPart", refused);
    EXPECT_EQ(delete_jobinfo(1, 7, 0x8badf00d), 0U);
    EXPECT_EQ(delete_jobinfo(1, 4, 0x8badf00d), 0U);
    EXPECT_EQ(facade().job_part_id_, nullptr);
    EXPECT_EQ(facade().job_ocr_part_id_, nullptr);
    EXPECT_EQ(facade().job_stm_part_id_, nullptr);
    const std::string said = "delete_shared_memory,[Error: emwOSWIpcDeleteMemPart(),ret=0x20020199]";
    EXPECT_EQ(traced(), (strings{said, said, said})) << "the operation itself has nothing to add";
}

TEST_F(job_partition, a_deleted_partition_is_made_again)
{
    make_everything();
    delete_jobinfo(1, 8);
    events();
    EXPECT_EQ(generate<8>(facade()), 0U);
    EXPECT_EQ(events(), strings{"send 2/6"} + creates("TARN_DATA_JOB_PARTITION, 16492") + allocates("30001", "16392"));
}

// The partition operations by themselves

TEST_F(job_partition, create_shared_memory)
{
    void* part_id = nullptr;
    char name[] = "SOME_PARTITION";
    facade();
    events();
    EXPECT_EQ(facade().create_shared_memory(1000, name, part_id), 0U);
    EXPECT_EQ(events(), creates("SOME_PARTITION, 1100"));
    void* const made = part_id;
    EXPECT_NE(made, nullptr);
    EXPECT_EQ(traced(), strings{});

    EXPECT_EQ(facade().create_shared_memory(1000, name, part_id), 0U);
    EXPECT_EQ(events(), finds());
    EXPECT_EQ(part_id, made);
    EXPECT_EQ(traced(), strings{"create_shared_memory,[partition exist.]"});

    void* none = nullptr;
    platform().fail("emwOSWIpcCreateMemPart", refused);
    EXPECT_EQ(facade().create_shared_memory(1000, name, none), 0x04010001U);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(traced(), strings{"create_shared_memory,[Error: emwOSWIpcCreateMemPart(),ret=0x20020199]"});
}

TEST_F(job_partition, alloc_shared_memory_and_free_shared_memory)
{
    void* part_id = nullptr;
    char name[] = "SOME_PARTITION";
    facade().create_shared_memory(1000, name, part_id);
    events();

    void* block = nullptr;
    EXPECT_EQ(facade().alloc_shared_memory(77, &block, 500, part_id), 0U);
    EXPECT_EQ(events(), allocates("77", "500")) << "no lock is taken";
    EXPECT_EQ(platform().block(77), std::string(500, '\0'));
    EXPECT_EQ(block, platform().block(77).data());

    platform().block(77)[3] = 'x';
    void* again = nullptr;
    EXPECT_EQ(facade().alloc_shared_memory(77, &again, 20, part_id), 0U);
    EXPECT_EQ(again, block);
    EXPECT_EQ(platform().block(77)[3], 'x');
    events();
    EXPECT_EQ(traced(), strings{});

    platform().fail("emwOSWIpcFreeMemPart", refused, 1);
    EXPECT_EQ(facade().free_shared_memory(block, part_id), 0x04010001U);
    EXPECT_EQ(traced(), strings{"free_shared_memory,[Error: emwOSWIpcFreeMemPart(),ret=0x20020199]"});
    EXPECT_EQ(facade().free_shared_memory(block, part_id), 0U);
    EXPECT_EQ(events(), (strings{"emwOSWIpcFreeMemPart", "emwOSWIpcFreeMemPart"})) << "no lock is taken";
    EXPECT_TRUE(platform().partition_table.at(part_id).blocks.empty());
    EXPECT_EQ(traced(), strings{});
}

TEST_F(job_partition, delete_shared_memory)
{
    void* part_id = nullptr;
    char name[] = "SOME_PARTITION";
    for (const bool refusal : {false, true}) {
        facade().create_shared_memory(1000, name, part_id);
        events();
        if (refusal) platform().fail("emwOSWIpcDeleteMemPart", refused);
        EXPECT_EQ(facade().delete_shared_memory(part_id), 0U);
        EXPECT_EQ(part_id, nullptr);
        EXPECT_EQ(events(), deletes());
        EXPECT_EQ(traced(), refusal ? strings{"delete_shared_memory,[Error: emwOSWIpcDeleteMemPart(),ret=0x20020199]"}
                                    : strings{});
    }
}

// Many threads

void run_at_once(std::size_t count, const std::function<void(std::size_t)>& work)
{
    std::atomic<bool> go = false;
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            while (!go) std::this_thread::yield();
            work(i);
        });
    }
    go = true;
}

TEST_F(job_partition, is_made_once_by_many_generating_threads)
{
    facade();
    for (int round = 0; round < 20; ++round) {
        platform().partitions_made = 0;
        platform().reply_with(record(20));
        run_at_once(8, [this](std::size_t i) {
            unsigned int made = 0;
            EXPECT_EQ(i % 2 == 0 ? facade().tarn_job_generate_jobinfo(category(7), made)
                                 : facade().tarn_job_generate_jobinfo_bkg(category(7), 0, made),
                      0U);
        });
        EXPECT_EQ(platform().partitions_made, 2);
        EXPECT_NE(facade().shared_mem_scan_data_, nullptr);
        EXPECT_NE(facade().shared_mem_ocr_data_, nullptr);
        delete_jobinfo(1, 7);
        EXPECT_TRUE(platform().partitions().empty());
    }
}

TEST_F(job_partition, is_deleted_once_by_many_deleting_threads)
{
    for (int round = 0; round < 20; ++round) {
        make_everything();
        platform().reply_with(record(24).u32(12, 1).u32(16, round % 2 == 0 ? 7 : 4));
        run_at_once(8, [this](std::size_t) { EXPECT_EQ(facade().tarn_job_delete_jobinfo(job), 0U); });
        const strings happened = events();
        EXPECT_EQ(std::count(happened.begin(), happened.end(), "emwOSWIpcDeleteMemPart"), round % 2 == 0 ? 2 : 1);
        platform().reply_never();
        delete_jobinfo(1, 7);
        delete_jobinfo(1, 4);
    }
}

TEST_F(job_partition, scans_are_generated_while_stream_jobs_are_deleted)
{
    facade();
    platform().respond([](const request& sent, char* reply, unsigned int& length) {
        const record answer = sent.func_id == 7 ? record(24).u32(12, 1).u32(16, 4) : record(20);
        answer.bytes().copy(reply, length);
        return 0L;
    });
    for (int round = 0; round < 20; ++round) {
        run_at_once(8, [this](std::size_t i) {
            unsigned int made = 0;
            if (i % 2 == 0) {
                EXPECT_EQ(facade().tarn_job_generate_jobinfo(category(8), made), 0U);
            } else {
                EXPECT_EQ(facade().tarn_job_delete_jobinfo(job), 0U);
            }
        });
        EXPECT_EQ(platform().partitions().size(), 1U);
        delete_jobinfo(1, 8);
    }
}

}  // namespace
