// Receiving the common service's notifications: service and network state, activation, device events.
#pragma once

#include "platform/bmc_mc.h"
#include "tarn_types.h"

namespace norvane {

class tarn_common_facade;

/// The receiving end of the common service's notifications. Derive from it, override the operations
/// that interest you, and register the object:
///
///     class toner_watch : public norvane::tarn_common_observer {
///         unsigned int notify_toner_status(unsigned char toner, unsigned char level) override
///         {
///             show(toner, level);
///             return 0;
///         }
///     };
///
///     toner_watch watch;
///     auto* const common = norvane::tarn_common_facade::tarn_common_get_instance();
///     if (common->tarn_common_add_observer(&watch) != 0) return;
///     ...
///     common->tarn_common_remove_observer(&watch);   // before `watch` is destroyed
///
/// The platform calls `dispatch` on a thread of its own, and the service waits for the answer: return
/// soon, and guard what you share with other threads. No lock of the library's is held meanwhile, so
/// facades may be called from an override. What an operation returns is the answer's result, 0 for
/// success; every operation that is not overridden returns 0 and does nothing else. A notification
/// that is unknown or has no record is not answered.
class TARN_PUBLIC tarn_common_observer : public observer_template {
public:
    /// An observer under a connection name that the platform chooses; its id is its own address. When
    /// the platform has no server to receive under the name, that is reported as a call-service error
    /// (63126) and the object receives nothing.
    tarn_common_observer();

    /// An observer with an id and a connection name of the application's choice, under which it does not
    /// itself start to receive. The first 16 bytes of the name are kept; the first 15 of them reach the
    /// service. A null name is an empty one.
    tarn_common_observer(long obj_id, char* connection_name);

    /// Clears the id and the name. The object must not be registered any more.
    ~tarn_common_observer() override;

    /// Delivers one notification: the platform calls it, applications do not. The value returned means
    /// nothing.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// The service has begun or ceased to accept requests.
    virtual unsigned int service_state_changed(TARN_ACCEPTANCE_TYPE type);
    /// The state of the network has changed.
    virtual unsigned int network_state_changed(TARN_NETWORK_TYPE type);
    /// The application is to become active on the occasion `scenario`.
    virtual unsigned int request_activate(TARN_KIND_OF_SCENARIO scenario, unsigned int argument);
    /// A user has logged out; `login` is the service's number for what has ended.
    virtual unsigned int notify_logout(unsigned long login);
    /// A connection has failed.
    virtual unsigned int notify_pbp_connection_error(TARN_EVENT_CONNECTION_ERROR error);
    /// The machine's sleep state has changed.
    virtual unsigned int notify_sleep(TARN_EVENT_SLEEP_STATE state);
    /// A USB memory has been plugged in or removed.
    virtual unsigned int notify_usb_memory_status(unsigned int status);

    /// The level of a toner has changed.
    virtual unsigned int notify_toner_status(unsigned char toner, unsigned char level);
    /// The state of the waste toner bottle has changed.
    virtual unsigned int notify_waste_toner_bottle_status(unsigned char status);
    /// The paper that is left in a source has changed.
    virtual unsigned int notify_paper_rest_status(unsigned short source, unsigned char rest);
    /// A cover has been opened or closed.
    virtual unsigned int notify_cover_status(unsigned int status);
    /// The document feeder's cover has been opened or closed.
    virtual unsigned int notify_dp_cover_status(unsigned char status);
    /// Paper has jammed or a jam has been cleared, in the document feeder as well: of the feeder's jams
    /// only the lowest byte of `status` is used.
    virtual unsigned int notify_jam_status(unsigned int status);
    /// Never called: a jam of the document feeder arrives at `notify_jam_status`.
    virtual unsigned int notify_dp_jam_status(unsigned char status);
    /// The state of the coin vendor has changed.
    virtual unsigned int notify_coin_vender_status(unsigned int status);
    /// The state of the key card has changed.
    virtual unsigned int notify_key_card_status(unsigned char status);
    /// The state of the key counter has changed.
    virtual unsigned int notify_key_counter_status(unsigned int status);

    /// The resident applications are to take another state.
    virtual unsigned int notify_resident_app_state_changed(TARN_REQ_APP_STATE state);
    /// The service asks how much memory the Java VM has free. It is 0 until the override stores it; of a
    /// wider number the low 32 bits are sent.
    virtual unsigned int notify_javavm_get_free_mem(unsigned long& free_memory);

    /// Whether `obj_id` is this observer's.
    bool equal(long obj_id);
    /// This observer's id; 0 once it is destroyed.
    long get_obj_id() const;

protected:
    friend class tarn_common_facade;

    long obj_id_;
    /// Zero-filled; a name of 16 characters has no terminator.
    char connection_name_[16];
};

}  // namespace norvane
