// The job-information interface: logs of finished jobs, the lists of their receive and send records, and
// image logs.
#pragma once

#include "protocol/jobinfo.h"
#include "simulator/area.h"

#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace norvane::simulator {

/// Each application walks lists of its own, one of receive and one of send records: creating one again
/// begins it anew. The deletion of an image log is announced to the observers as its creation status,
/// where the device file says which status that is.
class jobinfo : public area {
public:
    jobinfo(const node& device, const environment& shared);

    [[nodiscard]] long interface_id() const override { return protocol::jobinfo::interface_id; }
    void serve(router& router) override;
    void save(json& device) const override;
    observers* registered() override { return &observers_; }

private:
    using record = std::vector<char>;
    /// A job's id and the type of log.
    using log_key = std::pair<std::uint32_t, std::uint32_t>;

    struct log {
        record content;
        std::vector<record> received;
        std::vector<record> sent;
    };
    struct image_log {
        std::uint32_t job;
        std::string text;
    };
    /// What is left of the list that each process walks.
    using walks = std::map<int, std::deque<record>>;

    template <typename CreateRow, typename NextRow, typename DeleteRow>
    void serve_list(router& router, std::vector<record> log::*list, walks& under_way);

    void announce_deletion(std::uint32_t id, const image_log& deleted);

    const errors& codes_;
    mutable std::mutex mutex_;
    std::map<log_key, log> logs_;
    walks receive_walks_;
    walks send_walks_;
    std::map<std::uint32_t, image_log> image_logs_;
    std::optional<std::uint32_t> deleted_status_;
    observers observers_;
};

}  // namespace norvane::simulator
