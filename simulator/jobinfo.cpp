#include "simulator/jobinfo.h"

namespace norvane::simulator {

namespace wire = protocol::jobinfo;

namespace {

using log_field = wire::retrieve_joblog::reply::field<"log">;
using receive_field = wire::get_receive_info::reply::field<"info">;
using send_field = wire::get_send_info::reply::field<"info">;

constexpr std::size_t text_limit = wire::retrieve_imagelog::reply::field<"text">::width - 1;

std::vector<std::vector<char>> records_of(const layouts& records, const std::string& type, std::size_t size,
                                          const node& list)
{
    std::vector<std::vector<char>> all;
    for (const node& entry : list.elements()) all.push_back(records.fill(type, size, entry));
    return all;
}

}  // namespace

jobinfo::jobinfo(const node& device, const environment& shared)
    : codes_(shared.codes), observers_(wire::interface_id, shared.messages)
{
    const layouts& records = shared.records;
    const node own = device["jobinfo"];
    for (const node& entry : own["logs"].elements()) {
        log made{records.fill("TARN_JOBINFO_JOBLOG", log_field::width, entry.at("log")),
                 records_of(records, "TARN_JOBINFO_RECEIVE_INFO", receive_field::width, entry["received"]),
                 records_of(records, "TARN_JOBINFO_SEND_INFO", send_field::width, entry["sent"])};
        const log_key key(entry.at("id").number(), entry.at("type").number());
        if (!logs_.emplace(key, std::move(made)).second) entry.fail("one log of each id and type");
    }
    for (const node& entry : own["image_logs"].elements()) {
        const std::string text = entry.at("text").text();
        if (text.size() > text_limit) {
            entry.at("text").fail("a text of at most " + std::to_string(text_limit) + " bytes");
        }
        const image_log made{entry.at("job").number(), text};
        if (!image_logs_.emplace(entry.at("id").number(), made).second) entry.fail("one image log of each id");
    }
    if (const node status = own["image_log_deleted"]) deleted_status_ = status.number();
}

/// Binds the three operations of a list that is walked one record at a time.
template <typename CreateRow, typename NextRow, typename DeleteRow>
void jobinfo::serve_list(router& router, std::vector<record> log::*list, walks& under_way)
{
    router.on<CreateRow>([this, list, &under_way](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        std::erase_if(under_way, [](const auto& walk) { return !host::alive(walk.first); });
        const auto found = logs_.find({get<"id">(request), get<"type">(request)});
        if (found == logs_.end()) return codes_.code("not_found");
        const std::vector<record>& all = found->second.*list;
        under_way[request.process()] = {all.begin(), all.end()};
        return 0U;
    });
    router.on<NextRow>([this, &under_way](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto walk = under_way.find(request.process());
        if (walk == under_way.end()) return codes_.code("not_prepared");
        if (walk->second.empty()) return codes_.code("end_of_list");
        set<"info">(reply, walk->second.front());
        walk->second.pop_front();
        return 0U;
    });
    router.on<DeleteRow>([this, &under_way](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        return under_way.erase(request.process()) == 1 ? 0U : codes_.code("not_prepared");
    });
}

void jobinfo::serve(router& router)
{
    observers_.serve<wire::add_observer, wire::remove_observer>(router);
    router.on<wire::retrieve_joblog>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto found = logs_.find({get<"id">(request), get<"type">(request)});
        if (found == logs_.end()) return codes_.code("not_found");
        set<"log">(reply, found->second.content);
        return 0U;
    });
    serve_list<wire::create_receive_info_list, wire::get_receive_info, wire::delete_receive_info_list>(
        router, &log::received, receive_walks_);
    serve_list<wire::create_send_info_list, wire::get_send_info, wire::delete_send_info_list>(router, &log::sent,
                                                                                              send_walks_);
    router.on<wire::retrieve_imagelog>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto found = image_logs_.find(get<"id">(request));
        if (found == image_logs_.end()) return codes_.code("not_found");
        set<"text">(reply, found->second.text);
        return 0U;
    });
    router.on<wire::delete_imagelog>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        const auto found = image_logs_.find(get<"id">(request));
        if (found == image_logs_.end()) return codes_.code("not_found");
        announce_deletion(found->first, found->second);
        image_logs_.erase(found);
        return 0U;
    });
}

void jobinfo::announce_deletion(std::uint32_t id, const image_log& deleted)
{
    if (!deleted_status_) return;
    observers_.announce(event_of<wire::imagelog_create_status>()
                            .set<"id">(deleted.job)
                            .set<"imagelog">(id)
                            .set<"status">(*deleted_status_));
}

void jobinfo::save(json& device) const
{
    const std::lock_guard lock(mutex_);
    json& kept = device["jobinfo"]["image_logs"] = json::array();
    for (const auto& [id, each] : image_logs_) {
        kept.push_back({{"id", id}, {"job", each.job}, {"text", each.text}});
    }
}

}  // namespace norvane::simulator
