// Shell completion for tarnctl, from the same rows as its commands.
#pragma once

#include <string>

namespace norvane::tools {

/// The script for "bash" or "zsh".
std::string completion_script(const std::string& shell);

}  // namespace norvane::tools
