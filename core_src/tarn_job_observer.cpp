#include "tarn_job_observer.h"

#include "frame/observer.h"
#include "protocol/job.h"

namespace norvane {

using frame::on;

namespace wire = protocol::job;

namespace {

// An unknown id is reported like a server that is gone.
constexpr frame::observer_failures failures{
    .source = "core_src/tarn_job_observer",
    .class_name = "tarn_job_observer",
    .constructed_without_server = {frame::unreachable, 85},
    .constructed_without_name = {frame::bad_argument, 117},
    .empty_buffer = {},
    .no_server = {frame::unreachable, 192},
    .unknown_id = {frame::unreachable, 286},
    .detail_names_unknown_id = false,
};

}  // namespace

tarn_job_observer::tarn_job_observer() : obj_id_(reinterpret_cast<long>(this))
{
    frame::open_connection(*this, connection_name_, failures);
}

// No initialiser clears the name: a null one leaves what stands there.
tarn_job_observer::tarn_job_observer(long obj_id, char* connection_name) : obj_id_(obj_id)
{
    frame::keep_connection_name(connection_name_, connection_name, failures);
}

tarn_job_observer::~tarn_job_observer() { frame::forget_connection(obj_id_, connection_name_); }

long tarn_job_observer::dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr)
{
    return frame::dispatch<on<wire::job_state_changed, &tarn_job_observer::notify_job_state_changed>,
                           on<wire::scan_count, &tarn_job_observer::notify_scan_count>,
                           on<wire::start_phb, &tarn_job_observer::notify_start_phb>,
                           on<wire::disable_info, &tarn_job_observer::notify_disable_info>,
                           on<wire::main_message, &tarn_job_observer::notify_main_message>,
                           on<wire::phb_info, &tarn_job_observer::notify_phb_info>,
                           on<wire::message_info, &tarn_job_observer::notify_message_info>>(
        *this, failures, connection_name_, {func_id, rcv_buf, rcv_buf_len, hdr});
}

unsigned int tarn_job_observer::notify_job_state_changed(TARN_JOB_STATE) { return 0; }
unsigned int tarn_job_observer::notify_scan_count(unsigned int, unsigned int) { return 0; }
unsigned int tarn_job_observer::notify_start_phb(unsigned int) { return 0; }
unsigned int tarn_job_observer::notify_disable_info(unsigned int) { return 0; }
unsigned int tarn_job_observer::notify_main_message(unsigned int) { return 0; }
unsigned int tarn_job_observer::notify_phb_info(unsigned int, TARN_PHB_INFO&) { return 0; }
unsigned int tarn_job_observer::notify_message_info(unsigned int, TARN_PHB_GET_MESSAGE&) { return 0; }

bool tarn_job_observer::equal(long obj_id) { return obj_id_ == obj_id; }
long tarn_job_observer::get_obj_id() const { return obj_id_; }

}  // namespace norvane
