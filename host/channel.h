// The sending end of the transport: connect to a name, exchange one message for its answer.
#pragma once

#include "host/message.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/local/stream_protocol.hpp>

#include <chrono>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace norvane::host {

using clock = std::chrono::steady_clock;

/// When an exchange gives up; never, if empty.
using deadline = std::optional<clock::time_point>;

/// A connection that carries one exchange at a time. Not for use by two threads at once.
class channel {
public:
    /// Null when nobody of this user listens under `name`.
    static std::unique_ptr<channel> connect(const std::string& name);

    /// Sends the message and waits for the answer, whose record goes into `reply`. `length` is how
    /// much of `reply` was written: nothing, unless the outcome is `answered`. After any outcome but
    /// `answered` and `unanswered` the channel is of no further use.
    delivery exchange(message_header header, std::span<const char> record, std::span<char> reply, std::size_t& length,
                      const deadline& until);

    /// Whether the peer has closed the connection, or sent what nobody asked for.
    bool stale();

private:
    channel();

    delivery receive(std::span<char> reply, std::size_t& length, const deadline& until);

    boost::asio::io_context context_;
    boost::asio::local::stream_protocol::socket socket_;
    std::vector<char> incoming_;
};

/// Whether the process at the other end belongs to this user.
bool same_user(boost::asio::local::stream_protocol::socket& socket);

/// The process at the other end.
int peer_process(boost::asio::local::stream_protocol::socket& socket);

}  // namespace norvane::host
