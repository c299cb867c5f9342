// Logs a user in, reads what the user may do, and logs the user out.
//
//     tarnsim examples/device.json &
//     user_example
#include "tarn_user_facade.h"

#include <cstdio>

int main()
{
    norvane::tarn_user_facade* const users = norvane::tarn_user_facade::tarn_user_get_instance();

    TARN_USER_AUTHMODE mode{};
    if (const unsigned int failure = users->tarn_user_get_authentication_mode(&mode)) {
        std::printf("the device does not tell how it authenticates: 0x%08x\n", failure);
        return 1;
    }
    unsigned long cert_id = 0;
    if (const unsigned int failure = users->tarn_user_account_login("mori", "paper-crane", mode, &cert_id)) {
        std::printf("mori may not come in: 0x%08x\n", failure);
        return 1;
    }
    std::printf("mori is logged in with certificate %lu\n", cert_id);

    TARN_USER_RIGHTS rights{};
    users->tarn_user_get_rights("mori", "paper-crane", &rights);
    std::printf("rights: 0x%x\n", static_cast<unsigned int>(rights));

    if (const unsigned int failure = users->tarn_user_logout(cert_id)) {
        std::printf("mori could not be logged out: 0x%08x\n", failure);
        return 1;
    }
    std::printf("mori is logged out\n");
    return 0;
}
