// Job information: logs of finished jobs, their receive and send records, image logs.
#pragma once

#include "platform/bmc_mc.h"
#include "platform/emw_osw.h"
#include "tarn_types.h"

#include <string>

namespace norvane {

class tarn_jobinfo_observer;

/// The application's handle on the service's job-information interface.
///
/// Every operation is one synchronous request: it blocks until the service has answered and returns
/// the service's result, 0 for success. Outputs are written from the reply whatever the result; when
/// no reply arrives the result is 0 and the outputs are 0 or empty, so check an output's plausibility
/// where an unreachable service matters. No lock is held: any number of threads may call at the same
/// time.
///
/// The receive records of a job are read as a list that the service builds and keeps:
///
///     auto* const jobinfo = tarn_jobinfo_facade::tarn_jobinfo_get_instance();
///     if (jobinfo->tarn_jobinfo_create_receive_info_list(id, type) == 0) {
///         TARN_JOBINFO_RECEIVE_INFO info;
///         for (int left = most; left > 0 && jobinfo->tarn_jobinfo_get_receive_info(info) == 0; --left) use(info);
///         jobinfo->tarn_jobinfo_delete_receive_info_list();
///     }
///
/// and its send records alike. The walk is bounded because a service that is gone returns 0 too. There is
/// one list of each kind, and the service keeps the position in it: two threads that walk lists of one
/// kind take entries from each other.
class TARN_PUBLIC tarn_jobinfo_facade : public facade_template {
public:
    /// The one facade of this process. The first call creates it and waits for the service, asking up
    /// to 200 times with `emwOSWSleep(300)` after each refusal; the facade is returned even if the
    /// service never came up, and its requests then go through the client that was refused. Later
    /// calls return at once.
    static tarn_jobinfo_facade* tarn_jobinfo_get_instance();

    ~tarn_jobinfo_facade() override;

    /// Does nothing: this facade receives no messages.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// Creates the client and waits for the service. `tarn_jobinfo_get_instance` calls it once on the
    /// new facade; applications have no use for it. Returns 0, or 0x04010008 when the service was not
    /// there after 200 checks.
    unsigned int initialize_facade(tarn_jobinfo_facade* facade);

    /// Registers the observer with the service, which then sends it its notifications. A null observer
    /// is reported and returns 0x04010004; nothing is sent.
    unsigned int tarn_jobinfo_add_observer(tarn_jobinfo_observer* obs);
    /// Ends what `tarn_jobinfo_add_observer` began; to be called before the observer is destroyed. A
    /// null observer is reported and returns 0x04010004; nothing is sent.
    unsigned int tarn_jobinfo_remove_observer(tarn_jobinfo_observer* obs);

    /// Reads the log record of the finished job `id`. All of `log` is overwritten.
    unsigned int tarn_jobinfo_retrieve_joblog(unsigned int id, TARN_JOBINFO_JOBLOG_TYPE_VAL type,
                                              TARN_JOBINFO_JOBLOG& log);

    /// Has the service build the list of the job's receive records.
    unsigned int tarn_jobinfo_create_receive_info_list(unsigned int id, TARN_JOBINFO_JOBLOG_TYPE_VAL type);
    /// Reads the list's next receive record. What tells the end of the list is a result of the
    /// service's. All of `info` is overwritten.
    unsigned int tarn_jobinfo_get_receive_info(TARN_JOBINFO_RECEIVE_INFO& info);
    /// Has the service drop the list of receive records.
    unsigned int tarn_jobinfo_delete_receive_info_list();

    /// Has the service build the list of the job's send records.
    unsigned int tarn_jobinfo_create_send_info_list(unsigned int id, TARN_JOBINFO_JOBLOG_TYPE_VAL type);
    /// Reads the list's next send record. What tells the end of the list is a result of the service's.
    /// All of `info` is overwritten.
    unsigned int tarn_jobinfo_get_send_info(TARN_JOBINFO_SEND_INFO& info);
    /// Has the service drop the list of send records.
    unsigned int tarn_jobinfo_delete_send_info_list();

    /// Reads the text of the image log `id`, at most 259 bytes. The old content of `text` is replaced.
    unsigned int tarn_jobinfo_retrieve_imagelog(unsigned long id, std::string& text);
    /// Deletes the image log `id`.
    unsigned int tarn_jobinfo_delete_imagelog(unsigned long id);

private:
    tarn_jobinfo_facade();

    static tarn_jobinfo_facade* s_the_instance_;
    static OSW_Mutex_Semaphore* mtx_;
    static bmc_mc_client* s_the_client_;
};

}  // namespace norvane
