// OS wrapper: locks, sleep, and named shared-memory partitions.
//
// Declarations only. Whichever platform library the application loads defines them.
// The emw... functions return 0 on success and an error code of the platform otherwise.
#pragma once

#pragma GCC visibility push(default)

/// Holds the process-wide lock of the platform for as long as the object lives.
class OSW_Thread_Guard {
public:
    OSW_Thread_Guard();
    ~OSW_Thread_Guard();
};

/// A semaphore used as a mutex: constructed with 1 it is free, with 0 it is taken.
class OSW_Mutex_Semaphore {
public:
    explicit OSW_Mutex_Semaphore(int initial);
    ~OSW_Mutex_Semaphore();
    OSW_Mutex_Semaphore(const OSW_Mutex_Semaphore&) = delete;
    OSW_Mutex_Semaphore& operator=(const OSW_Mutex_Semaphore&) = delete;

private:
    friend class OSW_Guard;
    void* semaphore_;
};

/// Holds a mutex semaphore for as long as the object lives.
class OSW_Guard {
public:
    explicit OSW_Guard(OSW_Mutex_Semaphore& semaphore);
    ~OSW_Guard();
    OSW_Guard(const OSW_Guard&) = delete;
    OSW_Guard& operator=(const OSW_Guard&) = delete;

    bool locked() const;

private:
    OSW_Mutex_Semaphore* semaphore_;
};

/// No block is registered under the id that was asked for.
const unsigned int OSW_ERR_MEMPART_BLKID_NOTFOUND = 0x20020106;

extern "C" {

/// Creates a mutex semaphore, free, and stores its nonzero id.
unsigned int emwOSWCreateMutexSem(unsigned int* id, int, int);
/// Takes the semaphore, waiting at most `timeout` milliseconds, or for ever if it is -1.
unsigned int emwOSWRequestMutexSem(unsigned int id, int timeout);
unsigned int emwOSWReleaseMutexSem(unsigned int id);

void emwOSWSleep(unsigned int count);

/// Creates the named partition of `size` bytes and stores its id.
unsigned int emwOSWIpcCreateMemPart(void** part_id, const char* name, unsigned long size);
/// Allocates a block of `size` bytes and stores its address.
unsigned int emwOSWIpcAllocMemPart(void* part_id, void** block, unsigned long size);
/// Lets the partition's other users find the block by a number.
unsigned int emwOSWIpcRegisterBlockIdMemPart(void* part_id, void* block, int block_id);
/// Stores the address of the block registered under the number.
unsigned int emwOSWIpcGetBlockByIdMemPart(void* part_id, int block_id, void** block);
/// Stores the size with which the block was allocated.
unsigned int emwOSWIpcGetAllocSizeMemPart(void* part_id, void* block, unsigned long* size);
/// Frees the block and its number.
unsigned int emwOSWIpcFreeMemPart(void* part_id, void* block);
/// Deletes the partition with all its blocks.
unsigned int emwOSWIpcDeleteMemPart(void* part_id);
}

#pragma GCC visibility pop
