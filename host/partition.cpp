#include "host/partition.h"

#include "platform/emw_osw.h"

#include <boost/interprocess/exceptions.hpp>
#include <boost/interprocess/file_mapping.hpp>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <new>
#include <set>
#include <system_error>

namespace norvane::host {

namespace ipc = boost::interprocess;

namespace {

/// One registered block, for other processes to find. `size` is 0 while the slot is free; it is stored
/// last and cleared first.
struct slot {
    std::atomic<std::uint32_t> id;
    std::atomic<std::uint32_t> offset;
    std::atomic<std::uint32_t> size;
};
static_assert(std::atomic<std::uint32_t>::is_always_lock_free, "the table is read by other processes");

constexpr std::size_t table_slots = 1024;
using table = std::array<slot, table_slots>;

/// Blocks start at multiples of this.
constexpr std::size_t alignment = 8;
constexpr std::size_t data_offset = (sizeof(table) + 4095) / 4096 * 4096;

std::size_t rounded(std::size_t size) { return (size + alignment - 1) / alignment * alignment; }

table& table_of(const ipc::mapped_region& region) { return *static_cast<table*>(region.get_address()); }

std::string partition_directory()
{
    std::string path = runtime_directory() + "/partitions";
    mkdir(path.c_str(), S_IRWXU);
    return path;
}

std::string partition_path(int process, const std::string& name)
{
    return partition_directory() + "/" + std::to_string(process) + "." + name;
}

ipc::mapped_region map(const std::string& path)
{
    const ipc::file_mapping file(path.c_str(), ipc::read_write);
    return {file, ipc::read_write};
}

/// Makes a file of that length that was not there before, and keeps it locked for its owner.
std::unique_ptr<file_lock> make_file(const std::string& path, std::size_t length)
{
    const directory_lock making;
    const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0) throw std::system_error(errno, std::generic_category(), path);
    const int outcome = ftruncate(descriptor, static_cast<off_t>(length));
    const int reason = errno;
    close(descriptor);
    if (outcome != 0) {
        unlink(path.c_str());
        throw std::system_error(reason, std::generic_category(), path);
    }
    return std::make_unique<file_lock>(path, file_lock::mode::try_once);
}

}  // namespace

partition::partition(const std::string& name, std::size_t size)
    : path_(partition_path(getpid(), name)),
      size_(size),
      owner_(make_file(path_, data_offset + rounded(size))),
      region_(map(path_))
{
    new (region_.get_address()) table{};
}

partition::~partition() { unlink(path_.c_str()); }

void* partition::allocate(std::size_t size)
{
    if (size == 0) return nullptr;
    const std::lock_guard lock(mutex_);
    std::size_t offset = 0;
    for (const auto& [begin, taken] : extents_) {
        if (begin - offset >= size) break;
        offset = begin + rounded(taken.size);
    }
    if (offset > size_ || size_ - offset < size) return nullptr;
    extents_[offset] = {size, -1};
    return static_cast<char*>(region_.get_address()) + data_offset + offset;
}

bool partition::register_block(void* block, int id)
{
    const std::lock_guard lock(mutex_);
    const auto found = extent_of(block);
    if (found == extents_.end() || found->second.slot >= 0) return false;
    table& slots = table_of(region_);
    int free = -1;
    for (std::size_t i = 0; i < table_slots; ++i) {
        if (slots[i].size == 0) {
            if (free < 0) free = static_cast<int>(i);
        } else if (slots[i].id == static_cast<std::uint32_t>(id)) {
            return false;
        }
    }
    if (free < 0) return false;
    slot& taken = slots[static_cast<std::size_t>(free)];
    taken.id = static_cast<std::uint32_t>(id);
    taken.offset = static_cast<std::uint32_t>(found->first);
    taken.size = static_cast<std::uint32_t>(found->second.size);
    found->second.slot = free;
    return true;
}

void* partition::find(int id)
{
    const std::lock_guard lock(mutex_);
    const table& slots = table_of(region_);
    for (const auto& [offset, taken] : extents_) {
        if (taken.slot >= 0 && slots[static_cast<std::size_t>(taken.slot)].id == static_cast<std::uint32_t>(id)) {
            return static_cast<char*>(region_.get_address()) + data_offset + offset;
        }
    }
    return nullptr;
}

bool partition::size_of(void* block, std::size_t& size)
{
    const std::lock_guard lock(mutex_);
    const auto found = extent_of(block);
    if (found == extents_.end()) return false;
    size = found->second.size;
    return true;
}

bool partition::free(void* block)
{
    const std::lock_guard lock(mutex_);
    const auto found = extent_of(block);
    if (found == extents_.end()) return false;
    if (found->second.slot >= 0) table_of(region_)[static_cast<std::size_t>(found->second.slot)].size = 0;
    extents_.erase(found);
    return true;
}

std::map<std::size_t, partition::extent>::iterator partition::extent_of(void* block)
{
    const auto address = reinterpret_cast<std::uintptr_t>(block);
    const auto begin = reinterpret_cast<std::uintptr_t>(region_.get_address()) + data_offset;
    return address < begin ? extents_.end() : extents_.find(address - begin);
}

foreign_block foreign_block::find(int process, const std::string& name, int id)
{
    foreign_block block;
    try {
        block.region_ = map(partition_path(process, name));
    } catch (const ipc::interprocess_exception&) {
        return block;
    }
    const std::size_t length = block.region_.get_size();
    if (length < data_offset) return block;
    for (const slot& each : table_of(block.region_)) {
        const std::size_t size = each.size;
        if (size == 0 || each.id != static_cast<std::uint32_t>(id)) continue;
        const std::size_t offset = data_offset + each.offset;
        // What another process wrote is believed only as far as it stays inside the mapping.
        if (offset <= length && size <= length - offset) {
            block.bytes_ = {static_cast<char*>(block.region_.get_address()) + offset, size};
        }
        break;
    }
    return block;
}

void sweep_partitions()
{
    const directory_lock sweeping;
    for (const auto& entry : std::filesystem::directory_iterator(partition_directory())) {
        const file_lock owner(entry.path().string(), file_lock::mode::try_once);
        if (owner.held()) unlink(entry.path().c_str());
    }
}

namespace {

constexpr unsigned int part_exists = 0x20020101;
constexpr unsigned int no_such_part = 0x20020102;
constexpr unsigned int no_room = 0x20020103;
constexpr unsigned int no_such_block = 0x20020104;
constexpr unsigned int not_registered = 0x20020105;

/// The partitions of this process, whose ids are their addresses.
class partition_list {
public:
    /// Never destroyed, like the facades that hold the ids; what the files leave behind is swept away.
    static partition_list& instance()
    {
        static auto* const all = new partition_list;
        return *all;
    }

    void add(std::shared_ptr<partition> made)
    {
        const std::lock_guard lock(mutex_);
        all_[made.get()] = std::move(made);
    }
    std::shared_ptr<partition> find(void* id)
    {
        const std::lock_guard lock(mutex_);
        const auto found = all_.find(id);
        return found == all_.end() ? nullptr : found->second;
    }
    bool remove(void* id)
    {
        const std::lock_guard lock(mutex_);
        return all_.erase(id) == 1;
    }

private:
    std::mutex mutex_;
    std::map<void*, std::shared_ptr<partition>> all_;
};

}  // namespace

}  // namespace norvane::host

using norvane::host::partition;
using norvane::host::partition_list;

extern "C" {

unsigned int emwOSWIpcCreateMemPart(void** part_id, const char* name, unsigned long size)
{
    try {
        norvane::host::sweep_partitions();
        auto made = std::make_shared<partition>(name, size);
        *part_id = made.get();
        partition_list::instance().add(std::move(made));
        return 0;
    } catch (const std::exception&) {
        return norvane::host::part_exists;
    }
}

unsigned int emwOSWIpcAllocMemPart(void* part_id, void** block, unsigned long size)
{
    const auto part = partition_list::instance().find(part_id);
    if (part == nullptr) return norvane::host::no_such_part;
    void* const allocated = part->allocate(size);
    if (allocated == nullptr) return norvane::host::no_room;
    *block = allocated;
    return 0;
}

unsigned int emwOSWIpcRegisterBlockIdMemPart(void* part_id, void* block, int block_id)
{
    const auto part = partition_list::instance().find(part_id);
    if (part == nullptr) return norvane::host::no_such_part;
    return part->register_block(block, block_id) ? 0 : norvane::host::not_registered;
}

unsigned int emwOSWIpcGetBlockByIdMemPart(void* part_id, int block_id, void** block)
{
    const auto part = partition_list::instance().find(part_id);
    if (part == nullptr) return norvane::host::no_such_part;
    void* const found = part->find(block_id);
    if (found == nullptr) return OSW_ERR_MEMPART_BLKID_NOTFOUND;
    *block = found;
    return 0;
}

unsigned int emwOSWIpcGetAllocSizeMemPart(void* part_id, void* block, unsigned long* size)
{
    const auto part = partition_list::instance().find(part_id);
    if (part == nullptr) return norvane::host::no_such_part;
    std::size_t allocated = 0;
    if (!part->size_of(block, allocated)) return norvane::host::no_such_block;
    *size = allocated;
    return 0;
}

unsigned int emwOSWIpcFreeMemPart(void* part_id, void* block)
{
    const auto part = partition_list::instance().find(part_id);
    if (part == nullptr) return norvane::host::no_such_part;
    return part->free(block) ? 0 : norvane::host::no_such_block;
}

unsigned int emwOSWIpcDeleteMemPart(void* part_id)
{
    return partition_list::instance().remove(part_id) ? 0 : norvane::host::no_such_part;
}
}
