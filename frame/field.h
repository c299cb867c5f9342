// The fields of a record, each a type: what it is called, where it stands, how wide it is, and how a
// C++ value goes into it and comes out of it.
//
// A record is its bytes from offset 0, header included, in the machine's own byte order. Every `put`
// relies on the record having been zeroed before, and writes no byte outside the record; every `take`
// reads no byte outside it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace norvane::frame {

/// A text as a template argument.
template <std::size_t Size>
struct fixed_text {
    char chars[Size];

    constexpr fixed_text(const char (&literal)[Size])  // NOLINT(google-explicit-constructor): literals only
    {
        for (std::size_t i = 0; i < Size; ++i) chars[i] = literal[i];
    }
    [[nodiscard]] constexpr std::string_view view() const { return {chars, Size - 1}; }
};

enum class field_kind {
    word,
    half,
    octet,
    text,
    open_text,
    block,
    record,
    halves,
    words,
    in_place,
    tail_text,
    result,
};

namespace detail {

template <field_kind Kind, fixed_text Name, std::size_t Offset, std::size_t Width>
struct field {
    static constexpr field_kind kind = Kind;
    static constexpr std::string_view name = Name.view();
    static constexpr std::string_view type = {};
    static constexpr std::size_t offset = Offset;
    static constexpr std::size_t width = Width;
    static constexpr std::size_t bound = Width;
    static constexpr bool is_secret = false;
};

/// The text at the start of `bytes`: up to its first NUL, or all of them when there is none.
inline std::string_view text_at(std::span<const char> bytes)
{
    return {bytes.data(), strnlen(bytes.data(), bytes.size())};
}

/// Up to `bound` characters of a C string.
inline std::string_view bounded(const char* text, std::size_t bound) { return {text, strnlen(text, bound)}; }

/// An integer or enumeration of `Bits` in the record. A wider output is zero-extended, or
/// sign-extended where the output is signed.
template <field_kind Kind, fixed_text Name, std::size_t Offset, typename Bits>
struct number : field<Kind, Name, Offset, sizeof(Bits)> {
    template <typename Value>
    requires(std::is_integral_v<Value> || std::is_enum_v<Value>) static void put(std::span<char> record, Value value)
    {
        const auto bits = static_cast<Bits>(value);
        std::memcpy(record.data() + Offset, &bits, sizeof bits);
    }

    template <typename Value>
    requires(std::is_integral_v<Value> || std::is_enum_v<Value>) static void take(std::span<const char> record,
                                                                                  Value& value)
    {
        if constexpr (std::is_signed_v<Value>) {
            std::make_signed_t<Bits> bits;
            std::memcpy(&bits, record.data() + Offset, sizeof bits);
            value = static_cast<Value>(bits);
        } else {
            Bits bits;
            std::memcpy(&bits, record.data() + Offset, sizeof bits);
            value = static_cast<Value>(bits);
        }
    }
};

}  // namespace detail

/// A 32-bit integer or enumeration.
template <fixed_text Name, std::size_t Offset>
struct word : detail::number<field_kind::word, Name, Offset, std::uint32_t> {
};

/// A 16-bit unsigned integer.
template <fixed_text Name, std::size_t Offset>
struct half : detail::number<field_kind::half, Name, Offset, std::uint16_t> {
};

/// An 8-bit unsigned integer.
template <fixed_text Name, std::size_t Offset>
struct octet : detail::number<field_kind::octet, Name, Offset, std::uint8_t> {
};

/// The 32-bit result code of a reply; 0 is success.
template <std::size_t Offset>
struct result : detail::number<field_kind::result, "result", Offset, std::uint32_t> {
};

/// A text in a zeroed field of `Width` bytes, of which at most `Bound` are copied into it. It is
/// NUL-terminated on the wire when it is shorter than the field.
///
/// A text that is read ends at its first NUL or, where the sender left none, with the record: it can
/// run on into the fields that follow.
template <fixed_text Name, std::size_t Offset, std::size_t Width, std::size_t Bound = Width>
struct text : detail::field<field_kind::text, Name, Offset, Width> {
    static_assert(Bound <= Width, "a text is bounded by its field");
    static constexpr std::size_t bound = Bound;

    static void put(std::span<char> record, const char* value) { put(record, detail::bounded(value, Bound)); }
    static void put(std::span<char> record, const unsigned char* value)
    {
        put(record, reinterpret_cast<const char*>(value));
    }
    static void put(std::span<char> record, const std::string& value) { put(record, value.c_str()); }
    /// All of `value` up to the bound, NULs included.
    static void put(std::span<char> record, std::string_view value)
    {
        std::memcpy(record.data() + Offset, value.data(), value.size() < Bound ? value.size() : Bound);
    }
    static void take(std::span<const char> record, std::string& value)
    {
        value = detail::text_at(record.subspan(Offset));
    }
};

/// A text whose sender must keep it shorter than its field: the copy is bounded by the text's own
/// length, runs over the fields that follow, and ends with the record.
template <fixed_text Name, std::size_t Offset, std::size_t Width>
struct open_text : detail::field<field_kind::open_text, Name, Offset, Width> {
    static void put(std::span<char> record, const char* value)
    {
        const auto sent = detail::bounded(value, record.size() - Offset);
        std::memcpy(record.data() + Offset, sent.data(), sent.size());
    }
};

/// Exactly `Width` bytes from the caller's buffer, which must hold that many. A null pointer leaves
/// the field zero.
template <fixed_text Name, std::size_t Offset, std::size_t Width>
struct block : detail::field<field_kind::block, Name, Offset, Width> {
    static void put(std::span<char> record, const char* value)
    {
        if (value != nullptr) std::memcpy(record.data() + Offset, value, Width);
    }
};

/// A record of the service's, named `Type`, copied whole.
template <fixed_text Name, fixed_text Type, std::size_t Offset, std::size_t Width>
struct record : detail::field<field_kind::record, Name, Offset, Width> {
    static constexpr std::string_view type = Type.view();

    template <typename Value>
    static void put(std::span<char> bytes, const Value& value)
    {
        check<Value>();
        std::memcpy(bytes.data() + Offset, &value, Width);
    }
    template <typename Value>
    static void take(std::span<const char> bytes, Value& value)
    {
        check<Value>();
        std::memcpy(&value, bytes.data() + Offset, Width);
    }

private:
    template <typename Value>
    static constexpr void check()
    {
        static_assert(std::is_trivially_copyable_v<Value>, "a record is copied byte for byte");
        static_assert(sizeof(Value) == Width, "a record has exactly its field's size");
    }
};

namespace detail {

/// `Count` numbers of `Bits`, one behind the other. `take` reads one of them.
template <field_kind Kind, fixed_text Name, std::size_t Offset, typename Bits, std::size_t Count>
struct numbers : field<Kind, Name, Offset, sizeof(Bits) * Count> {
    static constexpr std::size_t count = Count;

    static Bits take(std::span<const char> record, std::size_t index)
    {
        Bits bits;
        std::memcpy(&bits, record.data() + Offset + index * sizeof bits, sizeof bits);
        return bits;
    }
};

}  // namespace detail

template <fixed_text Name, std::size_t Offset, std::size_t Count>
struct halves : detail::numbers<field_kind::halves, Name, Offset, std::uint16_t, Count> {
};

template <fixed_text Name, std::size_t Offset, std::size_t Count>
struct words : detail::numbers<field_kind::words, Name, Offset, std::uint32_t, Count> {
};

/// A record of the service's, named `Type`, that stands at the end of a notification and is handed
/// over where it stands. `Width` is 0 where only the service knows its size.
template <fixed_text Name, fixed_text Type, std::size_t Offset, std::size_t Width = 0>
struct in_place : detail::field<field_kind::in_place, Name, Offset, Width> {
    static constexpr std::string_view type = Type.view();
};

/// A NUL-terminated text of any length at the end of a notification, handed over where it stands.
template <fixed_text Name, std::size_t Offset>
struct tail_text : detail::field<field_kind::tail_text, Name, Offset, 0> {
};

/// A field whose content is never shown to anyone who watches.
template <typename Field>
struct secret : Field {
    static constexpr bool is_secret = true;
};

}  // namespace norvane::frame
