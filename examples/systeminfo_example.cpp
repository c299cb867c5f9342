// Reads one number and one text of the device and changes the text.
//
//     tarnsim examples/device.json &
//     systeminfo_example
#include "tarn_systeminfo_facade.h"

#include <cstdio>
#include <string>

int main()
{
    // Waits for the service, for a minute at the most.
    norvane::tarn_systeminfo_facade* const systeminfo = norvane::tarn_systeminfo_facade::tarn_systeminfo_get_instance();

    const auto sleep_minutes = static_cast<TARN_ENTKEY>(1);
    unsigned int minutes = 0;
    if (const unsigned int failure = systeminfo->tarn_systeminfo_get_value(sleep_minutes, minutes)) {
        std::printf("the device does not tell when it sleeps: 0x%08x\n", failure);
        return 1;
    }
    std::printf("the device sleeps after %u minutes\n", minutes);

    const auto location = static_cast<TARN_ENTKEY>(100);
    std::string text;
    systeminfo->tarn_systeminfo_get_value(location, text);
    std::printf("it stands here: %s\n", text.c_str());

    if (const unsigned int failure = systeminfo->tarn_systeminfo_set_value(location, text + ", by the window")) {
        std::printf("it was not told its new place: 0x%08x\n", failure);
        return 1;
    }
    systeminfo->tarn_systeminfo_get_value(location, text);
    std::printf("it stands here now: %s\n", text.c_str());
    return 0;
}
