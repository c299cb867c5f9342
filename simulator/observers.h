// The observers of one interface: registered, replaced and removed by the application, told of what
// happens to the device.
#pragma once

#include "host/service.h"
#include "simulator/router.h"
#include "simulator/traffic.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <list>
#include <mutex>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace norvane::simulator {

/// An observer's answer to a notification.
struct observer_reply {
    std::string connection_name;
    std::uint32_t observer;
    host::notification_answer answer;
};

/// An event's record: zeros, as long as its row's fields, with the values in the fields that are
/// named by `set<"name">`.
template <typename Row>
class event_of {
public:
    event_of() : record_(length(typename Row::event::fields{}), '\0') {}

    template <fixed_text Name, typename Value>
    event_of& set(const Value& value)
    {
        using field = typename Row::event::template field<Name>;
        if constexpr (std::is_integral_v<Value> || std::is_enum_v<Value>) {
            field::put(std::span<char>(record_), value);
        } else {
            // A record in place or a text at the end may be longer than the row knows.
            std::span<const char> bytes(std::data(value), std::size(value));
            if (field::width != 0) bytes = bytes.first(std::min(bytes.size(), field::width));
            const std::size_t terminator = field::kind == field_kind::tail_text ? 1 : 0;
            record_.resize(std::max(record_.size(), field::offset + bytes.size() + terminator));
            const std::span<char> room = std::span<char>(record_).subspan(field::offset);
            std::copy_n(bytes.begin(), std::min(bytes.size(), room.size()), room.begin());
        }
        return *this;
    }

    [[nodiscard]] std::span<const char> record() const { return record_; }

private:
    template <typename... Fields>
    static std::size_t length(frame::field_list<Fields...>)
    {
        return std::max({frame::request_header, (Fields::offset + Fields::width)...});
    }

    std::vector<char> record_;
};

class observers {
public:
    observers(long interface_id, traffic& traffic);
    ~observers();
    observers(const observers&) = delete;
    observers& operator=(const observers&) = delete;

    /// Binds an interface's two operations. An observer that is added again replaces what was known of
    /// it. When a removal is answered the observer is no longer being notified, unless the request
    /// came from within its own notify operation.
    template <typename AddRow, typename RemoveRow>
    void serve(router& router)
    {
        router.on<AddRow>([this](const auto& request, auto&) {
            add({request.process(), get<"observer">(request), get<"connection_name">(request)});
            return 0U;
        });
        router.on<RemoveRow>([this](const auto& request, auto&) {
            remove(request.process(), get<"observer">(request), request.from_notification());
            return 0U;
        });
    }

    /// Tells every observer, one after the other, and returns their answers. One whose process is gone
    /// is forgotten.
    std::vector<observer_reply> notify(long func_id, std::span<const char> record);

    /// Tells every observer of an event of its row.
    template <typename Row>
    std::vector<observer_reply> notify(const event_of<Row>& event)
    {
        return notify(Row::id, event.record());
    }

    /// Has every observer told soon, in the order of the announcements. This is how a request leads to an
    /// event: the request is answered without waiting for the observers, one of which may be its sender.
    template <typename Row>
    void announce(const event_of<Row>& event)
    {
        announce({Row::id, {event.record().begin(), event.record().end()}});
    }

    struct registration {
        int process;
        std::uint32_t observer;
        std::string connection_name;
    };
    [[nodiscard]] std::vector<registration> list() const;

private:
    struct entry {
        registration who;
        int notifications_under_way = 0;
        bool removed = false;
    };
    struct announcement {
        long func_id;
        std::vector<char> record;
    };

    void add(registration who);
    void remove(int process, std::uint32_t observer, bool from_notification);
    void announce(announcement event);
    void deliver_announcements();

    long interface_id_;
    traffic& traffic_;
    mutable std::mutex mutex_;
    std::condition_variable delivered_;
    std::list<entry> entries_;
    std::condition_variable announced_;
    std::deque<announcement> announcements_;
    bool ending_ = false;
    std::thread announcer_;
};

}  // namespace norvane::simulator
