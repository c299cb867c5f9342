// What the library says when something is wrong: call-service reports and trace lines.
#pragma once

namespace norvane::frame {

/// Codes of the call-service reports.
inline constexpr unsigned int bad_argument = 63124;
inline constexpr unsigned int unreachable = 63126;

/// Where a report or a trace line comes from: the facade's or observer's source and the line. A line
/// that the service's documents state is written down as a number; any other is the line of the code.
struct origin {
    const char* source;
    const char* operation;
    int line;
};

/// Reports a misused operation or an unreachable peer to the platform.
void report(unsigned int code, unsigned int detail, const origin& from);

/// Writes one line to the platform's trace: `format` composed with its arguments, cut at 255
/// characters.
void trace_error(const origin& from, const char* format, ...) __attribute__((format(printf, 2, 3)));

}  // namespace norvane::frame
