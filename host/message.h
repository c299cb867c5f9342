// What travels between two processes of one machine: a fixed header, then the record. Both ends run on
// the same machine, so numbers are in its own byte order.
#pragma once

#include <cstddef>
#include <cstdint>

namespace norvane::host {

enum class message_kind : std::uint32_t {
    /// Does the service offer the interface? Answered with status 0 if it does.
    check,
    request,
    notification,
    reply,
};

/// How an exchange ended.
enum class delivery : std::uint32_t {
    answered,
    /// The peer received the message but has no answer to it.
    unanswered,
    /// Nobody listens under the name.
    no_such_connection,
    /// The peer closed the connection before it answered.
    died,
    /// The time limit passed before the answer came.
    timed_out,
    /// What came is no answer: a damaged header, or a record longer than there is room for.
    damaged,
};

struct message_header {
    std::uint32_t magic;
    message_kind kind;
    std::int32_t interface_id;
    std::int32_t func_id;
    /// Bytes of the record behind this header.
    std::uint32_t length;
    /// Bytes that the sender has for the answer's record.
    std::uint32_t reply_room;
    /// Of a request: 1 when it was sent from within a notify operation. Of a notification: the
    /// observer that it is for. Of a reply: its `delivery`.
    std::uint32_t detail;
};

inline constexpr std::uint32_t message_magic = 0x5441524E;

/// No record is longer.
inline constexpr std::uint32_t longest_record = 1U << 20;

/// Whether a header can have come from a peer that keeps to the protocol.
constexpr bool sound(const message_header& header)
{
    return header.magic == message_magic && header.kind <= message_kind::reply && header.length <= longest_record &&
           header.reply_room <= longest_record;
}

}  // namespace norvane::host
