// The OS wrapper's locks and sleep.
#include "platform/emw_osw.h"

#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace {

/// Counts to 1 at most, so that a release too many does not let two in.
class binary_semaphore {
public:
    explicit binary_semaphore(bool free) : free_(free) {}

    void take()
    {
        std::unique_lock lock(mutex_);
        released_.wait(lock, [this] { return free_; });
        free_ = false;
    }

    bool take_within(std::chrono::milliseconds limit)
    {
        std::unique_lock lock(mutex_);
        if (!released_.wait_for(lock, limit, [this] { return free_; })) return false;
        free_ = false;
        return true;
    }

    void release()
    {
        const std::lock_guard lock(mutex_);
        free_ = true;
        released_.notify_one();
    }

private:
    std::mutex mutex_;
    std::condition_variable released_;
    bool free_;
};

constexpr unsigned int no_such_semaphore = 0x20010101;
constexpr unsigned int timed_out = 0x20010102;

struct semaphore_table {
    std::mutex mutex;
    std::map<unsigned int, std::unique_ptr<binary_semaphore>> all;

    binary_semaphore* find(unsigned int id)
    {
        const std::lock_guard lock(mutex);
        const auto found = all.find(id);
        return found == all.end() ? nullptr : found->second.get();
    }
};

/// Never destroyed: threads may still hold semaphores while the process ends.
semaphore_table& semaphores()
{
    static auto* const table = new semaphore_table;
    return *table;
}

std::recursive_mutex& process_lock()
{
    static auto* const lock = new std::recursive_mutex;
    return *lock;
}

}  // namespace

OSW_Thread_Guard::OSW_Thread_Guard() { process_lock().lock(); }
OSW_Thread_Guard::~OSW_Thread_Guard() { process_lock().unlock(); }

OSW_Mutex_Semaphore::OSW_Mutex_Semaphore(int initial) : semaphore_(new binary_semaphore(initial != 0)) {}
OSW_Mutex_Semaphore::~OSW_Mutex_Semaphore() { delete static_cast<binary_semaphore*>(semaphore_); }

OSW_Guard::OSW_Guard(OSW_Mutex_Semaphore& semaphore) : semaphore_(&semaphore)
{
    static_cast<binary_semaphore*>(semaphore.semaphore_)->take();
}
OSW_Guard::~OSW_Guard() { static_cast<binary_semaphore*>(semaphore_->semaphore_)->release(); }

bool OSW_Guard::locked() const { return semaphore_ != nullptr; }

extern "C" {

unsigned int emwOSWCreateMutexSem(unsigned int* id, int, int)
{
    auto& table = semaphores();
    const std::lock_guard lock(table.mutex);
    *id = static_cast<unsigned int>(table.all.size() + 1);
    table.all[*id] = std::make_unique<binary_semaphore>(true);
    return 0;
}

unsigned int emwOSWRequestMutexSem(unsigned int id, int timeout)
{
    binary_semaphore* const semaphore = semaphores().find(id);
    if (semaphore == nullptr) return no_such_semaphore;
    if (timeout >= 0) return semaphore->take_within(std::chrono::milliseconds(timeout)) ? 0 : timed_out;
    semaphore->take();
    return 0;
}

unsigned int emwOSWReleaseMutexSem(unsigned int id)
{
    binary_semaphore* const semaphore = semaphores().find(id);
    if (semaphore == nullptr) return no_such_semaphore;
    semaphore->release();
    return 0;
}

void emwOSWSleep(unsigned int count) { std::this_thread::sleep_for(std::chrono::milliseconds(count)); }
}
