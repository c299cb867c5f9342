// Telling the service of an observer: an area's two operations that add and remove one. The service
// knows an observer by its address, of which the low 32 bits travel.
#pragma once

#include "frame/call.h"
#include "frame/observer.h"

#include <cstdint>

namespace norvane::frame {

/// What a facade makes of a null observer: the result it returns, and where its report comes from.
struct null_observer {
    unsigned int failure;
    const char* source;
    int line;
};

/// Registers `observer` under the name that its member `connection_name` holds.
template <typename Row, typename Observer>
unsigned int add_observer(bmc_mc_client* client, const Observer* observer,
                          char (Observer::*connection_name)[connection_name_size], const null_observer& refusal)
{
    if (observer == nullptr) return refuse<Row>(refusal.failure, refusal.source, refusal.line);
    return call<Row>(client, with(reinterpret_cast<std::uintptr_t>(observer), observer->*connection_name));
}

/// Removes `observer`: its address alone names it.
template <typename Row, typename Observer>
unsigned int remove_observer(bmc_mc_client* client, const Observer* observer, const null_observer& refusal)
{
    if (observer == nullptr) return refuse<Row>(refusal.failure, refusal.source, refusal.line);
    return call<Row>(client, with(reinterpret_cast<std::uintptr_t>(observer)));
}

}  // namespace norvane::frame
