// What every facade shares: one instance for the process, made on first use, and the wait for the
// service that comes with it.
#pragma once

#include "frame/report.h"
#include "platform/bmc_mc.h"
#include "platform/emw_osw.h"

#include <atomic>
#include <type_traits>

namespace norvane::frame {

/// What becomes of the client of a facade whose service never came up.
enum class unreached_client { kept, destroyed };

/// A facade's row: what is its own in the wait for the service.
struct service {
    long interface_id;
    /// The facade's source, as its reports and trace lines name it.
    const char* source;
    unsigned int failure;
    int failure_line;
    unreached_client client;
};

/// Creates the client and asks for the service up to 200 times, sleeping after each refusal. Returns 0
/// once the service is there. Otherwise reports it unreachable and returns the facade's failure.
unsigned int initialize(const service& row, bmc_mc_client*& client);

namespace detail {

/// The mutex that guards a facade's creation, made under the platform's process-wide lock.
OSW_Mutex_Semaphore& creation_mutex(OSW_Mutex_Semaphore*& mutex);

/// The same by id, held for as long as the object lives.
class creation_semaphore {
public:
    explicit creation_semaphore(unsigned int id);
    ~creation_semaphore();
    creation_semaphore(const creation_semaphore&) = delete;
    creation_semaphore& operator=(const creation_semaphore&) = delete;

    /// The semaphore's id, made under the platform's process-wide lock.
    static unsigned int made(unsigned int& id);

private:
    unsigned int id_;
};

template <typename Facade>
Facade* published(Facade*& instance)
{
    return std::atomic_ref(instance).load(std::memory_order_acquire);
}

/// Makes the instance unless another thread was first. The caller holds the creation lock.
template <typename Facade>
Facade* create_once(Facade*& instance, std::type_identity_t<Facade>* (*make)())
{
    if (instance == nullptr) std::atomic_ref(instance).store(make(), std::memory_order_release);
    return instance;
}

}  // namespace detail

/// The facade's one instance. `make` constructs and initialises it, once in the process; it is
/// published even if the service was never reached, and never deleted. Safe from any thread.
template <typename Facade>
Facade* instance(Facade*& the_instance, OSW_Mutex_Semaphore*& mutex, std::type_identity_t<Facade>* (*make)())
{
    if (Facade* const there = detail::published(the_instance)) return there;
    const OSW_Guard lock(detail::creation_mutex(mutex));
    (void)lock.locked();
    return detail::create_once(the_instance, make);
}

/// The same for a facade whose creation is guarded by a semaphore id, made before the instance is
/// looked for.
template <typename Facade>
Facade* instance(Facade*& the_instance, unsigned int& semaphore, std::type_identity_t<Facade>* (*make)())
{
    const unsigned int id = detail::creation_semaphore::made(semaphore);
    if (Facade* const there = detail::published(the_instance)) return there;
    const detail::creation_semaphore lock(id);
    return detail::create_once(the_instance, make);
}

}  // namespace norvane::frame
