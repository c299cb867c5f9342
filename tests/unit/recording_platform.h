// A platform inside the test process: it records every call that the library makes, and answers as the
// test has told it to.
#pragma once

#include "platform/bmc_mc.h"
#include "platform/emw_osw.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace testing_platform {

/// The bytes of a record, built field by field at stated offsets, in the machine's byte order.
class record {
public:
    explicit record(std::size_t length) : bytes_(length, '\0') {}

    record& u32(std::size_t offset, std::uint32_t value) { return put(offset, &value, sizeof value); }
    record& u16(std::size_t offset, std::uint16_t value) { return put(offset, &value, sizeof value); }
    record& u8(std::size_t offset, std::uint8_t value) { return put(offset, &value, sizeof value); }
    record& text(std::size_t offset, std::string_view value) { return put(offset, value.data(), value.size()); }
    /// `width` bytes that differ from one another and from one `seed` to the next.
    record& pattern(std::size_t offset, std::size_t width, unsigned int seed = 1);

    [[nodiscard]] const std::string& bytes() const { return bytes_; }

private:
    record& put(std::size_t offset, const void* value, std::size_t width);

    std::string bytes_;
};

/// A value of `Type` whose bytes are those of `record::pattern`.
template <typename Type>
Type patterned(unsigned int seed = 1)
{
    Type value;
    const std::string bytes = record(sizeof value).pattern(0, sizeof value, seed).bytes();
    bytes.copy(reinterpret_cast<char*>(&value), sizeof value);
    return value;
}

template <typename Type>
std::string bytes_of(const Type& value)
{
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

struct request {
    long interface_id;
    long func_id;
    std::string bytes;
    unsigned int reply_room;
    std::string service;
    /// How many mutex semaphores the sending thread held.
    int locks_held;
};

struct report {
    unsigned int code;
    unsigned int detail;
    unsigned int reserved;
    std::string source;
    std::string operation;
    int line;
    bool operator==(const report&) const = default;
};

struct trace_line {
    unsigned int area;
    unsigned int level;
    unsigned int reserved;
    std::string format;
    std::string text;
    bool operator==(const trace_line&) const = default;
};

struct observer_answer {
    bmc_mc_observer_server* server;
    gen_ipc_msghdr* header_address;
    gen_ipc_msghdr header;
    std::string bytes;
};

/// Answers one request: fills `reply`, changes `length`, and returns the transport's status.
using responder = std::function<long(const request& sent, char* reply, unsigned int& length)>;

/// What has happened and what is to happen. One for the test process; `reset` makes it new.
class recorder {
public:
    void reset();

    /// Every request from now on gets this reply.
    void reply_with(const record& reply);
    /// The next requests get these replies, one each, before what `reply_with` says.
    void reply_next(const record& reply);
    /// Every request goes unanswered: the transport fails and the reply is not touched.
    void reply_never();
    void respond(responder how);

    /// Makes the named partition call fail with `code`: the next `times` times, or always.
    void fail(const std::string& platform_call, unsigned int code, int times = -1);

    /// All sends, locking and calls of the partition functions, in order: "send 1/46" (interface and
    /// func id), "lock 7" and "unlock 7" (`semaphore_number`), "request" and "release" (a semaphore by
    /// id), "emwOSWIpcAllocMemPart(37400)".
    std::vector<std::string> events;
    std::vector<request> requests;
    std::vector<report> reports;
    std::vector<trace_line> traces;
    std::vector<unsigned int> sleeps;
    std::vector<std::string> checks;

    /// How many service checks are refused before the first is granted.
    int refused_checks = 0;
    int clients_made = 0;
    int clients_destroyed = 0;
    int thread_guards = 0;

    bool observer_server_exists = true;
    std::string next_connection_name = "TARN_OBS0000001";
    std::vector<std::string> server_lookups;
    std::vector<observer_answer> answers;

    /// The platform says that it has given a block, and gives none.
    bool blocks_are_null = false;

    /// The bytes of the block registered under `block_id` in the only partition that has it.
    std::string& block(int block_id);
    /// Names and sizes of the partitions that exist.
    [[nodiscard]] std::vector<std::pair<std::string, unsigned long>> partitions() const;

    // What the platform's functions use.
    long answer(const request& sent, char* reply, unsigned int& length);
    bool fails(const std::string& platform_call, unsigned int& code);
    void note(std::string event);
    std::recursive_mutex mutex;

    struct partition {
        int number;
        std::string name;
        unsigned long size;
        std::map<void*, std::unique_ptr<std::string>> blocks;
        std::map<int, void*> registered;
    };
    std::map<void*, partition> partition_table;
    int partitions_made = 0;

private:
    responder responder_;
    std::deque<record> next_replies_;
    std::map<std::string, std::pair<unsigned int, int>> failures_;
};

recorder& platform();

/// The number under which the events name a mutex semaphore.
int semaphore_number(const OSW_Mutex_Semaphore& semaphore);

/// The server that `bmc_mc_get_server` hands out.
bmc_mc_observer_server* the_observer_server();

}  // namespace testing_platform
