// Rows as values: for those who walk the protocol at run time, such as decoders and the reference.
#pragma once

#include "frame/row.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace norvane::frame {

struct field_description {
    field_kind kind;
    std::string_view name;
    /// The service's record type, or empty.
    std::string_view type;
    std::size_t offset;
    /// 0 where only the sender knows it.
    std::size_t width;
    /// How many bytes of a text are copied at the most.
    std::size_t bound;
    bool is_secret;
};

/// A record: a request, a notification's event, or a reply.
struct record_description {
    /// For an event the length that its fields take; the service may send more.
    std::size_t length;
    std::vector<field_description> fields;
};

struct row_description {
    long interface_id;
    long id;
    std::string_view name;
    /// What the application or, in a notification, the service sends.
    record_description sent;
    record_description reply;
    /// The record type of a list's elements and one element's size, or empty and 0.
    std::string_view element_type;
    std::size_t element_size;
};

namespace detail {

template <typename... Fields>
std::vector<field_description> describe_fields(field_list<Fields...> /*fields*/)
{
    return {
        {Fields::kind, Fields::name, Fields::type, Fields::offset, Fields::width, Fields::bound, Fields::is_secret}...};
}

template <typename Record>
record_description describe_event()
{
    record_description event{request_header, describe_fields(typename Record::fields{})};
    for (const auto& field : event.fields) event.length = std::max(event.length, field.offset + field.width);
    return event;
}

}  // namespace detail

template <typename Row>
row_description describe_row()
{
    row_description row{Row::interface_id, Row::id, Row::name, {}, {}, {}, 0};
    if constexpr (requires { typename Row::event; }) {
        row.sent = detail::describe_event<typename Row::event>();
    } else {
        row.sent = {Row::request::length, detail::describe_fields(typename Row::request::fields{})};
    }
    row.reply = {Row::reply::length, detail::describe_fields(typename Row::reply::fields{})};
    if constexpr (requires { Row::element_size; }) {
        row.element_type = Row::element_type;
        row.element_size = Row::element_size;
    }
    return row;
}

template <typename List>
std::vector<row_description> describe_rows()
{
    std::vector<row_description> rows;
    List::each([&rows]<typename Row>() { rows.push_back(describe_row<Row>()); });
    return rows;
}

}  // namespace norvane::frame
