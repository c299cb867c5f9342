// Describes the card reader, sends a condition to the charging accessory and charges the price.
//
//     tarnsim examples/device.json &
//     acc_example
#include "tarn_acc_facade.h"

#include <cstdio>

int main()
{
    norvane::tarn_acc_facade* const accessory = norvane::tarn_acc_facade::tarn_acc_get_instance();

    TARN_ACC_ICCARD_DEVICE_INFO reader{};
    if (const unsigned int failure = accessory->tarn_acc_get_iccard_device_info(reader)) {
        std::printf("the card reader does not tell what it is: 0x%08x\n", failure);
        return 1;
    }
    std::printf("card reader %04x:%04x\n", reader.vendor_id, reader.product_id);

    // A session is prepared, started, ended and finished, in this order.
    unsigned char condition[] = "duplex";
    accessory->tarn_acc_send_start_prepare();
    accessory->tarn_acc_send_start();
    const unsigned int refused = accessory->tarn_acc_change_condition(condition, 1);
    accessory->tarn_acc_send_end();
    accessory->tarn_acc_send_end_finish();
    if (refused != 0) {
        std::printf("the condition was refused: 0x%08x\n", refused);
        return 1;
    }
    if (const unsigned int failure = accessory->tarn_acc_charge_price()) {
        std::printf("the price could not be charged: 0x%08x\n", failure);
        return 1;
    }
    std::printf("charged; %u remain\n", accessory->tarn_acc_get_price_limit());
    return 0;
}
