// Lists as the service keeps them: prepared with a page length, paged through the blocks of the
// application's partition, finished.
#pragma once

#include "simulator/errors.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace norvane::simulator {

/// One element of a list: a record of the service's.
using element = std::vector<char>;

/// The lists that applications have prepared, by process and kind of list.
class prepared_lists {
public:
    explicit prepared_lists(const errors& errors) : errors_(errors) {}

    /// Keeps a list for paging in place of an earlier one of its kind. A page has `page_length`
    /// elements, or `capacity` if that is fewer or `page_length` is 0. Returns the number of pages.
    std::uint32_t prepare(int process, const std::string& kind, std::vector<element> elements,
                          std::uint32_t page_length, std::uint32_t capacity);

    /// Writes the page into the block registered under `page` in one of the process's partitions of the
    /// names given, and counts its elements; pages count from 1. Beyond the last page there are none.
    std::uint32_t write(int process, const std::string& kind, std::uint32_t page,
                        const std::vector<std::string>& partitions, std::uint32_t& count);

    /// Forgets the list. An error if there is none.
    std::uint32_t finish(int process, const std::string& kind);

    /// Forgets the lists of processes that are gone.
    void forget_the_dead();

private:
    struct list {
        std::vector<element> elements;
        std::uint32_t page_length;
    };

    const errors& errors_;
    std::mutex mutex_;
    std::map<std::pair<int, std::string>, list> lists_;
};

}  // namespace norvane::simulator
