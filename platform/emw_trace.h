// Trace and error reporting.
//
// Declarations only. Whichever platform library the application loads defines them.
#pragma once

#pragma GCC visibility push(default)

extern "C" {

/// Writes one formatted line to the platform's trace.
void emwGENTrcPrintf(unsigned int area, unsigned int level, unsigned int reserved, const char* format, ...)
    __attribute__((format(printf, 4, 5)));

/// Reports an error that calls for service: a misused interface or an unreachable peer.
void utl_lib_svccall_notify(unsigned int code, unsigned int detail, unsigned int reserved, const char* source,
                            const char* operation, int line);
}

#pragma GCC visibility pop
