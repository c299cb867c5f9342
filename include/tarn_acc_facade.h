// The card reader and the charging accessory: IC cards, FeliCa settings, sending, prices.
#pragma once

#include "platform/bmc_mc.h"
#include "platform/emw_osw.h"
#include "tarn_types.h"

namespace norvane {

class tarn_acc_observer;

/// The application's handle on the service's accessory interface.
///
/// Every operation is one synchronous request: it blocks until the service has answered and returns
/// the service's result, 0 for success, unless it says otherwise. Outputs are written from the reply
/// whatever the result; when no reply arrives the result is 0 and the outputs are 0 or empty. No
/// argument but a null observer is checked, and no lock is held: any number of threads may call at the
/// same time.
///
/// An exchange with the charging accessory is prepared, started, told of its conditions, ended and
/// finished. To keep that order is the caller's.
class TARN_PUBLIC tarn_acc_facade : public facade_template {
public:
    /// The one facade of this process. The first call creates it and waits for the service, asking up
    /// to 200 times with `emwOSWSleep(300)` after each refusal; the facade is returned even if the
    /// service never came up, and its requests then go unanswered. Later calls return at once.
    static tarn_acc_facade* tarn_acc_get_instance();

    ~tarn_acc_facade() override;

    /// Does nothing: this facade receives no messages.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// Creates the client and waits for the service. `tarn_acc_get_instance` calls it once on the new
    /// facade; applications have no use for it. Returns 0, or 0x04010A06 when the service was not there
    /// after 200 checks.
    unsigned int initialize_facade(tarn_acc_facade* facade);

    /// Registers `obs`, under its address and connection name, for the card reader's notifications.
    /// Remove it before it is destroyed. A null observer is reported and is 0x04010A04.
    unsigned int tarn_acc_add_observer(tarn_acc_observer* obs);
    /// Removes `obs`. A null observer is reported and is 0x04010A04.
    unsigned int tarn_acc_remove_observer(tarn_acc_observer* obs);

    /// Reads the card reader's status, a code of the service.
    unsigned int tarn_acc_get_rw_status(unsigned int& status);
    /// Reads what the card reader is.
    unsigned int tarn_acc_get_iccard_device_info(TARN_ACC_ICCARD_DEVICE_INFO& info);
    /// Sets which kind of card is read.
    unsigned int tarn_acc_set_iccard_read_type(unsigned char type);

    /// Stores the FeliCa settings of a site; of each string the first 16 bytes. `info` is not changed.
    unsigned int tarn_acc_set_felica_info(TARN_ACC_FELICA_SETTING_SITE site, TARN_ACC_FELICA_SETTING_INFO& info);
    /// Reads the FeliCa settings of a site. A string that the service has filled to all its 16 bytes is
    /// read on into what follows it, up to the first NUL: it is then longer than 16 characters.
    unsigned int tarn_acc_get_felica_info(TARN_ACC_FELICA_SETTING_SITE site, TARN_ACC_FELICA_SETTING_INFO& info);
    /// Sets how FeliCa type-C cards are read.
    unsigned int tarn_acc_set_felica_read_type(TARN_ACC_TYPE_C_READ_TYPE type);

    /// Tells the charging accessory of a changed condition. `condition` is sent up to its first zero
    /// byte, and at most 255 bytes of it; it must not be null. `send_page_num` has nothing to do with
    /// its length.
    unsigned int tarn_acc_change_condition(unsigned char* condition, unsigned int send_page_num);
    /// Prepares sending. Returns the transport's status, 0 when a reply arrived; what the service
    /// answered is not told.
    unsigned int tarn_acc_send_start_prepare();
    /// Starts sending. Whether that worked is not told.
    void tarn_acc_send_start();
    /// Ends sending. Whether that worked is not told.
    void tarn_acc_send_end();
    /// Finishes sending. Returns the transport's status, 0 when a reply arrived; what the service
    /// answered is not told.
    unsigned int tarn_acc_send_end_finish();

    /// Charges the price.
    unsigned int tarn_acc_charge_price();
    /// Returns the word with which the service answers a question for the price limit.
    unsigned int tarn_acc_get_price_limit();

private:
    tarn_acc_facade();

    static tarn_acc_facade* s_the_instance_;
    static OSW_Mutex_Semaphore* mtx_;
    static bmc_mc_client* s_the_client_;
};

}  // namespace norvane
