// System information: settings by entry key, machine information, paper, counters.
#pragma once

#include "platform/bmc_mc.h"
#include "platform/emw_osw.h"
#include "tarn_types.h"

#include <string>

namespace norvane {

/// The application's handle on the service's system-information interface.
///
/// Every operation is one synchronous request: it blocks until the service has answered and returns
/// the service's result, 0 for success. Outputs are written from the reply whatever the result; when
/// no reply arrives the result is 0 and the outputs are 0 or empty, so check an output's plausibility
/// where an unreachable service matters. No argument is checked and no lock is held: any number of
/// threads may call at the same time.
///
/// The operations ending in `_bkg` are for background work; the service treats them apart from their
/// foreground twins, the library does not.
class TARN_PUBLIC tarn_systeminfo_facade : public facade_template {
public:
    /// The one facade of this process. The first call creates it and waits for the service, asking up
    /// to 200 times with `emwOSWSleep(300)` after each refusal; the facade is returned even if the
    /// service never came up, and its requests then go unanswered. Later calls return at once.
    static tarn_systeminfo_facade* tarn_systeminfo_get_instance();

    ~tarn_systeminfo_facade() override;

    /// Does nothing: this facade receives no messages.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// Creates the client and waits for the service. `tarn_systeminfo_get_instance` calls it once on
    /// the new facade; applications have no use for it. Returns 0, or 0x04010502 when the service was
    /// not there after 200 checks.
    unsigned int initialize_facade(tarn_systeminfo_facade* facade);

    /// Reads the number stored under `key`.
    unsigned int tarn_systeminfo_get_value(TARN_ENTKEY key, unsigned int& value);
    /// Reads the text stored under `key`, at most 1027 bytes in the device's encoding.
    unsigned int tarn_systeminfo_get_value(TARN_ENTKEY key, std::string& text);
    /// Stores a number under `key`.
    unsigned int tarn_systeminfo_set_value(TARN_ENTKEY key, unsigned int value);
    /// Stores a text under `key`. Of a longer text the first 1025 bytes are sent.
    unsigned int tarn_systeminfo_set_value(TARN_ENTKEY key, std::string text);

    /// Reads the paper information of the source that `key` names.
    unsigned int tarn_systeminfo_get_paper_info(TARN_ENTKEY key, TARN_PAPER_INFO& paper);
    /// Reads the counter that `which` names; `which` is not changed.
    unsigned int tarn_systeminfo_get_count(TARN_COUNT_INFO& which, unsigned long& count);

    /// Reads the machine information under `key` that `selector` picks, as a number.
    unsigned int tarn_systeminfo_get_machine_info(TARN_ENTKEY key, unsigned long selector, unsigned int& value);
    /// Stores the machine information under `key` that `selector` picks.
    unsigned int tarn_systeminfo_set_machine_info(TARN_ENTKEY key, unsigned long selector, unsigned int value);
    /// Reads the machine information under `key` that `selector` picks, as a text of at most 1027
    /// bytes.
    unsigned int tarn_systeminfo_get_machine_info(TARN_ENTKEY key, unsigned long selector, std::string& text);

    /// Reads the size of the panel's screen, as a code of the service.
    unsigned int tarn_systeminfo_get_screen_size(unsigned int& size);
    /// Reads the machine's model type, as a code of the service.
    unsigned int tarn_systeminfo_get_model_type(unsigned int& model);
    /// Reads whether fax encryption is valid for `key`; 0 means that it is not.
    unsigned int tarn_systeminfo_get_fax_encryption_validity(TARN_ENTKEY key, unsigned char& validity);

    /// `tarn_systeminfo_get_machine_info` for background work.
    unsigned int tarn_systeminfo_get_machine_info_bkg(TARN_ENTKEY key, unsigned long selector, unsigned int& value);
    /// `tarn_systeminfo_get_machine_info` for background work.
    unsigned int tarn_systeminfo_get_machine_info_bkg(TARN_ENTKEY key, unsigned long selector, std::string& text);
    /// `tarn_systeminfo_set_machine_info` for background work.
    unsigned int tarn_systeminfo_set_machine_info_bkg(TARN_ENTKEY key, unsigned long selector, unsigned int value);

private:
    tarn_systeminfo_facade();

    static tarn_systeminfo_facade* s_the_instance_;
    static OSW_Mutex_Semaphore* mtx_;
    static bmc_mc_client* s_the_client_;
};

}  // namespace norvane
