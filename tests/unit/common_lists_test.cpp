#include "tarn_common_facade.h"

#include "unit/facade_test.h"

#include <algorithm>
#include <ostream>

namespace {

using namespace testing_platform;
using norvane::tarn_common_facade;

constexpr unsigned int no_shared_memory = 0x04010207;
constexpr unsigned int refused = 0x8badf00d;

constexpr unsigned int num = 0x01020304;
constexpr unsigned long box_id = 0xB0B1B2B3;
constexpr unsigned long cert_id = 0xC0C1C2C3;
constexpr auto box_type = static_cast<TARN_JBRT_BOX_TYPE>(0xE1E2E3E4);
constexpr unsigned short group = 0x0A0B;

/// Longer than any text that is sent.
const std::string& long_text()
{
    static const std::string text = record(2000).pattern(0, 2000).bytes();
    return text;
}
std::string long_text(std::size_t bound) { return long_text().substr(0, bound); }

/// The two places in the facade that hold a partition and its use count.
enum class slot { boxes, addresses };

struct prepare_row {
    std::string name;
    long func_id;
    record request;
    slot where;
    std::string partition;
    unsigned long asked_size;
    std::string operation;
    /// The line at which a failed creation is traced; 0: it is not.
    int create_line;
    std::function<unsigned int(tarn_common_facade&, unsigned int& first, unsigned int& second)> call;
};

struct get_row {
    std::string name;
    long func_id;
    /// The request, but for the block id.
    record request;
    slot where;
    std::size_t element_size;
    std::size_t capacity;
    std::string operation;
    int alloc_line;
    int free_line;
    std::function<unsigned int(tarn_common_facade&, unsigned int blk_id, unsigned int& count, void* elements)> call;
};

struct finish_row {
    std::string name;
    long func_id;
    slot where;
    unsigned int (tarn_common_facade::*call)(unsigned int);
};

void PrintTo(const prepare_row& row, std::ostream* out) { *out << row.name; }
void PrintTo(const get_row& row, std::ostream* out) { *out << row.name; }
void PrintTo(const finish_row& row, std::ostream* out) { *out << row.name; }

template <typename Row>
std::string name_of(const ::testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

class common_lists : public facade_test<tarn_common_facade> {
protected:
    common_lists() : facade_test(&tarn_common_facade::tarn_common_get_instance)
    {
        facade();
        platform().events.clear();
    }

    void*& part_id(slot where) { return where == slot::boxes ? facade().box_part_id_ : facade().address_part_id_; }
    unsigned int& users(slot where)
    {
        return where == slot::boxes ? facade().box_mem_flag_ : facade().address_mem_flag_;
    }
    static slot other(slot where) { return where == slot::boxes ? slot::addresses : slot::boxes; }

    /// Creates the partition of a slot, without a list.
    void create(slot where)
    {
        ASSERT_EQ(facade().create_shared_memory(154000, part_id(where), users(where), "PARTITION"), 0U);
        platform().events.clear();
    }

    std::string lock() { return "lock " + std::to_string(semaphore_number(facade().part_mutex_)); }
    std::string unlock() { return "un" + lock(); }

    /// What is traced of a failure, if its line is stated.
    static std::vector<trace_line> stated_trace(const std::string& operation, int line, const std::string& step)
    {
        if (line == 0) return {};
        return {{1025, 258, 0, "%s[%04d]::%s,%s\n",
                 "core_src/tarn_common_facade[" + std::to_string(line) + "]::" + operation + ",[Error]:" + step +
                     ":ret=[0x04010207]\n"}};
    }
};

// Prepare

std::vector<prepare_row> prepares()
{
    const std::string box = "TARN_DATA_BOX_PARTITION";
    const std::string address = "TARN_DATA_ADDRESS_PARTITION";
    const char* const text = long_text().c_str();
    return {
        {"box_list", 45, record(84).u32(72, num), slot::boxes, box, 154100, "tarn_get_box_info_prepare", 0,
         [](auto& facade, auto& first, auto& second) { return facade.tarn_get_box_info_prepare(num, first, second); }},
        {"box_list_bkg", 80, record(80).u32(72, num).u32(76, 0xC0C1C2C3), slot::boxes, box, 154100,
         "tarn_get_box_info_prepare_bkg", 0,
         [](auto& facade, auto& first, auto& second) {
             return facade.tarn_get_box_info_prepare_bkg(num, cert_id, first, second);
         }},
        {"document_list", 48, record(108).u32(72, 0xB0B1B2B3).text(76, long_text(17)).u32(96, num), slot::boxes, box,
         154100, "tarn_get_document_info_prepare", 0,
         [text](auto& facade, auto& first, auto& second) {
             return facade.tarn_get_document_info_prepare(box_id, text, num, first, second);
         }},
        {"document_list_bkg", 81,
         record(104).u32(72, 0xB0B1B2B3).text(76, long_text(17)).u32(96, num).u32(100, 0xC0C1C2C3), slot::boxes, box,
         154100, "tarn_get_document_info_prepare_bkg", 5368,
         [text](auto& facade, auto& first, auto& second) {
             return facade.tarn_get_document_info_prepare_bkg(box_id, text, num, cert_id, first, second);
         }},
        {"easy_box_list", 50, record(1616).text(72, long_text(1531)).u32(1604, num), slot::boxes, box, 154100,
         "tarn_get_easy_box_info_prepare", 0,
         [text](auto& facade, auto& first, auto& second) {
             return facade.tarn_get_easy_box_info_prepare(text, num, first, second);
         }},
        {"fax_box_list", 61, record(76).u32(72, num), slot::boxes, box, 154100, "tarn_get_fax_box_list_prepare", 4259,
         [](auto& facade, auto& first, auto& second) {
             return facade.tarn_get_fax_box_list_prepare(num, first, second);
         }},
        {"fax_document_list", 68, record(100).u32(72, 0xB0B1B2B3).text(76, long_text(17)).u32(96, num), slot::boxes,
         box, 154100, "tarn_get_fax_document_list_prepare", 0,
         [text](auto& facade, auto& first, auto& second) {
             return facade.tarn_get_fax_document_list_prepare(box_id, text, num, first, second);
         }},
        {"retention_list", 72, record(80).u32(72, 0xE1E2E3E4).u32(76, num), slot::boxes, box, 154100,
         "tarn_get_job_retention_doc_list_prepare", 0,
         [](auto& facade, auto& first, auto& second) {
             return facade.tarn_get_job_retention_doc_list_prepare(box_type, num, first, second);
         }},
        {"personal_address_list", 10, record(76).u32(72, num), slot::addresses, address, 42580,
         "tarn_get_personal_address_list_prepare", 0,
         [](auto& facade, auto& first, auto& second) {
             return facade.tarn_get_personal_address_list_prepare(num, first, second);
         }},
        {"group_address_list", 13, record(76).u32(72, num), slot::addresses, address, 42580,
         "tarn_get_group_address_list_prepare", 0,
         [](auto& facade, auto& first, auto& second) {
             return facade.tarn_get_group_address_list_prepare(num, first, second);
         }},
        {"group_member_address_list", 16, record(80).u16(72, 0x0A0B).u32(76, num), slot::addresses, address, 42580,
         "tarn_get_group_member_address_list_prepare", 0,
         [](auto& facade, auto& first, auto& second) {
             return facade.tarn_get_group_member_address_list_prepare(group, num, first, second);
         }},
        {"group_member_list", 17, record(80).u16(72, 0x0A0B).u32(76, num), slot::addresses,
         "TARN_DATA_GRP_MEM_ADRS_PRT", 21460, "tarn_get_group_member_address_list_grp_mem_str_prepare", 3289,
         [](auto& facade, auto& first, auto& second) {
             return facade.tarn_get_group_member_address_list_grp_mem_str_prepare(group, num, first, second);
         }},
        {"search_personal", 21, record(76).u32(72, num), slot::addresses, address, 42580,
         "tarn_search_personal_address_list_prepare", 0,
         [](auto& facade, auto& first, auto& second) {
             return facade.tarn_search_personal_address_list_prepare(num, first, second);
         }},
        {"search_personal_by_name", 22, record(272).u32(72, num).text(76, long_text(193)), slot::addresses, address,
         42580, "tarn_search_personal_address_list_prepare", 3582,
         [text](auto& facade, auto& first, auto& second) {
             return facade.tarn_search_personal_address_list_prepare(num, text, first, second);
         }},
        {"search_group", 25, record(76).u32(72, num), slot::addresses, address, 42580,
         "tarn_search_group_address_list_prepare", 0,
         [](auto& facade, auto& first, auto& second) {
             return facade.tarn_search_group_address_list_prepare(num, first, second);
         }},
        {"search_group_by_name", 26, record(272).u32(72, num).text(76, long_text(193)), slot::addresses, address, 42580,
         "tarn_search_group_address_list_prepare", 0,
         [text](auto& facade, auto& first, auto& second) {
             return facade.tarn_search_group_address_list_prepare(num, text, first, second);
         }},
    };
}

class common_list_prepare : public common_lists, public ::testing::WithParamInterface<prepare_row> {
protected:
    record reply(unsigned int result) { return record(24).u32(12, result).u32(16, 0xF1F2F3F4).u32(20, 0xA9A8A7A6); }

    unsigned int call() { return GetParam().call(facade(), first, second); }

    std::string sent() { return "send 1/" + std::to_string(GetParam().func_id); }
    std::string created()
    {
        return "emwOSWIpcCreateMemPart(" + GetParam().partition + ", " + std::to_string(GetParam().asked_size) + ")";
    }

    unsigned int first = 0;
    unsigned int second = 0;
};

INSTANTIATE_TEST_SUITE_P(each, common_list_prepare, ::testing::ValuesIn(prepares()), name_of<prepare_row>);

TEST_P(common_list_prepare, asks_the_service)
{
    exercise(
        {1, GetParam().func_id, GetParam().request, record(24).u32(16, 0xF1F2F3F4).u32(20, 0xA9A8A7A6), 12},
        [this] {
            first = second = 5;
            return call();
        },
        [this] {
            EXPECT_EQ(first, 0xF1F2F3F4U);
            EXPECT_EQ(second, 0xA9A8A7A6U);
        },
        [this] {
            EXPECT_EQ(first, 0U);
            EXPECT_EQ(second, 0U);
        });
}

TEST_P(common_list_prepare, creates_its_partition_once_and_counts_each_list)
{
    const slot where = GetParam().where;
    platform().reply_with(reply(0));
    EXPECT_EQ(call(), 0U);
    EXPECT_EQ(platform().events, (std::vector<std::string>{sent(), lock(), created(), unlock()}));
    void* const created_id = part_id(where);
    EXPECT_NE(created_id, nullptr);
    EXPECT_EQ(users(where), 1U);

    platform().events.clear();
    EXPECT_EQ(call(), 0U);
    EXPECT_EQ(platform().events, (std::vector<std::string>{sent(), lock(), unlock()}));
    EXPECT_EQ(part_id(where), created_id);
    EXPECT_EQ(users(where), 2U);
    EXPECT_EQ(part_id(other(where)), nullptr);
    EXPECT_EQ(users(other(where)), 0U);
    EXPECT_TRUE(platform().traces.empty());
}

TEST_P(common_list_prepare, creates_nothing_when_the_service_refuses)
{
    platform().reply_with(reply(refused));
    EXPECT_EQ(call(), refused);
    EXPECT_EQ(platform().events, std::vector<std::string>{sent()});
    EXPECT_EQ(part_id(GetParam().where), nullptr);
    EXPECT_EQ(users(GetParam().where), 0U);
}

TEST_P(common_list_prepare, succeeds_without_a_partition)
{
    platform().reply_with(reply(0));
    platform().fail("emwOSWIpcCreateMemPart", 0x77);
    EXPECT_EQ(call(), 0U);
    EXPECT_EQ(platform().events, (std::vector<std::string>{sent(), lock(), created(), unlock()}));
    EXPECT_EQ(first, 0xF1F2F3F4U);
    EXPECT_EQ(second, 0xA9A8A7A6U);
    EXPECT_EQ(part_id(GetParam().where), nullptr);
    EXPECT_EQ(users(GetParam().where), 0U);
    EXPECT_EQ(platform().traces, stated_trace(GetParam().operation, GetParam().create_line, "create_shared_memory"));
    EXPECT_TRUE(platform().reports.empty());
}

TEST_F(common_lists, short_texts_are_padded_with_zeros)
{
    unsigned int first = 0;
    unsigned int second = 0;
    const auto expect_sent = [&](const record& expected) {
        ASSERT_EQ(platform().requests.size(), 1U);
        EXPECT_EQ(platform().requests.front().bytes, expected.bytes());
        platform().requests.clear();
    };
    facade().tarn_get_document_info_prepare(1, "", 2, first, second);
    expect_sent(record(108).u32(72, 1).u32(96, 2));
    facade().tarn_get_document_info_prepare_bkg(1, "ab", 2, 3, first, second);
    expect_sent(record(104).u32(72, 1).text(76, "ab").u32(96, 2).u32(100, 3));
    facade().tarn_get_easy_box_info_prepare("/a/b", 2, first, second);
    expect_sent(record(1616).text(72, "/a/b").u32(1604, 2));
    facade().tarn_get_fax_document_list_prepare(1, "abc", 2, first, second);
    expect_sent(record(100).u32(72, 1).text(76, "abc").u32(96, 2));
    facade().tarn_search_personal_address_list_prepare(2, "", first, second);
    expect_sent(record(272).u32(72, 2));
    facade().tarn_search_group_address_list_prepare(2, "Kim", first, second);
    expect_sent(record(272).u32(72, 2).text(76, "Kim"));
}

// Get

template <typename Element>
auto getter(unsigned int (tarn_common_facade::*get)(unsigned int, unsigned int&, Element*))
{
    return [get](tarn_common_facade& facade, unsigned int blk_id, unsigned int& count, void* elements) {
        return (facade.*get)(blk_id, count, static_cast<Element*>(elements));
    };
}

template <typename Element>
auto searcher(unsigned int (tarn_common_facade::*get)(unsigned int, const char*, unsigned int&, Element*))
{
    return [get](tarn_common_facade& facade, unsigned int blk_id, unsigned int& count, void* elements) {
        return (facade.*get)(blk_id, long_text().c_str(), count, static_cast<Element*>(elements));
    };
}

std::vector<get_row> gets()
{
    using facade = tarn_common_facade;
    const record search = record(272).text(76, long_text(193));
    return {
        {"box_list", 46, record(76), slot::boxes, 748, 50, "tarn_get_box_list_info", 0, 0,
         getter(&facade::tarn_get_box_list_info)},
        {"document_list", 49, record(76), slot::boxes, 292, 100, "tarn_get_document_info", 0, 0,
         getter(&facade::tarn_get_document_info)},
        {"easy_box_list", 51, record(76), slot::boxes, 3080, 50, "tarn_get_easy_box_info", 0, 0,
         getter(&facade::tarn_get_easy_box_info)},
        {"fax_box_list", 62, record(76), slot::boxes, 748, 50, "tarn_get_fax_box_list", 0, 0,
         getter(&facade::tarn_get_fax_box_list)},
        {"fax_document_list", 69, record(76), slot::boxes, 292, 100, "tarn_get_fax_document_list", 0, 0,
         getter(&facade::tarn_get_fax_document_list)},
        {"retention_list", 73, record(76), slot::boxes, 408, 100, "tarn_get_job_retention_doc_list", 0, 0,
         getter(&facade::tarn_get_job_retention_doc_list)},
        {"personal_address_list", 11, record(76), slot::addresses, 2124, 20, "tarn_get_personal_address_list", 0, 0,
         getter(&facade::tarn_get_personal_address_list)},
        {"group_address_list", 14, record(76), slot::addresses, 390, 20, "tarn_get_group_address_list", 0, 0,
         getter(&facade::tarn_get_group_address_list)},
        {"group_member_address_list", 18, record(76), slot::addresses, 2124, 20, "tarn_get_group_member_address_list",
         0, 0, getter<TARN_PERSONAL_ADDRESS>(&facade::tarn_get_group_member_address_list)},
        {"group_member_list", 19, record(76), slot::addresses, 1068, 20, "tarn_get_group_member_address_list", 3408,
         3433, getter<TARN_GROUP_MEMBER>(&facade::tarn_get_group_member_address_list)},
        {"search_personal", 23, search, slot::addresses, 2124, 20, "tarn_search_personal_address_list", 0, 0,
         searcher(&facade::tarn_search_personal_address_list)},
        {"search_group", 27, search, slot::addresses, 390, 20, "tarn_search_group_address_list", 0, 0,
         searcher(&facade::tarn_search_group_address_list)},
    };
}

/// With the partition there, and an array for a whole page and one element more.
class common_list_get : public common_lists, public ::testing::WithParamInterface<get_row> {
protected:
    static constexpr unsigned int blk_id = 0x80000005;
    static constexpr int block_number = -2147483643;

    common_list_get()
    {
        create(GetParam().where);
        page = untouched();
    }

    [[nodiscard]] std::string untouched() const
    {
        std::string bytes((GetParam().capacity + 1) * GetParam().element_size, '\x55');
        return bytes;
    }

    unsigned int call() { return GetParam().call(facade(), blk_id, count, page.data()); }

    [[nodiscard]] std::size_t block_size() const { return GetParam().capacity * GetParam().element_size; }

    /// The elements that the service writes.
    [[nodiscard]] std::string elements(std::size_t number) const
    {
        const std::size_t size = number * GetParam().element_size;
        return record(size).pattern(0, size).bytes();
    }

    /// The service writes `number` elements into the block and answers with `result`.
    void serve(unsigned int number, unsigned int result)
    {
        platform().respond([this, number, result](const request&, char* reply, unsigned int& length) {
            std::string& block = platform().block(block_number);
            block_when_sent = block;
            elements(number).copy(block.data(), block.size());
            record(20).pattern(0, 12, 9).u32(12, result).u32(16, number).bytes().copy(reply, length);
            return 0L;
        });
    }

    std::string get_block() { return "emwOSWIpcGetBlockByIdMemPart(" + std::to_string(block_number) + ")"; }
    std::string alloc() { return "emwOSWIpcAllocMemPart(" + std::to_string(block_size()) + ")"; }
    std::string registered() { return "emwOSWIpcRegisterBlockIdMemPart(" + std::to_string(block_number) + ")"; }
    std::string sent() { return "send 1/" + std::to_string(GetParam().func_id); }

    void expect_events(std::vector<std::string> taking, const std::vector<std::string>& rest)
    {
        taking.insert(taking.begin(), lock());
        taking.push_back(unlock());
        taking.insert(taking.end(), rest.begin(), rest.end());
        EXPECT_EQ(platform().events, taking);
        platform().events.clear();
    }

    /// Sent, and the block freed under the lock again.
    std::vector<std::string> sent_and_freed() { return {sent(), lock(), "emwOSWIpcFreeMemPart", unlock()}; }

    unsigned int count = 77;
    std::string page;
    std::string block_when_sent;
};

INSTANTIATE_TEST_SUITE_P(each, common_list_get, ::testing::ValuesIn(gets()), name_of<get_row>);

TEST_P(common_list_get, asks_the_service)
{
    exercise(
        {1, GetParam().func_id, record(GetParam().request).u32(72, blk_id), record(20), 12},
        [this] {
            count = 77;
            return call();
        },
        [this] { EXPECT_EQ(count, 0U); }, [this] { EXPECT_EQ(count, 0U); });
    EXPECT_EQ(page, untouched());
}

TEST_P(common_list_get, copies_the_elements_whatever_the_result)
{
    for (const std::size_t number : {std::size_t{1}, std::size_t{2}, GetParam().capacity}) {
        for (const unsigned int result : {0U, refused}) {
            SCOPED_TRACE(number);
            page = untouched();
            serve(static_cast<unsigned int>(number), result);
            EXPECT_EQ(call(), result);
            expect_events({get_block(), alloc(), registered()}, sent_and_freed());
            EXPECT_EQ(block_when_sent, std::string(block_size(), '\0'));
            EXPECT_EQ(count, number);
            EXPECT_EQ(page, elements(number) + untouched().substr(elements(number).size()));
        }
    }
    EXPECT_TRUE(platform().partition_table.at(part_id(GetParam().where)).blocks.empty());
    EXPECT_EQ(users(GetParam().where), 1U);
    EXPECT_TRUE(platform().traces.empty());
    EXPECT_TRUE(platform().reports.empty());
}

TEST_P(common_list_get, copies_nothing_of_an_empty_page)
{
    for (const unsigned int result : {0U, refused}) {
        serve(0, result);
        EXPECT_EQ(call(), result);
        expect_events({get_block(), alloc(), registered()}, sent_and_freed());
        EXPECT_EQ(count, 0U);
        EXPECT_EQ(page, untouched());
    }
}

TEST_P(common_list_get, uses_a_block_that_is_registered_already)
{
    for (const std::size_t size : {block_size() - 8, block_size() + 8}) {
        SCOPED_TRACE(size);
        void* block = nullptr;
        facade().alloc_shared_memory(block_number, &block, size, part_id(GetParam().where));
        platform().block(block_number).assign(size, 'x');
        platform().events.clear();

        serve(1, 0);
        EXPECT_EQ(call(), 0U);
        expect_events({get_block(), "emwOSWIpcGetAllocSizeMemPart"}, sent_and_freed());
        EXPECT_EQ(block_when_sent, std::string(size, '\0')) << "cleared over its own size";
        EXPECT_EQ(page.substr(0, GetParam().element_size), elements(1));
    }
}

TEST_P(common_list_get, sends_nothing_without_a_block)
{
    struct failing {
        std::string call;
        std::vector<std::string> events;
    };
    const std::vector<failing> steps{
        {"emwOSWIpcGetBlockByIdMemPart", {get_block()}},
        {"emwOSWIpcAllocMemPart", {get_block(), alloc()}},
        {"emwOSWIpcRegisterBlockIdMemPart", {get_block(), alloc(), registered(), "emwOSWIpcFreeMemPart"}},
        {"emwOSWIpcGetAllocSizeMemPart", {get_block(), "emwOSWIpcGetAllocSizeMemPart"}},
    };
    serve(1, 0);
    for (const auto& step : steps) {
        SCOPED_TRACE(step.call);
        if (step.call == "emwOSWIpcGetAllocSizeMemPart") {
            void* block = nullptr;
            facade().alloc_shared_memory(block_number, &block, 40, part_id(GetParam().where));
            platform().events.clear();
        }
        platform().fail(step.call, 0x77, 1);
        platform().traces.clear();
        count = 77;
        EXPECT_EQ(call(), no_shared_memory);
        expect_events(step.events, {});
        EXPECT_EQ(count, 77U) << "left as it was";
        EXPECT_EQ(platform().traces, stated_trace(GetParam().operation, GetParam().alloc_line, "alloc_shared_memory"));
    }
    EXPECT_EQ(page, untouched());
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().reports.empty());
}

TEST_P(common_list_get, fails_when_the_block_cannot_be_freed)
{
    for (const unsigned int result : {0U, refused}) {
        serve(2, result);
        platform().fail("emwOSWIpcFreeMemPart", 0x77, 1);
        platform().traces.clear();
        page = untouched();
        EXPECT_EQ(call(), no_shared_memory);
        EXPECT_EQ(platform().events.back(), unlock());
        EXPECT_EQ(count, 2U);
        EXPECT_EQ(page.substr(0, elements(2).size()), elements(2));
        EXPECT_EQ(platform().traces, stated_trace(GetParam().operation, GetParam().free_line, "free_shared_memory"));
        EXPECT_TRUE(platform().reports.empty());
    }
}

TEST_P(common_list_get, fails_when_there_are_elements_and_no_block)
{
    platform().blocks_are_null = true;
    platform().reply_with(record(20).u32(12, 0).u32(16, 3));
    EXPECT_EQ(call(), no_shared_memory);
    expect_events({get_block(), alloc(), registered()}, {sent()});
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(page, untouched());
    EXPECT_TRUE(platform().traces.empty());

    platform().reply_with(record(20).u32(12, refused).u32(16, 0));
    EXPECT_EQ(call(), refused) << "without elements, no block is needed";
    EXPECT_EQ(count, 0U);
}

TEST_F(common_lists, searches_refuse_an_empty_name)
{
    create(slot::addresses);
    unsigned int count = 77;
    std::vector<TARN_PERSONAL_ADDRESS> persons(20);
    std::vector<TARN_GROUP_ADDRESS> groups(20);
    EXPECT_EQ(facade().tarn_search_personal_address_list(1, "", count, persons.data()), 0x04010205U);
    EXPECT_EQ(facade().tarn_search_personal_address_list(1, "", count, nullptr), 0x04010205U);
    EXPECT_EQ(facade().tarn_search_personal_address_list(1, "Kim", count, nullptr), 0x04010205U);
    EXPECT_EQ(facade().tarn_search_group_address_list(1, "", count, groups.data()), 0x04010205U);
    EXPECT_EQ(count, 77U);
    EXPECT_TRUE(platform().events.empty());
    EXPECT_TRUE(platform().traces.empty());
    EXPECT_TRUE(platform().reports.empty());

    platform().reply_with(record(20));
    EXPECT_EQ(facade().tarn_search_group_address_list(1, "Kim", count, nullptr), 0U) << "the array is not looked at";
    EXPECT_EQ(platform().requests.size(), 1U);
    EXPECT_EQ(platform().requests.back().bytes, record(272).u32(72, 1).text(76, "Kim").bytes());
    EXPECT_EQ(facade().tarn_search_personal_address_list(2, "K", count, persons.data()), 0U);
    EXPECT_EQ(platform().requests.back().bytes, record(272).u32(72, 2).text(76, "K").bytes());
}

// Finish

std::vector<finish_row> finishes()
{
    using facade = tarn_common_facade;
    return {
        {"box_list", 47, slot::boxes, &facade::tarn_get_box_info_finish},
        {"document_list", 47, slot::boxes, &facade::tarn_get_document_info_finish},
        {"easy_box_list", 47, slot::boxes, &facade::tarn_get_easy_box_info_finish},
        {"fax_box_list", 63, slot::boxes, &facade::tarn_get_fax_box_list_finish},
        {"fax_document_list", 70, slot::boxes, &facade::tarn_get_fax_document_list_finish},
        {"retention_list", 74, slot::boxes, &facade::tarn_get_job_retention_doc_list_finish},
        {"personal_address_list", 12, slot::addresses, &facade::tarn_get_personal_address_list_finish},
        {"group_address_list", 15, slot::addresses, &facade::tarn_get_group_address_list_finish},
        {"group_member_list", 20, slot::addresses, &facade::tarn_get_group_member_address_list_finish},
        {"search_personal", 24, slot::addresses, &facade::tarn_search_personal_address_list_finish},
        {"search_group", 28, slot::addresses, &facade::tarn_search_group_address_list_finish},
    };
}

class common_list_finish : public common_lists, public ::testing::WithParamInterface<finish_row> {
protected:
    unsigned int call() { return (facade().*GetParam().call)(0x0F1E2D3C); }

    std::string sent() { return "send 1/" + std::to_string(GetParam().func_id); }
};

INSTANTIATE_TEST_SUITE_P(each, common_list_finish, ::testing::ValuesIn(finishes()), name_of<finish_row>);

TEST_P(common_list_finish, tells_the_service_and_counts_one_list_less)
{
    users(GetParam().where) = 10;
    exercise({1, GetParam().func_id, record(76).u32(72, 0x0F1E2D3C), record(16), 12}, [this] {
        platform().events.clear();
        const unsigned int result = call();
        EXPECT_EQ(platform().events, (std::vector<std::string>{sent(), lock(), unlock()}));
        return result;
    });
    EXPECT_EQ(users(GetParam().where), 7U);
    EXPECT_EQ(users(other(GetParam().where)), 0U);
}

TEST_P(common_list_finish, deletes_the_partition_with_the_last_list)
{
    const slot where = GetParam().where;
    for (const unsigned int result : {0U, refused}) {
        create(slot::boxes);
        create(slot::addresses);
        void* const kept = part_id(other(where));
        platform().reply_with(record(16).u32(12, result));
        EXPECT_EQ(call(), result);
        EXPECT_EQ(platform().events, (std::vector<std::string>{sent(), lock(), "emwOSWIpcDeleteMemPart", unlock()}));
        EXPECT_EQ(part_id(where), nullptr);
        EXPECT_EQ(users(where), 0U);
        EXPECT_EQ(part_id(other(where)), kept);
    }
    EXPECT_TRUE(platform().traces.empty());
    EXPECT_TRUE(platform().reports.empty());
}

TEST_P(common_list_finish, fails_when_the_partition_cannot_be_deleted)
{
    const slot where = GetParam().where;
    create(where);
    void* const created = part_id(where);
    platform().fail("emwOSWIpcDeleteMemPart", 0x77);
    platform().reply_with(record(16).u32(12, refused));
    EXPECT_EQ(call(), no_shared_memory);
    EXPECT_EQ(part_id(where), created);
    EXPECT_EQ(users(where), 0U);
    EXPECT_TRUE(platform().traces.empty());
    EXPECT_TRUE(platform().reports.empty());
}

TEST_P(common_list_finish, without_a_prepare_deletes_nothing)
{
    platform().reply_with(record(16).u32(12, 0));
    EXPECT_EQ(call(), 0U);
    EXPECT_EQ(platform().events, (std::vector<std::string>{sent(), lock(), unlock()}));
    EXPECT_EQ(users(GetParam().where), 0xFFFFFFFFU);
    EXPECT_EQ(part_id(GetParam().where), nullptr);
}

// Several lists at once

using partition_list = std::vector<std::pair<std::string, unsigned long>>;

TEST_F(common_lists, whichever_address_partition_is_first_serves_both_lists)
{
    unsigned int first = 0;
    unsigned int second = 0;
    platform().reply_with(record(24));
    facade().tarn_get_group_member_address_list_grp_mem_str_prepare(1, 20, first, second);
    facade().tarn_get_personal_address_list_prepare(20, first, second);
    EXPECT_EQ(platform().partitions(), (partition_list{{"TARN_DATA_GRP_MEM_ADRS_PRT", 21460}}));
    EXPECT_EQ(users(slot::addresses), 2U);

    platform().reply_with(record(16));
    facade().tarn_get_group_member_address_list_finish(first);
    EXPECT_EQ(platform().partitions(), (partition_list{{"TARN_DATA_GRP_MEM_ADRS_PRT", 21460}}));
    facade().tarn_get_personal_address_list_finish(first);
    EXPECT_TRUE(platform().partitions().empty());

    platform().reply_with(record(24));
    facade().tarn_get_personal_address_list_prepare(20, first, second);
    facade().tarn_get_group_member_address_list_grp_mem_str_prepare(1, 20, first, second);
    facade().tarn_get_box_info_prepare(50, first, second);
    EXPECT_EQ(platform().partitions(),
              (partition_list{{"TARN_DATA_ADDRESS_PARTITION", 42580}, {"TARN_DATA_BOX_PARTITION", 154100}}));
}

TEST_F(common_lists, a_prepare_after_a_failed_delete_uses_the_partition_that_is_left)
{
    unsigned int first = 0;
    unsigned int second = 0;
    create(slot::boxes);
    platform().fail("emwOSWIpcDeleteMemPart", 0x77, 1);
    facade().tarn_get_box_info_finish(0);
    platform().reply_with(record(24));
    EXPECT_EQ(facade().tarn_get_box_info_prepare(50, first, second), 0U);
    EXPECT_EQ(users(slot::boxes), 1U);
    EXPECT_EQ(platform().partitions_made, 1);
}

TEST_F(common_lists, threads_share_one_partition)
{
    constexpr unsigned int lists = 40;
    platform().respond([](const request& sent, char* reply, unsigned int& length) {
        const bool is_page = sent.func_id == 46;
        unsigned int block_id = 0;
        sent.bytes.copy(reinterpret_cast<char*>(&block_id), 4, 72);
        record answer = record(is_page ? 20 : length);
        if (is_page) {
            const std::lock_guard lock(platform().mutex);
            platform().block(static_cast<int>(block_id)).assign(37400, static_cast<char>(block_id));
            answer.u32(16, 50);
        }
        answer.bytes().copy(reply, length);
        return 0L;
    });
    std::atomic<unsigned int> wrong = 0;
    std::vector<std::thread> threads;
    for (unsigned int block_id = 1; block_id <= 4; ++block_id) {
        threads.emplace_back([this, block_id, &wrong] {
            std::vector<TARN_BOX_LIST_INFO> page(50);
            for (unsigned int i = 0; i < lists; ++i) {
                unsigned int first = 0;
                unsigned int second = 0;
                unsigned int count = 0;
                const bool fetched = facade().tarn_get_box_info_prepare(50, first, second) == 0 &&
                                     facade().tarn_get_box_list_info(block_id, count, page.data()) == 0 &&
                                     facade().tarn_get_box_info_finish(first) == 0;
                const bool right = std::all_of(page.begin(), page.end(), [block_id](const auto& element) {
                    return bytes_of(element) == std::string(748, static_cast<char>(block_id));
                });
                if (!fetched || count != 50 || !right) ++wrong;
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0U);
    EXPECT_EQ(users(slot::boxes), 0U);
    EXPECT_EQ(part_id(slot::boxes), nullptr);
    EXPECT_TRUE(platform().partitions().empty());
    const auto held = [](const request& sent) { return sent.locks_held != 0; };
    EXPECT_TRUE(std::none_of(platform().requests.begin(), platform().requests.end(), held));
}

}  // namespace
