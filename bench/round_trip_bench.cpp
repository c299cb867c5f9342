// One facade call against a stand-in service in another process, beside a ping-pong of the same record
// sizes over a bare socket with another process, in the same run.
#include "host/service.h"
#include "tarn_systeminfo_facade.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>

namespace {

constexpr std::size_t request_length = 80;
constexpr std::size_t reply_length = 20;

/// Answers every request on the socket until the other end closes it.
[[noreturn]] void echo(int descriptor)
{
    std::array<char, request_length> request{};
    const std::array<char, reply_length> reply{};
    while (recv(descriptor, request.data(), request.size(), MSG_WAITALL) == static_cast<ssize_t>(request.size())) {
        if (send(descriptor, reply.data(), reply.size(), MSG_NOSIGNAL) < 0) break;
    }
    _exit(0);
}

class bare_socket {
public:
    bare_socket()
    {
        std::array<int, 2> ends{};
        if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0) throw std::runtime_error("no socket pair");
        peer_ = fork();
        if (peer_ == 0) {
            close(ends[0]);
            echo(ends[1]);
        }
        close(ends[1]);
        descriptor_ = ends[0];
    }
    ~bare_socket()
    {
        close(descriptor_);
        waitpid(peer_, nullptr, 0);
    }
    bare_socket(const bare_socket&) = delete;
    bare_socket& operator=(const bare_socket&) = delete;

    void ping_pong() const
    {
        std::array<char, request_length> request{};
        std::array<char, reply_length> reply{};
        send(descriptor_, request.data(), request.size(), MSG_NOSIGNAL);
        recv(descriptor_, reply.data(), reply.size(), MSG_WAITALL);
        benchmark::DoNotOptimize(reply);
    }

private:
    int descriptor_ = -1;
    pid_t peer_ = -1;
};

void bare_ping_pong(benchmark::State& state)
{
    const bare_socket socket;
    for (auto _ : state) socket.ping_pong();
}

void facade_call(benchmark::State& state)
{
    auto& facade = *norvane::tarn_systeminfo_facade::tarn_systeminfo_get_instance();
    unsigned int value = 0;
    if (facade.tarn_systeminfo_get_value(static_cast<TARN_ENTKEY>(1), value) != 0 || value == 0) {
        state.SkipWithError("the service does not answer");
        return;
    }
    for (auto _ : state) facade.tarn_systeminfo_get_value(static_cast<TARN_ENTKEY>(1), value);
}

BENCHMARK(bare_ping_pong)->UseRealTime();
BENCHMARK(facade_call)->UseRealTime();

/// Prints as usual and keeps the times for the ratio.
class ratio_reporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) times_[run.run_name.function_name] = run.GetAdjustedRealTime();
    }
    void print_ratio() const
    {
        fmt::print("\none facade call takes {:.2f} times a bare socket's ping-pong\n",
                   times_.at("facade_call") / times_.at("bare_ping_pong"));
    }

private:
    std::map<std::string, double> times_;
};

/// The stand-in service that stands beside this program in the build's folder, in a runtime directory
/// of its own.
class running_service {
public:
    running_service(const std::filesystem::path& folder, const char* device)
    {
        std::string directory = "/tmp/tarn-bench-XXXXXX";
        if (mkdtemp(directory.data()) == nullptr) throw std::runtime_error("no runtime directory");
        directory_ = directory;
        setenv("TARN_RUNTIME_DIR", directory.c_str(), 1);
        process_ = fork();
        if (process_ != 0) return;
        const std::string program = folder / "tarnsim";
        execl(program.c_str(), program.c_str(), device, nullptr);
        _exit(127);
    }
    ~running_service()
    {
        kill(process_, SIGTERM);
        waitpid(process_, nullptr, 0);
        std::filesystem::remove_all(directory_);
    }
    running_service(const running_service&) = delete;
    running_service& operator=(const running_service&) = delete;

private:
    std::filesystem::path directory_;
    pid_t process_ = -1;
};

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (argc != 2) {
        fmt::print(stderr, "usage: round_trip_bench [benchmark options] DEVICE-FILE\n");
        return 2;
    }
    const running_service service(std::filesystem::canonical("/proc/self/exe").parent_path(), argv[1]);
    ratio_reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.print_ratio();
    return 0;
}
