#include "host/channel.h"

#include "host/runtime_directory.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/completion_condition.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace norvane::host {

namespace asio = boost::asio;

namespace {

ucred peer(asio::local::stream_protocol::socket& socket)
{
    ucred who{0, static_cast<uid_t>(-1), static_cast<gid_t>(-1)};
    socklen_t size = sizeof who;
    getsockopt(socket.native_handle(), SOL_SOCKET, SO_PEERCRED, &who, &size);
    return who;
}

/// Waits until there is something to read. False when the time limit passed first.
bool readable(int descriptor, const deadline& until)
{
    if (!until) return true;
    pollfd waiting{descriptor, POLLIN, 0};
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*until - clock::now()).count();
        const int ready = poll(&waiting, 1, static_cast<int>(std::clamp<long long>(left, 0, 3'600'000)));
        if (ready > 0) return true;
        if (left <= 0) return false;
    }
}

}  // namespace

bool same_user(asio::local::stream_protocol::socket& socket) { return peer(socket).uid == geteuid(); }

int peer_process(asio::local::stream_protocol::socket& socket) { return peer(socket).pid; }

channel::channel() : context_(1), socket_(context_) {}

std::unique_ptr<channel> channel::connect(const std::string& name)
{
    std::unique_ptr<channel> made(new channel);
    boost::system::error_code failure;
    made->socket_.connect(asio::local::stream_protocol::endpoint(socket_path(name)), failure);
    if (failure || !same_user(made->socket_)) return nullptr;
    return made;
}

bool channel::stale()
{
    char byte = 0;
    return recv(socket_.native_handle(), &byte, 1, MSG_PEEK | MSG_DONTWAIT) >= 0 ||
           (errno != EAGAIN && errno != EWOULDBLOCK);
}

delivery channel::exchange(message_header header, std::span<const char> record, std::span<char> reply,
                           std::size_t& length, const deadline& until)
{
    length = 0;
    if (record.size() > longest_record || reply.size() > longest_record) return delivery::damaged;
    header.magic = message_magic;
    header.length = static_cast<std::uint32_t>(record.size());
    header.reply_room = static_cast<std::uint32_t>(reply.size());
    boost::system::error_code failure;
    asio::write(
        socket_,
        std::array{asio::const_buffer(&header, sizeof header), asio::const_buffer(record.data(), record.size())},
        failure);
    if (failure) return delivery::died;
    return receive(reply, length, until);
}

delivery channel::receive(std::span<char> reply, std::size_t& length, const deadline& until)
{
    // Nothing is handed on before all of it has come.
    incoming_.resize(sizeof(message_header) + reply.size());
    message_header answer{};
    std::size_t received = 0;
    std::size_t expected = sizeof answer;
    while (received < expected) {
        if (!readable(socket_.native_handle(), until)) return delivery::timed_out;
        boost::system::error_code failure;
        received += socket_.read_some(asio::buffer(incoming_) + received, failure);
        if (failure) return delivery::died;
        if (received >= sizeof answer) {
            std::memcpy(&answer, incoming_.data(), sizeof answer);
            if (!sound(answer) || answer.kind != message_kind::reply || answer.length > reply.size()) {
                return delivery::damaged;
            }
            expected = sizeof answer + answer.length;
        }
    }
    if (received > expected) return delivery::damaged;
    if (answer.detail != static_cast<std::uint32_t>(delivery::answered)) return delivery::unanswered;
    std::copy_n(incoming_.begin() + sizeof answer, answer.length, reply.begin());
    length = answer.length;
    return delivery::answered;
}

}  // namespace norvane::host
