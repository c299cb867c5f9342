// The accessory interface: the card reader and the cards that are held to it, FeliCa settings, and the
// charging accessory with its send sessions, its price and its limit.
#pragma once

#include "protocol/acc.h"
#include "simulator/area.h"

#include <map>
#include <mutex>
#include <string>

namespace norvane::simulator {

class acc : public area {
public:
    acc(const node& device, const environment& shared);

    [[nodiscard]] long interface_id() const override { return protocol::acc::interface_id; }
    void serve(router& router) override;
    void save(json& device) const override;
    observers* registered() override { return &observers_; }
    [[nodiscard]] json state() const override;

private:
    struct felica {
        std::string first_string;
        std::string second_string;
        std::string third_string;
        std::uint32_t first_byte;
        std::uint32_t second_byte;
    };
    /// How far a send session has come.
    enum class session { none, prepared, started, ended };

    void serve_reader(router& router);
    void serve_felica(router& router);
    void serve_sessions(router& router);
    void serve_charging(router& router);

    /// Binds an operation that leads a session from one stage to the next.
    template <typename Row>
    void step(router& router, session from, session to);

    const errors& codes_;
    observers observers_;
    mutable std::mutex mutex_;
    std::uint32_t status_;
    std::vector<char> device_info_;
    std::uint32_t read_type_;
    std::uint32_t felica_read_type_;
    /// The card that is held to the reader once it reads the card's type.
    std::map<std::uint32_t, std::vector<char>> cards_;
    std::map<std::uint32_t, felica> felica_;
    std::uint32_t price_;
    std::uint32_t price_limit_;
    session session_ = session::none;
    /// The process whose session it is.
    int owner_ = 0;
    std::string condition_;
    std::uint32_t send_page_num_ = 0;
};

}  // namespace norvane::simulator
