// The application's sending end. Every call that is under way has a connection of its own, so that none
// waits for another's reply; connections are kept for the calls that follow.
#include "host/channel.h"
#include "host/notifying.h"
#include "platform/bmc_mc.h"

#include <cstdlib>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace norvane::host {

namespace {

/// The limit on the time of one call that TARN_CALL_TIMEOUT_MS sets; without it a call has none.
std::optional<std::chrono::milliseconds> call_limit()
{
    const char* const text = std::getenv("TARN_CALL_TIMEOUT_MS");
    if (text == nullptr) return std::nullopt;
    char* end = nullptr;
    const long limit = std::strtol(text, &end, 10);
    if (end == text || *end != '\0' || limit <= 0) return std::nullopt;
    return std::chrono::milliseconds(limit);
}

class connections {
public:
    delivery exchange(const std::string& service, const message_header& header, std::span<const char> record,
                      std::span<char> reply, std::size_t& length)
    {
        length = 0;
        const deadline until = limit_ ? deadline(clock::now() + *limit_) : std::nullopt;
        std::unique_ptr<channel> used = take(service);
        if (used == nullptr) return delivery::no_such_connection;
        const delivery outcome = used->exchange(header, record, reply, length, until);
        if (outcome == delivery::answered || outcome == delivery::unanswered) give_back(service, std::move(used));
        return outcome;
    }

private:
    std::unique_ptr<channel> take(const std::string& service)
    {
        {
            const std::lock_guard lock(mutex_);
            auto& idle = idle_[service];
            while (!idle.empty()) {
                std::unique_ptr<channel> kept = std::move(idle.back());
                idle.pop_back();
                // A service that went away has closed what was kept.
                if (!kept->stale()) return kept;
            }
        }
        return channel::connect(service);
    }

    void give_back(const std::string& service, std::unique_ptr<channel> used)
    {
        const std::lock_guard lock(mutex_);
        idle_[service].push_back(std::move(used));
    }

    const std::optional<std::chrono::milliseconds> limit_ = call_limit();
    std::mutex mutex_;
    std::map<std::string, std::vector<std::unique_ptr<channel>>> idle_;
};

}  // namespace

}  // namespace norvane::host

using norvane::host::connections;
using norvane::host::delivery;
using norvane::host::message_header;
using norvane::host::message_kind;

bmc_mc_client::bmc_mc_client() : connection_(new connections) {}
bmc_mc_client::~bmc_mc_client() { delete static_cast<connections*>(connection_); }

bool bmc_mc_client::bmc_mc_check_facade(const char* service, long interface_id)
{
    message_header header{};
    header.kind = message_kind::check;
    header.interface_id = static_cast<std::int32_t>(interface_id);
    std::size_t length = 0;
    return static_cast<connections*>(connection_)->exchange(service, header, {}, {}, length) == delivery::answered;
}

long bmc_mc_client::bmc_mc_send_sync_message(long interface_id, long func_id, char* request,
                                             unsigned int request_length, char* reply, unsigned int* reply_length,
                                             const char* service)
{
    message_header header{};
    header.kind = message_kind::request;
    header.interface_id = static_cast<std::int32_t>(interface_id);
    header.func_id = static_cast<std::int32_t>(func_id);
    header.detail = norvane::host::is_notifying() ? 1 : 0;
    std::size_t length = 0;
    const delivery outcome = static_cast<connections*>(connection_)
                                 ->exchange(service, header, {request, request_length}, {reply, *reply_length}, length);
    if (outcome != delivery::answered) return static_cast<long>(outcome);
    *reply_length = static_cast<unsigned int>(length);
    return 0;
}

facade_template::facade_template() = default;
facade_template::~facade_template() = default;
