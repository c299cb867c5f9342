// Calls every operation of every facade and fails if one of them takes memory from the heap. The
// platform does nothing, so that what is counted is the library alone.
#include "tarn_acc_facade.h"
#include "tarn_acc_observer.h"
#include "tarn_common_facade.h"
#include "tarn_common_observer.h"
#include "tarn_dept_facade.h"
#include "tarn_job_facade.h"
#include "tarn_job_observer.h"
#include "tarn_jobinfo_facade.h"
#include "tarn_jobinfo_observer.h"
#include "tarn_panel_facade.h"
#include "tarn_panel_observer.h"
#include "tarn_systeminfo_facade.h"
#include "tarn_user_facade.h"
#include "tarn_webservice_facade.h"

#include <cstddef>
#include <cstdio>
#include <tuple>
#include <type_traits>

// The C library's own functions, under the names it has for those who stand in for the plain ones.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
}

namespace {

bool counting = false;
int allocations = 0;

void note_allocation()
{
    if (counting) ++allocations;
}

}  // namespace

#pragma GCC visibility push(default)

extern "C" {

void* malloc(std::size_t size)
{
    note_allocation();
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    note_allocation();
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size)
{
    note_allocation();
    return __libc_realloc(block, size);
}
}

#pragma GCC visibility pop

namespace {

/// What an operation gets for one of its arguments: zeros, or an observer.
template <typename Argument>
struct given {
    std::remove_cvref_t<Argument> value{};
    Argument get() { return static_cast<Argument>(value); }
};

template <typename Target>
struct given<Target*> {
    Target* get()
    {
        if constexpr (std::is_base_of_v<observer_template, Target>) {
            static Target observer;
            return &observer;
        } else {
            return reinterpret_cast<Target*>(room);
        }
    }
    alignas(std::max_align_t) static inline char room[100'000];
};

/// Runs `what` and returns how often it took memory from the heap.
template <typename What>
int allocations_of(What what)
{
    allocations = 0;
    counting = true;
    what();
    counting = false;
    return allocations;
}

int calls = 0;
int failures = 0;

template <typename Facade, typename Result, typename... Arguments>
void call(const char* name, Facade* facade, Result (Facade::*operation)(Arguments...))
{
    std::tuple<given<Arguments>...> arguments;
    // Addresses of observers and the like are looked up before anything is counted.
    std::apply([](auto&... each) { (static_cast<void>(each.get()), ...); }, arguments);
    const int count = allocations_of(
        [&] { std::apply([&](auto&... each) { static_cast<void>((facade->*operation)(each.get()...)); }, arguments); });
    ++calls;
    if (count == 0) return;
    ++failures;
    std::printf("%s takes memory from the heap %d times\n", name, count);
}

}  // namespace

int main()
{
    // The facade itself is on the heap.
    if (allocations_of([] { norvane::tarn_dept_facade::tarn_dept_get_instance(); }) == 0) {
        std::printf("allocations are not counted\n");
        return 1;
    }
    using namespace norvane;
#include "heap_calls.inc"
    std::printf("%d operations called, %d of them take memory from the heap\n", calls, failures);
    return calls == 0 || failures != 0 ? 1 : 0;
}
