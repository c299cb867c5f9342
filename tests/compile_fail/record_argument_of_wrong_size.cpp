#include "frame/call.h"

using namespace norvane::frame;

using takes_eight_bytes = operation<1, 2, "takes_eight_bytes", request<80, record<"info", "INFO", 72, 8>>>;

struct seven_bytes {
    char bytes[7];
};

unsigned int send(bmc_mc_client* client, const seven_bytes& info)
{
    return call<takes_eight_bytes>(client, with(info));
}
