// Notifications of the IC card reader.
#pragma once

#include "platform/bmc_mc.h"
#include "tarn_types.h"

namespace norvane {

/// Receives the card reader's notifications.
///
/// Derive from it, override what is of interest, and register the object with
/// `tarn_acc_facade::tarn_acc_add_observer`; remove it before it is destroyed:
///
///     class card_watcher : public norvane::tarn_acc_observer {
///         unsigned int notify_iccard_detect(TARN_ACC_ICCARD_INFO& card) override;
///     };
///
///     card_watcher watcher;
///     accessory->tarn_acc_add_observer(&watcher);
///     ...
///     accessory->tarn_acc_remove_observer(&watcher);
///
/// The notify operations run on the platform's own thread. The service waits until they return, and
/// gets what they return; by default they do nothing and return 0. A record that is handed to them
/// stands in the received message and is gone when they return.
class TARN_PUBLIC tarn_acc_observer : public observer_template {
public:
    /// Obtains a connection name from the platform; the object's address is its id. When no server
    /// listens under the name, that is reported and the object receives nothing.
    tarn_acc_observer();
    /// Takes an id and a connection name, of which the first 16 bytes are kept, as they are. A null
    /// name is reported and leaves the connection name undefined.
    tarn_acc_observer(long obj_id, char* connection_name);
    ~tarn_acc_observer() override;

    /// Decodes a notification, calls the notify operation that it is for and answers the service. The
    /// platform calls it. An empty or unknown notification is reported and not answered. The value
    /// returned has no meaning.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// A card was detected.
    virtual unsigned int notify_iccard_detect(TARN_ACC_ICCARD_INFO& card);
    /// A card could not be read; `error_kind` is a code of the service.
    virtual unsigned int notify_iccard_read_error(int error_kind);
    /// The card reader's state has changed.
    virtual unsigned int notify_iccard_state_change_info(TARN_ACC_ICCARD_STATE_CHANGE_INFO& state);

    /// Whether `obj_id` is this observer's id.
    bool equal(long obj_id);
    long get_obj_id() const;

protected:
    long obj_id_;
    /// Zero-filled; without a terminator when all 16 bytes are used.
    char connection_name_[16];

    friend class tarn_acc_facade;
};

}  // namespace norvane
