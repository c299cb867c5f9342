// Another application of the common service, for tests that need one to run beside them or to be killed.
//
//     common_application page ROUNDS   pages the address book, so many times; 0 if every page was right
//     common_application hold          gets one page and waits, with its list unfinished
//     common_application observe       registers an observer and waits
#include "tarn_common_facade.h"
#include "tarn_common_observer.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

using norvane::tarn_common_facade;

constexpr unsigned int page_length = 20;
constexpr unsigned int persons_of_the_device = 45;

tarn_common_facade& facade() { return *tarn_common_facade::tarn_common_get_instance(); }

/// Pages through the whole list; the ids in it count from 1.
bool page_once()
{
    unsigned int persons = 0;
    unsigned int pages = 0;
    if (facade().tarn_get_personal_address_list_prepare(page_length, persons, pages) != 0) return false;
    std::vector<TARN_PERSONAL_ADDRESS> page(page_length);
    unsigned int seen = 0;
    bool right = persons == persons_of_the_device && pages == 3;
    for (unsigned int number = 1; number <= pages; ++number) {
        unsigned int count = 0;
        right = facade().tarn_get_personal_address_list(number, count, page.data()) == 0 && right;
        for (unsigned int i = 0; i < count; ++i) {
            unsigned int id = 0;
            std::memcpy(&id, page[i].bytes, sizeof id);
            right = id == ++seen && right;
        }
    }
    return facade().tarn_get_personal_address_list_finish(persons) == 0 && right && seen == persons_of_the_device;
}

[[noreturn]] void wait_as(const char* what)
{
    std::printf("%s\n", what);
    std::fflush(stdout);
    for (;;) pause();
}

}  // namespace

int main(int argc, char** argv)
{
    const std::string what = argc > 1 ? argv[1] : "";
    if (what == "page") {
        for (long rounds = std::strtol(argv[2], nullptr, 10); rounds > 0; --rounds) {
            if (!page_once()) return 1;
        }
        return 0;
    }
    if (what == "hold") {
        unsigned int persons = 0;
        unsigned int pages = 0;
        unsigned int count = 0;
        std::vector<TARN_PERSONAL_ADDRESS> page(page_length);
        facade().tarn_get_personal_address_list_prepare(page_length, persons, pages);
        facade().tarn_get_personal_address_list(1, count, page.data());
        wait_as("holding");
    }
    if (what == "observe") {
        static norvane::tarn_common_observer observer;
        facade().tarn_common_add_observer(&observer);
        wait_as("observing");
    }
    return 2;
}
