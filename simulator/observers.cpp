#include "simulator/observers.h"

namespace norvane::simulator {

namespace {

/// How long an observer may take to answer.
constexpr std::chrono::milliseconds answer_limit{10'000};

}  // namespace

observers::observers(long interface_id, traffic& traffic)
    : interface_id_(interface_id), traffic_(traffic), announcer_([this] { deliver_announcements(); })
{
}

observers::~observers()
{
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    announced_.notify_all();
    announcer_.join();
}

void observers::add(registration who)
{
    const std::lock_guard lock(mutex_);
    for (entry& each : entries_) {
        if (!each.removed && each.who.process == who.process && each.who.observer == who.observer) {
            each.who = std::move(who);
            return;
        }
    }
    entries_.push_back({std::move(who), 0, false});
}

void observers::remove(int process, std::uint32_t observer, bool from_notification)
{
    std::unique_lock lock(mutex_);
    for (auto each = entries_.begin(); each != entries_.end(); ++each) {
        if (each->removed || each->who.process != process || each->who.observer != observer) continue;
        each->removed = true;
        if (each->notifications_under_way == 0) {
            entries_.erase(each);
        } else if (!from_notification) {
            // Whoever delivers erases the entry; what is known here is that it is no longer listed.
            delivered_.wait(lock, [&] {
                return std::none_of(entries_.begin(), entries_.end(), [&](const entry& other) {
                    return other.removed && other.who.process == process && other.who.observer == observer;
                });
            });
        }
        return;
    }
}

std::vector<observer_reply> observers::notify(long func_id, std::span<const char> record)
{
    std::vector<std::list<entry>::iterator> told;
    {
        const std::lock_guard lock(mutex_);
        for (auto each = entries_.begin(); each != entries_.end(); ++each) {
            if (each->removed) continue;
            ++each->notifications_under_way;
            told.push_back(each);
        }
    }
    std::vector<observer_reply> replies;
    for (const auto each : told) {
        registration who;
        bool wanted = false;
        {
            const std::lock_guard lock(mutex_);
            who = each->who;
            wanted = !each->removed;
        }
        host::notification_answer answer{host::delivery::no_such_connection, {}};
        if (wanted) {
            answer = host::notify(who.connection_name, who.observer, func_id, record, answer_limit);
            traffic_.note_notification(interface_id_, func_id, record, who.connection_name, answer);
            replies.push_back({who.connection_name, who.observer, answer});
        }
        const bool gone = answer.outcome == host::delivery::no_such_connection;
        const std::lock_guard lock(mutex_);
        each->removed = each->removed || gone;
        if (--each->notifications_under_way == 0 && each->removed) {
            entries_.erase(each);
            delivered_.notify_all();
        }
    }
    return replies;
}

void observers::announce(announcement event)
{
    {
        const std::lock_guard lock(mutex_);
        announcements_.push_back(std::move(event));
    }
    announced_.notify_all();
}

void observers::deliver_announcements()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        announced_.wait(lock, [this] { return ending_ || !announcements_.empty(); });
        if (ending_) return;
        const announcement event = std::move(announcements_.front());
        announcements_.pop_front();
        lock.unlock();
        notify(event.func_id, event.record);
        lock.lock();
    }
}

std::vector<observers::registration> observers::list() const
{
    const std::lock_guard lock(mutex_);
    std::vector<registration> all;
    for (const entry& each : entries_) {
        if (!each.removed) all.push_back(each.who);
    }
    return all;
}

}  // namespace norvane::simulator
