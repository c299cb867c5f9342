#include "frame/partition.h"

#include "platform/emw_osw.h"

#include <cstring>

namespace norvane::frame {

namespace {

constexpr unsigned long partition_margin = 100;

bool succeeded(unsigned int code, const char* platform_call, platform_failure failed)
{
    if (code != 0) failed(platform_call, code);
    return code == 0;
}

/// A platform may report success and give no block: there is then nothing to clear.
void clear(void* block, unsigned long size)
{
    if (block != nullptr) std::memset(block, 0, size);
}

bool clear_found_block(void* part_id, void* block, found_block found, platform_failure failed)
{
    unsigned long size = 0;
    const unsigned int code = emwOSWIpcGetAllocSizeMemPart(part_id, block, &size);
    if (!succeeded(code, "emwOSWIpcGetAllocSizeMemPart", failed)) return false;
    if (found == found_block::cleared) clear(block, size);
    return true;
}

bool allocate_block(void* part_id, int block_id, void** block, unsigned long size, platform_failure failed)
{
    unsigned int code = emwOSWIpcAllocMemPart(part_id, block, size);
    if (!succeeded(code, "emwOSWIpcAllocMemPart", failed)) return false;
    code = emwOSWIpcRegisterBlockIdMemPart(part_id, *block, block_id);
    if (!succeeded(code, "emwOSWIpcRegisterBlockIdMemPart", failed)) {
        free_block(part_id, *block, failed);
        return false;
    }
    clear(*block, size);
    return true;
}

}  // namespace

bool create_partition(void*& part_id, const char* name, unsigned long size, platform_failure failed)
{
    return succeeded(emwOSWIpcCreateMemPart(&part_id, name, size + partition_margin), "emwOSWIpcCreateMemPart", failed);
}

bool take_block(void* part_id, int block_id, void** block, unsigned long size, found_block found,
                platform_failure failed)
{
    const unsigned int code = emwOSWIpcGetBlockByIdMemPart(part_id, block_id, block);
    if (code == 0) return clear_found_block(part_id, *block, found, failed);
    if (code == OSW_ERR_MEMPART_BLKID_NOTFOUND) return allocate_block(part_id, block_id, block, size, failed);
    failed("emwOSWIpcGetBlockByIdMemPart", code);
    return false;
}

bool free_block(void* part_id, void* block, platform_failure failed)
{
    return succeeded(emwOSWIpcFreeMemPart(part_id, block), "emwOSWIpcFreeMemPart", failed);
}

bool delete_partition(void* part_id, platform_failure failed)
{
    return succeeded(emwOSWIpcDeleteMemPart(part_id), "emwOSWIpcDeleteMemPart", failed);
}

}  // namespace norvane::frame
