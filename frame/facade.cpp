#include "frame/facade.h"

#include "frame/call.h"

namespace norvane::frame {

namespace {

constexpr int service_checks = 200;
constexpr unsigned int sleep_between_checks = 300;
constexpr int wait_forever = -1;

}  // namespace

unsigned int initialize(const service& row, bmc_mc_client*& client)
{
    client = new bmc_mc_client;
    for (int check = 0; check < service_checks; ++check) {
        if (client->bmc_mc_check_facade(service_name, row.interface_id)) return 0;
        emwOSWSleep(sleep_between_checks);
    }
    if (row.client == unreached_client::destroyed) {
        delete client;
        client = nullptr;
    }
    report(unreachable, 0, {row.source, "initialize_facade", row.failure_line});
    return row.failure;
}

namespace detail {

OSW_Mutex_Semaphore& creation_mutex(OSW_Mutex_Semaphore*& mutex)
{
    const std::atomic_ref made(mutex);
    if (made.load(std::memory_order_acquire) == nullptr) {
        const OSW_Thread_Guard process_lock;
        if (mutex == nullptr) made.store(new OSW_Mutex_Semaphore(1), std::memory_order_release);
    }
    return *mutex;
}

unsigned int creation_semaphore::made(unsigned int& id)
{
    const std::atomic_ref published_id(id);
    if (published_id.load(std::memory_order_acquire) == 0) {
        const OSW_Thread_Guard process_lock;
        if (id == 0) {
            unsigned int created = 0;
            emwOSWCreateMutexSem(&created, 0, 0);
            published_id.store(created, std::memory_order_release);
        }
    }
    return published_id.load(std::memory_order_relaxed);
}

creation_semaphore::creation_semaphore(unsigned int id) : id_(id) { emwOSWRequestMutexSem(id_, wait_forever); }
creation_semaphore::~creation_semaphore() { emwOSWReleaseMutexSem(id_); }

}  // namespace detail

}  // namespace norvane::frame
