#include "story.h"
#include "tarn_common_facade.h"
#include "tarn_common_observer.h"

#include <chrono>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <mutex>
#include <stdexcept>
#include <vector>

namespace tour {

namespace {

using norvane::tarn_common_facade;

constexpr unsigned int page_length = 20;

/// Reads records by the layouts of the device file.
class reader {
public:
    explicit reader(const json& device) : layouts_(device.at("layouts")) {}

    template <typename Record>
    std::string text(const char* type, const Record& record, const char* field) const
    {
        const json& where = find(type, field);
        const char* const begin = bytes(record) + where.at("offset").get<std::size_t>();
        return {begin, strnlen(begin, where.at("size").get<std::size_t>())};
    }

    template <typename Record>
    unsigned int number(const char* type, const Record& record, const char* field) const
    {
        const json& where = find(type, field);
        const char* const begin = bytes(record) + where.at("offset").get<std::size_t>();
        if (where.at("type") == "u16") {
            unsigned short half = 0;
            std::memcpy(&half, begin, sizeof half);
            return half;
        }
        unsigned int word = 0;
        std::memcpy(&word, begin, sizeof word);
        return word;
    }

private:
    template <typename Record>
    static const char* bytes(const Record& record)
    {
        return reinterpret_cast<const char*>(&record);
    }

    [[nodiscard]] const json& find(const char* type, const char* field) const
    {
        for (const json& each : layouts_.at(type).at("fields")) {
            if (each.at("name") == field) return each;
        }
        throw std::runtime_error(fmt::format("the device file's layout of {} has no field {}", type, field));
    }

    const json& layouts_;
};

std::string name_of(const json& record) { return record.at("name").get<std::string>(); }

std::vector<std::string> names_of(const json& records)
{
    std::vector<std::string> names;
    for (const json& each : records) names.push_back(name_of(each));
    return names;
}

/// The persons' names by their ids.
std::vector<std::string> names_of_members(const json& device, const json& ids)
{
    std::vector<std::string> names;
    for (const json& id : ids) {
        for (const json& person : device.at("personal_addresses")) {
            if (person.at("id") == id) names.push_back(name_of(person));
        }
    }
    return names;
}

void address_book(story& story, tarn_common_facade& facade, const reader& read)
{
    const json& device = story.device().at("common");
    unsigned int persons = 0;
    unsigned int pages = 0;
    story.succeeded("prepare the address book",
                    facade.tarn_get_personal_address_list_prepare(page_length, persons, pages));
    story.expect("persons in the address book", persons,
                 static_cast<unsigned int>(device.at("personal_addresses").size()));
    std::vector<TARN_PERSONAL_ADDRESS> page(page_length);
    std::vector<std::string> names;
    for (unsigned int number = 1; number <= pages; ++number) {
        unsigned int count = 0;
        facade.tarn_get_personal_address_list(number, count, page.data());
        const auto before = names.size();
        for (unsigned int i = 0; i < count; ++i) names.push_back(read.text("TARN_PERSONAL_ADDRESS", page[i], "name"));
        if (count == 0) continue;
        story.tell(
            fmt::format("page {} of {}: {} persons, from {} to {}", number, pages, count, names[before], names.back()));
    }
    story.expect("all persons came, each once and in order", names == names_of(device.at("personal_addresses")), true);
    story.succeeded("finish the address book", facade.tarn_get_personal_address_list_finish(persons));
}

void groups(story& story, tarn_common_facade& facade, const reader& read)
{
    const json& group = story.device().at("common").at("groups").at(1);
    const auto id = group.at("info").at("id").get<unsigned short>();
    const std::string name = name_of(group.at("info"));
    unsigned int members = 0;
    unsigned int pages = 0;
    unsigned int count = 0;
    story.succeeded(fmt::format("prepare the members of the group \"{}\"", name),
                    facade.tarn_get_group_member_address_list_grp_mem_str_prepare(id, page_length, members, pages));
    std::vector<TARN_GROUP_MEMBER> page(page_length);
    facade.tarn_get_group_member_address_list(1, count, page.data());
    std::vector<std::string> names;
    for (unsigned int i = 0; i < count; ++i) names.push_back(read.text("TARN_GROUP_MEMBER", page[i], "name"));
    story.expect(
        "its members", fmt::format("{}", fmt::join(names, ", ")),
        fmt::format("{}", fmt::join(names_of_members(story.device().at("common"), group.at("members")), ", ")));
    story.succeeded("finish the members", facade.tarn_get_group_member_address_list_finish(members));
    story.refused("the members of a group that does not exist",
                  facade.tarn_get_group_member_address_list_prepare(0xFFFF, page_length, members, pages), 0x02000005);
}

void search(story& story, tarn_common_facade& facade, const reader& read)
{
    const json& wanted = story.device().at("common").at("personal_addresses").back();
    const std::string name = name_of(wanted);
    unsigned int found = 0;
    unsigned int pages = 0;
    unsigned int count = 0;
    story.succeeded(fmt::format("search the address book for \"{}\"", name),
                    facade.tarn_search_personal_address_list_prepare(page_length, name.c_str(), found, pages));
    std::vector<TARN_PERSONAL_ADDRESS> page(page_length);
    facade.tarn_search_personal_address_list(1, name.c_str(), count, page.data());
    story.expect("persons found", count, 1U);
    story.expect("the mail address", read.text("TARN_PERSONAL_ADDRESS", page[0], "mail"),
                 wanted.at("mail").get<std::string>());
    story.succeeded("finish the search", facade.tarn_search_personal_address_list_finish(found));
}

void box(story& story, tarn_common_facade& facade, const reader& read)
{
    const json& entry = story.device().at("common").at("boxes").at(1);
    const json& expected = entry.at("info");
    const auto id = expected.at("id").get<unsigned long>();
    const auto password = expected.at("password").get<std::string>();

    TARN_BOX_DETAIL_INFO info{};
    story.refused(fmt::format("look into box {} with a wrong text", id),
                  facade.tarn_get_box_detail_info(id, "guess", info), 0x02000009);
    story.succeeded("look into it with the right one", facade.tarn_get_box_detail_info(id, password.c_str(), info));
    story.expect("its name", read.text("TARN_BOX_DETAIL_INFO", info, "name"), name_of(expected));
    story.expect("its owner", read.text("TARN_BOX_DETAIL_INFO", info, "owner"),
                 expected.at("owner").get<std::string>());

    unsigned int documents = 0;
    unsigned int pages = 0;
    unsigned int count = 0;
    std::vector<TARN_DOC_INFO> page(100);
    story.succeeded("prepare its documents, three to a page",
                    facade.tarn_get_document_info_prepare(id, password.c_str(), 3, documents, pages));
    unsigned int sizes = 0;
    std::size_t at = 0;
    for (unsigned int number = 1; number <= pages; ++number) {
        facade.tarn_get_document_info(number, count, page.data());
        for (unsigned int i = 0; i < count && at < entry.at("documents").size(); ++i, ++at) {
            const json& document = entry.at("documents").at(at);
            sizes += read.number("TARN_DOC_INFO", page[i], "size");
            story.expect(fmt::format("document {} on page {}", read.number("TARN_DOC_INFO", page[i], "id"), number),
                         fmt::format("{}, {} pages", read.text("TARN_DOC_INFO", page[i], "title"),
                                     read.number("TARN_DOC_INFO", page[i], "pages")),
                         fmt::format("{}, {} pages", document.at("title").get<std::string>(),
                                     document.at("pages").get<unsigned int>()));
        }
    }
    story.expect("documents that came", at, entry.at("documents").size());
    story.succeeded("finish the documents", facade.tarn_get_document_info_finish(documents));
    unsigned long capacity = 0;
    facade.tarn_get_box_available_capacity(id, capacity);
    story.expect("room that they leave in the box", capacity, expected.at("capacity").get<unsigned long>() - sizes);
}

/// Keeps what arrives until it is asked for.
class listener : public norvane::tarn_common_observer {
public:
    std::string next()
    {
        std::unique_lock lock(mutex_);
        if (!arrived_.wait_for(lock, std::chrono::seconds(20), [this] { return !events_.empty(); })) return "nothing";
        std::string event = std::move(events_.front());
        events_.pop_front();
        return event;
    }

private:
    unsigned int service_state_changed(TARN_ACCEPTANCE_TYPE type) override
    {
        return keep(fmt::format("acceptance {}", static_cast<unsigned int>(type)));
    }
    unsigned int request_activate(TARN_KIND_OF_SCENARIO scenario, unsigned int argument) override
    {
        return keep(fmt::format("activation of {} for scenario {}", argument, static_cast<unsigned int>(scenario)));
    }
    unsigned int notify_sleep(TARN_EVENT_SLEEP_STATE state) override
    {
        return keep(fmt::format("sleep state {}", static_cast<unsigned int>(state)));
    }
    unsigned int notify_resident_app_state_changed(TARN_REQ_APP_STATE state) override
    {
        return keep(fmt::format("resident applications to state {}", static_cast<unsigned int>(state)));
    }

    unsigned int keep(std::string event)
    {
        const std::lock_guard lock(mutex_);
        events_.push_back(std::move(event));
        arrived_.notify_all();
        return 0;
    }

    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<std::string> events_;
};

void events(story& story, tarn_common_facade& facade)
{
    listener listener;
    const std::string arrives = "  an event arrives";
    story.succeeded("register an observer", facade.tarn_common_add_observer(&listener));
    story.succeeded("ask for sleep state 3", facade.tarn_request_energy_saving_mode(static_cast<TARN_STS_SLEEP>(3)));
    story.expect(arrives, listener.next(), std::string("sleep state 3"));
    story.succeeded("wake the machine up", facade.tarn_request_energy_saving_mode(static_cast<TARN_STS_SLEEP>(0)));
    story.expect(arrives, listener.next(), std::string("sleep state 0"));
    story.succeeded("report acceptance 1",
                    facade.tarn_common_service_state_changed(static_cast<TARN_ACCEPTANCE_TYPE>(1)));
    story.expect(arrives, listener.next(), std::string("acceptance 1"));
    story.succeeded(
        "ask for the activation of application 6 for scenario 2",
        facade.tarn_common_request_activate(static_cast<TARN_KIND_OF_SCENARIO>(2), static_cast<TARN_KIND_OF_APL>(6)));
    story.expect(arrives, listener.next(), std::string("activation of 6 for scenario 2"));
    story.succeeded("ask the resident applications to take state 4",
                    facade.tarn_request_all_resident_apps_to_change_state(static_cast<TARN_REQ_APP_STATE>(4)));
    story.expect(arrives, listener.next(), std::string("resident applications to state 4"));
    story.succeeded("remove the observer", facade.tarn_common_remove_observer(&listener));
}

}  // namespace

void common(story& story)
{
    story.chapter("Common service");
    auto& facade = *tarn_common_facade::tarn_common_get_instance();
    const json& device = story.device().at("common");
    const reader read(story.device());

    address_book(story, facade, read);
    groups(story, facade, read);
    search(story, facade, read);
    box(story, facade, read);
    events(story, facade);

    TARN_JAVAVM_STATE state{};
    facade.tarn_check_javavm_status(state);
    story.expect("state of the Java VM", static_cast<unsigned int>(state),
                 device.at("javavm_state").get<unsigned int>());
    const auto certificate = device.at("eweb_certificates").at(0).get<std::string>();
    story.succeeded("check a certificate that the device knows", facade.tarn_check_eweb_cert_info(certificate.c_str()));
    story.refused("check another", facade.tarn_check_eweb_cert_info("not that one"), 0x02000005);
    story.expect("wake-up date", facade.tarn_get_wakeup_date(), device.at("wakeup").at("date").get<unsigned int>());
    int allowed = 0;
    story.succeeded("keep the machine out of deep sleep", facade.tarn_suspend_deep_sleep(1));
    facade.tarn_check_allowed_to_be_deep_sleep_mode(allowed);
    story.expect("deep sleep allowed", allowed, 0);
    story.succeeded("let it sleep again", facade.tarn_resume_deep_sleep(1));
    facade.tarn_check_allowed_to_be_deep_sleep_mode(allowed);
    story.expect("deep sleep allowed", allowed, 1);
}

}  // namespace tour
