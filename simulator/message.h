// A request as its row reads it, and the reply as its row writes it: the service's side of the same
// rows on which the library's operations stand.
#pragma once

#include "frame/row.h"
#include "host/service.h"
#include "simulator/numbers.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace norvane::simulator {

using frame::field_kind;
using frame::fixed_text;

namespace detail {

template <typename Field>
std::uint32_t read_number(std::span<const char> record)
{
    std::uint32_t number = 0;
    Field::take(record, number);
    return number;
}

/// A field's text ends at its first NUL or with the field.
template <typename Field>
std::string read_text(std::span<const char> record)
{
    const char* const begin = record.data() + Field::offset;
    return {begin, strnlen(begin, Field::width)};
}

template <typename Field>
std::vector<char> read_bytes(std::span<const char> record)
{
    const auto bytes = record.subspan(Field::offset, Field::width);
    return {bytes.begin(), bytes.end()};
}

}  // namespace detail

/// The record of a row's request. `get<"name">(request)` reads one of its fields.
template <typename Row>
class request_of {
public:
    explicit request_of(const host::request& received) : received_(received) {}

    template <fixed_text Name>
    [[nodiscard]] auto field_value() const
    {
        using field = typename Row::request::template field<Name>;
        constexpr field_kind kind = field::kind;
        if constexpr (kind == field_kind::word || kind == field_kind::half || kind == field_kind::octet) {
            return detail::read_number<field>(received_.record);
        } else if constexpr (kind == field_kind::text || kind == field_kind::open_text) {
            return detail::read_text<field>(received_.record);
        } else {
            return detail::read_bytes<field>(received_.record);
        }
    }

    /// The whole record, its header included.
    [[nodiscard]] std::span<const char> record() const { return received_.record; }
    /// The process that sent the request.
    [[nodiscard]] int process() const { return received_.process; }
    [[nodiscard]] bool from_notification() const { return received_.from_notification; }

private:
    const host::request& received_;
};

/// The record of a row's reply, zeroed before its fields are set by `set<"name">(reply, value)`.
template <typename Row>
class reply_of {
public:
    reply_of() : record_(Row::reply::length, '\0') {}

    template <fixed_text Name, typename Value>
    void set_field(const Value& value)
    {
        using field = typename Row::reply::template field<Name>;
        if constexpr (std::is_integral_v<Value> || std::is_enum_v<Value>) {
            field::put(std::span<char>(record_), value);
        } else {
            constexpr std::size_t room = field::kind == field_kind::text ? field::width - 1 : field::width;
            const std::span<const char> bytes(std::data(value), std::size(value));
            std::copy_n(bytes.begin(), std::min(bytes.size(), room), record_.begin() + field::offset);
        }
    }

    template <fixed_text Name>
    void set_element(std::size_t index, std::uint32_t value)
    {
        using field = typename Row::reply::template field<Name>;
        constexpr std::size_t width = field::width / field::count;
        store_number(record_.data() + field::offset + index * width, width, value);
    }

    std::vector<char> take(std::uint32_t result)
    {
        set_field<"result">(result);
        return std::move(record_);
    }

private:
    std::vector<char> record_;
};

/// A field of the request: a number as std::uint32_t, a text as std::string, any other as its bytes.
template <fixed_text Name, typename Row>
auto get(const request_of<Row>& request)
{
    return request.template field_value<Name>();
}

/// Sets a field of the reply: a number, a text (cut so that its terminating NUL stays), or the bytes of
/// a record (cut to the field, zeros behind them).
template <fixed_text Name, typename Row, typename Value>
void set(reply_of<Row>& reply, const Value& value)
{
    reply.template set_field<Name>(value);
}

/// Sets one number of an array.
template <fixed_text Name, typename Row>
void set(reply_of<Row>& reply, std::size_t index, std::uint32_t value)
{
    reply.template set_element<Name>(index, value);
}

}  // namespace norvane::simulator
