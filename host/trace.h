// One line at a time to standard error, or to the file that TARN_TRACE names, with the time, the
// process and the thread in front.
#pragma once

#include <string>

namespace norvane::host {

void trace(const std::string& text);

}  // namespace norvane::host
