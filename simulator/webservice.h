// The web-service interface: who has reserved which kind of web service, and where certificates lie.
#pragma once

#include "protocol/webservice.h"
#include "simulator/area.h"

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <utility>

namespace norvane::simulator {

/// A kind can be reserved once for each name, and only kinds that the device has.
class webservice : public area {
public:
    webservice(const node& device, const environment& shared);

    [[nodiscard]] long interface_id() const override { return protocol::webservice::interface_id; }
    void serve(router& router) override;
    void save(json& device) const override;

private:
    using reservation = std::pair<std::uint32_t, std::string>;

    const errors& codes_;
    mutable std::mutex mutex_;
    std::set<std::uint32_t> kinds_;
    std::set<reservation> reserved_;
    std::map<std::uint32_t, std::string> certificates_;
};

}  // namespace norvane::simulator
