#include "simulator/layouts.h"

#include "simulator/numbers.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace norvane::simulator {

namespace {

layout_field read_field(const node& entry)
{
    layout_field field{entry.at("name").text(), layout_field::form::number, entry.at("offset").number(), 0,
                       entry["secret"].flag_or(false)};
    const std::string type = entry.at("type").text();
    if (type == "u8") {
        field.size = 1;
    } else if (type == "u16") {
        field.size = 2;
    } else if (type == "u32") {
        field.size = 4;
    } else if (type == "text" || type == "bytes") {
        field.what = type == "text" ? layout_field::form::text : layout_field::form::bytes;
        field.size = entry.at("size").number();
        if (field.size == 0) entry.at("size").fail("a size of 1 or more");
    } else {
        entry.at("type").fail("u8, u16, u32, text or bytes");
    }
    return field;
}

std::string take_text(const layout_field& field, std::span<const char> record)
{
    const char* const begin = record.data() + field.offset;
    return {begin, strnlen(begin, field.size)};
}

/// Copies bytes into the record at `offset`, at most `room` of them.
void copy(std::span<char> record, std::size_t offset, std::size_t room, std::span<const char> bytes)
{
    std::copy_n(bytes.begin(), std::min(bytes.size(), room), record.begin() + static_cast<std::ptrdiff_t>(offset));
}

void put(const layout_field& field, std::span<char> record, const node& content)
{
    switch (field.what) {
        case layout_field::form::number:
            store_number(record.data() + field.offset, field.size, content.number());
            break;
        case layout_field::form::text: {
            const std::string text = content.text();
            if (text.size() >= field.size)
                content.fail("a text of at most " + std::to_string(field.size - 1) + " bytes");
            copy(record, field.offset, field.size, text);
            break;
        }
        case layout_field::form::bytes: {
            const auto bytes = content.bytes();
            if (bytes.size() > field.size) content.fail("at most " + std::to_string(field.size) + " bytes");
            copy(record, field.offset, field.size, bytes);
            break;
        }
    }
}

}  // namespace

layouts::layouts(const node& device)
{
    for (const auto& [type, layout] : device["layouts"].members()) {
        for (const node& entry : layout.at("fields").elements()) layouts_[type].push_back(read_field(entry));
    }
}

std::vector<char> layouts::fill(const std::string& type, std::size_t size, const node& content) const
{
    std::vector<char> record(size, '\0');
    if (content.is_text()) {
        const auto bytes = content.bytes();
        if (bytes.size() > size) content.fail("at most " + std::to_string(size) + " bytes for a " + type);
        copy(record, 0, size, bytes);
        return record;
    }
    for (const auto& [name, value] : content.members()) {
        const layout_field* const field = find(type, name);
        if (field == nullptr) value.fail("a field of the layout of " + type);
        if (field->offset + field->size > size)
            value.fail("a field inside the " + std::to_string(size) + " bytes of a " + type);
        put(*field, record, value);
    }
    return record;
}

json layouts::describe(const std::string& type, std::span<const char> record, secrets kept) const
{
    const auto found = layouts_.find(type);
    if (found == layouts_.end()) return hexadecimal(record);
    json content = json::object();
    for (const layout_field& field : found->second) {
        if (field.offset + field.size > record.size()) continue;
        if (field.is_secret && kept != secrets::told) {
            if (kept == secrets::masked) content[field.name] = masked_value;
            continue;
        }
        switch (field.what) {
            case layout_field::form::number:
                content[field.name] = load_number(record.data() + field.offset, field.size);
                break;
            case layout_field::form::text:
                content[field.name] = take_text(field, record);
                break;
            case layout_field::form::bytes:
                content[field.name] = hexadecimal(record.subspan(field.offset, field.size));
                break;
        }
    }
    return content;
}

std::uint32_t layouts::number(const std::string& type, std::span<const char> record, const std::string& field) const
{
    const layout_field* const found = find(type, field);
    if (found == nullptr || found->what != layout_field::form::number) return 0;
    return found->offset + found->size <= record.size() ? load_number(record.data() + found->offset, found->size) : 0;
}

std::string layouts::text(const std::string& type, std::span<const char> record, const std::string& field) const
{
    const layout_field* const found = find(type, field);
    if (found == nullptr || found->what != layout_field::form::text) return {};
    return found->offset + found->size <= record.size() ? take_text(*found, record) : std::string();
}

void layouts::set(const std::string& type, std::span<char> record, const std::string& field, std::uint32_t value) const
{
    const layout_field* const found = find(type, field);
    if (found == nullptr || found->what != layout_field::form::number) return;
    if (found->offset + found->size <= record.size()) store_number(record.data() + found->offset, found->size, value);
}

std::vector<char> layouts::convert(const std::string& from, std::span<const char> record, const std::string& to,
                                   std::size_t size) const
{
    std::vector<char> made(size, '\0');
    const auto layout = layouts_.find(to);
    if (layout == layouts_.end()) return made;
    for (const layout_field& field : layout->second) {
        const layout_field* const source = find(from, field.name);
        if (source == nullptr || source->what != field.what || source->offset + source->size > record.size() ||
            field.offset + field.size > size) {
            continue;
        }
        const auto bytes = record.subspan(source->offset, source->size);
        switch (field.what) {
            case layout_field::form::number:
                store_number(made.data() + field.offset, field.size, load_number(bytes.data(), source->size));
                break;
            case layout_field::form::text:
                copy(made, field.offset, field.size - 1, bytes);
                break;
            case layout_field::form::bytes:
                copy(made, field.offset, field.size, bytes);
                break;
        }
    }
    return made;
}

const layout_field* layouts::find(const std::string& type, const std::string& field) const
{
    const auto layout = layouts_.find(type);
    if (layout == layouts_.end()) return nullptr;
    const auto found = std::find_if(layout->second.begin(), layout->second.end(),
                                    [&field](const layout_field& each) { return each.name == field; });
    return found == layout->second.end() ? nullptr : &*found;
}

std::string hexadecimal(std::span<const char> bytes)
{
    std::string digits;
    digits.reserve(bytes.size() * 2);
    for (const char byte : bytes) digits += fmt::format("{:02x}", static_cast<unsigned char>(byte));
    return digits;
}

}  // namespace norvane::simulator
