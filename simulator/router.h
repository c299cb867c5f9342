// Which request goes to which handler. A handler is bound to a row and gets the request and the reply
// as that row reads and writes them; it returns the result code.
#pragma once

#include "simulator/message.h"

#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace norvane::simulator {

/// Results for requests that no handler gets.
struct protocol_errors {
    /// No operation has this number.
    std::uint32_t unknown_request;
    /// The record or the room for the reply is not as long as the operation's.
    std::uint32_t bad_length;
};

class router {
public:
    explicit router(protocol_errors errors) : errors_(errors) {}

    /// Binds `handle(const request_of<Row>&, reply_of<Row>&)`, which returns the result code. Handlers
    /// run on several threads at the same time.
    template <typename Row, typename Handle>
    void on(Handle handle)
    {
        handlers_[{Row::interface_id, Row::id}] = [this, handle = std::move(handle)](const host::request& received) {
            reply_of<Row> reply;
            const bool fits =
                received.record.size() == Row::request::length && received.reply_room >= Row::reply::length;
            const std::uint32_t result = fits ? handle(request_of<Row>(received), reply) : errors_.bad_length;
            auto record = reply.take(result);
            record.resize(std::min(record.size(), received.reply_room));
            return record;
        };
    }

    /// The reply to a request; a request that no operation is bound to is answered with an error.
    [[nodiscard]] std::vector<char> answer(const host::request& received) const;

private:
    protocol_errors errors_;
    std::map<std::pair<long, long>, std::function<std::vector<char>(const host::request&)>> handlers_;
};

}  // namespace norvane::simulator
