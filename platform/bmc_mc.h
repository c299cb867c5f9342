// Message passing: the client through which requests leave, the server through which notifications
// arrive, and the two base classes of everything that can be addressed by a message.
//
// Declarations only. Whichever platform library the application loads defines them.
#pragma once

#pragma GCC visibility push(default)

/// Opens every request and notification record. The platform fills it; everyone else passes it on.
struct gen_ipc_msghdr {
    unsigned int words[18];
};

/// One application's sending end. Any number of threads may send through it at the same time.
class bmc_mc_client {
public:
    bmc_mc_client();
    virtual ~bmc_mc_client();

    /// True once `service` offers the interface.
    bool bmc_mc_check_facade(const char* service, long interface_id);

    /// Sends `request` and blocks until the reply stands in `reply`. `*reply_length` is the room in
    /// `reply` on entry and the length of what arrived on return. Returns 0 on success; otherwise
    /// nothing was written to `reply`.
    long bmc_mc_send_sync_message(long interface_id, long func_id, char* request, unsigned int request_length,
                                  char* reply, unsigned int* reply_length, const char* service);

private:
    void* connection_;
};

/// The receiving end of this process: it calls the observers' `dispatch` on a thread of its own.
class bmc_mc_observer_server {
public:
    /// The server that listens under `connection_name`, or null when there is none. The name ends at
    /// its first NUL, or fills its 16 bytes without one.
    static bmc_mc_observer_server* bmc_mc_get_server(const char* connection_name);

    /// Answers the notification that arrived with `header`. Returns 0 on success.
    long bmc_mc_sync_reply(gen_ipc_msghdr* header, char* reply, unsigned int reply_length);
};

/// Base of every facade.
class facade_template {
public:
    facade_template();
    virtual ~facade_template();
    virtual long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) = 0;
};

/// Base of every observer.
class observer_template {
public:
    observer_template();
    virtual ~observer_template();
    virtual long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) = 0;

    /// Writes a name that no other observer has, NUL-terminated, into the 16 bytes at
    /// `connection_name`, and lets the server of this process receive under it for this object.
    void create_obs_name(const char* service_name, char* connection_name);
};

#pragma GCC visibility pop
