#include "frame/call.h"

using namespace norvane::frame;

using two_outputs = operation<1, 2, "two_outputs", request<72>,
    reply<24, result<12>, word<"one", 16>, word<"other", 20>>>;

unsigned int send(bmc_mc_client* client, unsigned int& one) { return call<two_outputs>(client, into(one)); }
