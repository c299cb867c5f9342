// Notifications of the operation panel.
#pragma once

#include "platform/bmc_mc.h"
#include "tarn_types.h"

namespace norvane {

/// Receives the operation panel's notifications.
///
/// Derive from it, override what is of interest, and register the object with
/// `tarn_panel_facade::tarn_panel_add_observer`; remove it before it is destroyed:
///
///     class key_watcher : public norvane::tarn_panel_observer {
///         unsigned int notify_key_event(unsigned int key, TARN_PANEL_KEY_EVENT event) override;
///     };
///
///     key_watcher watcher;
///     panel->tarn_panel_add_observer(&watcher);
///     ...
///     panel->tarn_panel_remove_observer(&watcher);
///
/// The notify operations run on the platform's own thread. The service waits until they return, and
/// gets what they return; by default they do nothing and return 0.
class TARN_PUBLIC tarn_panel_observer : public observer_template {
public:
    /// Obtains a connection name from the platform; the object's address is its id. When no server
    /// listens under the name, that is reported and the object receives nothing.
    tarn_panel_observer();
    /// Takes an id and a connection name, of which the first 16 bytes are kept, as they are.
    tarn_panel_observer(long obj_id, char* connection_name);
    ~tarn_panel_observer() override;

    /// Decodes a notification, calls the notify operation that it is for and answers the service. The
    /// platform calls it. An empty or unknown notification is reported and not answered. The value
    /// returned has no meaning.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// A key of the panel was used.
    virtual unsigned int notify_key_event(unsigned int key, TARN_PANEL_KEY_EVENT event);
    /// The panel has reset itself.
    virtual unsigned int notify_auto_panel_reset();

    /// Whether `obj_id` is this observer's id.
    bool equal(long obj_id);
    long get_obj_id() const;

protected:
    long obj_id_;
    /// Zero-filled; without a terminator when all 16 bytes are used.
    char connection_name_[16];

    friend class tarn_panel_facade;
};

}  // namespace norvane
