// The application's receiving end: one server thread for the process, which listens under the name of
// every observer and calls the observers' `dispatch`.
#include "host/listener.h"
#include "host/notifying.h"
#include "platform/bmc_mc.h"

#include <unistd.h>

#include <condition_variable>
#include <cstring>
#include <map>
#include <mutex>
#include <set>
#include <span>
#include <string>

namespace norvane::host {

namespace {

constexpr std::size_t name_room = 16;
/// Characters behind the service's name that tell one observer of this machine from all others.
constexpr std::size_t suffix_size = 7;

std::string name_of(const char* connection_name) { return {connection_name, strnlen(connection_name, name_room)}; }

/// The notification that the server's thread is delivering, as its answer is found.
struct delivery_under_way {
    unsigned int ticket;
    outgoing answer;
};

thread_local delivery_under_way* under_way = nullptr;

class observer_server {
public:
    /// Never destroyed: its thread may be delivering while the process ends.
    static observer_server& instance()
    {
        static auto* const server = new observer_server;
        return *server;
    }

    void add(observer_template* observer)
    {
        const std::lock_guard lock(mutex_);
        alive_.insert(observer);
    }

    /// Forgets the observer and waits until it is no longer delivered to, unless it is the one that is
    /// being delivered to that asks.
    void remove(observer_template* observer)
    {
        std::unique_lock lock(mutex_);
        alive_.erase(observer);
        for (auto entry = owners_.begin(); entry != owners_.end();) {
            if (entry->second == observer) {
                listener_.close(entry->first);
                entry = owners_.erase(entry);
            } else {
                ++entry;
            }
        }
        if (under_way == nullptr) delivered_.wait(lock, [&] { return receiver_ != observer; });
    }

    /// Opens a connection under a name that is new on this machine.
    std::string open(const std::string& prefix, observer_template* observer)
    {
        const std::lock_guard lock(mutex_);
        for (;;) {
            std::string name = prefix.substr(0, name_room - 1 - suffix_size) + next_suffix();
            if (listener_.open(name)) {
                owners_[name] = observer;
                return name;
            }
        }
    }

    bool listens(const std::string& name)
    {
        const std::lock_guard lock(mutex_);
        return owners_.contains(name);
    }

private:
    observer_server()
        : listener_(listener::threading::single, [this](const incoming& message) { return deliver(message); })
    {
    }

    /// The process in the front, so that two processes hardly ever try the same name.
    std::string next_suffix()
    {
        constexpr const char* digits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
        constexpr unsigned int names_of_a_process = 1U << 14;
        auto number = static_cast<unsigned long long>(getpid()) * names_of_a_process + names_++ % names_of_a_process;
        std::string suffix(suffix_size, '0');
        for (std::size_t i = suffix_size; i-- > 0; number /= 36) suffix[i] = digits[number % 36];
        return suffix;
    }

    /// The observer that the notification names or, if it names none of this process, the one that
    /// opened the connection.
    observer_template* receiver_of(const incoming& message)
    {
        for (observer_template* const observer : alive_) {
            const auto address = reinterpret_cast<std::uintptr_t>(observer);
            if (static_cast<std::uint32_t>(address) == message.header.detail) return observer;
        }
        const auto owner = owners_.find(message.name);
        return owner == owners_.end() ? nullptr : owner->second;
    }

    outgoing deliver(const incoming& message)
    {
        if (message.header.kind != message_kind::notification) return {};
        {
            const std::lock_guard lock(mutex_);
            receiver_ = receiver_of(message);
        }
        if (receiver_ == nullptr) return {};

        delivery_under_way delivering{++tickets_, {}};
        gen_ipc_msghdr header{};
        header.words[0] = delivering.ticket;
        if (message.header.length >= sizeof header) std::memcpy(message.record.data(), &header, sizeof header);

        under_way = &delivering;
        receiver_->dispatch(message.header.func_id, message.record.data(), message.header.length, header);
        under_way = nullptr;
        {
            const std::lock_guard lock(mutex_);
            receiver_ = nullptr;
        }
        delivered_.notify_all();
        return std::move(delivering.answer);
    }

    std::mutex mutex_;
    std::condition_variable delivered_;
    std::set<observer_template*> alive_;
    std::map<std::string, observer_template*> owners_;
    observer_template* receiver_ = nullptr;
    unsigned int names_ = 0;
    unsigned int tickets_ = 0;
    listener listener_;
};

}  // namespace

bool is_notifying() { return under_way != nullptr; }

}  // namespace norvane::host

using norvane::host::observer_server;

bmc_mc_observer_server* bmc_mc_observer_server::bmc_mc_get_server(const char* connection_name)
{
    static bmc_mc_observer_server answering;
    return observer_server::instance().listens(norvane::host::name_of(connection_name)) ? &answering : nullptr;
}

long bmc_mc_observer_server::bmc_mc_sync_reply(gen_ipc_msghdr* header, char* reply, unsigned int reply_length)
{
    auto* const delivering = norvane::host::under_way;
    if (delivering == nullptr || header->words[0] != delivering->ticket) return -1;
    delivering->answer = {norvane::host::delivery::answered, {reply, reply + reply_length}};
    return 0;
}

observer_template::observer_template() { observer_server::instance().add(this); }
observer_template::~observer_template() { observer_server::instance().remove(this); }

void observer_template::create_obs_name(const char* service_name, char* connection_name)
{
    const std::string name = observer_server::instance().open(service_name, this);
    name.copy(connection_name, norvane::host::name_room - 1);
    connection_name[name.size()] = '\0';
}
