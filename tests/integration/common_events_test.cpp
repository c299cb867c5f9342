// The common observer against the stand-in service: events arrive, none lost and none twice, whatever the
// observers do meanwhile; and the tool that sends them.
#include "tarn_common_facade.h"
#include "tarn_common_observer.h"

#include "integration/processes.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <csignal>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace testing_processes;
using norvane::tarn_common_facade;
using norvane::tarn_common_observer;

tarn_common_facade& facade() { return *tarn_common_facade::tarn_common_get_instance(); }

/// Has the service send an event to all observers, one with this number.
unsigned int cause_event(unsigned int number)
{
    return facade().tarn_request_energy_saving_mode(static_cast<TARN_STS_SLEEP>(number));
}

/// Keeps the numbers of the events that it is told of, and does what a test has it do with each.
class listener : public tarn_common_observer {
public:
    listener() = default;
    /// Under the name of another observer.
    explicit listener(listener& other) : tarn_common_observer(1234, other.connection_name_) {}

    std::function<void(unsigned int)> reaction = [](unsigned int) {};

    [[nodiscard]] std::vector<unsigned int> events() const
    {
        const std::lock_guard lock(mutex_);
        return events_;
    }
    [[nodiscard]] std::string connection() const { return connection_name_; }

private:
    unsigned int notify_sleep(TARN_EVENT_SLEEP_STATE state) override
    {
        {
            const std::lock_guard lock(mutex_);
            events_.push_back(static_cast<unsigned int>(state));
        }
        reaction(static_cast<unsigned int>(state));
        return 0;
    }

    mutable std::mutex mutex_;
    std::vector<unsigned int> events_;
};

class registered_listener : public listener {
public:
    registered_listener() { EXPECT_EQ(facade().tarn_common_add_observer(this), 0U); }
    ~registered_listener() override { EXPECT_EQ(facade().tarn_common_remove_observer(this), 0U); }
};

using numbers = std::vector<unsigned int>;

class common_events : public process_test {};

TEST_F(common_events, requests_are_announced_to_all_observers)
{
    class state_listener : public tarn_common_observer {
    public:
        std::atomic<unsigned int> acceptance = 0;
        std::atomic<unsigned int> network = 0;
        std::atomic<unsigned int> scenario = 0;
        std::atomic<unsigned int> argument = 0;
        std::atomic<unsigned int> resident = 0;

    private:
        unsigned int service_state_changed(TARN_ACCEPTANCE_TYPE type) override { return acceptance = type, 0; }
        unsigned int network_state_changed(TARN_NETWORK_TYPE type) override { return network = type, 0; }
        unsigned int request_activate(TARN_KIND_OF_SCENARIO occasion, unsigned int what) override
        {
            scenario = occasion;
            argument = what;
            return 0;
        }
        unsigned int notify_resident_app_state_changed(TARN_REQ_APP_STATE state) override
        {
            return resident = state, 0;
        }
    };
    const process service = start_service();
    state_listener one;
    state_listener other;
    for (state_listener* each : {&one, &other}) facade().tarn_common_add_observer(each);
    EXPECT_EQ(facade().tarn_common_service_state_changed(static_cast<TARN_ACCEPTANCE_TYPE>(11)), 0U);
    EXPECT_EQ(facade().tarn_common_network_state_changed(static_cast<TARN_NETWORK_TYPE>(12)), 0U);
    EXPECT_EQ(facade().tarn_common_request_activate(static_cast<TARN_KIND_OF_SCENARIO>(13),
                                                    static_cast<TARN_KIND_OF_APL>(14)),
              0U);
    EXPECT_EQ(facade().tarn_request_all_resident_apps_to_change_state(static_cast<TARN_REQ_APP_STATE>(15)), 0U);
    for (state_listener* each : {&one, &other}) {
        EXPECT_TRUE(eventually([&] { return each->resident == 15; }));
        EXPECT_EQ(each->acceptance, 11U);
        EXPECT_EQ(each->network, 12U);
        EXPECT_EQ(each->scenario, 13U);
        EXPECT_EQ(each->argument, 14U);
        facade().tarn_common_remove_observer(each);
    }
}

TEST_F(common_events, thousands_arrive_none_lost_and_none_twice)
{
    constexpr unsigned int threads = 4;
    constexpr unsigned int events_of_a_thread = 500;
    const process service = start_service();
    const registered_listener one;
    const registered_listener other;
    std::vector<std::thread> callers;
    for (unsigned int thread = 0; thread < threads; ++thread) {
        callers.emplace_back([thread] {
            for (unsigned int i = 0; i < events_of_a_thread; ++i) {
                EXPECT_EQ(cause_event(thread * events_of_a_thread + i), 0U);
            }
        });
    }
    for (std::thread& each : callers) each.join();
    for (const listener* each : {static_cast<const listener*>(&one), static_cast<const listener*>(&other)}) {
        EXPECT_TRUE(eventually([&] { return each->events().size() >= threads * events_of_a_thread; }));
        numbers arrived = each->events();
        for (unsigned int thread = 0; thread < threads; ++thread) {
            numbers own;
            std::copy_if(arrived.begin(), arrived.end(), std::back_inserter(own),
                         [&](unsigned int number) { return number / events_of_a_thread == thread; });
            EXPECT_TRUE(std::is_sorted(own.begin(), own.end())) << "in the order in which they were caused";
        }
        std::sort(arrived.begin(), arrived.end());
        numbers expected(threads * events_of_a_thread);
        for (unsigned int i = 0; i < expected.size(); ++i) expected[i] = i;
        EXPECT_EQ(arrived, expected);
    }
    EXPECT_EQ(one.events(), other.events()) << "both are told in the same order";
}

TEST_F(common_events, an_observer_that_takes_long_holds_up_no_calls)
{
    const process service = start_service();
    std::atomic<bool> entered = false;
    std::atomic<bool> released = false;
    registered_listener slow;
    slow.reaction = [&](unsigned int) {
        entered = true;
        EXPECT_TRUE(eventually([&] { return released.load(); }));
    };
    EXPECT_EQ(cause_event(1), 0U);
    ASSERT_TRUE(eventually([&] { return entered.load(); }));
    EXPECT_EQ(facade().tarn_get_wakeup_date(), 1792569600U);
    EXPECT_EQ(cause_event(2), 0U);
    process application("common_application", {"page", "1"});
    EXPECT_EQ(application.wait(), 0);
    EXPECT_EQ(slow.events(), numbers{1}) << "all that happened while it was told of the first";
    released = true;
    EXPECT_TRUE(eventually([&] { return slow.events() == numbers{1, 2}; }));
}

TEST_F(common_events, observers_may_be_destroyed_while_events_arrive)
{
    const process service = start_service();
    std::atomic<bool> ending = false;
    std::thread causing([&] {
        for (unsigned int number = 0; !ending; ++number) EXPECT_EQ(cause_event(number), 0U);
    });
    for (int round = 0; round < 30; ++round) {
        std::atomic<bool> removed = false;
        auto watch = std::make_unique<listener>();
        watch->reaction = [&](unsigned int) { EXPECT_FALSE(removed) << "told after its removal was answered"; };
        EXPECT_EQ(facade().tarn_common_add_observer(watch.get()), 0U);
        EXPECT_TRUE(eventually([&] { return !watch->events().empty(); }));
        EXPECT_EQ(facade().tarn_common_remove_observer(watch.get()), 0U);
        removed = true;
        watch.reset();
    }
    ending = true;
    causing.join();
}

TEST_F(common_events, an_override_may_call_a_facade)
{
    const process service = start_service();
    registered_listener watch;
    std::atomic<unsigned int> date = 0;
    watch.reaction = [&](unsigned int number) {
        date = facade().tarn_get_wakeup_date();
        if (number == 1) {
            EXPECT_EQ(cause_event(2), 0U) << "even one that leads to the next event";
        }
    };
    EXPECT_EQ(cause_event(1), 0U);
    EXPECT_TRUE(eventually([&] { return watch.events() == numbers{1, 2}; }));
    EXPECT_TRUE(eventually([&] { return date == 1792569600U; }));
}

TEST_F(common_events, an_override_may_remove_its_observer)
{
    const process service = start_service();
    listener leaving;
    const registered_listener staying;
    leaving.reaction = [&](unsigned int) { EXPECT_EQ(facade().tarn_common_remove_observer(&leaving), 0U); };
    EXPECT_EQ(facade().tarn_common_add_observer(&leaving), 0U);
    EXPECT_EQ(cause_event(1), 0U);
    EXPECT_EQ(cause_event(2), 0U);
    EXPECT_EQ(cause_event(3), 0U);
    EXPECT_TRUE(eventually([&] { return staying.events() == numbers{1, 2, 3}; }));
    EXPECT_EQ(leaving.events(), numbers{1}) << "the second event was over before the third began";
}

TEST_F(common_events, an_observer_that_is_added_twice_is_told_once)
{
    const process service = start_service();
    registered_listener watch;
    EXPECT_EQ(facade().tarn_common_add_observer(&watch), 0U);
    EXPECT_EQ(cause_event(1), 0U);
    EXPECT_EQ(cause_event(2), 0U);
    EXPECT_TRUE(eventually([&] { return watch.events().size() >= 2; }));
    EXPECT_EQ(watch.events(), (numbers{1, 2}));
}

TEST_F(common_events, observers_may_share_a_connection)
{
    const process service = start_service();
    registered_listener named_by_platform;
    listener named_by_application(named_by_platform);
    EXPECT_EQ(named_by_application.connection(), named_by_platform.connection());
    EXPECT_EQ(named_by_application.get_obj_id(), 1234);
    EXPECT_EQ(facade().tarn_common_add_observer(&named_by_application), 0U);
    EXPECT_EQ(cause_event(1), 0U);
    EXPECT_TRUE(eventually([&] { return named_by_application.events() == numbers{1}; }));
    EXPECT_TRUE(eventually([&] { return named_by_platform.events() == numbers{1}; }));
    EXPECT_EQ(facade().tarn_common_remove_observer(&named_by_application), 0U);
    EXPECT_EQ(cause_event(2), 0U);
    EXPECT_EQ(cause_event(3), 0U);
    EXPECT_TRUE(eventually([&] { return named_by_platform.events() == numbers{1, 2, 3}; }));
    EXPECT_EQ(named_by_application.events(), numbers{1});
}

class common_tool : public process_test {
protected:
    static std::string tarnctl(const std::vector<std::string>& arguments, int expected = 0)
    {
        std::string output;
        EXPECT_EQ(run("tarnctl", arguments, output), expected) << output;
        return output;
    }
};

TEST_F(common_tool, an_observer_whose_process_is_gone_is_forgotten)
{
    const process service = start_service();
    const auto log = (directory() / "observer.log").string();
    process application("common_application", {"observe"}, log);
    ASSERT_TRUE(eventually([&] { return read_file(log).find("observing") != std::string::npos; }));
    const std::string listed = tarnctl({"observers"});
    EXPECT_NE(listed.find("interface 1 "), std::string::npos) << listed;
    EXPECT_NE(listed.find("process " + std::to_string(application.id()) + " "), std::string::npos) << listed;
    EXPECT_NE(tarnctl({"notify", "cover-status", "1"}).find(": answered, result 0\n"), std::string::npos);

    application.stop(SIGKILL);
    const std::string told = tarnctl({"notify", "cover-status", "1"});
    EXPECT_NE(told.find(": no such connection\n"), std::string::npos) << told;
    EXPECT_EQ(tarnctl({"observers"}), "no observer is registered\n");
    EXPECT_EQ(tarnctl({"notify", "cover-status", "1"}), "nobody observes this interface\n");
}

/// Says in words what it was told, and answers with a result of its own for each notification.
class speaking : public tarn_common_observer {
public:
    std::string take()
    {
        const std::lock_guard lock(mutex_);
        return std::exchange(said_, {});
    }
    [[nodiscard]] std::string connection() const { return connection_name_; }

private:
    template <typename... Numbers>
    unsigned int say(unsigned int result, const std::string& what, Numbers... values)
    {
        const std::lock_guard lock(mutex_);
        said_ += what;
        ((said_ += " " + std::to_string(static_cast<unsigned long>(values))), ...);
        return result;
    }

    unsigned int service_state_changed(TARN_ACCEPTANCE_TYPE a) override { return say(1, "service", a); }
    unsigned int network_state_changed(TARN_NETWORK_TYPE a) override { return say(2, "network", a); }
    unsigned int request_activate(TARN_KIND_OF_SCENARIO a, unsigned int b) override { return say(3, "activate", a, b); }
    unsigned int notify_logout(unsigned long a) override { return say(4, "logout", a); }
    unsigned int notify_pbp_connection_error(TARN_EVENT_CONNECTION_ERROR a) override { return say(5, "error", a); }
    unsigned int notify_sleep(TARN_EVENT_SLEEP_STATE a) override { return say(6, "sleep", a); }
    unsigned int notify_usb_memory_status(unsigned int a) override { return say(7, "usb", a); }
    unsigned int notify_toner_status(unsigned char a, unsigned char b) override { return say(8, "toner", a, b); }
    unsigned int notify_waste_toner_bottle_status(unsigned char a) override { return say(9, "bottle", a); }
    unsigned int notify_paper_rest_status(unsigned short a, unsigned char b) override { return say(10, "paper", a, b); }
    unsigned int notify_cover_status(unsigned int a) override { return say(11, "cover", a); }
    unsigned int notify_dp_cover_status(unsigned char a) override { return say(12, "feeder cover", a); }
    unsigned int notify_jam_status(unsigned int a) override { return say(13, "jam", a); }
    unsigned int notify_dp_jam_status(unsigned char a) override { return say(14, "feeder jam", a); }
    unsigned int notify_coin_vender_status(unsigned int a) override { return say(15, "coin", a); }
    unsigned int notify_key_card_status(unsigned char a) override { return say(16, "card", a); }
    unsigned int notify_key_counter_status(unsigned int a) override { return say(17, "counter", a); }
    unsigned int notify_resident_app_state_changed(TARN_REQ_APP_STATE a) override { return say(18, "resident", a); }
    unsigned int notify_javavm_get_free_mem(unsigned long& free_memory) override
    {
        free_memory = 123456789;
        return say(19, "memory");
    }

    std::mutex mutex_;
    std::string said_;
};

TEST_F(common_tool, every_notification_is_sent_and_its_answer_printed)
{
    struct sample {
        std::vector<std::string> event;
        std::string said;
        std::string answer;
    };
    const std::vector<sample> samples = {
        {{"service-state-changed", "4000000000"}, "service 4000000000", "result 1"},
        {{"network-state-changed", "21"}, "network 21", "result 2"},
        {{"request-activate", "22", "0x23"}, "activate 22 35", "result 3"},
        {{"logout", "24"}, "logout 24", "result 4"},
        {{"pbp-connection-error", "25"}, "error 25", "result 5"},
        {{"sleep", "26"}, "sleep 26", "result 6"},
        {{"usb-memory-status", "27"}, "usb 27", "result 7"},
        {{"toner-status", "255", "28"}, "toner 255 28", "result 8"},
        {{"waste-toner-bottle-status", "29"}, "bottle 29", "result 9"},
        {{"paper-rest-status", "65535", "30"}, "paper 65535 30", "result 10"},
        {{"cover-status", "31"}, "cover 31", "result 11"},
        {{"dp-cover-status", "32"}, "feeder cover 32", "result 12"},
        {{"jam-status", "33333"}, "jam 33333", "result 13"},
        {{"dp-jam-status", "34"}, "jam 34", "result 13"},
        {{"coin-vender-status", "35"}, "coin 35", "result 15"},
        {{"key-card-status", "36"}, "card 36", "result 16"},
        {{"key-counter-status", "37"}, "counter 37", "result 17"},
        {{"resident-app-state-changed", "38"}, "resident 38", "result 18"},
        {{"javavm-get-free-mem"}, "memory", "result 19, free_memory 123456789"},
    };
    const process service = start_service();
    speaking observer;
    EXPECT_EQ(facade().tarn_common_add_observer(&observer), 0U);
    for (const sample& each : samples) {
        std::vector<std::string> arguments = {"notify"};
        arguments.insert(arguments.end(), each.event.begin(), each.event.end());
        EXPECT_EQ(tarnctl(arguments), observer.connection() + ": answered, " + each.answer + "\n");
        EXPECT_EQ(observer.take(), each.said);
    }
    EXPECT_EQ(facade().tarn_common_remove_observer(&observer), 0U);
    EXPECT_EQ(tarnctl({"observers"}), "no observer is registered\n");
}

TEST_F(common_tool, wrong_arguments_are_refused)
{
    const std::string nobody = tarnctl({"observers"}, 1);
    EXPECT_NE(nobody.find("no tarnsim serves in " + directory().string()), std::string::npos) << nobody;

    const process service = start_service();
    speaking observer;
    EXPECT_EQ(facade().tarn_common_add_observer(&observer), 0U);
    const std::vector<std::vector<std::string>> wrong = {
        {"notify"},
        {"notify", "no-such-event"},
        {"notify", "toner-status"},
        {"notify", "toner-status", "1"},
        {"notify", "toner-status", "1", "2", "3"},
        {"notify", "toner-status", "256", "1"},
        {"notify", "paper-rest-status", "65536", "1"},
        {"notify", "cover-status", "open"},
        {"notify", "cover-status", "4294967296"},
        {"completion", "fish"},
        {},
    };
    for (const auto& arguments : wrong) {
        std::string output;
        EXPECT_NE(run("tarnctl", arguments, output), 0) << output;
        EXPECT_FALSE(output.empty());
    }
    EXPECT_EQ(observer.take(), "") << "nothing was sent";
    EXPECT_EQ(facade().tarn_common_remove_observer(&observer), 0U);
}

TEST_F(common_tool, the_completion_is_a_script_that_knows_the_events)
{
    const auto script = write_file("completion.bash", tarnctl({"completion", "bash"}));
    const auto bash = [&](const std::string& command) {
        const auto output = directory() / "bash.out";
        EXPECT_EQ(std::system(("bash -c '" + command + "' > " + output.string() + " 2>&1").c_str()), 0);
        return read_file(output);
    };
    EXPECT_EQ(bash("bash -n " + script.string()), "");
    const auto completed = [&](const std::string& words, int position) {
        return bash("source " + script.string() + "; COMP_WORDS=(" + words +
                    "); COMP_CWORD=" + std::to_string(position) + "; _tarnctl; echo \"${COMPREPLY[*]}\"");
    };
    EXPECT_EQ(completed("tarnctl no", 1), "notify\n");
    EXPECT_EQ(completed("tarnctl notify to", 2), "toner-status\n");
    EXPECT_EQ(completed("tarnctl notify javavm", 2), "javavm-get-free-mem\n");
    EXPECT_EQ(completed("tarnctl notify toner-status \"\"", 3), "<toner> <level>  \n");
    EXPECT_EQ(completed("tarnctl completion z", 2), "zsh\n");
}

TEST_F(common_tool, help_names_the_arguments)
{
    const std::string help = tarnctl({"notify", "toner-status", "--help"});
    EXPECT_NE(help.find("toner"), std::string::npos) << help;
    EXPECT_NE(help.find("level"), std::string::npos) << help;
    EXPECT_NE(help.find("8-bit number"), std::string::npos) << help;
}

TEST_F(common_tool, the_example_of_events_prints_what_it_is_sent)
{
    const process service = start_service();
    const auto log = directory() / "example.log";
    process example("common_events_example", {"2"}, log);
    ASSERT_TRUE(eventually([&] { return read_file(log).find("waiting for 2 events") != std::string::npos; }));
    tarnctl({"notify", "toner-status", "1", "20"});
    tarnctl({"notify", "cover-status", "3"});
    EXPECT_EQ(example.wait(), 0);
    EXPECT_EQ(read_file(log), "waiting for 2 events\ntoner 1 is at 20\nthe cover is in state 3\n");
}

}  // namespace
