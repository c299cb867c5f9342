// Waits for device events and prints them, as many as the command line says, or one.
//
//     tarnsim examples/device.json &
//     common_events_example 2 &
//     tarnctl notify toner-status 1 20
//     tarnctl notify cover-status 1
#include "tarn_common_facade.h"
#include "tarn_common_observer.h"

#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>

namespace {

/// Its operations are called on a thread of the platform's, so what they share is guarded.
class device_watch : public norvane::tarn_common_observer {
public:
    void wait_for(unsigned long events)
    {
        std::unique_lock<std::mutex> lock(mutex_);
        happened_.wait(lock, [this, events] { return events_ >= events; });
    }

private:
    unsigned int notify_toner_status(unsigned char toner, unsigned char level) override
    {
        std::printf("toner %u is at %u\n", unsigned{toner}, unsigned{level});
        return counted();
    }

    unsigned int notify_cover_status(unsigned int status) override
    {
        std::printf("the cover is in state %u\n", status);
        return counted();
    }

    unsigned int counted()
    {
        std::fflush(stdout);
        const std::lock_guard<std::mutex> lock(mutex_);
        ++events_;
        happened_.notify_all();
        return 0;
    }

    std::mutex mutex_;
    std::condition_variable happened_;
    unsigned long events_ = 0;
};

}  // namespace

int main(int argc, char** argv)
{
    const unsigned long events = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1;
    norvane::tarn_common_facade* const common = norvane::tarn_common_facade::tarn_common_get_instance();

    device_watch watch;
    if (const unsigned int failure = common->tarn_common_add_observer(&watch)) {
        std::printf("the service does not notify: 0x%08x\n", failure);
        return 1;
    }
    std::printf("waiting for %lu events\n", events);
    std::fflush(stdout);
    watch.wait_for(events);
    common->tarn_common_remove_observer(&watch);
    return 0;
}
