// Job logs, their lists, image logs and their notifications against the stand-in service in another
// process.
#include "tarn_jobinfo_facade.h"
#include "tarn_jobinfo_observer.h"

#include "integration/processes.h"

#include <csignal>
#include <cstring>
#include <map>
#include <mutex>
#include <utility>

namespace {

using namespace testing_processes;
using norvane::tarn_jobinfo_facade;
using norvane::tarn_jobinfo_observer;

constexpr unsigned int not_found = 0x02000005;
constexpr unsigned int not_prepared = 0x02000008;
constexpr unsigned int end_of_list = 0x02000010;

constexpr unsigned int sent_job = 7001;
constexpr unsigned int received_job = 7002;

tarn_jobinfo_facade& facade() { return *tarn_jobinfo_facade::tarn_jobinfo_get_instance(); }

TARN_JOBINFO_JOBLOG_TYPE_VAL type(unsigned int number) { return static_cast<TARN_JOBINFO_JOBLOG_TYPE_VAL>(number); }

template <typename Number>
Number number_at(const void* record, std::size_t offset)
{
    Number number = 0;
    std::memcpy(&number, static_cast<const char*>(record) + offset, sizeof number);
    return number;
}

std::string text_at(const void* record, std::size_t offset) { return static_cast<const char*>(record) + offset; }

/// The address of the next send record, or what the service refuses with.
std::string next_address()
{
    TARN_JOBINFO_SEND_INFO info;
    const unsigned int result = facade().tarn_jobinfo_get_send_info(info);
    return result == 0 ? text_at(info.bytes, 8) : std::to_string(result);
}

class jobinfo_service : public process_test {};

TEST_F(jobinfo_service, a_log_is_found_by_id_and_type)
{
    const process service = start_service();
    TARN_JOBINFO_JOBLOG log;
    std::memset(log.bytes, 0xEE, sizeof log.bytes);
    EXPECT_EQ(facade().tarn_jobinfo_retrieve_joblog(sent_job, type(1), log), 0U);
    EXPECT_EQ(number_at<unsigned int>(log.bytes, 0), sent_job);
    EXPECT_EQ(number_at<unsigned int>(log.bytes, 4), 1U);
    EXPECT_EQ(number_at<unsigned int>(log.bytes, 12), 12U);
    EXPECT_EQ(text_at(log.bytes, 16), "akira");
    EXPECT_EQ(text_at(log.bytes, 80), "Quarterly figures");
    EXPECT_EQ(log.bytes[1239], 0);
    EXPECT_EQ(facade().tarn_jobinfo_retrieve_joblog(sent_job, type(2), log), not_found) << "another type";
    EXPECT_EQ(text_at(log.bytes, 80), "");
    EXPECT_EQ(facade().tarn_jobinfo_retrieve_joblog(7003, type(1), log), not_found) << "another id";
}

TEST_F(jobinfo_service, send_records_are_walked_one_at_a_time)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_jobinfo_create_send_info_list(sent_job, type(1)), 0U);
    TARN_JOBINFO_SEND_INFO info;
    EXPECT_EQ(facade().tarn_jobinfo_get_send_info(info), 0U);
    EXPECT_EQ(number_at<unsigned int>(info.bytes, 0), 1U);
    EXPECT_EQ(number_at<unsigned short>(info.bytes, 4), 12U);
    EXPECT_EQ(text_at(info.bytes, 8), "reports@head-office.example");
    EXPECT_EQ(next_address(), "0312345678");
    EXPECT_EQ(next_address(), "0398765432");
    EXPECT_EQ(facade().tarn_jobinfo_get_send_info(info), end_of_list);
    EXPECT_EQ(facade().tarn_jobinfo_get_send_info(info), end_of_list) << "the end stays the end";
    EXPECT_EQ(facade().tarn_jobinfo_delete_send_info_list(), 0U);
    EXPECT_EQ(facade().tarn_jobinfo_get_send_info(info), not_prepared);
    EXPECT_EQ(facade().tarn_jobinfo_delete_send_info_list(), not_prepared);
}

TEST_F(jobinfo_service, receive_records_are_walked_one_at_a_time)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_jobinfo_create_receive_info_list(received_job, type(2)), 0U);
    TARN_JOBINFO_RECEIVE_INFO info;
    EXPECT_EQ(facade().tarn_jobinfo_get_receive_info(info), 0U);
    EXPECT_EQ(number_at<unsigned short>(info.bytes, 4), 2U);
    EXPECT_EQ(text_at(info.bytes, 8), "0355501234");
    EXPECT_EQ(facade().tarn_jobinfo_get_receive_info(info), 0U);
    EXPECT_EQ(number_at<unsigned int>(info.bytes, 0), 2U);
    EXPECT_EQ(text_at(info.bytes, 8), "North branch");
    EXPECT_EQ(facade().tarn_jobinfo_get_receive_info(info), end_of_list);
    EXPECT_EQ(facade().tarn_jobinfo_delete_receive_info_list(), 0U);
    EXPECT_EQ(facade().tarn_jobinfo_get_receive_info(info), not_prepared);
    EXPECT_EQ(facade().tarn_jobinfo_delete_receive_info_list(), not_prepared);
}

TEST_F(jobinfo_service, the_two_kinds_of_list_do_not_disturb_each_other)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_jobinfo_create_send_info_list(sent_job, type(1)), 0U);
    EXPECT_EQ(next_address(), "reports@head-office.example");
    TARN_JOBINFO_RECEIVE_INFO received;
    EXPECT_EQ(facade().tarn_jobinfo_get_receive_info(received), not_prepared);
    EXPECT_EQ(facade().tarn_jobinfo_create_receive_info_list(received_job, type(2)), 0U);
    EXPECT_EQ(facade().tarn_jobinfo_get_receive_info(received), 0U);
    EXPECT_EQ(next_address(), "0312345678");
    EXPECT_EQ(facade().tarn_jobinfo_delete_receive_info_list(), 0U);
    EXPECT_EQ(next_address(), "0398765432");
}

TEST_F(jobinfo_service, creating_a_list_again_begins_it_anew)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_jobinfo_create_send_info_list(sent_job, type(1)), 0U);
    EXPECT_EQ(next_address(), "reports@head-office.example");
    EXPECT_EQ(facade().tarn_jobinfo_create_send_info_list(sent_job, type(1)), 0U);
    EXPECT_EQ(next_address(), "reports@head-office.example");
}

TEST_F(jobinfo_service, a_list_of_a_job_without_records_is_empty_and_one_of_no_job_is_refused)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_jobinfo_create_send_info_list(received_job, type(2)), 0U);
    TARN_JOBINFO_SEND_INFO sent;
    EXPECT_EQ(facade().tarn_jobinfo_get_send_info(sent), end_of_list);
    EXPECT_EQ(facade().tarn_jobinfo_create_send_info_list(sent_job, type(9)), not_found);
    EXPECT_EQ(facade().tarn_jobinfo_create_receive_info_list(9, type(2)), not_found);
}

TEST_F(jobinfo_service, each_application_walks_a_list_of_its_own)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_jobinfo_create_send_info_list(sent_job, type(1)), 0U);
    EXPECT_EQ(next_address(), "reports@head-office.example");
    std::string output;
    EXPECT_EQ(run("jobinfo_example", {}, output), 0);
    EXPECT_NE(output.find("job 7001 was sent to reports@head-office.example\n"
                          "job 7001 was sent to 0312345678\n"
                          "job 7001 was sent to 0398765432\n"
                          "3 send records\n"),
              std::string::npos)
        << output;
    EXPECT_EQ(next_address(), "0312345678");
}

TEST_F(jobinfo_service, image_logs_are_read_and_deleted)
{
    const auto saved = directory() / "saved.json";
    std::string text = "before";
    {
        process service = start_service({}, {"--save", saved});
        EXPECT_EQ(facade().tarn_jobinfo_retrieve_imagelog(501, text), 0U);
        EXPECT_EQ(text, "/imagelog/7001/pages.tif");
        EXPECT_EQ(facade().tarn_jobinfo_delete_imagelog(501), 0U);
        EXPECT_EQ(facade().tarn_jobinfo_delete_imagelog(501), not_found);
        EXPECT_EQ(facade().tarn_jobinfo_retrieve_imagelog(501, text), not_found);
        EXPECT_EQ(text, "");
        EXPECT_EQ(service.stop(SIGTERM), 0);
    }
    const process service = start_service(saved);
    EXPECT_EQ(facade().tarn_jobinfo_retrieve_imagelog(501, text), not_found);
    EXPECT_EQ(facade().tarn_jobinfo_retrieve_imagelog(502, text), 0U);
    EXPECT_EQ(text, "/imagelog/7002/pages.tif");
}

/// Notes what it is told, each in a line.
class notes : public tarn_jobinfo_observer {
public:
    explicit notes(unsigned int answer = 0) : answer_(answer) {}

    /// Everything that has come so far.
    std::string told() const
    {
        const std::lock_guard lock(mutex_);
        return told_;
    }

private:
    unsigned int note(const std::string& what)
    {
        const std::lock_guard lock(mutex_);
        told_ += what + "\n";
        return answer_;
    }
    static std::string pair_at(const void* record)
    {
        return std::to_string(number_at<unsigned int>(record, 0)) + "/" +
               std::to_string(number_at<unsigned int>(record, 4));
    }

    unsigned int notify_job_update_log(TARN_EVENT_JOB_UPDATE_LOG const& log) override
    {
        return note("log " + pair_at(&log));
    }
    unsigned int notify_print_page_info(TARN_EVENT_PRINT_PAGE const& page) override
    {
        return note("printed " + pair_at(&page) + " color " + std::to_string(number_at<unsigned char>(&page, 9)));
    }
    unsigned int notify_scan_page_info(TARN_EVENT_SCAN_PAGE const& page) override
    {
        return note("scanned " + pair_at(&page) + " at " + std::to_string(number_at<unsigned short>(&page, 8)));
    }
    unsigned int notify_fax_send_page_info(TARN_EVENT_SEND_PAGE const& page) override
    {
        return note("faxed " + pair_at(&page) + " to " + text_at(&page, 8));
    }
    unsigned int notify_renint_start_info(TARN_EVENT_RENINT_START const& start, char const* text) override
    {
        return note("renint " + pair_at(&start) + " \"" + text + "\"");
    }
    unsigned int notify_imagelog_create_status(unsigned int id, unsigned long imagelog,
                                               TARN_IMAGELOG_CREATE_STATUS_VAL status) override
    {
        return note("image log " + std::to_string(imagelog) + " of " + std::to_string(id) + " status " +
                    std::to_string(static_cast<unsigned int>(status)));
    }

    mutable std::mutex mutex_;
    std::string told_;
    unsigned int answer_;
};

/// Has the service notify and returns what tarnctl prints.
std::string notify(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "notify");
    std::string output;
    EXPECT_EQ(run("tarnctl", arguments, output), 0) << output;
    return output;
}

TEST_F(jobinfo_service, every_notification_arrives_with_its_fields)
{
    const process service = start_service();
    notes observer(77);
    EXPECT_EQ(facade().tarn_jobinfo_add_observer(&observer), 0U);
    EXPECT_NE(notify({"job-update-log", "job=7001,type=1"}).find("answered, result 77"), std::string::npos);
    notify({"print-page-info", "job=7001,page=2,color=3"});
    notify({"scan-page-info", "job=7001,page=3,resolution=600"});
    notify({"fax-send-page-info", "job=7001,page=4,destination=0312345678"});
    notify({"renint-start-info", "job=7002,kind=6", "please wait"});
    notify({"renint-start-info", "job=7002,kind=6", ""});
    notify({"imagelog-create-status", "7001", "501", "2"});
    EXPECT_EQ(observer.told(),
              "log 7001/1\n"
              "printed 7001/2 color 3\n"
              "scanned 7001/3 at 600\n"
              "faxed 7001/4 to 0312345678\n"
              "renint 7002/6 \"please wait\"\n"
              "renint 7002/6 \"\"\n"
              "image log 501 of 7001 status 2\n");
    EXPECT_EQ(facade().tarn_jobinfo_remove_observer(&observer), 0U);
    EXPECT_NE(notify({"print-page-info", "job=7001"}).find("nobody observes this interface"), std::string::npos);
}

TEST_F(jobinfo_service, the_deletion_of_an_image_log_is_notified)
{
    const process service = start_service();
    notes observer;
    EXPECT_EQ(facade().tarn_jobinfo_add_observer(&observer), 0U);
    EXPECT_EQ(facade().tarn_jobinfo_delete_imagelog(600), not_found);
    EXPECT_EQ(facade().tarn_jobinfo_delete_imagelog(501), 0U);
    EXPECT_TRUE(eventually([&observer] { return !observer.told().empty(); }));
    EXPECT_EQ(facade().tarn_jobinfo_remove_observer(&observer), 0U);
    EXPECT_EQ(observer.told(), "image log 501 of 7001 status 4\n");
}

/// Deletes, when it is told of a page, the image log that has the page's number.
class cleaner : public notes {
    unsigned int notify_print_page_info(TARN_EVENT_PRINT_PAGE const& page) override
    {
        return facade().tarn_jobinfo_delete_imagelog(number_at<unsigned int>(&page, 4));
    }
};

TEST_F(jobinfo_service, an_observer_may_delete_an_image_log_when_it_is_notified)
{
    const process service = start_service();
    cleaner observer;
    EXPECT_EQ(facade().tarn_jobinfo_add_observer(&observer), 0U);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_NE(notify({"print-page-info", "page=502"}).find("answered, result 0"), std::string::npos);
    EXPECT_TRUE(eventually([&observer] { return !observer.told().empty(); }));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(9)) << "nobody waits for the observer";
    EXPECT_EQ(facade().tarn_jobinfo_remove_observer(&observer), 0U);
    EXPECT_EQ(observer.told(), "image log 502 of 7002 status 4\n");
}

TEST_F(jobinfo_service, a_wrong_device_file_is_explained)
{
    const std::vector<std::pair<std::string, std::string>> wrong = {
        {"\"logs\": [ { \"id\": 1, \"type\": 1 } ]", ":1: /jobinfo/logs/0: expected a member \"log\""},
        {"\"logs\": [ { \"id\": 1, \"type\": 1, \"log\": \"\" },\n{ \"id\": 1, \"type\": 1, \"log\": \"\" } ]",
         ":2: /jobinfo/logs/1: expected one log of each id and type"},
        {"\"logs\": [ { \"id\": 1, \"type\": 1, \"log\": \"\", \"sent\": [ { \"sender\": 1 } ] } ]",
         ":1: /jobinfo/logs/0/sent/0/sender: expected a field of the layout of TARN_JOBINFO_SEND_INFO"},
        {"\"logs\": [ { \"id\": 1, \"type\": 1, \"log\": \"\", \"received\": [ \"" + std::string(562, '0') + "\" ] } ]",
         ":1: /jobinfo/logs/0/received/0: expected at most 280 bytes for a TARN_JOBINFO_RECEIVE_INFO"},
        {"\"image_logs\": [ { \"id\": 1, \"job\": 1, \"text\": \"\" },\n{ \"id\": 1, \"job\": 2, \"text\": \"\" } ]",
         ":2: /jobinfo/image_logs/1: expected one image log of each id"},
        {"\"image_logs\": [ { \"id\": 1, \"job\": 1, \"text\": \"" + std::string(260, 't') + "\" } ]",
         ":1: /jobinfo/image_logs/0/text: expected a text of at most 259 bytes"},
    };
    for (const auto& [content, message] : wrong) {
        const auto file = write_file("wrong.json", R"({ "jobinfo": { )" + content + " } }");
        std::string output;
        EXPECT_EQ(run("tarnsim", {file}, output), 1);
        EXPECT_NE(output.find(file.string() + message), std::string::npos) << output;
    }
}

}  // namespace
