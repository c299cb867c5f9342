// The operation panel's interface: screens, keys and observers, display texts, LED, buzzer, timers and
// the soft ten-key. What applications merely tell the panel is kept for those who look at it.
#pragma once

#include "protocol/panel.h"
#include "simulator/area.h"

#include <map>
#include <mutex>
#include <string>
#include <tuple>

namespace norvane::simulator {

class panel : public area {
public:
    panel(const node& device, const environment& shared);

    [[nodiscard]] long interface_id() const override { return protocol::panel::interface_id; }
    void serve(router& router) override;
    void save(json& device) const override;
    observers* registered() override { return &observers_; }
    [[nodiscard]] json state() const override;

private:
    struct screen_entry {
        std::string name;
        bool available;
    };
    /// What applications have told by one operation.
    struct told {
        std::string operation;
        std::uint32_t times = 0;
        json last;
    };
    /// Key, number and type of a display text.
    using text_key = std::tuple<std::string, std::uint32_t, std::uint32_t>;
    using values = std::map<std::uint32_t, std::uint32_t>;

    void serve_events(router& router);
    void serve_requests(router& router);
    void serve_texts(router& router);
    void serve_soft_tenkey(router& router);

    /// Binds an operation that sets `Value` for `Key` in `kept`.
    template <typename Row, fixed_text Key, fixed_text Value>
    void keep(router& router, values& kept);

    /// Binds an operation that only tells the panel something.
    template <typename Row>
    void hear(router& router);

    const errors& codes_;
    const layouts& records_;
    observers observers_;
    mutable std::mutex mutex_;
    std::map<std::uint32_t, screen_entry> screens_;
    std::map<std::string, std::uint32_t> applications_;
    std::map<text_key, std::string> texts_;
    std::map<std::uint32_t, std::vector<char>> soft_tenkeys_;
    values leds_;
    values buzzers_;
    values timers_;
    values settings_;
    values menu_;
    std::map<long, told> told_;
    std::uint32_t first_display_;
    std::uint32_t display_;
};

}  // namespace norvane::simulator
