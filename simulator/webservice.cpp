#include "simulator/webservice.h"

namespace norvane::simulator {

namespace wire = protocol::webservice;

namespace {

constexpr std::size_t path_limit = wire::get_certificate::reply::field<"path">::width - 1;

}  // namespace

webservice::webservice(const node& device, const environment& shared) : codes_(shared.codes)
{
    const node own = device["webservice"];
    for (const node& entry : own["kinds"].elements()) kinds_.insert(entry.number());
    for (const node& entry : own["reserved"].elements()) {
        const std::uint32_t kind = entry.at("kind").number();
        if (!kinds_.contains(kind)) entry.at("kind").fail("one of the device's \"kinds\"");
        reserved_.emplace(kind, entry.at("name").text());
    }
    for (const node& entry : own["certificates"].elements()) {
        const std::string path = entry.at("path").text();
        if (path.size() > path_limit) {
            entry.at("path").fail("a path of at most " + std::to_string(path_limit) + " bytes");
        }
        certificates_[entry.at("type").number()] = path;
    }
}

void webservice::serve(router& router)
{
    router.on<wire::reserve>([this](const auto& request, auto&) {
        const std::uint32_t kind = get<"kind">(request);
        if (!kinds_.contains(kind)) return codes_.code("not_found");
        const std::lock_guard lock(mutex_);
        return reserved_.emplace(kind, get<"name">(request)).second ? 0U : codes_.code("exists");
    });
    router.on<wire::release>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        return reserved_.erase({get<"kind">(request), get<"name">(request)}) == 1 ? 0U : codes_.code("not_found");
    });
    router.on<wire::get_certificate>([this](const auto& request, auto& reply) {
        const auto found = certificates_.find(get<"type">(request));
        if (found == certificates_.end()) return codes_.code("not_found");
        set<"path">(reply, found->second);
        return 0U;
    });
}

void webservice::save(json& device) const
{
    const std::lock_guard lock(mutex_);
    json& reserved = device["webservice"]["reserved"] = json::array();
    for (const auto& [kind, name] : reserved_) reserved.push_back({{"kind", kind}, {"name", name}});
}

}  // namespace norvane::simulator
