#include "tarn_common_observer.h"

#include "frame/observer.h"
#include "protocol/common.h"

namespace norvane {

using frame::on;

namespace wire = protocol::common;

namespace {

constexpr frame::observer_failures failures{
    .source = "core_src/tarn_common_observer",
    .class_name = "tarn_common_observer",
    .constructed_without_server = {frame::unreachable, 82},
    .constructed_without_name = {},
    .empty_buffer = {},
    .no_server = {frame::unreachable, 179},
    .unknown_id = {frame::bad_argument, 414},
    .detail_names_unknown_id = true,
};

}  // namespace

tarn_common_observer::tarn_common_observer() : obj_id_(reinterpret_cast<long>(this))
{
    frame::open_connection(*this, connection_name_, failures);
}

tarn_common_observer::tarn_common_observer(long obj_id, char* connection_name) : obj_id_(obj_id)
{
    frame::keep_connection_name(connection_name_, connection_name, failures);
}

tarn_common_observer::~tarn_common_observer() { frame::forget_connection(obj_id_, connection_name_); }

long tarn_common_observer::dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr)
{
    using self = tarn_common_observer;
    return frame::dispatch<
        on<wire::service_state, &self::service_state_changed>, on<wire::network_state, &self::network_state_changed>,
        on<wire::activation, &self::request_activate>, on<wire::logout, &self::notify_logout>,
        on<wire::connection_error, &self::notify_pbp_connection_error>, on<wire::sleep_state, &self::notify_sleep>,
        on<wire::usb_memory_status, &self::notify_usb_memory_status>,
        on<wire::toner_status, &self::notify_toner_status>,
        on<wire::waste_toner_bottle_status, &self::notify_waste_toner_bottle_status>,
        on<wire::paper_rest_status, &self::notify_paper_rest_status>,
        on<wire::cover_status, &self::notify_cover_status>, on<wire::dp_cover_status, &self::notify_dp_cover_status>,
        on<wire::jam_status, &self::notify_jam_status>, on<wire::dp_jam_status, &self::notify_jam_status>,
        on<wire::coin_vender_status, &self::notify_coin_vender_status>,
        on<wire::resident_app_state, &self::notify_resident_app_state_changed>,
        on<wire::key_card_status, &self::notify_key_card_status>,
        on<wire::key_counter_status, &self::notify_key_counter_status>,
        on<wire::javavm_free_memory, &self::notify_javavm_get_free_mem>>(*this, failures, connection_name_,
                                                                         {func_id, rcv_buf, rcv_buf_len, hdr});
}

unsigned int tarn_common_observer::service_state_changed(TARN_ACCEPTANCE_TYPE) { return 0; }
unsigned int tarn_common_observer::network_state_changed(TARN_NETWORK_TYPE) { return 0; }
unsigned int tarn_common_observer::request_activate(TARN_KIND_OF_SCENARIO, unsigned int) { return 0; }
unsigned int tarn_common_observer::notify_logout(unsigned long) { return 0; }
unsigned int tarn_common_observer::notify_pbp_connection_error(TARN_EVENT_CONNECTION_ERROR) { return 0; }
unsigned int tarn_common_observer::notify_sleep(TARN_EVENT_SLEEP_STATE) { return 0; }
unsigned int tarn_common_observer::notify_usb_memory_status(unsigned int) { return 0; }
unsigned int tarn_common_observer::notify_toner_status(unsigned char, unsigned char) { return 0; }
unsigned int tarn_common_observer::notify_waste_toner_bottle_status(unsigned char) { return 0; }
unsigned int tarn_common_observer::notify_paper_rest_status(unsigned short, unsigned char) { return 0; }
unsigned int tarn_common_observer::notify_cover_status(unsigned int) { return 0; }
unsigned int tarn_common_observer::notify_dp_cover_status(unsigned char) { return 0; }
unsigned int tarn_common_observer::notify_jam_status(unsigned int) { return 0; }
unsigned int tarn_common_observer::notify_dp_jam_status(unsigned char) { return 0; }
unsigned int tarn_common_observer::notify_coin_vender_status(unsigned int) { return 0; }
unsigned int tarn_common_observer::notify_key_card_status(unsigned char) { return 0; }
unsigned int tarn_common_observer::notify_key_counter_status(unsigned int) { return 0; }
unsigned int tarn_common_observer::notify_resident_app_state_changed(TARN_REQ_APP_STATE) { return 0; }
unsigned int tarn_common_observer::notify_javavm_get_free_mem(unsigned long&) { return 0; }

bool tarn_common_observer::equal(long obj_id) { return obj_id_ == obj_id; }
long tarn_common_observer::get_obj_id() const { return obj_id_; }

}  // namespace norvane
