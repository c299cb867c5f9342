// Notifications of the job-information service: job logs, pages, image logs.
#pragma once

#include "platform/bmc_mc.h"
#include "tarn_types.h"

namespace norvane {

class tarn_jobinfo_facade;

/// Base of an application's receiver of job-information notifications.
///
/// Derive from it, override the notify operations that matter, and register the object:
///
///     class page_count : public norvane::tarn_jobinfo_observer {
///         unsigned int notify_print_page_info(TARN_EVENT_PRINT_PAGE const& page) override;
///     };
///
///     page_count observer;
///     auto* const jobinfo = norvane::tarn_jobinfo_facade::tarn_jobinfo_get_instance();
///     if (jobinfo->tarn_jobinfo_add_observer(&observer) != 0) return;
///     ...
///     jobinfo->tarn_jobinfo_remove_observer(&observer);  // before it is destroyed
///
/// The notify operations run on a thread of the platform's, not on the one that made the object, with no
/// lock of the library held: they may call facades. The service waits for an operation to return and is
/// told what it returns, so one that takes long holds up what follows; those that are not overridden
/// return 0 and do nothing. References and pointers into a notification are valid during the call.
class TARN_PUBLIC tarn_jobinfo_observer : public observer_template {
public:
    /// An observer under a connection name of the platform's choice, whose id is the object's address.
    /// A platform that does not listen under the name is reported; the object then receives nothing.
    tarn_jobinfo_observer();
    /// An observer with an id and a connection name of the application's choice. Of a longer name the
    /// first 16 bytes are kept. A null name is reported and leaves the object without a name that means
    /// anything: it is not to be registered.
    tarn_jobinfo_observer(long obj_id, char* connection_name);
    /// Clears the id and the connection name.
    ~tarn_jobinfo_observer() override;

    /// Called by the platform with each notification: calls the notify operation that belongs to
    /// `func_id` and answers the service with what it returns. An empty buffer is passed over; an
    /// observer without a server and an unknown `func_id` are reported. Those get no answer. The value
    /// returned has no meaning.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// A job's log has been updated.
    virtual unsigned int notify_job_update_log(TARN_EVENT_JOB_UPDATE_LOG const& log);
    /// A page has been printed.
    virtual unsigned int notify_print_page_info(TARN_EVENT_PRINT_PAGE const& page);
    /// A page has been scanned.
    virtual unsigned int notify_scan_page_info(TARN_EVENT_SCAN_PAGE const& page);
    /// A page has been sent by fax.
    virtual unsigned int notify_fax_send_page_info(TARN_EVENT_SEND_PAGE const& page);
    /// A renint operation starts. `text` is never null; it is empty when the service sends none.
    virtual unsigned int notify_renint_start_info(TARN_EVENT_RENINT_START const& start, char const* text);
    /// The creation of the image log `imagelog`, which belongs to `id`, has come to `status`.
    virtual unsigned int notify_imagelog_create_status(unsigned int id, unsigned long imagelog,
                                                       TARN_IMAGELOG_CREATE_STATUS_VAL status);

    /// Whether this is the observer's id.
    bool equal(long obj_id);
    /// The observer's id.
    long get_obj_id() const;

protected:
    friend class tarn_jobinfo_facade;

    long obj_id_;
    /// Zero-filled; a name of 16 characters has no terminator.
    char connection_name_[16];
};

}  // namespace norvane
