#include "tarn_jobinfo_observer.h"

#include "frame/observer.h"
#include "protocol/jobinfo.h"

namespace norvane {

using frame::on;

namespace wire = protocol::jobinfo;

namespace {

constexpr frame::observer_failures failures{
    .source = "core_src/tarn_jobinfo_observer",
    .class_name = "tarn_jobinfo_observer",
    .constructed_without_server = {frame::unreachable, 72},
    .constructed_without_name = {frame::bad_argument, 100},
    .empty_buffer = {},
    .no_server = {frame::unreachable, 176},
    .unknown_id = {frame::unreachable, 259},
    .detail_names_unknown_id = false,
};

}  // namespace

tarn_jobinfo_observer::tarn_jobinfo_observer() : obj_id_(reinterpret_cast<long>(this))
{
    frame::open_connection(*this, connection_name_, failures);
}

tarn_jobinfo_observer::tarn_jobinfo_observer(long obj_id, char* connection_name) : obj_id_(obj_id)
{
    frame::keep_connection_name(connection_name_, connection_name, failures);
}

tarn_jobinfo_observer::~tarn_jobinfo_observer() { frame::forget_connection(obj_id_, connection_name_); }

bool tarn_jobinfo_observer::equal(long obj_id) { return obj_id_ == obj_id; }
long tarn_jobinfo_observer::get_obj_id() const { return obj_id_; }

long tarn_jobinfo_observer::dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr)
{
    return frame::dispatch<on<wire::job_update_log, &tarn_jobinfo_observer::notify_job_update_log>,
                           on<wire::print_page_info, &tarn_jobinfo_observer::notify_print_page_info>,
                           on<wire::scan_page_info, &tarn_jobinfo_observer::notify_scan_page_info>,
                           on<wire::fax_send_page_info, &tarn_jobinfo_observer::notify_fax_send_page_info>,
                           on<wire::renint_start_info, &tarn_jobinfo_observer::notify_renint_start_info>,
                           on<wire::imagelog_create_status, &tarn_jobinfo_observer::notify_imagelog_create_status>>(
        *this, failures, connection_name_, {func_id, rcv_buf, rcv_buf_len, hdr});
}

unsigned int tarn_jobinfo_observer::notify_job_update_log(TARN_EVENT_JOB_UPDATE_LOG const&) { return 0; }
unsigned int tarn_jobinfo_observer::notify_print_page_info(TARN_EVENT_PRINT_PAGE const&) { return 0; }
unsigned int tarn_jobinfo_observer::notify_scan_page_info(TARN_EVENT_SCAN_PAGE const&) { return 0; }
unsigned int tarn_jobinfo_observer::notify_fax_send_page_info(TARN_EVENT_SEND_PAGE const&) { return 0; }
unsigned int tarn_jobinfo_observer::notify_renint_start_info(TARN_EVENT_RENINT_START const&, char const*) { return 0; }
unsigned int tarn_jobinfo_observer::notify_imagelog_create_status(unsigned int, unsigned long,
                                                                  TARN_IMAGELOG_CREATE_STATUS_VAL)
{
    return 0;
}

}  // namespace norvane
