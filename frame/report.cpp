#include "frame/report.h"

#include "platform/emw_trace.h"

#include <cstdarg>
#include <cstdio>

namespace norvane::frame {

namespace {

constexpr unsigned int trace_area = 1025;
constexpr unsigned int trace_level = 258;

}  // namespace

void report(unsigned int code, unsigned int detail, const origin& from)
{
    utl_lib_svccall_notify(code, detail, 0, from.source, from.operation, from.line);
}

void trace_error(const origin& from, const char* format, ...)
{
    char text[256] = {};
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    emwGENTrcPrintf(trace_area, trace_level, 0, "%s[%04d]::%s,%s\n", from.source, from.line, from.operation, text);
}

}  // namespace norvane::frame
