#include "tools/control.h"

#include "host/channel.h"
#include "host/runtime_directory.h"
#include "host/service.h"

#include <vector>

namespace norvane::tools {

json control(const json& command)
{
    const auto connection = host::channel::connect(host::control_name);
    if (connection == nullptr) {
        throw control_error("no tarnsim serves in " + host::runtime_directory());
    }
    host::message_header header{};
    header.kind = host::message_kind::request;
    const std::string text = command.dump();
    std::vector<char> reply(host::longest_record);
    std::size_t length = 0;
    const auto outcome = connection->exchange(header, text, reply, length, {});
    if (outcome != host::delivery::answered) throw control_error("tarnsim did not answer");
    json answer = json::parse(reply.begin(), reply.begin() + static_cast<std::ptrdiff_t>(length));
    if (answer.is_object() && answer.contains("error")) throw control_error(answer["error"].get<std::string>());
    return answer;
}

}  // namespace norvane::tools
