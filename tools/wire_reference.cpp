// Writes the wire reference: every operation and notification of every area, from the rows.
#include "protocol/catalog.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace norvane;
using frame::field_kind;

std::string kind_of(const frame::field_description& field)
{
    switch (field.kind) {
        case field_kind::word:
            return "32-bit number";
        case field_kind::half:
            return "16-bit number";
        case field_kind::octet:
            return "8-bit number";
        case field_kind::result:
            return "result code";
        case field_kind::text:
            if (field.bound != field.width) return fmt::format("text, {} bytes copied", field.bound);
            return "text";
        case field_kind::open_text:
            return "text, as long as it is";
        case field_kind::block:
            return "bytes; zero for a null pointer";
        case field_kind::record:
            return fmt::format("`{}`", field.type);
        case field_kind::halves:
            return fmt::format("{} 16-bit numbers", field.width / 2);
        case field_kind::words:
            return fmt::format("{} 32-bit numbers", field.width / 4);
        case field_kind::in_place:
            return fmt::format("`{}`, in place", field.type);
        case field_kind::tail_text:
            return "text, to its end";
    }
    return {};
}

void print_record(std::string_view what, const std::string& length, const frame::record_description& record)
{
    if (record.fields.empty()) {
        fmt::print("{}: {} bytes, header only.\n\n", what, length);
        return;
    }
    fmt::print("{}: {} bytes.\n\n| offset | bytes | field | content |\n|---|---|---|---|\n", what, length);
    auto fields = record.fields;
    std::stable_sort(fields.begin(), fields.end(), [](const auto& a, const auto& b) { return a.offset < b.offset; });
    for (const auto& field : fields) {
        fmt::print("| {} | {} | {} | {}{} |\n", field.offset, field.width == 0 ? "…" : std::to_string(field.width),
                   field.name, kind_of(field), field.is_secret ? "; never shown" : "");
    }
    fmt::print("\n");
}

void print_area(const protocol::area_description& area)
{
    fmt::print("## {} (interface {})\n\n", area.name, area.interface_id);
    fmt::print("{} operations, {} notifications.\n\n", area.operations.size(), area.notifications.size());
    for (const auto& row : area.operations) {
        fmt::print("### {} `{}`\n\n", row.id, row.name);
        print_record("Request", std::to_string(row.sent.length), row.sent);
        print_record("Reply", std::to_string(row.reply.length), row.reply);
        if (row.element_size != 0) {
            fmt::print("Elements in the page's block: `{}`, {} bytes each.\n\n", row.element_type, row.element_size);
        }
    }
    for (const auto& row : area.notifications) {
        fmt::print("### {} `{}` (notification)\n\n", row.id, row.name);
        print_record("Event", fmt::format("at least {}", row.sent.length), row.sent);
        print_record("Observer's reply", std::to_string(row.reply.length), row.reply);
    }
}

}  // namespace

int main()
{
    fmt::print(
        "# Wire reference\n\n"
        "Written by `wire_reference` from the rows in `protocol/`; not to be edited.\n\n"
        "Offsets count from the start of the record. Numbers are unsigned, in the machine's byte order. A request and\n"
        "an event open with 72 bytes of the platform's, a reply with 12. What no field covers is zero.\n\n");
    for (const auto& area : protocol::catalog()) print_area(area);
    return 0;
}
