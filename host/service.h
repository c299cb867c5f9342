// The service's side of the workstation platform: receives requests under a name, and notifies
// observers.
#pragma once

#include "host/message.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace norvane::host {

/// The name under which a service serves tools, beside the one under which it serves applications.
inline constexpr const char* control_name = "TARN_CTL";

/// A request as it arrived.
struct request {
    long interface_id;
    long func_id;
    /// The record, header included.
    std::span<const char> record;
    /// Room that the application has for the reply.
    std::size_t reply_room;
    /// The process that sent it.
    int process;
    /// Sent from within a notify operation: its observer answers only after the request is answered.
    bool from_notification;
};

/// Returns the reply's record, at most `reply_room` bytes. Called on a thread of each connection, for
/// several requests at the same time.
using request_handler = std::function<std::vector<char>(const request&)>;

/// Told when an application has closed a connection: it may be gone.
using farewell_handler = std::function<void()>;

class service {
public:
    struct options {
        std::string name = "TARN_SRV";
        std::set<long> interfaces;
    };

    /// Throws std::runtime_error if another process of this user serves the name already.
    service(options how, request_handler handle, farewell_handler left = {});
    ~service();
    service(const service&) = delete;
    service& operator=(const service&) = delete;

private:
    struct parts;
    std::unique_ptr<parts> parts_;
};

/// Whether the process still exists.
bool alive(int process);

/// What became of a notification.
struct notification_answer {
    delivery outcome;
    /// The observer's reply, when `outcome` is `answered`.
    std::vector<char> record;
};

/// Sends a notification to the observer of that address (its low 32 bits) behind the connection and
/// waits for its reply for at most `limit`. Where the process has no such observer, the one that opened
/// the connection gets it.
notification_answer notify(const std::string& connection_name, std::uint32_t observer, long func_id,
                           std::span<const char> record, std::chrono::milliseconds limit);

/// How a delivery ended, in words.
std::string_view describe(delivery outcome);

}  // namespace norvane::host
