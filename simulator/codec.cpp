#include "simulator/codec.h"

#include "simulator/numbers.h"

#include <algorithm>
#include <cstring>

namespace norvane::simulator {

using frame::field_description;
using frame::field_kind;

namespace {

bool is_number(const field_description& field)
{
    return field.kind == field_kind::word || field.kind == field_kind::half || field.kind == field_kind::octet ||
           field.kind == field_kind::result;
}

void put_number(const field_description& field, std::vector<char>& record, const node& value)
{
    const std::uint32_t number = value.number();
    if (field.width < sizeof number && number >> (8 * field.width) != 0) {
        value.fail("a number of " + std::to_string(field.width) + " bytes");
    }
    store_number(record.data() + field.offset, field.width, number);
}

json numbers(std::span<const char> bytes, std::size_t width)
{
    json all = json::array();
    for (; bytes.size() >= width; bytes = bytes.subspan(width)) all.push_back(load_number(bytes.data(), width));
    return all;
}

std::string text_of(std::span<const char> bytes) { return {bytes.data(), strnlen(bytes.data(), bytes.size())}; }

json value_of(const field_description& field, std::span<const char> bytes, const layouts& layouts)
{
    if (field.is_secret) return masked_value;
    if (is_number(field)) return load_number(bytes.data(), field.width);
    switch (field.kind) {
        case field_kind::text:
        case field_kind::open_text:
        case field_kind::tail_text:
            return text_of(bytes);
        case field_kind::halves:
            return numbers(bytes, sizeof(std::uint16_t));
        case field_kind::words:
            return numbers(bytes, sizeof(std::uint32_t));
        default:
            return layouts.describe(std::string(field.type), bytes, secrets::masked);
    }
}

}  // namespace

std::vector<char> encode(const frame::record_description& event, const node& values, const layouts& layouts)
{
    std::vector<char> record(event.length, '\0');
    for (const auto& [name, value] : values.members()) {
        const auto field = std::find_if(event.fields.begin(), event.fields.end(),
                                        [&name = name](const auto& each) { return each.name == name; });
        if (field == event.fields.end()) value.fail("the name of a field");
        if (is_number(*field)) {
            put_number(*field, record, value);
            continue;
        }
        std::vector<char> bytes;
        if (field->type.empty()) {
            const std::string text = value.text();
            bytes.assign(text.begin(), text.end());
            bytes.push_back('\0');
        } else {
            bytes = layouts.fill(std::string(field->type), field->width == 0 ? open_ended_record : field->width, value);
        }
        record.resize(std::max(record.size(), field->offset + bytes.size()));
        std::copy(bytes.begin(), bytes.end(), record.begin() + static_cast<std::ptrdiff_t>(field->offset));
    }
    return record;
}

json decode(const frame::record_description& described, std::span<const char> record, const layouts& layouts)
{
    json values = json::object();
    for (const field_description& field : described.fields) {
        if (field.offset + field.width > record.size()) continue;
        const auto bytes = field.width == 0 ? record.subspan(field.offset) : record.subspan(field.offset, field.width);
        values[std::string(field.name)] = value_of(field, bytes, layouts);
    }
    return values;
}

}  // namespace norvane::simulator
