// Whether the calling thread runs a notify operation just now.
#pragma once

namespace norvane::host {

bool is_notifying();

}  // namespace norvane::host
