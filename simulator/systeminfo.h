// The system-information interface: a store of numbers and texts by entry key, machine information by
// key and selector, paper, counters and the machine's own figures.
#pragma once

#include "protocol/systeminfo.h"
#include "simulator/area.h"

#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <variant>

namespace norvane::simulator {

class systeminfo : public area {
public:
    systeminfo(const node& device, const environment& shared);

    [[nodiscard]] long interface_id() const override { return protocol::systeminfo::interface_id; }
    void serve(router& router) override;
    void save(json& device) const override;

private:
    using stored = std::variant<std::uint32_t, std::string>;
    using machine_key = std::pair<std::uint32_t, std::uint32_t>;

    const errors& codes_;
    mutable std::mutex mutex_;
    std::map<std::uint32_t, stored> values_;
    std::map<machine_key, stored> machine_info_;
    std::map<std::uint32_t, std::vector<char>> papers_;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> counters_;
    std::map<std::uint32_t, std::uint32_t> fax_encryption_;
    std::uint32_t screen_size_;
    std::uint32_t model_type_;
};

}  // namespace norvane::simulator
