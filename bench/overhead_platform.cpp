// A platform that does nothing, so that what is counted is the library alone.
#include "platform/bmc_mc.h"
#include "platform/emw_osw.h"
#include "platform/emw_trace.h"

bmc_mc_client::bmc_mc_client() : connection_(nullptr) {}
bmc_mc_client::~bmc_mc_client() = default;
bool bmc_mc_client::bmc_mc_check_facade(const char*, long) { return connection_ == nullptr; }
long bmc_mc_client::bmc_mc_send_sync_message(long, long, char*, unsigned int, char*, unsigned int*, const char*)
{
    return connection_ == nullptr ? 0 : -1;
}
bmc_mc_observer_server* bmc_mc_observer_server::bmc_mc_get_server(const char*) { return nullptr; }
long bmc_mc_observer_server::bmc_mc_sync_reply(gen_ipc_msghdr*, char*, unsigned int) { return 0; }
facade_template::facade_template() = default;
facade_template::~facade_template() = default;
observer_template::observer_template() = default;
observer_template::~observer_template() = default;
void observer_template::create_obs_name(const char*, char*) {}

OSW_Thread_Guard::OSW_Thread_Guard() = default;
OSW_Thread_Guard::~OSW_Thread_Guard() = default;
OSW_Mutex_Semaphore::OSW_Mutex_Semaphore(int) : semaphore_(nullptr) {}
OSW_Mutex_Semaphore::~OSW_Mutex_Semaphore() = default;
OSW_Guard::OSW_Guard(OSW_Mutex_Semaphore& semaphore) : semaphore_(&semaphore) {}
OSW_Guard::~OSW_Guard() = default;
bool OSW_Guard::locked() const { return semaphore_ != nullptr; }

extern "C" {
unsigned int emwOSWCreateMutexSem(unsigned int* id, int, int)
{
    *id = 1;
    return 0;
}
unsigned int emwOSWRequestMutexSem(unsigned int, int) { return 0; }
unsigned int emwOSWReleaseMutexSem(unsigned int) { return 0; }
void emwOSWSleep(unsigned int) {}
unsigned int emwOSWIpcCreateMemPart(void**, const char*, unsigned long) { return 1; }
unsigned int emwOSWIpcAllocMemPart(void*, void**, unsigned long) { return 1; }
unsigned int emwOSWIpcRegisterBlockIdMemPart(void*, void*, int) { return 1; }
unsigned int emwOSWIpcGetBlockByIdMemPart(void*, int, void**) { return 1; }
unsigned int emwOSWIpcGetAllocSizeMemPart(void*, void*, unsigned long*) { return 1; }
unsigned int emwOSWIpcFreeMemPart(void*, void*) { return 1; }
unsigned int emwOSWIpcDeleteMemPart(void*) { return 1; }
void emwGENTrcPrintf(unsigned int, unsigned int, unsigned int, const char*, ...) {}
void utl_lib_svccall_notify(unsigned int, unsigned int, unsigned int, const char*, const char*, int) {}
}
