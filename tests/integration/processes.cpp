#include "integration/processes.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace testing_processes {

namespace {

/// The program and what has to stand before it, such as an emulator.
std::vector<std::string> command(const std::string& program, const std::vector<std::string>& arguments)
{
    std::vector<std::string> all;
    std::istringstream emulator(TARN_EMULATOR);
    for (std::string word; emulator >> word;) all.push_back(word);
    all.push_back(std::string(TARN_PROGRAMS) + "/" + program);
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
}

}  // namespace

process::process(const std::string& program, const std::vector<std::string>& arguments, const std::string& output)
{
    const auto words = command(program, arguments);
    std::vector<char*> argv;
    argv.reserve(words.size() + 1);
    for (const auto& word : words) argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    const std::string sink = output.empty() ? "/dev/null" : output;
    id_ = fork();
    if (id_ != 0) return;
    const int file = open(sink.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    execvp(argv.front(), argv.data());
    _exit(127);
}

process::~process()
{
    if (id_ > 0) stop(SIGKILL);
}

process::process(process&& other) noexcept : id_(std::exchange(other.id_, -1)) {}

process& process::operator=(process&& other) noexcept
{
    std::swap(id_, other.id_);
    return *this;
}

int process::stop(int number)
{
    signal(number);
    return wait();
}

int process::wait()
{
    int status = 0;
    waitpid(std::exchange(id_, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void process::signal(int number) const { kill(id_, number); }

void process::halt() const
{
    signal(SIGSTOP);
    int status = 0;
    waitpid(id_, &status, WUNTRACED);
}

int run(const std::string& program, const std::vector<std::string>& arguments, std::string& output)
{
    const std::string file = std::string(std::getenv("TARN_RUNTIME_DIR")) + "/output-of-" + program;
    const int code = process(program, arguments, file).wait();
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    output = text.str();
    return code;
}

process_test::process_test()
{
    std::string path = "/tmp/tarn-test-XXXXXX";
    if (mkdtemp(path.data()) == nullptr) throw std::runtime_error("no directory for the test");
    directory_ = path;
    setenv("TARN_RUNTIME_DIR", path.c_str(), 1);
}

process_test::~process_test() { std::filesystem::remove_all(directory_); }

std::filesystem::path process_test::write_file(const std::string& name, const std::string& content) const
{
    auto path = directory_ / name;
    std::ofstream(path) << content;
    return path;
}

std::string process_test::read_file(const std::filesystem::path& path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

process process_test::start_service(const std::string& device, const std::vector<std::string>& more) const
{
    static int started = 0;
    const auto output = directory_ / ("service-" + std::to_string(++started) + ".log");
    std::vector<std::string> arguments = {device.empty() ? TARN_EXAMPLE_DEVICE : device};
    arguments.insert(arguments.end(), more.begin(), more.end());
    process service("tarnsim", arguments, output);
    EXPECT_TRUE(eventually([&] { return read_file(output).find("serving") != std::string::npos; }))
        << read_file(output);
    return service;
}

}  // namespace testing_processes
