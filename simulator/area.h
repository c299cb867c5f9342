// What every area of the stand-in service is given, and what it gives back.
#pragma once

#include "simulator/device.h"
#include "simulator/errors.h"
#include "simulator/layouts.h"
#include "simulator/observers.h"
#include "simulator/pages.h"
#include "simulator/router.h"
#include "simulator/traffic.h"

namespace norvane::simulator {

/// What the areas share.
struct environment {
    const errors& codes;
    const layouts& records;
    traffic& messages;
    prepared_lists& lists;
};

/// One interface of the service. An area is made from the device file and lives as long as the service.
class area {
public:
    area() = default;
    virtual ~area() = default;
    area(const area&) = delete;
    area& operator=(const area&) = delete;

    [[nodiscard]] virtual long interface_id() const = 0;

    /// Binds the interface's operations.
    virtual void serve(router& router) = 0;

    /// Puts what has changed since the device file was read into its content.
    virtual void save(json& device) const = 0;

    /// The interface's observers, or null if it does not notify.
    virtual observers* registered() { return nullptr; }

    /// What there is to see of the area just now, for tools; null if nothing.
    [[nodiscard]] virtual json state() const { return nullptr; }
};

}  // namespace norvane::simulator
