#include "story.h"
#include "tarn_job_facade.h"
#include "tarn_job_observer.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <vector>

namespace tour {

namespace {

constexpr auto printing = static_cast<TARN_JOB_PHB_CATEGORY>(4);
constexpr auto scanning = static_cast<TARN_JOB_PHB_CATEGORY>(8);

norvane::tarn_job_facade& facade() { return *norvane::tarn_job_facade::tarn_job_get_instance(); }

unsigned int word(const unsigned char* record, std::size_t offset)
{
    unsigned int value = 0;
    std::memcpy(&value, record + offset, sizeof value);
    return value;
}

std::string content_of(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

const json& category_of(const story& story, TARN_JOB_PHB_CATEGORY which)
{
    const json& all = story.device().at("job").at("categories");
    return *std::find_if(all.begin(), all.end(), [which](const json& each) { return each.at("category") == which; });
}

/// Notes what the service tells about the jobs, in words.
class reporter : public norvane::tarn_job_observer {
public:
    explicit reporter(const json& states) : states_(states) {}

    /// What was told until something begins with `last`, which is waited for.
    std::vector<std::string> told_until(const std::string& last)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        for (;;) {
            {
                const std::lock_guard lock(mutex_);
                const bool came = !told_.empty() && told_.back().starts_with(last);
                if (came || std::chrono::steady_clock::now() > end) return std::exchange(told_, {});
            }
            usleep(5000);
        }
    }

private:
    unsigned int notify_job_state_changed(TARN_JOB_STATE state) override
    {
        for (const auto& [name, number] : states_.items()) {
            if (number == word(state.bytes, 4)) return note("the job is " + name);
        }
        return note("the job is in no known state");
    }
    unsigned int notify_scan_count(unsigned int, unsigned int pages) override
    {
        return note(fmt::format("pages scanned: {}", pages));
    }
    unsigned int notify_message_info(unsigned int, TARN_PHB_GET_MESSAGE& message) override
    {
        return note(std::string("message: ") + reinterpret_cast<const char*>(message.bytes + 8));
    }
    unsigned int note(std::string what)
    {
        const std::lock_guard lock(mutex_);
        told_.push_back(std::move(what));
        return 0;
    }

    const json& states_;
    std::mutex mutex_;
    std::vector<std::string> told_;
};

void expect_equal(story& story, std::string_view asked, const std::string& came, const std::string& expected)
{
    story.expect(asked, came == expected ? fmt::format("equal, {} bytes", came.size()) : "different",
                 fmt::format("equal, {} bytes", expected.size()));
}

void scan(story& story)
{
    const json& category = category_of(story, scanning);
    reporter observer(story.device().at("job").at("states"));
    story.succeeded("observe the jobs", facade().tarn_job_add_observer(&observer));

    unsigned int job = 0;
    unsigned int started = 0;
    story.succeeded("make the record of a scan job", facade().tarn_job_generate_jobinfo(scanning, job));
    story.succeeded("scan with 300 dots per inch",
                    facade().tarn_job_set_value(job, static_cast<TARN_JOB_SETTING>(1), 300U));
    const auto as = static_cast<TARN_JOB_CATEGORY>(category.at("start_as").get<unsigned int>());
    story.succeeded("start it", facade().tarn_job_start(as, job, started));

    const auto target = std::filesystem::temp_directory_path() / fmt::format("tarn-tour-{}.pgm", getpid());
    std::ofstream file(target, std::ios::binary);
    unsigned int failure = 0;
    unsigned int pieces = 0;
    for (bool last = false; !last && failure == 0; ++pieces) {
        TARN_JOB_GET_SCAN_DATA piece{};
        failure = facade().tarn_job_get_scan_data(job, piece);
        const unsigned int length = word(piece.bytes, 0);
        last = word(piece.bytes, 4) != 0 || length == 0;
        file.write(reinterpret_cast<const char*>(piece.bytes) + 8, static_cast<std::streamsize>(length));
    }
    file.close();
    story.succeeded(fmt::format("fetch what was scanned, in {} pieces, into a file", pieces), failure);
    expect_equal(story, "the file, compared with the original", content_of(target),
                 content_of(story.file(category.at("scan_file"))));
    std::filesystem::remove(target);

    std::vector<std::string> expected = {"the job is running"};
    for (unsigned int page = 1; page <= category.at("pages"); ++page) {
        expected.push_back(fmt::format("pages scanned: {}", page));
    }
    expected.emplace_back("the job is done");
    const json& messages = story.device().at("job").at("messages");
    expected.push_back("message: " + messages.at("done").at("text").get<std::string>());
    const auto told = observer.told_until("message: ");
    for (std::size_t i = 0; i < std::max(told.size(), expected.size()); ++i) {
        const auto at = [i](const std::vector<std::string>& all) { return i < all.size() ? all[i] : "nothing"; };
        story.expect("the service tells", at(told), at(expected));
    }
    story.succeeded("delete the record and its memory", facade().tarn_job_delete_jobinfo(job));
    story.succeeded("observe no more", facade().tarn_job_remove_observer(&observer));
}

void print(story& story)
{
    const std::string data = content_of(story.file(category_of(story, scanning).at("scan_file")));
    unsigned int job = 0;
    story.succeeded("make the record of a direct-print job", facade().tarn_job_generate_jobinfo(printing, job));
    story.succeeded("prepare its stream",
                    facade().tarn_job_direct_print_prepare(job, static_cast<TARN_JOB_STREAM_WRITE_FILE>(1)));
    unsigned int failure = 0;
    TARN_JOB_WRITE_STREAM_DATA piece{};
    constexpr std::size_t room = sizeof piece.bytes - 8;
    for (std::size_t at = 0; at < data.size() && failure == 0; at += room) {
        const auto length = static_cast<unsigned int>(std::min(room, data.size() - at));
        const unsigned int last = at + length == data.size() ? 1 : 0;
        std::memcpy(piece.bytes, &length, sizeof length);
        std::memcpy(piece.bytes + 4, &last, sizeof last);
        std::memcpy(piece.bytes + 8, data.data() + at, length);
        failure = facade().tarn_job_write_stream_data(job, piece);
    }
    story.succeeded("feed it from a file", failure);
    const auto directory = story.file(category_of(story, printing).at("print_directory"));
    const auto printed = directory / fmt::format("job-{}.prn", job);
    expect_equal(story, "what was printed, compared with the file", content_of(printed), data);
    story.succeeded("delete the record and its memory", facade().tarn_job_delete_jobinfo(job));
    std::error_code not_empty;
    std::filesystem::remove(printed);
    std::filesystem::remove(directory, not_empty);
}

TARN_JOB_SEND_INFO destination(std::string_view address)
{
    TARN_JOB_SEND_INFO info{};
    std::memcpy(info.bytes + 68, address.data(), address.size());
    return info;
}

void send(story& story)
{
    unsigned int job = 0;
    story.succeeded("make the record of a job with destinations", facade().tarn_job_generate_jobinfo(scanning, job));
    std::vector<unsigned int> ids;
    for (const std::string_view address : {"ada@floor4.example", "ben@floor4.example", "archive@cellar.example"}) {
        unsigned int id = 0;
        story.succeeded(fmt::format("add {}", address), facade().tarn_job_add_address(job, id, destination(address)));
        ids.push_back(id);
    }
    story.succeeded("change the second",
                    facade().tarn_job_update_address(job, ids[1], destination("ben@home.example")));
    story.succeeded("delete the third", facade().tarn_job_delete_address(job, ids[2]));

    unsigned int count = 0;
    std::vector<unsigned int> left;
    facade().tarn_job_get_address_id(job, count, left);
    story.expect("destinations now", count, 2U);
    std::vector<std::string> addresses;
    for (const unsigned int id : left) {
        TARN_JOB_SEND_INFO info{};
        facade().tarn_job_get_address(job, id, info);
        addresses.emplace_back(reinterpret_cast<const char*>(info.bytes) + 68);
    }
    addresses.resize(2);
    story.expect("the first", addresses[0], std::string("ada@floor4.example"));
    story.expect("the second", addresses[1], std::string("ben@home.example"));
    TARN_JOB_SEND_INFO info{};
    story.refused("the third, which is deleted", facade().tarn_job_get_address(job, ids[2], info), 0x02000005);
    story.succeeded("delete the record", facade().tarn_job_delete_jobinfo(job));
}

}  // namespace

void job(story& story)
{
    story.chapter("Jobs: scanning to a file");
    scan(story);
    story.chapter("Jobs: printing from a file");
    print(story);
    story.chapter("Jobs: destinations");
    send(story);
}

}  // namespace tour
