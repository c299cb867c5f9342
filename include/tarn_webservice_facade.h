// Web services: reserving and releasing them, and the paths of certificates.
#pragma once

#include "platform/bmc_mc.h"
#include "platform/emw_osw.h"
#include "tarn_types.h"

#include <string>

namespace norvane {

/// The application's handle on the service's web-service interface.
///
/// Every operation is one synchronous request, but where it says otherwise: it blocks until the service
/// has answered and returns the service's result, 0 for success. Outputs are written from the reply
/// whatever the result; when no reply arrives the result is 0 and the outputs are empty, so check an
/// output's plausibility where an unreachable service matters. No argument is checked and no lock is
/// held: any number of threads may call at the same time.
class TARN_PUBLIC tarn_webservice_facade : public facade_template {
public:
    /// The one facade of this process. The first call creates it and waits for the service, asking up
    /// to 200 times with `emwOSWSleep(300)` after each refusal; the facade is returned even if the
    /// service never came up, and its requests then go unanswered. Later calls return at once.
    static tarn_webservice_facade* tarn_webservice_get_instance();

    ~tarn_webservice_facade() override;

    /// Does nothing: this facade receives no messages.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// Creates the client and waits for the service. `tarn_webservice_get_instance` calls it once on
    /// the new facade; applications have no use for it. Returns 0, or 0x04010606 when the service was
    /// not there after 200 checks.
    unsigned int initialize_facade(tarn_webservice_facade* facade);

    /// Reserves the web service of this kind for the user of it called `name`. Of a longer name the
    /// first 127 bytes are sent.
    unsigned int tarn_webservice_reserve(TARN_WEBSERVICE_KIND kind, const std::string& name);
    /// Releases what was reserved with the same kind and name. Of a longer name the first 127 bytes are
    /// sent.
    unsigned int tarn_webservice_release(TARN_WEBSERVICE_KIND kind, const std::string& name);

    /// Reads the path of the certificate file of this type, at most 515 bytes. The old content of
    /// `path` is replaced.
    unsigned int tarn_webservice_get_certificate(TARN_SSL_FILE_TYPE type, std::string& path);

    /// Reads the paths of the two hdo certificates, each at most 515 bytes, with two requests, one
    /// after the other, and writes one line to the platform's trace before the first.
    ///
    /// Returns the result of the second request; a failure of the first does not show in it. When the
    /// second request is not answered, `second` is what `first` is and the result is the first
    /// request's.
    unsigned int tarn_webservice_get_hdo_certificate_filepath(std::string& first, std::string& second);

private:
    tarn_webservice_facade();

    static tarn_webservice_facade* s_the_instance_;
    static OSW_Mutex_Semaphore* mtx_;
    static bmc_mc_client* s_the_client_;
};

}  // namespace norvane
