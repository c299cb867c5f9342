#include "frame/paged_list.h"

using namespace norvane::frame;

using eight_byte_elements = page<operation<1, 2, "eight_byte_elements", request<76, word<"block", 72>>,
    reply<20, result<12>, word<"count", 16>>>, "ELEMENT", 8, 50>;

struct seven_bytes {
    char bytes[7];
};

unsigned int get(bmc_mc_client* client, unsigned int& count, seven_bytes* elements)
{
    const auto succeed = [](auto) { return 0U; };
    return get_page<eight_byte_elements>(client, with(1), count, elements, succeed, succeed, 7);
}
