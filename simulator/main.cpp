// tarnsim: a service for the workstation.
#include "simulator/simulation.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <exception>
#include <fstream>
#include <string>

#include "host/runtime_directory.h"

namespace {

/// Writes next to the file first, so that a device file is never left half written.
void save(const norvane::simulator::json& content, const std::string& file)
{
    const std::string fresh = file + ".new";
    std::ofstream stream(fresh, std::ios::binary);
    stream << content.dump(2) << '\n';
    stream.close();
    if (!stream || std::rename(fresh.c_str(), file.c_str()) != 0)
        throw std::runtime_error(file + ": cannot be written");
}

/// Serves until one of the signals comes that end a program.
void serve(const std::string& device_file, const std::string& save_file)
{
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGINT);
    sigaddset(&ending, SIGTERM);
    // Before any thread is made, so that all of them leave the signals to this one.
    pthread_sigmask(SIG_BLOCK, &ending, nullptr);

    const norvane::simulator::device device(device_file);
    const norvane::simulator::simulation running(device);
    fmt::print("tarnsim: serving {} in {}\n", device_file, norvane::host::runtime_directory());
    std::fflush(stdout);

    int signal = 0;
    sigwait(&ending, &signal);
    if (!save_file.empty()) {
        save(running.saved(), save_file);
        fmt::print("tarnsim: saved to {}\n", save_file);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    CLI::App app(
        "Stands in for the TARN service on this machine, for the device that a device file describes.\n"
        "Applications of this user find it in TARN_RUNTIME_DIR (else under XDG_RUNTIME_DIR, else in /tmp).\n"
        "It serves until it is interrupted.");
    std::string device_file;
    std::string save_file;
    app.add_option("device", device_file, "Device file (JSON), such as examples/device.json")->required();
    app.add_option("--save", save_file,
                   "Write the device with its changes to this file at the end; may be the same file");
    CLI11_PARSE(app, argc, argv);
    try {
        serve(device_file, save_file);
        return 0;
    } catch (const std::exception& failure) {
        fmt::print(stderr, "tarnsim: {}\n", failure.what());
        return 1;
    }
}
