// The directory in which the processes of one user meet: sockets, partitions and locks.
#pragma once

#include <string>

namespace norvane::host {

/// Where the sockets and partitions are: TARN_RUNTIME_DIR, else "tarn" under XDG_RUNTIME_DIR, else
/// /tmp/tarn-<uid>. Created on first use for this user alone. Throws std::runtime_error when it cannot
/// be made, belongs to someone else or is open to others, or is too long a path for a socket in it.
const std::string& runtime_directory();

/// The path of the socket under which `name` is reached.
std::string socket_path(const std::string& name);

/// Keeps a file locked for as long as the object lives; the system lets go of it when the process dies.
class file_lock {
public:
    enum class mode { wait, try_once };

    /// Creates the file if it is missing. With `try_once`, `held` is false when another has it.
    file_lock(const std::string& path, mode how);
    ~file_lock();
    file_lock(const file_lock&) = delete;
    file_lock& operator=(const file_lock&) = delete;

    [[nodiscard]] bool held() const { return held_; }

private:
    int descriptor_;
    bool held_ = false;
};

/// Held while a process makes or sweeps away what others find by name, so that nothing is swept away
/// that is just being made.
class directory_lock : public file_lock {
public:
    directory_lock();
};

}  // namespace norvane::host
