// The common interface: observers, service state and power, boxes and documents, retained jobs, the
// address book, and the paged lists of all of them.
#pragma once

#include "protocol/common.h"
#include "simulator/area.h"
#include "simulator/boxes.h"

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace norvane::simulator {

/// What a request does to the device is announced to the observers, its sender's among them: acceptance,
/// network state, activation, sleep, and the state asked of the resident applications.
class common : public area {
public:
    common(const node& device, const environment& shared);

    [[nodiscard]] long interface_id() const override { return protocol::common::interface_id; }
    void serve(router& router) override;
    void save(json& device) const override;
    observers* registered() override { return &observers_; }

private:
    struct retained_job {
        std::uint32_t box_type;
        std::string password;
        element document;
    };
    struct group {
        element info;
        /// Ids of persons.
        std::vector<std::uint32_t> members;
    };
    using elements = std::vector<element>;

    void read_address_book(const node& own);
    void serve_state(router& router);
    void serve_power(router& router);
    void serve_boxes(router& router);
    void serve_fax_boxes(router& router);
    void serve_other_documents(router& router);
    void serve_document_lists(router& router);
    void serve_address_lists(router& router);

    template <typename Prepare, typename Page, typename Finish, typename Select>
    void on_prepare(router& router, Select select);
    template <typename Page, typename Finish>
    void on_page(router& router, const std::vector<std::string>& partitions);
    template <typename Finish>
    void on_finish(router& router);
    template <typename Row, fixed_text Sent, typename Event, fixed_text Told>
    void on_change(router& router, std::uint32_t common::*kept);

    [[nodiscard]] std::vector<retained_job>::iterator find_retained(std::uint32_t id);
    [[nodiscard]] bool deep_sleep_allowed();
    /// The members of the group, as records of that type; an error if there is no such group.
    std::uint32_t members_of(std::uint32_t id, const boxes::record_type& type, elements& found) const;

    const errors& codes_;
    const layouts& records_;
    prepared_lists& lists_;
    observers observers_;

    boxes boxes_;
    boxes fax_boxes_;
    /// As the device file has them; no request changes them.
    elements persons_;
    std::map<std::uint32_t, group> groups_;
    std::set<std::string> certificates_;
    std::uint32_t javavm_state_;

    /// Guards everything below.
    mutable std::mutex mutex_;
    elements easy_documents_;
    std::vector<retained_job> retained_jobs_;
    std::uint32_t acceptance_;
    std::uint32_t network_;
    std::uint32_t resident_apps_;
    /// 0 while the machine is awake.
    std::uint32_t sleep_;
    std::uint32_t save_mode_prohibited_;
    std::uint32_t wakeup_value_;
    std::uint32_t wakeup_date_;
    /// Who keeps the machine out of deep sleep: the process and the value that it gave.
    std::set<std::pair<int, std::uint32_t>> deep_sleep_suspended_;
};

}  // namespace norvane::simulator
