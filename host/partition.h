// Shared-memory partitions: a file in the runtime directory that the application and the service map.
//
// Only the application that created a partition allocates from it, so which parts are free is that
// process's own business. What the service has to find, the blocks and the numbers under which they are
// registered, stands in a table at the start of the mapping that is read without a lock: an application
// that is killed at any moment leaves nothing locked.
#pragma once

#include "host/runtime_directory.h"

#include <boost/interprocess/mapped_region.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string>

namespace norvane::host {

/// A partition as its application has it.
class partition {
public:
    /// Creates the partition of `size` bytes for blocks. Throws std::system_error when it exists or
    /// cannot be made.
    partition(const std::string& name, std::size_t size);
    ~partition();
    partition(const partition&) = delete;
    partition& operator=(const partition&) = delete;

    /// A block of `size` bytes, or null when there is no room for it. The size of the partition is what
    /// counts: its own bookkeeping takes nothing of it.
    void* allocate(std::size_t size);
    /// Lets the block be found under a number. False if it is no block, or the number is taken.
    bool register_block(void* block, int id);
    /// The block registered under the number, or null.
    void* find(int id);
    /// The size with which a block was allocated. False if it is no block.
    bool size_of(void* block, std::size_t& size);
    bool free(void* block);

private:
    struct extent {
        std::size_t size;
        int slot;
    };

    std::map<std::size_t, extent>::iterator extent_of(void* block);

    std::mutex mutex_;
    std::string path_;
    std::size_t size_;
    std::unique_ptr<file_lock> owner_;
    boost::interprocess::mapped_region region_;
    /// Allocated parts by their offset behind the table.
    std::map<std::size_t, extent> extents_;
};

/// A block of another process's partition, mapped for as long as the object lives.
class foreign_block {
public:
    /// The block registered under `id` in the partition that `process` made under `name`. Empty if there
    /// is none.
    static foreign_block find(int process, const std::string& name, int id);

    [[nodiscard]] std::span<char> bytes() const { return bytes_; }
    explicit operator bool() const { return !bytes_.empty(); }

private:
    boost::interprocess::mapped_region region_;
    std::span<char> bytes_;
};

/// Removes the partitions of applications that are gone.
void sweep_partitions();

}  // namespace norvane::host
