#include "story.h"
#include "tarn_jobinfo_facade.h"
#include "tarn_jobinfo_observer.h"

#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>

namespace tour {

namespace {

using norvane::tarn_jobinfo_facade;

// Where the device file's layouts have these fields.
constexpr std::size_t pages_offset = 12;
constexpr std::size_t title_offset = 80;
constexpr std::size_t sender_offset = 8;
constexpr std::size_t address_offset = 8;

constexpr unsigned int end_of_list = 0x02000010;
/// More entries than any list has: a service that is gone answers with 0 for ever.
constexpr int most_entries = 20;

template <typename Record>
std::string text_at(const Record& record, std::size_t offset)
{
    return reinterpret_cast<const char*>(record.bytes) + offset;
}

/// Walks a list that was created to its end and compares each entry's text.
template <typename Record>
void walk(story& story, tarn_jobinfo_facade& facade, unsigned int (tarn_jobinfo_facade::*next)(Record&),
          const json& entries, const char* field, std::size_t offset)
{
    Record record;
    unsigned int result = 0;
    std::size_t count = 0;
    for (; count < most_entries && (result = (facade.*next)(record)) == 0; ++count) {
        const auto expected = count < entries.size() ? entries.at(count).at(field).get<std::string>() : "";
        story.expect(fmt::format("  entry {}", count + 1), text_at(record, offset), expected);
    }
    story.expect("  entries", count, entries.size());
    story.refused("  one more", result, end_of_list);
}

/// Keeps what it is told of image logs.
class image_log_observer : public norvane::tarn_jobinfo_observer {
public:
    [[nodiscard]] bool wait() const
    {
        for (int tries = 0; tries < 1000 && !told; ++tries) std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return told;
    }

    std::atomic<bool> told{false};
    unsigned long image_log = 0;
    unsigned int status = 0;

private:
    unsigned int notify_imagelog_create_status(unsigned int, unsigned long id,
                                               TARN_IMAGELOG_CREATE_STATUS_VAL now) override
    {
        image_log = id;
        status = now;
        told = true;
        return 0;
    }
};

void image_logs(story& story, tarn_jobinfo_facade& facade)
{
    const json& device = story.device().at("jobinfo");
    std::string text;
    for (const json& entry : device.at("image_logs")) {
        const auto id = entry.at("id").get<unsigned long>();
        facade.tarn_jobinfo_retrieve_imagelog(id, text);
        story.expect(fmt::format("image log {}", id), text, entry.at("text").get<std::string>());
    }
    image_log_observer observer;
    story.succeeded("observe image logs", facade.tarn_jobinfo_add_observer(&observer));
    const auto last = device.at("image_logs").back().at("id").get<unsigned long>();
    story.succeeded(fmt::format("delete image log {}", last), facade.tarn_jobinfo_delete_imagelog(last));
    story.expect("the observer was told", observer.wait(), true);
    story.succeeded("observe no longer", facade.tarn_jobinfo_remove_observer(&observer));
    story.expect("  of image log", observer.image_log, last);
    story.expect("  that it has come to status", observer.status, device.at("image_log_deleted").get<unsigned int>());
    story.refused("read it", facade.tarn_jobinfo_retrieve_imagelog(last, text), 0x02000005);
}

}  // namespace

void jobinfo(story& story)
{
    story.chapter("Job logs");
    auto& facade = *tarn_jobinfo_facade::tarn_jobinfo_get_instance();
    const json none = json::array();
    for (const json& entry : story.device().at("jobinfo").at("logs")) {
        const auto id = entry.at("id").get<unsigned int>();
        const auto type = static_cast<TARN_JOBINFO_JOBLOG_TYPE_VAL>(entry.at("type").get<unsigned int>());
        TARN_JOBINFO_JOBLOG log;
        facade.tarn_jobinfo_retrieve_joblog(id, type, log);
        unsigned int pages = 0;
        std::memcpy(&pages, log.bytes + pages_offset, sizeof pages);
        story.expect(fmt::format("title of job {}", id), text_at(log, title_offset),
                     entry.at("log").at("title").get<std::string>());
        story.expect("  pages", pages, entry.at("log").at("pages").get<unsigned int>());

        story.succeeded("list its receive records", facade.tarn_jobinfo_create_receive_info_list(id, type));
        walk(story, facade, &tarn_jobinfo_facade::tarn_jobinfo_get_receive_info, entry.value("received", none),
             "sender", sender_offset);
        story.succeeded("drop the list", facade.tarn_jobinfo_delete_receive_info_list());

        story.succeeded("list its send records", facade.tarn_jobinfo_create_send_info_list(id, type));
        walk(story, facade, &tarn_jobinfo_facade::tarn_jobinfo_get_send_info, entry.value("sent", none), "address",
             address_offset);
        story.succeeded("drop the list", facade.tarn_jobinfo_delete_send_info_list());
    }
    image_logs(story, facade);
}

}  // namespace tour
