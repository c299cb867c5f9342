// Reserves a web service for as long as it is used, and looks up the hdo certificates.
//
//     tarnsim examples/device.json &
//     webservice_example
#include "tarn_webservice_facade.h"

#include <cstdio>
#include <string>

int main()
{
    norvane::tarn_webservice_facade* const webservice = norvane::tarn_webservice_facade::tarn_webservice_get_instance();

    const auto kind = static_cast<TARN_WEBSERVICE_KIND>(1);
    if (const unsigned int failure = webservice->tarn_webservice_reserve(kind, "example")) {
        std::printf("somebody else has the web service: 0x%08x\n", failure);
        return 1;
    }
    std::printf("the web service is reserved\n");

    std::string first;
    std::string second;
    webservice->tarn_webservice_get_hdo_certificate_filepath(first, second);
    std::printf("the hdo certificates are %s and %s\n", first.c_str(), second.c_str());

    if (const unsigned int failure = webservice->tarn_webservice_release(kind, "example")) {
        std::printf("the web service was not released: 0x%08x\n", failure);
        return 1;
    }
    std::printf("the web service is released\n");
    return 0;
}
