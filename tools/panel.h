// The panel of the running stand-in service, as a picture in the terminal.
#pragma once

#include "tools/control.h"

#include <string>

namespace norvane::tools {

/// The picture of a panel's state.
std::string picture(const json& state);

/// Prints the panel's present state. Throws control_error.
void show_panel();

}  // namespace norvane::tools
