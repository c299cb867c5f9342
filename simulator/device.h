// The device file: what the stand-in service knows of the device that it stands in for. Everything that
// is read from it is checked, and what is wrong with it is said with the file, the line and what was
// expected there.
#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace norvane::simulator {

using json = nlohmann::ordered_json;

/// What is wrong with a device file: "device.json:12: /systeminfo/model: expected a number".
class device_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class device;

/// A value of the device file, and where it stands there.
class node {
public:
    node(const device& owner, const json* value, std::string path);

    /// Whether the file has this value.
    explicit operator bool() const { return value_ != nullptr; }

    /// A member of an object; absent if there is none of that name.
    [[nodiscard]] node operator[](const std::string& name) const;
    /// A member of an object that must be there.
    [[nodiscard]] node at(const std::string& name) const;

    /// The elements of an array; none if the value is absent.
    [[nodiscard]] std::vector<node> elements() const;
    /// The members of an object with their names; none if the value is absent.
    [[nodiscard]] std::vector<std::pair<std::string, node>> members() const;

    /// A number up to 32 bits: written as a number, negative ones as two's complement, or as a text
    /// such as "0x8000".
    [[nodiscard]] std::uint32_t number() const;
    [[nodiscard]] std::uint32_t number_or(std::uint32_t otherwise) const;
    [[nodiscard]] std::string text() const;
    [[nodiscard]] std::string text_or(const std::string& otherwise) const;
    [[nodiscard]] bool flag_or(bool otherwise) const;
    /// A path, written from the folder of the device file on or absolute.
    [[nodiscard]] std::filesystem::path file() const;
    /// Bytes, written as a text of hexadecimal digit pairs.
    [[nodiscard]] std::vector<char> bytes() const;

    [[nodiscard]] bool is_text() const;
    [[nodiscard]] bool is_object() const;
    [[nodiscard]] const json& value() const { return *value_; }

    /// Throws a device_error that says what was expected here.
    [[noreturn]] void fail(const std::string& expected) const;

private:
    const device* owner_;
    const json* value_;
    std::string path_;
};

class device {
public:
    /// Reads the file. Throws device_error if it cannot be read or is no JSON.
    explicit device(const std::string& file);

    /// A device made of a text; `name` stands for the file in what is said of it.
    device(std::string name, const std::string& text);

    [[nodiscard]] node root() const { return {*this, &content_, ""}; }

private:
    friend class node;

    void parse(const std::string& text);
    [[nodiscard]] int line_of(const std::string& path) const;

    std::string name_;
    json content_;
    /// The line of every value, by its JSON pointer.
    std::map<std::string, int> lines_;
};

/// A number as the text of a 32-bit number, or nothing.
bool parse_number(const std::string& text, std::uint32_t& number);

}  // namespace norvane::simulator
