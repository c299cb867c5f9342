// Lists as the service keeps them: prepared with a page length, paged through the blocks of the
// application's partition, finished.
#pragma once

#include "simulator/errors.h"

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace norvane::simulator {

/// One element of a list: a record of the service's.
using element = std::vector<char>;

/// A kind of list. Kinds that the protocol finishes by one and the same operation share `finished_as`.
struct list_kind {
    list_kind(std::string only) : name(only), finished_as(std::move(only)) {}
    list_kind(const char* only) : list_kind(std::string(only)) {}
    list_kind(std::string kind, std::string finish) : name(std::move(kind)), finished_as(std::move(finish)) {}

    std::string name;
    std::string finished_as;
};

/// The lists that applications have prepared, by process and kind of list. An application may prepare
/// several before it finishes one: as a finish tells its kinds but not the list, the lists stay until as
/// many finishes have come as prepares.
class prepared_lists {
public:
    explicit prepared_lists(const errors& errors) : errors_(errors) {}

    /// Keeps a list for paging in place of an earlier one of its kind. A page has `page_length`
    /// elements, or `capacity` if that is fewer or `page_length` is 0. Returns the number of pages.
    std::uint32_t prepare(int process, const list_kind& kind, std::vector<element> elements, std::uint32_t page_length,
                          std::uint32_t capacity);

    /// Which of a list's elements are wanted.
    using selection = std::function<bool(const element&)>;

    /// Writes the page into the block registered under `page` in one of the process's partitions of the
    /// names given, and counts its elements; pages count from 1. Beyond the last page there are none.
    /// With a selection the pages are those of the elements that it wants.
    std::uint32_t write(int process, const list_kind& kind, std::uint32_t page,
                        const std::vector<std::string>& partitions, std::uint32_t& count, const selection& wanted = {});

    /// Counts one prepared list less of those that are finished like this kind, and forgets them with
    /// the last. An error if there is none.
    std::uint32_t finish(int process, const list_kind& kind);

    /// Forgets the lists of processes that are gone.
    void forget_the_dead();

private:
    struct list {
        std::vector<element> elements;
        std::uint32_t page_length;
    };
    struct open_lists {
        std::map<std::string, list> by_name;
        std::uint32_t prepared = 0;
    };

    const errors& errors_;
    std::mutex mutex_;
    std::map<std::pair<int, std::string>, open_lists> open_;
};

}  // namespace norvane::simulator
