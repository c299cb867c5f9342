// How the tour tells what it does: one line for each thing that was asked and what came back, and a
// mark where something came back that the device file does not say.
#pragma once

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>
#include <string_view>

namespace tour {

using json = nlohmann::json;

class story {
public:
    story(json device, std::filesystem::path folder) : device_(std::move(device)), folder_(std::move(folder)) {}

    /// The device file's content.
    [[nodiscard]] const json& device() const { return device_; }

    /// The path of a file that the device file names.
    [[nodiscard]] std::filesystem::path file(const std::string& name) const { return folder_ / name; }

    /// Begins the part of one area.
    void chapter(std::string_view title);

    /// Something that happened and needs no check.
    void tell(std::string_view what);

    /// What was asked, what came back and what should have.
    template <typename Value>
    void expect(std::string_view asked, const Value& came, const Value& expected)
    {
        line(fmt::format("{}: {}", asked, came), came == expected, fmt::format("{}", expected));
    }

    /// The result of a call that is to succeed.
    void succeeded(std::string_view asked, unsigned int result);
    /// The result of a call that the service is to refuse.
    void refused(std::string_view asked, unsigned int result, unsigned int expected);

    /// What the story comes to: 0 if everything was as expected.
    int end() const;

private:
    void line(const std::string& text, bool right, const std::string& expected);

    json device_;
    std::filesystem::path folder_;
    int checks_ = 0;
    int wrong_ = 0;
};

void common(story& story);
void systeminfo(story& story);
void job(story& story);
void card(story& story);
void dept(story& story);
void jobinfo(story& story);
void webservice(story& story);

}  // namespace tour
