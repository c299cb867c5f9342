// Job notifications: what the service tells an application about its jobs.
#pragma once

#include "platform/bmc_mc.h"
#include "tarn_types.h"

namespace norvane {

class tarn_job_facade;

/// Receives the service's job notifications.
///
/// Derive from it, override the notify operations of interest, and tell the service of the object:
///
///     class counting : public norvane::tarn_job_observer {
///         unsigned int notify_scan_count(unsigned int a, unsigned int b) override;
///     };
///
///     counting observer;
///     auto* const jobs = norvane::tarn_job_facade::tarn_job_get_instance();
///     jobs->tarn_job_add_observer(&observer);
///     // ... the observer is notified ...
///     jobs->tarn_job_remove_observer(&observer);  // before it is destroyed
///
/// The notify operations run on a thread of the platform's observer server, with no lock of the library
/// held, and may call any facade. The service waits for each to return and is told its result; until
/// then it notifies no further, so an operation that takes long delays what follows. Those that are
/// not overridden return 0 and do nothing.
class TARN_PUBLIC tarn_job_observer : public observer_template {
public:
    /// An observer with a connection name of its own, which the platform makes up. Where the platform
    /// has no observer server this is reported, and the observer is never notified.
    tarn_job_observer();

    /// An observer with an identity and a connection name of the application's choice; the platform is
    /// not asked whether it receives under that name. The first 16 bytes of the name count. A null name
    /// is reported, and the observer then has no usable name: it must not be registered.
    tarn_job_observer(long obj_id, char* connection_name);

    /// Remove the observer from the service first: nothing does it here.
    ~tarn_job_observer() override;

    /// Called by the platform with each notification: calls the notify operation and answers the
    /// service. A notification that is empty, of an unknown id, or whose server is gone gets no answer;
    /// the last two are reported. The result has no meaning.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// A job's state has changed. The record is a copy.
    virtual unsigned int notify_job_state_changed(TARN_JOB_STATE state);
    /// Sheets were scanned. The meaning of the two numbers is the service's.
    virtual unsigned int notify_scan_count(unsigned int a, unsigned int b);
    /// A phone-book (phb) operation starts. Here and below, `value` is the service's own number.
    virtual unsigned int notify_start_phb(unsigned int value);
    /// Disable information has changed: `tarn_job_get_disable_info` reads it.
    virtual unsigned int notify_disable_info(unsigned int value);
    /// The main message has changed: `tarn_job_get_main_message` reads it.
    virtual unsigned int notify_main_message(unsigned int value);
    /// Phone-book information. `info` is the received record itself, valid until the operation returns;
    /// what is written there reaches nobody.
    virtual unsigned int notify_phb_info(unsigned int value, TARN_PHB_INFO& info);
    /// Message information. `message` is the received record itself, valid until the operation returns;
    /// what is written there reaches nobody.
    virtual unsigned int notify_message_info(unsigned int value, TARN_PHB_GET_MESSAGE& message);

    /// Whether this is the observer with the identity `obj_id`.
    bool equal(long obj_id);
    /// The observer's identity: what its constructor was given, else its own address.
    long get_obj_id() const;

protected:
    friend class tarn_job_facade;

    long obj_id_;
    char connection_name_[16];
};

}  // namespace norvane
