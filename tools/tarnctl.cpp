// tarnctl: sends notifications through the running stand-in service, and shows what there is to see of
// it.
#include "tools/completion.h"
#include "tools/control.h"
#include "tools/events.h"
#include "tools/panel.h"
#include "tools/watch.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <map>
#include <memory>
#include <sstream>

namespace {

using namespace norvane;
using tools::json;

/// A record's content from the command line: its bytes, or an object of the fields that are named.
json record_content(const std::string& argument)
{
    if (argument.find('=') == std::string::npos) return argument;
    json content = json::object();
    std::istringstream parts(argument);
    for (std::string part; std::getline(parts, part, ',');) {
        const auto equals = part.find('=');
        if (equals == std::string::npos) throw tools::control_error("expected name=value instead of \"" + part + "\"");
        content[part.substr(0, equals)] = part.substr(equals + 1);
    }
    return content;
}

void print_answers(const json& outcome)
{
    const json& answers = outcome.at("answers");
    if (answers.empty()) fmt::print("nobody observes this interface\n");
    for (const json& answer : answers) {
        fmt::print("{}: {}", answer.at("observer").get<std::string>(), answer.at("outcome").get<std::string>());
        if (answer.contains("reply")) {
            for (const auto& [name, value] : answer.at("reply").items()) fmt::print(", {} {}", name, value.dump());
        }
        fmt::print("\n");
    }
}

void notify(const tools::event& event, const std::map<std::string, std::string>& arguments)
{
    json fields = json::object();
    for (const auto& field : event.row->sent.fields) {
        const auto given = arguments.find(std::string(field.name));
        if (given == arguments.end() || given->second.empty()) continue;
        fields[given->first] = field.type.empty() ? json(given->second) : record_content(given->second);
    }
    print_answers(tools::control({{"command", "notify"},
                                  {"interface", event.row->interface_id},
                                  {"id", event.row->id},
                                  {"fields", std::move(fields)}}));
}

void add_notify(CLI::App& app)
{
    CLI::App* const all = app.add_subcommand("notify", "Notify the registered observers and print what each answers");
    all->require_subcommand(1);
    for (const tools::event& event : tools::events()) {
        CLI::App* const each = all->add_subcommand(event.name, fmt::format("{} {}", event.area, event.row->name));
        if (!event.alias.empty()) each->alias(event.alias);
        const auto arguments = std::make_shared<std::map<std::string, std::string>>();
        for (const auto& field : event.row->sent.fields) {
            const std::string name(field.name);
            each->add_option(name, (*arguments)[name], tools::describe(field))->required();
        }
        each->callback([&event, arguments] { notify(event, *arguments); });
    }
}

void list_observers()
{
    const json outcome = tools::control({{"command", "observers"}});
    const json& observers = outcome.at("observers");
    if (observers.empty()) fmt::print("no observer is registered\n");
    for (const json& each : observers) {
        fmt::print("interface {} {:<15} process {} observer {:#010x}\n", each.at("interface").get<int>(),
                   each.at("connection").get<std::string>(), each.at("process").get<int>(),
                   each.at("observer").get<unsigned int>());
    }
}

}  // namespace

int main(int argc, char** argv)
{
    CLI::App app("Sends notifications through the running tarnsim, and shows what there is to see of it.");
    app.require_subcommand(1);
    add_notify(app);
    app.add_subcommand("observers", "List the registered observers")->callback(list_observers);
    app.add_subcommand("watch", "Print every message between applications and the service, until interrupted")
        ->callback(tools::watch);
    app.add_subcommand("panel", "Draw what the operation panel shows just now")->callback(tools::show_panel);
    std::string shell;
    app.add_subcommand("completion", "Print a completion script: eval \"$(tarnctl completion bash)\"")
        ->callback([&shell] { fmt::print("{}", tools::completion_script(shell)); })
        ->add_option("shell", shell, "bash or zsh")
        ->required()
        ->check(CLI::IsMember({"bash", "zsh"}));
    try {
        CLI11_PARSE(app, argc, argv);
        return 0;
    } catch (const std::exception& failure) {
        fmt::print(stderr, "tarnctl: {}\n", failure.what());
        return 1;
    }
}
