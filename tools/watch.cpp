#include "tools/watch.h"

#include "tools/control.h"

#include <fmt/format.h>

#include <cstdint>
#include <cstdio>

namespace norvane::tools {

namespace {

void print(const json& message)
{
    const bool request = message.at("kind") == "request";
    const std::string peer = request ? fmt::format("process {}", message.at("process").get<int>())
                                     : fmt::format("to {}", message.at("observer").get<std::string>());
    const std::string name = message.contains("name") ? message.at("name").get<std::string>() : "unknown";
    fmt::print("{} {} {}/{} {} {} -> {}\n", message.at("kind").get<std::string>(), peer,
               message.at("interface").get<int>(), message.at("id").get<int>(), name,
               message.value("sent", json()).dump(), message.value("reply", json()).dump());
    std::fflush(stdout);
}

}  // namespace

void watch()
{
    // Beyond what there can have been: only what passes from now on.
    std::uint32_t seen = UINT32_MAX;
    for (;;) {
        const json traffic = control({{"command", "traffic"}, {"after", seen}});
        seen = traffic.at("last").get<std::uint32_t>();
        for (const json& message : traffic.at("messages")) print(message);
    }
}

}  // namespace norvane::tools
