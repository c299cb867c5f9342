#include "simulator/traffic.h"

#include "protocol/catalog.h"
#include "simulator/codec.h"

namespace norvane::simulator {

namespace {

/// Messages that are kept for a watcher that is slow to ask.
constexpr std::size_t kept_messages = 4096;

/// How long after a watcher's last question messages are still decoded.
constexpr std::chrono::seconds watched_for{10};

const frame::row_description* find(const std::vector<frame::row_description>& rows, long id)
{
    const auto found = std::find_if(rows.begin(), rows.end(), [id](const auto& row) { return row.id == id; });
    return found == rows.end() ? nullptr : &*found;
}

const protocol::area_description* find_area(long interface_id)
{
    const auto& areas = protocol::catalog();
    const auto found = std::find_if(areas.begin(), areas.end(),
                                    [interface_id](const auto& area) { return area.interface_id == interface_id; });
    return found == areas.end() ? nullptr : &*found;
}

}  // namespace

void traffic::note_request(const host::request& request, std::span<const char> reply)
{
    if (!watched()) return;
    json message = {{"kind", "request"},
                    {"process", request.process},
                    {"interface", request.interface_id},
                    {"id", request.func_id}};
    const auto* const area = find_area(request.interface_id);
    const auto* const row = area == nullptr ? nullptr : find(area->operations, request.func_id);
    if (row != nullptr) {
        message["name"] = row->name;
        message["sent"] = decode(row->sent, request.record, layouts_);
        message["reply"] = decode(row->reply, reply, layouts_);
    }
    note(std::move(message));
}

void traffic::note_notification(long interface_id, long func_id, std::span<const char> record,
                                const std::string& connection_name, const host::notification_answer& answer)
{
    if (!watched()) return;
    json message = {{"kind", "notification"},
                    {"observer", connection_name},
                    {"interface", interface_id},
                    {"id", func_id},
                    {"outcome", host::describe(answer.outcome)}};
    const auto* const area = find_area(interface_id);
    const auto* const row = area == nullptr ? nullptr : find(area->notifications, func_id);
    if (row != nullptr) {
        message["name"] = row->name;
        message["sent"] = decode(row->sent, record, layouts_);
        message["reply"] = decode(row->reply, answer.record, layouts_);
    }
    note(std::move(message));
}

json traffic::after(std::size_t after, std::chrono::milliseconds limit)
{
    std::unique_lock lock(mutex_);
    last_asked_ = std::chrono::steady_clock::now();
    noted_.wait_for(lock, limit, [&] { return count_ > after; });
    json messages = json::array();
    const std::size_t first = count_ - messages_.size();
    for (std::size_t number = std::max(after, first); number < count_; ++number) {
        messages.push_back(messages_[number - first]);
    }
    return {{"last", count_}, {"messages", std::move(messages)}};
}

bool traffic::watched()
{
    const std::lock_guard lock(mutex_);
    return last_asked_ != std::chrono::steady_clock::time_point{} &&
           std::chrono::steady_clock::now() - last_asked_ < watched_for;
}

void traffic::note(json message)
{
    const std::lock_guard lock(mutex_);
    messages_.push_back(std::move(message));
    if (messages_.size() > kept_messages) messages_.pop_front();
    ++count_;
    noted_.notify_all();
}

}  // namespace norvane::simulator
