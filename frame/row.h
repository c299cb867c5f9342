// Rows: every operation and notification of the protocol is one type, made of its number, its name
// and its records, and every record is its length and its fields. What a row gets wrong about itself
// (a field outside its record, two fields on one byte, two rows with one number) does not compile.
#pragma once

#include "frame/field.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace norvane::frame {

/// Bytes at the start of a request, a notification and a reply that belong to the platform.
inline constexpr std::size_t request_header = 72;
inline constexpr std::size_t reply_header = 12;

namespace detail {

template <typename... Fields>
struct layout {
    static constexpr bool behind([[maybe_unused]] std::size_t header) { return ((Fields::offset >= header) && ...); }
    static constexpr bool inside([[maybe_unused]] std::size_t length)
    {
        return ((Fields::offset + Fields::width <= length) && ...);
    }
    static constexpr bool apart()
    {
        constexpr std::size_t count = sizeof...(Fields);
        constexpr std::array<std::size_t, count> begin{Fields::offset...};
        constexpr std::array<std::size_t, count> end{(Fields::offset + Fields::width)...};
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t j = i + 1; j < count; ++j) {
                if (begin[i] < end[j] && begin[j] < end[i]) return false;
            }
        }
        return true;
    }
    static constexpr std::size_t results = (0 + ... + (Fields::kind == field_kind::result ? 1 : 0));
};

template <fixed_text Name, typename... Fields>
struct find;
template <fixed_text Name, typename First, typename... Rest>
struct find<Name, First, Rest...> {
    using type = typename find<Name, Rest...>::type;
};
template <fixed_text Name, typename First, typename... Rest>
requires(First::name == Name.view()) struct find<Name, First, Rest...> {
    using type = First;
};

}  // namespace detail

/// Field types as a value, for whoever walks them.
template <typename... Fields>
struct field_list {
    static constexpr std::size_t size = sizeof...(Fields);
};

template <std::size_t Length, typename... Fields>
struct request {
    static constexpr std::size_t length = Length;
    using fields = field_list<Fields...>;
    template <fixed_text Name>
    using field = typename detail::find<Name, Fields...>::type;

    static_assert(Length >= request_header, "a request opens with its header");
    static_assert(detail::layout<Fields...>::behind(request_header), "a request's field stands in its header");
    static_assert(detail::layout<Fields...>::inside(Length), "a request's field runs out of its record");
    static_assert(detail::layout<Fields...>::apart(), "two of a request's fields share a byte");
    static_assert(detail::layout<Fields...>::results == 0, "a request carries no result");
};

template <std::size_t Length, typename... Fields>
struct reply {
    static constexpr std::size_t length = Length;
    using fields = field_list<Fields...>;
    template <fixed_text Name>
    using field = typename detail::find<Name, Fields...>::type;

    static_assert(detail::layout<Fields...>::behind(reply_header), "a reply's field stands in its header");
    static_assert(detail::layout<Fields...>::inside(Length), "a reply's field runs out of its record");
    static_assert(detail::layout<Fields...>::apart(), "two of a reply's fields share a byte");
    static_assert(detail::layout<Fields...>::results == 1, "a reply carries one result");
};

/// A reply without a value.
using plain_reply = reply<16, result<12>>;

/// The requests that tell the service of an observer and take it back, the same in every area.
using add_observer_request = request<92, word<"observer", 72>, text<"connection_name", 76, 16, 15>>;
using remove_observer_request = request<92, word<"observer", 72>>;

/// What a notification carries behind its header. The service decides how long the record is.
template <typename... Fields>
struct event {
    using fields = field_list<Fields...>;
    template <fixed_text Name>
    using field = typename detail::find<Name, Fields...>::type;

    static_assert(detail::layout<Fields...>::behind(request_header), "an event's field stands in its header");
    static_assert(detail::layout<Fields...>::apart(), "two of an event's fields share a byte");
    static_assert(detail::layout<Fields...>::results == 0, "an event carries no result");
};

/// A request that an application sends, and its reply.
template <long Interface, long Id, fixed_text Name, typename Request, typename Reply = plain_reply>
struct operation {
    static constexpr long interface_id = Interface;
    static constexpr long id = Id;
    static constexpr std::string_view name = Name.view();
    /// The name as a C string.
    static constexpr const char* label = Name.chars;
    using request = Request;
    using reply = Reply;
};

/// A notification that the service sends, and the observer's reply.
template <long Interface, long Id, fixed_text Name, typename Event, typename Reply = plain_reply>
struct notification {
    static constexpr long interface_id = Interface;
    static constexpr long id = Id;
    static constexpr std::string_view name = Name.view();
    using event = Event;
    using reply = Reply;
};

/// An operation that fetches one page of a list. Its request names the block through which the page
/// travels; its reply counts the elements, records of the service's named `Type`, that the service
/// wrote there.
template <typename Operation, fixed_text Type, std::size_t ElementSize, std::size_t Capacity>
struct page : Operation {
    static constexpr std::string_view element_type = Type.view();
    static constexpr std::size_t element_size = ElementSize;
    static constexpr std::size_t capacity = Capacity;
    static constexpr std::size_t block_size = ElementSize * Capacity;
};

template <typename... Rows>
struct row_list {
    static constexpr std::size_t size = sizeof...(Rows);

    /// Calls `visit.template operator()<Row>()` for every row in turn.
    template <typename Visit>
    static constexpr void each(Visit&& visit)
    {
        (visit.template operator()<Rows>(), ...);
    }

    /// No two rows have one number, but for those numbers that several rows share on purpose.
    static constexpr bool distinct(std::initializer_list<long> shared = {})
    {
        constexpr std::array<long, size> ids{Rows::id...};
        for (std::size_t i = 0; i < size; ++i) {
            bool on_purpose = false;
            for (const long id : shared) on_purpose = on_purpose || id == ids[i];
            for (std::size_t j = i + 1; j < size; ++j) {
                if (ids[i] == ids[j] && !on_purpose) return false;
            }
        }
        return true;
    }
};

}  // namespace norvane::frame
