// What every observer shares: its connection name, and the dispatch of a notification to the notify
// operation that is bound to its row.
//
//     return dispatch<on<wire::toner_status, &tarn_common_observer::notify_toner_status>, ...>(
//         *this, failures, connection_name_, {func_id, rcv_buf, rcv_buf_len, hdr});
#pragma once

#include "frame/report.h"
#include "frame/row.h"
#include "platform/bmc_mc.h"

#include <tuple>
#include <utility>

namespace norvane::frame {

inline constexpr const char* observer_service_name = "TARN_OBS";
inline constexpr std::size_t connection_name_size = 16;

/// The code that stands for a failure that is not reported.
inline constexpr unsigned int unreported = 0;

/// One failure of an observer class: the code of its report and the line that the report names.
struct failure {
    unsigned int code = unreported;
    int line = 0;
};

/// What an observer class reports, and as what.
struct observer_failures {
    const char* source;
    const char* class_name;
    failure constructed_without_server;
    failure constructed_without_name;
    failure empty_buffer;
    failure no_server;
    failure unknown_id;
    /// Whether the report of an unknown id carries the id as its detail, or 0.
    bool detail_names_unknown_id;
};

/// A notification as the platform hands it over. The platform pads the record with zeros far enough
/// that every field of a known notification can be read.
struct received {
    long func_id;
    char* record;
    unsigned int length;
    gen_ipc_msghdr& header;
};

/// Obtains a connection name for a new observer; reports when no server listens under it.
void open_connection(observer_template& observer, char (&connection_name)[connection_name_size],
                     const observer_failures& failures);

/// Keeps the first 16 bytes of a connection name that the application chose. A null name is an empty
/// one, unless the class reports it: then `connection_name` is left as it is, not even cleared.
void keep_connection_name(char (&connection_name)[connection_name_size], const char* chosen,
                          const observer_failures& failures);

/// Leaves nothing of an observer's identity behind, for those who still look at where it was.
void forget_connection(long& obj_id, char (&connection_name)[connection_name_size]);

/// The server to answer `message` on, or null when the message is refused; what the class reports of
/// it has then been reported.
bmc_mc_observer_server* accept(const received& message, const char* connection_name, const observer_failures& failures);

void refuse_unknown_id(const received& message, const observer_failures& failures);

namespace detail {

/// What is handed to a parameter of type `Parameter` for a field. A number or a copied record is a
/// value of the caller's own; a record in place is a reference to where it stands.
template <typename Field, typename Parameter>
struct argument {
    std::remove_cvref_t<Parameter> value;
    explicit argument(char* record, std::size_t length) { Field::take(std::span<const char>(record, length), value); }
    Parameter get() { return value; }
};

/// Whether a record has its field's size, where the library knows it.
template <typename Field, typename Record>
constexpr bool has_size_of_field()
{
    if constexpr (Field::width == 0) {
        return true;
    } else {
        return sizeof(Record) == Field::width;
    }
}

template <typename Field, typename Parameter>
requires(Field::kind == field_kind::in_place) struct argument<Field, Parameter> {
    static_assert(has_size_of_field<Field, std::remove_reference_t<Parameter>>(),
                  "a record in place has exactly its field's size");
    char* bytes;
    explicit argument(char* record, std::size_t /*length*/) : bytes(record + Field::offset) {}
    Parameter get() { return reinterpret_cast<Parameter>(*bytes); }
};

template <typename Field, typename Parameter>
requires(Field::kind == field_kind::tail_text) struct argument<Field, Parameter> {
    char* bytes;
    explicit argument(char* record, std::size_t /*length*/) : bytes(record + Field::offset) {}
    Parameter get() { return bytes; }
};

/// One past the last byte that a row's fields read.
template <typename... Fields>
constexpr std::size_t extent(field_list<Fields...>)
{
    std::size_t end = request_header;
    ((end = end < Fields::offset + Fields::width ? Fields::offset + Fields::width : end), ...);
    return end;
}

}  // namespace detail

/// Binds a notification's row to the notify operation that it calls. The operation's parameters are
/// the row's event fields in order, then one reference for each value that the reply carries.
template <typename Row, auto Operation>
struct on;

template <typename Row, typename Observer, typename... Parameters, unsigned int (Observer::*Operation)(Parameters...)>
struct on<Row, Operation> {
    static constexpr long id = Row::id;

    static void deliver(Observer& observer, bmc_mc_observer_server& server, const received& message)
    {
        alignas(8) char reply[Row::reply::length] = {};
        const unsigned int outcome =
            invoke(observer, message.record, reply, typename Row::event::fields{}, typename Row::reply::fields{});
        Row::reply::template field<"result">::put(std::span<char, Row::reply::length>(reply), outcome);
        server.bmc_mc_sync_reply(&message.header, reply, Row::reply::length);
    }

private:
    template <typename... Fields>
    static unsigned int invoke(Observer& observer, [[maybe_unused]] char* record, char* /*reply*/,
                               field_list<Fields...> /*event*/, plain_reply::fields)
    {
        static_assert(sizeof...(Fields) == sizeof...(Parameters), "a notify operation takes one value a field");
        [[maybe_unused]] constexpr std::size_t length = detail::extent(field_list<Fields...>{});
        return (observer.*Operation)(detail::argument<Fields, Parameters>(record, length).get()...);
    }

    /// An operation that answers with a number: the number's own variable is stored when it returns.
    template <typename Answer>
    static unsigned int invoke(Observer& observer, char* /*record*/, char* reply, field_list<> /*event*/,
                               field_list<result<12>, Answer>)
    {
        std::tuple<std::remove_reference_t<Parameters>...> answer{};
        const unsigned int outcome =
            std::apply([&observer](auto&... outputs) { return (observer.*Operation)(outputs...); }, answer);
        Answer::put(std::span<char, Row::reply::length>(reply, Row::reply::length), std::get<0>(answer));
        return outcome;
    }
};

/// Hands one notification to the operation bound to its id and answers the service with what the
/// operation returns. A message that is refused gets no answer. The value returned has no meaning.
template <typename... Bindings, typename Observer>
long dispatch(Observer& observer, const observer_failures& failures, const char* connection_name,
              const received& message)
{
    bmc_mc_observer_server* const server = accept(message, connection_name, failures);
    if (server == nullptr) return 0;
    const bool known =
        ((message.func_id == Bindings::id && (Bindings::deliver(observer, *server, message), true)) || ...);
    if (!known) refuse_unknown_id(message, failures);
    return 0;
}

}  // namespace norvane::frame
