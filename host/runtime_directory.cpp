#include "host/runtime_directory.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace norvane::host {

namespace {

constexpr std::size_t longest_name = 16;

std::string chosen_directory()
{
    if (const char* const own = std::getenv("TARN_RUNTIME_DIR"); own != nullptr && *own != '\0') return own;
    if (const char* const session = std::getenv("XDG_RUNTIME_DIR"); session != nullptr && *session != '\0') {
        return std::string(session) + "/tarn";
    }
    return "/tmp/tarn-" + std::to_string(geteuid());
}

std::string prepared_directory()
{
    std::string path = chosen_directory();
    if (path.size() + 1 + longest_name >= sizeof sockaddr_un::sun_path) {
        throw std::runtime_error("runtime directory " + path +
                                 " is too long a path for a socket; set TARN_RUNTIME_DIR");
    }
    if (mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        throw std::system_error(errno, std::generic_category(), "runtime directory " + path);
    }
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) {
        throw std::runtime_error("runtime directory " + path + " is not a directory");
    }
    if (status.st_uid != geteuid() || (status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw std::runtime_error("runtime directory " + path +
                                 " must belong to this user and be closed to others (0700)");
    }
    return path;
}

}  // namespace

const std::string& runtime_directory()
{
    static const std::string path = prepared_directory();
    return path;
}

std::string socket_path(const std::string& name) { return runtime_directory() + "/" + name; }

file_lock::file_lock(const std::string& path, mode how)
    : descriptor_(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR))
{
    if (descriptor_ < 0) throw std::system_error(errno, std::generic_category(), path);
    int outcome = 0;
    do {
        outcome = flock(descriptor_, how == mode::wait ? LOCK_EX : LOCK_EX | LOCK_NB);
    } while (outcome != 0 && errno == EINTR);
    held_ = outcome == 0;
}

file_lock::~file_lock() { close(descriptor_); }

directory_lock::directory_lock() : file_lock(runtime_directory() + "/lock", mode::wait) {}

}  // namespace norvane::host
