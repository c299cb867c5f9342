// Shared-memory partitions: creating one, taking a block of it by number, giving both back. Each step
// is one platform call or a few; what a facade makes of a failure is the facade's.
#pragma once

namespace norvane::frame {

/// Told of a platform call that failed: its name, and what it returned.
using platform_failure = void (*)(const char* platform_call, unsigned int code);

/// For facades that only return their own code.
inline void unmentioned(const char* /*platform_call*/, unsigned int /*code*/) {}

/// What happens to the contents of a block that was registered already.
enum class found_block { cleared, kept };

/// Creates the named partition, 100 bytes larger than `size`.
bool create_partition(void*& part_id, const char* name, unsigned long size, platform_failure failed = unmentioned);

/// Finds the block registered under `block_id`, or allocates one of `size` bytes, registers and clears
/// it. A block that cannot be registered is freed again. A block that is found and to be cleared is
/// cleared over its own size, not over `size`.
bool take_block(void* part_id, int block_id, void** block, unsigned long size, found_block found,
                platform_failure failed = unmentioned);

bool free_block(void* part_id, void* block, platform_failure failed = unmentioned);

bool delete_partition(void* part_id, platform_failure failed = unmentioned);

/// The use count of a partition that gains one more user. It restarts at 1 before it reaches the
/// largest signed 32-bit number; a count that was taken below 0 comes back to 0.
constexpr unsigned int one_more_user(unsigned int users) { return users + 1 >= 0x7FFFFFFFU ? 1 : users + 1; }

}  // namespace norvane::frame
