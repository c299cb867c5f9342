// The stand-in service as a whole: all areas behind one name, and the control connection through which
// tools reach them.
#pragma once

#include "host/service.h"
#include "simulator/area.h"

#include <memory>
#include <string>
#include <vector>

namespace norvane::simulator {

class simulation {
public:
    /// Serves the device until it is destroyed. Throws device_error if the device file is wrong, and
    /// std::runtime_error if another process serves already. `device` must outlive the simulation.
    explicit simulation(const device& device);
    ~simulation();

    /// The device file's content with what has changed since.
    [[nodiscard]] json saved() const;

private:
    std::vector<char> answer(const host::request& request);
    std::vector<char> control(const host::request& request);
    json run(const node& command);
    json notify(const node& command);
    json list_observers();

    const device& device_;
    errors codes_;
    layouts records_;
    traffic messages_;
    prepared_lists lists_;
    router router_;
    std::vector<std::unique_ptr<area>> areas_;
    std::unique_ptr<host::service> service_;
    std::unique_ptr<host::service> control_;
};

}  // namespace norvane::simulator
