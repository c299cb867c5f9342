// What passes between the applications and the service, for those who watch: the last messages, decoded
// by their rows. Nothing is decoded while nobody watches.
#pragma once

#include "host/service.h"
#include "simulator/layouts.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace norvane::simulator {

class traffic {
public:
    explicit traffic(const layouts& layouts) : layouts_(layouts) {}

    void note_request(const host::request& request, std::span<const char> reply);
    void note_notification(long interface_id, long func_id, std::span<const char> record,
                           const std::string& connection_name, const host::notification_answer& answer);

    /// The messages after the one numbered `after`, oldest first, waiting up to `limit` for the first. A
    /// watcher asks again with the number of the last it was given.
    json after(std::size_t after, std::chrono::milliseconds limit);

private:
    bool watched();
    void note(json message);

    const layouts& layouts_;
    std::mutex mutex_;
    std::condition_variable noted_;
    std::size_t count_ = 0;
    std::deque<json> messages_;
    std::chrono::steady_clock::time_point last_asked_{};
};

}  // namespace norvane::simulator
