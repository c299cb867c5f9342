#include "simulator/boxes.h"

#include "protocol/common.h"

#include <algorithm>

namespace norvane::simulator {

namespace {

constexpr std::size_t text_bound = protocol::common::delete_box::request::field<"text">::bound;

}  // namespace

bool opens(const std::string& password, const std::string& text, std::size_t bound)
{
    return password.empty() || password.substr(0, bound) == text;
}

boxes::boxes(const node& content, const environment& shared, types records)
    : codes_(shared.codes), records_(shared.records), types_(std::move(records))
{
    for (const node& entry : content.elements()) {
        box made{records_.fill(types_.detail.name, types_.detail.size, entry.at("info")), {}};
        const std::uint32_t id = records_.number(types_.detail.name, made.info, "id");
        if (id == 0 || boxes_.contains(id)) entry.at("info").fail("an \"id\" that is not 0 and that no other box has");
        for (const node& document : entry["documents"].elements()) {
            made.documents.push_back(records_.fill(types_.document.name, types_.document.size, document));
        }
        boxes_[id] = std::move(made);
    }
}

std::uint32_t boxes::add(std::vector<char> info)
{
    const std::lock_guard lock(mutex_);
    std::uint32_t id = records_.number(types_.detail.name, info, "id");
    if (boxes_.contains(id)) return codes_.code("exists");
    if (id == 0) {
        id = boxes_.empty() ? 1 : boxes_.rbegin()->first + 1;
        if (id == 0) return codes_.code("full");
        records_.set(types_.detail.name, info, "id", id);
    }
    boxes_[id] = {std::move(info), {}};
    return 0;
}

std::uint32_t boxes::update(std::uint32_t id, const std::string& text, std::vector<char> info)
{
    const std::lock_guard lock(mutex_);
    shelf::const_iterator found;
    if (const std::uint32_t failure = open(id, text, found)) return failure;
    records_.set(types_.detail.name, info, "id", id);
    boxes_[id].info = std::move(info);
    return 0;
}

std::uint32_t boxes::read(std::uint32_t id, const std::string& text, std::vector<char>& info) const
{
    const std::lock_guard lock(mutex_);
    shelf::const_iterator found;
    if (const std::uint32_t failure = open(id, text, found)) return failure;
    info = found->second.info;
    return 0;
}

std::uint32_t boxes::remove(std::uint32_t id, const std::string& text)
{
    const std::lock_guard lock(mutex_);
    shelf::const_iterator found;
    if (const std::uint32_t failure = open(id, text, found)) return failure;
    boxes_.erase(found);
    return 0;
}

std::uint32_t boxes::remove_document(std::uint32_t id, const std::string& text, std::uint32_t document)
{
    const std::lock_guard lock(mutex_);
    shelf::const_iterator found;
    if (const std::uint32_t failure = open(id, text, found)) return failure;
    const auto removed = std::erase_if(boxes_[id].documents, [&](const element& each) {
        return records_.number(types_.document.name, each, "id") == document;
    });
    return removed == 0 ? codes_.code("not_found") : 0;
}

std::uint32_t boxes::available_capacity(std::uint32_t id, std::uint32_t& capacity) const
{
    const std::lock_guard lock(mutex_);
    const auto found = boxes_.find(id);
    if (found == boxes_.end()) return codes_.code("not_found");
    capacity = records_.number(types_.detail.name, found->second.info, "capacity");
    for (const element& each : found->second.documents) {
        capacity -= std::min(capacity, records_.number(types_.document.name, each, "size"));
    }
    return 0;
}

std::vector<element> boxes::list() const
{
    const std::lock_guard lock(mutex_);
    std::vector<element> all;
    for (const auto& [id, each] : boxes_) {
        all.push_back(records_.convert(types_.detail.name, each.info, types_.listed.name, types_.listed.size));
    }
    return all;
}

std::uint32_t boxes::documents(std::uint32_t id, const std::string& text, std::vector<element>& found) const
{
    const std::lock_guard lock(mutex_);
    shelf::const_iterator owner;
    if (const std::uint32_t failure = open(id, text, owner)) return failure;
    found = owner->second.documents;
    return 0;
}

json boxes::saved() const
{
    const std::lock_guard lock(mutex_);
    json all = json::array();
    for (const auto& [id, each] : boxes_) {
        json documents = json::array();
        for (const element& document : each.documents) {
            documents.push_back(records_.describe(types_.document.name, document));
        }
        all.push_back(
            {{"info", records_.describe(types_.detail.name, each.info)}, {"documents", std::move(documents)}});
    }
    return all;
}

std::uint32_t boxes::open(std::uint32_t id, const std::string& text, shelf::const_iterator& found) const
{
    found = boxes_.find(id);
    if (found == boxes_.end()) return codes_.code("not_found");
    const std::string password = records_.text(types_.detail.name, found->second.info, "password");
    return opens(password, text, text_bound) ? 0 : codes_.code("wrong_password");
}

}  // namespace norvane::simulator
