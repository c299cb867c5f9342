// Runs one operation many times, as the library has it or as a hand-written twin has it, for callgrind
// to count: overhead_bench OPERATION library|twin ROUNDS. bench/overhead.sh makes the comparison.
#include "overhead_twins.h"
#include "tarn_systeminfo_facade.h"

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>

namespace {

struct variants {
    std::function<void()> measured;
    std::function<void()> twin;
};

}  // namespace

int main(int argc, char** argv)
{
    auto& facade = *norvane::tarn_systeminfo_facade::tarn_systeminfo_get_instance();
    bmc_mc_client client;
    twins::client = &client;
    const auto key = static_cast<TARN_ENTKEY>(7);
    const std::string text = "a text of the usual length";
    unsigned int number = 0;
    std::string received;
    const std::map<std::string, variants> operations = {
        {"set_number", {[&] { facade.tarn_systeminfo_set_value(key, 5U); }, [] { twins::set_number(7, 5); }}},
        {"get_number", {[&] { facade.tarn_systeminfo_get_value(key, number); }, [&] { twins::get_number(7, number); }}},
        {"set_machine_number",
         {[&] { facade.tarn_systeminfo_set_machine_info(key, 1, 5); }, [] { twins::set_machine_number(7, 1, 5); }}},
        {"get_text", {[&] { facade.tarn_systeminfo_get_value(key, received); }, [&] { twins::get_text(7, received); }}},
        {"get_machine_text",
         {[&] { facade.tarn_systeminfo_get_machine_info(key, 1, received); },
          [&] { twins::get_machine_text(7, 1, received); }}},
        {"set_text", {[&] { facade.tarn_systeminfo_set_value(key, text); }, [&] { twins::set_text(7, text); }}},
    };
    const auto found = argc == 4 ? operations.find(argv[1]) : operations.end();
    if (found == operations.end()) {
        std::fprintf(stderr, "usage: overhead_bench OPERATION library|twin ROUNDS; operations:");
        for (const auto& [name, both] : operations) std::fprintf(stderr, " %s", name.c_str());
        std::fprintf(stderr, "\n");
        return 2;
    }
    const auto& run = std::string(argv[2]) == "twin" ? found->second.twin : found->second.measured;
    for (long round = std::strtol(argv[3], nullptr, 10); round > 0; --round) run();
    return 0;
}
