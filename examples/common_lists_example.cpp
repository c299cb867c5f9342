// Prints the persons of the device's address book, page by page.
//
//     tarnsim examples/device.json &
//     common_lists_example
//
// What stands where in an address is the service's affair; here the name begins behind four bytes, as
// the example device has it.
#include "tarn_common_facade.h"

#include <cstdio>
#include <vector>

int main()
{
    constexpr unsigned int page_length = 20;
    constexpr unsigned int name_offset = 4;

    // Waits for the service, for a minute at the most.
    norvane::tarn_common_facade* const common = norvane::tarn_common_facade::tarn_common_get_instance();

    unsigned int persons = 0;
    unsigned int pages = 0;
    if (const unsigned int failure = common->tarn_get_personal_address_list_prepare(page_length, persons, pages)) {
        std::printf("the device does not show its address book: 0x%08x\n", failure);
        return 1;
    }
    std::printf("%u persons on %u pages\n", persons, pages);

    std::vector<TARN_PERSONAL_ADDRESS> page(page_length);
    unsigned int result = 0;
    for (unsigned int number = 1; number <= pages && result == 0; ++number) {
        unsigned int count = 0;
        result = common->tarn_get_personal_address_list(number, count, page.data());
        for (unsigned int i = 0; i < count; ++i) {
            std::printf("  page %u: %s\n", number, reinterpret_cast<const char*>(page[i].bytes + name_offset));
        }
    }
    if (result != 0) std::printf("a page did not come: 0x%08x\n", result);

    // Whatever happened to the pages: what was prepared is finished.
    common->tarn_get_personal_address_list_finish(persons);
    return result == 0 ? 0 : 1;
}
