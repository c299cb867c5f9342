#include "host/service.h"

#include "host/channel.h"
#include "host/listener.h"
#include "host/runtime_directory.h"
#include "host/trace.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>

namespace norvane::host {

namespace {

/// No observer's reply is longer.
constexpr std::size_t notification_reply_room = 64;

}  // namespace

struct service::parts {
    parts(options how, request_handler handle, farewell_handler left)
        : settings(std::move(how)),
          handler(std::move(handle)),
          lock(socket_path(settings.name) + ".lock", file_lock::mode::try_once),
          receiver(
              listener::threading::per_connection, [this](const incoming& message) { return answer(message); },
              std::move(left))
    {
        if (!lock.held()) {
            throw std::runtime_error("another process already serves " + settings.name + " in " + runtime_directory());
        }
        sweep_sockets();
        if (!receiver.open(settings.name)) {
            throw std::runtime_error("cannot listen on " + socket_path(settings.name));
        }
    }

    outgoing answer(const incoming& message)
    {
        const auto& header = message.header;
        if (header.kind == message_kind::check) {
            return {settings.interfaces.contains(header.interface_id) ? delivery::answered : delivery::unanswered, {}};
        }
        if (header.kind != message_kind::request) return {};
        try {
            return {delivery::answered, handler({header.interface_id,
                                                 header.func_id,
                                                 {message.record.data(), header.length},
                                                 header.reply_room,
                                                 message.process,
                                                 header.detail == 1})};
        } catch (const std::exception& failure) {
            trace("request " + std::to_string(header.interface_id) + "/" + std::to_string(header.func_id) +
                  " not answered: " + failure.what());
            return {};
        }
    }

    options settings;
    request_handler handler;
    file_lock lock;
    listener receiver;
};

service::service(options how, request_handler handle, farewell_handler left)
    : parts_(std::make_unique<parts>(std::move(how), std::move(handle), std::move(left)))
{
}

service::~service() = default;

notification_answer notify(const std::string& connection_name, std::uint32_t observer, long func_id,
                           std::span<const char> record, std::chrono::milliseconds limit)
{
    const deadline until = clock::now() + limit;
    const std::unique_ptr<channel> connection = channel::connect(connection_name);
    if (connection == nullptr) return {delivery::no_such_connection, {}};
    message_header header{};
    header.kind = message_kind::notification;
    header.func_id = static_cast<std::int32_t>(func_id);
    header.detail = observer;
    std::array<char, notification_reply_room> reply{};
    std::size_t length = 0;
    const delivery outcome = connection->exchange(header, record, reply, length, until);
    return {outcome, {reply.begin(), reply.begin() + static_cast<std::ptrdiff_t>(length)}};
}

bool alive(int process) { return kill(process, 0) == 0 || errno != ESRCH; }

std::string_view describe(delivery outcome)
{
    switch (outcome) {
        case delivery::answered:
            return "answered";
        case delivery::unanswered:
            return "received, but not answered";
        case delivery::no_such_connection:
            return "no such connection";
        case delivery::died:
            return "died before it answered";
        case delivery::timed_out:
            return "timed out";
        case delivery::damaged:
            return "answered with a damaged message";
    }
    return "unknown";
}

}  // namespace norvane::host
