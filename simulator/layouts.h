// Layouts of the service's records, as the device file names their fields. A record's content is
// written in the device file either as bytes or, where it has a layout, by its fields' names.
#pragma once

#include "simulator/device.h"

#include <map>
#include <span>
#include <string>
#include <vector>

namespace norvane::simulator {

/// Records whose size only the service knows take as much room as this.
inline constexpr std::size_t open_ended_record = 1024;

/// One named field of a record.
struct layout_field {
    enum class form { number, text, bytes };
    std::string name;
    form what;
    std::size_t offset;
    std::size_t size;
    /// A password or the like, which nobody is shown.
    bool is_secret;
};

/// What becomes of a record's secret fields when it is described.
enum class secrets { told, masked, left_out };

class layouts {
public:
    /// Reads the device file's "layouts": {"TARN_DOC_INFO": {"fields": [{"name": "id", "offset": 0,
    /// "type": "u32"}, {"name": "title", "offset": 4, "type": "text", "size": 64}, ...]}}. Types are
    /// u8, u16, u32, text and bytes. A field with "secret": true is a password or the like.
    explicit layouts(const node& device);

    /// A record of `size` bytes from its content: a text of hexadecimal digits, or an object whose
    /// members are fields of the type's layout. What is not named is zero.
    [[nodiscard]] std::vector<char> fill(const std::string& type, std::size_t size, const node& content) const;

    /// The content of a record, as `fill` reads it: fields where the type has a layout, else bytes.
    [[nodiscard]] json describe(const std::string& type, std::span<const char> record,
                                secrets kept = secrets::told) const;

    /// The value of a number field; 0 where the type has no such field.
    [[nodiscard]] std::uint32_t number(const std::string& type, std::span<const char> record,
                                       const std::string& field) const;
    /// The value of a text field; empty where the type has no such field.
    [[nodiscard]] std::string text(const std::string& type, std::span<const char> record,
                                   const std::string& field) const;
    /// Stores a number in a field, if the type has it.
    void set(const std::string& type, std::span<char> record, const std::string& field, std::uint32_t value) const;
    /// A record of another type about the same thing: the fields that both layouts name, zero the rest.
    [[nodiscard]] std::vector<char> convert(const std::string& from, std::span<const char> record,
                                            const std::string& to, std::size_t size) const;
    /// Where a field is, or null where the type has none of that name.
    [[nodiscard]] const layout_field* find(const std::string& type, const std::string& field) const;

private:
    std::map<std::string, std::vector<layout_field>> layouts_;
};

/// What stands for a secret.
inline constexpr const char* masked_value = "***";

/// Bytes as pairs of hexadecimal digits.
std::string hexadecimal(std::span<const char> bytes);

}  // namespace norvane::simulator
