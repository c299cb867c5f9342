// The traffic between applications and the running stand-in service, as it passes.
#pragma once

namespace norvane::tools {

/// Prints every message until the process is ended or the service goes away. Throws control_error.
void watch();

}  // namespace norvane::tools
