// Users: logins and logouts, rights, authentication modes, hidden accounts, the local user list.
#pragma once

#include "platform/bmc_mc.h"
#include "platform/emw_osw.h"
#include "tarn_types.h"

#include <string>

namespace norvane {

/// The application's handle on the service's user interface.
///
/// Every operation is one synchronous request: it blocks until the service has answered and returns
/// the service's result, 0 for success. Outputs are written from the reply whatever the result; when
/// no reply arrives the result is 0 and the outputs are 0. An output that is passed by pointer must not
/// be null: the operation then reports a bad argument, sends nothing and returns 0x04010403
/// (`tarn_user_idm_login` does not check). No other argument is checked. Any number of threads may
/// call at the same time.
///
/// User names and passwords travel in fields of 129 bytes: of a longer text the first 129 are sent. An
/// empty text is an empty field.
class TARN_PUBLIC tarn_user_facade : public facade_template {
public:
    /// Bytes of one page of the local user list: 50 records of 936.
    static const unsigned int USER_PARTITION_SIZE = 46800;

    /// The one facade of this process. The first call creates it and waits for the service, asking up
    /// to 200 times with `emwOSWSleep(300)` after each refusal; the facade is returned even if the
    /// service never came up, and its requests then go unanswered. Later calls return at once.
    static tarn_user_facade* tarn_user_get_instance();

    ~tarn_user_facade() override;

    /// Does nothing: this facade receives no messages.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// Creates the client and waits for the service. `tarn_user_get_instance` calls it once on the new
    /// facade; applications have no use for it. Returns 0, or 0x04010404 when the service was not there
    /// after 200 checks.
    unsigned int initialize_facade(tarn_user_facade* facade);

    /// Logs a user in. `*p_cert_id` is the certificate that later names the login to
    /// `tarn_user_logout`.
    unsigned int tarn_user_account_login(const std::string& user, const std::string& password, TARN_USER_AUTHMODE mode,
                                         unsigned long* p_cert_id);
    /// Logs a user in with an additional text, of which at most 257 bytes are sent.
    unsigned int tarn_user_account_login(const std::string& user, const std::string& password, TARN_USER_AUTHMODE mode,
                                         const std::string& extra, unsigned long* p_cert_id);
    /// Logs in the user of a card. `idm` is the card's identifier, a text of which at most 65 bytes are
    /// sent. `cert_id` is written without a check: it must not be null.
    unsigned int tarn_user_idm_login(char* idm, unsigned long* cert_id);
    /// Ends the login that `cert_id` names.
    unsigned int tarn_user_logout(unsigned long cert_id);
    /// `tarn_user_logout` for background work.
    unsigned int tarn_user_logout_bkg(unsigned long cert_id);
    /// Sets the limit of a login.
    unsigned int tarn_user_logout_limit(TARN_MODE_10_VAL mode);

    /// Reads the information of the user that `kind` names. All of `info` is overwritten, whatever the
    /// result.
    unsigned int tarn_user_get_userinfo(TARN_USER_USERKIND kind, TARN_USERINFO_RECORD& info);
    /// Reads what a user may do.
    unsigned int tarn_user_get_rights(const std::string& user, const std::string& password, TARN_USER_RIGHTS* p_rights);
    /// Reads what a user may do, with an additional text, of which at most 257 bytes are sent.
    unsigned int tarn_user_get_rights(const std::string& user, const std::string& password, const std::string& extra,
                                      TARN_USER_RIGHTS* p_rights);

    /// Reads how the machine authenticates users.
    unsigned int tarn_user_get_authentication_mode(TARN_USER_AUTHMODE* p_mode);
    /// Sets how the machine authenticates users.
    unsigned int tarn_user_set_authentication_mode(TARN_USER_AUTHMODE mode);
    /// Sets how functions are authenticated.
    unsigned int tarn_user_set_func_auth_mode(TARN_MODE_10_VAL mode);

    /// Creates the hidden account that `rec` describes.
    unsigned int tarn_user_create_hide_account(const TARN_HIDE_USERINFO_RECORD& rec);
    /// Changes the hidden account that `rec` names to what it describes.
    unsigned int tarn_user_update_hide_account(const TARN_HIDE_USERINFO_RECORD& rec);
    /// Deletes the hidden account of `user`.
    unsigned int tarn_user_delete_hide_account(const std::string& user);
    /// Deletes every hidden account.
    unsigned int tarn_user_delete_all_hide_account();

    /// Prepares the list of local users, which is then read page by page:
    ///
    ///     if (users->tarn_user_get_local_user_list_prepare(arg, out1, out2) == 0) {
    ///         static TARN_USERINFO_RECORD list[50];
    ///         unsigned int count = 0;
    ///         users->tarn_user_get_local_user_list(page, count, list);  // as often as there are pages
    ///         users->tarn_user_get_local_user_list_finish(arg);
    ///     }
    ///
    /// `arg` is the service's, and so is the meaning of the two counts, which are written whatever the
    /// result. When the service agrees, the shared memory through which the pages travel is created if
    /// there is none yet; a failure of that is 0x04010403.
    unsigned int tarn_user_get_local_user_list_prepare(unsigned int arg, unsigned int& out1, unsigned int& out2);
    /// Reads one page. `list` must have room for a whole page, 50 records; `count` of them are filled.
    /// The page's number also names the shared memory that it travels through, so two threads must not
    /// read the same page at the same time. Returns 0x04010403, with nothing sent and `count` as it was,
    /// when no shared memory can be had, and the same when it cannot be freed: the records have then
    /// been copied.
    unsigned int tarn_user_get_local_user_list(unsigned int page, unsigned int& count, TARN_USERINFO_RECORD* list);
    /// Tells the service that the list is done, and deletes the shared memory whoever else is still
    /// reading: after two prepares the first finish deletes it, and the second has nothing to delete and
    /// returns 0x04010403. Without a prepare nothing is deleted and the service's result is returned.
    unsigned int tarn_user_get_local_user_list_finish(unsigned int arg);

private:
    tarn_user_facade();

    // Each of these holds `part_mutex_` for its whole run and returns 0 or 0x04010403.

    /// Creates the partition unless there is one, with room for `size` bytes, and counts.
    unsigned int create_shared_memory(unsigned long size);
    /// Finds or allocates the block that is registered under `blk_id`, and clears it.
    unsigned int alloc_shared_memory(int blk_id, void** mem, unsigned long size);
    unsigned int free_shared_memory(void* mem);
    /// Deletes the partition if one has been created since as many were deleted.
    unsigned int delete_shared_memory();

    /// Guards the two members that follow.
    OSW_Mutex_Semaphore part_mutex_;
    /// The partition of the user list; null while there is none.
    void* part_id_ = nullptr;
    /// Creations that no deletion has answered yet.
    unsigned int mem_flag_ = 0;

    static tarn_user_facade* s_the_instance_;
    static OSW_Mutex_Semaphore* mtx_;
    static bmc_mc_client* s_the_client_;
};

}  // namespace norvane
