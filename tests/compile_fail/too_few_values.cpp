#include "frame/call.h"

using namespace norvane::frame;

using two_values = operation<1, 2, "two_values", request<80, word<"one", 72>, word<"other", 76>>>;

unsigned int send(bmc_mc_client* client) { return call<two_values>(client, with(1)); }
