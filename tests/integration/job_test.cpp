// Jobs against the stand-in service in another process: records, settings and destinations, jobs that
// run and notify, the data that goes in and out of them, and what happens when threads, applications
// and the service get in each other's way.
#include "tarn_job_facade.h"
#include "tarn_job_observer.h"

#include "integration/processes.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstring>
#include <fstream>
#include <mutex>
#include <set>
#include <thread>

namespace {

using namespace testing_processes;
using json = nlohmann::ordered_json;
using norvane::tarn_job_facade;
using ids = std::vector<unsigned int>;

constexpr unsigned int not_found = 0x02000005;
constexpr unsigned int unknown_key = 0x02000003;
constexpr unsigned int wrong_kind = 0x02000004;
constexpr unsigned int not_prepared = 0x02000008;
constexpr unsigned int wrong_state = 0x0200000A;
constexpr unsigned int bad_length = 0x02000002;
constexpr unsigned int full = 0x0200000B;
constexpr unsigned int no_shared_memory = 0x04010001;

constexpr auto copying = static_cast<TARN_JOB_PHB_CATEGORY>(1);
constexpr auto printing = static_cast<TARN_JOB_PHB_CATEGORY>(4);
constexpr auto scanning_text = static_cast<TARN_JOB_PHB_CATEGORY>(7);
constexpr auto scanning = static_cast<TARN_JOB_PHB_CATEGORY>(8);
constexpr auto start_copy = static_cast<TARN_JOB_CATEGORY>(1);
constexpr auto start_scan = static_cast<TARN_JOB_CATEGORY>(3);

constexpr auto resolution = static_cast<TARN_JOB_SETTING>(1);
constexpr auto title = static_cast<TARN_JOB_SETTING>(100);
constexpr auto no_setting = static_cast<TARN_JOB_SETTING>(9999);
constexpr auto format = static_cast<TARN_PHB_SETTING_ID>(1);

constexpr std::size_t piece_size = 16384;

tarn_job_facade& facade() { return *tarn_job_facade::tarn_job_get_instance(); }

unsigned int generate(TARN_JOB_PHB_CATEGORY category)
{
    unsigned int job = 0;
    EXPECT_EQ(facade().tarn_job_generate_jobinfo(category, job), 0U);
    EXPECT_NE(job, 0U);
    return job;
}

unsigned int start(TARN_JOB_CATEGORY category, unsigned int job)
{
    unsigned int started = 0;
    const unsigned int result = facade().tarn_job_start(category, job, started);
    EXPECT_TRUE(result != 0 || started == job);
    return result;
}

unsigned int word(const unsigned char* record, std::size_t offset)
{
    unsigned int value = 0;
    std::memcpy(&value, record + offset, sizeof value);
    return value;
}

unsigned int number_of(unsigned int job, TARN_JOB_SETTING setting)
{
    unsigned int value = 0;
    EXPECT_EQ(facade().tarn_job_get_value(job, setting, value), 0U);
    return value;
}

/// The number of the job's message: 10 for a prepared job and one more for each of starting, waiting,
/// running, next original, done and cancelled.
unsigned int message_of(unsigned int job)
{
    TARN_PHB_GET_MESSAGE message{};
    EXPECT_EQ(facade().tarn_job_get_main_message(job, message), 0U);
    EXPECT_EQ(word(message.bytes, 0), job);
    return word(message.bytes, 4);
}

constexpr unsigned int waiting_message = 12;
constexpr unsigned int next_original_message = 14;
constexpr unsigned int done_message = 15;
constexpr unsigned int cancelled_message = 16;

std::string scan_all(unsigned int job)
{
    std::string data;
    for (bool last = false; !last;) {
        TARN_JOB_GET_SCAN_DATA piece{};
        const unsigned int result = facade().tarn_job_get_scan_data(job, piece);
        EXPECT_EQ(result, 0U);
        const unsigned int length = word(piece.bytes, 0);
        EXPECT_LE(length, piece_size);
        if (result != 0 || length > piece_size) break;
        data.append(reinterpret_cast<const char*>(piece.bytes) + 8, length);
        last = word(piece.bytes, 4) != 0;
        EXPECT_TRUE(last || length == piece_size);
        if (length == 0) break;
    }
    return data;
}

unsigned int write_piece(unsigned int job, std::string_view data, bool last)
{
    TARN_JOB_WRITE_STREAM_DATA piece{};
    const auto length = static_cast<unsigned int>(data.size());
    const unsigned int flag = last ? 1 : 0;
    std::memcpy(piece.bytes, &length, sizeof length);
    std::memcpy(piece.bytes + 4, &flag, sizeof flag);
    std::memcpy(piece.bytes + 8, data.data(), std::min(data.size(), piece_size));
    return facade().tarn_job_write_stream_data(job, piece);
}

TARN_JOB_SEND_INFO destination(const std::string& address)
{
    TARN_JOB_SEND_INFO info{};
    std::memcpy(info.bytes + 68, address.data(), address.size());
    info.bytes[459] = 0x5A;
    return info;
}

/// Bytes in which every place differs from its neighbours and from the same place of other pieces.
std::string numbered_bytes(std::size_t size, unsigned int seed)
{
    std::string bytes(size, '\0');
    unsigned int state = seed;
    for (char& each : bytes) {
        state = state * 1664525U + 1013904223U;
        each = static_cast<char>(state >> 24);
    }
    return bytes;
}

class job_service : public process_test {
protected:
    /// The example device, which may be changed before it is served; what it prints goes to this test's
    /// own directory.
    json device = [this] {
        json content = json::parse(read_file(TARN_EXAMPLE_DEVICE));
        const auto folder = std::filesystem::path(TARN_EXAMPLE_DEVICE).parent_path();
        for (json& each : content.at("job").at("categories")) {
            for (const char* const file : {"scan_file", "ocr_file"}) {
                if (each.contains(file)) each[file] = (folder / each[file].get<std::string>()).string();
            }
            if (each.contains("print_directory")) each["print_directory"] = (directory() / "printed").string();
        }
        return content;
    }();

    json& category(unsigned int number)
    {
        for (json& each : device.at("job").at("categories")) {
            if (each.at("category") == number) return each;
        }
        throw std::runtime_error("no such category");
    }
    [[nodiscard]] process serve() const { return start_service(write_file("device.json", device.dump(2))); }
    static std::string original(const std::string& name)
    {
        return read_file(std::filesystem::path(TARN_EXAMPLE_DEVICE).parent_path() / name);
    }
    [[nodiscard]] std::string printed(unsigned int job) const
    {
        return read_file(directory() / "printed" / ("job-" + std::to_string(job) + ".prn"));
    }
};

TEST_F(job_service, settings_of_every_kind_are_stored_and_come_back)
{
    const process service = serve();
    const unsigned int job = generate(scanning);
    const unsigned int other = generate(copying);
    EXPECT_EQ(number_of(job, resolution), 200U);
    EXPECT_EQ(number_of(other, resolution), 600U) << "what its category begins with";

    EXPECT_EQ(facade().tarn_job_set_value(job, resolution, 300U), 0U);
    EXPECT_EQ(number_of(job, resolution), 300U);
    EXPECT_EQ(number_of(other, resolution), 600U);

    std::string text;
    EXPECT_EQ(facade().tarn_job_get_value(job, title, text), 0U);
    EXPECT_EQ(text, "Untitled");
    const std::string longest(1499, 'x');
    EXPECT_EQ(facade().tarn_job_set_value(job, title, longest + "y"), 0U);
    EXPECT_EQ(facade().tarn_job_get_value(job, title, text), 0U);
    EXPECT_EQ(text, longest);

    unsigned int a = 0;
    unsigned int b = 0;
    unsigned int c = 0;
    EXPECT_EQ(facade().tarn_job_get_value(job, format, a, b, c), 0U);
    EXPECT_EQ((std::vector{a, b, c}), (std::vector{210U, 297U, 0U}));
    EXPECT_EQ(facade().tarn_job_set_value(job, format, 1U, 2U, 0xFFFFFFFFU), 0U);
    EXPECT_EQ(facade().tarn_job_get_value(job, format, a, b, c), 0U);
    EXPECT_EQ((std::vector{a, b, c}), (std::vector{1U, 2U, 0xFFFFFFFFU}));

    EXPECT_EQ(facade().tarn_job_get_value(job, no_setting, a), unknown_key);
    EXPECT_EQ(facade().tarn_job_get_value(job, title, a), wrong_kind);
    EXPECT_EQ(facade().tarn_job_set_value(job, resolution, std::string("fine")), wrong_kind);
    EXPECT_EQ(facade().tarn_job_get_value(job, static_cast<TARN_PHB_SETTING_ID>(77), a, b, c), unknown_key);
    EXPECT_EQ(facade().tarn_job_get_value(99, resolution, a), not_found);
}

TEST_F(job_service, defaults_and_basic_values)
{
    const process service = serve();
    const unsigned int before = generate(copying);
    unsigned int value = 0;
    EXPECT_EQ(facade().tarn_job_get_default_jobinfo_val(resolution, value), 0U);
    EXPECT_EQ(value, 200U);
    EXPECT_EQ(facade().tarn_job_get_default_jobinfo_val(title, value), wrong_kind);
    EXPECT_EQ(facade().tarn_job_get_default_jobinfo_val(no_setting, value), unknown_key);

    EXPECT_EQ(facade().tarn_job_basic_func_set_value(static_cast<TARN_JOB_FUNC_TYPE>(1), resolution, 1200U), 0U);
    EXPECT_EQ(facade().tarn_job_basic_func_set_value(static_cast<TARN_JOB_FUNC_TYPE>(9), resolution, 1U), unknown_key);
    EXPECT_EQ(number_of(generate(copying), resolution), 1200U);
    EXPECT_EQ(number_of(before, resolution), 600U) << "a record that is there keeps its values";
    EXPECT_EQ(number_of(generate(scanning), resolution), 200U) << "another function";
}

TEST_F(job_service, a_copy_is_rolled_back_to_or_committed)
{
    const process service = serve();
    const unsigned int job = generate(copying);
    unsigned int address = 0;
    EXPECT_EQ(facade().tarn_job_rollback_jobinfo(job), not_prepared);
    EXPECT_EQ(facade().tarn_job_commit_jobinfo(job), not_prepared);

    facade().tarn_job_set_value(job, resolution, 1U);
    EXPECT_EQ(facade().tarn_job_copy_jobinfo(job), 0U);
    facade().tarn_job_set_value(job, resolution, 2U);
    facade().tarn_job_set_value(job, format, 7U, 8U, 9U);
    facade().tarn_job_add_address(job, address, destination("a@b.example"));
    EXPECT_EQ(number_of(job, resolution), 2U);
    EXPECT_EQ(facade().tarn_job_rollback_jobinfo(job), 0U);
    EXPECT_EQ(number_of(job, resolution), 1U);
    unsigned int a = 0;
    unsigned int b = 0;
    unsigned int c = 0;
    facade().tarn_job_get_value(job, format, a, b, c);
    EXPECT_EQ(a, 210U);
    ids all;
    facade().tarn_job_get_address_id(job, address, all);
    EXPECT_EQ(all, ids{});

    facade().tarn_job_set_value(job, resolution, 3U);
    EXPECT_EQ(facade().tarn_job_commit_jobinfo(job), 0U);
    EXPECT_EQ(facade().tarn_job_rollback_jobinfo(job), not_prepared);
    EXPECT_EQ(number_of(job, resolution), 3U);
    EXPECT_EQ(facade().tarn_job_reset_jobinfo(job), 0U);
    EXPECT_EQ(number_of(job, resolution), 600U);
}

TEST_F(job_service, destinations_are_added_changed_and_deleted)
{
    const process service = serve();
    const unsigned int job = generate(scanning);
    ids made(3);
    for (unsigned int& id : made) {
        EXPECT_EQ(facade().tarn_job_add_address(job, id, destination("first@host.example")), 0U);
    }
    EXPECT_EQ(made, (ids{1, 2, 3}));
    EXPECT_EQ(facade().tarn_job_update_address(job, 3, destination("changed@host.example")), 0U);
    EXPECT_EQ(facade().tarn_job_delete_address(job, 2), 0U);
    EXPECT_EQ(facade().tarn_job_delete_address(job, 2), not_found);
    EXPECT_EQ(facade().tarn_job_update_address(job, 2, destination("")), not_found);

    TARN_JOB_SEND_INFO info{};
    EXPECT_EQ(facade().tarn_job_get_address(job, 3, info), 0U);
    EXPECT_STREQ(reinterpret_cast<const char*>(info.bytes) + 68, "changed@host.example");
    EXPECT_EQ(info.bytes[459], 0x5A);
    EXPECT_EQ(facade().tarn_job_get_address(job, 2, info), not_found);

    unsigned int count = 0;
    ids all = {77};
    EXPECT_EQ(facade().tarn_job_get_address_id(job, count, all), 0U);
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(all, (ids{77, 1, 3}));
    unsigned int id = 0;
    facade().tarn_job_add_address(job, id, destination("x"));
    EXPECT_EQ(id, 4U) << "a deleted id is not given again";

    EXPECT_EQ(facade().tarn_job_delete_all_address(job), 0U);
    all.clear();
    EXPECT_EQ(facade().tarn_job_get_address_id(job, count, all), 0U);
    EXPECT_EQ(count, 0U);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(facade().tarn_job_add_address(job, id, destination("x")), 0U);
    EXPECT_EQ(facade().tarn_job_add_address(job, id, destination("x")), full);
    EXPECT_EQ(facade().tarn_job_get_address_id(job, count, all), 0U);
    EXPECT_EQ(all.size(), 100U);
}

TEST_F(job_service, jobs_are_listed_by_kind)
{
    const process service = serve();
    const ids copies = {generate(copying), generate(copying)};
    const unsigned int scan = generate(scanning);
    ids listed;
    EXPECT_EQ(facade().tarn_job_get_job_list(static_cast<TARN_JOB_KIND>(1), listed), 0U);
    EXPECT_EQ(listed, copies);
    EXPECT_EQ(facade().tarn_job_get_job_list(static_cast<TARN_JOB_KIND>(3), listed), 0U);
    EXPECT_EQ(listed, (ids{copies[0], copies[1], scan}));
    facade().tarn_job_delete_jobinfo(copies[0]);
    listed.clear();
    EXPECT_EQ(facade().tarn_job_get_job_list(static_cast<TARN_JOB_KIND>(0), listed), 0U);
    EXPECT_EQ(listed, (ids{copies[1], scan}));
    EXPECT_EQ(facade().tarn_job_get_job_list(static_cast<TARN_JOB_KIND>(42), listed), unknown_key);

    unsigned int job = 0;
    for (int i = 2; i < 210; ++i) EXPECT_EQ(facade().tarn_job_generate_jobinfo(copying, job), 0U);
    EXPECT_EQ(facade().tarn_job_generate_jobinfo(copying, job), full);
    EXPECT_EQ(facade().tarn_job_generate_jobinfo(static_cast<TARN_JOB_PHB_CATEGORY>(99), job), unknown_key);
}

/// Notes what it is told as texts.
class diary : public norvane::tarn_job_observer {
public:
    std::vector<std::string> entries()
    {
        const std::lock_guard lock(mutex_);
        return entries_;
    }

private:
    unsigned int notify_job_state_changed(TARN_JOB_STATE state) override
    {
        return note("job " + std::to_string(word(state.bytes, 0)) + " state " + std::to_string(word(state.bytes, 4)) +
                    " category " + std::to_string(word(state.bytes, 8)) + " pages " +
                    std::to_string(word(state.bytes, 12)));
    }
    unsigned int notify_scan_count(unsigned int a, unsigned int b) override
    {
        return note("scan count " + std::to_string(a) + " " + std::to_string(b));
    }
    unsigned int notify_start_phb(unsigned int value) override { return note("start " + std::to_string(value)); }
    unsigned int notify_disable_info(unsigned int value) override { return note("disable " + std::to_string(value)); }
    unsigned int notify_main_message(unsigned int value) override { return note("main " + std::to_string(value)); }
    unsigned int notify_phb_info(unsigned int value, TARN_PHB_INFO& info) override
    {
        const auto* const bytes = reinterpret_cast<const unsigned char*>(&info);
        return note("info " + std::to_string(value) + " job " + std::to_string(word(bytes, 0)) + " tray " +
                    std::to_string(word(bytes, 4)));
    }
    unsigned int notify_message_info(unsigned int value, TARN_PHB_GET_MESSAGE& message) override
    {
        return note("message " + std::to_string(value) + " " + (reinterpret_cast<const char*>(message.bytes) + 8));
    }
    unsigned int note(const std::string& entry)
    {
        const std::lock_guard lock(mutex_);
        entries_.push_back(entry);
        return 0;
    }

    std::mutex mutex_;
    std::vector<std::string> entries_;
};

TEST_F(job_service, a_job_notifies_in_order)
{
    const process service = serve();
    diary observer;
    ASSERT_EQ(facade().tarn_job_add_observer(&observer), 0U);
    const unsigned int job = generate(scanning);
    ASSERT_EQ(job, 1U);
    ASSERT_EQ(start(start_scan, job), 0U);
    EXPECT_TRUE(eventually([&] { return observer.entries().size() >= 12; }));
    EXPECT_EQ(facade().tarn_job_remove_observer(&observer), 0U);
    const std::vector<std::string> expected = {"job 1 state 3 category 8 pages 0",
                                               "main 1",
                                               "start 1",
                                               "disable 1",
                                               "info 1 job 1 tray 2",
                                               "scan count 1 1",
                                               "scan count 1 2",
                                               "scan count 1 3",
                                               "job 1 state 5 category 8 pages 3",
                                               "main 1",
                                               "disable 1",
                                               "message 1 Finished"};
    EXPECT_EQ(observer.entries(), expected);
    EXPECT_EQ(facade().tarn_job_delete_jobinfo(job), 0U);
}

TEST_F(job_service, a_waiting_job_is_kicked_and_reads_further_originals)
{
    const process service = serve();
    const unsigned int job = generate(copying);
    int begun = -1;
    unsigned short disabled = 9;
    EXPECT_EQ(facade().tarn_job_get_start_phb(job, begun), 0U);
    EXPECT_EQ(begun, 0);
    EXPECT_EQ(facade().tarn_job_get_disable_info(job, static_cast<TARN_PHB_DISABLE_ITEM>(2), disabled), 0U);
    EXPECT_EQ(disabled, 2);
    EXPECT_EQ(facade().tarn_job_kick(job), wrong_state);
    EXPECT_EQ(start(start_scan, job), wrong_kind);
    EXPECT_EQ(start(start_copy, job + 1), not_found);
    EXPECT_EQ(start(start_copy, job), 0U);
    EXPECT_EQ(message_of(job), waiting_message);
    EXPECT_EQ(facade().tarn_job_get_start_phb(job, begun), 0U);
    EXPECT_EQ(begun, 2);
    EXPECT_EQ(facade().tarn_job_set_value(job, resolution, 1U), wrong_state) << "it is started";

    EXPECT_EQ(facade().tarn_job_kick(job), 0U);
    EXPECT_TRUE(eventually([&] { return message_of(job) == next_original_message; }));
    EXPECT_EQ(facade().tarn_job_continuous_read(job), 0U);
    EXPECT_TRUE(eventually([&] { return message_of(job) == next_original_message; }));
    EXPECT_EQ(facade().tarn_job_continuous_read_end(job), 0U);
    EXPECT_EQ(message_of(job), done_message);
    EXPECT_EQ(facade().tarn_job_continuous_read(job), wrong_state);
    EXPECT_EQ(facade().tarn_job_cancel(job, 0), wrong_state) << "it has ended";

    const unsigned int newest = generate(copying);
    unsigned int started = 0;
    EXPECT_EQ(facade().tarn_job_start(start_copy, 0, started), 0U);
    EXPECT_EQ(started, newest);
    EXPECT_EQ(facade().tarn_job_notify_timeout(newest), 0U);
    EXPECT_EQ(message_of(newest), cancelled_message);
    EXPECT_EQ(facade().tarn_job_cancel_bkg(99, 0), not_found);
}

TEST_F(job_service, a_logout_cancels_the_users_background_jobs)
{
    const process service = serve();
    unsigned int first = 0;
    unsigned int second = 0;
    EXPECT_EQ(facade().tarn_job_generate_jobinfo_bkg(copying, 500, first), 0U);
    EXPECT_EQ(facade().tarn_job_generate_jobinfo_bkg(copying, 501, second), 0U);
    EXPECT_EQ(facade().tarn_job_notify_logout_bkg(500), 0U);
    EXPECT_EQ(message_of(first), cancelled_message);
    EXPECT_EQ(message_of(second), 10U);
}

TEST_F(job_service, the_state_of_the_machine)
{
    const process service = serve();
    const unsigned int job = generate(copying);
    EXPECT_EQ(facade().tarn_job_check_state_of_prohibition(), 0U);
    EXPECT_EQ(facade().tarn_job_set_state_of_prohibition(static_cast<TARN_STATE_OF_PROHIBITION>(1)), 0U);
    EXPECT_EQ(facade().tarn_job_check_state_of_prohibition(), 1U);
    EXPECT_EQ(start(start_copy, job), wrong_state);
    EXPECT_EQ(facade().tarn_job_set_state_of_prohibition(static_cast<TARN_STATE_OF_PROHIBITION>(0)), 0U);
    EXPECT_EQ(start(start_copy, job), 0U);

    int answer = 0;
    EXPECT_EQ(facade().tarn_job_notify_energy_saving_mode(static_cast<TARN_JOB_ENERGY_SAVING_STATE>(1), answer), 0U);
    EXPECT_EQ(answer, -1);
    EXPECT_EQ(facade().tarn_job_check_app_stop_permission_to_change_state("scan-to-desk"), 0U);
    EXPECT_EQ(facade().tarn_job_check_app_stop_permission_to_change_state("night-archive"), 1U);
    EXPECT_EQ(facade().tarn_job_check_app_stop_permission_to_change_state("nobody"), not_found);
    EXPECT_EQ(facade().tarn_job_notify_finish_app_state_change_judgement("scan-to-desk"), 0U);
    EXPECT_EQ(facade().tarn_job_notify_finish_app_state_change_judgement("nobody"), not_found);
}

TEST_F(job_service, documents_are_prepared_before_the_start)
{
    const process service = serve();
    const unsigned int job = generate(copying);
    TARN_BOX_JOB_INIT_SETTING box{};
    TARN_PHB_COMBINE_DOC_INFO combined{};
    char number[17] = "12";
    char name[256] = "minutes";
    const auto prepare_all = [&] {
        return std::vector{facade().tarn_job_box_job_prepare(job, box),
                           facade().tarn_job_retrieve_document_prepare(job, number, 1, 2, name),
                           facade().tarn_job_combine_document(job, combined),
                           facade().tarn_job_direct_print_prepare(job, name, nullptr)};
    };
    EXPECT_EQ(prepare_all(), std::vector(4, 0U));
    EXPECT_EQ(start(start_copy, job), 0U);
    EXPECT_EQ(prepare_all(), std::vector(4, wrong_state));
    EXPECT_EQ(facade().tarn_job_combine_document(99, combined), not_found);
}

TEST_F(job_service, a_megabyte_of_scan_data_is_complete_and_in_order)
{
    const std::string data = numbered_bytes((std::size_t{1} << 20) + 4321, 1);
    category(8)["scan_file"] = "megabyte.bin";
    std::ofstream(directory() / "megabyte.bin", std::ios::binary) << data;
    const process service = serve();
    const unsigned int job = generate(scanning);
    TARN_JOB_GET_SCAN_DATA piece{};
    EXPECT_EQ(facade().tarn_job_get_scan_data(job, piece), wrong_state) << "it is not started";
    ASSERT_EQ(start(start_scan, job), 0U);
    EXPECT_TRUE(scan_all(job) == data);
    EXPECT_EQ(facade().tarn_job_get_scan_data(job, piece), 0U);
    EXPECT_EQ(word(piece.bytes, 0), 0U) << "there is no more";
    EXPECT_EQ(word(piece.bytes, 4), 1U);
    EXPECT_EQ(facade().tarn_job_delete_jobinfo(job), 0U);
    EXPECT_EQ(facade().tarn_job_get_scan_data(job, piece), no_shared_memory);
}

TEST_F(job_service, a_job_with_ocr_delivers_text_and_scan)
{
    const process service = serve();
    const unsigned int job = generate(scanning_text);
    ASSERT_EQ(start(start_scan, job), 0U);
    TARN_JOB_GET_OCR_DATA text{};
    ASSERT_EQ(facade().tarn_job_get_ocr_text_data(job, text), 0U);
    const std::string expected = original("original.txt");
    ASSERT_EQ(word(text.bytes, 0), expected.size());
    EXPECT_EQ(word(text.bytes, 4), 1U);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(text.bytes) + 28, expected.size()), expected);
    EXPECT_TRUE(scan_all(job) == original("original.pgm"));
    EXPECT_EQ(facade().tarn_job_delete_jobinfo(job), 0U);
}

TEST_F(job_service, memory_is_released_with_the_last_job_that_uses_it)
{
    const process service = serve();
    const unsigned int first = generate(scanning);
    const unsigned int second = generate(scanning_text);
    ASSERT_EQ(start(start_scan, second), 0U);
    EXPECT_EQ(facade().tarn_job_delete_jobinfo(first), 0U);
    EXPECT_TRUE(scan_all(second) == original("original.pgm")) << "the other job's memory is still there";
    EXPECT_EQ(facade().tarn_job_delete_jobinfo(first), not_found);
    EXPECT_EQ(facade().tarn_job_delete_jobinfo(second), 0U);
    TARN_JOB_GET_SCAN_DATA piece{};
    EXPECT_EQ(facade().tarn_job_get_scan_data(second, piece), no_shared_memory);
    const unsigned int third = generate(scanning);
    ASSERT_EQ(start(start_scan, third), 0U);
    EXPECT_TRUE(scan_all(third) == original("original.pgm")) << "new memory";
}

TEST_F(job_service, a_direct_print_is_stored_byte_for_byte)
{
    const process service = serve();
    const std::string data = numbered_bytes(5 * piece_size + 99, 2);
    const unsigned int job = generate(printing);
    EXPECT_EQ(write_piece(job, "too early", false), not_prepared);
    ASSERT_EQ(facade().tarn_job_direct_print_prepare(job, static_cast<TARN_JOB_STREAM_WRITE_FILE>(1)), 0U);
    EXPECT_EQ(write_piece(job, std::string(piece_size + 1, 'x'), false), bad_length);
    for (std::size_t at = 0; at < data.size(); at += piece_size) {
        EXPECT_EQ(write_piece(job, std::string_view(data).substr(at, piece_size), at + piece_size >= data.size()), 0U);
    }
    EXPECT_TRUE(printed(job) == data);
    EXPECT_EQ(message_of(job), done_message);
    EXPECT_EQ(write_piece(job, "more", false), wrong_state);
    EXPECT_EQ(facade().tarn_job_delete_jobinfo(job), 0U);
    const unsigned int copy = generate(copying);
    EXPECT_EQ(facade().tarn_job_direct_print_prepare(copy, static_cast<TARN_JOB_STREAM_WRITE_FILE>(1)), wrong_kind);
}

TEST_F(job_service, a_cancel_does_not_wait_for_a_start_that_is_held)
{
    category(8)["start_delay_ms"] = 3000;
    const process service = serve();
    const unsigned int job = generate(scanning);
    std::atomic<bool> answered = false;
    unsigned int result = 0;
    std::thread starter([&] {
        result = start(start_scan, job);
        answered = true;
    });
    int begun = 0;
    EXPECT_TRUE(eventually([&] {
        facade().tarn_job_get_start_phb(job, begun);
        return begun == 1;
    }));
    EXPECT_EQ(facade().tarn_job_cancel(job, 0), 0U);
    EXPECT_FALSE(answered);
    EXPECT_EQ(message_of(job), cancelled_message);
    starter.join();
    EXPECT_EQ(result, wrong_state) << "it was cancelled meanwhile";
    EXPECT_EQ(message_of(job), cancelled_message);
}

TEST_F(job_service, many_threads_change_settings)
{
    const process service = serve();
    const unsigned int shared = generate(copying);
    std::vector<std::thread> threads;
    for (unsigned int i = 0; i < 8; ++i) {
        threads.emplace_back([i, shared] {
            const unsigned int own = generate(copying);
            for (unsigned int round = 0; round < 25; ++round) {
                const unsigned int value = i * 1000 + round;
                EXPECT_EQ(facade().tarn_job_set_value(own, resolution, value), 0U);
                EXPECT_EQ(facade().tarn_job_set_value(shared, format, value, value, value), 0U);
                EXPECT_EQ(number_of(own, resolution), value);
                unsigned int a = 0;
                unsigned int b = 1;
                unsigned int c = 2;
                EXPECT_EQ(facade().tarn_job_get_value(shared, format, a, b, c), 0U);
                EXPECT_TRUE(a == b && b == c) << a << ' ' << b << ' ' << c;
                EXPECT_EQ(facade().tarn_job_set_value(own, title, std::to_string(value)), 0U);
            }
        });
    }
    for (std::thread& each : threads) each.join();
}

TEST_F(job_service, many_threads_generate_and_delete)
{
    const process service = serve();
    // Keeps the shared memory while others come and go.
    const unsigned int keeper = generate(scanning_text);
    ASSERT_EQ(start(start_scan, keeper), 0U);
    std::mutex mutex;
    std::set<unsigned int> made;
    std::vector<std::thread> threads;
    for (unsigned int i = 0; i < 8; ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < 15; ++round) {
                const unsigned int job = generate(i % 2 == 0 ? scanning : copying);
                {
                    const std::lock_guard lock(mutex);
                    EXPECT_TRUE(made.insert(job).second) << "an id is given once";
                }
                EXPECT_EQ(facade().tarn_job_delete_jobinfo(job), 0U);
            }
        });
    }
    for (std::thread& each : threads) each.join();
    EXPECT_EQ(made.size(), 120U);
    EXPECT_TRUE(scan_all(keeper) == original("original.pgm"));
    ids left;
    facade().tarn_job_get_job_list(static_cast<TARN_JOB_KIND>(0), left);
    EXPECT_EQ(left, ids{keeper});
}

TEST_F(job_service, a_service_that_dies_in_the_middle_of_a_stream_comes_back)
{
    process service = serve();
    const unsigned int scan = generate(scanning);
    const unsigned int print = generate(printing);
    ASSERT_EQ(start(start_scan, scan), 0U);
    ASSERT_EQ(facade().tarn_job_direct_print_prepare(print, static_cast<TARN_JOB_STREAM_WRITE_FILE>(1)), 0U);
    TARN_JOB_GET_SCAN_DATA piece{};
    EXPECT_EQ(facade().tarn_job_get_scan_data(scan, piece), 0U);
    EXPECT_EQ(write_piece(print, "first", false), 0U);

    service.halt();
    std::thread caller([&] { facade().tarn_job_get_scan_data(scan, piece); });
    usleep(50'000);
    service.stop(SIGKILL);
    caller.join();
    EXPECT_EQ(write_piece(print, "second", false), 0U) << "nobody answers";
    EXPECT_EQ(printed(print), "first");

    service = serve();
    EXPECT_EQ(facade().tarn_job_get_scan_data(scan, piece), not_found) << "its jobs have died with it";
    EXPECT_EQ(write_piece(print, "second", false), not_found);
    const unsigned int again = generate(scanning);
    ASSERT_EQ(start(start_scan, again), 0U);
    EXPECT_TRUE(scan_all(again) == original("original.pgm"));
    EXPECT_EQ(facade().tarn_job_delete_jobinfo(again), 0U);
}

TEST_F(job_service, two_applications_scan_at_once)
{
    const std::string first = numbered_bytes(600'001, 3);
    const std::string second = numbered_bytes(600'001, 4);
    std::ofstream(directory() / "first.bin", std::ios::binary) << first;
    std::ofstream(directory() / "second.bin", std::ios::binary) << second;
    category(8)["scan_file"] = "first.bin";
    category(7)["scan_file"] = "second.bin";
    const process service = serve();

    const unsigned int job = generate(scanning);
    ASSERT_EQ(start(start_scan, job), 0U);
    TARN_JOB_GET_SCAN_DATA piece{};
    ASSERT_EQ(facade().tarn_job_get_scan_data(job, piece), 0U);
    process other("job_scanner", {"7", directory() / "scanned.bin"}, directory() / "scanner.log");
    // The other begins while this one is in the middle of its data.
    EXPECT_TRUE(eventually([&] { return std::filesystem::exists(directory() / "scanned.bin"); }));
    const std::string begin(reinterpret_cast<const char*>(piece.bytes) + 8, piece_size);
    EXPECT_TRUE(begin + scan_all(job) == first);
    EXPECT_EQ(other.wait(), 0) << read_file(directory() / "scanner.log");
    EXPECT_TRUE(read_file(directory() / "scanned.bin") == second);
    EXPECT_EQ(facade().tarn_job_delete_jobinfo(job), 0U);
}

TEST_F(job_service, notifications_can_be_sent_by_hand)
{
    const process service = serve();
    diary observer;
    ASSERT_EQ(facade().tarn_job_add_observer(&observer), 0U);
    std::string output;
    EXPECT_EQ(run("tarnctl", {"notify", "scan-count", "7", "8"}, output), 0) << output;
    EXPECT_EQ(run("tarnctl", {"notify", "job-state-changed", "job=7,state=3"}, output), 0) << output;
    EXPECT_EQ(run("tarnctl", {"notify", "message-info", "7", "text=Paper"}, output), 0) << output;
    EXPECT_EQ(observer.entries(),
              (std::vector<std::string>{"scan count 7 8", "job 7 state 3 category 0 pages 0", "message 7 Paper"}));
    EXPECT_EQ(facade().tarn_job_remove_observer(&observer), 0U);
}

TEST_F(job_service, wrong_device_files_are_explained)
{
    const auto explained = [this](const std::string& message) {
        std::string output;
        EXPECT_EQ(run("tarnsim", {write_file("wrong.json", device.dump(2))}, output), 1);
        EXPECT_NE(output.find(message), std::string::npos) << output;
    };
    const json right = device;
    category(8)["scan_file"] = "no-such-file";
    explained("scan_file: expected a file that can be read");
    device = right;
    device["layouts"].erase("TARN_JOB_GET_SCAN_DATA");
    explained("scan_file: expected a layout of TARN_JOB_GET_SCAN_DATA");
    device = right;
    category(1)["settings"][0]["value"] = "fine";
    explained("value: expected a value of the setting's kind");
    device = right;
    device["job"]["states"]["lost"] = 9;
    explained("/job/states/lost: expected the name of a state");
}

TEST_F(job_service, a_saved_device_has_the_basic_values_and_its_files)
{
    const auto saved = directory() / "elsewhere" / "saved.json";
    std::filesystem::create_directory(directory() / "elsewhere");
    {
        process service = start_service({}, {"--save", saved});
        facade().tarn_job_basic_func_set_value(static_cast<TARN_JOB_FUNC_TYPE>(3), resolution, 75U);
        facade().tarn_job_set_state_of_prohibition(static_cast<TARN_STATE_OF_PROHIBITION>(0));
        EXPECT_EQ(service.stop(SIGTERM), 0);
    }
    const process service = start_service(saved);
    const unsigned int job = generate(scanning);
    EXPECT_EQ(number_of(job, resolution), 75U);
    ASSERT_EQ(start(start_scan, job), 0U);
    EXPECT_TRUE(scan_all(job) == original("original.pgm"));
    EXPECT_EQ(facade().tarn_job_delete_jobinfo(job), 0U);
}

}  // namespace
