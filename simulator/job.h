// The job interface: jobs' records with their settings and destinations, jobs that run over time and
// notify, and the data that goes in and out of them through the application's partitions.
//
// What an application can rely on where the protocol leaves it open:
//
// - A start's second argument is the id of the record that is started, or 0 for the newest prepared one
//   of the calling process that is started as this category. The id that it answers is the record's.
// - A copy keeps the record as it is just then. A rollback puts it back, as often as it is asked for. A
//   commit lets go of the copy, so that no rollback is possible until the next. What is kept are settings,
//   destinations and prepared documents.
// - A record changes only until its job is started.
// - The deletion of a record cancels a job that has not ended. It reports the memory as released when no
//   record of the process is left whose data goes through the same partitions.
#pragma once

#include "protocol/job.h"
#include "simulator/area.h"
#include "simulator/job_device.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <thread>

namespace norvane::simulator {

class jobs : public area {
public:
    jobs(const node& device, const environment& shared);
    ~jobs() override;

    [[nodiscard]] long interface_id() const override { return protocol::job::interface_id; }
    void serve(router& router) override;
    void save(json& device) const override;
    observers* registered() override { return &observers_; }
    [[nodiscard]] json state() const override;

private:
    using clock = std::chrono::steady_clock;

    /// What the application says about a job before it is started.
    struct content {
        std::map<std::uint32_t, job_setting> settings;
        std::map<std::uint32_t, job_device::triple> phb_settings;
        std::map<std::uint32_t, std::vector<char>> addresses;
        json documents = json::object();
    };

    struct record {
        const job_category* category;
        int process;
        content made;
        content current{made};
        std::optional<content> kept{};
        /// Whose background work it is, if it is.
        std::optional<std::uint32_t> user{};
        job_state state = job_state::prepared;
        std::uint32_t last_address = 0;
        std::uint32_t pages = 0;
        /// When the next page is read.
        std::optional<clock::time_point> due{};
        std::size_t scanned = 0;
        std::size_t recognised = 0;
        /// Where its stream is stored; empty before it is prepared.
        std::filesystem::path printed{};
    };

    struct news {
        long id;
        std::vector<char> record;
    };

    void serve_lives(router& router);
    void serve_settings(router& router);
    void serve_addresses(router& router);
    void serve_documents(router& router);
    void serve_data(router& router);
    void serve_machine(router& router);

    /// Binds an operation on a job that must be there: `handle(request, reply, record)`, locked.
    template <typename Row, typename Handle>
    void on_job(router& router, Handle handle);
    /// Binds an operation that changes what a job is made of, which must not be started yet:
    /// `handle(request, reply, content)`, locked.
    template <typename Row, typename Handle>
    void on_content(router& router, Handle handle);

    // All of these are called with the lock held.
    std::uint32_t generate(std::uint32_t category, int process, std::optional<std::uint32_t> user, std::uint32_t& id);
    std::uint32_t find_to_start(std::uint32_t category, std::uint32_t id, int process, record*& found,
                                std::uint32_t& found_id);
    bool releases_memory(const record& deleted, int process) const;
    [[nodiscard]] bool ended(const record& job) const;
    [[nodiscard]] std::vector<char> message_of(std::uint32_t id, const record& job) const;
    void change(std::uint32_t id, record& job, job_state state);
    void run(std::uint32_t id, record& job);
    void finish(std::uint32_t id, record& job, job_state how);
    void read_page(std::uint32_t id, record& job);
    std::uint32_t cancel(std::uint32_t id, record& job);
    std::uint32_t deliver(int process, const protocol::job::partition& where, const std::string& type,
                          const record& job, const std::vector<char>& data, std::size_t& position) const;
    std::uint32_t store(int process, std::uint32_t id, record& job);
    template <typename Row>
    void tell(const event_of<Row>& event);

    /// Lets the jobs that are due go on, and gives the time of the next.
    std::optional<clock::time_point> go_on();
    /// The thread that reads the pages and tells the observers, one thing after the other.
    void work();

    const errors& codes_;
    const layouts& records_;
    const job_device device_;
    observers observers_;

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::uint32_t, record> jobs_;
    std::uint32_t last_job_ = 0;
    /// Basic settings by function and setting.
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> basic_;
    std::uint32_t prohibition_ = 0;
    /// Applications that have judged a change of state, in that order.
    std::vector<std::string> judged_;
    std::deque<news> untold_;
    bool stopping_ = false;
    std::thread worker_;
};

}  // namespace norvane::simulator
