// Department management: hidden departments and the department-wide modes.
#pragma once

#include "platform/bmc_mc.h"
#include "platform/emw_osw.h"
#include "tarn_types.h"

#include <string>

namespace norvane {

/// The application's handle on the service's department interface.
///
/// Every operation is one synchronous request: it blocks until the service has answered and returns
/// the service's result, 0 for success. Outputs are written from the reply whatever the result; when
/// no reply arrives the result is 0 and the outputs are 0, so check an output's plausibility where an
/// unreachable service matters. No argument is checked and no lock is held: any number of threads may
/// call at the same time.
///
/// A hidden department is known by its department code, a text of which at most 9 bytes are sent: two
/// codes that agree in those are one department to the service.
class TARN_PUBLIC tarn_dept_facade : public facade_template {
public:
    /// The one facade of this process. The first call creates it and waits for the service, asking up
    /// to 200 times with `emwOSWSleep(300)` after each refusal; the facade is returned even if the
    /// service never came up, and its requests then go through the client that was refused. Later
    /// calls return at once.
    static tarn_dept_facade* tarn_dept_get_instance();

    ~tarn_dept_facade() override;

    /// Does nothing: this facade receives no messages.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// Creates the client and waits for the service. `tarn_dept_get_instance` calls it once on the new
    /// facade; applications have no use for it. Returns 0, or 0x04010801 when the service was not there
    /// after 200 checks.
    unsigned int initialize_facade(tarn_dept_facade* facade);

    /// Creates the hidden department `code`.
    unsigned int tarn_dept_create_hide_dept(const std::string& code);
    /// Adds a hidden department with the content of `department`.
    unsigned int tarn_dept_add_hide_dept(const TARN_DEPT_DEPTINFO& department);
    /// Replaces the content of a hidden department by `department`.
    unsigned int tarn_dept_update_hide_dept(const TARN_DEPT_DEPTINFO& department);
    /// Deletes the hidden department `code`.
    unsigned int tarn_dept_delete_hide_dept(const std::string& code);
    /// Deletes all hidden departments.
    unsigned int tarn_dept_delete_all_hide_dept();
    /// Reads the hidden department `code`. All of `department` is overwritten.
    unsigned int tarn_dept_retrieve_hide_dept(const std::string& code, TARN_DEPT_DEPTINFO& department);
    /// Resets the counter of the hidden department `code`.
    unsigned int tarn_dept_reset_hide_dept_counter(const std::string& code);

    /// Sets the department mode.
    unsigned int tarn_dept_set_dept_mode(TARN_DEPT_DEPT_MODE mode);
    /// Reads the department mode.
    unsigned int tarn_dept_get_dept_mode(TARN_DEPT_DEPT_MODE& mode);
    /// Sets the mix mode.
    unsigned int tarn_dept_set_mix_mode(TARN_DEPT_MIX_MODE mode);
    /// Reads the mix mode.
    unsigned int tarn_dept_get_mix_mode(TARN_DEPT_MIX_MODE& mode);
    /// Sets the invalid-department mode.
    unsigned int tarn_dept_set_invalid_dept_mode(TARN_DEPT_INVALID_DEPT_MODE mode);
    /// Reads the invalid-department mode.
    unsigned int tarn_dept_get_invalid_dept_mode(TARN_DEPT_INVALID_DEPT_MODE& mode);
    /// Sets what happens when a department reaches its limit.
    unsigned int tarn_dept_set_limit_action_mode(TARN_DEPT_LIMIT_ACTION action);
    /// Reads what happens when a department reaches its limit.
    unsigned int tarn_dept_get_limit_action_mode(TARN_DEPT_LIMIT_ACTION& action);

private:
    tarn_dept_facade();

    static tarn_dept_facade* s_the_instance_;
    static OSW_Mutex_Semaphore* mtx_;
    static bmc_mc_client* s_the_client_;
};

}  // namespace norvane
