#include "simulator/device.h"

#include <charconv>
#include <fstream>
#include <iterator>
#include <sstream>

namespace norvane::simulator {

namespace {

/// Characters of a text, counting the lines that have been passed.
class counting_iterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    counting_iterator(const char* position, int* line) : position_(position), line_(line) {}
    reference operator*() const { return *position_; }
    counting_iterator& operator++()
    {
        if (*position_ == '\n') ++*line_;
        ++position_;
        return *this;
    }
    counting_iterator operator++(int)
    {
        counting_iterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const counting_iterator& other) const { return position_ == other.position_; }
    bool operator!=(const counting_iterator& other) const { return position_ != other.position_; }

private:
    const char* position_;
    int* line_;
};

/// Notes the line of every value while the text is parsed.
class line_recorder : public nlohmann::json_sax<json> {
public:
    line_recorder(const int& line, std::map<std::string, int>& lines) : line_(line), lines_(lines) {}

    bool null() override { return value(); }
    bool boolean(bool) override { return value(); }
    bool number_integer(number_integer_t) override { return value(); }
    bool number_unsigned(number_unsigned_t) override { return value(); }
    bool number_float(number_float_t, const string_t&) override { return value(); }
    bool string(string_t&) override { return value(); }
    bool binary(binary_t&) override { return value(); }
    bool start_object(std::size_t) override { return enter(false); }
    bool key(string_t& name) override
    {
        levels_.back().name = name;
        return true;
    }
    bool end_object() override { return leave(); }
    bool start_array(std::size_t) override { return enter(true); }
    bool end_array() override { return leave(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& failure) override
    {
        message_ = failure.what();
        return false;
    }

    [[nodiscard]] const std::string& message() const { return message_; }

private:
    struct level {
        bool array;
        std::string name;
        std::size_t index;
    };

    [[nodiscard]] std::string path() const
    {
        std::string all;
        for (const level& each : levels_) all += "/" + (each.array ? std::to_string(each.index) : each.name);
        return all;
    }
    bool value()
    {
        lines_[path()] = line_;
        passed();
        return true;
    }
    bool enter(bool array)
    {
        lines_[path()] = line_;
        levels_.push_back({array, "", 0});
        return true;
    }
    bool leave()
    {
        levels_.pop_back();
        passed();
        return true;
    }
    void passed()
    {
        if (!levels_.empty() && levels_.back().array) ++levels_.back().index;
    }

    const int& line_;
    std::map<std::string, int>& lines_;
    std::vector<level> levels_;
    std::string message_;
};

}  // namespace

bool parse_number(const std::string& text, std::uint32_t& number)
{
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const char* const begin = text.data() + (hexadecimal ? 2 : 0);
    const char* const end = text.data() + text.size();
    if (!hexadecimal && text.starts_with("-")) {
        std::int32_t negative = 0;
        const auto parsed = std::from_chars(begin, end, negative);
        number = static_cast<std::uint32_t>(negative);
        return parsed.ec == std::errc() && parsed.ptr == end;
    }
    const auto parsed = std::from_chars(begin, end, number, hexadecimal ? 16 : 10);
    return parsed.ec == std::errc() && parsed.ptr == end && begin != end;
}

device::device(const std::string& file) : name_(file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw device_error(file + ": cannot be read");
    std::ostringstream text;
    text << stream.rdbuf();
    parse(text.str());
}

device::device(std::string name, const std::string& text) : name_(std::move(name)) { parse(text); }

void device::parse(const std::string& text)
{
    int line = 1;
    line_recorder recorder(line, lines_);
    const char* const begin = text.data();
    if (!json::sax_parse(counting_iterator(begin, &line), counting_iterator(begin + text.size(), &line), &recorder)) {
        throw device_error(name_ + ":" + std::to_string(line) + ": is no JSON: " + recorder.message());
    }
    content_ = json::parse(text);
    if (!content_.is_object()) root().fail("an object");
}

int device::line_of(const std::string& path) const
{
    const auto found = lines_.find(path);
    return found == lines_.end() ? 1 : found->second;
}

node::node(const device& owner, const json* value, std::string path)
    : owner_(&owner), value_(value), path_(std::move(path))
{
}

node node::operator[](const std::string& name) const
{
    if (value_ == nullptr) return *this;
    if (!value_->is_object()) fail("an object");
    const auto found = value_->find(name);
    return {*owner_, found == value_->end() ? nullptr : &*found, path_ + "/" + name};
}

node node::at(const std::string& name) const
{
    node member = (*this)[name];
    if (!member) fail("a member \"" + name + "\"");
    return member;
}

std::vector<node> node::elements() const
{
    std::vector<node> all;
    if (value_ == nullptr) return all;
    if (!value_->is_array()) fail("an array");
    for (std::size_t i = 0; i < value_->size(); ++i) {
        all.emplace_back(*owner_, &(*value_)[i], path_ + "/" + std::to_string(i));
    }
    return all;
}

std::vector<std::pair<std::string, node>> node::members() const
{
    std::vector<std::pair<std::string, node>> all;
    if (value_ == nullptr) return all;
    if (!value_->is_object()) fail("an object");
    for (const auto& [name, value] : value_->items()) {
        all.emplace_back(name, node(*owner_, &value, path_ + "/" + name));
    }
    return all;
}

std::uint32_t node::number() const
{
    std::uint32_t number = 0;
    if (value_->is_number_unsigned() && value_->get<std::uint64_t>() <= UINT32_MAX) return value_->get<std::uint32_t>();
    if (value_->is_number_integer() && value_->get<std::int64_t>() < 0 && value_->get<std::int64_t>() >= INT32_MIN) {
        return static_cast<std::uint32_t>(value_->get<std::int32_t>());
    }
    if (value_->is_string() && parse_number(value_->get<std::string>(), number)) return number;
    fail("a 32-bit number");
}

std::uint32_t node::number_or(std::uint32_t otherwise) const { return value_ == nullptr ? otherwise : number(); }

std::string node::text() const
{
    if (!value_->is_string()) fail("a text");
    return value_->get<std::string>();
}

std::string node::text_or(const std::string& otherwise) const { return value_ == nullptr ? otherwise : text(); }

bool node::flag_or(bool otherwise) const
{
    if (value_ == nullptr) return otherwise;
    if (!value_->is_boolean()) fail("true or false");
    return value_->get<bool>();
}

std::filesystem::path node::file() const { return std::filesystem::path(owner_->name_).parent_path() / text(); }

std::vector<char> node::bytes() const
{
    const std::string digits = text();
    std::vector<char> all;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        unsigned char byte = 0;
        const char* const end = digits.data() + i + 2;
        if (i + 2 > digits.size() || std::from_chars(digits.data() + i, end, byte, 16).ptr != end) {
            fail("bytes, as pairs of hexadecimal digits");
        }
        all.push_back(static_cast<char>(byte));
    }
    return all;
}

bool node::is_text() const { return value_ != nullptr && value_->is_string(); }
bool node::is_object() const { return value_ != nullptr && value_->is_object(); }

void node::fail(const std::string& expected) const
{
    throw device_error(owner_->name_ + ":" + std::to_string(owner_->line_of(path_)) + ": " +
                       (path_.empty() ? "the file" : path_) + ": expected " + expected);
}

}  // namespace norvane::simulator
