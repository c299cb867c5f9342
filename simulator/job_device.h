// What the device file says about jobs: the settings a job is made with, and how a job of each category
// runs, what it delivers and where it prints to.
#pragma once

#include "simulator/device.h"
#include "simulator/layouts.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace norvane::simulator {

enum class job_state { prepared, starting, waiting, running, next_original, done, cancelled };

/// A setting of a job: a number or a text.
using job_setting = std::variant<std::uint32_t, std::string>;

/// The categories of jobs' records, and how their jobs run.
struct job_category {
    std::uint32_t number;
    /// What the application starts its jobs as.
    std::uint32_t start_as;
    /// The list in which its jobs stand.
    std::uint32_t kind;
    /// The function whose basic settings its jobs begin with.
    std::uint32_t function;
    std::uint32_t pages;
    /// From one page to the next.
    std::chrono::milliseconds page_time;
    /// How long a start is held before it is done and answered.
    std::chrono::milliseconds start_delay;
    /// A started job waits to be kicked.
    bool waits;
    /// A job that has read its original waits for the next, or for being told that there is none.
    bool continuous;
    std::map<std::uint32_t, job_setting> settings;
    std::vector<char> scan;
    std::vector<char> ocr;
    /// Where its streams are stored; empty if it stores none.
    std::filesystem::path print_directory;
};

struct job_device {
    using triple = std::array<std::uint32_t, 3>;
    struct disabled_item {
        std::uint32_t idle;
        std::uint32_t running;
    };

    job_device(const node& own, const layouts& records);

    /// Puts the paths of files into the section so that they hold from any folder.
    void save(json& own) const;

    std::map<std::uint32_t, job_setting> settings;
    std::map<std::uint32_t, triple> phb_settings;
    std::map<std::uint32_t, job_category> categories;
    std::map<std::uint32_t, disabled_item> disabled;
    std::map<std::uint32_t, std::uint32_t> energy_saving;
    std::map<std::string, std::uint32_t> applications;
    /// The service's numbers of the states.
    std::map<job_state, std::uint32_t> states;
    /// TARN_PHB_GET_MESSAGE by state.
    std::map<job_state, std::vector<char>> messages;
    std::vector<char> phb_info;
    /// The kind that lists the jobs of all kinds.
    std::uint32_t all_kinds;

private:
    void read_category(const node& entry, std::size_t index, const layouts& records);

    /// By their JSON pointers inside the section.
    std::map<std::string, std::filesystem::path> files_;
};

}  // namespace norvane::simulator
