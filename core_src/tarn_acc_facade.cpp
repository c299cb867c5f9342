#include "tarn_acc_facade.h"

#include "frame/call.h"
#include "frame/facade.h"
#include "frame/observer_registration.h"
#include "protocol/acc.h"
#include "tarn_acc_observer.h"

namespace norvane {

using frame::call;
using frame::into;
using frame::with;

namespace wire = protocol::acc;

namespace {

constexpr frame::service service{
    .interface_id = wire::interface_id,
    .source = "core_src/tarn_acc_facade",
    .failure = 0x04010a06,
    .failure_line = 233,
    .client = frame::unreached_client::kept,
};

constexpr unsigned int null_argument = 0x04010a04;

/// Sends a request without fields and returns the transport's own status.
template <typename Row>
unsigned int status_of_sending(bmc_mc_client* client)
{
    frame::exchange<Row> message;
    return static_cast<unsigned int>(message.send(client));
}

}  // namespace

tarn_acc_facade* tarn_acc_facade::s_the_instance_ = nullptr;
OSW_Mutex_Semaphore* tarn_acc_facade::mtx_ = nullptr;
bmc_mc_client* tarn_acc_facade::s_the_client_ = nullptr;

tarn_acc_facade::tarn_acc_facade() = default;
tarn_acc_facade::~tarn_acc_facade() = default;

long tarn_acc_facade::dispatch(long, char*, unsigned int, gen_ipc_msghdr) { return 0; }

tarn_acc_facade* tarn_acc_facade::tarn_acc_get_instance()
{
    return frame::instance(s_the_instance_, mtx_, [] {
        auto* const facade = new tarn_acc_facade;
        facade->initialize_facade(facade);
        return facade;
    });
}

unsigned int tarn_acc_facade::initialize_facade(tarn_acc_facade*) { return frame::initialize(service, s_the_client_); }

unsigned int tarn_acc_facade::tarn_acc_add_observer(tarn_acc_observer* obs)
{
    return frame::add_observer<wire::add_observer>(s_the_client_, obs, &tarn_acc_observer::connection_name_,
                                                   {null_argument, service.source, 533});
}

unsigned int tarn_acc_facade::tarn_acc_remove_observer(tarn_acc_observer* obs)
{
    return frame::remove_observer<wire::remove_observer>(s_the_client_, obs, {null_argument, service.source, 663});
}

unsigned int tarn_acc_facade::tarn_acc_get_rw_status(unsigned int& status)
{
    return call<wire::get_rw_status>(s_the_client_, into(status));
}

unsigned int tarn_acc_facade::tarn_acc_get_iccard_device_info(TARN_ACC_ICCARD_DEVICE_INFO& info)
{
    return call<wire::get_iccard_device_info>(s_the_client_, into(info));
}

unsigned int tarn_acc_facade::tarn_acc_set_iccard_read_type(unsigned char type)
{
    return call<wire::set_iccard_read_type>(s_the_client_, with(type));
}

unsigned int tarn_acc_facade::tarn_acc_set_felica_info(TARN_ACC_FELICA_SETTING_SITE site,
                                                       TARN_ACC_FELICA_SETTING_INFO& info)
{
    return call<wire::set_felica_info>(s_the_client_, with(site, info.first_string, info.second_string,
                                                           info.third_string, info.first_byte, info.second_byte));
}

unsigned int tarn_acc_facade::tarn_acc_get_felica_info(TARN_ACC_FELICA_SETTING_SITE site,
                                                       TARN_ACC_FELICA_SETTING_INFO& info)
{
    return call<wire::get_felica_info>(
        s_the_client_, with(site),
        into(info.first_string, info.second_string, info.third_string, info.first_byte, info.second_byte));
}

unsigned int tarn_acc_facade::tarn_acc_set_felica_read_type(TARN_ACC_TYPE_C_READ_TYPE type)
{
    return call<wire::set_felica_read_type>(s_the_client_, with(type));
}

unsigned int tarn_acc_facade::tarn_acc_change_condition(unsigned char* condition, unsigned int send_page_num)
{
    return call<wire::change_condition>(s_the_client_, with(condition, send_page_num));
}

unsigned int tarn_acc_facade::tarn_acc_send_start_prepare()
{
    return status_of_sending<wire::send_start_prepare>(s_the_client_);
}

void tarn_acc_facade::tarn_acc_send_start() { call<wire::send_start>(s_the_client_); }

void tarn_acc_facade::tarn_acc_send_end() { call<wire::send_end>(s_the_client_); }

unsigned int tarn_acc_facade::tarn_acc_send_end_finish()
{
    return status_of_sending<wire::send_end_finish>(s_the_client_);
}

unsigned int tarn_acc_facade::tarn_acc_charge_price() { return call<wire::charge_price>(s_the_client_); }

unsigned int tarn_acc_facade::tarn_acc_get_price_limit() { return call<wire::get_price_limit>(s_the_client_); }

}  // namespace norvane
