#include "tools/events.h"

#include "protocol/catalog.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace norvane::tools {

namespace {

std::string command_name(std::string_view row_name)
{
    constexpr std::string_view prefix = "notify_";
    if (row_name.starts_with(prefix)) row_name.remove_prefix(prefix.size());
    std::string name(row_name);
    std::replace(name.begin(), name.end(), '_', '-');
    return name;
}

std::string short_name(const std::string& name)
{
    static const std::map<std::string, std::string> aliases = {{"key-event", "key"}, {"iccard-detect", "card"}};
    const auto found = aliases.find(name);
    return found == aliases.end() ? std::string() : found->second;
}

}  // namespace

const std::vector<event>& events()
{
    static const std::vector<event> all = [] {
        std::vector<event> made;
        for (const auto& area : protocol::catalog()) {
            for (const auto& row : area.notifications) {
                const std::string name = command_name(row.name);
                made.push_back({name, short_name(name), std::string(area.name), &row});
            }
        }
        return made;
    }();
    return all;
}

std::string describe(const frame::field_description& field)
{
    using frame::field_kind;
    switch (field.kind) {
        case field_kind::word:
        case field_kind::half:
        case field_kind::octet:
            return std::to_string(8 * field.width) + "-bit number";
        case field_kind::text:
        case field_kind::open_text:
        case field_kind::tail_text:
            return "text";
        default:
            return std::string(field.type) + ": bytes in hexadecimal, or fields as name=value,name=value";
    }
}

}  // namespace norvane::tools
