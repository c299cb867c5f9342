#include "unit/recording_platform.h"

#include "platform/emw_trace.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <utility>

namespace testing_platform {

namespace {

thread_local int locks_held = 0;

struct semaphore {
    int number;
    std::mutex mutex;
};

}  // namespace

int semaphore_number(const OSW_Mutex_Semaphore& semaphore)
{
    return static_cast<const testing_platform::semaphore*>(semaphore.semaphore_)->number;
}

record& record::put(std::size_t offset, const void* value, std::size_t width)
{
    if (offset + width > bytes_.size()) throw std::out_of_range("a test wrote outside of its record");
    std::memcpy(bytes_.data() + offset, value, width);
    return *this;
}

record& record::pattern(std::size_t offset, std::size_t width, unsigned int seed)
{
    for (std::size_t i = 0; i < width; ++i) {
        // Never 0 and never a short cycle, so that a byte out of place is seen.
        u8(offset + i, static_cast<std::uint8_t>(1 + (i * 7 + i / 251 + seed * 31) % 255));
    }
    return *this;
}

recorder& platform()
{
    static recorder instance;
    return instance;
}

bmc_mc_observer_server* the_observer_server()
{
    static bmc_mc_observer_server server;
    return &server;
}

void recorder::reset()
{
    std::destroy_at(this);
    std::construct_at(this);
}

void recorder::reply_with(const record& reply)
{
    respond([reply](const request&, char* room, unsigned int& length) {
        if (reply.bytes().size() > length) throw std::length_error("a test's reply is longer than the room for it");
        reply.bytes().copy(room, length);
        length = static_cast<unsigned int>(reply.bytes().size());
        return 0L;
    });
}

void recorder::reply_next(const record& reply)
{
    const std::lock_guard lock(mutex);
    next_replies_.push_back(reply);
}

void recorder::reply_never()
{
    respond([](const request&, char*, unsigned int&) { return 0x70L; });
}

void recorder::respond(responder how)
{
    const std::lock_guard lock(mutex);
    responder_ = std::move(how);
}

void recorder::fail(const std::string& platform_call, unsigned int code, int times)
{
    failures_[platform_call] = {code, times};
}

bool recorder::fails(const std::string& platform_call, unsigned int& code)
{
    const auto found = failures_.find(platform_call);
    if (found == failures_.end() || found->second.second == 0) return false;
    if (found->second.second > 0) --found->second.second;
    code = found->second.first;
    return true;
}

void recorder::note(std::string event)
{
    const std::lock_guard lock(mutex);
    events.push_back(std::move(event));
}

long recorder::answer(const request& sent, char* reply, unsigned int& length)
{
    responder how;
    {
        const std::lock_guard lock(mutex);
        requests.push_back(sent);
        if (!next_replies_.empty()) {
            const std::string bytes = next_replies_.front().bytes();
            next_replies_.pop_front();
            if (bytes.size() > length) throw std::length_error("a test's reply is longer than the room for it");
            bytes.copy(reply, length);
            length = static_cast<unsigned int>(bytes.size());
            return 0;
        }
        how = responder_;
    }
    return how ? how(sent, reply, length) : 0x70L;
}

std::string& recorder::block(int block_id)
{
    for (auto& [id, part] : partition_table) {
        const auto found = part.registered.find(block_id);
        if (found != part.registered.end()) return *part.blocks.at(found->second);
    }
    throw std::out_of_range("no block is registered under this id");
}

std::vector<std::pair<std::string, unsigned long>> recorder::partitions() const
{
    std::vector<std::pair<std::string, unsigned long>> all;
    for (const auto& [id, part] : partition_table) all.emplace_back(part.name, part.size);
    return all;
}

}  // namespace testing_platform

using testing_platform::platform;

// Message passing

bmc_mc_client::bmc_mc_client() : connection_(nullptr) { ++platform().clients_made; }
bmc_mc_client::~bmc_mc_client() { ++platform().clients_destroyed; }

bool bmc_mc_client::bmc_mc_check_facade(const char* service, long interface_id)
{
    auto& recorder = platform();
    const std::lock_guard lock(recorder.mutex);
    recorder.checks.push_back(std::string(service) + "/" + std::to_string(interface_id));
    return static_cast<int>(recorder.checks.size()) > recorder.refused_checks;
}

long bmc_mc_client::bmc_mc_send_sync_message(long interface_id, long func_id, char* request,
                                             unsigned int request_length, char* reply, unsigned int* reply_length,
                                             const char* service)
{
    auto& recorder = platform();
    recorder.note("send " + std::to_string(interface_id) + "/" + std::to_string(func_id));
    return recorder.answer({interface_id, func_id, std::string(request, request_length), *reply_length, service,
                            testing_platform::locks_held},
                           reply, *reply_length);
}

bmc_mc_observer_server* bmc_mc_observer_server::bmc_mc_get_server(const char* connection_name)
{
    auto& recorder = platform();
    recorder.server_lookups.emplace_back(connection_name, strnlen(connection_name, 16));
    return recorder.observer_server_exists ? testing_platform::the_observer_server() : nullptr;
}

long bmc_mc_observer_server::bmc_mc_sync_reply(gen_ipc_msghdr* header, char* reply, unsigned int reply_length)
{
    platform().answers.push_back({this, header, *header, std::string(reply, reply_length)});
    return 0;
}

facade_template::facade_template() = default;
facade_template::~facade_template() = default;
observer_template::observer_template() = default;
observer_template::~observer_template() = default;

void observer_template::create_obs_name(const char* service_name, char* connection_name)
{
    auto& recorder = platform();
    recorder.note(std::string("create_obs_name ") + service_name);
    recorder.next_connection_name.copy(connection_name, 16);
}

// OS wrapper

using testing_platform::semaphore;

namespace {

int next_semaphore()
{
    static std::atomic<int> made = 0;
    return ++made;
}

std::map<unsigned int, std::unique_ptr<std::mutex>>& semaphores_by_id()
{
    static std::map<unsigned int, std::unique_ptr<std::mutex>> all;
    return all;
}

std::recursive_mutex& process_lock()
{
    static std::recursive_mutex lock;
    return lock;
}

}  // namespace

OSW_Thread_Guard::OSW_Thread_Guard()
{
    process_lock().lock();
    ++platform().thread_guards;
}
OSW_Thread_Guard::~OSW_Thread_Guard() { process_lock().unlock(); }

OSW_Mutex_Semaphore::OSW_Mutex_Semaphore(int initial) : semaphore_(new semaphore{next_semaphore(), {}})
{
    if (initial != 1) throw std::invalid_argument("the library makes its mutexes free");
}
OSW_Mutex_Semaphore::~OSW_Mutex_Semaphore() { delete static_cast<semaphore*>(semaphore_); }

OSW_Guard::OSW_Guard(OSW_Mutex_Semaphore& guarded) : semaphore_(&guarded)
{
    auto* const taken = static_cast<semaphore*>(guarded.semaphore_);
    taken->mutex.lock();
    ++testing_platform::locks_held;
    platform().note("lock " + std::to_string(taken->number));
}

OSW_Guard::~OSW_Guard()
{
    auto* const taken = static_cast<semaphore*>(semaphore_->semaphore_);
    platform().note("unlock " + std::to_string(taken->number));
    --testing_platform::locks_held;
    taken->mutex.unlock();
}

bool OSW_Guard::locked() const { return true; }

extern "C" {

unsigned int emwOSWCreateMutexSem(unsigned int* id, int, int)
{
    static unsigned int made = 0;
    const std::lock_guard lock(platform().mutex);
    *id = ++made;
    semaphores_by_id()[*id] = std::make_unique<std::mutex>();
    return 0;
}

unsigned int emwOSWRequestMutexSem(unsigned int id, int timeout)
{
    if (timeout != -1) throw std::invalid_argument("the library waits for ever");
    std::mutex* found = nullptr;
    {
        const std::lock_guard lock(platform().mutex);
        found = semaphores_by_id().at(id).get();
    }
    found->lock();
    platform().note("request");
    return 0;
}

unsigned int emwOSWReleaseMutexSem(unsigned int id)
{
    platform().note("release");
    const std::lock_guard lock(platform().mutex);
    semaphores_by_id().at(id)->unlock();
    return 0;
}

void emwOSWSleep(unsigned int count)
{
    const std::lock_guard lock(platform().mutex);
    platform().sleeps.push_back(count);
}

// Partitions

unsigned int emwOSWIpcCreateMemPart(void** part_id, const char* name, unsigned long size)
{
    auto& recorder = platform();
    const std::lock_guard lock(recorder.mutex);
    recorder.note("emwOSWIpcCreateMemPart(" + std::string(name) + ", " + std::to_string(size) + ")");
    unsigned int code = 0;
    if (recorder.fails("emwOSWIpcCreateMemPart", code)) return code;
    const int number = ++recorder.partitions_made;
    *part_id = reinterpret_cast<void*>(static_cast<std::uintptr_t>(0x1000 + number));
    auto& made = recorder.partition_table[*part_id];
    made.number = number;
    made.name = name;
    made.size = size;
    return 0;
}

unsigned int emwOSWIpcAllocMemPart(void* part_id, void** block, unsigned long size)
{
    auto& recorder = platform();
    const std::lock_guard lock(recorder.mutex);
    recorder.note("emwOSWIpcAllocMemPart(" + std::to_string(size) + ")");
    unsigned int code = 0;
    if (recorder.fails("emwOSWIpcAllocMemPart", code)) return code;
    if (recorder.blocks_are_null) {
        *block = nullptr;
        return 0;
    }
    // Not zero, so that the library has to clear it.
    auto bytes = std::make_unique<std::string>(size, '\xee');
    *block = bytes->data();
    recorder.partition_table.at(part_id).blocks[*block] = std::move(bytes);
    return 0;
}

unsigned int emwOSWIpcRegisterBlockIdMemPart(void* part_id, void* block, int block_id)
{
    auto& recorder = platform();
    const std::lock_guard lock(recorder.mutex);
    recorder.note("emwOSWIpcRegisterBlockIdMemPart(" + std::to_string(block_id) + ")");
    unsigned int code = 0;
    if (recorder.fails("emwOSWIpcRegisterBlockIdMemPart", code)) return code;
    recorder.partition_table.at(part_id).registered[block_id] = block;
    return 0;
}

unsigned int emwOSWIpcGetBlockByIdMemPart(void* part_id, int block_id, void** block)
{
    auto& recorder = platform();
    const std::lock_guard lock(recorder.mutex);
    recorder.note("emwOSWIpcGetBlockByIdMemPart(" + std::to_string(block_id) + ")");
    unsigned int code = 0;
    if (recorder.fails("emwOSWIpcGetBlockByIdMemPart", code)) return code;
    const auto part = recorder.partition_table.find(part_id);
    if (part == recorder.partition_table.end()) return 0x20020101;
    const auto found = part->second.registered.find(block_id);
    if (found == part->second.registered.end()) return 0x20020106;
    *block = found->second;
    return 0;
}

unsigned int emwOSWIpcGetAllocSizeMemPart(void* part_id, void* block, unsigned long* size)
{
    auto& recorder = platform();
    const std::lock_guard lock(recorder.mutex);
    recorder.note("emwOSWIpcGetAllocSizeMemPart");
    unsigned int code = 0;
    if (recorder.fails("emwOSWIpcGetAllocSizeMemPart", code)) return code;
    *size = block == nullptr ? 64 : recorder.partition_table.at(part_id).blocks.at(block)->size();
    return 0;
}

unsigned int emwOSWIpcFreeMemPart(void* part_id, void* block)
{
    auto& recorder = platform();
    const std::lock_guard lock(recorder.mutex);
    recorder.note("emwOSWIpcFreeMemPart");
    unsigned int code = 0;
    if (recorder.fails("emwOSWIpcFreeMemPart", code)) return code;
    auto& part = recorder.partition_table.at(part_id);
    part.blocks.erase(block);
    std::erase_if(part.registered, [block](const auto& entry) { return entry.second == block; });
    return 0;
}

unsigned int emwOSWIpcDeleteMemPart(void* part_id)
{
    auto& recorder = platform();
    const std::lock_guard lock(recorder.mutex);
    recorder.note("emwOSWIpcDeleteMemPart");
    unsigned int code = 0;
    if (recorder.fails("emwOSWIpcDeleteMemPart", code)) return code;
    return recorder.partition_table.erase(part_id) == 1 ? 0 : 0x20020101;
}

// Trace and reports

void emwGENTrcPrintf(unsigned int area, unsigned int level, unsigned int reserved, const char* format, ...)
{
    char text[1024];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    const std::lock_guard lock(platform().mutex);
    platform().traces.push_back({area, level, reserved, format, text});
}

void utl_lib_svccall_notify(unsigned int code, unsigned int detail, unsigned int reserved, const char* source,
                            const char* operation, int line)
{
    const std::lock_guard lock(platform().mutex);
    platform().reports.push_back({code, detail, reserved, source, operation, line});
}
}
