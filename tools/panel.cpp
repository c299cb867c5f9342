#include "tools/panel.h"

#include "protocol/panel.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace norvane::tools {

namespace {

/// Columns between the frame's sides.
constexpr std::size_t narrowest = 44;

/// A part of the picture: what stands in its upper edge, and its lines.
struct compartment {
    std::string title;
    std::vector<std::string> lines;
};

/// Columns that a text takes; its continuation bytes take none.
std::size_t columns(std::string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

/// A text of an application's on one line.
std::string printable(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](unsigned char byte) { return byte < ' ' || byte == 0x7F; }, ' ');
    return text;
}

std::string repeated(std::string_view what, std::size_t times)
{
    std::string all;
    while (times-- > 0) all += what;
    return all;
}

/// "target 1  state 2": an entry of the state, by its members.
std::string members(const json& entry)
{
    std::string all;
    for (const auto& [name, value] : entry.items()) {
        const std::string text = value.is_object()   ? members(value)
                                 : value.is_string() ? name + " " + printable(value.get<std::string>())
                                                     : name + " " + value.dump();
        all += (all.empty() ? "" : "  ") + text;
    }
    return all;
}

compartment screens_of(const json& state)
{
    compartment made{"Screens", {}};
    for (const json& screen : state.at("screens")) {
        const char* const mark = screen.at("shown").get<bool>() ? "▶" : screen.at("available").get<bool>() ? " " : "✗";
        made.lines.push_back(fmt::format("{} {:>3}  {}", mark, screen.at("display").get<unsigned int>(),
                                         printable(screen.at("name").get<std::string>())));
    }
    return made;
}

compartment texts_of(const json& state)
{
    compartment made{"Texts", {}};
    for (const json& text : state.at("texts")) {
        made.lines.push_back(fmt::format("{} {}/{}: {}", printable(text.at("key").get<std::string>()),
                                         text.at("number").get<unsigned int>(), text.at("type").get<unsigned int>(),
                                         printable(text.at("text").get<std::string>())));
    }
    return made;
}

compartment list_of(const json& state, const std::string& title, const char* member)
{
    compartment made{title, {}};
    for (const json& entry : state.at(member)) made.lines.push_back(members(entry));
    return made;
}

std::string edge(const char* left, const std::string& title, const char* right, std::size_t width)
{
    const std::string text = title.empty() ? "" : "─ " + title + " ";
    return left + text + repeated("─", width - columns(text)) + right + "\n";
}

}  // namespace

std::string picture(const json& state)
{
    const std::vector<compartment> all = {screens_of(state),
                                          texts_of(state),
                                          list_of(state, "LED", "leds"),
                                          list_of(state, "Buzzer", "buzzers"),
                                          list_of(state, "Timers", "timers"),
                                          list_of(state, "Soft ten-key", "soft_tenkeys")};
    std::size_t width = narrowest;
    for (const compartment& each : all) {
        for (const std::string& line : each.lines) width = std::max(width, columns(line) + 2);
    }
    std::string drawn;
    for (const compartment& each : all) {
        drawn += drawn.empty() ? edge("┌", each.title, "┐", width) : edge("├", each.title, "┤", width);
        for (const std::string& line : each.lines) {
            drawn += "│ " + line + std::string(width - 1 - columns(line), ' ') + "│\n";
        }
        if (each.lines.empty()) drawn += "│ -" + std::string(width - 2, ' ') + "│\n";
    }
    return drawn + edge("└", "", "┘", width);
}

void show_panel()
{
    fmt::print("{}", picture(control({{"command", "state"}, {"interface", protocol::panel::interface_id}})));
}

}  // namespace norvane::tools
