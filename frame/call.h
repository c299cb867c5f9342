// One call: zero the request, put the caller's arguments into it, send it, take the reply's values.
//
//     return call<wire::start>(s_the_client_, with(category, arg), into(job));
//
// `with` names the values of the request's fields, `into` the outputs for the reply's, both in the
// order in which the row lists them. An operation that does more than that is written out on an
// `exchange` of the same row.
#pragma once

#include "frame/report.h"
#include "frame/row.h"
#include "platform/bmc_mc.h"

#include <tuple>
#include <utility>

namespace norvane::frame {

inline constexpr const char* service_name = "TARN_SRV";

/// What a send over no client returns: nothing was sent.
inline constexpr long not_sent = -1;

template <typename... Values>
struct with {
    explicit constexpr with(const Values&... each) : values(each...) {}
    std::tuple<const Values&...> values;
};

template <typename... Outputs>
struct into {
    explicit constexpr into(Outputs&... each) : outputs(each...) {}
    std::tuple<Outputs&...> outputs;
};

/// The request and the reply of one row, zeroed, on the caller's stack.
template <typename Row>
class exchange {
public:
    using request = typename Row::request;
    using reply = typename Row::reply;

    /// Clears both records. Not by initializers: the compiler would copy a long exchange from an image
    /// of it, which costs more than clearing it.
    [[gnu::always_inline]] exchange() : reply_length_(reply::length)
    {
        std::memset(request_, 0, sizeof request_);
        std::memset(reply_, 0, sizeof reply_);
    }

    /// Puts the values into the request's fields, in the row's order.
    template <typename... Values>
    [[gnu::always_inline]] void put(const with<Values...>& in)
    {
        put_all(in, typename request::fields{}, std::index_sequence_for<Values...>{});
    }

    template <fixed_text Field, typename Value>
    [[gnu::always_inline]] void put(const Value& value)
    {
        request::template field<Field>::put(std::span<char, request::length>(request_), value);
    }

    /// Puts a value where the reply will stand, so that a reply that is not filled leaves it there.
    template <fixed_text Field, typename Value>
    [[gnu::always_inline]] void prefill(const Value& value)
    {
        reply::template field<Field>::put(std::span<char, reply::length>(reply_), value);
    }

    /// Sends the request and waits for the reply; the transport's status is 0 when one arrived.
    /// Without a client nothing is sent and the reply stays as it is.
    [[gnu::always_inline]] long send(bmc_mc_client* client)
    {
        if (client == nullptr) return not_sent;
        return client->bmc_mc_send_sync_message(Row::interface_id, Row::id, request_, request::length, reply_,
                                                &reply_length_, service_name);
    }

    /// Takes the reply's values into the outputs, in the row's order.
    template <typename... Outputs>
    [[gnu::always_inline]] void take(const into<Outputs...>& out) const
    {
        take_all(out, typename reply::fields{}, std::make_index_sequence<reply::fields::size>{});
    }

    template <fixed_text Field, typename Output>
    [[gnu::always_inline]] void take(Output& output) const
    {
        reply::template field<Field>::take(std::span<const char, reply::length>(reply_), output);
    }

    /// A number of the reply, by its field's name.
    template <fixed_text Field>
    [[gnu::always_inline]] [[nodiscard]] unsigned int number() const
    {
        unsigned int value;
        take<Field>(value);
        return value;
    }

    /// One number of the reply's array.
    template <fixed_text Field>
    [[gnu::always_inline]] [[nodiscard]] unsigned int number(std::size_t index) const
    {
        return reply::template field<Field>::take(std::span<const char, reply::length>(reply_), index);
    }

    [[gnu::always_inline]] [[nodiscard]] unsigned int result() const { return number<"result">(); }

private:
    template <typename... Values, typename... Fields, std::size_t... I>
    [[gnu::always_inline]] void put_all(const with<Values...>& in, field_list<Fields...>, std::index_sequence<I...>)
    {
        static_assert(sizeof...(Values) == sizeof...(Fields), "a request takes one value for each field");
        (Fields::put(std::span<char, request::length>(request_), std::get<I>(in.values)), ...);
    }

    template <typename... Outputs, typename... Fields, std::size_t... I>
    [[gnu::always_inline]] void take_all(const into<Outputs...>& out, field_list<Fields...>,
                                         std::index_sequence<I...>) const
    {
        static_assert(sizeof...(Outputs) + 1 == sizeof...(Fields), "a reply gives one value for each output");
        (take_one<Fields, values_before<Fields...>(I)>(out), ...);
    }

    /// How many values stand in the row before the field of this index: the index of its output.
    template <typename... Fields>
    static constexpr std::size_t values_before(std::size_t index)
    {
        constexpr std::array<bool, sizeof...(Fields)> is_value{(Fields::kind != field_kind::result)...};
        std::size_t values = 0;
        for (std::size_t i = 0; i < index; ++i) values += is_value[i] ? 1 : 0;
        return values;
    }

    template <typename Field, std::size_t Index, typename... Outputs>
    [[gnu::always_inline]] void take_one(const into<Outputs...>& out) const
    {
        if constexpr (Field::kind != field_kind::result) {
            Field::take(std::span<const char, reply::length>(reply_), std::get<Index>(out.outputs));
        }
    }

    alignas(8) char request_[request::length];
    alignas(8) char reply_[reply::length];
    unsigned int reply_length_;
};

template <typename Row, typename... Values, typename... Outputs>
[[gnu::always_inline]] inline unsigned int call(bmc_mc_client* client, const with<Values...>& in,
                                                const into<Outputs...>& out)
{
    exchange<Row> message;
    message.put(in);
    message.send(client);
    message.take(out);
    return message.result();
}

template <typename Row, typename... Values>
[[gnu::always_inline]] inline unsigned int call(bmc_mc_client* client, const with<Values...>& in)
{
    return call<Row>(client, in, into<>());
}

template <typename Row, typename... Outputs>
[[gnu::always_inline]] inline unsigned int call(bmc_mc_client* client, const into<Outputs...>& out)
{
    return call<Row>(client, with<>(), out);
}

template <typename Row>
[[gnu::always_inline]] inline unsigned int call(bmc_mc_client* client)
{
    return call<Row>(client, with<>(), into<>());
}

/// Sends nothing for an argument that cannot be used: reports it under the operation's name and returns
/// `failure`.
template <typename Row>
unsigned int refuse(unsigned int failure, const char* source, int line)
{
    report(bad_argument, 0, {source, Row::label, line});
    return failure;
}

}  // namespace norvane::frame
