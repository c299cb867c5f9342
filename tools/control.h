// A tool's connection to the running stand-in service.
#pragma once

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string>

namespace norvane::tools {

using json = nlohmann::ordered_json;

/// No stand-in service is there, or it refuses what was asked.
class control_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Sends a command, such as {"command": "observers"}, and returns what the service answers. Throws
/// control_error.
json control(const json& command);

}  // namespace norvane::tools
