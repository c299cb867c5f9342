#include "tarn_jobinfo_facade.h"

#include "tarn_jobinfo_observer.h"
#include "unit/facade_test.h"

namespace {

using namespace testing_platform;
using norvane::tarn_jobinfo_facade;

class jobinfo_facade : public facade_test<tarn_jobinfo_facade> {
protected:
    jobinfo_facade() : facade_test(&tarn_jobinfo_facade::tarn_jobinfo_get_instance) {}
};

const creation_row creation{8, 0x04010008, 233, "core_src/tarn_jobinfo_facade", false};

TEST_F(jobinfo_facade, waits_for_its_service) { exercise_initialization(facade(), creation); }

TEST_F(jobinfo_facade, is_published_when_the_service_never_comes)
{
    exercise_unreached<tarn_jobinfo_facade>(
        &tarn_jobinfo_facade::tarn_jobinfo_get_instance, creation,
        [](tarn_jobinfo_facade& facade) { return facade.tarn_jobinfo_delete_send_info_list(); });
}

TEST_F(jobinfo_facade, is_made_once_by_many_threads)
{
    exercise_creation_race(&tarn_jobinfo_facade::tarn_jobinfo_get_instance);
}

TEST_F(jobinfo_facade, makes_its_creation_lock_once_under_the_process_lock)
{
    facade();
    facade();
    EXPECT_EQ(platform().thread_guards, 1);
    EXPECT_EQ(platform().events.size(), 2U) << "one lock and one unlock: the second call takes no lock";
}

TEST_F(jobinfo_facade, dispatch_does_nothing)
{
    char message[80] = {};
    facade().dispatch(0, message, sizeof message, {});
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().reports.empty());
}

constexpr unsigned int id = 0xC1C2C3C4;
constexpr auto type = static_cast<TARN_JOBINFO_JOBLOG_TYPE_VAL>(0xD1D2D3D4);
/// An id whose low 32 bits travel.
const auto image_log = static_cast<unsigned long>(0x12345678E1E2E3E4ULL);

record log_request() { return record(80).u32(72, 0xC1C2C3C4).u32(76, 0xD1D2D3D4); }

std::uint32_t address_word(const void* object)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(object));
}

/// An operation that reads a record of the service's of `size` bytes.
template <typename Info>
void exercise_info(const table_row& row, std::size_t size, const std::function<unsigned int(Info& info)>& call)
{
    Info info;
    exercise(
        row,
        [&] {
            info = patterned<Info>(2);
            return call(info);
        },
        [&] { EXPECT_EQ(bytes_of(info), record(size).pattern(0, size, 3).bytes()); },
        [&] { EXPECT_EQ(bytes_of(info), record(size).bytes()); });
}

TEST_F(jobinfo_facade, add_observer)
{
    for (const std::size_t length : {0U, 1U, 14U, 15U, 16U, 40U}) {
        SCOPED_TRACE(length);
        std::string name = record(length).pattern(0, length).bytes();
        norvane::tarn_jobinfo_observer observer(7, name.data());
        exercise({8, 0, record(92).u32(72, address_word(&observer)).text(76, name.substr(0, 15)), record(16), 12},
                 [&] { return facade().tarn_jobinfo_add_observer(&observer); });
    }
}

TEST_F(jobinfo_facade, remove_observer)
{
    norvane::tarn_jobinfo_observer observer;
    exercise({8, 1, record(92).u32(72, address_word(&observer)), record(16), 12},
             [&] { return facade().tarn_jobinfo_remove_observer(&observer); });
}

/// A null observer was reported and nothing was sent.
void expect_refusal(const std::string& operation)
{
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().traces.empty());
    ASSERT_EQ(platform().reports.size(), 1U);
    const auto& said = platform().reports.front();
    EXPECT_EQ(said, (report{63124, 0, 0, "core_src/tarn_jobinfo_facade", operation, said.line}));
    EXPECT_GT(said.line, 0);
}

TEST_F(jobinfo_facade, refuses_to_add_no_observer)
{
    EXPECT_EQ(facade().tarn_jobinfo_add_observer(nullptr), 0x04010004U);
    expect_refusal("tarn_jobinfo_add_observer");
}

TEST_F(jobinfo_facade, refuses_to_remove_no_observer)
{
    EXPECT_EQ(facade().tarn_jobinfo_remove_observer(nullptr), 0x04010004U);
    expect_refusal("tarn_jobinfo_remove_observer");
}

TEST_F(jobinfo_facade, retrieve_joblog)
{
    exercise_info<TARN_JOBINFO_JOBLOG>(
        {8, 2, log_request(), record(1256).pattern(12, 1240, 3), 1252}, 1240,
        [&](TARN_JOBINFO_JOBLOG& log) { return facade().tarn_jobinfo_retrieve_joblog(id, type, log); });
}

TEST_F(jobinfo_facade, create_receive_info_list)
{
    exercise({8, 3, log_request(), record(16), 12},
             [&] { return facade().tarn_jobinfo_create_receive_info_list(id, type); });
}

TEST_F(jobinfo_facade, get_receive_info)
{
    exercise_info<TARN_JOBINFO_RECEIVE_INFO>(
        {8, 4, record(72), record(296).pattern(12, 280, 3), 292}, 280,
        [&](TARN_JOBINFO_RECEIVE_INFO& info) { return facade().tarn_jobinfo_get_receive_info(info); });
}

TEST_F(jobinfo_facade, delete_receive_info_list)
{
    exercise({8, 5, record(72), record(16), 12}, [&] { return facade().tarn_jobinfo_delete_receive_info_list(); });
}

TEST_F(jobinfo_facade, create_send_info_list)
{
    exercise({8, 6, log_request(), record(16), 12},
             [&] { return facade().tarn_jobinfo_create_send_info_list(id, type); });
}

TEST_F(jobinfo_facade, get_send_info)
{
    exercise_info<TARN_JOBINFO_SEND_INFO>(
        {8, 7, record(72), record(420).pattern(12, 404, 3), 416}, 404,
        [&](TARN_JOBINFO_SEND_INFO& info) { return facade().tarn_jobinfo_get_send_info(info); });
}

TEST_F(jobinfo_facade, delete_send_info_list)
{
    exercise({8, 8, record(72), record(16), 12}, [&] { return facade().tarn_jobinfo_delete_send_info_list(); });
}

TEST_F(jobinfo_facade, retrieve_imagelog)
{
    for (const std::size_t length : {0U, 1U, 33U, 258U, 259U}) {
        SCOPED_TRACE(length);
        const std::string stored = record(length).pattern(0, length).bytes();
        std::string text;
        exercise(
            {8, 9, record(76).u32(72, 0xE1E2E3E4), record(276).text(12, stored), 272},
            [&] {
                text = "before";
                return facade().tarn_jobinfo_retrieve_imagelog(image_log, text);
            },
            [&] { EXPECT_EQ(text, stored); }, [&] { EXPECT_EQ(text, ""); });
    }
}

TEST_F(jobinfo_facade, a_text_without_terminator_ends_with_the_record)
{
    platform().reply_with(record(276).text(12, std::string(260, 'x')).u32(272, 0x41424344));
    std::string text;
    facade().tarn_jobinfo_retrieve_imagelog(1, text);
    EXPECT_EQ(text.size(), 264U);
    EXPECT_EQ(text.substr(0, 260), std::string(260, 'x'));
}

TEST_F(jobinfo_facade, delete_imagelog)
{
    exercise({8, 10, record(76).u32(72, 0xE1E2E3E4), record(16), 12},
             [&] { return facade().tarn_jobinfo_delete_imagelog(image_log); });
}

}  // namespace
