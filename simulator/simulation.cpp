#include "simulator/simulation.h"

#include "host/partition.h"
#include "protocol/catalog.h"
#include "simulator/acc.h"
#include "simulator/codec.h"
#include "simulator/common.h"
#include "simulator/dept.h"
#include "simulator/job.h"
#include "simulator/jobinfo.h"
#include "simulator/panel.h"
#include "simulator/systeminfo.h"
#include "simulator/user.h"
#include "simulator/webservice.h"

#include <algorithm>

namespace norvane::simulator {

namespace {

/// How long a watcher's question may wait for traffic.
constexpr std::chrono::milliseconds longest_watch{1000};

}  // namespace

simulation::simulation(const device& device)
    : device_(device),
      codes_(device.root()),
      records_(device.root()),
      messages_(records_),
      lists_(codes_),
      router_({codes_.code("unknown_request"), codes_.code("bad_length")})
{
    const environment shared{codes_, records_, messages_, lists_};
    areas_.push_back(std::make_unique<common>(device.root(), shared));
    areas_.push_back(std::make_unique<systeminfo>(device.root(), shared));
    areas_.push_back(std::make_unique<jobs>(device.root(), shared));
    areas_.push_back(std::make_unique<user>(device.root(), shared));
    areas_.push_back(std::make_unique<panel>(device.root(), shared));
    areas_.push_back(std::make_unique<acc>(device.root(), shared));
    areas_.push_back(std::make_unique<dept>(device.root(), shared));
    areas_.push_back(std::make_unique<jobinfo>(device.root(), shared));
    areas_.push_back(std::make_unique<webservice>(device.root(), shared));

    host::service::options offered;
    for (const auto& each : areas_) {
        each->serve(router_);
        offered.interfaces.insert(each->interface_id());
    }
    service_ = std::make_unique<host::service>(
        offered, [this](const host::request& request) { return answer(request); },
        [this] {
            host::sweep_partitions();
            lists_.forget_the_dead();
        });
    host::sweep_partitions();
    control_ = std::make_unique<host::service>(host::service::options{host::control_name, {}},
                                               [this](const host::request& request) { return control(request); });
}

simulation::~simulation() = default;

json simulation::saved() const
{
    json content = device_.root().value();
    for (const auto& each : areas_) each->save(content);
    return content;
}

std::vector<char> simulation::answer(const host::request& request)
{
    auto reply = router_.answer(request);
    messages_.note_request(request, reply);
    return reply;
}

std::vector<char> simulation::control(const host::request& request)
{
    json outcome;
    try {
        const device command("command", std::string(request.record.begin(), request.record.end()));
        outcome = run(command.root());
    } catch (const device_error& wrong) {
        outcome = {{"error", wrong.what()}};
    }
    // What applications have stored need not be UTF-8.
    const std::string text = outcome.dump(-1, ' ', false, json::error_handler_t::replace);
    return {text.begin(), text.end()};
}

json simulation::run(const node& command)
{
    const std::string what = command.at("command").text();
    if (what == "notify") return notify(command);
    if (what == "observers") return list_observers();
    if (what == "traffic") {
        return messages_.after(command.at("after").number(), longest_watch);
    }
    if (what == "state") {
        const std::uint32_t interface_id = command.at("interface").number();
        for (const auto& each : areas_) {
            if (each->interface_id() == static_cast<long>(interface_id)) return each->state();
        }
        command.at("interface").fail("an interface's id");
    }
    command.at("command").fail("notify, observers, traffic or state");
}

json simulation::notify(const node& command)
{
    const auto interface_id = static_cast<long>(command.at("interface").number());
    const auto id = static_cast<long>(command.at("id").number());
    const auto& described = protocol::catalog();
    const auto area = std::find_if(described.begin(), described.end(),
                                   [&](const auto& each) { return each.interface_id == interface_id; });
    if (area == described.end()) command.at("interface").fail("an interface's id");
    const auto row = std::find_if(area->notifications.begin(), area->notifications.end(),
                                  [&](const auto& each) { return each.id == id; });
    if (row == area->notifications.end()) command.at("id").fail("a notification's id");
    const auto owner = std::find_if(areas_.begin(), areas_.end(),
                                    [&](const auto& each) { return each->interface_id() == interface_id; });

    json answers = json::array();
    for (const auto& reply : (*owner)->registered()->notify(id, encode(row->sent, command["fields"], records_))) {
        json answer = {{"observer", reply.connection_name}, {"outcome", host::describe(reply.answer.outcome)}};
        if (reply.answer.outcome == host::delivery::answered) {
            answer["reply"] = decode(row->reply, reply.answer.record, records_);
        }
        answers.push_back(std::move(answer));
    }
    return {{"answers", std::move(answers)}};
}

json simulation::list_observers()
{
    json all = json::array();
    for (const auto& each : areas_) {
        if (each->registered() == nullptr) continue;
        for (const auto& who : each->registered()->list()) {
            all.push_back({{"interface", each->interface_id()},
                           {"connection", who.connection_name},
                           {"process", who.process},
                           {"observer", who.observer}});
        }
    }
    return {{"observers", std::move(all)}};
}

}  // namespace norvane::simulator
