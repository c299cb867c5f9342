// The result codes with which the stand-in service refuses a request, by name. The device file may give
// each of them another value.
#pragma once

#include "simulator/device.h"

#include <cstdint>
#include <map>
#include <string>

namespace norvane::simulator {

class errors {
public:
    /// Takes the values of the device file's "errors"; a name that is none of these is refused.
    explicit errors(const node& device);

    /// The code for `name`, such as "unknown_key".
    [[nodiscard]] std::uint32_t code(const std::string& name) const { return codes_.at(name); }

private:
    std::map<std::string, std::uint32_t> codes_ = {
        {"unknown_request", 0x02000001}, {"bad_length", 0x02000002},   {"unknown_key", 0x02000003},
        {"wrong_kind", 0x02000004},      {"not_found", 0x02000005},    {"exists", 0x02000006},
        {"no_partition", 0x02000007},    {"not_prepared", 0x02000008}, {"wrong_password", 0x02000009},
        {"wrong_state", 0x0200000A},     {"full", 0x0200000B},         {"unknown_user", 0x0200000C},
        {"unknown_card", 0x0200000D},    {"unknown_text", 0x0200000E}, {"over_limit", 0x0200000F},
        {"end_of_list", 0x02000010},
    };
};

}  // namespace norvane::simulator
