// Real processes for the tests: a runtime directory of the test's own, the stand-in service in it, and
// programs that are started, killed and waited for.
#pragma once

#include <gtest/gtest.h>

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace testing_processes {

/// A program of the build, under the emulator where one is needed. Killed when the object dies.
class process {
public:
    process() = default;
    /// Starts `program` of the build's folder; its output goes to the file `output`, or nowhere.
    explicit process(const std::string& program, const std::vector<std::string>& arguments = {},
                     const std::string& output = {});
    ~process();
    process(process&& other) noexcept;
    process& operator=(process&& other) noexcept;

    /// Sends the signal and waits for the end.
    int stop(int signal);
    /// Waits for the end; the exit code, or -1 if a signal ended it.
    int wait();
    void signal(int number) const;
    /// Halts the process; none of its threads runs any more when this returns. SIGCONT lets it go on.
    void halt() const;
    [[nodiscard]] pid_t id() const { return id_; }

private:
    pid_t id_ = -1;
};

/// Runs a program to its end and returns its exit code; what it printed is in `output`.
int run(const std::string& program, const std::vector<std::string>& arguments, std::string& output);

/// A test with an empty runtime directory of its own.
class process_test : public ::testing::Test {
protected:
    process_test();
    ~process_test() override;

    [[nodiscard]] const std::filesystem::path& directory() const { return directory_; }
    /// A file in the test's directory with this content.
    std::filesystem::path write_file(const std::string& name, const std::string& content) const;
    static std::string read_file(const std::filesystem::path& path);

    /// Starts the stand-in service with the example device, or another device file, and waits until it
    /// serves.
    process start_service(const std::string& device = {}, const std::vector<std::string>& more = {}) const;

private:
    std::filesystem::path directory_;
};

/// Waits until `condition` holds, for 20 seconds at the most.
template <typename Condition>
bool eventually(Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        usleep(2000);
    }
    return true;
}

}  // namespace testing_processes
