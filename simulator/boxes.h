// Boxes and the documents in them: those of one kind, document boxes or fax boxes.
#pragma once

#include "simulator/area.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace norvane::simulator {

/// The boxes are known by the fields of the layouts of their records: a box has an "id", a "password",
/// without which it is open to everyone, and a "capacity"; a document has an "id" and a "size", which it
/// takes of its box's capacity. All operations may be called at the same time and return the result code.
class boxes {
public:
    /// The types of the records: a box's settings, a box of a list, and a document.
    struct record_type {
        std::string name;
        std::size_t size;
    };
    struct types {
        record_type detail;
        record_type listed;
        record_type document;
    };

    /// Reads an array of {"info": settings, "documents": [document, ...]}.
    boxes(const node& content, const environment& shared, types records);

    /// Adds a box under its id, or under the next that is free where it has none.
    std::uint32_t add(std::vector<char> info);
    /// Changes everything about a box but its id.
    std::uint32_t update(std::uint32_t id, const std::string& text, std::vector<char> info);
    std::uint32_t read(std::uint32_t id, const std::string& text, std::vector<char>& info) const;
    std::uint32_t remove(std::uint32_t id, const std::string& text);
    std::uint32_t remove_document(std::uint32_t id, const std::string& text, std::uint32_t document);
    std::uint32_t available_capacity(std::uint32_t id, std::uint32_t& capacity) const;

    [[nodiscard]] std::vector<element> list() const;
    std::uint32_t documents(std::uint32_t id, const std::string& text, std::vector<element>& found) const;

    /// The content, as the constructor reads it.
    [[nodiscard]] json saved() const;

private:
    struct box {
        std::vector<char> info;
        std::vector<element> documents;
    };
    using shelf = std::map<std::uint32_t, box>;

    /// Looks for a box that the text opens; the result code says why there is none.
    std::uint32_t open(std::uint32_t id, const std::string& text, shelf::const_iterator& found) const;

    const errors& codes_;
    const layouts& records_;
    types types_;
    mutable std::mutex mutex_;
    shelf boxes_;
};

/// Whether `text` is the password, of which the protocol carries at most `bound` bytes; without a
/// password every text is right.
bool opens(const std::string& password, const std::string& text, std::size_t bound);

}  // namespace norvane::simulator
