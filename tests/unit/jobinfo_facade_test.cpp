#include "tarn_jobinfo_facade.h"

#include "protocol/jobinfo.h"
#include "tarn_jobinfo_observer.h"
#include "unit/facade_test.h"

namespace {

using namespace testing_platform;
using norvane::tarn_jobinfo_facade;

namespace wire = norvane::protocol::jobinfo;

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

TEST_F(jobinfo_facade, registers_observers)
{
    exercise_registration(facade(), &tarn_jobinfo_facade::tarn_jobinfo_add_observer,
                          &tarn_jobinfo_facade::tarn_jobinfo_remove_observer,
                          {8, "core_src/tarn_jobinfo_facade", "tarn_jobinfo_add_observer", line_of_the_code,
                           "tarn_jobinfo_remove_observer", line_of_the_code, 0x04010004});
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

TEST_F(jobinfo_facade, rows_are_called_by_their_operations)
{
    EXPECT_EQ(numbers_and_names<wire::operations>(),
              (std::vector<std::pair<long, std::string>>{{0, "tarn_jobinfo_add_observer"},
                                                         {1, "tarn_jobinfo_remove_observer"},
                                                         {2, "tarn_jobinfo_retrieve_joblog"},
                                                         {3, "tarn_jobinfo_create_receive_info_list"},
                                                         {4, "tarn_jobinfo_get_receive_info"},
                                                         {5, "tarn_jobinfo_delete_receive_info_list"},
                                                         {6, "tarn_jobinfo_create_send_info_list"},
                                                         {7, "tarn_jobinfo_get_send_info"},
                                                         {8, "tarn_jobinfo_delete_send_info_list"},
                                                         {9, "tarn_jobinfo_retrieve_imagelog"},
                                                         {10, "tarn_jobinfo_delete_imagelog"}}));
    EXPECT_EQ(numbers_and_names<wire::notifications>(),
              (std::vector<std::pair<long, std::string>>{{11, "notify_job_update_log"},
                                                         {12, "notify_print_page_info"},
                                                         {13, "notify_scan_page_info"},
                                                         {14, "notify_fax_send_page_info"},
                                                         {15, "notify_renint_start_info"},
                                                         {16, "notify_imagelog_create_status"}}));
}

TEST_F(jobinfo_facade, fields_have_their_width_and_type_for_those_who_read_them)
{
    EXPECT_EQ((wire::retrieve_imagelog::reply::field<"text">::width), 260U);
    EXPECT_EQ((wire::renint_start_info::event::field<"start">::width), 16U);
    EXPECT_EQ((wire::retrieve_joblog::reply::field<"log">::type), "TARN_JOBINFO_JOBLOG");
    EXPECT_EQ((wire::get_receive_info::reply::field<"info">::type), "TARN_JOBINFO_RECEIVE_INFO");
    EXPECT_EQ((wire::get_send_info::reply::field<"info">::type), "TARN_JOBINFO_SEND_INFO");
    EXPECT_EQ((wire::job_update_log::event::field<"log">::type), "TARN_EVENT_JOB_UPDATE_LOG");
    EXPECT_EQ((wire::print_page_info::event::field<"page">::type), "TARN_EVENT_PRINT_PAGE");
    EXPECT_EQ((wire::scan_page_info::event::field<"page">::type), "TARN_EVENT_SCAN_PAGE");
    EXPECT_EQ((wire::fax_send_page_info::event::field<"page">::type), "TARN_EVENT_SEND_PAGE");
    EXPECT_EQ((wire::renint_start_info::event::field<"start">::type), "TARN_EVENT_RENINT_START");
}

}  // namespace
