#include "frame/call.h"

using namespace norvane::frame;

using gives_eight_bytes = operation<1, 2, "gives_eight_bytes", request<72>,
    reply<24, result<12>, record<"info", "INFO", 16, 8>>>;

struct nine_bytes {
    char bytes[9];
};

unsigned int send(bmc_mc_client* client, nine_bytes& info) { return call<gives_eight_bytes>(client, into(info)); }
