#include "tarn_jobinfo_facade.h"

#include "frame/call.h"
#include "frame/facade.h"
#include "frame/observer_registration.h"
#include "protocol/jobinfo.h"
#include "tarn_jobinfo_observer.h"

namespace norvane {

using frame::call;
using frame::into;
using frame::with;

namespace wire = protocol::jobinfo;

namespace {

constexpr frame::service service{
    .interface_id = wire::interface_id,
    .source = "core_src/tarn_jobinfo_facade",
    .failure = 0x04010008,
    .failure_line = 233,
    .client = frame::unreached_client::kept,
};

constexpr unsigned int no_observer = 0x04010004;

}  // namespace

tarn_jobinfo_facade* tarn_jobinfo_facade::s_the_instance_ = nullptr;
OSW_Mutex_Semaphore* tarn_jobinfo_facade::mtx_ = nullptr;
bmc_mc_client* tarn_jobinfo_facade::s_the_client_ = nullptr;

tarn_jobinfo_facade::tarn_jobinfo_facade() = default;
tarn_jobinfo_facade::~tarn_jobinfo_facade() = default;

long tarn_jobinfo_facade::dispatch(long, char*, unsigned int, gen_ipc_msghdr) { return 0; }

tarn_jobinfo_facade* tarn_jobinfo_facade::tarn_jobinfo_get_instance()
{
    return frame::instance(s_the_instance_, mtx_, [] {
        auto* const facade = new tarn_jobinfo_facade;
        facade->initialize_facade(facade);
        return facade;
    });
}

unsigned int tarn_jobinfo_facade::initialize_facade(tarn_jobinfo_facade*)
{
    return frame::initialize(service, s_the_client_);
}

unsigned int tarn_jobinfo_facade::tarn_jobinfo_add_observer(tarn_jobinfo_observer* obs)
{
    return frame::add_observer<wire::add_observer>(s_the_client_, obs, &tarn_jobinfo_observer::connection_name_,
                                                   {no_observer, service.source, __LINE__});
}

unsigned int tarn_jobinfo_facade::tarn_jobinfo_remove_observer(tarn_jobinfo_observer* obs)
{
    return frame::remove_observer<wire::remove_observer>(s_the_client_, obs, {no_observer, service.source, __LINE__});
}

unsigned int tarn_jobinfo_facade::tarn_jobinfo_retrieve_joblog(unsigned int id, TARN_JOBINFO_JOBLOG_TYPE_VAL type,
                                                               TARN_JOBINFO_JOBLOG& log)
{
    return call<wire::retrieve_joblog>(s_the_client_, with(id, type), into(log));
}

unsigned int tarn_jobinfo_facade::tarn_jobinfo_create_receive_info_list(unsigned int id,
                                                                        TARN_JOBINFO_JOBLOG_TYPE_VAL type)
{
    return call<wire::create_receive_info_list>(s_the_client_, with(id, type));
}

unsigned int tarn_jobinfo_facade::tarn_jobinfo_get_receive_info(TARN_JOBINFO_RECEIVE_INFO& info)
{
    return call<wire::get_receive_info>(s_the_client_, into(info));
}

unsigned int tarn_jobinfo_facade::tarn_jobinfo_delete_receive_info_list()
{
    return call<wire::delete_receive_info_list>(s_the_client_);
}

unsigned int tarn_jobinfo_facade::tarn_jobinfo_create_send_info_list(unsigned int id, TARN_JOBINFO_JOBLOG_TYPE_VAL type)
{
    return call<wire::create_send_info_list>(s_the_client_, with(id, type));
}

unsigned int tarn_jobinfo_facade::tarn_jobinfo_get_send_info(TARN_JOBINFO_SEND_INFO& info)
{
    return call<wire::get_send_info>(s_the_client_, into(info));
}

unsigned int tarn_jobinfo_facade::tarn_jobinfo_delete_send_info_list()
{
    return call<wire::delete_send_info_list>(s_the_client_);
}

unsigned int tarn_jobinfo_facade::tarn_jobinfo_retrieve_imagelog(unsigned long id, std::string& text)
{
    return call<wire::retrieve_imagelog>(s_the_client_, with(id), into(text));
}

unsigned int tarn_jobinfo_facade::tarn_jobinfo_delete_imagelog(unsigned long id)
{
    return call<wire::delete_imagelog>(s_the_client_, with(id));
}

}  // namespace norvane
