#include "tarn_user_facade.h"

#include "frame/call.h"
#include "frame/facade.h"
#include "frame/paged_list.h"
#include "frame/partition.h"
#include "protocol/user.h"

namespace norvane {

using frame::call;
using frame::into;
using frame::with;

namespace wire = protocol::user;

namespace {

constexpr frame::service service{
    .interface_id = wire::interface_id,
    .source = "core_src/tarn_user_facade",
    .failure = 0x04010404,
    .failure_line = 1730,
    .client = frame::unreached_client::destroyed,
};

/// A null output, or a failure of the user partition.
constexpr unsigned int failed = 0x04010403;

constexpr const char* user_partition = "TARN_DATA_USER_PARTITION";

/// Makes a call with one output, unless the output is null.
template <typename Row, typename... Values, typename Output>
unsigned int call_into(bmc_mc_client* client, const with<Values...>& in, Output* output, int line_of_check)
{
    if (output == nullptr) return frame::refuse<Row>(failed, service.source, line_of_check);
    return call<Row>(client, in, into(*output));
}

}  // namespace

const unsigned int tarn_user_facade::USER_PARTITION_SIZE;
static_assert(tarn_user_facade::USER_PARTITION_SIZE == wire::local_user_list::block_size);

tarn_user_facade* tarn_user_facade::s_the_instance_ = nullptr;
OSW_Mutex_Semaphore* tarn_user_facade::mtx_ = nullptr;
bmc_mc_client* tarn_user_facade::s_the_client_ = nullptr;

tarn_user_facade::tarn_user_facade() : part_mutex_(1) {}
tarn_user_facade::~tarn_user_facade() = default;

long tarn_user_facade::dispatch(long, char*, unsigned int, gen_ipc_msghdr) { return 0; }

tarn_user_facade* tarn_user_facade::tarn_user_get_instance()
{
    return frame::instance(s_the_instance_, mtx_, [] {
        auto* const facade = new tarn_user_facade;
        facade->initialize_facade(facade);
        return facade;
    });
}

unsigned int tarn_user_facade::initialize_facade(tarn_user_facade*)
{
    return frame::initialize(service, s_the_client_);
}

unsigned int tarn_user_facade::tarn_user_account_login(const std::string& user, const std::string& password,
                                                       TARN_USER_AUTHMODE mode, unsigned long* p_cert_id)
{
    return call_into<wire::account_login>(s_the_client_, with(user, password, mode), p_cert_id, 601);
}

unsigned int tarn_user_facade::tarn_user_account_login(const std::string& user, const std::string& password,
                                                       TARN_USER_AUTHMODE mode, const std::string& extra,
                                                       unsigned long* p_cert_id)
{
    return call_into<wire::account_login_extra>(s_the_client_, with(user, password, mode, extra), p_cert_id, 686);
}

unsigned int tarn_user_facade::tarn_user_idm_login(char* idm, unsigned long* cert_id)
{
    return call<wire::idm_login>(s_the_client_, with(idm), into(*cert_id));
}

unsigned int tarn_user_facade::tarn_user_logout(unsigned long cert_id)
{
    return call<wire::logout>(s_the_client_, with(cert_id));
}

unsigned int tarn_user_facade::tarn_user_logout_bkg(unsigned long cert_id)
{
    return call<wire::logout_bkg>(s_the_client_, with(cert_id));
}

unsigned int tarn_user_facade::tarn_user_logout_limit(TARN_MODE_10_VAL mode)
{
    return call<wire::logout_limit>(s_the_client_, with(mode));
}

unsigned int tarn_user_facade::tarn_user_get_userinfo(TARN_USER_USERKIND kind, TARN_USERINFO_RECORD& info)
{
    return call<wire::get_userinfo>(s_the_client_, with(kind), into(info));
}

unsigned int tarn_user_facade::tarn_user_get_rights(const std::string& user, const std::string& password,
                                                    TARN_USER_RIGHTS* p_rights)
{
    return call_into<wire::get_rights>(s_the_client_, with(user, password), p_rights, 921);
}

unsigned int tarn_user_facade::tarn_user_get_rights(const std::string& user, const std::string& password,
                                                    const std::string& extra, TARN_USER_RIGHTS* p_rights)
{
    return call_into<wire::get_rights_extra>(s_the_client_, with(user, password, extra), p_rights, 1002);
}

unsigned int tarn_user_facade::tarn_user_get_authentication_mode(TARN_USER_AUTHMODE* p_mode)
{
    return call_into<wire::get_authentication_mode>(s_the_client_, with(), p_mode, 1078);
}

unsigned int tarn_user_facade::tarn_user_set_authentication_mode(TARN_USER_AUTHMODE mode)
{
    return call<wire::set_authentication_mode>(s_the_client_, with(mode));
}

unsigned int tarn_user_facade::tarn_user_set_func_auth_mode(TARN_MODE_10_VAL mode)
{
    return call<wire::set_func_auth_mode>(s_the_client_, with(mode));
}

unsigned int tarn_user_facade::tarn_user_create_hide_account(const TARN_HIDE_USERINFO_RECORD& rec)
{
    return call<wire::create_hide_account>(s_the_client_, with(rec));
}

unsigned int tarn_user_facade::tarn_user_update_hide_account(const TARN_HIDE_USERINFO_RECORD& rec)
{
    return call<wire::update_hide_account>(s_the_client_, with(rec));
}

unsigned int tarn_user_facade::tarn_user_delete_hide_account(const std::string& user)
{
    return call<wire::delete_hide_account>(s_the_client_, with(user));
}

unsigned int tarn_user_facade::tarn_user_delete_all_hide_account()
{
    return call<wire::delete_all_hide_account>(s_the_client_);
}

unsigned int tarn_user_facade::tarn_user_get_local_user_list_prepare(unsigned int arg, unsigned int& out1,
                                                                     unsigned int& out2)
{
    return frame::prepare_list<wire::local_user_list_prepare>(
        s_the_client_, with(arg), into(out1, out2), [this] { return create_shared_memory(USER_PARTITION_SIZE); });
}

unsigned int tarn_user_facade::tarn_user_get_local_user_list(unsigned int page, unsigned int& count,
                                                             TARN_USERINFO_RECORD* list)
{
    return frame::get_page<wire::local_user_list>(
        s_the_client_, with(page), count, list,
        [this, page](void** block) { return alloc_shared_memory(static_cast<int>(page), block, USER_PARTITION_SIZE); },
        [this](void* block) { return free_shared_memory(block); }, failed);
}

unsigned int tarn_user_facade::tarn_user_get_local_user_list_finish(unsigned int arg)
{
    return frame::finish_list<wire::local_user_list_finish>(s_the_client_, arg,
                                                            [this] { return delete_shared_memory(); });
}

unsigned int tarn_user_facade::create_shared_memory(unsigned long size)
{
    const OSW_Guard lock(part_mutex_);
    if (part_id_ == nullptr && !frame::create_partition(part_id_, user_partition, size)) return failed;
    mem_flag_ = frame::one_more_user(mem_flag_);
    return 0;
}

unsigned int tarn_user_facade::alloc_shared_memory(int blk_id, void** mem, unsigned long size)
{
    const OSW_Guard lock(part_mutex_);
    return frame::take_block(part_id_, blk_id, mem, size, frame::found_block::cleared) ? 0 : failed;
}

unsigned int tarn_user_facade::free_shared_memory(void* mem)
{
    const OSW_Guard lock(part_mutex_);
    return frame::free_block(part_id_, mem) ? 0 : failed;
}

/// The first finish deletes the partition, however many prepares there were, and the count falls by one
/// only: a later finish then tries to delete a partition that is gone, and fails.
unsigned int tarn_user_facade::delete_shared_memory()
{
    const OSW_Guard lock(part_mutex_);
    if (mem_flag_ == 0) return 0;
    if (!frame::delete_partition(part_id_)) return failed;
    part_id_ = nullptr;
    --mem_flag_;
    return 0;
}

}  // namespace norvane
