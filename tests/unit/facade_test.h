// Fixtures for the tests of one facade on the recording platform, and the check that every plain
// operation is put through.
#pragma once

#include "frame/describe.h"
#include "unit/recording_platform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace testing_platform {

/// A test that starts on a platform where nothing has happened yet.
class platform_test : public ::testing::Test {
protected:
    platform_test() { platform().reset(); }
};

/// A test of one facade, of which it gets a new instance.
template <typename Facade>
class facade_test : public platform_test {
protected:
    explicit facade_test(Facade* (*get_instance)()) : get_instance_(get_instance) { forget(); }
    ~facade_test() override { forget(); }

    /// The facade, made on first use with a service that is there.
    Facade& facade() { return *get_instance_(); }

private:
    static void forget()
    {
        delete Facade::s_the_instance_;
        delete Facade::s_the_client_;
        Facade::s_the_instance_ = nullptr;
        Facade::s_the_client_ = nullptr;
        if constexpr (requires { Facade::mtx_; }) {
            delete Facade::mtx_;
            Facade::mtx_ = nullptr;
        } else {
            Facade::semid_ = 0;
        }
    }

    Facade* (*get_instance_)();
};

/// What the protocol tables say of an operation.
struct table_row {
    long interface_id;
    long func_id;
    /// Every byte of the request behind its header; the header is zero.
    record request;
    /// The reply's length, with the values that the service returns in it.
    record reply;
    std::size_t result_offset;
    /// How many of the facade's mutexes are held while the request is under way.
    int locks_held = 0;
};

/// The request that was sent last, against its row.
inline void expect_request(const request& sent, const table_row& row)
{
    EXPECT_EQ(sent.interface_id, row.interface_id);
    EXPECT_EQ(sent.func_id, row.func_id);
    EXPECT_EQ(sent.bytes.size(), row.request.bytes().size());
    EXPECT_EQ(sent.bytes, row.request.bytes());
    EXPECT_EQ(sent.reply_room, row.reply.bytes().size());
    EXPECT_EQ(sent.service, "TARN_SRV");
    EXPECT_EQ(sent.locks_held, row.locks_held);
}

/// Calls an operation three times: the service succeeds, the service refuses but fills in its values,
/// nobody answers. Each time one request leaves, exactly as the row says. `call` sets its outputs to
/// something else before it makes the call; `expect_values` checks that the outputs hold the reply's
/// values and `expect_unanswered` that they hold what an unanswered call leaves.
inline void exercise(const table_row& row, const std::function<unsigned int()>& call,
                     const std::function<void()>& expect_values = {},
                     const std::function<void()>& expect_unanswered = {})
{
    auto& recorder = platform();
    const auto run = [&](const char* what, unsigned int result, const std::function<void()>& expect_outputs) {
        SCOPED_TRACE(what);
        recorder.requests.clear();
        const std::size_t lines = recorder.traces.size() + recorder.reports.size();
        EXPECT_EQ(call(), result);
        ASSERT_EQ(recorder.requests.size(), 1U);
        expect_request(recorder.requests.front(), row);
        EXPECT_EQ(recorder.traces.size() + recorder.reports.size(), lines) << "nothing is to be said";
        if (expect_outputs) expect_outputs();
    };
    // The reply's header is the platform's: whatever stands there is no value.
    record reply = row.reply;
    reply.pattern(0, 12, 9);

    recorder.reply_with(record(reply).u32(row.result_offset, 0));
    run("success", 0, expect_values);
    recorder.reply_with(record(reply).u32(row.result_offset, 0x8badf00d));
    run("refusal", 0x8badf00d, expect_values);
    recorder.reply_never();
    run("no answer", 0, expect_unanswered);
}

/// Stands for a report's line where no particular one is asked for.
inline constexpr int line_of_the_code = -1;

/// A call whose argument is refused: it returns `result`, makes exactly `reports` and sends nothing.
inline void exercise_refused_argument(const std::function<unsigned int()>& call, unsigned int result,
                                      const std::vector<report>& reports = {})
{
    auto& recorder = platform();
    recorder.requests.clear();
    recorder.reports.clear();
    EXPECT_EQ(call(), result);
    EXPECT_TRUE(recorder.requests.empty());
    for (std::size_t i = 0; i < std::min(reports.size(), recorder.reports.size()); ++i) {
        if (reports[i].line != line_of_the_code) continue;
        EXPECT_GT(recorder.reports[i].line, 0);
        recorder.reports[i].line = line_of_the_code;
    }
    EXPECT_EQ(recorder.reports, reports);
    EXPECT_TRUE(recorder.traces.empty());
}

/// An object's address as it travels: its low 32 bits.
inline std::uint32_t address_word(const void* object)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(object));
}

/// What is an area's own in the registration of observers.
struct registration_row {
    long interface_id;
    std::string source;
    std::string add_name;
    int add_line;
    std::string remove_name;
    int remove_line;
    /// What a null observer is.
    unsigned int failure;
};

/// An area's funcs 0 and 1: the observer's address, not its id, and the first 15 bytes of its name; no
/// name when it is removed; and no observer at all.
template <typename Facade, typename Observer>
void exercise_registration(Facade& facade, unsigned int (Facade::*add)(Observer*),
                           unsigned int (Facade::*remove)(Observer*), const registration_row& row)
{
    for (const std::size_t length : {0U, 1U, 14U, 15U, 16U, 40U}) {
        SCOPED_TRACE(length);
        std::string name = record(length).pattern(0, length).bytes();
        Observer observer(-7, name.data());
        const std::uint32_t address = address_word(&observer);
        exercise({row.interface_id, 0, record(92).u32(72, address).text(76, name.substr(0, 15)), record(16), 12},
                 [&] { return (facade.*add)(&observer); });
        exercise({row.interface_id, 1, record(92).u32(72, address), record(16), 12},
                 [&] { return (facade.*remove)(&observer); });
    }
    exercise_refused_argument([&] { return (facade.*add)(nullptr); }, row.failure,
                              {{63124, 0, 0, row.source, row.add_name, row.add_line}});
    exercise_refused_argument([&] { return (facade.*remove)(nullptr); }, row.failure,
                              {{63124, 0, 0, row.source, row.remove_name, row.remove_line}});
}

/// Numbers and names of an area's rows, for which the tests have no other use.
template <typename Rows>
std::vector<std::pair<long, std::string>> numbers_and_names()
{
    std::vector<std::pair<long, std::string>> all;
    for (const auto& row : norvane::frame::describe_rows<Rows>()) all.emplace_back(row.id, row.name);
    return all;
}

/// What is a facade's own in the wait for the service.
struct creation_row {
    long interface_id;
    unsigned int failure;
    int failure_line;
    std::string source;
    bool client_destroyed;
};

/// The service check refused 0, 1, 199 and 200 times: how often it asks, sleeps and reports, what
/// `initialize_facade` returns and what becomes of the client.
template <typename Facade>
void exercise_initialization(Facade& facade, const creation_row& row)
{
    auto& recorder = platform();
    for (const int refused : {0, 1, 199, 200}) {
        SCOPED_TRACE(refused);
        const bool reached = refused < 200;
        delete Facade::s_the_client_;
        recorder.reset();
        recorder.refused_checks = refused;

        EXPECT_EQ(facade.initialize_facade(&facade), reached ? 0 : row.failure);

        EXPECT_EQ(recorder.clients_made, 1);
        EXPECT_EQ(recorder.checks, std::vector<std::string>(static_cast<std::size_t>(reached ? refused + 1 : 200),
                                                            "TARN_SRV/" + std::to_string(row.interface_id)));
        EXPECT_EQ(recorder.sleeps, std::vector<unsigned int>(static_cast<std::size_t>(refused), 300U));
        EXPECT_TRUE(recorder.traces.empty());
        if (reached) {
            EXPECT_TRUE(recorder.reports.empty());
            EXPECT_EQ(recorder.clients_destroyed, 0);
            EXPECT_NE(Facade::s_the_client_, nullptr);
        } else {
            EXPECT_EQ(recorder.reports,
                      (std::vector<report>{{63126, 0, 0, row.source, "initialize_facade", row.failure_line}}));
            EXPECT_EQ(recorder.clients_destroyed, row.client_destroyed ? 1 : 0);
            EXPECT_EQ(Facade::s_the_client_ == nullptr, row.client_destroyed);
        }
    }
}

/// A service that never comes up: the facade is published all the same, is not checked for again, and
/// a call through it reaches the service only if the client was kept.
template <typename Facade>
void exercise_unreached(Facade* (*get_instance)(), const creation_row& row,
                        const std::function<unsigned int(Facade&)>& call)
{
    auto& recorder = platform();
    recorder.refused_checks = 200;
    Facade* const facade = get_instance();
    ASSERT_NE(facade, nullptr);
    EXPECT_EQ(recorder.checks.size(), 200U);
    EXPECT_EQ(recorder.sleeps.size(), 200U);
    EXPECT_EQ(get_instance(), facade);
    EXPECT_EQ(recorder.checks.size(), 200U);

    recorder.reply_never();
    EXPECT_EQ(call(*facade), 0U);
    EXPECT_EQ(recorder.requests.size(), row.client_destroyed ? 0U : 1U);
}

/// Many threads ask for the facade at once: all get the same one, made and initialised once.
template <typename Facade>
void exercise_creation_race(Facade* (*get_instance)())
{
    constexpr std::size_t count = 16;
    std::vector<Facade*> seen(count);
    std::atomic<bool> go = false;
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < count; ++i) {
        threads.emplace_back([&seen, &go, get_instance, i] {
            while (!go) std::this_thread::yield();
            seen[i] = get_instance();
        });
    }
    go = true;
    for (auto& thread : threads) thread.join();

    EXPECT_EQ(seen, std::vector<Facade*>(count, seen.front()));
    EXPECT_NE(seen.front(), nullptr);
    EXPECT_EQ(platform().clients_made, 1);
    EXPECT_EQ(platform().checks.size(), 1U);
}

}  // namespace testing_platform
