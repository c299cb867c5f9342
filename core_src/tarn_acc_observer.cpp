#include "tarn_acc_observer.h"

#include "frame/observer.h"
#include "protocol/acc.h"

namespace norvane {

using frame::on;

namespace wire = protocol::acc;

namespace {

constexpr frame::observer_failures failures{
    .source = "core_src/tarn_acc_observer",
    .class_name = "tarn_acc_observer",
    .constructed_without_server = {frame::unreachable, 83},
    .constructed_without_name = {frame::bad_argument, 123},
    .empty_buffer = {frame::bad_argument, 214},
    .no_server = {frame::unreachable, 221},
    .unknown_id = {frame::bad_argument, 280},
    .detail_names_unknown_id = true,
};

}  // namespace

tarn_acc_observer::tarn_acc_observer() : obj_id_(reinterpret_cast<long>(this))
{
    frame::open_connection(*this, connection_name_, failures);
}

tarn_acc_observer::tarn_acc_observer(long obj_id, char* connection_name) : obj_id_(obj_id)
{
    frame::keep_connection_name(connection_name_, connection_name, failures);
}

tarn_acc_observer::~tarn_acc_observer() { frame::forget_connection(obj_id_, connection_name_); }

long tarn_acc_observer::dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr)
{
    return frame::dispatch<on<wire::iccard_detect, &tarn_acc_observer::notify_iccard_detect>,
                           on<wire::iccard_read_error, &tarn_acc_observer::notify_iccard_read_error>,
                           on<wire::iccard_state_change_info, &tarn_acc_observer::notify_iccard_state_change_info>>(
        *this, failures, connection_name_, {func_id, rcv_buf, rcv_buf_len, hdr});
}

unsigned int tarn_acc_observer::notify_iccard_detect(TARN_ACC_ICCARD_INFO&) { return 0; }
unsigned int tarn_acc_observer::notify_iccard_read_error(int) { return 0; }
unsigned int tarn_acc_observer::notify_iccard_state_change_info(TARN_ACC_ICCARD_STATE_CHANGE_INFO&) { return 0; }

bool tarn_acc_observer::equal(long obj_id) { return obj_id_ == obj_id; }
long tarn_acc_observer::get_obj_id() const { return obj_id_; }

}  // namespace norvane
