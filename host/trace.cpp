#include "host/trace.h"

#include "platform/emw_trace.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

namespace norvane::host {

namespace {

/// Where lines go: the file that TARN_TRACE names, opened for appending, or standard error.
int sink()
{
    static const int descriptor = [] {
        const char* const path = std::getenv("TARN_TRACE");
        if (path == nullptr || *path == '\0' || std::string(path) == "-") return STDERR_FILENO;
        const int opened = open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR);
        return opened >= 0 ? opened : STDERR_FILENO;
    }();
    return descriptor;
}

}  // namespace

void trace(const std::string& text)
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    std::tm day{};
    localtime_r(&now.tv_sec, &day);
    char stamp[64];
    std::snprintf(stamp, sizeof stamp, "%04d-%02d-%02d %02d:%02d:%02d.%06ld [%d/%ld] ", day.tm_year + 1900,
                  day.tm_mon + 1, day.tm_mday, day.tm_hour, day.tm_min, day.tm_sec, now.tv_nsec / 1000, getpid(),
                  syscall(SYS_gettid));
    std::string line = stamp + text;
    while (!line.empty() && line.back() == '\n') line.pop_back();
    line += '\n';
    // One write, so that lines of several threads and processes never mix.
    while (write(sink(), line.data(), line.size()) < 0 && errno == EINTR) {
    }
}

}  // namespace norvane::host

extern "C" {

void emwGENTrcPrintf(unsigned int area, unsigned int level, unsigned int /*reserved*/, const char* format, ...)
{
    char text[1024];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    char origin[48];
    std::snprintf(origin, sizeof origin, "trace %u/%u ", area, level);
    norvane::host::trace(std::string(origin) + text);
}

void utl_lib_svccall_notify(unsigned int code, unsigned int detail, unsigned int /*reserved*/, const char* source,
                            const char* operation, int line)
{
    char text[512];
    std::snprintf(text, sizeof text, "CallService!! : code = 0x%X, detail = 0x%X, %s[%04d]::%s", code, detail, source,
                  line, operation);
    norvane::host::trace(text);
}
}
