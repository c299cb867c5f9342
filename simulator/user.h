// The user interface: accounts with passwords, extra strings, cards and rights, logins and their
// certificates, authentication modes, hidden accounts, and the local user list.
#pragma once

#include "protocol/user.h"
#include "simulator/area.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace norvane::simulator {

class user : public area {
public:
    user(const node& device, const environment& shared);

    [[nodiscard]] long interface_id() const override { return protocol::user::interface_id; }
    void serve(router& router) override;
    void save(json& device) const override;
    [[nodiscard]] json state() const override;

private:
    struct account {
        std::string name;
        std::string password;
        std::string extra;
        /// The card's identifier; empty without a card.
        std::string idm;
        std::uint32_t rights;
        element info;
    };
    struct hidden_account {
        element record;
        /// What is saved of the account.
        json content;
    };
    /// What a login or a question for rights is decided by.
    struct credentials {
        std::string name;
        std::string password;
        /// Only where the request has one.
        std::optional<std::string> extra;
    };

    void read_accounts(const node& own);
    void read_hidden_accounts(const node& own);

    void serve_logins(router& router);
    void serve_information(router& router);
    void serve_modes(router& router);
    void serve_hidden_accounts(router& router);
    void serve_list(router& router);

    /// The rights of the account, visible or hidden, that these credentials open.
    std::uint32_t check(const credentials& who, std::uint32_t& rights) const;
    std::uint32_t log_in(const credentials& who, std::uint32_t& cert_id);
    std::uint32_t log_out(std::uint32_t cert_id);
    std::uint32_t certify(const std::string& name);
    [[nodiscard]] const account* find(const std::string& name) const;

    const errors& codes_;
    const layouts& records_;
    prepared_lists& lists_;
    mutable std::mutex mutex_;
    std::vector<account> accounts_;
    std::map<std::string, hidden_account> hidden_;
    /// Whose information is given for which kind of user; without a name it is who logged in last.
    std::map<std::uint32_t, std::string> kinds_;
    /// Who is logged in, by certificate.
    std::map<std::uint32_t, std::string> logins_;
    std::uint32_t last_cert_id_ = 0;
    std::uint32_t authentication_mode_;
    std::uint32_t func_auth_mode_;
    std::uint32_t logout_limit_;
};

}  // namespace norvane::simulator
