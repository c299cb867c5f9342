#include "tarn_panel_observer.h"

#include "frame/observer.h"
#include "protocol/panel.h"

namespace norvane {

using frame::on;

namespace wire = protocol::panel;

namespace {

constexpr frame::observer_failures failures{
    .source = "core_src/tarn_panel_observer",
    .class_name = "tarn_panel_observer",
    .constructed_without_server = {frame::unreachable, 76},
    .constructed_without_name = {},
    .empty_buffer = {frame::bad_argument, 162},
    .no_server = {frame::unreachable, 169},
    .unknown_id = {frame::bad_argument, 204},
    .detail_names_unknown_id = true,
};

}  // namespace

tarn_panel_observer::tarn_panel_observer() : obj_id_(reinterpret_cast<long>(this))
{
    frame::open_connection(*this, connection_name_, failures);
}

tarn_panel_observer::tarn_panel_observer(long obj_id, char* connection_name) : obj_id_(obj_id)
{
    frame::keep_connection_name(connection_name_, connection_name, failures);
}

tarn_panel_observer::~tarn_panel_observer() { frame::forget_connection(obj_id_, connection_name_); }

long tarn_panel_observer::dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr)
{
    return frame::dispatch<on<wire::key_event, &tarn_panel_observer::notify_key_event>,
                           on<wire::auto_panel_reset, &tarn_panel_observer::notify_auto_panel_reset>>(
        *this, failures, connection_name_, {func_id, rcv_buf, rcv_buf_len, hdr});
}

unsigned int tarn_panel_observer::notify_key_event(unsigned int, TARN_PANEL_KEY_EVENT) { return 0; }
unsigned int tarn_panel_observer::notify_auto_panel_reset() { return 0; }

bool tarn_panel_observer::equal(long obj_id) { return obj_id_ == obj_id; }
long tarn_panel_observer::get_obj_id() const { return obj_id_; }

}  // namespace norvane
