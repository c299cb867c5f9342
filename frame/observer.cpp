#include "frame/observer.h"

#include <cstring>

namespace norvane::frame {

namespace {

void report_if_reported(const failure& what, unsigned int detail, const observer_failures& failures,
                        const char* operation)
{
    if (what.code != unreported) report(what.code, detail, {failures.source, operation, what.line});
}

}  // namespace

void open_connection(observer_template& observer, char (&connection_name)[connection_name_size],
                     const observer_failures& failures)
{
    std::memset(connection_name, 0, sizeof connection_name);
    observer.create_obs_name(observer_service_name, connection_name);
    if (bmc_mc_observer_server::bmc_mc_get_server(connection_name) == nullptr) {
        report_if_reported(failures.constructed_without_server, 0, failures, failures.class_name);
    }
}

void keep_connection_name(char (&connection_name)[connection_name_size], const char* chosen,
                          const observer_failures& failures)
{
    if (chosen == nullptr && failures.constructed_without_name.code != unreported) {
        report_if_reported(failures.constructed_without_name, 0, failures, failures.class_name);
        return;
    }
    std::memset(connection_name, 0, sizeof connection_name);
    if (chosen != nullptr) std::memcpy(connection_name, chosen, strnlen(chosen, sizeof connection_name));
}

void forget_connection(long& obj_id, char (&connection_name)[connection_name_size])
{
    obj_id = 0;
    std::memset(connection_name, 0, sizeof connection_name);
}

bmc_mc_observer_server* accept(const received& message, const char* connection_name, const observer_failures& failures)
{
    if (message.record == nullptr || message.length == 0) {
        report_if_reported(failures.empty_buffer, 0, failures, "dispatch");
        return nullptr;
    }
    auto* const server = bmc_mc_observer_server::bmc_mc_get_server(connection_name);
    if (server == nullptr) report_if_reported(failures.no_server, 0, failures, "dispatch");
    return server;
}

void refuse_unknown_id(const received& message, const observer_failures& failures)
{
    const auto detail = failures.detail_names_unknown_id ? static_cast<unsigned int>(message.func_id) : 0U;
    report_if_reported(failures.unknown_id, detail, failures, "dispatch");
}

}  // namespace norvane::frame
