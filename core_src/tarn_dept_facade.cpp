#include "tarn_dept_facade.h"

#include "frame/call.h"
#include "frame/facade.h"
#include "protocol/dept.h"

namespace norvane {

using frame::call;
using frame::into;
using frame::with;

namespace wire = protocol::dept;

namespace {

constexpr frame::service service{
    .interface_id = wire::interface_id,
    .source = "core_src/tarn_dept_facade",
    .failure = 0x04010801,
    .failure_line = 219,
    .client = frame::unreached_client::kept,
};

}  // namespace

tarn_dept_facade* tarn_dept_facade::s_the_instance_ = nullptr;
OSW_Mutex_Semaphore* tarn_dept_facade::mtx_ = nullptr;
bmc_mc_client* tarn_dept_facade::s_the_client_ = nullptr;

tarn_dept_facade::tarn_dept_facade() = default;
tarn_dept_facade::~tarn_dept_facade() = default;

long tarn_dept_facade::dispatch(long, char*, unsigned int, gen_ipc_msghdr) { return 0; }

tarn_dept_facade* tarn_dept_facade::tarn_dept_get_instance()
{
    return frame::instance(s_the_instance_, mtx_, [] {
        auto* const facade = new tarn_dept_facade;
        facade->initialize_facade(facade);
        return facade;
    });
}

unsigned int tarn_dept_facade::initialize_facade(tarn_dept_facade*)
{
    return frame::initialize(service, s_the_client_);
}

unsigned int tarn_dept_facade::tarn_dept_create_hide_dept(const std::string& code)
{
    return call<wire::create_hide_dept>(s_the_client_, with(code));
}

unsigned int tarn_dept_facade::tarn_dept_add_hide_dept(const TARN_DEPT_DEPTINFO& department)
{
    return call<wire::add_hide_dept>(s_the_client_, with(department));
}

unsigned int tarn_dept_facade::tarn_dept_update_hide_dept(const TARN_DEPT_DEPTINFO& department)
{
    return call<wire::update_hide_dept>(s_the_client_, with(department));
}

unsigned int tarn_dept_facade::tarn_dept_delete_hide_dept(const std::string& code)
{
    return call<wire::delete_hide_dept>(s_the_client_, with(code));
}

unsigned int tarn_dept_facade::tarn_dept_delete_all_hide_dept()
{
    return call<wire::delete_all_hide_dept>(s_the_client_);
}

unsigned int tarn_dept_facade::tarn_dept_retrieve_hide_dept(const std::string& code, TARN_DEPT_DEPTINFO& department)
{
    return call<wire::retrieve_hide_dept>(s_the_client_, with(code), into(department));
}

unsigned int tarn_dept_facade::tarn_dept_reset_hide_dept_counter(const std::string& code)
{
    return call<wire::reset_hide_dept_counter>(s_the_client_, with(code));
}

unsigned int tarn_dept_facade::tarn_dept_set_dept_mode(TARN_DEPT_DEPT_MODE mode)
{
    return call<wire::set_dept_mode>(s_the_client_, with(mode));
}

unsigned int tarn_dept_facade::tarn_dept_get_dept_mode(TARN_DEPT_DEPT_MODE& mode)
{
    return call<wire::get_dept_mode>(s_the_client_, into(mode));
}

unsigned int tarn_dept_facade::tarn_dept_set_mix_mode(TARN_DEPT_MIX_MODE mode)
{
    return call<wire::set_mix_mode>(s_the_client_, with(mode));
}

unsigned int tarn_dept_facade::tarn_dept_get_mix_mode(TARN_DEPT_MIX_MODE& mode)
{
    return call<wire::get_mix_mode>(s_the_client_, into(mode));
}

unsigned int tarn_dept_facade::tarn_dept_set_invalid_dept_mode(TARN_DEPT_INVALID_DEPT_MODE mode)
{
    return call<wire::set_invalid_dept_mode>(s_the_client_, with(mode));
}

unsigned int tarn_dept_facade::tarn_dept_get_invalid_dept_mode(TARN_DEPT_INVALID_DEPT_MODE& mode)
{
    return call<wire::get_invalid_dept_mode>(s_the_client_, into(mode));
}

unsigned int tarn_dept_facade::tarn_dept_set_limit_action_mode(TARN_DEPT_LIMIT_ACTION action)
{
    return call<wire::set_limit_action_mode>(s_the_client_, with(action));
}

unsigned int tarn_dept_facade::tarn_dept_get_limit_action_mode(TARN_DEPT_LIMIT_ACTION& action)
{
    return call<wire::get_limit_action_mode>(s_the_client_, into(action));
}

}  // namespace norvane
