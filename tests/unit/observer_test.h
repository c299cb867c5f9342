// What the tests of every observer class are made of: an observer that writes down what it is told,
// and the checks that all classes go through, each with its own row of the failure table.
#pragma once

#include "unit/facade_test.h"

#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <sstream>

namespace testing_platform {

/// What an observer class reports of one failure. Code 0: nothing.
struct stated_failure {
    unsigned int code = 0;
    int line = 0;
};

/// A class's row of the failure table.
struct failure_row {
    std::string source;
    std::string class_name;
    stated_failure constructed_without_server;
    /// Code 0: a null name is taken for an empty one. Otherwise it leaves the name's bytes as they were.
    stated_failure constructed_without_name;
    stated_failure empty_buffer;
    stated_failure no_server;
    stated_failure unknown_id;
    bool detail_names_unknown_id;
};

/// An observer whose overrides write down their calls, and answer with `outcome`.
template <typename Observer>
class listening : public Observer {
public:
    using Observer::Observer;

    std::vector<std::string> calls;
    unsigned int outcome = 0x8badf00d;

protected:
    template <typename... Values>
    unsigned int note(const char* operation, const Values&... values)
    {
        std::ostringstream call;
        [[maybe_unused]] const char* between = "(";
        call << operation;
        ((call << between << +values, between = ", "), ...);
        call << (sizeof...(values) == 0 ? "()" : ")");
        calls.push_back(call.str());
        return outcome;
    }
};

/// What the dispatch table says of a notification.
struct notification_row {
    long func_id;
    /// The record as the service sends it.
    record event;
    /// The call that it leads to, as `listening` writes it down.
    std::string call;
    /// The answer, but for the result at offset 12.
    record answer = record(16);
};

/// Hands a record over as the platform does: in a zero-padded buffer, whose header nobody is to read.
template <typename Observer>
void deliver(Observer& observer, long func_id, const record& event, const gen_ipc_msghdr& header)
{
    std::vector<char> buffer(4096);
    event.bytes().copy(buffer.data(), buffer.size());
    const std::string unread = record(72).pattern(0, 72, 5).bytes();
    unread.copy(buffer.data(), unread.size());
    observer.dispatch(func_id, buffer.data(), static_cast<unsigned int>(event.bytes().size()), header);
}

/// One answer has left, through the server that was looked up under the observer's name, and nothing
/// was reported.
inline void expect_answer(const gen_ipc_msghdr& header, const std::string& connection_name, const record& answer)
{
    auto& recorder = platform();
    EXPECT_EQ(recorder.server_lookups, std::vector<std::string>{connection_name});
    ASSERT_EQ(recorder.answers.size(), 1U);
    const observer_answer& sent = recorder.answers.front();
    EXPECT_EQ(sent.server, the_observer_server());
    EXPECT_EQ(sent.bytes.size(), answer.bytes().size());
    EXPECT_EQ(sent.bytes, answer.bytes());
    EXPECT_EQ(bytes_of(sent.header), bytes_of(header));
    EXPECT_NE(sent.header_address, &header) << "the header is to be dispatch's own copy";
    EXPECT_TRUE(recorder.reports.empty());
    EXPECT_TRUE(recorder.traces.empty());
    EXPECT_TRUE(recorder.events.empty()) << "no lock is taken and nothing is sent";
}

/// A notification reaches its override with the record's values, and what that returns is the answer.
/// An observer that overrides nothing answers with 0.
template <typename Listener>
void exercise_notification(const notification_row& row)
{
    SCOPED_TRACE(row.func_id);
    auto& recorder = platform();
    const auto header = patterned<gen_ipc_msghdr>(3);
    char name[] = "TARN_OBS0000042";

    for (const unsigned int outcome : {0U, 1U, 0x8badf00dU}) {
        Listener listener(42, name);
        listener.outcome = outcome;
        recorder.reset();
        deliver(listener, row.func_id, row.event, header);
        EXPECT_EQ(listener.calls, std::vector<std::string>{row.call});
        expect_answer(header, name, record(row.answer).u32(12, outcome));
    }
}

/// The same for a notification that nobody overrides: the answer is all zeros.
template <typename Observer>
void exercise_default(const notification_row& row)
{
    SCOPED_TRACE(row.func_id);
    const auto header = patterned<gen_ipc_msghdr>(4);
    char name[] = "TARN_OBS0000043";
    Observer observer(43, name);
    platform().reset();
    deliver(observer, row.func_id, row.event, header);
    expect_answer(header, name, record(row.answer.bytes().size()));
}

inline std::vector<report> stated_report(const failure_row& row, const stated_failure& failure, unsigned int detail,
                                         const std::string& operation)
{
    if (failure.code == 0) return {};
    return {{failure.code, detail, 0, row.source, operation, failure.line}};
}

/// The default constructor: its own address for an id, a name from the platform, and a report when no
/// server listens under it.
template <typename Observer>
void exercise_default_constructor(const failure_row& row)
{
    auto& recorder = platform();
    for (const std::string& name : {std::string("TARN_OBS0000007"), std::string("SIXTEEN_LONG_OBS")}) {
        for (const bool server_exists : {true, false}) {
            SCOPED_TRACE(name + (server_exists ? " served" : " without a server"));
            recorder.reset();
            recorder.observer_server_exists = server_exists;
            recorder.next_connection_name = name;
            const Observer observer;
            EXPECT_EQ(observer.obj_id_, reinterpret_cast<long>(&observer));
            EXPECT_EQ(observer.get_obj_id(), reinterpret_cast<long>(&observer));
            EXPECT_EQ(bytes_of(observer.connection_name_), record(16).text(0, name).bytes());
            EXPECT_EQ(recorder.events, std::vector<std::string>{"create_obs_name TARN_OBS"});
            EXPECT_EQ(recorder.server_lookups, std::vector<std::string>{name});
            EXPECT_EQ(recorder.reports, server_exists
                                            ? std::vector<report>{}
                                            : stated_report(row, row.constructed_without_server, 0, row.class_name));
            EXPECT_TRUE(recorder.traces.empty());
        }
    }
}

/// The constructor with a name: the first 16 bytes of it and nothing else. The memory that the object
/// is made in is not zero beforehand, so what is not cleared shows.
template <typename Observer>
void exercise_named_constructor(const failure_row& row)
{
    auto& recorder = platform();
    const auto construct = [&recorder](long obj_id, char* name, const std::string& expected_name) {
        alignas(Observer) std::array<char, sizeof(Observer)> storage;
        storage.fill('\xee');
        recorder.reset();
        auto* const observer = new (storage.data()) Observer(obj_id, name);
        EXPECT_EQ(observer->obj_id_, obj_id);
        EXPECT_EQ(bytes_of(observer->connection_name_), expected_name);
        EXPECT_TRUE(recorder.events.empty());
        EXPECT_TRUE(recorder.server_lookups.empty());
        std::destroy_at(observer);
    };
    for (const std::size_t length : {0U, 1U, 15U, 16U, 17U, 40U}) {
        SCOPED_TRACE(length);
        const std::string text = record(length).pattern(0, length).bytes();
        // The terminator is the buffer's last byte; a name that fills its 16 bytes needs none.
        std::vector<char> name(text.begin(), text.end());
        if (length != 16) name.push_back('\0');
        construct(-7, name.data(), record(16).text(0, text.substr(0, 16)).bytes());
        EXPECT_TRUE(recorder.reports.empty());
    }
    construct(7, nullptr, std::string(16, row.constructed_without_name.code == 0 ? '\0' : '\xee'));
    EXPECT_EQ(recorder.reports, stated_report(row, row.constructed_without_name, 0, row.class_name));
}

/// `equal` and `get_obj_id`, and the destructor, after which neither id nor name is left.
template <typename Observer>
void exercise_identity()
{
    alignas(Observer) std::array<char, sizeof(Observer)> storage;
    char name[] = "TARN_OBS0000044";
    auto* const observer = new (storage.data()) Observer(-2147483647, name);
    EXPECT_EQ(observer->get_obj_id(), -2147483647);
    EXPECT_TRUE(observer->equal(-2147483647));
    EXPECT_FALSE(observer->equal(2147483647));
    EXPECT_FALSE(observer->equal(0));
    EXPECT_FALSE(observer->equal(reinterpret_cast<long>(observer)));

    const auto offset = [&storage](const void* member) {
        return static_cast<std::size_t>(static_cast<const char*>(member) - storage.data());
    };
    const std::size_t id_at = offset(&observer->obj_id_);
    const std::size_t name_at = offset(&observer->connection_name_);
    EXPECT_EQ(id_at, sizeof(void*)) << "the members stand right behind the base";
    EXPECT_EQ(name_at, id_at + sizeof(long));
    EXPECT_EQ(sizeof(Observer), name_at + 16);
    std::destroy_at(observer);
    EXPECT_EQ(std::string(storage.data() + id_at, sizeof(long)), std::string(sizeof(long), '\0'));
    EXPECT_EQ(std::string(storage.data() + name_at, 16), std::string(16, '\0'));
}

/// The notifications that `dispatch` turns down: without a record, without a server, and every id
/// that is not `known`. None is answered or reaches the application.
template <typename Listener>
void exercise_refusals(const failure_row& row, const std::vector<long>& known)
{
    auto& recorder = platform();
    const gen_ipc_msghdr header{};
    char name[] = "TARN_OBS0000045";
    char buffer[4096] = {};
    Listener listener(45, name);
    const auto refused = [&](long func_id, char* record, unsigned int length, bool server_exists,
                             const std::vector<std::string>& lookups, const std::vector<report>& reports) {
        recorder.reset();
        recorder.observer_server_exists = server_exists;
        listener.dispatch(func_id, record, length, header);
        EXPECT_EQ(recorder.reports, reports);
        EXPECT_EQ(recorder.server_lookups, lookups);
        EXPECT_TRUE(recorder.answers.empty());
        EXPECT_TRUE(recorder.traces.empty());
        EXPECT_TRUE(listener.calls.empty());
    };

    std::vector<long> unknown{-2147483647 - 1, -1000, 1000, 2147483647};
    for (long func_id = -1; func_id <= 100; ++func_id) {
        if (std::find(known.begin(), known.end(), func_id) == known.end()) unknown.push_back(func_id);
    }
    for (const long func_id : unknown) {
        SCOPED_TRACE(func_id);
        const unsigned int detail = row.detail_names_unknown_id ? static_cast<unsigned int>(func_id) : 0U;
        refused(func_id, buffer, 80, true, {name}, stated_report(row, row.unknown_id, detail, "dispatch"));
    }
    for (const long func_id : {known.front(), known.back(), unknown.back()}) {
        SCOPED_TRACE(func_id);
        const auto empty = stated_report(row, row.empty_buffer, 0, "dispatch");
        for (const bool server_exists : {true, false}) {
            refused(func_id, nullptr, 80, server_exists, {}, empty);
            refused(func_id, buffer, 0, server_exists, {}, empty);
            refused(func_id, nullptr, 0, server_exists, {}, empty);
        }
        refused(func_id, buffer, 80, false, {name}, stated_report(row, row.no_server, 0, "dispatch"));
    }
}

}  // namespace testing_platform
